#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "analysis/found_tracks.h"

namespace keelview {

/// A text as a file name that every system takes and that can stand in a race control file: without
/// folders, commas and the like, blanks and points at its ends. "race" where nothing is left.
std::string SafeFileName(std::string_view text);

/// Names for files in one folder, in their order, no two alike but for case: the name of each, behind that
/// of its folder where it is there before, else with a number.
std::vector<std::string> TargetNames(const std::vector<FoundFile>& files);

/// A free name: itself, or with the least number from 2 on before its ending, "track (2).gpx".
std::string FreeName(const std::string& name, const std::vector<std::string>& taken);

/// A name for the boat of each recording, file by file: what the recording says, unless it is a date, or
/// another file says the same. What a file's only recording says counts where each of several such files of
/// that format says something of its own, as trackers call every track alike. Else it is the name of the
/// file without what all names begin and end with, whole words of them; for one of several recordings with
/// its number. No two are alike.
std::vector<std::string> BoatNames(const std::vector<FoundFile>& files);

/// What the names of all files begin with, whole words: "Spring Cup" of "Spring_Cup_GER7.gpx" and
/// "Spring_Cup_GER9.gpx"; the name of the one folder that they lie in where they have no such beginning.
/// May be empty.
std::string CommonTitle(const std::vector<std::string>& fileNames);

}  // namespace keelview
