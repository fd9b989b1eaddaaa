#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "support/asked_fleet.h"

namespace keelview {
namespace {

constexpr auto Parts = {&LegLoss::Start, &LegLoss::Turns, &LegLoss::Speed, &LegLoss::Distance,
                        &LegLoss::Rest};

const FleetPlan Plan{
    .Boats = 5, .Noise = 1, .OwnVelocity = true, .Swing = 4, .Current = {0.4, 0.3}, .Last = 1700};

TEST(CoachAnswers, TurningOrMirroringTheSceneLeavesLossesGapsAndSpeedsAsTheyAre) {
    const CoachAnswers answers = AnswersOf(SimulatedFleet(Plan));
    for (const auto& [turned, mirrored] : {std::pair{119.0, false}, {0.0, true}}) {
        FleetPlan other = Plan;
        other.Turned = turned;
        other.Mirrored = mirrored;
        const CoachAnswers seen = AnswersOf(SimulatedFleet(other));
        for (int leg = 1; leg <= 3; ++leg) {
            EXPECT_EQ(seen.Losses[leg].BestBoat, answers.Losses[leg].BestBoat);
            for (int boat = 1; boat <= Plan.Boats; ++boat)
                for (const auto part : Parts) {
                    const LostSeconds& one = (*answers.Losses[leg].Boats[boat]).*part;
                    const LostSeconds& same = (*seen.Losses[leg].Boats[boat]).*part;
                    EXPECT_NEAR(same.Seconds, one.Seconds, 0.1);
                    EXPECT_NEAR(same.Sigma, one.Sigma, 0.1);
                }
        }
        for (int boat = 1; boat <= Plan.Boats; ++boat) {
            ASSERT_EQ(seen.Gaps[boat].size(), answers.Gaps[boat].size());
            for (std::size_t i = 0; i < seen.Gaps[boat].size(); ++i)
                EXPECT_NEAR(seen.Gaps[boat][i].Seconds, answers.Gaps[boat][i].Seconds, 0.1);
        }
        const PolarCurve& one = answers.Speeds.Bands[1].Fleet;
        const PolarCurve& same = seen.Speeds.Bands[1].Fleet;
        EXPECT_NEAR(same.UpSailed->Angle, one.UpSailed->Angle, 0.05);
        EXPECT_NEAR(same.DownSailed->Vmg, one.DownSailed->Vmg, 0.01);
    }
}

TEST(CoachAnswers, ComeInOneGoPieceByPieceOrNotAtAll) {
    RaceNumbers numbers = NumbersOf(SimulatedFleet(Plan));
    std::vector<double> shares;
    const auto whole = AnswerCoach(numbers, [&](double share) {
        shares.push_back(share);
        return true;
    });
    ASSERT_TRUE(whole);
    EXPECT_TRUE(std::ranges::is_sorted(shares, std::ranges::less_equal()));
    EXPECT_EQ(shares.front(), 0);
    EXPECT_FALSE(AnswerCoach(numbers, [](double share) { return share < 0.5; }));
    CoachWork work(numbers);
    // A person may change the race meanwhile; the answers are those of the race as it was.
    numbers.race = {};
    numbers.wind = {};
    numbers.passes = {};
    while (!work.IsDone()) work.DoNext();
    EXPECT_NEAR(work.ShareDone(), 1, 1e-9);
    const CoachAnswers pieces = work.Take();
    for (int leg = 1; leg <= 3; ++leg)
        for (int boat = 1; boat <= Plan.Boats; ++boat)
            EXPECT_EQ(pieces.Losses[leg].Boats[boat]->Speed.Seconds,
                      whole->Losses[leg].Boats[boat]->Speed.Seconds);
}

TEST(CoachAnswers, WhatIsNotKnownStaysOpenAndTheSumOfALossHoldsAllTheSame) {
    const auto answer = [](const auto& change) {
        RaceNumbers numbers = NumbersOf(SimulatedFleet(Plan));
        change(numbers);
        return *AnswerCoach(numbers);
    };
    EXPECT_TRUE(answer([](RaceNumbers& numbers) { numbers = {}; }).Losses.Empty());
    const CoachAnswers noCourse = answer([](RaceNumbers& numbers) {
        numbers.race.CourseOrder.Clear();
        numbers.passes = {};
    });
    EXPECT_TRUE(noCourse.Losses.Empty() && noCourse.Progress.OrderAt(100).empty() && !noCourse.Start.Line);
    EXPECT_EQ(noCourse.Speeds.Bands.Count(), 1);

    // With a wind that is estimated no wind speed is known.
    const CoachAnswers noWindFile = answer([](RaceNumbers& numbers) { numbers.race.WindFileName.clear(); });
    EXPECT_EQ(noWindFile.Wind.Knowledge(), WindKnowledge::Estimated);
    ASSERT_EQ(noWindFile.Speeds.Bands.Count(), 1);
    EXPECT_FALSE(noWindFile.Speeds.Bands[1].From);
    EXPECT_TRUE(noWindFile.Losses[1].ByPolar);

    // One whose track ends on the way has no parts, one that was not there no leg.
    const CoachAnswers torn = answer([](RaceNumbers& numbers) {
        Track& track = numbers.tracks.Boats[2];
        for (const auto member : {&Track::TrackLat, &Track::TrackLon, &Track::TrackTime})
            (track.*member).Resize(700);
        track.TrackOwnSpeed.Resize(700), track.TrackOwnCourse.Resize(700);
        numbers.tracks.Boats[3] = {};
        numbers.passes.MarkPassTime[3].Assign(4, {});
    });
    for (const LegDebrief& leg : torn.Losses) {
        EXPECT_FALSE(leg.Boats[3]);
        for (int boat = 1; boat <= Plan.Boats; ++boat) {
            const auto& loss = leg.Boats[boat];
            if (!loss) continue;
            double sum = 0;
            for (const auto part : Parts) sum += ((*loss).*part).Seconds;
            EXPECT_NEAR(sum, loss->Loss, 1e-9);
        }
    }
    EXPECT_FALSE(torn.Losses[3].Boats[2]->IsSplit);
    EXPECT_FALSE(torn.MadeGood[2][3]);
    // Its gap at the finish is known from the times all the same.
    const int finish = *PassTime(torn.Passes, 2, 4);
    const int first = *std::ranges::min(torn.Passes.MarkPassTime, {},
                                        [](const auto& passes) { return passes[4].value_or(99999); })[4];
    const auto order = torn.Progress.OrderAt(finish);
    EXPECT_NEAR(std::ranges::find(order, 2, &RankedBoat::Boat)->GapSeconds.value_or(-1), finish - first,
                0.05);
}

TEST(CoachAnswers, AFleetBeyondItsTracksAndBeforeTheGunHasNoGaps) {
    const CoachAnswers answers = AnswersOf(SimulatedFleet(Plan));
    EXPECT_FALSE(answers.Progress.GapSeconds(1, 2, -1));
    EXPECT_FALSE(answers.Progress.LeaderAt(-1));
    const GapCurves toSecond = GapsToBoat(answers.Progress, answers.Passes, 2, 30);
    for (const GapPoint& point : toSecond[2]) EXPECT_EQ(point.Seconds, 0);
    for (int boat : {1, 3})
        for (int entry = 2; entry <= 4; ++entry) {
            const int pass = *PassTime(answers.Passes, boat, entry);
            const int others = *PassTime(answers.Passes, 2, entry);
            const auto at = std::ranges::find(toSecond[boat], pass, &GapPoint::Time);
            ASSERT_NE(at, toSecond[boat].end());
            EXPECT_TRUE(pass < others ? at->Seconds < 0 : std::abs(at->Seconds - pass + others) < 0.05);
        }
}

}  // namespace
}  // namespace keelview
