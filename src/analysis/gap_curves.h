#pragma once

#include <vector>

#include "analysis/mark_passes.h"
#include "analysis/ranking.h"

namespace keelview {

/// A boat's gap at a moment.
struct GapPoint {
    double Time = 0.0;     ///< seconds from the start
    double Seconds = 0.0;  ///< behind; negative ahead
};

/// The gaps of each boat in the order of time: every so many seconds from the gun on and at its own
/// passings, up to its finish. Moments at which its gap is not known are left out.
using GapCurves = OneBased<std::vector<GapPoint>>;

/// The gaps to whoever leads at each moment; those of the leader are 0. At a passing the gap is the
/// difference of the passing times.
GapCurves GapsToLeader(const CourseProgress& progress, const MarkPasses& passes, double every);

/// The same to one boat.
GapCurves GapsToBoat(const CourseProgress& progress, const MarkPasses& passes, int boat, double every);

}  // namespace keelview
