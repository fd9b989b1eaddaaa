#include "racedata/tracks/formats.h"

#include <algorithm>
#include <functional>
#include <iterator>

#include "base/strings.h"
#include "racedata/tracks/csv.h"
#include "racedata/tracks/fit.h"
#include "racedata/tracks/geojson.h"
#include "racedata/tracks/gpx.h"
#include "racedata/tracks/igc.h"
#include "racedata/tracks/kml.h"
#include "racedata/tracks/nmea.h"
#include "racedata/tracks/own_lines.h"
#include "racedata/tracks/packed.h"
#include "racedata/tracks/tcx.h"
#include "racedata/tracks/vkx.h"

namespace keelview {

namespace {

constexpr TrackFormat Formats[] = {
    {"Keelview", "dtr trk", LooksLikeOwnLines, ReadOwnLines},
    {"FIT", "fit", LooksLikeFit, ReadFit},
    {"VKX", "vkx", LooksLikeVkx, ReadVkx},
    {"GPX", "gpx", LooksLikeGpx, ReadGpx},
    {"TCX", "tcx", LooksLikeTcx, ReadTcx},
    {"KML", "kml", LooksLikeKml, ReadKml},
    {"GeoJSON", "geojson json", LooksLikeGeoJson, ReadGeoJson},
    {"NMEA 0183", "nmea log", LooksLikeNmea, ReadNmea},
    {"IGC", "igc", LooksLikeIgc, ReadIgc},
    {"CSV", "csv", LooksLikeCsv, ReadCsv},
};

constexpr std::string_view PackedEndings = "kmz gz zip";

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

/// Why a file of a known kind gave no fix: where places without times are among what it holds, for want of
/// times.
Refusal WithoutFixes(const TrackFileContent& content) {
    for (const Recording& recording : content.Recordings)
        for (const Skipped& skipped : recording.Left)
            if (skipped.Why == SkipReason::NoTime) return Refusal::NoTimes;
    return Refusal::NoFixes;
}

bool HasFixes(const Recording& recording) {
    return !recording.Fixes.empty();
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
    for (Recording& recording : content.Recordings) KeepOrderOfTime(recording);
    if (content.Refused == Refusal::None && std::ranges::none_of(content.Recordings, HasFixes))
        content.Refused = WithoutFixes(content);
    std::erase_if(content.Recordings, std::not_fn(HasFixes));
    return content;
}

}  // namespace

std::span<const TrackFormat> TrackFormats() {
    return Formats;
}

std::vector<std::string> TrackFilePatterns() {
    std::vector<std::string> patterns;
    const auto add = [&patterns](std::string_view endings) {
        while (!endings.empty()) patterns.push_back("*." + std::string(CutHead(endings, ' ')));
    };
    for (const TrackFormat& format : Formats) add(format.Endings);
    add(PackedEndings);
    return patterns;
}

TrackFileContent ReadTrackFile(std::string_view bytes, std::string_view name,
                               const ReadingProgress& progress) {
    if (!IsPacked(bytes)) return ReadUnpackedFile(bytes, name);
    TrackFileContent content = ReadPacked(bytes, name, ReadUnpackedFile, progress);
    if (content.Refused == Refusal::Packed && EndsWith(name, ".sail2")) content.Refused = Refusal::Sail2;
    return content;
}

}  // namespace keelview
