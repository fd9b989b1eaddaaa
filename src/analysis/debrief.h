#pragma once

#include <cmath>
#include <optional>
#include <vector>

#include "analysis/boat_motion.h"
#include "analysis/course_legs.h"
#include "analysis/manoeuvres.h"
#include "analysis/mark_passes.h"
#include "analysis/polar.h"
#include "analysis/race_wind.h"
#include "analysis/start_report.h"

namespace keelview {

/// Seconds lost for one reason, with their standard deviation as the tracks' noise has it.
struct LostSeconds {
    double Seconds = 0.0;
    double Sigma = 0.0;
};

/// The sum of two losses that are unsure each for itself.
inline LostSeconds operator+(LostSeconds a, LostSeconds b) {
    return {a.Seconds + b.Seconds, std::hypot(a.Sigma, b.Sigma)};
}
inline LostSeconds operator-(LostSeconds a, LostSeconds b) {
    return {a.Seconds - b.Seconds, std::hypot(a.Sigma, b.Sigma)};
}

/// Where a boat lost its time on a leg to the leg's best boat; negative where it gained.
struct LegLoss {
    int Seconds = 0;       ///< that the leg took, the first one from the gun
    int Loss = 0;          ///< to the best boat: the sum of the parts, always
    bool IsSplit = false;  ///< else all of it is rest: a track or a start does not tell the parts
    LostSeconds Start;  ///< later over the line, farther to leeward there, and slow in the 20 s behind it
    LostSeconds Turns;  ///< the losses of tacks and gybes that have one
    LostSeconds Speed;  ///< off the speed that the fleet sails at such angles off the wind
    LostSeconds Distance;  ///< at that speed for the farther way
    LostSeconds Rest;      ///< slow at marks and in turns whose loss is not known
};

/// What is told of a leg.
struct LegDebrief {
    int BestBoat = 0;      ///< the fastest, the lower number of equals; 0 where nobody sailed it
    bool ByPolar = false;  ///< speeds are held against the fleet's polar; else against each other as they
                           ///< are, as nothing is known of the angles off the wind
    OneBased<std::optional<LegLoss>> Boats;  ///< nothing for one that did not sail all of it
};

/// Legs of the course, by the entry before them.
using Debrief = OneBased<LegDebrief>;

/// What the debrief of a race is made of.
struct DebriefSources {
    const FleetMotion& Motion;
    const FleetTurns& Turns;
    const RaceWind& Wind;
    const OneBased<CourseLeg>& Legs;
    const MarkPasses& Passes;
    const StartReport& Start;
    const OneBased<std::vector<Manoeuvre>>& Manoeuvres;
    const Polar& Speeds;
};

/// Splits the losses. A boat's time on a leg is that of its start, of its turns and of marks, and the time
/// T that it would have taken at the pace of its free sailing, which is all but the windows of these. In
/// free sailing it makes a share p of the target speed on the mean, so the target takes Q = p T for the
/// same way, and T = Q / p. Against the best boat r, T - Tr is (1/p - 1/pr)(Q + Qr)/2 for speed and
/// (Q - Qr)(1/p + 1/pr)/2 for distance.
Debrief FindDebrief(const DebriefSources& from);

}  // namespace keelview
