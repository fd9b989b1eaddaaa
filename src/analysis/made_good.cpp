#include "analysis/made_good.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "base/angles.h"
#include "base/parallel.h"

namespace keelview {

namespace {

constexpr double LeastCovered = 0.9;   // of a leg
constexpr double SurelyTurning = 3.0;  // degrees a second

/// Sums over the seconds of a leg.
struct LegSums {
    double Seconds = 0, Speed = 0, Vmc = 0, Vmg = 0, WindSeconds = 0, Port = 0;
    double PlaceSigma = 0, VelocitySquares = 0;
    double Turning = 0;  ///< speed times the square of the rate at which it turns, as far as it surely does
    std::optional<Way> First, Last;
    Way FirstVelocity, LastVelocity, Velocity;
    std::optional<Way> LastTack;  ///< where it came onto the tack that it ended on
    Way LastTackUpwind;           ///< and the wind there
    bool OnPort = false;

    void Add(const Motion& now, const CourseLeg& leg, const std::optional<Way>& upwind) {
        ++Seconds;
        Speed += now.Speed();
        PlaceSigma += now.PlaceSigma;
        VelocitySquares += now.VelocitySigma * now.VelocitySigma;
        const Way ahead = leg.To - now.At;
        if (const double far = ahead.Length(); far > 0) Vmc += now.Velocity.Along(ahead) / far;
        if (Last) AddTurning(now.Velocity);
        if (!First) First = now.At, FirstVelocity = now.Velocity;
        Last = now.At, LastVelocity = now.Velocity;
        Velocity = Velocity + now.Velocity;
        if (!upwind) return;
        const bool port = now.Velocity.Across(*upwind) > 0;
        if (WindSeconds > 0 && port != OnPort) {
            LastTack = now.At;
            LastTackUpwind = *upwind;
        }
        OnPort = port;
        Port += port;
        ++WindSeconds;
        Vmg += now.Velocity.Along(UpOrDown(leg, *upwind));
    }
    /// A parabola over R seconds to either side tells a velocity v too short by v'' R^2 / 10.
    void AddTurning(Way velocity) {
        const double product = velocity.Length() * LastVelocity.Length();
        if (!(product > 0)) return;
        const double rate = std::asin(std::clamp(velocity.Across(LastVelocity) / product, -1.0, 1.0));
        if (std::abs(rate) > SurelyTurning * DegToRad) Turning += std::sqrt(product) * rate * rate;
    }
    /// Length 1, to windward on a leg that goes there, else to leeward.
    static Way UpOrDown(const CourseLeg& leg, Way upwind) {
        return upwind.Along(leg.Axis) >= 0 ? upwind : upwind * -1.0;
    }
};

/// How far to windward of the lay line to the leg's end a boat tacked.
double Beyond(const RaceControl& race, const CourseLeg& leg, const LegSums& sums, Way lastTack) {
    // On port tack it sails to the right of the wind.
    const double side = sums.OnPort ? 1 : -1;
    const double heading = sums.LastTackUpwind.Bearing() + side * race.LayLineUp;
    // Square to the lay line, to windward of it.
    return (lastTack - leg.To).Along(Towards(heading - side * 90));
}

/// Standard deviation of a mean velocity of a leg, metres a second.
double SigmaOf(const LegSums& sums, VelocitySource source) {
    // Velocities of positions add up to the way between the leg's ends, the receiver's own are each for
    // themselves.
    const double noise = source == VelocitySource::Receiver
                             ? std::sqrt(sums.VelocitySquares)
                             : std::numbers::sqrt2 * sums.PlaceSigma / sums.Seconds;
    // The leg begins and ends at some moment of a second.
    constexpr double Moment = 0.29;
    const Way mean = sums.Velocity * (1 / sums.Seconds);
    const double ends =
        Moment * std::hypot((sums.FirstVelocity - mean).Length(), (sums.LastVelocity - mean).Length());
    return std::hypot(noise, ends) / sums.Seconds;
}

}  // namespace

std::optional<MadeGoodNow> MadeGoodAt(const BoatMotion& motion, const CourseLeg& leg, const RaceWind& wind,
                                      double t) {
    const auto now = motion.At(t);
    if (!now) return {};
    LegSums sums;
    sums.Add(*now, leg, wind.Upwind(t));
    return MadeGoodNow{sums.Speed / KnotMetres,
                       sums.WindSeconds > 0 ? std::optional(sums.Vmg / KnotMetres) : std::nullopt,
                       sums.Vmc / KnotMetres};
}

std::optional<LegMadeGood> MadeGoodOnLeg(const RaceControl& race, const BoatMotion& motion,
                                         const CourseLeg& leg, const RaceWind& wind,
                                         std::optional<int> begin, std::optional<int> end) {
    if (!begin || !end || *end <= *begin || !motion.IsDense()) return {};
    if (motion.Span().second < *begin + LeastCovered * (*end - *begin)) return {};
    LegSums sums;
    for (int t = *begin; t <= *end; ++t)
        if (const auto now = motion.At(t)) sums.Add(*now, leg, wind.Upwind(t));
    if (!sums.First || !sums.Last || sums.Seconds < LeastCovered * (*end - *begin + 1)) return {};
    LegMadeGood made;
    made.Seconds = *end - *begin;
    made.Speed = sums.Speed / sums.Seconds / KnotMetres;
    made.Vmc = sums.Vmc / sums.Seconds / KnotMetres;
    made.Sailed = sums.Speed / sums.Seconds * made.Seconds;
    made.Straight = (*sums.Last - *sums.First).Length();
    made.PlaceSigma = sums.PlaceSigma / sums.Seconds;
    made.Sigma = SigmaOf(sums, motion.Source()) / KnotMetres;
    made.SpeedSigma =
        std::hypot(made.Sigma, sums.Turning / 10 * std::pow(motion.Reach(), 2) / sums.Seconds / KnotMetres);
    if (sums.WindSeconds == 0) return made;
    made.Vmg = sums.Vmg / sums.WindSeconds / KnotMetres;
    if (made.Speed > 0) made.Efficiency = *made.Vmg / made.Speed;
    made.PortShare = sums.Port / sums.WindSeconds;
    made.StarboardShare = 1 - *made.PortShare;
    const auto upwind = wind.Upwind(*end);
    if (sums.LastTack && upwind && leg.IsLadder(upwind) && upwind->Along(leg.Axis) > 0)
        made.Overstood = Beyond(race, leg, sums, *sums.LastTack);
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
