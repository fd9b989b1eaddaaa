#include "racedata/tracks/formats.h"

namespace keelview {

// The tracks of a page were read where it was made, and stand there packed: it knows no format of its own.

std::span<const TrackFormat> TrackFormats() {
    return {};
}

std::vector<std::string> TrackFilePatterns() {
    return {};
}

TrackFileContent ReadTrackFile(std::string_view bytes, std::string_view /*name*/,
                               const ReadingProgress& /*progress*/) {
    TrackFileContent content;
    content.Refused = bytes.empty() ? Refusal::Empty : Refusal::Unknown;
    return content;
}

}  // namespace keelview
