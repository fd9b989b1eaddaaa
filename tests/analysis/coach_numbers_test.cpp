#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <tuple>

#include "support/asked_fleet.h"
#include "support/estimate_errors.h"

namespace keelview {
namespace {

/// A fleet and all that is worked out of it.
struct Judged {
    explicit Judged(const FleetPlan& plan) : Fleet(plan) {}

    SimulatedFleet Fleet;
    FleetMotion Motion{Fleet.Boats, Fleet.Scale};
    FleetTurns Turns = FindFleetTurns(Motion);
    WindEstimate Estimate = EstimateWind(Motion, Turns, Fleet.Passes);
    RaceWind Wind{Fleet.Race, Fleet.Wind, Estimate};
    StartReport Start = ReportStart(Fleet.Race, Motion, Wind);
    OneBased<std::vector<Manoeuvre>> Manoeuvres = FindFleetManoeuvres(Motion, Turns, Wind, Fleet.Passes);
};

struct StartErrors {
    Errors Crossing, Distance, Place;

    void Add(const Judged& judged) {
        for (int boat = 1; boat <= judged.Start.Boats.Count(); ++boat) {
            const BoatStart& start = judged.Start.Boats[boat];
            const auto& truth = judged.Fleet.Starts[static_cast<std::size_t>(boat - 1)];
            ASSERT_TRUE(start.AtGun && start.Crossing && start.Place);
            Distance.Add(*start.AtGun - truth.AtGun, start.DistanceSigma);
            Crossing.Add(*start.Crossing - truth.Crossing, start.CrossingSigma);
            Place.Add(*start.Place - truth.Place, start.PlaceSigma);
        }
    }
};

TEST(CoachNumbers, StartsOfAFleetAreMeasuredAsWellAsTheirFixesAllow) {
    // Fixes a second, noise, own velocity; the largest errors of crossing, distance and place.
    using Case = std::tuple<int, double, bool, double, double, double>;
    for (const auto& [fixes, noise, own, crossing, distance, place] :
         {Case{10, 0, false, 0.01, 0.05, 0.001},
          {1, 2, false, 0.55, 1.05, 0.012},
          {1, 2, true, 0.4, 0.8, 0.01}}) {
        StartErrors errors;
        for (unsigned seed = 1; seed <= 6; ++seed)
            errors.Add(Judged({.Seed = seed,
                               .Boats = 25,
                               .FixesPerSecond = fixes,
                               .Noise = noise,
                               .OwnVelocity = own,
                               .Current = {0.5, 0.3},
                               .Last = 60}));
        EXPECT_LT(errors.Crossing.Rms(), crossing) << noise << own;
        EXPECT_LT(errors.Distance.Rms(), distance) << noise << own;
        EXPECT_LT(errors.Place.Rms(), place) << noise << own;
        if (noise == 0) continue;
        for (const Errors& one : {errors.Crossing, errors.Distance, errors.Place})
            EXPECT_TRUE(one.SigmasHold()) << noise << own;
    }
}

TEST(CoachNumbers, TheLinesBiasIsThatOfTheWindAndTheBowCrossesBeforeTheAntenna) {
    Judged judged({.Boats = 2, .FixesPerSecond = 10, .Wind = 30, .Last = 60});
    ASSERT_TRUE(judged.Start.Line);
    EXPECT_NEAR(judged.Start.Line->Length, 150, 1e-3);
    EXPECT_NEAR(judged.Start.Line->Bearing, 120, 1e-3);
    EXPECT_NEAR(*judged.Start.Line->BiasDegrees, 0, 1e-3);
    for (WindSample& sample : judged.Fleet.Wind) sample.WindDirection = 40;
    judged.Fleet.Race.BowAhead = 1.5;
    const StartReport veered =
        ReportStart(judged.Fleet.Race, judged.Motion, RaceWind(judged.Fleet.Race, judged.Fleet.Wind, {}));
    EXPECT_NEAR(*veered.Line->BiasDegrees, 10, 1e-3);
    EXPECT_EQ(veered.Line->FavouredEnd, 2);
    EXPECT_NEAR(*veered.Line->Advantage, 150 * std::sin(10 * DegToRad), 1e-3);
    for (int boat = 1; boat <= 2; ++boat) {
        const double ahead = *veered.Boats[boat].AtGun - *judged.Start.Boats[boat].AtGun;
        EXPECT_NEAR(ahead, 1.5 * std::cos(45 * DegToRad), 1e-3);
        EXPECT_GT(*judged.Start.Boats[boat].Crossing, *veered.Boats[boat].Crossing);
    }
}

TEST(CoachNumbers, ABoatThatIsOverEarlyIsSeenAndSoIsItsWayBack) {
    SimulatedFleet fleet({.Boats = 2, .FixesPerSecond = 10, .Last = 60});
    // Up over the line at second -5, and the first one back at 10 and over again at 20; 2 m/s all along.
    for (int boat = 1; boat <= 2; ++boat) {
        Track& track = fleet.Boats.Boats[boat];
        for (int fix = 1; fix <= track.Count(); ++fix) {
            const double t = track.TrackTime[fix];
            const double turned = boat == 1 ? 2 * std::max(0.0, t - 2.5) - 2 * std::max(0.0, t - 15) : 0;
            track.TrackLat[fix] =
                fleet.Race.Lines[1].LineLat1 + 2 * (t + 5 - turned) / fleet.Scale.MetresPerLatMinute;
            track.TrackLon[fix] = (fleet.Race.Lines[1].LineLon1 + fleet.Race.Lines[1].LineLon2) / 2;
        }
    }
    const RaceWind wind(fleet.Race, fleet.Wind, {});
    const StartReport report = ReportStart(fleet.Race, FleetMotion(fleet.Boats, fleet.Scale), wind);
    EXPECT_NEAR(report.Boats[1].Returned.value_or(0), 10, 0.02);
    EXPECT_NEAR(report.Boats[1].Crossing.value_or(0), 20, 0.02);
    EXPECT_NEAR(report.Boats[2].Crossing.value_or(0), -5, 0.02);
    EXPECT_FALSE(report.Boats[2].Returned);
    for (const BoatStart& start : report.Boats) EXPECT_EQ(start.Over, true);
}

/// What was found of the turns of a fleet, and what they cost.
struct TurnErrors {
    int Truths = 0, Found = 0, Invented = 0;
    Errors Loss;

    void Add(const Judged& judged) {
        for (int boat = 1; boat <= judged.Manoeuvres.Count(); ++boat) {
            std::vector<const SimulatedFleet::Turn*> truths;
            for (const auto& turn : judged.Fleet.Turns)
                if (turn.Boat == boat) truths.push_back(&turn);
            for (const Manoeuvre& manoeuvre : judged.Manoeuvres[boat]) Match(manoeuvre, truths);
            // The last ones have no window any more.
            for (const auto* missed : truths)
                if (missed && missed->Time < judged.Fleet.Race.RaceDuration - 20) ++Truths;
        }
    }

  private:
    void Match(const Manoeuvre& manoeuvre, std::vector<const SimulatedFleet::Turn*>& truths) {
        if (manoeuvre.Kind == ManoeuvreKind::Rounding) return;
        for (const auto*& truth : truths) {
            if (!truth || std::abs(truth->Time - manoeuvre.Time) > 6) continue;
            if ((manoeuvre.Kind == ManoeuvreKind::Gybe) != truth->Gybe) continue;
            if (manoeuvre.LossMetres) Loss.Add(*manoeuvre.LossMetres - truth->Loss, manoeuvre.LossSigma);
            truth = nullptr;
            ++Found, ++Truths;
            return;
        }
        ++Invented;
    }
};

TEST(CoachNumbers, TurnsAreFoundWithWhatTheyCost) {
    // Fixes a second, noise, own velocity, waves, swing of the wind; the largest error of a loss.
    using Case = std::tuple<int, double, bool, double, double, double>;
    for (const auto& [fixes, noise, own, waves, swing, rms] : {Case{1, 2, false, 0, 0, 4.5},
                                                               {1, 2, true, 0, 5, 0.4},
                                                               {1, 1, false, 10, 0, 2.5},
                                                               {10, 0, false, 0, 5, 0.05}}) {
        TurnErrors errors;
        for (unsigned seed = 1; seed <= 6; ++seed)
            errors.Add(Judged({.Seed = seed,
                               .Boats = 8,
                               .FixesPerSecond = fixes,
                               .Noise = noise,
                               .OwnVelocity = own,
                               .Swing = swing,
                               .Current = {0.6, -0.2},
                               .Waves = waves}));
        EXPECT_GT(errors.Truths, 500);
        EXPECT_GT(errors.Found, 0.98 * errors.Truths) << own << waves;
        EXPECT_LT(errors.Invented, 0.01 * errors.Truths) << own << waves;
        EXPECT_LT(errors.Loss.Rms(), rms) << own << waves;
        EXPECT_LT(std::abs(errors.Loss.Mean()), 0.2) << own << waves;
        EXPECT_TRUE(errors.Loss.SigmasHold()) << own << waves << swing;
    }
}

TEST(CoachNumbers, TheWindIsEstimatedFromTurnsThoughTheCurrentSetsAcross) {
    for (const auto& [boats, rms] : {std::pair{5, 2.0}, {12, 1.0}}) {
        Errors tacks, samples;
        for (unsigned seed = 1; seed <= 4; ++seed) {
            const Judged judged({.Seed = seed,
                                 .Boats = boats,
                                 .Noise = 2,
                                 .Wind = 200,
                                 .Swing = 5,
                                 .Current = {0.6, 0.2},
                                 .Last = 900});
            for (const WindSight& sight : judged.Estimate.Sights)
                if (!sight.Gybe)
                    tacks.Add(TurnBetween(judged.Fleet.SeenWind(sight.Time), sight.Direction), sight.Sigma);
            for (const WindEstimateSample& sample : judged.Estimate.Samples)
                samples.Add(TurnBetween(judged.Fleet.SeenWind(sample.Time), sample.Direction),
                            sample.Sigma);
        }
        EXPECT_LT(tacks.Rms(), 2.2);
        EXPECT_LT(std::abs(tacks.Mean()), 0.3);
        EXPECT_LT(samples.Rms(), rms);
        EXPECT_TRUE(samples.SigmasHold());
    }
}

TEST(CoachNumbers, TheCurrentAcrossTheWindIsTheMeanOfBothSidesOfATurn) {
    Errors errors, axis;
    for (unsigned seed = 1; seed <= 8; ++seed) {
        const double north = 0.2 * seed - 0.9;
        const Judged judged({.Seed = seed,
                             .Boats = 6,
                             .Noise = 2,
                             .Wind = 90,
                             .Current = {0.3, north},
                             .Mirrored = seed > 4});
        const auto current = EstimateCurrent(judged.Estimate);
        ASSERT_TRUE(current);
        EXPECT_NEAR(TurnBetween(current->Axis, seed > 4 ? 0 : 180), 0, 2);
        axis.Add(TurnBetween(current->Axis, seed > 4 ? 0 : 180), current->AxisSigma);
        // Right of the upwind way is south; in the mirror, where the wind is west, it is north.
        errors.Add(current->Across - (seed > 4 ? north : -north), current->Sigma);
    }
    EXPECT_LT(errors.Rms(), 0.05);
    EXPECT_GE(errors.WithinTwo, 6);
    EXPECT_GE(axis.WithinTwo, 7);
    EXPECT_FALSE(EstimateCurrent({}));
}

TEST(CoachNumbers, LargeShiftsTellTheCurrentAlongTheWindAndSmallOnesDoNot) {
    Errors errors;
    for (unsigned seed = 1; seed <= 8; ++seed) {
        const double north = 0.2 * seed - 0.9;
        FleetPlan plan{
            .Seed = seed, .Boats = 12, .Noise = 1, .Swing = 25, .Period = 900, .Current = {0.4, north}};
        const auto current = EstimateCurrent(Judged(plan).Estimate);
        ASSERT_TRUE(current && current->Along) << seed;
        const Way truth = plan.Current * KnotMetres;
        errors.Add(*current->Along - plan.Current.Along(Towards(current->Axis - 90)), current->AlongSigma);
        EXPECT_NEAR((current->Velocity() - truth).Length() / KnotMetres, 0, 0.35);
        plan.Swing = 3;
        EXPECT_FALSE(EstimateCurrent(Judged(plan).Estimate)->Along);
    }
    EXPECT_LT(errors.Rms(), 0.15);
    EXPECT_GE(errors.WithinTwo, 7);
}

TEST(CoachNumbers, AFleetThatOnlyBeatsTellsTheWindTooAndTwoTurnsTellNothing) {
    Judged judged({.Noise = 1, .Wind = 300, .Last = 350});
    ASSERT_FALSE(judged.Estimate.Samples.empty());
    EXPECT_NEAR(TurnBetween(300, judged.Estimate.Samples.front().Direction), 0, 2);
    judged.Fleet.Race.WindFileName.clear();
    const RaceWind estimated(judged.Fleet.Race, judged.Fleet.Wind, judged.Estimate);
    EXPECT_EQ(estimated.Knowledge(), WindKnowledge::Estimated);
    const RaceWind none(judged.Fleet.Race, judged.Fleet.Wind, {});
    EXPECT_EQ(none.Knowledge(), WindKnowledge::None);
    EXPECT_FALSE(none.From(0));
    for (Track& track : judged.Fleet.Boats.Boats)
        for (double& time : track.TrackTime) time -= 1000;
    const FleetMotion early(judged.Fleet.Boats, judged.Fleet.Scale);
    EXPECT_TRUE(EstimateWind(early, FindFleetTurns(early), {}).Samples.empty());  // all before the gun
    for (auto& turns : judged.Turns) turns.clear();
    EXPECT_TRUE(EstimateWind(judged.Motion, judged.Turns, judged.Fleet.Passes).Samples.empty());
}

TEST(CoachNumbers, TurningOrMirroringTheSceneChangesNothing) {
    const FleetPlan plan{.Boats = 4, .Noise = 1, .OwnVelocity = true, .Swing = 4, .Current = {0.4, 0.3}};
    const Judged judged(plan);
    for (const auto& [turned, mirrored] : {std::pair{137.0, false}, {0.0, true}, {-61.0, true}}) {
        FleetPlan other = plan;
        other.Turned = turned;
        other.Mirrored = mirrored;
        const Judged seen(other);
        for (int boat = 1; boat <= plan.Boats; ++boat) {
            EXPECT_NEAR(*seen.Start.Boats[boat].Crossing, *judged.Start.Boats[boat].Crossing, 1e-3);
            EXPECT_EQ(seen.Start.Boats[boat].Rank30, judged.Start.Boats[boat].Rank30);
            ASSERT_EQ(seen.Manoeuvres[boat].size(), judged.Manoeuvres[boat].size());
            for (std::size_t i = 0; i < judged.Manoeuvres[boat].size(); ++i) {
                const Manoeuvre& one = judged.Manoeuvres[boat][i];
                const Manoeuvre& same = seen.Manoeuvres[boat][i];
                EXPECT_EQ(same.Kind, one.Kind);
                EXPECT_NEAR(same.From, mirrored ? -one.From : one.From, 0.05);
                EXPECT_NEAR(same.LossMetres.value_or(-99), one.LossMetres.value_or(-99), 0.02);
            }
        }
        ASSERT_EQ(seen.Estimate.Samples.size(), judged.Estimate.Samples.size());
        for (std::size_t i = 0; i < judged.Estimate.Samples.size(); ++i) {
            const double direction = judged.Estimate.Samples[i].Direction;
            EXPECT_NEAR(TurnBetween(seen.Estimate.Samples[i].Direction,
                                    (mirrored ? -direction : direction) + turned),
                        0, 0.05);
        }
    }
}

TEST(CoachNumbers, AtEachMarkTheGapIsTheDifferenceOfThePassingTimes) {
    Judged judged({.Boats = 6, .Noise = 2, .Swing = 5, .Last = 1500});
    const MarkPasses& passes = judged.Fleet.Passes;
    const CourseProgress progress(judged.Fleet.Race, judged.Motion, judged.Wind, passes);
    int checked = 0;
    for (int boat = 1; boat <= 6; ++boat)
        for (int entry = 1; entry <= 4; ++entry) {
            const auto pass = PassTime(passes, boat, entry);
            if (!pass || *pass < 0) continue;
            const auto order = progress.OrderAt(*pass);
            ASSERT_EQ(order.size(), 6);
            const auto leaders = PassTime(passes, order.front().Boat, entry);
            const auto ranked = std::ranges::find(order, boat, &RankedBoat::Boat);
            ASSERT_NE(ranked, order.end());
            if (*leaders < 0) continue;
            EXPECT_NEAR(ranked->GapSeconds.value_or(-1), *pass - *leaders, 0.05) << entry;
            ++checked;
        }
    EXPECT_GT(checked, 12);
    // The curves tell the same as the order, at the passings too; a boat is behind as far as the other is
    // ahead.
    const GapCurves curves = GapsToLeader(progress, passes, 10);
    for (int boat = 1; boat <= 6; ++boat) {
        const auto pass = PassTime(passes, boat, 2);
        EXPECT_EQ(std::ranges::count(curves[boat], static_cast<double>(*pass), &GapPoint::Time), 1);
        for (const GapPoint& point : curves[boat]) {
            const auto order = progress.OrderAt(point.Time);
            EXPECT_EQ(std::ranges::find(order, boat, &RankedBoat::Boat)->GapSeconds, point.Seconds);
            const int leader = order.front().Boat;
            EXPECT_EQ(progress.GapSeconds(leader, boat, point.Time).value_or(99), -point.Seconds);
        }
    }
    EXPECT_TRUE(progress.OrderAt(-1).empty());
    for (double t = 0; t < 1500; t += 7.5)
        for (int place = 1; const RankedBoat& ranked : progress.OrderAt(t)) {
            EXPECT_TRUE(place++ > 1 || ranked.GapMetres == 0);
            EXPECT_GE(ranked.GapMetres, 0);
        }
}

TEST(CoachNumbers, WhatIsMadeGoodOfALegIsThatOfThePolarAndTheWaySailed) {
    using Legs = std::vector<LegMadeGood>;
    const auto beats = [](bool mirrored) {
        Judged judged({.Boats = 4, .FixesPerSecond = 2, .Wind = 20, .Mirrored = mirrored});
        const auto legs = CourseLegs(judged.Fleet.Race, judged.Motion.Water);
        Legs made;
        for (int boat = 1; boat <= 4; ++boat)
            made.push_back(MadeGoodOnLeg(judged.Fleet.Race, judged.Motion.Boats[boat], legs[1], judged.Wind,
                                         PassTime(judged.Fleet.Passes, boat, 1),
                                         PassTime(judged.Fleet.Passes, boat, 2))
                               .value_or(LegMadeGood{}));
        EXPECT_FALSE(MadeGoodOnLeg(judged.Fleet.Race, judged.Motion.Boats[1], legs[1], judged.Wind, 5, {}));
        return made;
    };
    const Legs one = beats(false), mirrored = beats(true);
    for (std::size_t i = 0; i < one.size(); ++i) {
        EXPECT_NEAR(*one[i].Vmg * KnotMetres * one[i].Seconds, 1200, 8);
        EXPECT_NEAR(*one[i].Efficiency, std::cos(45 * DegToRad), 0.03);
        EXPECT_NEAR(one[i].Sailed, one[i].Speed * KnotMetres * one[i].Seconds, 8);
        EXPECT_GT(one[i].Sailed, 1.3 * 1200);
        EXPECT_NEAR(one[i].Straight, 1210, 20);  // from its place on the line to the mark
        EXPECT_NEAR(*one[i].PortShare, *mirrored[i].StarboardShare, 0.01);
        ASSERT_EQ(one[i].Overstood.has_value(), mirrored[i].Overstood.has_value());
        EXPECT_NEAR(one[i].Overstood.value_or(0), mirrored[i].Overstood.value_or(0), 1);
    }
}

TEST(CoachNumbers, APlantedFaultHasItsLossInItsPartOfTheDebrief) {
    for (const auto& [fault, part] : {std::pair{Fault::LateStart, &LegLoss::Start},
                                      {Fault::BadTurns, &LegLoss::Turns},
                                      {Fault::Slow, &LegLoss::Speed},
                                      {Fault::Detour, &LegLoss::Distance}}) {
        double lost = 0, inPart = 0;
        for (unsigned seed = 1; seed <= 4; ++seed) {
            const CoachAnswers answers = AnswersOf(SimulatedFleet({.Seed = seed,
                                                                   .Boats = 6,
                                                                   .Noise = 1,
                                                                   .OwnVelocity = true,
                                                                   .Wind = 70,
                                                                   .Last = 1900,
                                                                   .Alike = true,
                                                                   .Planted = fault}));
            ASSERT_EQ(answers.Losses.Count(), 3);
            for (const LegDebrief& leg : answers.Losses) {
                EXPECT_TRUE(leg.ByPolar);
                for (const auto& boat : leg.Boats) {
                    ASSERT_TRUE(boat && boat->IsSplit);
                    EXPECT_NEAR(boat->Start.Seconds + boat->Turns.Seconds + boat->Speed.Seconds +
                                    boat->Distance.Seconds + boat->Rest.Seconds,
                                boat->Loss, 1e-9);
                }
                lost += leg.Boats[1]->Loss;
                inPart += (*leg.Boats[1].*part).Seconds;
            }
        }
        EXPECT_GT(lost, 4 * 15);
        EXPECT_GT(inPart, 0.9 * lost) << static_cast<int>(fault);
    }
}

TEST(CoachNumbers, ThePolarIsThatOfTheBoatsAndItsTargetsWhereTheyMakeMostGood) {
    const auto speed = [](double angle) {
        return (2 + 1.3 * std::sin((angle - 20) * DegToRad)) / KnotMetres;
    };
    const auto best = [&](double from, double to) {
        double at = from;
        const auto good = [&](double angle) { return speed(angle) * std::abs(std::cos(angle * DegToRad)); };
        for (double angle = from; angle < to; angle += 0.1)
            if (good(angle) > good(at)) at = angle;
        return at;
    };
    FleetPlan plan{.Boats = 12, .Noise = 1, .OwnVelocity = true, .Wind = 250, .Last = 2000, .Alike = true};
    EXPECT_FALSE(AnswersOf(SimulatedFleet(plan)).Speeds.Bands[1].Fleet.UpTarget);  // all sail one angle
    plan.Spread = 22;
    for (const bool mirrored : {false, true}) {
        plan.Mirrored = mirrored;
        const CoachAnswers answers = AnswersOf(SimulatedFleet(plan));
        ASSERT_EQ(answers.Speeds.Bands.Count(), 1);
        const PolarCurve& fleet = answers.Speeds.Bands[1].Fleet;
        EXPECT_EQ(answers.Speeds.Bands[1].From, 8);
        int told = 0;
        for (const PolarCell& cell : fleet.Cells) {
            if (!cell.Median) continue;
            EXPECT_NEAR(*cell.Median, speed(cell.Angle), 0.1) << cell.Angle;
            EXPECT_NEAR(*cell.BestTenth, *cell.Median, 0.25);
            ++told;
        }
        EXPECT_GE(told, 8);
        ASSERT_TRUE(fleet.UpTarget && fleet.DownTarget);
        EXPECT_NEAR(fleet.UpTarget->Angle, best(0, 75), 3);
        EXPECT_NEAR(fleet.DownTarget->Angle, best(105, 180), 3);
        EXPECT_NEAR(fleet.UpTarget->Speed, speed(fleet.UpTarget->Angle), 0.1);
        EXPECT_FALSE(PolarSpeed(fleet, 90, 1));
    }
}

TEST(CoachNumbers, ABoatThatTacksBeyondTheLayLineHasOverstoodByTheWayToIt) {
    const EarthScale scale = ComputeEarthScale(2117);
    RaceControl race;
    race.WindDirection = 360;
    // To a mark at 0, 0: on starboard tack to the left, then on port tack at 2 m/s each way from a place
    // that lies 50 m to windward of the lay line, and off the wind to the mark.
    Track track;
    for (int t = 0; t <= 400; ++t) {
        const double north = t <= 200 ? -700 + 2 * t : -300 + 300.0 * (t - 200) / 200;
        const double east = t <= 200 ? 29.29 - 2 * t : -370.71 + 370.71 * (t - 200) / 200;
        track.TrackTime.Add(t);
        track.TrackLat.Add(2117 + north / scale.MetresPerLatMinute);
        track.TrackLon.Add(8369 + east / scale.MetresPerLonMinute);
    }
    const BoatMotion motion(track, Plane(scale, {2117, 8369}));
    const CourseLeg leg{{0, -1000}, {0, 0}, {0, 1}, 1000};
    const WindData none;
    const auto made = MadeGoodOnLeg(race, motion, leg, RaceWind(race, none, {}), 0, 399);
    ASSERT_TRUE(made && made->Overstood);
    EXPECT_NEAR(*made->Overstood, 70.71 * std::sin(45 * DegToRad), 3);
    EXPECT_NEAR(*made->PortShare, 0.5, 0.02);
}

}  // namespace
}  // namespace keelview
