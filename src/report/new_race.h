#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace keelview {

/// A race that was made of files, or why not.
struct NewRace {
    std::string Report;   ///< what was found and planned, one JSON object
    std::string Trouble;  ///< why nothing was written; empty where the race stands
};

/// Makes a race of track files and folders of such: `raceFile` in the tree's raceadmin (".txt" is added
/// where it is missing) and copies of the recordings in gpsdat. A race file of that name is replaced only
/// if `replace` is set. The report tells the proposed title, times and course, each boat with its recording
/// as
/// --tracks does, the reason why it was left out and the clock that is proposed, and each file that gave
/// nothing.
NewRace MakeNewRace(const std::filesystem::path& tree, const std::string& raceFile,
                    const std::vector<std::filesystem::path>& paths, bool replace);

}  // namespace keelview
