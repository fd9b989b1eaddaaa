#include "analysis/made_good.h"

#include <cmath>

#include "base/angles.h"
#include "base/parallel.h"

namespace keelview {

namespace {

constexpr double LeastCovered = 0.9;  // of a leg

/// Sums over the seconds of a leg.
struct LegSums {
    double Seconds = 0, Speed = 0, Vmc = 0, Vmg = 0, WindSeconds = 0, Port = 0;
    double Path = 0.0;
    std::optional<Way> First, Last;
    std::optional<Way> LastTack;  ///< where it came onto the tack that it ended on
    Way LastTackUpwind;           ///< and the wind there
    bool OnPort = false;

    void Add(const Motion& now, const CourseLeg& leg, const std::optional<Way>& upwind) {
        ++Seconds;
        Speed += now.Velocity.Length();
        const Way ahead = leg.To - now.At;
        if (const double far = ahead.Length(); far > 0) Vmc += now.Velocity.Along(ahead) / far;
        if (Last) Path += (now.At - *Last).Length();
        if (!First) First = now.At;
        Last = now.At;
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
    if (!begin || !end || *end <= *begin) return {};
    LegSums sums;
    for (int t = *begin; t <= *end; ++t)
        if (const auto now = motion.At(t)) sums.Add(*now, leg, wind.Upwind(t));
    if (!sums.First || !sums.Last || sums.Seconds < LeastCovered * (*end - *begin + 1)) return {};
    LegMadeGood made;
    made.Seconds = *end - *begin;
    made.Speed = sums.Speed / sums.Seconds / KnotMetres;
    made.Vmc = sums.Vmc / sums.Seconds / KnotMetres;
    made.Sailed = sums.Path;
    made.Straight = (*sums.Last - *sums.First).Length();
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
