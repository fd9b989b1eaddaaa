#include "analysis/race_numbers.h"

#include <gtest/gtest.h>

#include <vector>

#include "support/race_tree.h"

namespace keelview {
namespace {

constexpr double Lat = RaceTree::Lat;
constexpr double Lon = RaceTree::Lon;
constexpr double SixKnots = RaceTree::SixKnots;

TEST(RaceNumbers, OneFileLeadsToEverything) {
    RaceTree tree;
    tree.Boat("a.trk", Lat, Lon, SixKnots, 0, -200, 620);
    tree.Boat("b.trk", Lat, Lon + 0.1, 2 * SixKnots, 0, -100, 300);
    tree.Race("R1.txt",
              "WF, w.csv\nBN, a.trk, Alpha\nBN, none.trk, Gone\nBN, b.trk, Beta\n"
              "LN, 2117.1, 8368.9, 2117.1, 8369.3\nCRS, L1\nBT, 2\n");
    tree.Write("winddat/w.csv", "h\n2004/08/05 12:30:00,5,200\n");
    tree.Write("coastline/5239.cst", "M 523977\n");
    const RaceNumbers numbers = LoadRaceNumbers(tree.Root(), "R1.txt");
    EXPECT_TRUE(numbers.report.Opened);
    EXPECT_EQ(numbers.report.MissingTracks, std::vector<std::string>{"none.trk"});
    EXPECT_EQ(numbers.race.BoatCount, 2);
    EXPECT_EQ(numbers.race.ReplaySpan, 600 + 120 + 60);
    EXPECT_EQ(LatestFixTime(numbers.race, numbers.tracks), 600 + 20);  // the finish's minute is inside
    EXPECT_EQ(numbers.wind.WindCount, 1);
    EXPECT_EQ(numbers.coastCells, std::vector<std::string>{"5239"});
    // Beta sails twice as fast: the line lies 0.1 minutes on, 60 seconds for Alpha.
    EXPECT_NEAR(numbers.passes.MarkPassTime[1][1], 60, 1);
    EXPECT_NEAR(numbers.passes.MarkPassTime[2][1], 30, 1);
    EXPECT_EQ(FinishOrder(numbers.race, numbers.passes), (std::vector<int>{2, 1}));
}

TEST(RaceNumbers, ARaceOfNothingIsStillARace) {
    RaceTree tree;
    tree.Write("gpsdat/empty.trk", std::string(600, '#'));
    tree.Race("R1.txt", "BN, empty.trk, Alpha\nWF, none.csv\nCRS, L1, MK1\n");
    for (const char* name : {"R1.txt", "none.txt", ""}) {
        const RaceNumbers numbers = LoadRaceNumbers(tree.Root(), name);
        EXPECT_EQ(numbers.report.Opened, *name == 'R') << name;
        EXPECT_FALSE(HasAnyFix(numbers.race, numbers.tracks));
        EXPECT_EQ(LatestFixTime(numbers.race, numbers.tracks), 0);
        EXPECT_EQ(numbers.race.WindFileName, "");
        EXPECT_EQ(numbers.coast.CoastCount, 0);
        EXPECT_TRUE(FinishOrder(numbers.race, numbers.passes).empty());
    }
}

TEST(RaceNumbers, TimesWithoutAZoneAreThoseOfTheHomeWaters) {
    RaceControl race;
    SettleTimeDiff(race);
    EXPECT_EQ(race.TimeDiff, 9);
    race.TimeDiff = -5;
    SettleTimeDiff(race);
    EXPECT_EQ(race.TimeDiff, -5);
}

TEST(RaceNumbers, FinishersStandInTheirOrderAndTiesByTheirNumber) {
    RaceControl race;
    MarkPasses passes;
    race.BoatCount = 4;
    race.CourseCount = 2;
    for (const auto& [boat, time] : std::vector<std::pair<int, int>>{{1, 900}, {2, 0}, {3, 800}, {4, 900}})
        passes.MarkPassTime[boat][2] = time;
    EXPECT_EQ(FinishOrder(race, passes), (std::vector<int>{3, 1, 4}));
}

}  // namespace
}  // namespace keelview
