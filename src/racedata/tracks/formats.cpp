#include "racedata/tracks/formats.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <utility>

#include "racedata/tracks/csv.h"
#include "racedata/tracks/igc.h"
#include "racedata/tracks/nmea.h"
#include "racedata/tracks/own_lines.h"

namespace keelview {

namespace {

constexpr TrackFormat Formats[] = {
    {"Keelview", LooksLikeOwnLines, ReadOwnLines},
    {"NMEA 0183", LooksLikeNmea, ReadNmea},
    {"IGC", LooksLikeIgc, ReadIgc},
    {"CSV", LooksLikeCsv, ReadCsv},
};

/// A kind that is known by name alone, as nobody may read it.
Refusal ClosedFormat(std::string_view bytes) {
    if (bytes.empty()) return Refusal::Empty;
    if (bytes.substr(0, 8).find("VTK") != std::string_view::npos) return Refusal::Velocitek;
    return Refusal::Unknown;
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
    if (content.Refused == Refusal::None && std::ranges::none_of(content.Recordings, HasFixes))
        content.Refused = WithoutFixes(content);
    std::erase_if(content.Recordings, std::not_fn(HasFixes));
    return content;
}

}  // namespace keelview
