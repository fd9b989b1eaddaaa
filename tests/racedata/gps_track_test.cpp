// Tracks in a race: which recording is meant, whose clock is late, what lies in the period, and what is
// left out.

#include "racedata/gps_track.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <tuple>
#include <vector>

#include "racedata/track_faults.h"
#include "support/race_tree.h"
#include "support/told_recordings.h"

namespace keelview {
namespace {

constexpr UnixMs Gun = (RaceTree::Start - 9 * 3600) * UnixMs{1000};  // 2004/08/05 03:30:00 UTC

/// A race whose tracks are given as lines of a place and a date with a time in UTC.
struct GpsTrackTest : testing::Test {
    RaceTree tree;
    RaceControl race;
    Tracks tracks;
    TrackArea area;
    EarthScale scale;
    std::filesystem::path missing;

    void Write(const std::string& file, const std::vector<std::string>& times, std::size_t size = 600) {
        std::string text;
        for (const std::string& time : times)
            text += "T " + (time[0] > '9' ? "" : std::string("N3517.0 E13929.0 ")) + time + " 1\r\n";
        tree.Write("gpsdat/" + file, text + std::string(size - std::min(size, text.size()), '#'));
    }
    /// The times of each boat's fixes, or why there are none: "-39 -38, Missing, 4819, ".
    std::string Load(const std::vector<std::string>& files, const TrackProgress& progress = {}) {
        race.Boats.Clear();
        for (const std::string& file : files) race.Boats.Add({file, ""});
        missing = LoadAllTracks(tree.Root(), race, tracks, area, scale, progress);
        std::string text;
        for (const Track& track : tracks.Boats) {
            if (track.Refused != Refusal::None) text += ToldRefusal(track.Refused);
            for (const double time : track.TrackTime) text += NumberText(time) + " ";
            text += ", ";
        }
        return text;
    }
};

TEST_F(GpsTrackTest, TimesAreSecondsFromTheStartOnTheLocalClock) {
    const auto timesOf = [&](int timeDiff, const char* start, const char* utc) {
        race.TimeDiff = timeDiff;
        race.Start = RaceTime(start);
        race.Finish = {};
        Write("a.trk", {utc});
        return Load({"a.trk"});
    };
    EXPECT_EQ(timesOf(9, "2003/10/16 05:09:00", "15/10/03 20:10:00"), "60 , ");
    EXPECT_EQ(timesOf(-5, "2003/10/14 21:00:30", "15/10/03 02:00:00"), "-30 , ");
    EXPECT_EQ(timesOf(9, "2004/1/1 0:00:00", "31/12/03 15:00:00"), "0 , ");
}

TEST_F(GpsTrackTest, ThePeriodIsThatOfWholeClockMinutes) {
    race.Start = RaceTime("2004/08/05 12:30:40");
    race.Finish = RaceTime("2004/08/05 13:50:20");
    race.DataFromTime = ParseDateTime("2004/08/05 12:27:10");
    race.DataToTime = race.Finish.At();
    Write("a.trk", {"N3500.0 E13929.0 05/08/04 12:30:01", "05/08/04 12:30:01", "05/08/04 12:30:02",
                    "05/08/04 12:30:01"});
    Write("b.trk", {"05/08/04 12:26:59", "05/08/04 12:27:01", "05/08/04 13:50:59", "05/08/04 13:51:00"});
    EXPECT_EQ(Load({"a.trk", "b.trk"}), "-39 -38 -39 , -219 4819 , ");
    EXPECT_EQ(tracks.Boats[1].TrackLat[1], 2100);  // the first of two at one time
    EXPECT_EQ(tracks.FirstGpsTime, ParseDateTime("2004/08/05 12:30:01"));
    EXPECT_EQ(tracks.LastGpsTime, ParseDateTime("2004/08/05 13:51:00"));  // parsed, though not kept
}

TEST_F(GpsTrackTest, AFileIsReadByItsContentAndTheRestIsToldWhy) {
    race.Start = RaceTime("2004/08/05 12:30:00");
    for (const char* name : {"a.trk", "b.DTR", "c.Trk", "d.txt", "trk", "own.gpx"})
        Write(name, {"05/08/04 12:30:01"});
    Write("a.trk#2", {"05/08/04 12:30:02"});
    Write("small.trk", {"05/08/04 12:30:01"}, 500);
    Write("large.trk", {"05/08/04 12:30:01"}, 501);
    Write("empty.trk", {}, 0);
    Write("some.trk", {});
    tree.Write("gpsdat/closed.vtk", "VTK1");
    int told = 0;
    EXPECT_EQ(Load({"a.trk", "b.DTR", "c.Trk", "d.txt", "trk", "own.gpx", "OWN.GPX#1", "a.trk#2", "a.trk#",
                    "a.trk#3", "small.trk", "large.trk", "closed.vtk", "empty.trk", "some.trk", "gone.gpx",
                    "gone.gpx#1"},
                   [&](int boat) { told += boat; }),
              "1 , 1 , 1 , 1 , 1 , 1 , 1 , 2 , 1 , NoRecording, NoFixes, 1 , Velocitek, Empty, Unknown, "
              "Missing, Missing, ");
    EXPECT_EQ(told, 17 * 18 / 2);
    EXPECT_EQ(missing, tree.Root() / "gpsdat/gone.gpx");
}

TEST_F(GpsTrackTest, TheHomeViewIsTheBoxOfAllPoints) {
    using Case = std::tuple<std::vector<std::string>, Position, double>;
    race.Start = RaceTime("2004/08/05 12:30:00");
    for (const auto& [places, middle, span] :
         {Case{{"N3500.0 E13900.0", "N0 E0", "N3502.0 E13900.0", "N3501.0 E13910.0"}, {2101, 8345}, 8.223},
          {{"N0 E0000.1", "S0002.0 E0"}, {-1, 0.05}, 2},
          {{"S3351.0 E15113.0", "S3353.0 E15113.0"}, {-2032, 9073}, 2},
          {{"S0001.0 E17958.0", "S0001.0 W17958.0"}, {-1, 10800}, 4.0245},
          {{"S0001.0 W17958.0", "S0001.0 E17958.0"}, {-1, -10800}, 4.0245},
          {{"N8500.0 E0", "N8501.0 W0001.0"}, {5100.5, -0.5}, 1},
          {{}, {0, 0}, 0.1}}) {
        for (const std::string& place : places) Write(place, {place + " 05/08/04 12:30:01"});
        Load(places);
        EXPECT_EQ(area.HomeCentreLat, middle.Lat) << span;
        EXPECT_NEAR(area.HomeCentreLon, middle.Lon, 1e-9) << span;
        EXPECT_NEAR(area.AreaSpan, span, 0.002);
        EXPECT_EQ(scale.MetresPerLatMinute, ComputeEarthScale(middle.Lat).MetresPerLatMinute);
    }
}

TEST_F(GpsTrackTest, ATrackIsReadWithoutItsImpossibleFixesAndTellsHowMany) {
    Write("a.trk", {"N0 E0 05/08/04 03:30:09", "05/08/04 03:30:10", "N3517.01 E13929.0 05/08/04 03:30:11",
                    "N3617.0 E13929.0 05/08/04 03:30:12", "N3517.02 E13929.0 05/08/04 03:30:13",
                    "N0 E13929.0 05/08/04 03:30:14"});
    EXPECT_EQ(Load({"a.trk"}), "-240 -239 -237 -236 , ");
    EXPECT_EQ(tracks.Boats[1].SkippedFixes, 2);  // the first and the fourth; a last one is not judged
    EXPECT_NEAR(area.HomeCentreLat, 2117.02 / 2, 1e-9);  // the equator is a place like any other
}

TEST(TrackFaults, OneFixOutOfAllReachIsTakenOut) {
    using Case =
        std::tuple<std::vector<Position>, std::vector<int>, int>;  // minutes, seconds, and how many go
    for (const auto& [fixes, times, dropped] :
         {Case{{{}, {99 / 3600.0}, {}}, {0, 1, 2}, 0},  // knots
          {{{}, {101 / 3600.0}, {}}, {0, 1, 2}, 1},
          {{{}, {}, {1}, {1}, {1}}, {0, 1, 2, 3, 4}, 0},        // a leap that stays
          {{{}, {}, {1}, {1}, {}, {}}, {0, 1, 2, 3, 4, 5}, 0},  // two together
          {{{}, {1}, {}, {-1}, {}}, {0, 1, 2, 3, 4}, 2},        // two apart
          {{{1}, {}, {}, {1}}, {0, 1, 2, 3}, 0},                // first and last
          {{{}, {1}, {}}, {5, 5, 4}, 0},                        // a clock that falls back
          {{{}, {50}, {}}, {0, 3600, 7200}, 0},
          {{{}, {0, 190}, {}}, {0, 3600, 7200}, 0},  // 95 knots at 60 degrees
          {{{}, {0, 210}, {}}, {0, 3600, 7200}, 1}}) {
        Track track;
        for (const Position& fix : fixes) {
            track.TrackTime.Add(times[static_cast<std::size_t>(track.Count())]);
            track.TrackLat.Add(3600 + fix.Lat);
            track.TrackLon.Add(8369 + fix.Lon);
            track.TrackOwnSpeed.Add(static_cast<float>(fix.Lat));
            track.TrackOwnCourse.Add(static_cast<float>(fix.Lon));
        }
        EXPECT_EQ(DropImpossibleFixes(track), dropped);
        for (const int count : {track.Count(), track.TrackLat.Count(), track.TrackLon.Count()})
            EXPECT_EQ(count, std::ssize(fixes) - dropped);
        for (int fix = 1; fix <= track.Count(); ++fix) {
            EXPECT_EQ(track.TrackOwnSpeed[fix], static_cast<float>(track.TrackLat[fix] - 3600));
            EXPECT_EQ(track.TrackOwnCourse[fix], static_cast<float>(track.TrackLon[fix] - 8369));
        }
    }
}

TEST(TrackReading, ARecordingIsChosenByNumberOrBoat) {
    TrackFileContent fleet;
    for (const char* boat : {"JPN 7", " Alcyone", "JPN 9 "})
        fleet.Recordings.push_back(
            {boat, "", {{.Time = Gun, .Lat = fleet.Recordings.size() + 1.0, .Lon = 139}}, {}});
    for (const auto& [choice, degrees] :
         {std::pair{"", 1}, {"3", 3}, {"Alcyone", 2}, {"alcyone", 2}, {"JPN 9", 3}})
        EXPECT_EQ(TakeRecording(fleet, choice).Fixes.at(0).Lat, degrees * 60) << choice;
    for (const char* none : {"0", "4", "-1", "1.5", "3x", "Bounty"})
        EXPECT_EQ(TakeRecording(fleet, none).Refused, Refusal::NoRecording) << none;
    fleet.Recordings[0].Fixes = {
        {.Time = Gun}, {.Time = INT64_MIN, .Lat = 1}, {.Time = INT64_MAX, .Lat = 1}};
    EXPECT_EQ(TakeRecording(fleet, "").Refused, Refusal::NoFixes);
    EXPECT_EQ(TakeRecording(fleet, "").Left.size(), 2);
}

TEST_F(GpsTrackTest, TheReceiversOwnSpeedAndCourseGoWithTheFixes) {
    TrackReading told, silent;
    for (int second = -600; second <= 60; second += 30) {
        const GpsFix fix{.Lat = RaceTree::Lat, .Lon = RaceTree::Lon, .Time = Gun + second * UnixMs{1000}};
        silent.Fixes.push_back(fix);
        told.Fixes.push_back(fix);
        told.Fixes.back().Speed = second == 0 ? NotTold : static_cast<float>(second);
        told.Fixes.back().Course = 90;
    }
    told.TellsVelocity = true;
    TakeTracks({told, silent}, race, tracks, area, scale);
    const Track& track = tracks.Boats[1];
    ASSERT_EQ(track.TrackOwnSpeed.Count(), track.Count());
    int silentFixes = 0;
    for (int fix = 1; fix <= track.Count(); ++fix) {
        const double sinceFirst = track.TrackTime[fix] - track.TrackTime[1];
        if (std::isnan(track.TrackOwnSpeed[fix]))
            ++silentFixes;
        else
            EXPECT_EQ(track.TrackOwnSpeed[fix] - track.TrackOwnSpeed[1], sinceFirst);
    }
    EXPECT_EQ(silentFixes, 1);
    EXPECT_FALSE(tracks.Boats[2].HasOwnVelocity());
}

TEST_F(GpsTrackTest, AllFixesOfASecondAreKeptAndAStartThatTheyTellIsAWholeSecond) {
    TrackReading reading;
    for (UnixMs ms = -2050; ms <= 60000; ms += 100)
        reading.Fixes.push_back({RaceTree::Lat, RaceTree::Lon, Gun + ms});
    TakeTracks({reading}, race, tracks, area, scale);
    EXPECT_EQ(race.Start.Text() + " " + race.Finish.Text(), "2004/08/05 03:33:57 2004/08/05 03:31:00");
    EXPECT_EQ(race.DataFromTime, ParseDateTime("2004/08/05 03:29:57"));
    const OneBased<double>& times = tracks.Boats[1].TrackTime;
    EXPECT_EQ(std::tuple(times.Count(), times[1], times[2], times.Last()),
              std::tuple(621, -239.05, -238.95, -177.05));
}

}  // namespace
}  // namespace keelview
