#pragma once

#include <filesystem>
#include <optional>

#include "base/dates.h"
#include "racedata/race_control.h"

namespace keelview {

/// From one moment to another, local time of the race.
struct Period {
    CivilTime From = 0;
    CivilTime To = 0;
};

/// Why no fix of a race lies in its period, and what would help.
struct PeriodTrouble {
    Period Race;                           ///< as its start and finish tell it
    Period Tracks;                         ///< of all fixes of its boats
    std::optional<double> BetterTimeDiff;  ///< hours with which both would meet: those of the tracks' place
    bool OtherDay = false;                 ///< they would meet if the race were on another day
};

/// Holds a race's period against its tracks, which are read once more. Nothing where the race tells neither
/// start nor finish, or its tracks have no fix at all.
std::optional<PeriodTrouble> FindPeriodTrouble(const std::filesystem::path& appPath,
                                               const RaceControl& race);

/// Gives the race the period of its tracks: a start four minutes after the first fix, as for a single
/// track, and the last fix as its finish.
void TakeTrackPeriod(const Period& tracks, RaceControl& race);

}  // namespace keelview
