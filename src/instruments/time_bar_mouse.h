#pragma once

#include <optional>
#include <string>

#include "instruments/overview.h"
#include "instruments/time_bar.h"
#include "session/race_session.h"

namespace keelview {

/// The mouse on the time bar: a press jumps the replay, a drag with Shift limits it to part of the race,
/// Shift and another button lifts the limit. While the pointer moves, the overview shows the moment under
/// it.
class TimeBarMouse {
  public:
    TimeBarMouse(RaceSession& session, TimeBar& timeBar, Overview& overview);

  private:
    void PicTimeBar_MouseDown(const MouseEvent& event);
    void PicTimeBar_MouseMove(const MouseEvent& event);
    void PicTimeBar_MouseUp(const MouseEvent& event);
    void PicTimeBar_MouseLeave();
    void LiftRange();
    void LimitRange(double fromY, double toY);
    void ReplayRange(double from, double to);
    void ShowGraphCursor(double y, int time);
    void ShowWindOf(double y, int time);
    void ShowTimeHint(double y, int time);
    std::string TimeHintText(int time) const;

    AppState& app_;
    RaceDisp& form_;
    Stage& stage_;
    Film& film_;
    const Voice& voice_;
    TimeBar& timeBar_;
    Overview& overview_;
    std::optional<double> dragY_;  ///< where a drag with Shift began
};

}  // namespace keelview
