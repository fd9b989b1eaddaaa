#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "analysis/mark_rounding.h"
#include "racedata/coastline.h"
#include "racedata/gps_track.h"
#include "racedata/race_control.h"
#include "racedata/race_file.h"
#include "racedata/wind_file.h"

namespace keelview {

/// Everything that one race leads to, as numbers.
struct RaceNumbers {
    RaceControl race;
    Tracks tracks;
    TrackArea area;
    EarthScale scale;
    WindData wind;
    Coast coast;
    MarkPasses passes;      ///< with distances
    RaceFileReport report;  ///< what reading the race control file met with
};

/// How a load went: what a person must know who wanted to see the race.
enum class LoadOutcome {
    Sound,
    NoRaceFile,   ///< the race control file cannot be read; all else is as a race without boats has it
    NoTrackFile,  ///< a track file does not exist: its boat has no track
    NoFix         ///< no boat has a position: an empty area, no coast
};

struct LoadResult {
    LoadOutcome Outcome = LoadOutcome::Sound;
    std::filesystem::path Missing;  ///< the track file of NoTrackFile
};

/// Loads the race that `numbers.race` names: by RaceFileName, or, where that is empty, the one boat of
/// SingleTrackFile. The one way from files to numbers, for whoever shows, tells or tests a race. Everything
/// in `numbers` is made anew; MagVariation and BoatLength of the race before stay where the file has no
/// such key, and a single track takes times, TimeDiff, marks, lines, course, wind and north as they stand.
/// A race without a sound outcome is worked out as far as it goes. race.MapFile has the coast cells of the
/// race area. Writes nothing.
LoadResult LoadRace(const std::filesystem::path& appPath, RaceNumbers& numbers,
                    const TrackProgress& progress = {});

/// Where the coast of a race with a fix is wanted.
CoastArea CoastAreaOf(const RaceNumbers& numbers);

/// The largest time of any boat's last point, whole seconds from the start, rounded up; 0 at least.
int LatestFixTime(const Tracks& tracks);

/// True if some boat of the race has a position.
bool HasAnyFix(const Tracks& tracks);

/// Boats (from 1) with a time from the gun on at the last course entry, earliest first, equal times by boat
/// number.
std::vector<int> FinishOrder(const MarkPasses& passes);

}  // namespace keelview
