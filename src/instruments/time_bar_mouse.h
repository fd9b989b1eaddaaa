#pragma once

#include "instruments/overview.h"
#include "instruments/time_bar.h"
#include "map/chart.h"
#include "map/replay_frame.h"
#include "session/app_state.h"
#include "session/race_disp.h"

namespace keelview {

/// The mouse on the time bar: a press jumps the replay, a drag with Shift limits it to part of the race,
/// Shift and another button lifts the limit. While the pointer moves, the overview shows the moment under
/// it.
class TimeBarMouse {
  public:
    TimeBarMouse(AppState& app, RaceDisp& form, Chart& chart, ReplayFrame& frame, Overview& overview,
                 TimeBar& timeBar);

  private:
    void PicTimeBar_MouseDown(const MouseEvent& event);
    void PicTimeBar_MouseMove(const MouseEvent& event);
    void PicTimeBar_MouseUp(const MouseEvent& event);
    int TimeUnder(double y) const;
    void LiftRange();
    void JumpTo(double time);
    void LimitRange(double fromY, double toY);
    void ReplayFromRangeStart();
    void PreviewMoment(int time);
    void ShowGraphCursor(double y, int time);
    void ShowWindOf(double y, int time);
    void ShowTimeHint(double y, int time);
    std::string TimeHintText(int time) const;

    AppState& app_;
    RaceDisp& form_;
    Chart& chart_;
    ReplayFrame& frame_;
    Overview& overview_;
    TimeBar& timeBar_;
    double dragY_ = 0.0;  ///< where a drag with Shift began; 0 when none has
};

}  // namespace keelview
