#pragma once

#include <filesystem>

#include "analysis/race_finder.h"
#include "racedata/race_control.h"

namespace keelview {

/// Gives a race what was found: times, marks, lines, course and the wind's direction. Rounding times that
/// were set by hand for the old course go. `clock` is what the race's clock shows at second 0 of the
/// tracks. The race ends at the whole minute behind its last finisher; where none was found, with its
/// tracks.
void TakeFoundRace(const FoundRace& found, CivilTime clock, RaceControl& race);

/// What all tracks of a race hold, whatever times it tells.
struct DayFinding {
    RaceFinding Found;
    CivilTime Clock = 0;  ///< what the race's clock shows at second 0 of the tracks

    /// The race that is surest; nothing where none was found.
    const FoundRace* Surest() const;
};

/// Looks for races (FindRaces) in all that the boats of a race have recorded, `race` being in `appPath`.
/// Wind, gun and line are taken where race and files tell them.
DayFinding FindRacesOf(const std::filesystem::path& appPath, const RaceControl& race);

}  // namespace keelview
