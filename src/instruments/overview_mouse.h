#pragma once

#include "instruments/overview.h"
#include "map/chart.h"
#include "map/replay_frame.h"
#include "session/app_state.h"
#include "session/race_disp.h"

namespace keelview {

/// The mouse on the overview: a left press moves the map, any other turns a windward-up map in EditMode.
class OverviewMouse {
  public:
    OverviewMouse(AppState& app, RaceDisp& form, Chart& chart, ReplayFrame& frame, Overview& overview);

  private:
    void Picture6_MouseDown(const MouseEvent& event);
    void Picture6_MouseMove();
    void MoveMap(const MouseEvent& event);
    void TurnWind(const MouseEvent& event);
    void ShowOverviewHint();

    AppState& app_;
    RaceDisp& form_;
    Chart& chart_;
    ReplayFrame& frame_;
    Overview& overview_;
};

}  // namespace keelview
