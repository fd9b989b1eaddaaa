#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <cstdlib>

#include "support/found_and_true.h"

namespace keelview {
namespace {

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

/// What the seeds of one layout come to.
struct Tally {
    int Seeds = 0, Races = 0, Guns = 0, Marks = 0, Courses = 0;

    void Count(const RegattaPlan& plan, bool told) {
        const SimulatedRegatta regatta(plan);
        const RaceFinding finding = Find(regatta);
        ++Seeds;
        std::string missed;
        if (finding.Races.size() == 1) {
            const FoundRace& race = finding.Races.front();
            ++Races;
            Guns += std::abs(race.Gun - regatta.Guns.front()) <= 5;
            Marks += LargestMarkError(regatta, race) <= 15;
            Courses += CourseText(race) == regatta.Course;
            missed = MissedOf(regatta, race);
        } else {
            missed = " " + std::to_string(finding.Races.size()) + " races;";
            for (const Sentence& each : finding.Missing) missed += " " + each.English + ";";
        }
        if (told && !missed.empty())
            std::printf("  seed %u, %d boats, noise %.0f, every %d s:%s\n", plan.Seed, plan.Boats,
                        plan.Noise, plan.Every, missed.c_str());
    }
};

/// The seeds that KEELVIEW_FINDER_SEEDS asks for, as "1-100"; without it a few.
std::pair<unsigned, unsigned> SeedsAsked() {
    const char* const asked = std::getenv("KEELVIEW_FINDER_SEEDS");
    unsigned first = 1, last = 20;
    if (asked && std::sscanf(asked, "%u-%u", &first, &last) != 2) ADD_FAILURE() << "seeds are FIRST-LAST";
    return {first, last};
}

class Layouts : public testing::TestWithParam<std::pair<const char*, Layout>> {};

/// With KEELVIEW_FINDER_SEEDS each miss is named, and the row of docs/finder.md printed.
TEST_P(Layouts, FindsGunMarksAndCourse) {
    const auto& [name, layout] = GetParam();
    const bool told = std::getenv("KEELVIEW_FINDER_SEEDS") != nullptr;
    const auto [first, last] = SeedsAsked();
    Tally tally;
    for (unsigned seed = first; seed <= last; ++seed) tally.Count(PlanOf(layout, seed), told);
    if (told)
        std::printf("| %s | %d | %d | %d | %d |\n", name, tally.Races, tally.Guns, tally.Marks,
                    tally.Courses);
    EXPECT_GE(tally.Guns, 0.95 * tally.Seeds);
    EXPECT_GE(tally.Marks, 0.95 * tally.Seeds);
    EXPECT_GE(tally.Courses, 0.95 * tally.Seeds);
}

/// Where all fixes scatter by ten metres: no smoothing that is fit for good tracks sees the finish then.
TEST(FinderRates, FindsMostCoursesInNoiseOfTenMetres) {
    for (const Layout layout : {Layout::Gate, Layout::Triangle}) {
        Tally tally;
        for (unsigned seed = 1; seed <= 10; ++seed)
            tally.Count({.Course = layout, .Seed = seed, .Noise = 10}, false);
        EXPECT_GE(tally.Guns, 9);
        EXPECT_GE(tally.Courses, 9);
    }
}

/// Boats that train have no start. Of a day of five drills that all begin within two minutes of each other,
/// few have a drill that nobody could tell from one.
TEST(FinderRates, ProposesHardlyAnythingOfTrainings) {
    int proposed = 0;
    for (unsigned seed = 1; seed <= 10; ++seed)
        for (const int boats : {2, 3, 10}) {
            const SimulatedRegatta day({.Seed = seed, .Boats = boats, .Training = true});
            proposed += !Find(day).Races.empty();
        }
    EXPECT_LE(proposed, 2);
}

INSTANTIATE_TEST_SUITE_P(FinderRates, Layouts,
                         testing::Values(std::pair("windward-leeward", Layout::WindwardLeeward),
                                         std::pair("with gate", Layout::Gate),
                                         std::pair("triangle", Layout::Triangle),
                                         std::pair("trapezoid", Layout::Trapezoid),
                                         std::pair("passage", Layout::Passage)));

}  // namespace
}  // namespace keelview
