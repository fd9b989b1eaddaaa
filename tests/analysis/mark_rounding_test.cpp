#include "analysis/mark_rounding.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "analysis/track_derivation.h"

namespace keelview {
namespace {

/// A fix in metres north and east of the start line's first end.
struct Fix {
    int Second;
    double North;
    double East;
};
using Way = std::vector<Fix>;

/// A race on a small piece of water. L1 runs 100 m east from its first end, L2 1000 m east from the same
/// place; MK1 lies 1000 m north of it, MK2 600 m east of MK1.
struct Water {
    static constexpr double Lat0 = 2100.0;
    static constexpr double Lon0 = 8360.0;

    Water() {
        scale.LonScale = 0.8;
        scale.MetresPerLatMinute = MetresPerNauticalMile;
        LastSecond(1500);
        Line(0, 100);
        Line(0, 1000);
        Mark(1000, 0);
        Mark(1000, 600);
    }

    void LastSecond(int second) { race.RaceDuration = second - 240; }
    static double Lat(double metres) { return Lat0 + metres / MetresPerNauticalMile; }
    double Lon(double metres) const { return Lon0 + metres / MetresPerNauticalMile / scale.LonScale; }

    void Mark(double north, double east) {
        race.Marks.Add({TextNumber(Lat(north)), TextNumber(Lon(east))});
    }

    void Line(double north, double length) {
        const TextNumber lat(Lat(north));
        race.Lines.Add({lat, TextNumber(Lon(0)), lat, TextNumber(Lon(length))});
    }

    void Course(const std::vector<std::string>& entries) {
        for (const std::string& entry : entries) race.CourseOrder.Add(entry);
    }

    void Boat(const Way& way) {
        Track track;
        for (const Fix& fix : way) {
            track.TrackLat.Add(Lat(fix.North));
            track.TrackLon.Add(Lon(fix.East));
            track.TrackTime.Add(fix.Second);
        }
        race.Boats.Add({});
        tracks.Boats.Add(track);
    }

    /// The walk's times of all boats at one entry, 0 for none.
    std::vector<int> Times(int entry) {
        FindMarkPassTimes(race, tracks, scale, passes);
        std::vector<int> times;
        for (const auto& boat : passes.MarkPassTime) times.push_back(boat[entry].value_or(0));
        return times;
    }

    RaceControl race;
    Tracks tracks;
    EarthScale scale;
    MarkPasses passes;
};

struct Situation {
    const char* Name;
    std::vector<std::string> Course;
    Way Sailed;
    int Entry;
    int Expected;
};

/// The same way with a fix at every second.
Way EverySecond(const Way& way) {
    Way dense{way.front()};
    for (std::size_t i = 1; i < way.size(); ++i) {
        const Fix from = way[i - 1];
        const double seconds = way[i].Second - from.Second;
        for (int s = 1; s <= seconds; ++s)
            dense.push_back({from.Second + s, from.North + (way[i].North - from.North) * s / seconds,
                             from.East + (way[i].East - from.East) * s / seconds});
    }
    return dense;
}

void CheckAll(const std::vector<Situation>& situations) {
    for (const Situation& situation : situations) {
        SCOPED_TRACE(situation.Name);
        for (const Way& way : {situation.Sailed, EverySecond(situation.Sailed)}) {
            Water water;
            water.Course(situation.Course);
            water.Boat(way);
            EXPECT_EQ(water.Times(situation.Entry), std::vector<int>{situation.Expected}) << way.size();
        }
    }
}

TEST(MarkRounding, StartAndFinishLines) {
    CheckAll({
        {"over early, back, and again",
         {"L1"},
         {{-60, -59, 50}, {0, 61, 50}, {60, -59, 50}, {120, 61, 50}},
         1,
         89},
        {"only before the gun", {"L1"}, {{-60, -59, 50}, {0, 61, 50}, {900, 999, 50}}, 1, -31},
        {"in the last second of the search", {"L1"}, {{300, -121, 50}, {400, 79, 50}}, 1, 360},
        {"a second too late", {"L1"}, {{301, -121, 50}, {401, 79, 50}}, 1, 0},
        {"too early", {"L1"}, {{-200, -21, 50}, {-150, 79, 50}, {0, 500, 50}}, 1, 0},
        {"past the second end", {"L1"}, {{0, -59, 101}, {60, 61, 101}}, 1, 0},
        {"inside the second end", {"L1"}, {{0, -59, 99}, {60, 61, 99}}, 1, 29},
        {"past the first end", {"L1"}, {{0, -59, -1}, {60, 61, -1}}, 1, 0},
        {"downward counts too", {"L1"}, {{0, 59, 50}, {60, -61, 50}}, 1, 29},
        {"near the second end of a long line", {"L2"}, {{0, -59, 990}, {60, 61, 990}}, 1, 29},
        {"past it", {"L2"}, {{0, -59, 1001}, {60, 61, 1001}}, 1, 0},
        {"at rest on the line", {"L1"}, {{-100, 0, 50}, {300, 0, 50}}, 1, 0},
        {"from rest on the line", {"L1"}, {{-100, 0, 50}, {30, 0, 50}, {60, 30, 50}}, 1, 30},
        {"a leap over the line between fixes", {"L1"}, {{10, -30, 50}, {12, 90, 50}}, 1, 10},
        {"a first fix from a wrong clock", {"L1"}, {{5000, -70, 50}, {0, -59, 50}, {60, 61, 50}}, 1, 29},
        {"finish at the first crossing",
         {"L1", "L1"},
         {{0, -59, 50}, {60, 61, 50}, {400, 61, 50}, {460, -59, 50}, {520, 61, 50}},
         2,
         29},
        {"finish of a boat without a start",
         {"L1", "L1"},
         {{400, 61, 50}, {460, -59, 50}, {520, 61, 50}},
         2,
         430},
        {"finish after the span", {"L1", "L1"}, {{1490, 61, 50}, {1550, -59, 50}}, 2, 0},
    });
}

TEST(MarkRounding, MarksOfTheCourse) {
    // The course turns back at MK1, so the bisector points north; seen from 50 m south-east of it, west is
    // the way round the top. A first fix far off keeps the place where the search before ended out of it.
    const std::vector<std::string> upAndDown{"L1", "MK1", "L1"};
    CheckAll({
        {"through the bisector", upAndDown, {{-200, 0, 900}, {200, 1020, 52}, {220, 1020, -48}}, 2, 211},
        {"exactly on the bisector", upAndDown, {{-200, 0, 900}, {200, 1020, 50}, {220, 1020, -50}}, 2, 210},
        {"at 199 m", upAndDown, {{200, 1199, 52}, {220, 1199, -48}}, 2, 211},
        {"at 201 m", upAndDown, {{200, 1201, 52}, {220, 1201, -48}}, 2, 0},
        {"on one side only: no longer nearer", upAndDown, {{200, 700, 100}, {320, 1300, 100}}, 2, 261},
        {"the inside of the corner does not count",
         upAndDown,
         {{-200, 0, 900}, {200, 1000, 100}, {240, 880, -20}},
         2,
         218},
        {"a late rounding goes before an early approach",
         upAndDown,
         {{200, 700, 100}, {260, 1000, 100}, {320, 700, 100}, {400, 1020, 52}, {420, 1020, -48}},
         2,
         411},
        {"the corner decides, not the compass",
         {"L1", "MK1", "MK2", "L1"},
         {{-200, 1050, -900}, {200, 1050, -101}, {280, 1050, 99}},
         2,
         221},
        {"a mark that ends the course",
         {"L1", "MK1"},
         {{-200, 0, 900}, {200, 1020, 52}, {220, 1020, -48}},
         2,
         211},
        {"a track that ends near a mark",
         {"L1", "MK1"},
         {{-200, 0, 900}, {200, 600, 0}, {300, 900, 0}},
         2,
         300},
        {"at rest near a first mark", {"MK1", "L1"}, {{-200, 1000, 50}, {500, 1000, 50}}, 1, -119},
        {"a first mark is turned at true north",
         {"MK1", "MK2"},
         {{100, 1020, 52}, {120, 1020, -48}},
         1,
         111},
        {"a first mark passed late is filled in",
         {"MK1", "MK2"},
         {{500, 950, -100}, {600, 950, 100}, {700, 980, 500}, {760, 980, 1000}},
         1,
         550},
        {"no mark of that number",
         {"MK7", "MK1"},
         {{-200, 0, 900}, {200, 1020, 52}, {220, 1020, -48}},
         2,
         211},
        {"no line of that number", {"L0", "MK1"}, {{200, 1020, 52}, {220, 1020, -48}}, 1, 0},
        {"keys that say nothing",
         {"", "MK", "L", "MK-1", "MK1"},
         {{-200, 0, 900}, {200, 1020, 52}, {220, 1020, -48}},
         5,
         211},
    });
}

TEST(MarkRounding, GapBetweenTwoKnownEntries) {
    // Ever nearer to MK1 up to 80 m, then a leap of the receiver: no test of the main
    // search sees it.
    const auto passes = [](double nearest) {
        Water water;
        water.Course({"L1", "MK1", "MK2", "L1"});
        water.Boat({{0, -59, 50},
                    {60, 61, 50},
                    {300, 1000 - nearest - 100, 0},
                    {350, 1000 - nearest, 0},
                    {351, 1300, 300},
                    {400, 1050, 500},
                    {440, 1050, 700},
                    {700, 61, 50},
                    {760, -59, 50}});
        std::vector<int> times;
        for (int c = 1; c <= 4; ++c) times.push_back(water.Times(c)[0]);
        return times;
    };
    EXPECT_EQ(passes(80)[1], 350);
    EXPECT_EQ(passes(120)[1], 0);
    for (const double nearest : {80.0, 120.0}) {
        EXPECT_EQ(passes(nearest)[0], 29);
        EXPECT_GT(passes(nearest)[2], 400);
        EXPECT_EQ(passes(nearest)[3], 730);
    }
}

TEST(MarkRounding, BoatsWithoutATrackHaveNoTimes) {
    Water water;
    water.Course({"L1", "MK1"});
    water.Boat({});
    water.Boat({{10, 0, 50}});
    water.Boat({{0, -59, 50}, {60, 61, 50}});
    EXPECT_EQ(water.Times(1), (std::vector<int>{0, 0, 29}));
    EXPECT_EQ(water.passes.FirstPassTime[1], 29);
    EXPECT_EQ(water.passes.FirstPassTime[2], std::nullopt);
}

TEST(MarkRounding, ThePositionLastFoundStandsInForABoatWithoutOne) {
    Water water;
    water.Course({"MK1"});
    water.Boat({{-200, 1300, 0}, {-100, 1050, 0}, {500, 1050, 0}});
    water.Boat({{100, 1020, 52}, {140, 1020, -148}});
    // The second boat is thought to lie where the first one stopped, until its track
    // begins.
    EXPECT_EQ(water.Times(1), (std::vector<int>{-99, -119}));
}

TEST(MarkRounding, LeadersTimesAscendAlongTheCourse) {
    Water water;
    water.Course({"L1", "MK1", "MK2", "L1"});
    const auto boat = [&](int start, int mark) {
        water.Boat({{start - 30, -59, 50},
                    {start + 30, 61, 50},
                    {mark - 20, 1020, 99},
                    {mark + 20, 1020, -99},
                    {mark + 300, 61, 50},
                    {mark + 360, -59, 50}});
    };
    boat(40, 500);
    boat(20, 450);
    boat(-20, 300);
    const auto starts = water.Times(1);
    EXPECT_EQ(starts, (std::vector<int>{39, 19, -21}));
    EXPECT_EQ(water.Times(2), (std::vector<int>{505, 455, 305}));
    EXPECT_EQ(water.passes.FirstPassTime[1], 19) << "a start before the gun is none";
    EXPECT_EQ(water.passes.FirstPassTime[2], 305);
    EXPECT_EQ(water.passes.FirstPassTime[3], std::nullopt);
    EXPECT_EQ(water.passes.FirstPassTime[4], 630)
        << "nobody was at MK2, and others crossed it at the start";
}

TEST(MarkRounding, MilesSailedCountFromTheGun) {
    Water water;
    water.Course({"L1", "MK1", "MK2"});
    water.Boat({{-100, -463, 50}, {0, -59, 50}, {60, 61, 50}, {200, 1020, 52}, {220, 1020, -48}});
    water.Boat({{10, -59, 50}, {70, 61, 50}});
    DeriveTracks(water.race, water.scale, water.tracks);
    water.Times(1);
    ComputeMarkPassDist(water.race, water.tracks, water.passes);
    // At second 29 it has sailed 58 m, at second 215 120 m to second 60, 959 m to 200, and
    // 75 m.
    EXPECT_DOUBLE_EQ(water.passes.MarkPassDist[1][1], 0.031);
    EXPECT_DOUBLE_EQ(water.passes.MarkPassDist[1][2], 0.623);
    EXPECT_DOUBLE_EQ(water.passes.MarkPassDist[1][3], 0.0) << "not reached";
    EXPECT_DOUBLE_EQ(water.passes.MarkPassDist[2][1], 0.031) << "a track that begins after the gun";
}

TEST(MarkRounding, AClockThatFellBackFarFromTheMarksCostsNoRounding) {
    Way sailed = EverySecond({{0, 5000, 0}, {150, 5000, 50}});
    for (const Fix& fix :
         EverySecond({{90, 4000, 500}, {200, 1020, 52}, {220, 1020, -48}, {300, 4000, -500}}))
        sailed.push_back(fix);
    Water water;
    water.Course({"L1", "MK1", "L1"});
    water.Boat(sailed);
    EXPECT_EQ(water.Times(2), std::vector<int>{211});
}

TEST(MarkRounding, FullTablesAndLongGapsComeToAnEnd) {
    Water water;
    water.LastSecond(2000000);
    water.Course(std::vector<std::string>(MaxCourseEntries, "MK1"));
    constexpr int Boats = 2;
    for (int boat = 0; boat < Boats; ++boat)
        water.Boat({{-100000, 50000, 0}, {1000000, 51000, 0}, {-5, 0, 0}, {2000000, 0, 0}});
    EXPECT_EQ(water.Times(MaxCourseEntries), std::vector<int>(Boats, 0));
}

}  // namespace
}  // namespace keelview
