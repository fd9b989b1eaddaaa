#pragma once

#include "instruments/overview.h"
#include "instruments/wind_field.h"
#include "session/race_session.h"

namespace keelview {

/// The mouse on the overview: a left press moves the map, any other turns a windward-up map in EditMode.
class OverviewMouse {
  public:
    OverviewMouse(RaceSession& session, const Overview& overview, WindField& windField);

  private:
    void Picture6_MouseDown(const MouseEvent& event);
    void Picture6_MouseMove();
    void MoveMap(const MouseEvent& event);
    void TurnWind(const MouseEvent& event);
    void ShowOverviewHint();

    AppState& app_;
    RaceDisp& form_;
    Stage& stage_;
    Film& film_;
    const Voice& voice_;
    const Overview& overview_;
    WindField& windField_;
};

}  // namespace keelview
