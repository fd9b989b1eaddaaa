// Recordings as XML and JSON. Whatever a file holds, what comes out of it is in order of time and on the
// globe.

#include <cmath>

#include "base/text_encoding.h"
#include "racedata/tracks/geojson.h"
#include "racedata/tracks/gpx.h"
#include "racedata/tracks/kml.h"
#include "racedata/tracks/tcx.h"
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

void RequireSoundFixes(const Recording& recording) {
    for (std::size_t i = 0; i < recording.Fixes.size(); ++i) {
        const RecordedFix& fix = recording.Fixes[i];
        RequireOnGlobe(fix.Lat, fix.Lon);
        Require(i == 0 || fix.Time > recording.Fixes[i - 1].Time, "fixes are in the order of time");
        Require(std::isnan(fix.Speed) || (fix.Speed >= 0 && fix.Speed < 1e4),
                "a speed is one, or not told");
        Require(std::isnan(fix.Course) || (fix.Course >= 0 && fix.Course < 360),
                "a course is 0 up to below 360, or not told");
    }
}

void RequireSound(const TrackFileContent& content, std::string_view input) {
    std::size_t fixes = 0;
    for (const Recording& recording : content.Recordings) {
        RequireName(recording.Boat);
        RequireName(recording.Device);
        RequireSoundFixes(recording);
        fixes += recording.Fixes.size();
    }
    Require(content.Refused == Refusal::None || fixes == 0, "a refused file gives no fix");
    Require(fixes + content.Hints.Marks.size() <= input.size(), "nothing comes out of nothing");
    for (const NamedPlace& mark : content.Hints.Marks) {
        RequireName(mark.Name);
        RequireOnGlobe(mark.Lat, mark.Lon);
    }
}

}  // namespace

void ReadGpxFile(std::string_view input) {
    LooksLikeGpx(input);
    RequireSound(ReadGpx(input), input);
}

void ReadTcxFile(std::string_view input) {
    LooksLikeTcx(input);
    RequireSound(ReadTcx(input), input);
}

void ReadKmlFile(std::string_view input) {
    LooksLikeKml(input);
    RequireSound(ReadKml(input), input);
}

void ReadGeoJsonFile(std::string_view input) {
    LooksLikeGeoJson(input);
    RequireSound(ReadGeoJson(input), input);
}

}  // namespace keelview::fuzz
