#pragma once

#include <cmath>

#include "base/angles.h"
#include "base/point.h"

namespace keelview {

/// The point at a distance from another in a direction of the picture, degrees clockwise from its top.
inline Point PointBeside(const Point& from, double direction, double distance) {
    const double radians = direction * DegToRad;
    return {from.X + distance * std::sin(radians), from.Y - distance * std::cos(radians)};
}

}  // namespace keelview
