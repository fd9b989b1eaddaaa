#pragma once

#include <string>

#include "analysis/race_numbers.h"

namespace keelview {

/// What a person must know of a race that was read, though it is shown: the tracks and the wind that are
/// not there, tracks that cannot be read, a start or finish that is no date. Empty where there is nothing
/// to tell.
std::string LoadNotes(const RaceNumbers& numbers, bool useEnglish);

}  // namespace keelview
