#pragma once

#include "analysis/race_finder.h"
#include "racedata/race_control.h"

namespace keelview {

/// Gives a race what was found: times, marks, lines, course and the wind's direction. Rounding times that
/// were set by hand for the old course go. `clock` is what the race's clock shows at second 0 of the
/// tracks. The race ends at the whole minute behind its last finisher; where none was found, with its
/// tracks.
void TakeFoundRace(const FoundRace& found, CivilTime clock, RaceControl& race);

/// What is known of a race beside the tracks that lie on its clock: the direction that it tells.
FinderHints HintsOf(const RaceControl& race, CivilTime clock);

}  // namespace keelview
