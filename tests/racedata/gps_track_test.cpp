#include "racedata/gps_track.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "racedata/gps_track_lines.h"
#include "support/temp_tree.h"

namespace keelview {
namespace {

constexpr const char* Place = "N3517.0 E13929.0 ";

TEST(TrackLines, CoordinatesAreReadInTheUnitOfTheFile) {
    struct Case {
        const char* unit;
        const char* lat;
        const char* lon;
        double latMinutes;
        double lonMinutes;
    };
    for (const Case& c : {
             Case{"", "N3537.63550", "E13947.86100", 35 * 60 + 37.6355, 139 * 60 + 47.861},
             Case{"U DMM", "s3537.6", "w07012.5", -(35 * 60 + 37.6), -(70 * 60 + 12.5)},
             Case{"U WGS84 Deg", "+35.5", "-70.25", 2130, -4215},
             Case{"U DEG", "N3537.6", "E1", 3537.6 * 60, 60},  // the unit is trusted, not the look
             Case{"U dms", "S353730.0", "W0701215", -(35 * 60 + 37.5), -(70 * 60 + 12.25)},
             Case{"U", "3537.6", "13947.5", 35 * 60 + 37.6, 139 * 60 + 47.5},  // without a mark: positive
         }) {
        TrackLineReader reader;
        if (*c.unit != '\0') reader.Read(c.unit);
        const auto fix = reader.Read(std::string("T  ") + c.lat + "\t" + c.lon + " 15/10/03 01:23:45 x\r");
        ASSERT_TRUE(fix) << c.lat;
        EXPECT_NEAR(fix->Lat, c.latMinutes, 1e-9) << c.unit;
        EXPECT_NEAR(fix->Lon, c.lonMinutes, 1e-9) << c.unit;
        EXPECT_EQ(fix->GpsTime, MakeCivilTime(2003, 10, 15, 1, 23, 45));
    }
}

TEST(TrackLines, TheFirstDateDecidesTheOrderOfTheFile) {
    struct Case {
        std::vector<const char*> dates;
        std::vector<const char*> read;  // year first; empty for none
    };
    for (const Case& c : {
             Case{{"15/10/03", "15-10-79", "16/10/80"}, {"2003/10/15", "2079/10/15", "1980/10/16"}},
             Case{{"2003-10-15", "2003/10/16", "15/10/03"}, {"2003/10/15", "2003/10/16", ""}},
             Case{{"32/10/03", "05/04/03", "2003/10/15"}, {"", "2003/04/05", ""}},
             Case{{"15/10/2003", "10/16/2003"}, {"2003/10/15", "2003/10/16"}},
         }) {
        TrackLineReader reader;
        for (std::size_t i = 0; i < c.dates.size(); ++i) {
            const auto fix = reader.Read(std::string("T ") + Place + c.dates[i] + " 00:00:00 1");
            EXPECT_EQ(fix ? DateText(fix->GpsTime) : "", c.read[i]) << c.dates[i];
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
        const std::string filled = text.size() < size ? text + std::string(size - text.size(), '#') : text;
        tree.Write("gpsdat/" + file, filled);
        race.Boats.Add({file, ""});
    }
    std::filesystem::path Load() { return LoadAllTracks(tree.Root(), race, tracks, area, scale, {}); }
    void Period(const char* start, const char* finish) {
        race.Start = RaceTime(start);
        race.Finish = RaceTime(finish);
        race.DataFromTime = race.Start.At();
        race.DataToTime = race.Finish.At();
    }
    using Times = OneBased<std::int32_t>;
    const Times& TimesOf(int boat) const { return tracks.Boats[boat].TrackTime; }
};

TEST_F(GpsTrackTest, TimesAreSecondsFromTheStartOnTheLocalClock) {
    struct Case {
        double timeDiff;
        const char* utc;
        const char* start;
        int seconds;
    };
    for (const Case& c : {Case{9, "15/10/03 20:10:00", "2003/10/16 05:09:00", 60},
                          Case{-5, "15/10/03 02:00:00", "2003/10/14 21:00:30", -30},
                          Case{5.75, "15/10/03 02:00:00", "2003/10/15 07:45:00", 0},
                          Case{9, "31/12/03 15:00:00", "2004/1/1 0:00:00", 0}}) {
        SetUp();
        race = {};
        race.TimeDiff = c.timeDiff;
        race.Start = RaceTime(c.start);
        Boat("a.trk", Fixes({c.utc}));
        EXPECT_TRUE(Load().empty());
        EXPECT_EQ(TimesOf(1), Times{c.seconds}) << c.utc;
    }
}

TEST_F(GpsTrackTest, ThePeriodIsThatOfWholeClockMinutes) {
    Period("2004/08/05 12:30:40", "2004/08/05 13:50:20");
    *race.DataFromTime -= 210;  // 12:27:10
    Boat("a.trk",
         Fixes({"05/08/04 12:26:59", "05/08/04 12:27:01", "05/08/04 13:50:59", "05/08/04 13:51:00"}));
    Load();
    EXPECT_EQ(TimesOf(1), (Times{-219, 4819}));
    EXPECT_EQ(tracks.LastGpsTime, ParseDateTime("2004/08/05 13:51:00"));  // parsed, though not kept
}

TEST_F(GpsTrackTest, OfTwoFixesAtOneTimeTheFirstCounts) {
    Period("2004/08/05 12:30:00", "2004/08/05 13:50:00");
    Boat("a.trk", "T N3500.0 E13929.0 05/08/04 12:30:01 1\nT N3600.0 E13929.0 05/08/04 12:30:01 1\n" +
                      Fixes({"05/08/04 12:30:02", "05/08/04 12:30:01"}));
    Load();
    EXPECT_EQ(TimesOf(1), (Times{1, 2, 1}));
    EXPECT_EQ(tracks.Boats[1].TrackLat[1], 2100);
}

TEST_F(GpsTrackTest, ASingleTrackWithoutAStartHasItFourMinutesAfterTheFirstFix) {
    race.TimeDiff = 9;
    Boat("a.trk", Fixes({"05/08/04 03:26:00", "05/08/04 04:00:00"}));
    Load();
    EXPECT_EQ(race.Start.Text(), "2004/08/05 12:30:00");
    EXPECT_EQ(race.Finish.Text(), "2004/08/05 13:00:00");
    EXPECT_EQ(race.DataFromTime, ParseDateTime("2004/08/05 12:26:00"));
    EXPECT_EQ(TimesOf(1), (Times{-240, 1800}));
}

TEST_F(GpsTrackTest, ARaceTakesTheTimesThatItDoesNotTellFromAllItsTracks) {
    struct Case {
        const char* start;
        const char* finish;
        Times first;
        Times second;
    };
    for (const Case& c :
         {Case{"", "", {1560, 3600}, {0, 7200}}, Case{"soon", "2004/08/05 04:00", {1560, 3600}, {0}},
          Case{"2004/08/05 03:30", "", {-240, 1800}, {-1800, 5400}}}) {
        race = {};
        race.RaceFileName = "R1.txt";
        Period(c.start, c.finish);
        Boat("a.trk", Fixes({"05/08/04 03:26:00", "05/08/04 04:00:00"}));
        Boat("b.trk", Fixes({"05/08/04 03:00:00", "05/08/04 05:00:00"}));
        Load();
        EXPECT_EQ(TimesOf(1), c.first) << c.start;
        EXPECT_EQ(TimesOf(2), c.second) << c.start;
        EXPECT_EQ(race.Start.Typed() + race.Finish.Typed(), std::string(c.start) + c.finish);
        EXPECT_EQ(race.Start.At(), ParseDateTime(c.first[1] < 0 ? "2004/08/05 03:30" : "2004/08/05 03:00"));
        EXPECT_EQ(race.Finish.At(),
                  ParseDateTime(c.second.Count() == 1 ? "2004/08/05 04:00" : "2004/08/05 05:00"));
    }
}

TEST_F(GpsTrackTest, SmallFilesAndOtherExtensionsGiveNoPointsAndAMissingOneIsNamed) {
    const std::string one = Fixes({"05/08/04 12:30:01"});
    race.Start = RaceTime("2004/08/05 12:30:00");
    for (const char* name : {"a.trk", "b.DTR", "c.Trk", "d.txt", "trk"}) Boat(name, one);
    Boat("small.trk", one, 500);
    Boat("large.trk", one, 501);
    EXPECT_TRUE(Load().empty());
    std::vector<int> fixes;
    for (const Track& track : tracks.Boats) fixes.push_back(track.Count());
    EXPECT_EQ(fixes, (std::vector<int>{1, 1, 0, 0, 1, 0, 1}));
    race.Boats[2].BoatFile = "gone.trk";
    EXPECT_EQ(Load(), tree.Root() / "gpsdat/gone.trk");
}

TEST_F(GpsTrackTest, TheHomeViewIsTheBoxOfAllPointsThatHaveAPosition) {
    race.Start = RaceTime("2004/08/05 12:30:00");
    Boat("a.trk",
         "T N3500.0 E13900.0 05/08/04 12:30:01 1\nT N0 E13900.0 05/08/04 12:30:02 1\n"
         "T N3502.0 E13900.0 05/08/04 12:30:03 1\n");
    Boat("b.trk", "T N3501.0 E13910.0 05/08/04 12:30:01 1\n");
    Load();
    EXPECT_EQ(area.HomeCentreLat, 2101);
    EXPECT_EQ(area.HomeCentreLon, 8345);
    EXPECT_NEAR(area.AreaSpan, 10 * 0.8223, 0.002);  // 10 minutes of longitude at 35 degrees north
    EXPECT_NEAR(scale.MetresPerLatMinute, 1846.3, 0.05);
    race.Boats.Clear();
    Load();
    EXPECT_EQ(area.HomeCentreLat, 0);
    EXPECT_EQ(area.AreaSpan, 0.1);
}

}  // namespace
}  // namespace keelview
