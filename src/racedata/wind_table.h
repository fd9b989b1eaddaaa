#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "base/dates.h"

namespace keelview {

/// One reading of the wind as a table tells it.
struct WindRow {
    CivilTime Time = 0;           ///< local
    std::optional<double> Speed;  ///< knots; nothing where none is told
    double Direction = 0.0;       ///< degrees as the table has them, where the wind comes from

    friend bool operator==(const WindRow&, const WindRow&) = default;
};

struct WindTable {
    std::vector<WindRow> Rows;  ///< in the order of time
    int Skipped = 0;            ///< rows without a time or a direction
};

/// Reads the wind from a table as text: from a file that a weather station or a spreadsheet wrote, from the
/// clipboard, or from what was typed. A line of names (racedata/tracks/csv_layout) tells the columns and
/// the unit of the speed; without one they are time, speed and direction. Times with a zone, and numbers,
/// are put on the local clock, `timeDiff` hours from UTC; a time of day alone is that of `day`,
/// "2025/06/21".
WindTable ReadWindTable(std::string_view bytes, double timeDiff, std::string_view day);

/// Writes readings as a wind file, a path in winddat, in the form that races read.
std::error_code WriteWindTable(const std::filesystem::path& appPath, const std::string& fileName,
                               const std::vector<WindRow>& rows);

}  // namespace keelview
