#pragma once

#include "display/colour.h"

namespace keelview {

/// The colour of a boat (from 1): fifteen colours, again and again.
Colour BoatColour(int boat);

}  // namespace keelview
