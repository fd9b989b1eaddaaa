#include <gtest/gtest.h>

#include "analysis/leg_statistics.h"
#include "analysis/race_numbers.h"
#include "analysis/track_at.h"
#include "analysis/wind_at.h"
#include "base/angles.h"
#include "support/sailed_race.h"

namespace keelview {
namespace {

RaceNumbers Load(const SailedRace& race, const std::string& lines = {}) {
    const TempTree tree;
    race.Write(tree, "r.txt", lines);
    RaceNumbers numbers;
    numbers.race.RaceFileName = "r.txt";
    EXPECT_EQ(LoadRace(tree.Root(), numbers).Outcome, LoadOutcome::Sound);
    return numbers;
}

/// Everything that depends neither on where the race lies nor on which way it looks.
void ExpectSameRace(const RaceNumbers& a, const RaceNumbers& b) {
    EXPECT_EQ(a.passes.MarkPassTime, b.passes.MarkPassTime);
    EXPECT_EQ(a.passes.FirstPassTime, b.passes.FirstPassTime);
    EXPECT_EQ(FinishOrder(a.passes), FinishOrder(b.passes));
    // The scale is that of the middle of the box, which need not be the middle that all is turned about.
    EXPECT_NEAR(a.tracks.TypicalSpeed, b.tracks.TypicalSpeed, 1e-3);
    ASSERT_EQ(a.tracks.Boats.Count(), b.tracks.Boats.Count());
    for (int boat = 1; boat <= a.tracks.Boats.Count(); ++boat) {
        const Track& one = a.tracks.Boats[boat];
        const Track& other = b.tracks.Boats[boat];
        ASSERT_EQ(one.TrackTime, other.TrackTime);
        for (int fix = 1; fix <= one.Count(); ++fix) {
            ASSERT_NEAR(one.TrackDist[fix], other.TrackDist[fix], 1e-4) << boat << " " << fix;
            ASSERT_NEAR(one.TrackSpeed[fix], other.TrackSpeed[fix], 1e-3) << boat << " " << fix;
        }
        for (int entry = 1; entry <= a.race.CourseOrder.Count(); ++entry)
            EXPECT_NEAR(a.passes.MarkPassDist[boat][entry], b.passes.MarkPassDist[boat][entry], 0.0011);
    }
    for (const StatKind kind : {StatKind::Time, StatKind::Distance, StatKind::Speed}) {
        const LegStatistics one = ComputeLegStatistics(a.race, a.passes, kind);
        const LegStatistics other = ComputeLegStatistics(b.race, b.passes, kind);
        for (int entry = 1; entry <= a.race.CourseOrder.Count(); ++entry)
            EXPECT_NEAR(one.Cumulative.ColMax[entry], other.Cumulative.ColMax[entry], 2.1);
        EXPECT_NEAR(one.ByLeg.Spread, other.ByLeg.Spread, 4.1);
    }
}

/// The true wind angle at some moments, with the sign that the looking-glass gives it.
void ExpectSameAngles(const RaceNumbers& a, const RaceNumbers& b, double sign) {
    for (int boat = 1; boat <= a.tracks.Boats.Count(); ++boat)
        for (double t = 0.5; t < 900; t += 61.7) {
            const auto angle = [&](const RaceNumbers& race) {
                const Track& track = race.tracks.Boats[boat];
                const int segment = FindSegment(track, t);
                if (segment == 0) return 0.0;
                return WrapDifference(MomentOn(track, segment, t).Course -
                                      WindAt(race.race, race.wind, t).DirectionTrue);
            };
            EXPECT_NEAR(WrapDifference(angle(a) - sign * angle(b)), 0.0, 0.1) << boat << " at " << t;
        }
}

class Symmetry : public testing::TestWithParam<unsigned> {
  protected:
    SailedRace sailed_{GetParam()};
    RaceNumbers numbers_ = Load(sailed_);
};

TEST_P(Symmetry, AllBoatsAreSeenRoundTheCourse) {
    for (const auto& times : numbers_.passes.MarkPassTime)
        for (int entry = 1; entry <= times.Count(); ++entry) {
            EXPECT_GT(times[entry], entry > 1 ? times[entry - 1] : -60) << "entry " << entry;
        }
}

TEST_P(Symmetry, ARaceInTheLookingGlassIsTheSameRace) {
    const RaceNumbers mirrored = Load(sailed_.Mirrored());
    ExpectSameRace(numbers_, mirrored);
    ExpectSameAngles(numbers_, mirrored, -1);
}

TEST_P(Symmetry, ARaceUpsideDownIsTheSameRace) {
    const RaceNumbers turned = Load(sailed_.Turned());
    ExpectSameRace(numbers_, turned);
    ExpectSameAngles(numbers_, turned, 1);
}

TEST_P(Symmetry, ARaceFurtherEastOrAtAnotherTimeIsTheSameRace) {
    ExpectSameRace(numbers_, Load(sailed_.Moved([](const Position& at) {
                       return Position{at.Lat, at.Lon + 600};
                   })));
    // Over midnight, into a leap day and into another year.
    for (const auto start : {MakeCivilTime(2004, 8, 5, 23, 59, 30), MakeCivilTime(2004, 2, 28, 23, 50, 7),
                             MakeCivilTime(2010, 12, 31, 23, 58, 0)}) {
        SailedRace later = sailed_;
        later.Start = start.value_or(0);
        ExpectSameRace(numbers_, Load(later));
    }
}

TEST_P(Symmetry, TheOrderOfTheBoatsInTheFileChangesNothingButTheirNumbers) {
    SailedRace backward = sailed_;
    std::reverse(backward.Boats.begin(), backward.Boats.end());
    const RaceNumbers other = Load(backward);
    const int boats = numbers_.race.Boats.Count();
    for (int boat = 1; boat <= boats; ++boat)
        EXPECT_EQ(numbers_.passes.MarkPassTime[boat], other.passes.MarkPassTime[boats + 1 - boat]);
    EXPECT_EQ(numbers_.passes.FirstPassTime, other.passes.FirstPassTime);
}

INSTANTIATE_TEST_SUITE_P(Seeds, Symmetry, testing::Values(1U, 2U, 3U, 4U));

}  // namespace
}  // namespace keelview
