#pragma once

#include <string>

#include "racedata/race_control.h"

namespace keelview {

/// What a person must know of a race that was read, though it is shown: the tracks and the wind that are
/// not there, a start or finish that is no date. Empty where there is nothing to tell.
std::string LoadNotes(const RaceControl& race, bool useEnglish);

}  // namespace keelview
