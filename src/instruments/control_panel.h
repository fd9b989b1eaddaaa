#pragma once

#include "session/race_session.h"

namespace keelview {

/// The check boxes, options and buttons of the control panel that change what the map shows.
class ControlPanel {
  public:
    explicit ControlPanel(RaceSession& session);

  private:
    void Command9_Click();
    void Check1_Click();
    void Check5_Click();
    void Check6_Click();
    void HScroll2_Change();
    void TurnMap(bool northUp);

    RaceSession& session_;
    AppState& app_;
    RaceDisp& form_;
    Stage& stage_;
};

}  // namespace keelview
