#pragma once

#include <filesystem>
#include <string>

namespace keelview {

/// The races that were found in the tracks of a race file, or why they could not be looked for.
struct FindReport {
    std::string Report;   ///< one JSON object; empty where the race file cannot be read
    std::string Trouble;  ///< what went wrong; empty where nothing did
};

/// Looks for races in all that the boats of a race file have recorded, whatever times and course the file
/// tells. The report has "races" in the order of time: start and finish on the race's clock (null where
/// none was found), "line" and "lines" by their ends, "marks", both in minutes of arc, "course",
/// "wind_direction", "confidence" from 0 to 1 and "reasons"; beside them "missing", what could not be
/// found. With `write` the surest race is written into the file, and the old file kept beside it with
/// ".bak" behind its name.
FindReport FindRaceOf(const std::filesystem::path& tree, const std::string& raceFile, bool write);

}  // namespace keelview
