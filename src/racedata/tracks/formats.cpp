#include "racedata/tracks/formats.h"

#include <algorithm>
#include <array>
#include <utility>

namespace keelview {

namespace {

constexpr std::array<TrackFormat, 0> Formats{};

/// A kind that is known by name alone, as nobody may read it.
Refusal ClosedFormat(std::string_view bytes) {
    if (bytes.empty()) return Refusal::Empty;
    if (bytes.substr(0, 8).find("VTK") != std::string_view::npos) return Refusal::Velocitek;
    return Refusal::Unknown;
}

}  // namespace

std::span<const TrackFormat> TrackFormats() {
    return Formats;
}

TrackFileContent ReadTrackFile(std::string_view bytes) {
    const std::span formats = TrackFormats();
    const auto format =
        std::ranges::find_if(formats, [bytes](const TrackFormat& each) { return each.Knows(bytes); });
    TrackFileContent content;
    if (format == formats.end()) {
        content.Refused = ClosedFormat(bytes);
        return content;
    }
    content = format->Read(bytes);
    if (content.Format.empty()) content.Format = format->Name;
    std::erase_if(content.Recordings, [](const Recording& recording) { return recording.Fixes.empty(); });
    if (content.Recordings.empty() && content.Refused == Refusal::None) content.Refused = Refusal::NoFixes;
    return content;
}

}  // namespace keelview
