#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <optional>
#include <string>

#include "support/asked_fleet.h"
#include "support/estimate_errors.h"

namespace keelview {
namespace {

/// Errors by the name of what was estimated, in fleets that sailed alike, once seen with noise and once
/// without.
class Judgement {
  public:
    void Add(const CoachAnswers& seen, const CoachAnswers& truth) {
        for (int boat = 1; boat <= seen.Motion.Boats.Count(); ++boat) {
            AddStart(seen.Start.Boats[boat], truth.Start.Boats[boat]);
            for (const Manoeuvre& turn : seen.Manoeuvres[boat]) AddTurn(turn, truth.Manoeuvres[boat]);
            for (int leg = 1; leg <= 3; ++leg) {
                if (seen.MadeGood[boat][leg]) AddLeg(*seen.MadeGood[boat][leg], *truth.MadeGood[boat][leg]);
                const auto& loss = seen.Losses[leg].Boats[boat];
                if (loss && loss->IsSplit && boat != seen.Losses[leg].BestBoat)
                    AddLoss(leg, *loss, *truth.Losses[leg].Boats[boat]);
            }
        }
        AddGaps(seen.Progress, truth.Progress);
    }
    const std::map<std::string, Errors>& All() const { return errors_; }

  private:
    using Maybe = std::optional<double>;

    void Add(const char* name, Maybe seen, Maybe truth, double sigma) {
        if (seen && truth) errors_[name].Add(*seen - *truth, sigma);
    }
    void AddStart(const BoatStart& seen, const BoatStart& truth) {
        Add("at 5 s", seen.AtMinus5, truth.AtMinus5, seen.Minus5Sigma);
        Add("at 10 s", seen.AtMinus10, truth.AtMinus10, seen.Minus10Sigma);
        Add("speed at gun", seen.SpeedAtGun, truth.SpeedAtGun, seen.SpeedAtGunSigma);
        Add("speed at crossing", seen.SpeedAtCrossing, truth.SpeedAtCrossing, seen.SpeedAtCrossingSigma);
    }
    void AddTurn(const Manoeuvre& seen, const std::vector<Manoeuvre>& truths) {
        const auto truth = std::ranges::find_if(truths, [&](const Manoeuvre& one) {
            return one.Kind == seen.Kind && std::abs(one.Time - seen.Time) < 6;
        });
        if (truth == truths.end()) return;
        Add("turn's time", seen.Time, truth->Time, seen.TimeSigma);
        Add("duration", seen.Duration, truth->Duration, seen.DurationSigma);
        Add("from", seen.From, truth->From, seen.FromSigma);
        Add("to", seen.To, truth->To, seen.ToSigma);
        Add("speed before", seen.SpeedBefore, truth->SpeedBefore, seen.SpeedBeforeSigma);
        Add("least speed", seen.SpeedLeast, truth->SpeedLeast, seen.SpeedLeastSigma);
        Add("speed behind", seen.SpeedAfter, truth->SpeedAfter, seen.SpeedAfterSigma);
        Add("lost seconds", seen.LossSeconds, truth->LossSeconds, seen.LossSecondsSigma);
    }
    void AddLeg(const LegMadeGood& seen, const LegMadeGood& truth) {
        Add("vmc", seen.Vmc, truth.Vmc, seen.Sigma);
        Add("vmg", seen.Vmg, truth.Vmg, seen.Sigma);
        Add("speed", seen.Speed, truth.Speed, seen.SpeedSigma);
        Add("sailed", seen.Sailed, truth.Sailed, seen.SailedSigma);
        Add("straight", seen.Straight, truth.Straight, seen.StraightSigma);
        Add("efficiency", seen.Efficiency, truth.Efficiency, seen.EfficiencySigma);
        Add("port", seen.PortShare, truth.PortShare, seen.ShareSigma);
        Add("overstood", seen.Overstood, truth.Overstood, seen.OverstoodSigma);
    }
    void AddLoss(int leg, const LegLoss& seen, const LegLoss& truth) {
        const auto add = [&](const char* name, LostSeconds LegLoss::*part) {
            Add(name, (seen.*part).Seconds, (truth.*part).Seconds, (seen.*part).Sigma);
        };
        if (leg == 1) add("start's loss", &LegLoss::Start);
        add("turns' loss", &LegLoss::Turns);
        add("speed's loss", &LegLoss::Speed);
        add("distance's loss", &LegLoss::Distance);
        add("rest", &LegLoss::Rest);
    }
    void AddGaps(const CourseProgress& seen, const CourseProgress& truth) {
        for (double t = 20; t < 1600; t += 35) {
            const auto order = seen.OrderAt(t);
            const int leader = order.front().Boat;
            for (const RankedBoat& boat : order) {
                const auto gap = truth.GapSeconds(boat.Boat, leader, t);
                if (boat.Boat == leader || !gap || boat.ToGo == 0) continue;
                Add("gap", boat.GapSeconds, gap, boat.GapSecondsSigma);
                const double apart = *truth.ToGo(boat.Boat, t) - *truth.ToGo(leader, t);
                Add("gap in metres", boat.GapMetres, apart, boat.GapMetresSigma);
            }
        }
    }

    std::map<std::string, Errors> errors_;
};

TEST(CoachSigmas, AreAsLargeAsWhatTheNoiseOfTracksMakesOfEachNumber) {
    for (const bool own : {false, true}) {
        Judgement judgement;
        for (unsigned seed = 1; seed <= 6; ++seed) {
            FleetPlan plan{.Seed = seed,
                           .Boats = 6,
                           .FixesPerSecond = 10,
                           .Swing = 4,
                           .Current = {0.6, -0.2},
                           .Last = 1700};
            const CoachAnswers truth = AnswersOf(SimulatedFleet(plan));
            plan.FixesPerSecond = 1;
            plan.Noise = 2;
            plan.OwnVelocity = own;
            judgement.Add(AnswersOf(SimulatedFleet(plan)), truth);
        }
        EXPECT_EQ(judgement.All().size(), 27U);
        for (const auto& [name, errors] : judgement.All()) {
            EXPECT_GE(errors.WithinTwo, 0.88 * errors.Count) << name << own;
            EXPECT_LE(errors.WithinHalf, 0.92 * errors.Count) << name << own;
        }
        EXPECT_LT(judgement.All().at("gap in metres").Rms(), 1.5);
        EXPECT_LT(judgement.All().at("vmg").Rms(), 0.01);
        EXPECT_LT(judgement.All().at("speed").Rms(), 0.03);
    }
}

TEST(CoachSigmas, OfTargetsAndOfTheLineAreThoseOfThePolarAndOfAnEstimatedWind) {
    // The polar of simulated boats has the largest 2 + 1.3 sin(a - 20) times cos(a), m/s, at 29.93 degrees.
    constexpr double bestAngle = 29.93, bestVmg = 1.92755 / KnotMetres;
    Errors angle, good, bias;
    for (unsigned seed = 1; seed <= 8; ++seed) {
        const FleetPlan plan{.Seed = seed,
                             .Boats = 8,
                             .Noise = 1,
                             .OwnVelocity = true,
                             .Wind = 250,
                             .Swing = 5,
                             .Last = 2000,
                             .Alike = true,
                             .Spread = 22};
        const SimulatedFleet fleet(plan);
        RaceNumbers numbers = NumbersOf(fleet);
        const PolarCurve curve = AnswerCoach(numbers)->Speeds.Bands[1].Fleet;
        ASSERT_TRUE(curve.UpTarget);
        angle.Add(curve.UpTarget->Angle - bestAngle, curve.UpTarget->Sigma);
        good.Add(curve.UpTarget->Vmg - bestVmg, curve.UpTarget->VmgSigma);
        numbers.race.WindFileName.clear();
        const StartLine line = *AnswerCoach(numbers)->Start.Line;
        bias.Add(*line.BiasDegrees - TurnBetween(plan.Wind, fleet.SeenWind(0)), line.BiasSigma);
        EXPECT_NEAR(line.AdvantageSigma, 150 * line.BiasSigma * DegToRad, 0.02 * line.AdvantageSigma);
    }
    EXPECT_GE(angle.WithinTwo, 7);
    EXPECT_GE(good.WithinTwo, 7);
    EXPECT_GE(bias.WithinTwo, 7);
}

}  // namespace
}  // namespace keelview
