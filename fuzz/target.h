#pragma once

#include <span>
#include <string>
#include <string_view>

#include "support/temp_tree.h"

namespace keelview::fuzz {

/// One reader under fire. Its run lays the input out as a file, has it read, and ends the process where a
/// promise of the reader does not hold.
struct Target {
    std::string_view Name;
    std::string_view Corpus;  ///< folder in fuzz/corpus, and name of the dictionary if there is one
    void (*Run)(std::string_view input);
};

/// All targets, in the order in which they are reported.
std::span<const Target> AllTargets();

/// The target of that name; nullptr if there is none.
const Target* FindTarget(std::string_view name);

/// Ends the process, as a finding, with the text of the promise that does not hold.
void Require(bool holds, const char* promise);

/// The tree that all runs of a process share.
const TempTree& Tree();

/// The input as a track file that is long enough to be read.
std::string AsTrack(std::string_view input);

void ReadRaceForDisplay(std::string_view input);
void ReadRaceForEditor(std::string_view input);
void ReadRaceForDistribution(std::string_view input);
void ReadTrack(std::string_view input);
void ReadWind(std::string_view input);
void ReadCoast(std::string_view input);
void ReadShores(std::string_view input);
void ReadStartFiles(std::string_view input);
void ReadTree(std::string_view input);
void ReadAnyTrackFile(std::string_view input);
void ReadFitFile(std::string_view input);
void ReadVkxFile(std::string_view input);
void ReadGpxFile(std::string_view input);
void ReadTcxFile(std::string_view input);
void ReadKmlFile(std::string_view input);
void ReadGeoJsonFile(std::string_view input);
void ReadOwnLineTrack(std::string_view input);
void ReadNmeaTrack(std::string_view input);
void ReadIgcTrack(std::string_view input);
void ReadCsvTrack(std::string_view input);

}  // namespace keelview::fuzz
