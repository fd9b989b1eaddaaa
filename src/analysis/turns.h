#pragma once

#include <vector>

#include "analysis/boat_motion.h"

namespace keelview {

/// A change of a boat's course that goes on one way round, whatever the wind.
struct CourseTurn {
    double Start = 0.0;  ///< seconds from the race's start
    double End = 0.0;
    double Degrees = 0.0;  ///< how far round; positive to the right
    double Middle = 0.0;   ///< when half of that is done, to the second
};

/// The turns of a boat by at least 25 degrees, in the order of time: stretches in which its course changes
/// by 3 degrees a second or more, pieces of one way round less than 4 s apart taken together. Courses are
/// those of BoatMotion each whole second; while it makes less than half a knot a boat has none.
std::vector<CourseTurn> FindTurns(const BoatMotion& motion);

/// True if some other turn of the list than number `except` (from 0) goes on between two moments.
bool HoldsAnotherTurn(const std::vector<CourseTurn>& turns, std::size_t except, double from, double to);

}  // namespace keelview
