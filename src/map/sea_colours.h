#pragma once

#include "session/app_state.h"
#include "session/race_disp.h"

namespace keelview {

/// Gives the six colour cells their colours, and the map the first of them with white ink.
void ResetSeaColours(AppState& app, RaceDisp& form);

/// The map takes the colour of a cell (0 to 5), and the ink that stands out from it.
void ChooseSeaColour(std::size_t cell, AppState& app, RaceDisp& form);

}  // namespace keelview
