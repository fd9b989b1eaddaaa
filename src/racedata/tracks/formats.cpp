#include "racedata/tracks/formats.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "racedata/tracks/geojson.h"
#include "racedata/tracks/gpx.h"
#include "racedata/tracks/kml.h"
#include "racedata/tracks/tcx.h"

namespace keelview {

namespace {

constexpr TrackFormat Formats[] = {
    {"GPX", LooksLikeGpx, ReadGpx},
    {"TCX", LooksLikeTcx, ReadTcx},
    {"KML", LooksLikeKml, ReadKml},
    {"GeoJSON", LooksLikeGeoJson, ReadGeoJson},
};

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
    const auto* const format =
        std::ranges::find_if(Formats, [bytes](const TrackFormat& each) { return each.Knows(bytes); });
    TrackFileContent content;
    if (format == std::end(Formats)) {
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
