#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "analysis/mark_rounding.h"
#include "analysis/track_derivation.h"
#include "racedata/coastline.h"
#include "racedata/gps_track.h"
#include "racedata/race_control.h"
#include "racedata/race_file.h"
#include "racedata/wind_file.h"

namespace keelview {

// The steps that every load of a race takes between its readers, whether it is shown or told as text.

/// Gives the race the hours of its home waters, 9, where its file does not say any.
void SettleTimeDiff(RaceControl& race);

/// Sets ReplaySpan: the race, its pre-start and one minute more.
void SettleReplaySpan(RaceControl& race);

/// Reads the race's wind samples; where there is no such file, the race names none any more and `wind`
/// holds no samples.
void LoadRaceWind(const std::filesystem::path& appPath, RaceControl& race, WindData& wind);

/// The largest time of any boat's last point, seconds from the start; 0 at least.
int LatestFixTime(const RaceControl& race, const Tracks& tracks);

/// True if some boat of the race has a position.
bool HasAnyFix(const RaceControl& race, const Tracks& tracks);

/// Times and distances at the course entries, all anew; nobody passes anything in a race without a course.
void FindAllPasses(const RaceControl& race, const Tracks& tracks, const EarthScale& scale,
                   MarkPasses& passes);

/// Boats (from 1) with a time at the last course entry, earliest first, equal times by boat number.
std::vector<int> FinishOrder(const RaceControl& race, const MarkPasses& passes);

/// Everything that one race control file leads to, as numbers.
struct RaceNumbers {
    RaceControl race;
    Tracks tracks;
    TrackArea area;
    EarthScale scale;
    WindData wind;
    Coast coast;
    std::vector<std::string> coastCells;  ///< grid squares that the race area touches
    MarkPasses passes;                    ///< with distances
    RaceFileReport report;
};

/// Loads the race `raceFileName` of the tree at `appPath` without a display and works everything out. A
/// race in which no boat has a fix keeps an empty area and no coast. If the file cannot be read,
/// report.Opened is false and all else is as a race without boats has it. Writes nothing.
RaceNumbers LoadRaceNumbers(const std::filesystem::path& appPath, const std::string& raceFileName);

}  // namespace keelview
