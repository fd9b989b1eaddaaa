#include "analysis/race_finder.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <cstdlib>

#include "support/simulated_regatta.h"

namespace keelview {
namespace {

constexpr std::array Layouts{Layout::WindwardLeeward, Layout::Gate, Layout::Triangle, Layout::Trapezoid,
                             Layout::Passage};
constexpr std::array<const char*, 5> LayoutNames{"windward-leeward", "with gate", "triangle", "trapezoid",
                                                 "passage"};

RaceFinding Find(const SimulatedRegatta& regatta) {
    return FindRaces(regatta.Boats, regatta.Scale, FinderHints());
}

/// How far the marks of a race lie from the true ones that they are nearest to, metres; the largest.
double LargestMarkError(const SimulatedRegatta& regatta, const FoundRace& race) {
    double largest = 0;
    for (const Position& found : race.Marks) {
        double nearest = 1e9;
        for (const Way& mark : regatta.Marks)
            nearest = std::min(nearest, (regatta.Water().To(found) - mark).Length());
        largest = std::max(largest, nearest);
    }
    return largest;
}

std::string CourseText(const FoundRace& race) {
    std::string text;
    for (const std::string& entry : race.Course) text += (text.empty() ? "" : ", ") + entry;
    return text;
}

/// What 100 seeds of one layout come to.
struct Tally {
    int Seeds = 0, Races = 0, Guns = 0, Marks = 0, Courses = 0;
    std::vector<double> GunErrors, MarkErrors;
};

RegattaPlan PlanOf(Layout layout, unsigned seed) {
    constexpr std::array sizes{5, 8, 12, 20, 35, 50};
    return {.Course = layout,
            .Seed = seed,
            .Boats = sizes[seed % sizes.size()],
            .Noise = 1.0 + seed % 3,
            .Every = seed % 4 == 0 ? 3 : 1,
            .Retire = static_cast<int>(seed % 3),
            .OddGun = seed % 20 == 7};
}

void Count(const RegattaPlan& plan, Tally& tally, bool told) {
    const SimulatedRegatta regatta(plan);
    const RaceFinding finding = Find(regatta);
    ++tally.Seeds;
    if (finding.Races.size() != 1) {
        if (told) {
            std::printf("  seed %u boats %d: %zu races\n", plan.Seed, plan.Boats, finding.Races.size());
            for (const auto& each : finding.Missing) std::printf("    %s\n", each.English.c_str());
        }
        return;
    }
    ++tally.Races;
    const FoundRace& race = finding.Races.front();
    const double gun = std::abs(race.Gun - regatta.Guns.front());
    const double marks = LargestMarkError(regatta, race);
    tally.GunErrors.push_back(gun);
    tally.MarkErrors.push_back(marks);
    const bool course = CourseText(race) == regatta.Course;
    tally.Guns += gun <= 5;
    tally.Marks += marks <= 15;
    tally.Courses += course;
    if (told && (gun > 5 || marks > 15 || !course))
        std::printf(
            "  seed %u boats %d noise %.0f every %d: gun %+d, marks %.1f, %s instead of %s (%.2f) wind "
            "%+.0f\n",
            plan.Seed, plan.Boats, plan.Noise, plan.Every, race.Gun - regatta.Guns.front(), marks,
            CourseText(race).c_str(), regatta.Course.c_str(), race.Confidence,
            std::remainder(race.Wind.value_or(0) - regatta.Wind, 360.0));
}

/// KEELVIEW_FINDER_SEEDS=100 tries so many seeds of each layout, names each miss and prints the table of
/// docs/finder.md.
TEST(RaceFinder, FindsGunMarksAndCourseOfEachLayout) {
    const char* const asked = std::getenv("KEELVIEW_FINDER_SEEDS");
    const unsigned seeds = asked ? static_cast<unsigned>(std::atoi(asked)) : 6;
    Tally all;
    for (std::size_t layout = 0; layout < Layouts.size(); ++layout) {
        Tally tally;
        for (unsigned seed = 1; seed <= seeds; ++seed)
            Count(PlanOf(Layouts[layout], seed), tally, asked != nullptr);
        if (asked)
            std::printf("| %s | %d | %d | %d | %d |\n", LayoutNames[layout], tally.Races, tally.Guns,
                        tally.Marks, tally.Courses);
        all.Seeds += tally.Seeds, all.Guns += tally.Guns, all.Marks += tally.Marks;
        all.Courses += tally.Courses;
    }
    EXPECT_GE(all.Guns, 0.95 * all.Seeds);
    EXPECT_GE(all.Marks, 0.9 * all.Seeds);
    EXPECT_GE(all.Courses, 0.8 * all.Seeds);
}

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
