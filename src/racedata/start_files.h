#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace keelview {

/// How a copy of the program starts.
struct StartSettings {
    bool EditMode = true;            ///< false: browse-only
    std::optional<bool> UseEnglish;  ///< else Japanese; nothing where the file tells no language
};

/// Reads `appPath`/raceadmin/Ver.00: mode and language, by their leading numbers. Without such a file, or a
/// line in it, the program runs in full.
StartSettings ReadStartSettings(const std::filesystem::path& appPath);

/// The race that `appPath`/raceadmin/racefile.st names: its first field, without quotes around it. Nothing
/// without such a file, or a line in it.
std::optional<std::string> ReadStartRace(const std::filesystem::path& appPath);

}  // namespace keelview
