// Recordings of devices. Whatever a file holds, the fixes that come out of it are on the globe and in
// order, and what is too large when unpacked is refused.

#include <cmath>

#include "racedata/tracks/fit.h"
#include "racedata/tracks/formats.h"
#include "racedata/tracks/vkx.h"
#include "target.h"

namespace keelview::fuzz {

namespace {

bool OnGlobe(double lat, double lon) {
    return std::abs(lat) <= 90 && std::abs(lon) <= 180;
}

void RequireSound(const Recording& recording) {
    const RecordedFix* before = nullptr;
    for (const RecordedFix& fix : recording.Fixes) {
        Require(OnGlobe(fix.Lat, fix.Lon), "a fix is on the globe");
        Require(before == nullptr || before->Time < fix.Time, "times rise");
        for (const float direction : {fix.Course, fix.Heading, fix.WindFrom})
            Require(std::isnan(direction) || (direction >= 0 && direction < 360),
                    "a direction is 0 up to below 360");
        for (const float number : {fix.Speed, fix.WaterSpeed, fix.WindSpeed, fix.Accuracy})
            Require(!std::isinf(number), "a number is finite or not told");
        before = &fix;
    }
    for (const Skipped& left : recording.Left) Require(left.Count > 0, "what was skipped is counted");
}

void RequireSound(const TrackFileContent& content) {
    for (const Recording& recording : content.Recordings) RequireSound(recording);
    for (const NamedPlace& mark : content.Hints.Marks)
        Require(OnGlobe(mark.Lat, mark.Lon), "a mark is on the globe");
    for (const auto& end : {content.Hints.LinePin, content.Hints.LineBoat})
        Require(!end || OnGlobe(end->Lat, end->Lon), "an end of the line is on the globe");
    const double zone = content.Hints.ZoneHours.value_or(0);
    Require(std::abs(zone) <= 14, "a zone is one of the earth's");
}

}  // namespace

void ReadFitFile(std::string_view input) {
    RequireSound(ReadFit(input));
}

void ReadVkxFile(std::string_view input) {
    if (LooksLikeVkx(input)) RequireSound(ReadVkx(input));
}

void ReadAnyTrackFile(std::string_view input) {
    const TrackFileContent content = ReadTrackFile(input);
    RequireSound(content);
    Require((content.Refused == Refusal::None) != content.Recordings.empty(), "a file is read or refused");
}

}  // namespace keelview::fuzz
