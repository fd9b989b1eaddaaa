#include "analysis/race_proposal.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "analysis/plan_search.h"
#include "support/regatta_files.h"

namespace keelview {
namespace {

constexpr double Lat = 2117, Lon = 8369;

/// Two laps round a windward mark and a leeward gate, a mile apart.
FoundRace TwoLaps() {
    FoundRace race;
    race.Lines = {{{Lat, Lon - 0.1}, {Lat, Lon + 0.1}}};
    race.Marks = {{Lat + 1, Lon}, {Lat + 0.1, Lon - 0.03}, {Lat + 0.1, Lon + 0.03}};
    race.Course = {"L1", "MK1", "MK2/MK3", "MK1", "L1"};
    return race;
}

CourseKey Mark(int number) {
    return {.IsLine = false, .Number = number};
}
CourseKey Line(int number) {
    return {.IsLine = true, .Number = number};
}

TEST(RaceProposal, WhatIsAddedAndRemovedLeavesACourseThatNamesWhatIsThere) {
    const struct {
        const char* what;
        void (*change)(FoundRace& race);
        const char* course;
        int laps;
    } cases[] = {
        {"nothing", [](FoundRace&) {}, "L1 MK1 MK2/MK3 MK1 L1", 2},
        {"one mark of the gate", [](FoundRace& race) { Remove(race, Mark(2)); }, "L1 MK1 MK2 MK1 L1", 2},
        {"the other one", [](FoundRace& race) { Remove(race, Mark(3)); }, "L1 MK1 MK2 MK1 L1", 2},
        {"the windward mark", [](FoundRace& race) { Remove(race, Mark(1)); }, "L1 MK1/MK2 L1", 1},
        {"the gate", [](FoundRace& race) { Remove(race, Mark(2)), Remove(race, Mark(2)); }, "L1 MK1 L1", 1},
        {"the line", [](FoundRace& race) { Remove(race, Line(1)); }, "MK1 MK2/MK3 MK1", 2},
        {"a line anew",
         [](FoundRace& race) {
             Remove(race, Line(1)), AddLine(race, {Lat, Lon}, {Lat, Lon + 1});
         },
         "L1 MK1 MK2/MK3 MK1", 2},
        {"a finish",
         [](FoundRace& race) {
             AddLine(race, {Lat + 1, Lon}, {Lat + 1, Lon + 0.1});
         },
         "L1 MK1 MK2/MK3 MK1 L2", 2},
        // Off the way down: on that leg alone, which is sailed once.
        {"a mark on the run",
         [](FoundRace& race) {
             race.Marks[0].Lon -= 1, AddMark(race, {Lat + 0.5, Lon - 0.4});
         },
         "L1 MK1 MK4 MK2/MK3 MK1 L1", 2},
        {"a mark of each lap",
         [](FoundRace& race) {
             TakeCourse(race, "L1 MK1 MK2 MK1 MK2 L1");
             race.Marks[0] = {Lat + 1, Lon - 1};
             race.Marks[1] = {Lat - 1, Lon + 1};
             AddMark(race, {Lat + 1, Lon + 1});
         },
         "L1 MK1 MK4 MK2 MK1 MK4 MK2 L1", 2},
        {"a mark of an empty course",
         [](FoundRace& race) {
             TakeCourse(race, ""), AddMark(race, {Lat, Lon});
         },
         "MK4", 1},
    };
    for (const auto& each : cases) {
        FoundRace race = TwoLaps();
        each.change(race);
        EXPECT_EQ(CourseAsTyped(race), each.course) << each.what;
        EXPECT_EQ(LapsOf(race), each.laps) << each.what;
        EXPECT_EQ(TakeCourse(race, CourseAsTyped(race)), "") << each.what;
    }
}

TEST(RaceProposal, ACourseIsTakenAsItIsTypedOrNotAtAll) {
    const struct {
        const char *typed, *wrong, *course;
    } cases[] = {{"l1, mk3 ,MK1,,L1", "", "L1 MK3 MK1 L1"},
                 {"L1 mk3/mk2 MK1", "", "L1 MK3/MK2 MK1"},
                 {"L1 MK4", "MK4", ""},
                 {"L2 MK1", "L2", ""},
                 {"L1 MK2/MK9", "MK2/MK9", ""},
                 {"L1 MK2/MK2", "MK2/MK2", ""},
                 {"L1 MK2/ MK1", "MK2/", ""},
                 {"L1 XX1", "XX1", ""},
                 {"L1 MK0", "MK0", ""},
                 {"L1 MK1x", "MK1x", ""}};
    for (const auto& each : cases) {
        FoundRace race = TwoLaps();
        EXPECT_EQ(TakeCourse(race, each.typed), each.wrong);
        EXPECT_EQ(CourseAsTyped(race), *each.wrong == '\0' ? each.course : CourseAsTyped(TwoLaps()));
    }
    FoundRace race = TwoLaps();
    std::string longest;
    for (int entry = 0; entry < MaxCourseEntries; ++entry) longest += entry % 2 == 0 ? "MK1 " : "MK2 ";
    EXPECT_EQ(TakeCourse(race, longest + "L1"), "L1");
    EXPECT_EQ(TakeCourse(race, longest), "");
    EXPECT_FALSE(AddMark(race, {Lat, Lon}) || AddLine(race, {Lat, Lon}, {Lat, Lon + 1}));
    EXPECT_EQ(race.Marks.size() + race.Lines.size(), 4U);
}

TEST(RaceProposal, TheHandTakesHoldOfTheNearestAndMovesItAlone) {
    const EarthScale scale = ComputeEarthScale(Lat);
    FoundRace race = TwoLaps();
    EXPECT_FALSE(GripNear(race, scale, {Lat + 0.5, Lon}, 100));
    const auto end = GripNear(race, scale, {Lat + 0.01, Lon + 0.1 + MinutesRound}, 100);
    ASSERT_TRUE(end && end->Entry.IsLine && end->SecondEnd);
    MoveTo(race, *end, {Lat, Lon + 0.2});
    EXPECT_EQ(race.Lines[0], std::pair(Position{Lat, Lon - 0.1}, Position{Lat, Lon + 0.2}));
    const auto mark = GripNear(race, scale, {Lat + 0.1, Lon + 0.02}, 100);
    ASSERT_TRUE(mark && !mark->Entry.IsLine && mark->Entry.Number == 3);
    MoveTo(race, *mark, {Lat + 0.2, Lon + 0.03});
    EXPECT_NEAR(MiddleOf(race, ParseCourseKey("MK2/MK3")).Lat, Lat + 0.15, 1e-9);
    EXPECT_EQ(race.Marks[0], TwoLaps().Marks[0]);
}

/// From files to a race file: the plan's search finds what was sailed, and only what is taken is written.
TEST(RaceProposal, AFoundRaceThatIsTakenGoesIntoThePlannedRace) {
    const SimulatedRegatta regatta({.Seed = 3, .Boats = 6});
    TempTree tree;
    WriteRecordings(regatta, tree, "stick/s", [](int boat) { return boat == 2 ? 3600 : 0; });
    RacePlan plan = PlanRace(*FindTracksIn(HandedFiles({tree.Root() / "stick"}), {}));
    plan.Boats[1].Taken = true;  // whose clock is an hour fast
    plan.Boats[1].ClockOffset = -3600;
    SettleCourseAndTimes(plan);
    PlanSearch search(plan);
    while (search.DoNext()) {
    }
    const DayFinding day = search.Take();
    ASSERT_EQ(day.Found.Races.size(), 1U);
    EXPECT_EQ(day.Clock + day.Found.Races[0].Gun, RaceTree::Start + regatta.Guns.front());
    EXPECT_EQ(day.Found.Races[0].Boats.size(), 6U);
    RaceControl race = PlannedRace(plan);
    EXPECT_TRUE(race.Marks.Empty());
    TakeFoundRace(day.Found.Races[0], day.Clock, race);
    EXPECT_EQ(race.Start.At(), RaceTree::Start + regatta.Guns.front());
    EXPECT_EQ(race.Marks.Count(), static_cast<int>(regatta.Marks.size()));
    std::string course;
    for (const std::string& entry : race.CourseOrder) course += (course.empty() ? "" : ", ") + entry;
    EXPECT_EQ(course, regatta.Course);
    EXPECT_EQ(MomentOf(plan, LocalSecond(plan, plan.Begin)), plan.Begin);
}

}  // namespace
}  // namespace keelview
