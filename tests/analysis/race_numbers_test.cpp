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
    RaceNumbers numbers;
    numbers.race.RaceFileName = "R1.txt";
    EXPECT_EQ(LoadRace(tree.Root(), numbers).Outcome, LoadOutcome::Sound);
    EXPECT_EQ(numbers.report.MissingTracks, std::vector<std::string>{"none.trk"});
    EXPECT_EQ(numbers.race.Boats.Count(), 2);
    EXPECT_EQ(ReplaySpan(numbers.race), 600 + 120 + 60);
    EXPECT_EQ(LatestFixTime(numbers.tracks), 600 + 20);  // the finish's minute is inside
    EXPECT_EQ(numbers.wind.Count(), 1);
    EXPECT_EQ(numbers.race.MapFile, (OneBased<std::string, MaxCells>{"5239"}));
    // Beta sails twice as fast: the line lies 0.1 minutes on, 60 seconds for Alpha.
    EXPECT_NEAR(PassTime(numbers.passes, 1, 1), 60, 1);
    EXPECT_NEAR(PassTime(numbers.passes, 2, 1), 30, 1);
    EXPECT_EQ(FinishOrder(numbers.passes), (std::vector<int>{2, 1}));
    EXPECT_EQ(FirstFinishTime(numbers.passes), FinishTime(numbers.passes, 2));
}

TEST(RaceNumbers, ASingleTrackIsARaceOfItsOwn) {
    RaceTree tree;
    tree.Boat("a.trk", Lat, Lon, SixKnots, 0, -200, 620);
    RaceNumbers numbers;
    numbers.race.SingleTrackFile = "a.trk";
    numbers.race.RaceTitle1 = "the race before";
    numbers.race.MagVariation = -7;
    int boats = 0;
    EXPECT_EQ(LoadRace(tree.Root(), numbers, [&](int boat) { boats += boat; }).Outcome, LoadOutcome::Sound);
    EXPECT_EQ(boats, 1);
    EXPECT_EQ(numbers.race.Boats[1].BoatName, "a");
    EXPECT_EQ(numbers.race.RaceTitle1, "");
    EXPECT_EQ(numbers.race.MagVariation, -7);
    EXPECT_EQ(numbers.race.TimeDiff, 9);                          // the home waters
    EXPECT_EQ(numbers.race.Start.Text(), "2004/08/05 12:30:40");  // four minutes after the first fix
    EXPECT_EQ(numbers.race.RaceDuration, 580);
    EXPECT_EQ(numbers.race.DataFromTime, numbers.race.Start.At());
    // A period that is set for the track holds when it is loaded again.
    numbers.race.Finish = RaceTime("2004/08/05 12:35:40");
    numbers.race.DataToTime = numbers.race.Finish.At();
    LoadRace(tree.Root(), numbers);
    EXPECT_EQ(numbers.race.RaceDuration, 300);
    EXPECT_EQ(LatestFixTime(numbers.tracks), 319);
}

TEST(RaceNumbers, ARaceOfNothingIsStillARace) {
    struct Case {
        const char* race;
        const char* track;
        LoadOutcome outcome;
        const char* missing;
    };
    RaceTree tree;
    tree.Write("gpsdat/empty.trk", std::string(600, '#'));
    tree.Race("R1.txt", "BN, empty.trk, Alpha\nWF, none.csv\nCRS, L1, MK1\n");
    for (const Case& c :
         {Case{"R1.txt", "", LoadOutcome::NoFix, ""}, Case{"none.txt", "", LoadOutcome::NoRaceFile, ""},
          Case{"", "gone.trk", LoadOutcome::NoTrackFile, "gone.trk"},
          Case{"", "empty.trk", LoadOutcome::NoFix, ""}, Case{"", "", LoadOutcome::NoFix, ""}}) {
        RaceNumbers numbers;
        numbers.race.RaceFileName = c.race;
        numbers.race.SingleTrackFile = c.track;
        const LoadResult result = LoadRace(tree.Root(), numbers);
        EXPECT_EQ(result.Outcome, c.outcome) << c.race << c.track;
        EXPECT_EQ(result.Missing.filename(), c.missing);
        EXPECT_FALSE(HasAnyFix(numbers.tracks));
        EXPECT_EQ(LatestFixTime(numbers.tracks), 0);
        EXPECT_FALSE(HasWindFile(numbers.race));
        EXPECT_TRUE(numbers.coast.empty() && numbers.race.MapFile.Empty());
        EXPECT_TRUE(FinishOrder(numbers.passes).empty());
        EXPECT_EQ(FirstFinishTime(numbers.passes), NobodyPassed);
    }
}

TEST(RaceNumbers, FinishersStandInTheirOrderAndTiesByTheirNumber) {
    MarkPasses passes;
    for (const int time : {900, 0, 800, 900}) passes.MarkPassTime.Add({10, time});
    EXPECT_EQ(FinishOrder(passes), (std::vector<int>{3, 1, 4}));
}

}  // namespace
}  // namespace keelview
