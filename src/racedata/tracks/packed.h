#pragma once

#include <string_view>

#include "racedata/tracks/recording.h"

namespace keelview {

/// Whether a file is packed: gz or zip.
bool IsPacked(std::string_view bytes);

/// Reads a file that is not packed; its name may be empty.
using ReadUnpacked = TrackFileContent (*)(std::string_view bytes, std::string_view name);

/// Reads what a packed file holds, in memory. Files of no known kind are passed over; several readable ones
/// give all their recordings, each of them with the name of its file as boat where it tells none, and the
/// hints are those of the first that has any. Encrypted and broken files are counted as broken; a gz that
/// is cut off is read up to there. A packed file may lie in a packed file, and no deeper. One that would
/// unpack to more than 1 GB or 250 times its size, or that holds more than 1000 files, is refused as too
/// large before that. Progress is told after each file of a zip; a stopped reading gives what it has by
/// then.
TrackFileContent ReadPacked(std::string_view bytes, std::string_view name, ReadUnpacked read,
                            const ReadingProgress& progress);

}  // namespace keelview
