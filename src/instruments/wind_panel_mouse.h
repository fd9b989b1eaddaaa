#pragma once

#include "instruments/wind_panel.h"
#include "session/app_state.h"
#include "session/race_disp.h"

namespace keelview {

/// The mouse on the compass and the wind graph: a press on either shows or hides the graph.
class WindPanelMouse {
  public:
    WindPanelMouse(AppState& app, RaceDisp& form, WindPanel& windPanel);

  private:
    void Picture2_MouseDown();
    void sWind_Click();
    void ShowGraphHint(const Surface& panel, const MouseEvent& event);

    AppState& app_;
    RaceDisp& form_;
    WindPanel& windPanel_;
};

}  // namespace keelview
