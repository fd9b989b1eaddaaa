#pragma once

#include <cstddef>

#include "session/app_state.h"
#include "session/instrument.h"
#include "session/race_disp.h"
#include "session/stage.h"

namespace keelview {

/// The six cells of the control panel that choose the colour of the sea, and with it an ink that stands out
/// from it. What lies in or on the sea is cleared to its colour, so that this comes before the pictures
/// that are drawn there.
class SeaColours : public Instrument {
  public:
    SeaColours(Shown& shown, RaceDisp& form, Stage& stage);

    void Repaint(Changed changed) override;

  private:
    void ChooseSeaColour(std::size_t cell);

    Shown& shown_;
    RaceDisp& form_;
    Stage& stage_;
};

}  // namespace keelview
