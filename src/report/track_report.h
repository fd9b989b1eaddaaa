#pragma once

#include <filesystem>
#include <string>

#include "racedata/race_control.h"

namespace keelview {

/// What the track files of a race hold, as one JSON object: for each boat of its file, the absent ones too,
/// the format, the device, the number of fixes, the first and the last time (UTC, clock offsets added), the
/// median interval in seconds, its gaps (over ten times the median and over 30 s; the longest in seconds)
/// and what gave no fix, by reason. The whole of each file counts, not the period of the race.
std::string TrackReport(const std::filesystem::path& tree, const RaceControl& race);

}  // namespace keelview
