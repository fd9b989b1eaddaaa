// Tracks of any kind in a race: which recording is meant, whose clock is late, and what is said of the
// rest.

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <tuple>
#include <vector>

#include "analysis/mark_rounding.h"
#include "analysis/track_derivation.h"
#include "base/parallel.h"
#include "racedata/gps_track.h"
#include "racedata/race_file.h"
#include "racedata/tracks/formats.h"
#include "support/race_tree.h"

namespace keelview {
namespace {

constexpr UnixMs Gun = (RaceTree::Start - 9 * 3600) * UnixMs{1000};  // 2004/08/05 03:30:00 UTC

/// Three boats at latitudes of 1, 2 and 3 degrees.
TrackFileContent Fleet() {
    TrackFileContent content;
    content.Format = "CSV";
    for (const char* boat : {"JPN 7", " Alcyone", "JPN 9 "}) {
        Recording recording{boat, "box", {}, {}};
        const double degrees = static_cast<double>(content.Recordings.size()) + 1;
        AddFix(recording, {.Time = Gun, .Lat = degrees, .Lon = 139});
        content.Recordings.push_back(recording);
    }
    return content;
}

TEST(AnyTrack, ARecordingIsChosenByNumberOrBoat) {
    const TrackFileContent fleet = Fleet();
    for (const auto& [choice, degrees] :
         {std::pair{"", 1}, {"3", 3}, {"Alcyone", 2}, {"alcyone", 2}, {"JPN 9", 3}})
        EXPECT_EQ(TakeRecording(fleet, choice).Fixes.at(0).Lat, degrees * 60) << choice;
    for (const char* none : {"0", "4", "-1", "3x", "Bounty"})
        EXPECT_EQ(TakeRecording(fleet, none).Refused, Refusal::NoRecording) << none;
    TrackFileContent odd = fleet;
    odd.Recordings[0].Fixes = {{.Time = Gun, .Lat = 0, .Lon = 0}, {.Time = INT64_MIN, .Lat = 1, .Lon = 1}};
    EXPECT_EQ(TakeRecording(odd, "").Refused, Refusal::NoFixes);
    EXPECT_EQ(TakeRecording(odd, "").Left.size(), 2);
}

TEST(AnyTrack, OneWrongTimeCostsOneFix) {
    for (const auto& [seconds, kept] : {std::pair{"12345", "12345"},
                                        {"12934", "1234"},
                                        {"91234", "1234"},
                                        {"56178", "5678"},
                                        {"34123456", "123456"},
                                        {"9", "9"},
                                        {"98", "9"},
                                        {"1122912", "129"}}) {
        std::string text = "time,lat,lon\n";
        for (const char* second = seconds; *second != '\0'; ++second)
            text += std::string("2026-10-03T12:00:0") + *second + "Z,35,139\n";
        std::string told;
        int left = 0;
        const Recording recording = ReadTrackFile(text).Recordings.at(0);
        for (const RecordedFix& fix : recording.Fixes) told += std::to_string(fix.Time / 1000 % 10);
        for (const Skipped& skipped : recording.Left) left += skipped.Count;
        EXPECT_EQ(told, kept) << seconds;
        EXPECT_EQ(told.size() + static_cast<std::size_t>(left), std::string(seconds).size()) << seconds;
    }
}

TEST(AnyTrack, AFileIsReadByItsContentAndTheRestIsToldWhy) {
    RaceTree tree;
    tree.Boat("own.gpx", RaceTree::Lat, RaceTree::Lon, 0.001, 0, 0, 50);
    tree.Boat("a.trk#2", RaceTree::Lat + 9, RaceTree::Lon, 0.001, 0, 0, 50);
    tree.Boat("a.trk", RaceTree::Lat, RaceTree::Lon, 0.001, 0, 0, 50);
    tree.Write("gpsdat/closed.vtk", "VTK1" + std::string(600, 'x'));
    tree.Write("gpsdat/empty.trk", "");
    tree.Write("gpsdat/some.trk", std::string(600, '#'));
    const std::vector<std::tuple<const char*, Refusal, double>> boats{
        {"own.gpx", Refusal::None, 0},        {"OWN.GPX#1", Refusal::None, 0},
        {"a.trk#2", Refusal::None, 9},        {"a.trk#", Refusal::None, 0},
        {"a.trk#3", Refusal::NoRecording, 0}, {"closed.vtk", Refusal::Velocitek, 0},
        {"empty.trk", Refusal::Empty, 0},     {"some.trk", Refusal::Unknown, 0},
        {"gone.gpx", Refusal::Missing, 0},    {"gone.gpx#1", Refusal::Missing, 0}};
    RaceControl race;
    for (const auto& boat : boats) race.Boats.Add({std::get<0>(boat), ""});
    Tracks tracks;
    TrackArea area;
    EarthScale scale;
    int told = 0;
    const auto path =
        LoadAllTracks(tree.Root(), race, tracks, area, scale, [&](int boat) { told += boat; });
    EXPECT_EQ(path, tree.Root() / "gpsdat/gone.gpx");
    EXPECT_EQ(told, 55);
    for (int boat = 1; boat <= race.Boats.Count(); ++boat) {
        const auto& [file, why, north] = boats[static_cast<std::size_t>(boat - 1)];
        const Track& track = tracks.Boats[boat];
        EXPECT_EQ(track.Refused, why) << file;
        EXPECT_EQ(track.Count(), why == Refusal::None ? 51 : 0) << file;
        const double lat = track.Count() > 0 ? track.TrackLat[1] : RaceTree::Lat;
        EXPECT_NEAR(lat, RaceTree::Lat + north, 1e-6) << file;
    }
}

/// Boats that pass a line in 20.35 s, with so many milliseconds between their fixes.
struct FastTracks : testing::Test {
    RaceControl race;
    Tracks tracks;
    TrackArea area;
    EarthScale scale;

    static TrackReading Sail(UnixMs step) {
        TrackReading reading;
        for (UnixMs ms = -2050; ms <= 60000; ms += step) {
            const double wobble = 0.0003 * std::sin(static_cast<double>(ms));  // half a metre
            const double north = RaceTree::Lat + static_cast<double>(ms - 20350) * 2e-6 + wobble;
            reading.Fixes.push_back({north, RaceTree::Lon + wobble, Gun + ms});
        }
        return reading;
    }
};

TEST_F(FastTracks, TenFixesASecondAreAllKeptAndRoundAsOneASecond) {
    race.TimeDiff = 9;
    race.Start = RaceTime(RaceTree::Start);
    race.RaceDuration = 60;
    race.Lines.Add({TextNumber(RaceTree::Lat), TextNumber(RaceTree::Lon - 0.1), TextNumber(RaceTree::Lat),
                    TextNumber(RaceTree::Lon + 0.1)});
    race.CourseOrder = {"L1"};
    race.Boats = {{"", "1 Hz"}, {"", "10 Hz"}, {"", "5 s"}};
    TakeTracks({Sail(1000), Sail(100), Sail(5000)}, race, tracks, area, scale);
    EXPECT_EQ(tracks.Boats[2].Count(), 621);
    EXPECT_EQ(tracks.Boats[2].TrackTime[1], -2.05);
    EXPECT_EQ(tracks.Boats[2].TrackTime[2], -1.95);
    DeriveTracks(race, scale, tracks);
    MarkPasses passes;
    FindAllPasses(race, tracks, scale, passes);
    for (int boat = 1; boat <= 3; ++boat)
        EXPECT_NEAR(PassTime(passes, boat, 1).value_or(0), 20, boat == 2 ? 0 : 1) << boat;
}

TEST_F(FastTracks, AStartThatTheTracksTellIsAWholeSecond) {
    TrackReading late = Sail(1000);
    TakeTracks({late}, race, tracks, area, scale);
    EXPECT_EQ(race.Start.Text(), "2004/08/05 03:33:57");
    EXPECT_EQ(race.Finish.Text(), "2004/08/05 03:31:00");
    EXPECT_EQ(tracks.Boats[1].TrackTime[1], -239.05);
    EXPECT_EQ(tracks.Boats[1].TrackTime.Last(), -177.05);
}

TEST(AnyTrack, AClockOffsetMovesTheTrackAndStaysInTheFile) {
    RaceTree tree;
    tree.Boat("a.trk", RaceTree::Lat, RaceTree::Lon, 0.001, 0, 0, 50);
    const std::string lines = "BN, a.trk, A\r\nBN, gone.trk, Gone\r\nBN, a.trk, Late\r\n";
    tree.Race("R1.txt",
              "CL, 3, -2.5\r\nCL, 2, 1\r\nCL, 4, 1\r\nCL, 1, soon\r\nCL, 1\r\nCL, 1, 1e9\r\n" + lines);
    RaceControl race;
    race.RaceFileName = "R1.txt";
    EXPECT_EQ(ReadRaceFile(tree.Root(), race).SkippedLines, 4);
    Tracks tracks;
    TrackArea area;
    EarthScale scale;
    LoadAllTracks(tree.Root(), race, tracks, area, scale, {});
    EXPECT_EQ(tracks.Boats[1].TrackTime[1], 0);
    EXPECT_EQ(tracks.Boats[2].TrackTime[1], -2.5);
    EXPECT_FALSE(SaveRaceFile(tree.Root(), race));
    EXPECT_NE(tree.Read("raceadmin/R1.txt").find(lines + "CL, 2, 1\r\nCL, 3, -2.5\r\n"), std::string::npos);
}

TEST(AnyTrack, WorkInParallelIsDoneOnceEachAndToldInOrder) {
    std::vector<int> done(1000);
    std::vector<int> told;
    const auto work = [&](int number) { done[static_cast<std::size_t>(number - 1)] += number; };
    ForEachInParallel(1000, work, [&](int number) { told.push_back(number); });
    for (int number = 1; number <= 1000; ++number) {
        EXPECT_EQ(done[static_cast<std::size_t>(number - 1)], number);
        EXPECT_EQ(told[static_cast<std::size_t>(number - 1)], number);
    }
}

}  // namespace
}  // namespace keelview
