#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "base/bilingual.h"
#include "distribution/distribution_runtime.h"

namespace keelview {

inline constexpr int MaxRaceChoices = 200;  ///< race files on offer
inline constexpr int MaxPendingRaces = 50;  ///< races of one distribution

enum class Medium {
    Web,
    CdRom,
    Page  ///< a file for a browser, in place of a folder with the program
};

/// What is to be distributed.
struct DistributionOrder {
    std::string FolderName;
    std::vector<std::string> RaceNames;  ///< race control files in the order of their choice
    std::string StartRace;               ///< shown at start; empty: the first that the listing finds
    Medium Target = Medium::Web;
    bool PageForEach = false;  ///< of a page: each race has one of its own, in a folder
    bool AttachMap = true;     ///< with the coastline files that the races name
    bool MinimiseSize = true;  ///< a web medium does without the plug-ins that an X window does not need
    bool UseEnglish = false;   ///< the language of the package
};

/// What came of building a distribution.
struct DistributionResult {
    std::error_code Error;             ///< why it could not be built; nothing of it is left then
    std::filesystem::path FailedAt;    ///< the file or folder that met with the error
    std::vector<std::string> Missing;  ///< files that were wanted and are not there, each once
    std::filesystem::path Folder;      ///< where it lies; of a page of all races the file itself
    std::filesystem::path Packed;      ///< the packed file of a web medium; empty if it could not be packed
    Systems For;                       ///< what it starts on
};

/// What is wrong with a folder name, told to the person; nothing if it can be used.
std::optional<Text> FolderNameTrouble(std::string_view name);

/// True if the distribution folder holds something of that name already, packed or not, or in other case.
bool DistributionExists(const std::filesystem::path& appPath, std::string_view folderName);

/// Builds the folder `appPath`/distribution/FolderName: a browse-only copy of the program with its run-time
/// files, the manual, the races and every data file that they name. It stands under "FolderName.unfinished"
/// until it is whole, and that is removed again when the build fails. A web medium is packed beside it: as
/// a .zip, which Windows opens, where it serves Windows, else as a .tar.gz. A page is one file,
/// FolderName.html, which holds all the races, or the folder has a page for each, which bears its name.
DistributionResult BuildDistribution(const std::filesystem::path& appPath, const DistributionOrder& order,
                                     const LibraryListing& listing = AskLoader);

}  // namespace keelview
