#pragma once

#include <filesystem>
#include <system_error>
#include <vector>

#include "racedata/race_control.h"
#include "racedata/tracks/recording.h"

namespace keelview {

/// The boats of a track file that lies where the program looks for it.
struct BroughtTracks {
    std::vector<BoatEntry> Boats;  ///< one for each recording, as a race file names it
    Refusal Why = Refusal::None;   ///< why the file gives none
    std::error_code Error;         ///< why it could not be brought there
};

/// Finds the boats of a track file and brings it into `appPath`/gpsdat, unless it lies there already. One
/// boat is named as its file, several as their recordings tell. A file of its name is never replaced: one
/// with the same bytes is taken as it is, beside another one it gets a name with a number. What gives no
/// boat is not brought, and an error leaves nothing behind.
BroughtTracks BringTracks(const std::filesystem::path& appPath, const std::filesystem::path& file);

}  // namespace keelview
