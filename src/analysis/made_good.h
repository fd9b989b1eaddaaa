#pragma once

#include <optional>

#include "analysis/boat_motion.h"
#include "analysis/course_legs.h"
#include "analysis/mark_passes.h"
#include "analysis/race_wind.h"

namespace keelview {

/// Velocities of a boat on a leg at a moment, knots.
struct MadeGoodNow {
    double Speed = 0.0;
    std::optional<double> Vmg;  ///< along the wind, in the sense of the leg; nothing without a wind
    double Vmc = 0.0;           ///< towards the end of the leg
    double Sigma = 0.0;         ///< of each of them
};

/// What a boat made of a leg, from passing its begin to passing its end, with standard deviations as the
/// tracks' noise has them.
struct LegMadeGood {
    double Seconds = 0.0;
    double Speed = 0.0;  ///< mean, knots
    double SpeedSigma = 0.0;
    double Vmc = 0.0;  ///< mean towards the leg's end, knots
    std::optional<double>
        Vmg;             ///< mean along the wind in the sense of the leg, knots; nothing without wind
    double Sigma = 0.0;  ///< knots, of VMC and of VMG
    std::optional<double> Efficiency;  ///< VMG / speed
    double EfficiencySigma = 0.0;
    std::optional<double> PortShare;       ///< of the time on port tack, the wind from the left
    std::optional<double> StarboardShare;  ///< on starboard tack
    double ShareSigma = 0.0;               ///< of both
    double Sailed = 0.0;                   ///< metres
    double SailedSigma = 0.0;
    double Straight = 0.0;  ///< metres from where it began to where it ended
    double StraightSigma = 0.0;
    std::optional<double> Overstood;  ///< metres beyond the lay line at the last tack of a beat; below 0
                                      ///< short of it
    double OverstoodSigma = 0.0;
};

/// A boat's velocities at a moment on a leg; nothing where its track does not tell them.
std::optional<MadeGoodNow> MadeGoodAt(const BoatMotion& motion, const CourseLeg& leg, const RaceWind& wind,
                                      double t);

/// One boat on one leg, second by second: its ways from place to place for what it made good, its
/// velocities for its speed. Nothing where it did not sail all of it, or its track misses more than a tenth
/// of it. The lay line is that of the race's angle.
std::optional<LegMadeGood> MadeGoodOnLeg(const RaceControl& race, const BoatMotion& motion,
                                         const CourseLeg& leg, const RaceWind& wind,
                                         std::optional<int> begin, std::optional<int> end);

/// Legs by boat and leg.
using FleetMadeGood = OneBased<OneBased<std::optional<LegMadeGood>>>;

/// Those of all boats.
FleetMadeGood MadeGoodOnLegs(const RaceControl& race, const FleetMotion& fleet,
                             const OneBased<CourseLeg>& legs, const RaceWind& wind,
                             const MarkPasses& passes);

}  // namespace keelview
