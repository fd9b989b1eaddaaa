#pragma once

#include "session/race_session.h"

namespace keelview {

/// The exit button Command1 of the race display. In EditMode the race control file is offered for saving
/// first, under a name of the person's choice; a race that could not be saved keeps the display open.
class ExitButton {
  public:
    explicit ExitButton(RaceSession& session);

  private:
    void Command1_Click();
    bool OfferToSave();

    RaceSession& session_;
};

}  // namespace keelview
