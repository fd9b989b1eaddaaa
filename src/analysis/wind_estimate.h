#pragma once

#include <optional>
#include <vector>

#include "analysis/boat_motion.h"
#include "analysis/mark_passes.h"
#include "analysis/turns.h"

namespace keelview {

/// The turns of each boat.
using FleetTurns = OneBased<std::vector<CourseTurn>>;

/// The turns of all boats, found on all processors.
FleetTurns FindFleetTurns(const FleetMotion& fleet);

/// What one tack or gybe tells of the wind.
struct WindSight {
    double Time = 0.0;       ///< seconds from the start
    double Direction = 0.0;  ///< where the wind comes from, degrees true
    double Sigma = 0.0;      ///< degrees, as the tracks' scatter has it
    bool Gybe = false;
    Way Mean;             ///< half the sum of the velocities before and behind it, metres a second
    double Others = 0.0;  ///< where all other turns have the wind come from at its time, degrees true
};

/// The estimated wind at a moment, its band, and on how many turns it rests.
struct WindEstimateSample {
    double Time = 0.0;
    double Direction = 0.0;  ///< where it comes from over the water, degrees true
    double Sigma = 0.0;      ///< degrees
    int Turns = 0;           ///< within 150 s to either side
};

struct WindEstimate {
    std::vector<WindSight> Sights;            ///< in the order of time
    std::vector<WindEstimateSample> Samples;  ///< each 30 s from the first turn to the last; empty where
                                              ///< there are too few turns, or they do not tell the sense
    double TackSigma = 0.0;  ///< scatter of a single tack as the race shows it, degrees; 0 without tacks
    double GybeSigma = 0.0;
};

/// The wind over the water from tacks and gybes. A boat that sails alike on both sides has the wind's axis
/// at right angles to the difference of its mean velocities before (25 to 5 s) and behind (10 to 30 s) a
/// turn, and no current moves that. Turns whose windows reach before the gun or hold another turn or a
/// mark, or that are not as those of most of the fleet, are left out. Upwind is the side on which boats
/// sail slower; where they turn on one side only, the one whose turns are through more than 70 degrees.
/// Each kind of turn weighs by its own scatter, and both go through a smoother (Rauch, Tung and Striebel,
/// of a direction whose rate wanders) that lets the race choose how fast the wind shifts, by likelihood.
WindEstimate EstimateWind(const FleetMotion& fleet, const FleetTurns& turns, const MarkPasses& passes);

/// The estimate at a moment, between two samples the short way round, beyond them as the nearest. The
/// estimate must have samples.
double EstimatedWindAt(const WindEstimate& estimate, double t);

/// Its standard deviation there, degrees: the larger one of the two samples; beyond them grown by what the
/// wind changes on the mean of the race in such a time (structure function of the samples).
double EstimatedWindSigmaAt(const WindEstimate& estimate, double t);

}  // namespace keelview
