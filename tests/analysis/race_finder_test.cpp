#include "analysis/race_finder.h"

#include <gtest/gtest.h>

#include <array>

#include "analysis/found_race_entry.h"
#include "analysis/race_numbers.h"
#include "support/found_and_true.h"

namespace keelview {
namespace {

TEST(RaceFinder, FindsEachRaceOfADayAndTakesBuoysForMarks) {
    const SimulatedRegatta day({.Course = Layout::WindwardLeeward, .Seed = 3, .Races = 2, .Buoys = true});
    const RaceFinding finding = Find(day);
    ASSERT_EQ(finding.Races.size(), 2U);
    EXPECT_EQ(finding.Lying.size(), day.Marks.size());
    for (std::size_t race = 0; race < 2; ++race) {
        EXPECT_NEAR(finding.Races[race].Gun, day.Guns[race], 5);
        EXPECT_EQ(CourseText(finding.Races[race]), day.Course);
        EXPECT_LT(LargestMarkError(day, finding.Races[race]), 2);
    }
}

TEST(RaceFinder, SeesThroughRecallsGapsAndRetirements) {
    for (const RegattaPlan& plan :
         {RegattaPlan{.Seed = 4, .Recall = true}, {.Seed = 5, .Gaps = true}, {.Seed = 8, .Retire = 4}}) {
        const SimulatedRegatta regatta(plan);
        const RaceFinding finding = Find(regatta);
        ASSERT_EQ(finding.Races.size(), 1U) << plan.Seed;
        EXPECT_NEAR(finding.Races.front().Gun, regatta.Guns.front(), 5) << plan.Seed;
        EXPECT_EQ(CourseText(finding.Races.front()), regatta.Course) << plan.Seed;
    }
}

TEST(RaceFinder, FindsTheMarksInNoiseOfTenMetresAndTellsTwoFleetsApart) {
    const SimulatedRegatta noisy({.Seed = 6, .Noise = 10});
    const RaceFinding seen = Find(noisy);
    ASSERT_EQ(seen.Races.size(), 1U);
    EXPECT_LT(LargestMarkError(noisy, seen.Races.front()), 20);
    EXPECT_LT(seen.Races.front().Confidence, 0.9);
    const SimulatedRegatta fleets({.Seed = 7, .Boats = 16, .Fleets = true});
    const RaceFinding both = Find(fleets);
    ASSERT_EQ(both.Races.size(), 2U);
    EXPECT_NEAR(both.Races[1].Gun - both.Races[0].Gun, 300, 5);
    for (const FoundRace& race : both.Races) EXPECT_EQ(CourseText(race), fleets.Course);
}

TEST(RaceFinder, HintsOfRecordingsWin) {
    const SimulatedRegatta regatta({.Seed = 3});
    const Plane water = regatta.Water();
    const std::pair line{water.From({-60, 3}), water.From({60, -3})};
    const RaceFinding finding =
        FindRaces(regatta.Boats, regatta.Scale,
                  {.Clock = 0, .Wind = regatta.Wind, .Gun = regatta.Guns[0] + 3, .Line = line});
    ASSERT_EQ(finding.Races.size(), 1U);
    EXPECT_EQ(finding.Races.front().Gun, regatta.Guns[0] + 3);
    const auto& [left, right] = finding.Races.front().Lines.front();
    EXPECT_TRUE((left == line.first && right == line.second) ||
                (left == line.second && right == line.first));
}

/// A real training of two dinghies, round two marks again and again, without a start.
TEST(RaceFinder, ProposesNothingOfATrainingAndSaysSo) {
    RaceNumbers numbers;
    numbers.race.RaceFileName = "Valencia_Snipes.txt";
    const std::filesystem::path tree = std::filesystem::path(KEELVIEW_DATA) / "demo";
    LoadRace(tree, numbers);
    ASSERT_EQ(numbers.tracks.Boats.Count(), 2);
    const DayFinding day = FindRacesOf(tree, numbers.race);
    EXPECT_EQ(day.Surest(), nullptr);
    EXPECT_FALSE(day.Found.Missing.empty());
}

/// One boat's way by pieces: seconds, degrees, metres a second.
Track Sail(const SimulatedRegatta& regatta, Way from, const std::vector<std::array<double, 3>>& pieces) {
    Track track;
    double time = 0;
    for (const auto& [seconds, course, speed] : pieces)
        for (double end = time + seconds; time < end; ++time, from = from + Towards(course) * speed) {
            const Position at = regatta.Water().From(from);
            track.TrackLat.Add(at.Lat);
            track.TrackLon.Add(at.Lon);
            track.TrackTime.Add(time);
        }
    return track;
}

TEST(RaceFinder, ProposesNothingWhereNobodyRaced) {
    const SimulatedRegatta regatta({.Seed = 1, .Boats = 6});
    std::vector<Tracks> days(5);
    days[1].Boats.Add(regatta.Boats.Boats[3]);  // one boat
    for (int boat = 0; boat < 6; ++boat) {
        const Way berth{boat * 12.0, boat % 2 * 9.0};
        days[2].Boats.Add(Sail(regatta, berth, {{3600, 40, 0.001}}));  // at anchor
        days[3].Boats.Add(
            Sail(regatta, berth, {{600 + boat * 70.0, 0, 0}, {2400, 65, 2.5}, {1800, 80, 2.4}}));
        std::vector<std::array<double, 3>> pieces;  // each trains by itself
        for (int leg = 0; leg < 14; ++leg)
            pieces.push_back({140.0 + 23 * ((boat * 5 + leg * 3) % 7), boat * 47.0 + leg * 171.0, 2.2});
        days[4].Boats.Add(Sail(regatta, berth, pieces));
    }
    for (std::size_t day = 0; day < days.size(); ++day) {
        const RaceFinding finding = FindRaces(days[day], regatta.Scale, {});
        EXPECT_TRUE(finding.Races.empty()) << day;
        EXPECT_FALSE(finding.Missing.empty()) << day;
    }
}

}  // namespace
}  // namespace keelview
