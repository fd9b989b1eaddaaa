#pragma once

#include "instruments/wind_panel.h"
#include "session/race_disp.h"
#include "session/voice.h"

namespace keelview {

/// The mouse on the compass and the wind graph: a press on either shows or hides the graph.
class WindPanelMouse {
  public:
    WindPanelMouse(const RaceControl& race, RaceDisp& form, const Voice& voice, WindPanel& windPanel);

  private:
    void ShowGraphHint(const Surface& panel, const MouseEvent& event);

    const RaceControl& race_;
    RaceDisp& form_;
    const Voice& voice_;
    WindPanel& windPanel_;
};

}  // namespace keelview
