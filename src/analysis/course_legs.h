#pragma once

#include <optional>

#include "analysis/plane.h"
#include "base/one_based.h"
#include "racedata/race_control.h"

namespace keelview {

/// A leg of the course on the plane: from one entry to the next, a line by its middle.
struct CourseLeg {
    Way From;
    Way To;
    Way Axis;             ///< length 1, to the next entry
    double Length = 0.0;  ///< metres

    // `upwind` is the way of length 1 to where the wind comes from.

    /// The way along which this leg's ground is made: that of the wind, in the sense of the leg, where both
    /// lie within 60 degrees of each other; else the leg's own. Length 1.
    Way LadderAxis(const std::optional<Way>& upwind) const;
    /// True if it goes along the wind as that, up or down.
    bool IsLadder(const std::optional<Way>& upwind) const;
};

/// The legs of a course; leg k ends at entry k + 1. An entry that names no mark or line of the race lies at
/// the entry before it, so that its leg has no length.
OneBased<CourseLeg> CourseLegs(const RaceControl& race, const Plane& water);

}  // namespace keelview
