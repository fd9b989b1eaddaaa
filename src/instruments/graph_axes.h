#pragma once

#include "base/angles.h"
#include "racedata/race_control.h"

namespace keelview {

/// The left chart of the graphs: a compass of 360 degrees, one pixel a degree, placed so that the race's
/// wind stands a quarter of its width from the left.
inline constexpr double CompassLeft = 30.0;
inline constexpr double CompassRight = CompassLeft + 360.0;
/// The right chart: speeds from 0 to 10 knots, and beyond without limit.
inline constexpr double SpeedAxisLeft = 400.0;
inline constexpr double SpeedAxisRight = 700.0;
inline constexpr double PixelsPerKnot = 30.0;
inline constexpr double PixelsPerWindKnot = 15.0;

/// The direction at the left edge of the compass axis, 0 up to below 360.
inline double GraphDirOffset(const RaceControl& race) {
    return WrapDirection(race.WindDirection - 90.0);
}

/// The x of a compass direction, with one wrap each way; what lies at both edges is shown at the one that
/// it comes to first.
inline double DirectionToX(double dirOffset, double direction) {
    double x = direction - dirOffset + CompassLeft;
    if (x < CompassLeft) x += 360.0;
    if (x > CompassRight) x -= 360.0;
    return x;
}

/// The compass direction under an x, 0 up to below 360.
inline double DirectionUnderX(double dirOffset, double x) {
    return WrapDirection(x - CompassLeft + dirOffset);
}

/// The x of a boat's speed, and of a wind speed.
inline double SpeedToX(double knots) {
    return knots * PixelsPerKnot + SpeedAxisLeft;
}
inline double WindSpeedToX(double knots) {
    return knots * PixelsPerWindKnot + SpeedAxisLeft;
}

}  // namespace keelview
