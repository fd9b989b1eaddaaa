#include "analysis/made_good.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "base/angles.h"
#include "base/parallel.h"

namespace keelview {

namespace {

constexpr double LeastCovered = 0.9;  // of a leg

/// Length 1, to windward on a leg that goes there, else to leeward.
Way UpOrDown(const CourseLeg& leg, Way upwind) {
    return upwind.Along(leg.Axis) >= 0 ? upwind : upwind * -1.0;
}

/// Sums over the seconds of a leg.
class LegSums {
  public:
    LegSums(const CourseLeg& leg, double reach) : leg_(leg), reach_(reach) {}

    double Count = 0, Seconds = 0;  ///< of the seconds with a motion, and from the first to the last
    double Speed = 0, PlaceSigma = 0, VelocitySquares = 0;
    double CutOff = 0;                                  ///< metres that smoothing took off the way in turns
    double Vmc = 0, Vmg = 0;                            ///< metres made good
    double WindSeconds = 0, Port = 0, TackSquares = 0;  ///< and the variance of Port
    Motion First, Last;
    bool HasTacked = false;
    Way LastTack, LastTackUpwind;  ///< where it came onto the tack that it ended on, and the wind there
    Way LastTackUnsure;            ///< how far it sailed while the moment of that is unsure
    bool OnPort = false;

    void Add(double t, const Motion& now, const std::optional<Way>& upwind) {
        Speed += now.Speed();
        PlaceSigma += now.PlaceSigma;
        VelocitySquares += now.VelocitySigma * now.VelocitySigma;
        Count > 0 ? AddStep(t - lastTime_, now, upwind) : void(First = now);
        ++Count;
        Last = now;
        lastTime_ = t;
        knewWind_ = upwind.has_value();
        lastUpwind_ = upwind.value_or(Way{});
    }

  private:
    void AddStep(double seconds, const Motion& now, const std::optional<Way>& upwind) {
        Seconds += seconds;
        const Way step = now.At - Last.At, ahead = leg_.To - (now.At + Last.At) * 0.5;
        if (const double far = ahead.Length(); far > 0) Vmc += step.Along(ahead) / far;
        if (reach_ > 0) AddTurning(seconds, now);
        if (!upwind || !knewWind_) return;
        Vmg += step.Along(UpOrDown(leg_, *upwind));
        AddTack(seconds, now, *upwind);
    }
    /// A parabola over R seconds to either side tells a velocity v that turns at a rate w too short by
    /// v w^2 R^2 / 10; by a tenth more for each second of R where a boat turns by 60 to 105 degrees in 3 to
    /// 8 seconds, as integrals of such turns show. Its own error makes 3/R - 1/(2 R^3) of its variance look
    /// like turning in a second, as slopes of parabolas a second apart are fitted to the same places but
    /// for the outer ones.
    void AddTurning(double seconds, const Motion& now) {
        const double product = now.Velocity.Length() * Last.Velocity.Length();
        if (!(product > 0) || seconds > 1) return;
        const double sine = std::clamp(now.Velocity.Across(Last.Velocity) / product, -1.0, 1.0);
        const double noise =
            now.VelocitySigma * now.VelocitySigma / product * (3 / reach_ - 1 / (2 * std::pow(reach_, 3)));
        CutOff += std::sqrt(product) * (std::pow(std::asin(sine), 2) - noise) * reach_ * reach_ *
                  (0.1 + 0.01 * reach_);
    }
    /// The velocity across the wind tells the moment of a tack as well as it is known itself.
    void AddTack(double seconds, const Motion& now, Way upwind) {
        const double before = Last.Velocity.Across(lastUpwind_), after = now.Velocity.Across(upwind);
        OnPort = after > 0;
        WindSeconds += seconds;
        if ((before > 0) == OnPort) {
            Port += OnPort ? seconds : 0;
            return;
        }
        const double share = before / (before - after);  // of the step, up to the tack
        Port += seconds * (OnPort ? 1 - share : share);
        const double unsure = seconds * now.VelocitySigma / (before - after);
        TackSquares += unsure * unsure;
        HasTacked = true;
        LastTack = Last.At + (now.At - Last.At) * share;
        LastTackUpwind = upwind;
        LastTackUnsure = now.Velocity * unsure;
    }

    const CourseLeg& leg_;
    double reach_;
    double lastTime_ = 0.0;
    bool knewWind_ = false;
    Way lastUpwind_;
};

/// How far to windward of the lay line to the leg's end a boat tacked.
void TakeOverstood(const RaceControl& race, const CourseLeg& leg, const LegSums& sums, LegMadeGood& made) {
    // On port tack it sails to the right of the wind.
    const double side = sums.OnPort ? 1 : -1;
    const double heading = sums.LastTackUpwind.Bearing() + side * race.LayLineUp;
    const Way beyond = Towards(heading - side * 90);
    made.Overstood = (sums.LastTack - leg.To).Along(beyond);
    made.OverstoodSigma = std::hypot(sums.PlaceSigma / sums.Count, sums.LastTackUnsure.Along(beyond));
}

void TakeSpeed(const LegSums& sums, LegMadeGood& made) {
    const double cutOff = std::max(0.0, sums.CutOff) / sums.Seconds;
    const double noise = std::sqrt(sums.VelocitySquares) / sums.Count;
    made.Speed = (sums.Speed / sums.Count + cutOff) / KnotMetres;
    made.SpeedSigma = std::hypot(noise, cutOff / 3) / KnotMetres;
    made.Sailed = made.Speed * KnotMetres * made.Seconds;
    made.SailedSigma = made.SpeedSigma * KnotMetres * made.Seconds;
}

void TakeTacks(const LegSums& sums, LegMadeGood& made) {
    made.Vmg = sums.Vmg / sums.WindSeconds / KnotMetres;
    if (made.Speed > 0) {
        made.Efficiency = *made.Vmg / made.Speed;
        made.EfficiencySigma = std::hypot(made.Sigma, *made.Efficiency * made.SpeedSigma) / made.Speed;
    }
    made.PortShare = sums.Port / sums.WindSeconds;
    made.StarboardShare = 1 - *made.PortShare;
    made.ShareSigma = std::sqrt(sums.TackSquares) / sums.WindSeconds;
}

}  // namespace

std::optional<MadeGoodNow> MadeGoodAt(const BoatMotion& motion, const CourseLeg& leg, const RaceWind& wind,
                                      double t) {
    const auto now = motion.At(t);
    if (!now) return {};
    MadeGoodNow made;
    made.Speed = now->Speed() / KnotMetres;
    const Way ahead = leg.To - now->At;
    if (const double far = ahead.Length(); far > 0)
        made.Vmc = now->Velocity.Along(ahead) / far / KnotMetres;
    if (const auto upwind = wind.Upwind(t))
        made.Vmg = now->Velocity.Along(UpOrDown(leg, *upwind)) / KnotMetres;
    made.Sigma = now->VelocitySigma / KnotMetres;
    return made;
}

std::optional<LegMadeGood> MadeGoodOnLeg(const RaceControl& race, const BoatMotion& motion,
                                         const CourseLeg& leg, const RaceWind& wind,
                                         std::optional<int> begin, std::optional<int> end) {
    if (!begin || !end || *end <= *begin || !motion.IsDense()) return {};
    if (motion.Span().second < *begin + LeastCovered * (*end - *begin)) return {};
    LegSums sums(leg, motion.Reach());
    for (int t = *begin; t <= *end; ++t)
        if (const auto now = motion.At(t)) sums.Add(t, *now, wind.Upwind(t));
    if (sums.Seconds == 0 || sums.Count < LeastCovered * (*end - *begin + 1)) return {};
    LegMadeGood made;
    made.Seconds = *end - *begin;
    TakeSpeed(sums, made);
    made.Straight = (sums.Last.At - sums.First.At).Length();
    // Of two places, each unsure for itself.
    made.StraightSigma = std::numbers::sqrt2 * sums.PlaceSigma / sums.Count;
    made.Vmc = sums.Vmc / sums.Seconds / KnotMetres;
    made.Sigma = made.StraightSigma / sums.Seconds / KnotMetres;
    if (sums.WindSeconds == 0) return made;
    TakeTacks(sums, made);
    const auto upwind = wind.Upwind(*end);
    if (sums.HasTacked && upwind && leg.IsLadder(upwind) && upwind->Along(leg.Axis) > 0)
        TakeOverstood(race, leg, sums, made);
    return made;
}

FleetMadeGood MadeGoodOnLegs(const RaceControl& race, const FleetMotion& fleet,
                             const OneBased<CourseLeg>& legs, const RaceWind& wind,
                             const MarkPasses& passes) {
    FleetMadeGood made(fleet.Boats.Count());
    ForEachInParallel(made.Count(), [&](int boat) {
        for (int leg = 1; leg <= legs.Count(); ++leg)
            made[boat].Add(MadeGoodOnLeg(race, fleet.Boats[boat], legs[leg], wind,
                                         PassTime(passes, boat, leg), PassTime(passes, boat, leg + 1)));
    });
    return made;
}

}  // namespace keelview
