// Recordings that are lines of text. Whatever a file holds, what it tells is a track that can be sailed.

#include <algorithm>
#include <cmath>

#include "base/text_encoding.h"
#include "racedata/tracks/csv.h"
#include "racedata/tracks/igc.h"
#include "racedata/tracks/nmea.h"
#include "racedata/tracks/own_lines.h"
#include "target.h"

namespace keelview::fuzz {

namespace {

bool IsOnGlobe(double lat, double lon) {
    return std::abs(lat) <= 90.0 && std::abs(lon) <= 180.0;
}

void RequireSoundRecording(const Recording& track) {
    const auto notLater = [](const RecordedFix& a, const RecordedFix& b) { return a.Time >= b.Time; };
    Require(std::ranges::adjacent_find(track.Fixes, notLater) == track.Fixes.end(), "times rise");
    for (const RecordedFix& fix : track.Fixes) {
        Require(IsOnGlobe(fix.Lat, fix.Lon), "a fix is on the globe");
        for (const float value : {fix.Speed, fix.Course, fix.Heading, fix.WaterSpeed, fix.WindSpeed,
                                  fix.WindFrom, fix.Accuracy})
            Require(!std::isinf(value), "what is told is finite");
    }
    for (const Skipped& skipped : track.Left) Require(skipped.Count > 0, "what is counted was there");
    Require(IsValidUtf8(track.Boat) && IsValidUtf8(track.Device), "names are UTF-8");
}

void RequireSound(const TrackFileContent& content, std::string_view input) {
    std::size_t fixes = 0;
    for (const Recording& track : content.Recordings) {
        RequireSoundRecording(track);
        fixes += track.Fixes.size();
    }
    Require(fixes + content.Hints.Marks.size() <= input.size(), "a fix takes a byte and more");
    for (const NamedPlace& mark : content.Hints.Marks) {
        Require(IsOnGlobe(mark.Lat, mark.Lon), "a mark is on the globe");
        Require(IsValidUtf8(mark.Name), "names are UTF-8");
    }
    Require(std::abs(content.Hints.ZoneHours.value_or(0)) < 16, "a zone is near");
}

}  // namespace

void ReadOwnLineTrack(std::string_view input) {
    LooksLikeOwnLines(input);
    RequireSound(ReadOwnLines(input), input);
}

void ReadNmeaTrack(std::string_view input) {
    LooksLikeNmea(input);
    RequireSound(ReadNmea(input), input);
}

void ReadIgcTrack(std::string_view input) {
    LooksLikeIgc(input);
    RequireSound(ReadIgc(input), input);
}

void ReadCsvTrack(std::string_view input) {
    LooksLikeCsv(input);
    RequireSound(ReadCsv(input), input);
}

}  // namespace keelview::fuzz
