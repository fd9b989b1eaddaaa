#include "analysis/race_numbers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <tuple>
#include <vector>

#include "analysis/period_trouble.h"
#include "analysis/track_at.h"
#include "analysis/wind_at.h"
#include "support/race_tree.h"
#include "support/sailed_race.h"

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
    EXPECT_NEAR(PassTime(numbers.passes, 1, 1).value_or(0), 60, 1);
    EXPECT_NEAR(PassTime(numbers.passes, 2, 1).value_or(0), 30, 1);
    EXPECT_EQ(FinishOrder(numbers.passes), (std::vector<int>{2, 1}));
    EXPECT_EQ(FirstFinishTime(numbers.passes), FinishTime(numbers.passes, 2));
    MarkPasses tied;
    for (const auto time : std::vector<std::optional<int>>{900, {}, 800, 900})
        tied.MarkPassTime.Add({10, time});
    EXPECT_EQ(FinishOrder(tied), (std::vector<int>{3, 1, 4}));  // ties by their number
}

TEST(PeriodTrouble, SaysWhatWouldBringRaceAndTracksTogether) {
    RaceTree tree;
    tree.Boat("a.trk", Lat, Lon, SixKnots, 0, -200, 620);
    tree.Boat("b.trk", Lat, Lon, SixKnots, 0, 0, 700);
    tree.Write("gpsdat/empty.trk", "");
    using Case = std::tuple<const char*, double, const char*>;
    for (const auto& [start, timeDiff, helps] :
         {Case{"2004/8/5 12:30:00", 0, "zone 9"}, Case{"2004/8/5 13:35:00", 9, "zone 10"},
          Case{"2004/5/8 12:30:00", 9, "day"}, Case{"2004/8/5 18:00:00", 9, ""}}) {
        RaceControl race;
        race.Start = RaceTime(start);
        race.Finish = RaceTime(*race.Start.At() + 600);
        race.TimeDiff = timeDiff;
        race.Boats = {{"empty.trk", "E"}};
        EXPECT_FALSE(FindPeriodTrouble(tree.Root(), race));
        for (const char* file : {"a.trk", "b.trk"}) race.Boats.Add({file, "B"});
        const auto trouble = FindPeriodTrouble(tree.Root(), race);
        ASSERT_TRUE(trouble);
        const auto east = static_cast<CivilTime>((timeDiff - 9) * 3600);
        EXPECT_EQ(trouble->Tracks.To, RaceTree::Start + 700 + east);
        const auto& zone = trouble->BetterTimeDiff;
        EXPECT_EQ((zone ? "zone " + NumberText(*zone) : "") + (trouble->OtherDay ? "day" : ""), helps);
        TakeTrackPeriod(trouble->Tracks, race);
        EXPECT_EQ(race.Start.At(), RaceTree::Start - 200 + east + 240);
    }
}

TEST(RaceNumbers, ASingleTrackIsARaceOfItsOwn) {
    RaceTree tree;
    tree.Boat("a.trk", Lat, Lon, SixKnots, 0, -200, 620);
    RaceNumbers numbers;
    RaceControl& race = numbers.race;
    race.SingleTrackFile = "a.trk";
    race.RaceTitle1 = "the race before";
    race.MagVariation = -7;
    int boats = 0;
    EXPECT_EQ(LoadRace(tree.Root(), numbers, [&](int boat) { boats += boat; }).Outcome, LoadOutcome::Sound);
    EXPECT_EQ(boats, 1);
    EXPECT_EQ(race.Boats[1].BoatName + "|" + race.RaceTitle1, "a|");
    EXPECT_EQ(race.MagVariation, -7);
    EXPECT_EQ(race.TimeDiff, 9);                          // the home waters
    EXPECT_EQ(race.Start.Text(), "2004/08/05 12:30:40");  // four minutes after the first fix
    EXPECT_EQ(race.RaceDuration, 580);
    EXPECT_EQ(race.DataFromTime, race.Start.At());
    // A period that is set for the track holds when it is loaded again.
    race.Finish = RaceTime("2004/08/05 12:35:40");
    race.DataToTime = race.Finish.At();
    LoadRace(tree.Root(), numbers);
    EXPECT_EQ(race.RaceDuration, 300);
    EXPECT_EQ(LatestFixTime(numbers.tracks), 319);
}

TEST(RaceNumbers, ARaceOfNothingIsStillARace) {
    RaceTree tree;
    tree.Write("gpsdat/empty.trk", std::string(600, '#'));
    tree.Race("R1.txt", "BN, empty.trk, Alpha\nWF, none.csv\nCRS, L1, MK1\n");
    using Case = std::tuple<const char*, const char*, LoadOutcome, const char*>;
    for (const auto& [file, track, outcome, missing] :
         {Case{"R1.txt", "", LoadOutcome::NoFix, ""}, Case{"none.txt", "", LoadOutcome::NoRaceFile, ""},
          Case{"", "gone.trk", LoadOutcome::NoTrackFile, "gone.trk"},
          Case{"", "empty.trk", LoadOutcome::NoFix, ""}, Case{"", "", LoadOutcome::NoFix, ""}}) {
        RaceNumbers numbers;
        numbers.race.RaceFileName = file;
        numbers.race.SingleTrackFile = track;
        const LoadResult result = LoadRace(tree.Root(), numbers);
        EXPECT_EQ(result.Outcome, outcome) << file << track;
        EXPECT_EQ(result.Missing.filename(), missing);
        EXPECT_FALSE(HasAnyFix(numbers.tracks) || HasWindFile(numbers.race));
        EXPECT_EQ(LatestFixTime(numbers.tracks), 0);
        EXPECT_TRUE(numbers.coast.empty() && numbers.race.MapFile.Empty());
        EXPECT_TRUE(FinishOrder(numbers.passes).empty());
        EXPECT_FALSE(FirstFinishTime(numbers.passes));
    }
}

/// A race that depends neither on where it lies nor on which way it looks.
class Symmetry : public testing::TestWithParam<unsigned> {
  protected:
    static RaceNumbers Load(const SailedRace& race) {
        const TempTree tree;
        race.Write(tree, "r.txt");
        RaceNumbers numbers;
        numbers.race.RaceFileName = "r.txt";
        EXPECT_EQ(LoadRace(tree.Root(), numbers).Outcome, LoadOutcome::Sound);
        return numbers;
    }

    /// What the boats sailed, each number so large that a difference of 0.001 is next to none: miles,
    /// speeds, and where the wind comes from, seen from the boat; `side` is -1 in the looking-glass.
    static std::vector<double> Seen(const RaceNumbers& numbers, double side) {
        std::vector<double> seen{numbers.tracks.TypicalSpeed};
        for (const auto& miles : numbers.passes.MarkPassDist)
            seen.insert(seen.end(), miles.begin(), miles.end());
        for (const Track& track : numbers.tracks.Boats) {
            for (int fix = 1; fix <= track.Count(); ++fix) seen.push_back(track.TrackSpeed(fix));
            for (const double miles : track.TrackDist) seen.push_back(miles * 10);
            for (double t = 0.5; t < 900; t += 61.7) {
                const int segment = FindSegment(track, t);
                if (segment == 0) continue;
                const double wind = WindAt(numbers.race, numbers.wind, t).DirectionTrue;
                const double angle = (MomentOn(track, segment, t).Course - wind) * DegToRad;
                seen.insert(seen.end(), {std::cos(angle), side * std::sin(angle)});
            }
        }
        return seen;
    }

    void ExpectSame(const SailedRace& sailed, double side = 1) const {
        const RaceNumbers other = Load(sailed);
        EXPECT_EQ(numbers_.passes.MarkPassTime, other.passes.MarkPassTime);
        EXPECT_EQ(numbers_.passes.FirstPassTime, other.passes.FirstPassTime);
        // The scale is that of the middle of the box, which need not be the middle that all is turned
        // about.
        const std::vector<double> mine = Seen(numbers_, 1);
        const std::vector<double> its = Seen(other, side);
        ASSERT_EQ(mine.size(), its.size());
        for (std::size_t i = 0; i < mine.size(); ++i) ASSERT_NEAR(mine[i], its[i], 0.0015) << i;
    }

    SailedRace sailed_{GetParam()};
    RaceNumbers numbers_ = Load(sailed_);
};

TEST_P(Symmetry, AllBoatsAreSeenRoundTheCourse) {
    for (const auto& times : numbers_.passes.MarkPassTime)
        for (int entry = 1; entry <= times.Count(); ++entry)
            EXPECT_GT(times[entry], entry > 1 ? times[entry - 1] : -60) << "entry " << entry;
}

TEST_P(Symmetry, ARaceMirroredTurnedOrElsewhereIsTheSameRace) {
    ExpectSame(sailed_.Mirrored(), -1);
    ExpectSame(sailed_.Turned());
    ExpectSame(sailed_.Moved([](const Position& at) { return Position{at.Lat, at.Lon + 600}; }));
}

TEST_P(Symmetry, ARaceIsTheSameInEveryQuarterOfTheWorld) {
    ExpectSame(sailed_.Southern(), -1);
    ExpectSame(sailed_.Western(), -1);
    ExpectSame(sailed_.Southern().Western());
}

TEST_P(Symmetry, ARaceAcrossTheDateLineIsOneRace) {
    ExpectSame(sailed_.OnDateLine());                 // its first fix in the east
    ExpectSame(sailed_.Mirrored().OnDateLine(), -1);  // and in the west
    ExpectSame(sailed_.Southern().OnDateLine(), -1);
}

TEST_P(Symmetry, ARaceOverMidnightALeapDayOrANewYearIsTheSameRace) {
    for (const char* start : {"2004/8/5 23:59:30", "2004/2/28 23:50:07", "2010/12/31 23:58"}) {
        SailedRace later = sailed_;
        later.Start = ParseDateTime(start).value_or(0);
        ExpectSame(later);
    }
}

TEST_P(Symmetry, TheOrderOfTheBoatsInTheFileChangesNothingButTheirNumbers) {
    SailedRace backward = sailed_;
    std::ranges::reverse(backward.Boats);
    MarkPasses passes = Load(backward).passes;
    std::ranges::reverse(passes.MarkPassTime);
    EXPECT_EQ(numbers_.passes.MarkPassTime, passes.MarkPassTime);
    EXPECT_EQ(numbers_.passes.FirstPassTime, passes.FirstPassTime);
}

INSTANTIATE_TEST_SUITE_P(Seeds, Symmetry, testing::Values(1U, 2U, 3U, 4U));

}  // namespace
}  // namespace keelview
