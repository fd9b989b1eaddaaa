#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "racedata/tracks/recording.h"

namespace keelview {

/// A kind of file that can be read. A new one is a file with its two routines and a line in the table of
/// formats.cpp.
struct TrackFormat {
    std::string_view Name;     ///< as people call it: "GPX"
    std::string_view Endings;  ///< of names that such files usually have, in the order of use: "trk dtr"
    /// Whether a file that begins like this is of that kind. It is given the whole file, and looks at its
    /// head alone.
    bool (*Knows)(std::string_view bytes);
    /// Reads a whole file of that kind. Bad input never throws, never hangs and takes no memory beyond some
    /// times the size of the file; what is not understood is skipped and counted.
    TrackFileContent (*Read)(std::string_view bytes);
};

/// All kinds, in the order in which they are asked.
std::span<const TrackFormat> TrackFormats();

/// The patterns of names that track files usually have ("*.trk"), packed ones last. They say what is
/// offered to a person; what a file is, its content tells.
std::vector<std::string> TrackFilePatterns();

/// What a file tells, whatever its kind is, found by its content. Packed files (gz, zip) are unpacked in
/// memory within limits. Recordings without a fix are left out; a file that gives none is refused with the
/// reason. The name, which may be left out, tells of a file that cannot be read whether its kind is a
/// closed one. Progress may be empty; it is told of packed files alone.
TrackFileContent ReadTrackFile(std::string_view bytes, std::string_view name = {},
                               const ReadingProgress& progress = {});

}  // namespace keelview
