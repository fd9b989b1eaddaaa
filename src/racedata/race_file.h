#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "racedata/race_control.h"

namespace keelview {

/// True if the name can be that of a race control file: it ends in ".txt".
bool IsRaceFileName(std::string_view name);

/// What reading a race control file for the display met with.
struct RaceFileReport {
    bool Opened = false;  ///< false: the file cannot be read; the race is reset all the same
    std::vector<std::string> MissingTracks;  ///< track files of boats that were left out, in file order
    int SkippedLines = 0;                    ///< lines with no comma, an unknown key, or past a limit
};

/// Reads `race.RaceFileName` below `appPath`/raceadmin for the race display. Resets and fills `race`
/// (MagVariation and BoatLength keep their value where the file has no such key; MAP lines are ignored),
/// sets a wind file and boats aside whose file is not in winddat or gpsdat (AbsentWindFile, AbsentBoats),
/// gives BoatLength 4.7 metres where it is 0, and works
/// out DataFromTime, DataToTime and RaceDuration. Elements past the limits, and lines that cannot be read,
/// are skipped.
RaceFileReport ReadRaceFile(const std::filesystem::path& appPath, RaceControl& race);

/// Reads the same file for the editor: keys are compared as they stand, boats without a track file stay, no
/// file is looked for, DataFromTime is the start less 5 minutes, RaceDuration the seconds between the two
/// times where both are given. False if the file cannot be read, or is none that a race can be written back
/// to: binary, or without any known key.
bool ReadRaceFileForEdit(const std::filesystem::path& appPath, RaceControl& race);

/// Reads only boats, coastline cells (with ".cst" behind each name), wind file and attachments (trimmed).
/// False if the file cannot be read.
bool ReadRaceFileForDistribution(const std::filesystem::path& appPath, RaceControl& race);

/// Writes `race` to `race.RaceFileName` below `appPath`/raceadmin as a whole, in the encoding the file had
/// (a new one in Shift-JIS where its text fits, else UTF-8), lines ended by CR LF; a line whose text has
/// not changed keeps its bytes. What is absent is written at its place. A file that holds just these bytes
/// already is left alone. Does nothing with an empty name. On failure the old file stands.
std::error_code SaveRaceFile(const std::filesystem::path& appPath, const RaceControl& race);

/// The same over what a person may want back: the file as it is stays beside the new one with ".bak" behind
/// its name, in place of what was there. Where it cannot be kept nothing is written.
std::error_code SaveRaceFileAnew(const std::filesystem::path& appPath, const RaceControl& race);

}  // namespace keelview
