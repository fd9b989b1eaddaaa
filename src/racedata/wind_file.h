#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <system_error>

#include "base/one_based.h"
#include "racedata/race_control.h"

namespace keelview {

/// One line of a wind file.
struct WindSample {
    std::int32_t WindTime = 0;        ///< seconds from the start
    std::optional<double> WindSpeed;  ///< as in the file; nothing where none was set
    double WindDirection = 0.0;       ///< degrees magnetic, where the wind comes from
};

/// The wind samples of a race in the order of the file.
using WindData = OneBased<WindSample>;

/// Reads `race.WindFileName` below `appPath`/winddat: the samples between DataFromTime and DataToTime by
/// whole clock minutes, all of them where the race has no finish. Lines with fewer than three fields or
/// without a date are skipped. A file that does not exist leaves `wind` as it was.
void LoadWindFile(const std::filesystem::path& appPath, const RaceControl& race, WindData& wind);

/// Writes the samples to `race.WindFileName` below `appPath`/winddat in the form that LoadWindFile reads.
std::error_code SaveWindFile(const std::filesystem::path& appPath, const RaceControl& race,
                             const WindData& wind);

/// True if the race names a wind file and it exists.
bool WindFileExists(const std::filesystem::path& appPath, const RaceControl& race);

}  // namespace keelview
