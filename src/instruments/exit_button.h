#pragma once

#include "session/app_state.h"
#include "session/race_disp.h"

namespace keelview {

/// The exit button Command1 of the race display. In EditMode the race control file is offered for saving
/// first, under a name of the person's choice; a race that could not be saved keeps the display open.
class ExitButton {
  public:
    ExitButton(AppState& app, RaceDisp& form, Services& services);

  private:
    void Command1_Click();
    bool OfferToSave();

    AppState& app_;
    RaceDisp& form_;
    Services& services_;
};

}  // namespace keelview
