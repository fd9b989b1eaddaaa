#include "racedata/tracks/formats.h"

#include <algorithm>
#include <iterator>

#include "base/strings.h"
#include "racedata/tracks/fit.h"
#include "racedata/tracks/packed.h"
#include "racedata/tracks/vkx.h"

namespace keelview {

namespace {

constexpr TrackFormat Formats[] = {
    {"FIT", LooksLikeFit, ReadFit},
    {"VKX", LooksLikeVkx, ReadVkx},
};

bool EndsWith(std::string_view name, std::string_view ending) {
    return name.size() >= ending.size() && EqualNoCase(name.substr(name.size() - ending.size()), ending);
}

/// Why a file of no kind in the table is refused: some are known, and closed.
Refusal RefusalOf(std::string_view bytes, std::string_view name) {
    if (bytes.empty()) return Refusal::Empty;
    if (bytes.substr(0, 8).find("VTK") != std::string_view::npos || EndsWith(name, ".vtk"))
        return Refusal::Velocitek;
    return EndsWith(name, ".sail2") ? Refusal::Sail2 : Refusal::Unknown;
}

TrackFileContent ReadUnpackedFile(std::string_view bytes, std::string_view name) {
    const auto* const format =
        std::ranges::find_if(Formats, [bytes](const TrackFormat& each) { return each.Knows(bytes); });
    TrackFileContent content;
    if (format == std::end(Formats)) {
        content.Refused = RefusalOf(bytes, name);
        return content;
    }
    content = format->Read(bytes);
    if (content.Format.empty()) content.Format = format->Name;
    std::erase_if(content.Recordings, [](const Recording& recording) { return recording.Fixes.empty(); });
    if (content.Recordings.empty() && content.Refused == Refusal::None) content.Refused = Refusal::NoFixes;
    return content;
}

}  // namespace

std::span<const TrackFormat> TrackFormats() {
    return Formats;
}

TrackFileContent ReadTrackFile(std::string_view bytes, std::string_view name) {
    if (!IsPacked(bytes)) return ReadUnpackedFile(bytes, name);
    TrackFileContent content = ReadPacked(bytes, name, ReadUnpackedFile);
    if (content.Refused == Refusal::Packed && EndsWith(name, ".sail2")) content.Refused = Refusal::Sail2;
    return content;
}

}  // namespace keelview
