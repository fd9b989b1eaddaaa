#include "analysis/mark_rounding.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "analysis/found_race_entry.h"
#include "analysis/leg_statistics.h"
#include "analysis/track_derivation.h"
#include "support/simulated_regatta.h"

namespace keelview {
namespace {

/// A fix in metres north and east of the start line's first end.
struct Fix {
    double Second, North, East;
};
using Way = std::vector<Fix>;
using Course = std::vector<std::string>;
using Seconds = std::vector<int>;

/// A race on a small piece of water. L1 runs 100 m east from its first end, L2 1000 m east from the same
/// place; MK1 lies 1000 m north of it, MK2 600 m east of MK1.
struct Water {
    Water(const Course& course, const std::vector<Way>& ways, int lastSecond = 1500) {
        race.RaceDuration = lastSecond - 240;
        const auto text = [](double minutes) { return TextNumber(minutes); };
        for (const double length : {100, 1000})
            race.Lines.Add({text(Lat(0)), text(Lon(0)), text(Lat(0)), text(Lon(length))});
        for (const double east : {0, 600}) race.Marks.Add({text(Lat(1000)), text(Lon(east))});
        for (const std::string& entry : course) race.CourseOrder.Add(entry);
        for (const Way& way : ways) {
            Track track;
            for (const Fix& fix : way) {
                track.TrackLat.Add(Lat(fix.North));
                track.TrackLon.Add(Lon(fix.East));
                track.TrackTime.Add(fix.Second);
            }
            race.Boats.Add({});
            tracks.Boats.Add(track);
        }
        FindMarkPassTimes(race, tracks, scale, passes);
    }
    static double Lat(double metres) { return 2100 + metres / MetresPerNauticalMile; }
    static double Lon(double metres) { return 8360 + metres / MetresPerNauticalMile / 0.8; }

    /// The walk's times of all boats at one entry, 0 for none.
    Seconds Times(int entry) const {
        Seconds times;
        for (const auto& boat : passes.MarkPassTime) times.push_back(boat[entry].value_or(0));
        return times;
    }

    RaceControl race;
    Tracks tracks;
    EarthScale scale{MetresPerNauticalMile, MetresPerNauticalMile * 0.8, 0.8};
    MarkPasses passes;
};

/// The same way with so many fixes a second.
Way Dense(const Way& way, int rate = 1) {
    Way dense{way.front()};
    for (std::size_t i = 1; i < way.size(); ++i) {
        const Fix from = way[i - 1];
        const double count = (way[i].Second - from.Second) * rate;
        for (int k = 1; k <= count; ++k)
            dense.push_back({from.Second + static_cast<double>(k) / rate,
                             from.North + (way[i].North - from.North) * k / count,
                             from.East + (way[i].East - from.East) * k / count});
    }
    return dense;
}

struct Situation {
    const char* Name;
    Way Sailed;
    int Expected;
};

/// When a boat passes an entry of the course, by few fixes, by one every second and by ten.
void CheckAll(const Course& course, int entry, const std::vector<Situation>& situations) {
    for (const auto& [name, sailed, expected] : situations)
        for (const Way& way : {sailed, Dense(sailed, 1), Dense(sailed, 10)})
            EXPECT_EQ(Water(course, {way}).Times(entry), Seconds{expected}) << name << ", " << way.size();
}

TEST(MarkRounding, StartAndFinishLines) {
    CheckAll({"L1"}, 1,
             {{"over early, back, again", {{-60, -59, 50}, {0, 61, 50}, {60, -59, 50}, {120, 61, 50}}, 89},
              {"only before the gun", {{-60, -59, 50}, {0, 61, 50}, {900, 999, 50}}, -31},
              {"in the last second of the search", {{300, -121, 50}, {400, 79, 50}}, 360},
              {"a second too late", {{301, -121, 50}, {401, 79, 50}}, 0},
              {"too early", {{-200, -21, 50}, {-150, 79, 50}, {0, 500, 50}}, 0},
              {"past the second end", {{0, -59, 101}, {60, 61, 101}}, 0},
              {"inside the second end", {{0, -59, 99}, {60, 61, 99}}, 29},
              {"past the first end", {{0, -59, -1}, {60, 61, -1}}, 0},
              {"over the very first end", {{0, -59, 0}, {60, 61, 0}}, 29},
              {"downward counts too", {{0, 59, 50}, {60, -61, 50}}, 29},
              {"at rest on the line", {{-100, 0, 50}, {300, 0, 50}}, 0},
              {"from rest on the line", {{-100, 0, 50}, {30, 0, 50}, {60, 30, 50}}, 30},
              {"a leap over the line between fixes", {{10, -30, 50}, {12, 90, 50}}, 10},
              {"a first fix from a wrong clock", {{5000, -70, 50}, {0, -59, 50}, {60, 61, 50}}, 29}});
    CheckAll({"L2"}, 1,
             {{"near the second end of a long line", {{0, -59, 990}, {60, 61, 990}}, 29},
              {"past it", {{0, -59, 1001}, {60, 61, 1001}}, 0}});
    CheckAll({"L1", "L1"}, 2,
             {{"the first crossing",
               {{0, -59, 50}, {60, 61, 50}, {400, 61, 50}, {460, -59, 50}, {520, 61, 50}},
               29},
              {"without a start", {{400, 61, 50}, {460, -59, 50}, {520, 61, 50}}, 430},
              {"after the span", {{1490, 61, 50}, {1550, -59, 50}}, 0}});
}

TEST(MarkRounding, MarksOfTheCourse) {
    // The course turns back at MK1, so the bisector points north; seen from 50 m south-east of it, west is
    // the way round the top. A first fix far off keeps the place where the search before ended out of it.
    const Way round{{-200, 0, 900}, {200, 1020, 52}, {220, 1020, -48}};
    CheckAll({"L1", "MK1", "L1"}, 2,
             {{"through the bisector", round, 211},
              {"exactly on the bisector", {{-200, 0, 900}, {200, 1020, 50}, {220, 1020, -50}}, 210},
              {"at 199 m", {{200, 1199, 52}, {220, 1199, -48}}, 211},
              {"at 201 m", {{200, 1201, 52}, {220, 1201, -48}}, 0},
              {"on one side only: no longer nearer", {{200, 700, 100}, {320, 1300, 100}}, 261},
              {"not inside the corner", {{-200, 0, 900}, {200, 1000, 100}, {240, 880, -20}}, 218},
              {"a late rounding goes before an early approach",
               {{200, 700, 100}, {260, 1000, 100}, {320, 700, 100}, {400, 1020, 52}, {420, 1020, -48}},
               411}});
    CheckAll(
        {"L1", "MK1", "MK2", "L1"}, 2,
        {{"the corner, not the compass", {{-200, 1050, -900}, {200, 1050, -101}, {280, 1050, 99}}, 221}});
    CheckAll({"L1", "MK1"}, 2,
             {{"a mark that ends the course", round, 211},
              {"a track that ends near a mark", {{-200, 0, 900}, {200, 600, 0}, {300, 900, 0}}, 300}});
    CheckAll({"MK1", "L1"}, 1, {{"at rest near a first mark", {{-200, 1000, 50}, {500, 1000, 50}}, -119}});
    CheckAll({"MK1", "MK2"}, 1,
             {{"a first mark is turned at true north", {{100, 1020, 52}, {120, 1020, -48}}, 111},
              {"a first mark passed late is filled in",
               {{500, 950, -100}, {600, 950, 100}, {700, 980, 500}, {760, 980, 1000}},
               550}});
    CheckAll({"MK7", "MK1"}, 2, {{"no mark of that number", round, 211}});
    CheckAll({"L0", "MK1"}, 1, {{"no line of that number", {{200, 1020, 52}, {220, 1020, -48}}, 0}});
    CheckAll({"", "MK", "L", "MK-1", "MK1"}, 5, {{"keys that say nothing", round, 211}});
}

TEST(MarkRounding, GapBetweenTwoKnownEntries) {
    // Ever nearer to MK1, then a leap of the receiver: no test of the main search sees it. At MK2 the
    // bisector leads 60 degrees east of north.
    for (const auto& [nearest, time] : {std::pair{80, 350}, {120, 0}}) {
        const double north = 1000.0 - nearest;
        const Way way{{0, -59, 50},     {60, 61, 50},     {300, north - 100, 0},
                      {350, north, 0},  {351, 1300, 300}, {400, 1050, 500},
                      {440, 1050, 700}, {700, 61, 50},    {760, -59, 50}};
        const Water water({"L1", "MK1", "MK2", "L1"}, {way});
        const Seconds sailed{29, time, 438, 730};
        for (int entry = 1; entry <= 4; ++entry)
            EXPECT_EQ(water.Times(entry), Seconds{sailed[entry - 1]}) << nearest;
    }
}

TEST(MarkRounding, TracksThatAreHardlyAny) {
    const Water water({"L1", "MK1"}, {{}, {{10, 0, 50}}, {{0, -59, 50}, {60, 61, 50}}});
    EXPECT_EQ(water.Times(1), (Seconds{0, 0, 29}));
    EXPECT_EQ(water.passes.FirstPassTime, (OneBased<std::optional<int>>{29, {}}));
    // The second boat is thought to lie where the first one stopped, until its track begins.
    EXPECT_EQ(Water({"MK1"}, {{{-200, 1300, 0}, {-100, 1050, 0}, {500, 1050, 0}},
                              {{100, 1020, 52}, {140, 1020, -148}}})
                  .Times(1),
              (Seconds{-99, -119}));
    // A clock that fell back far from the marks costs no rounding.
    Way sailed = Dense({{0, 5000, 0}, {150, 5000, 50}});
    for (const Fix& fix : Dense({{90, 4000, 500}, {200, 1020, 52}, {220, 1020, -48}, {300, 4000, -500}}))
        sailed.push_back(fix);
    EXPECT_EQ(Water({"L1", "MK1", "L1"}, {sailed}).Times(2), Seconds{211});
    // Full tables and long gaps come to an end.
    const Way gaps{{-100000, 50000, 0}, {1000000, 51000, 0}, {-5, 0, 0}, {2000000, 0, 0}};
    EXPECT_EQ(Water(Course(MaxCourseEntries, "MK1"), {gaps, gaps}, 2000000).Times(MaxCourseEntries),
              (Seconds{0, 0}));
}

TEST(MarkRounding, LeadersTimesAscendAlongTheCourse) {
    const auto boat = [](double start, double mark) {
        return Way{{start - 30, -59, 50},  {start + 30, 61, 50}, {mark - 20, 1020, 99},
                   {mark + 20, 1020, -99}, {mark + 300, 61, 50}, {mark + 360, -59, 50}};
    };
    const Water water({"L1", "MK1", "MK2", "L1"}, {boat(40, 500), boat(20, 450), boat(-20, 300)});
    EXPECT_EQ(water.Times(1), (Seconds{39, 19, -21}));
    EXPECT_EQ(water.Times(2), (Seconds{505, 455, 305}));
    EXPECT_EQ(water.Times(4), (Seconds{39, 19, 630}));
    // A start before the gun is none; behind a mark that nobody rounded nobody leads.
    EXPECT_EQ(water.passes.FirstPassTime, (OneBased<std::optional<int>>{19, 305, {}, 630}));
}

TEST(MarkRounding, MilesSailedCountFromTheGun) {
    Water water({"L1", "MK1", "MK2"},
                {{{-100, -463, 50}, {0, -59, 50}, {60, 61, 50}, {200, 1020, 52}, {220, 1020, -48}},
                 {{10, -59, 50}, {70, 61, 50}}});  // one begins after the gun
    DeriveTracks(water.race, water.scale, water.tracks);
    ComputeMarkPassDist(water.race, water.tracks, water.passes);
    // At second 29 it has sailed 58 m, at second 215 120 m to second 60, 959 m to 200, and 75 m.
    EXPECT_EQ(water.passes.MarkPassDist,
              (decltype(water.passes.MarkPassDist){{0.031, 0.623, 0}, {0.031, 0, 0}}));
}

/// A simulated regatta with a gate, as its own truths have it.
struct GateRace {
    explicit GateRace(const std::string& gate) {
        const SimulatedRegatta regatta({.Course = Layout::Gate, .Seed = 3, .Retire = 0});
        const RaceFinding found = FindRaces(regatta.Boats, regatta.Scale, {});
        TakeFoundRace(found.Races.at(0), 0, race);
        race.CourseOrder = {"L1", "MK1", gate, "MK1", gate, "L2"};
        race.RaceDuration = 3000;
        tracks = regatta.Boats;
        for (Track& track : tracks.Boats) {
            race.Boats.Add({});
            for (double& time : track.TrackTime) time -= regatta.Guns.front();
        }
        DeriveTracks(race, regatta.Scale, tracks);
        FindAllPasses(race, tracks, regatta.Scale, passes);
    }
    RaceControl race;
    Tracks tracks;
    MarkPasses passes;
};

TEST(MarkRounding, AGateIsRoundedAtEitherMark) {
    const GateRace gate("MK2/MK3"), turned("MK3/MK2"), one("MK2");
    std::vector<int> taken(4);
    for (int boat = 1; boat <= 10; ++boat) {
        const auto& times = gate.passes.MarkPassTime[boat];
        EXPECT_TRUE(std::ranges::is_sorted(times)) << boat;
        for (const auto& time : times) EXPECT_TRUE(time.has_value()) << boat;
        EXPECT_EQ(times, turned.passes.MarkPassTime[boat]);
        EXPECT_EQ(gate.passes.GateMark[boat], turned.passes.GateMark[boat]);
        for (const int entry : {3, 5}) {
            ++taken[static_cast<std::size_t>(GateMark(gate.passes, boat, entry))];
            // Who took the first mark was there when a course of that mark alone has it.
            const auto alone = PassTime(one.passes, boat, entry);
            if (GateMark(gate.passes, boat, entry) == 2) {
                EXPECT_NEAR(*PassTime(gate.passes, boat, entry), alone.value_or(-1), 12);
            }
        }
        EXPECT_EQ(GateMark(gate.passes, boat, 2), 0);
    }
    EXPECT_TRUE(taken[2] > 2 && taken[3] > 2 && taken[2] + taken[3] == 20);
    const std::string csv =
        LegStatisticsCsv(gate.race, ComputeLegStatistics(gate.race, gate.passes, StatKind::Time));
    EXPECT_NE(csv.find("\"Mark of MK2/MK3\",\"Mark of MK2/MK3\"\r\n"), std::string::npos);
}

TEST(CourseKey, GatesAreReadAndWrittenAndWhatIsNoneIsAMark) {
    for (const auto& [text, number, other, again] : {std::tuple("MK3/MK4", 3, 4, "MK3/MK4"),
                                                     {"MK3 / MK4", 3, 4, "MK3/MK4"},
                                                     {"MK3", 3, 0, "MK3"},
                                                     {"MK3/MK3", 3, 0, "MK3"},
                                                     {"MK3/", 3, 0, "MK3"},
                                                     {"MK3/MK61", 3, 0, "MK3"},
                                                     {"L1/L2", 1, 0, "L1"},
                                                     {"MK/MK4", 0, 0, "MK0"}}) {
        const CourseKey key = ParseCourseKey(text);
        EXPECT_EQ(std::pair(key.Number, key.OtherMark), std::pair(number, other)) << text;
        EXPECT_EQ(CourseKeyText(key), again);
    }
}

}  // namespace
}  // namespace keelview
