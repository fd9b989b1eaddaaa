#include "racedata/gps_track.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <tuple>
#include <vector>

#include "racedata/track_faults.h"
#include "racedata/tracks/formats.h"
#include "racedata/tracks/own_lines.h"
#include "support/temp_tree.h"

namespace keelview {
namespace {

constexpr const char* Place = "N3517.0 E13929.0 ";

TEST(TrackLines, CoordinatesAreReadInTheUnitOfTheFile) {
    using Case = std::tuple<const char*, const char*, double, double>;
    for (const auto& [unit, position, lat, lon] : {
             Case{"", "N3537.63550 E13947.86100", 35 * 60 + 37.6355, 139 * 60 + 47.861},
             Case{"U DMM", "s3537.6 w07012.5", -(35 * 60 + 37.6), -(70 * 60 + 12.5)},
             Case{"U WGS84 Deg", "+35.5 -70.25", 2130, -4215},
             Case{"U DEG", "N3537.6 E1", 3537.6 * 60, 60},  // the unit is trusted, not the look
             Case{"U dms", "S353730.0\tW0701215", -(35 * 60 + 37.5), -(70 * 60 + 12.25)},
             Case{"U", "3537.6 13947.5", 35 * 60 + 37.6, 139 * 60 + 47.5},  // without a mark: positive
         }) {
        TrackLineReader reader;
        reader.Read(unit);
        const auto fix = reader.Read(std::string("T  ") + position + " 15/10/03 01:23:45.250 x\r");
        ASSERT_TRUE(fix) << position;
        EXPECT_NEAR(fix->Lat, lat, 1e-9) << unit;
        EXPECT_NEAR(fix->Lon, lon, 1e-9) << unit;
        EXPECT_EQ(fix->Time, *MakeCivilTime(2003, 10, 15, 1, 23, 45) * 1000 + 250);
    }
}

TEST(TrackLines, TheFirstDateDecidesTheOrderOfTheFile) {
    using Pairs = std::vector<std::pair<const char*, const char*>>;  // as it stands, year first or nothing
    for (const Pairs& file : {
             Pairs{{"15/10/03", "2003/10/15"}, {"15-10-79", "2079/10/15"}, {"16/10/80", "1980/10/16"}},
             Pairs{{"2003-10-15", "2003/10/15"}, {"2003/10/16", "2003/10/16"}, {"15/10/03", ""}},
             Pairs{{"32/10/03", ""}, {"05/04/03", "2003/04/05"}, {"2003/10/15", ""}},
             Pairs{{"15/10/2003", "2003/10/15"}, {"10/16/2003", "2003/10/16"}},
         }) {
        TrackLineReader reader;
        for (const auto& [date, read] : file) {
            const auto fix = reader.Read(std::string("T ") + Place + date + " 00:00:00 1");
            EXPECT_EQ(fix ? DateText(fix->Time / 1000) : "", read) << date;
        }
    }
}

TEST(TrackLines, LinesThatAreNoFixSayNothing) {
    TrackLineReader reader;
    for (const char* line :
         {"", "T", "H header", "T N3517.0 E13929.0 15/10/03 01:23:45",
          "T N3517.0 E13929.0 15/10/03 25:00:00 1", "T N3517.0 E13929.0 15/10/03 noon 1",
          "T N3517.0 E13929.0 someday 01:23:45 1", "T N1e300 E13929.0 15/10/03 01:23:45 1",
          " T N3517.0 E13929.0 15/10/03 01:23:45 1"})
        EXPECT_FALSE(reader.Read(line)) << line;
    EXPECT_TRUE(
        reader.Read("T N3517.0 E13929.0 15/10/03 01:23:45.9 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16"));
}

TEST(TrackLines, AFileOfLinesIsARecordingInDegreesAndMilliseconds) {
    const TrackFileContent content = ReadTrackFile(
        "H SOFTWARE any\r\nU DMM\r\nT N3530.0 W13915.0 21/06/25 12:00:00 0\r\nT N0000.0 E00000.0 21/06/25 "
        "12:00:01 0\r\n"
        "T N3530.0 W13915.0 21/06/25 25:00:00 0\r\nT S3530.6 E13915.0 21/06/25 12:00:02 0\r\n");
    EXPECT_EQ(content.Format, "Keelview");
    ASSERT_EQ(content.Recordings.size(), 1U);
    const Recording& track = content.Recordings[0];
    ASSERT_EQ(track.Fixes.size(), 2U);
    EXPECT_EQ(track.Fixes[0].Time, 1750507200000);
    EXPECT_NEAR(track.Fixes[0].Lat, 35.5, 1e-12);
    EXPECT_NEAR(track.Fixes[0].Lon, -139.25, 1e-12);
    EXPECT_NEAR(track.Fixes[1].Lat, -35.51, 1e-12);
    ASSERT_EQ(track.Left.size(), 2U);
    EXPECT_EQ(track.Left[0].Why, SkipReason::NoPlace);
    EXPECT_EQ(track.Left[1].Why, SkipReason::Broken);
    EXPECT_EQ(ReadTrackFile("T is the first letter of this text, and nothing else\n").Refused,
              Refusal::Unknown);
}

/// A race of one boat whose track is given as lines of date and time in UTC.
struct GpsTrackTest : testing::Test {
    TempTree tree;
    RaceControl race;
    Tracks tracks;
    TrackArea area;
    EarthScale scale;

    static std::string Fixes(const std::vector<std::string>& times) {
        std::string text;
        for (const std::string& time : times) text += std::string("T ") + Place + time + " 1\r\n";
        return text;
    }
    void Boat(const std::string& file, const std::string& text, std::size_t size = 600) {
        tree.Write("gpsdat/" + file, text + std::string(size - std::min(size, text.size()), '#'));
        race.Boats.Add({file, ""});
    }
    std::filesystem::path Load() { return LoadAllTracks(tree.Root(), race, tracks, area, scale, {}); }
    /// The seconds of each boat's fixes.
    using Seconds = std::vector<std::vector<int>>;
    Seconds Times() const {
        Seconds times;
        for (const Track& track : tracks.Boats)
            times.emplace_back(track.TrackTime.begin(), track.TrackTime.end());
        return times;
    }
};

TEST_F(GpsTrackTest, TimesAreSecondsFromTheStartOnTheLocalClock) {
    using Case = std::tuple<int, const char*, const char*, int>;
    for (const auto& [timeDiff, utc, start, seconds] :
         {Case{9, "15/10/03 20:10:00", "2003/10/16 05:09:00", 60},
          Case{-5, "15/10/03 02:00:00", "2003/10/14 21:00:30", -30},
          Case{9, "31/12/03 15:00:00", "2004/1/1 0:00:00", 0}}) {
        race = {};
        race.TimeDiff = timeDiff;
        race.Start = RaceTime(start);
        Boat("a.trk", Fixes({utc}));
        EXPECT_TRUE(Load().empty());
        EXPECT_EQ(Times(), (Seconds{{seconds}})) << utc;
    }
}

TEST_F(GpsTrackTest, ThePeriodIsThatOfWholeClockMinutes) {
    race.Start = RaceTime("2004/08/05 12:30:40");
    race.Finish = RaceTime("2004/08/05 13:50:20");
    race.DataFromTime = ParseDateTime("2004/08/05 12:27:10");
    race.DataToTime = race.Finish.At();
    // Of two fixes at one time the first counts.
    Boat("a.trk", "T N3500.0 E13929.0 05/08/04 12:30:01 1\nT N3600.0 E13929.0 05/08/04 12:30:01 1\n" +
                      Fixes({"05/08/04 12:30:02", "05/08/04 12:30:01"}));
    Boat("b.trk",
         Fixes({"05/08/04 12:26:59", "05/08/04 12:27:01", "05/08/04 13:50:59", "05/08/04 13:51:00"}));
    Load();
    EXPECT_EQ(Times(), (Seconds{{-39, -38, -39}, {-219, 4819}}));
    EXPECT_EQ(tracks.Boats[1].TrackLat[1], 2100);
    EXPECT_EQ(tracks.LastGpsTime, ParseDateTime("2004/08/05 13:51:00"));  // parsed, though not kept
}

TEST_F(GpsTrackTest, ASingleTrackWithoutAStartHasItFourMinutesAfterTheFirstFix) {
    race.TimeDiff = 9;
    Boat("a.trk", Fixes({"05/08/04 03:26:00", "05/08/04 04:00:00"}));
    Load();
    EXPECT_EQ(race.Start.Text(), "2004/08/05 12:30:00");
    EXPECT_EQ(race.Finish.Text(), "2004/08/05 13:00:00");
    EXPECT_EQ(race.DataFromTime, ParseDateTime("2004/08/05 12:26:00"));
    EXPECT_EQ(Times(), (Seconds{{-240, 1800}}));
}

TEST_F(GpsTrackTest, SmallFilesGiveNoPointsWhateverTheirExtensionAndAMissingOneIsNamed) {
    const std::string one = Fixes({"05/08/04 12:30:01"});
    race.Start = RaceTime("2004/08/05 12:30:00");
    for (const char* name : {"a.trk", "b.DTR", "c.Trk", "d.txt", "trk"}) Boat(name, one);
    Boat("small.trk", one, 500);
    Boat("large.trk", one, 501);
    EXPECT_TRUE(Load().empty());
    EXPECT_EQ(Times(), (Seconds{{1}, {1}, {1}, {1}, {1}, {}, {1}}));
    race.Boats[2].BoatFile = "gone.trk";
    EXPECT_EQ(Load(), tree.Root() / "gpsdat/gone.trk");
}

TEST_F(GpsTrackTest, TheHomeViewIsTheBoxOfAllPoints) {
    race.Start = RaceTime("2004/08/05 12:30:00");
    Boat("a.trk",
         "T N3500.0 E13900.0 05/08/04 12:30:01 1\nT N0 E0 05/08/04 12:30:02 1\n"
         "T N3502.0 E13900.0 05/08/04 12:30:03 1\n");
    Boat("b.trk", "T N3501.0 E13910.0 05/08/04 12:30:01 1\n");
    Load();
    EXPECT_EQ(area.HomeCentreLat, 2101);
    EXPECT_EQ(area.HomeCentreLon, 8345);
    EXPECT_NEAR(area.AreaSpan, 10 * 0.8223, 0.002);  // 10 minutes of longitude at 35 degrees north
    EXPECT_NEAR(scale.MetresPerLatMinute, 1846.3, 0.05);
    // Where equator, meridian of Greenwich and date line are, too.
    using Case = std::tuple<const char*, const char*, Position, double>;
    for (const auto& [first, second, middle, span] :
         {Case{"N0 E0000.1", "S0002.0 E0", {-1, 0.05}, 2},
          Case{"S3351.0 E15113.0", "S3353.0 E15113.0", {-2032, 9073}, 2},
          Case{"S0001.0 E17958.0", "S0001.0 W17958.0", {-1, 10800}, 4 * 1.00613},
          Case{"S0001.0 W17958.0", "S0001.0 E17958.0", {-1, -10800}, 4 * 1.00613},
          Case{"N8500.0 E0", "N8501.0 W0001.0", {5100.5, -0.5}, 1}}) {
        race.Boats.Clear();
        for (const char* place : {first, second})
            Boat(std::to_string(race.Boats.Count()) + ".trk",
                 std::string("T ") + place + " 05/08/04 12:30:01 1\n");
        Load();
        EXPECT_EQ(area.HomeCentreLat, middle.Lat) << first;
        EXPECT_NEAR(area.HomeCentreLon, middle.Lon, 1e-9) << first;
        EXPECT_NEAR(area.AreaSpan, span, 1e-4) << first;
    }
    race.Boats.Clear();
    Load();
    EXPECT_EQ(area.HomeCentreLat, 0);
    EXPECT_EQ(area.AreaSpan, 0.1);
}

TEST_F(GpsTrackTest, ATrackIsReadWithoutItsImpossibleFixesAndTellsHowMany) {
    std::string text;
    for (const char* place : {"N0000.0 E00000.0", "N3517.00 E13929.0", "N3517.01 E13929.0",
                              "N3617.0 E13929.0", "N3517.02 E13929.0", "N0000.0 E13929.0"})
        text += std::string("T ") + place + " 05/08/04 03:30:" + std::to_string(10 + text.size() / 46) +
                " 1\r\n";
    Boat("a.trk", text, 1000);
    Load();
    EXPECT_EQ(tracks.Boats[1].SkippedFixes, 2);  // the first and the fourth; a last one is not judged
    ASSERT_EQ(tracks.Boats[1].Count(), 4);
    EXPECT_NEAR(tracks.Boats[1].TrackLat[3], 2117.02, 1e-9);
    EXPECT_NEAR(area.HomeCentreLat, 2117.02 / 2, 1e-9);  // the equator is a place like any other
}

TEST(TrackFaults, OneFixOutOfAllReachIsTakenOut) {
    using Lats = std::vector<double>;  // minutes north, a second apart where no times are given
    using Case = std::tuple<const char*, Lats, std::vector<int>, int>;
    for (const auto& [name, lats, times, dropped] : {
             Case{"99 knots", {0, 99 / 3600.0, 0}, {}, 0},
             Case{"101 knots", {0, 101 / 3600.0, 0}, {}, 1},
             Case{"a leap that stays", {0, 0, 1, 1, 1}, {}, 0},
             Case{"two together", {0, 0, 1, 1, 0, 0}, {}, 0},
             Case{"two apart", {0, 1, 0, -1, 0}, {}, 2},
             Case{"first and last", {1, 0, 0, 1}, {}, 0},
             Case{"far in an hour", {0, 50, 0}, {0, 3600, 7200}, 0},
             Case{"a clock that falls back", {0, 1, 0}, {5, 5, 4}, 0},
         }) {
        Track track;
        for (std::size_t i = 0; i < lats.size(); ++i) {
            track.TrackLat.Add(2117 + lats[i]);
            track.TrackLon.Add(8369);
            track.TrackTime.Add(times.empty() ? static_cast<int>(i) : times[i]);
        }
        EXPECT_EQ(DropImpossibleFixes(track), dropped) << name;
        for (const int count : {track.Count(), track.TrackLat.Count(), track.TrackLon.Count()})
            EXPECT_EQ(count, static_cast<int>(lats.size()) - dropped) << name;
    }
    // A degree of longitude is half as long at 60 degrees: 150 minutes of it in an hour are 75 knots.
    Track east;
    for (const int t : {0, 1, 2}) {
        east.TrackLat.Add(3600);
        east.TrackLon.Add(t == 1 ? 150 : 0);
        east.TrackTime.Add(t * 3600);
    }
    EXPECT_EQ(DropImpossibleFixes(east), 0);
}

}  // namespace
}  // namespace keelview
