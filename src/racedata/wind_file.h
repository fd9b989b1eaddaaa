#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <system_error>
#include <vector>

#include "racedata/race_control.h"

namespace keelview {

/// The wind samples of a race, index 1 to WindCount, in the order of the file; every array holds WindCount
/// + 1 elements.
struct WindData {
    std::vector<std::int32_t> WindTimes{0};             ///< seconds from the start
    std::vector<std::optional<double>> WindSpeeds{{}};  ///< as in the file; nothing where none was set
    std::vector<double> WindDirections{0.0};            ///< degrees magnetic, where the wind comes from
    int WindCount = 0;
};

/// Reads `race.WindFileName` below `appPath`/winddat: the samples between DataFromTime and DataToTime by
/// whole clock minutes, all of them where FinishTimeText is empty. Lines with fewer than three fields or
/// without a date are skipped. A file that does not exist leaves `wind` as it was.
void LoadWindFile(const std::filesystem::path& appPath, const RaceControl& race, WindData& wind);

/// Writes the samples to `race.WindFileName` below `appPath`/winddat in the form that LoadWindFile reads.
std::error_code SaveWindFile(const std::filesystem::path& appPath, const RaceControl& race,
                             const WindData& wind);

/// True if the race names a wind file and it exists.
bool WindFileExists(const std::filesystem::path& appPath, const RaceControl& race);

}  // namespace keelview
