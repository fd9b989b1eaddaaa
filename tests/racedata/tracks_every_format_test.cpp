// One track in every format: whatever it is written in, it is the same track.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <ctime>

#include "support/told_recordings.h"

namespace keelview {
namespace {

using Fixes = std::vector<RecordedFix>;

std::string Number(double value, int width, int decimals = 0) {
    char text[64];
    std::snprintf(text, sizeof text, "%0*.*f", width, decimals, value);
    return text;
}

/// "03517.1234567" of an angle: degrees and minutes.
std::string Minutes(double angle, int width) {
    const double size = std::abs(angle), degrees = std::trunc(size);
    return Number(degrees * 100 + (size - degrees) * 60, width, 7);
}

std::string FitFix(const RecordedFix& fix) {
    const std::string lat = FitAngle(fix.Lat, true), lon = FitAngle(fix.Lon, true);
    const std::string second = Be((fix.Time - FitEpoch) / 1000, 4), ms = Be(fix.Time % 1000, 2);
    const std::string speed = Be(std::lround(fix.Speed * Knot * 1000), 4),
                      course = Be(std::lround(fix.Course * 100), 2);
    return FitMessage(160, {{253, second}, {0, ms}, {1, lat}, {2, lon}, {4, speed}, {5, course}}, true);
}

/// A form with what a fix tells: time %i, its day %d, clock %c and milliseconds %m, day %D and clock %C in
/// digits alone; degrees %a and %o; degrees and minutes %A %N and %O %E, or their digits %B %q and %P %u;
/// speed in knots %k, m/s %s and km/h %h; course %t; and the binary FIT %F and VKX %V.
std::string Filled(std::string_view form, const RecordedFix& fix) {
    const auto time = [second = static_cast<std::time_t>(fix.Time / 1000)](const char* as) {
        char text[40];
        return std::string(text, std::strftime(text, sizeof text, as, std::gmtime(&second)));
    };
    const auto list = [](const auto&... words) { return std::array{std::string(words)...}; };
    const std::string ms = Number(static_cast<double>(fix.Time % 1000), 3);
    const std::string lat = Minutes(fix.Lat, 12), lon = Minutes(fix.Lon, 13);
    constexpr std::string_view letters = "idcmDCaoABqNOPuEkshtFV";
    const auto words = list(
        time("%FT%T.") + ms + "Z", time("%F"), time("%T"), ms, time("%d%m%y"), time("%H%M%S"),
        Number(fix.Lat, 1, 8), Number(fix.Lon, 1, 8), lat, lat.substr(0, 4) + lat.substr(5, 3),
        lat.substr(8), fix.Lat < 0 ? "S" : "N", lon, lon.substr(0, 5) + lon.substr(6, 3), lon.substr(9),
        fix.Lon < 0 ? "W" : "E", Number(fix.Speed, 1, 3), Number(fix.Speed * Knot, 1, 4),
        Number(fix.Speed * 1.852, 3), Number(fix.Course, 3), FitFix(fix), VkxFix(fix));
    std::string text;
    for (std::size_t at = 0; at < form.size(); ++at)
        text += form[at] == '%' ? words[letters.find(form[++at])] : std::string{form[at]};
    return text.starts_with('$') ? Sentence(text.substr(1)) : text;
}

/// A format: what stands before the fixes, filled by the first of them, each fix, and what stands behind.
struct Row {
    const char* Format;
    std::string Head;
    const char *Fix, *End;
    double Knots;  // to which the speed comes back; 0 where none is told
    bool HasCourse;
    int WhenCut;  // of a file cut off are read: 0 nothing, 1 whole fixes, 2 a part of the last one, too

    std::string File(const Fixes& fixes) const {
        std::string text = Filled(Head, fixes.at(0));
        for (const RecordedFix& fix : fixes) text += Filled(Fix, fix);
        return Format == std::string("FIT") ? FitFile(text) : text + End;
    }
};
const Row Rows[] = {
    {"Keelview", "U DMM\r\n", "T %N%A %E%O %d %c.%m 0\r\n", "", 0, false, 2},
    {"FIT", "", "%F", "", 1e-3, true, 1},
    {"VKX", VkxHead, "%V", "", 1e-5, true, 2},
    {"GPX", "<gpx><trk><trkseg>",
     "<trkpt lat='%a' lon='%o'><time>%i</time><speed>%s</speed><course>%t</course></trkpt>",
     "</trkseg></trk></gpx>", 1e-3, true, 1},
    {"TCX", "<TrainingCenterDatabase><Activity><Track>",
     "<Trackpoint><Time>%i</Time><Position><LatitudeDegrees>%a</LatitudeDegrees><LongitudeDegrees>%o"
     "</LongitudeDegrees></Position><Extensions><TPX><Speed>%s</Speed></TPX></Extensions></Trackpoint>",
     "</Track></Activity></TrainingCenterDatabase>", 1e-3, false, 1},
    {"KML", "<kml><Placemark><gx:Track>", "<when>%i</when><gx:coord>%o %a 0</gx:coord>",
     "</gx:Track></Placemark></kml>", 0, false, 1},
    {"GeoJSON", R"({"features":[)",
     R"({"geometry":{"type":"Point","coordinates":[%o,%a]},"properties":{"time":"%i"}},)", "{}]}", 0, false,
     0},
    {"NMEA 0183", "", "$GPRMC,%C.%m,A,%A,%N,%O,%E,%k,%t,%D,,", "", 1e-5, true, 2},
    {"IGC", "HFDTE%D\r\nI053638TDS3942LAD4346LOD4749GSP5052TRT\r\n", "B%C%B%N%P%EA0000000000%m%q%u%h%t\r\n",
     "", 0.28, true, 2},
    {"CSV", "time,lat,lon,sog,cog\n", "%i,%a,%o,%k,%t\n", "", 1e-5, true, 2},
};

/// A boat that turns over north, from a place on and over the next midnight.
Fixes Sailed(double lat, double lon, int count) {
    Fixes fixes;
    for (int i = 0; i < count; ++i)
        fixes.push_back({Noon + 43'160'007 + i * 1237, lat + i * 0.0000123,
                         std::remainder(lon + i * 0.0001234, 360), static_cast<float>(5 + i % 9 * 0.125),
                         static_cast<float>((340 + i * 7) % 360)});
    return fixes;
}

void ExpectSame(const Row& row, const RecordedFix& fix, const RecordedFix& truth) {
    EXPECT_EQ(fix.Time, truth.Time);
    EXPECT_NEAR(fix.Lat, truth.Lat, 5e-8);
    EXPECT_NEAR(fix.Lon, truth.Lon, 5e-8);
    EXPECT_EQ(row.Knots == 0, !(std::abs(fix.Speed - truth.Speed) <= row.Knots));
    EXPECT_EQ(row.HasCourse, std::abs(fix.Course - truth.Course) <= 1e-3);
}

TEST(EveryFormat, GivesTheTrackThatWasWritten) {
    constexpr double places[][2] = {{35.28, 139.48}, {-33.85, 151.22}, {-4e-4, -2e-3}, {-17.9, 179.996}};
    for (const TrackFormat& format : TrackFormats())
        EXPECT_NE(std::ranges::find(Rows, format.Name, &Row::Format), std::end(Rows)) << format.Name;
    for (const Row& row : Rows)
        for (const auto& [lat, lon] : places) {
            SCOPED_TRACE(row.Format + ToldPlace(lat, lon));
            const Fixes truth = Sailed(lat, lon, 60);
            const std::string file = row.File(truth);
            const TrackFileContent content = ReadTrackFile(file);
            ASSERT_TRUE(content.Format == row.Format && content.Recordings.size() == 1);
            const Recording& track = content.Recordings[0];
            ASSERT_TRUE(track.Fixes.size() == truth.size() && track.Left.empty());
            for (std::size_t i = 0; i < truth.size(); ++i) ExpectSame(row, track.Fixes[i], truth[i]);
            for (const std::string& packed : {Gz(file), Zip({{"a.png", "x"}, {"doc.kml", file}})})
                EXPECT_EQ(Told(ReadTrackFile(packed)), Told(content));
        }
}

TEST(EveryFormat, IsReadUpToWhereAFileIsCutOff) {
    const Fixes truth = Sailed(35.28, 139.48, 3);
    for (const Row& row : Rows) {
        const std::string file = row.File(truth);
        for (std::size_t size = 0, whole = 0; size < file.size(); ++size) {
            SCOPED_TRACE(row.Format + std::to_string(size));
            const TrackFileContent content = ReadTrackFile(file.substr(0, size));
            const Recording track = content.Recordings.empty() ? Recording() : content.Recordings[0];
            const std::size_t count = track.Fixes.size();
            if (whole < truth.size() && row.File({truth.begin(), truth.begin() + whole + 1}).size() <= size)
                ++whole;
            EXPECT_TRUE(row.WhenCut == 0 ? count == 0 : count >= whole && count <= truth.size());
            for (std::size_t i = 0; i + (row.WhenCut == 2) < count; ++i)
                EXPECT_NEAR(track.Fixes[i].Lon, truth[i].Lon, 5e-8);
            EXPECT_TRUE(row.WhenCut == 2 || count == 0 || ToldLeft(track.Left).ends_with(" Broken 1"));
        }
    }
}

}  // namespace
}  // namespace keelview
