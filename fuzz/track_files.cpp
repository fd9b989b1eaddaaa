// Recordings of devices. Whatever a file holds, what comes out of it is a track that can be sailed, and
// what is too large when unpacked is refused.

#include <algorithm>
#include <cmath>

#include "base/text_encoding.h"
#include "racedata/tracks/csv.h"
#include "racedata/tracks/fit.h"
#include "racedata/tracks/formats.h"
#include "racedata/tracks/geojson.h"
#include "racedata/tracks/gpx.h"
#include "racedata/tracks/igc.h"
#include "racedata/tracks/kml.h"
#include "racedata/tracks/nmea.h"
#include "racedata/tracks/own_lines.h"
#include "racedata/tracks/tcx.h"
#include "racedata/tracks/vkx.h"
#include "target.h"

namespace keelview::fuzz {

namespace {

void RequireOnGlobe(double lat, double lon) {
    Require(std::abs(lat) <= 90 && std::abs(lon) <= 180, "a place is on the globe");
}

void RequireName(const std::string& name) {
    constexpr std::size_t longest = 200;
    Require(name.size() <= longest && IsValidUtf8(name), "a name is short and UTF-8");
    Require(name.find_first_of("\r\n") == std::string::npos, "a name is one line");
}

void RequireSound(const RecordedFix& fix) {
    RequireOnGlobe(fix.Lat, fix.Lon);
    for (const float direction : {fix.Course, fix.Heading, fix.WindFrom})
        Require(std::isnan(direction) || (direction >= 0 && direction < 360),
                "a direction is 0 up to below 360, or not told");
    for (const float number : {fix.Speed, fix.WaterSpeed, fix.WindSpeed, fix.Accuracy})
        Require(!std::isinf(number), "a number is finite, or not told");
}

void RequireSound(Recording recording) {
    RequireName(recording.Boat);
    RequireName(recording.Device);
    for (const RecordedFix& fix : recording.Fixes) RequireSound(fix);
    const std::size_t fixes = recording.Fixes.size();
    KeepOrderOfTime(recording);
    const auto notLater = [](const RecordedFix& a, const RecordedFix& b) { return a.Time >= b.Time; };
    Require(std::ranges::adjacent_find(recording.Fixes, notLater) == recording.Fixes.end(), "times rise");
    Require(recording.Fixes.empty() == (fixes == 0), "one fix is in order");
    for (const Skipped& left : recording.Left) Require(left.Count > 0, "what was skipped is counted");
}

void RequireSound(const TrackFileContent& content) {
    for (const Recording& recording : content.Recordings) RequireSound(recording);
    for (const NamedPlace& mark : content.Hints.Marks) {
        RequireName(mark.Name);
        RequireOnGlobe(mark.Lat, mark.Lon);
    }
    for (const auto& end : {content.Hints.LinePin, content.Hints.LineBoat})
        if (end) RequireOnGlobe(end->Lat, end->Lon);
    Require(std::abs(content.Hints.ZoneHours.value_or(0)) < 16, "a zone is one of the earth's");
}

/// What the reader of one format makes of a file of any kind.
template <auto Knows, auto Read>
void ReadAs(std::string_view input) {
    Knows(input);
    const TrackFileContent content = Read(input);
    RequireSound(content);
    std::size_t fixes = 0;
    for (const Recording& recording : content.Recordings) fixes += recording.Fixes.size();
    Require(content.Refused == Refusal::None || fixes == 0, "a refused file gives no fix");
    Require(fixes + content.Hints.Marks.size() <= input.size(), "nothing comes out of nothing");
}

}  // namespace

void ReadFitFile(std::string_view input) {
    ReadAs<LooksLikeFit, ReadFit>(input);
}
void ReadVkxFile(std::string_view input) {
    if (LooksLikeVkx(input)) ReadAs<LooksLikeVkx, ReadVkx>(input);
}
void ReadGpxFile(std::string_view input) {
    ReadAs<LooksLikeGpx, ReadGpx>(input);
}
void ReadTcxFile(std::string_view input) {
    ReadAs<LooksLikeTcx, ReadTcx>(input);
}
void ReadKmlFile(std::string_view input) {
    ReadAs<LooksLikeKml, ReadKml>(input);
}
void ReadGeoJsonFile(std::string_view input) {
    ReadAs<LooksLikeGeoJson, ReadGeoJson>(input);
}
void ReadOwnLineTrack(std::string_view input) {
    ReadAs<LooksLikeOwnLines, ReadOwnLines>(input);
}
void ReadNmeaTrack(std::string_view input) {
    ReadAs<LooksLikeNmea, ReadNmea>(input);
}
void ReadIgcTrack(std::string_view input) {
    ReadAs<LooksLikeIgc, ReadIgc>(input);
}
void ReadCsvTrack(std::string_view input) {
    ReadAs<LooksLikeCsv, ReadCsv>(input);
}

void ReadAnyTrackFile(std::string_view input) {
    const TrackFileContent content = ReadTrackFile(input);
    RequireSound(content);
    Require((content.Refused == Refusal::None) != content.Recordings.empty(), "a file is read or refused");
}

}  // namespace keelview::fuzz
