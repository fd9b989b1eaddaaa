#pragma once

#include "map/chart.h"
#include "session/app_state.h"
#include "session/race_disp.h"
#include "session/race_session.h"

namespace keelview {

/// The check boxes, options, sea colours and buttons of the control panel that change what the map shows.
class ControlPanel {
  public:
    ControlPanel(AppState& app, Services& services, RaceSession& session);

  private:
    void Command9_Click();
    void Check1_Click();
    void Check5_Click();
    void Check6_Click();
    void Check8_Click();
    void HScroll2_Change();
    void Option2_MouseUp();
    void Option3_MouseUp();
    void TurnMap(bool northUp);
    void BCOL_Click(std::size_t cell);
    void btnHATENA_Click();
    void Label1_Click();
    void RedrawMap();

    AppState& app_;
    RaceDisp& form_;
    Services& services_;
    RaceSession& session_;
    Chart& chart_;
};

}  // namespace keelview
