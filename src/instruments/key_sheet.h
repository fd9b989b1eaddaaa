#pragma once

#include "session/race_disp.h"
#include "session/voice.h"

namespace keelview {

/// The sheet Picture15 over the middle of the view: all that keys and mouse do on the race display. A press
/// on it puts it away.
class KeySheet {
  public:
    KeySheet(RaceDisp& form, const Voice& voice);

    /// Shows the sheet, or puts it away.
    void Toggle();
    /// False where it was not shown.
    bool PutAway();

  private:
    void Draw();

    RaceDisp& form_;
    const Voice& voice_;
};

}  // namespace keelview
