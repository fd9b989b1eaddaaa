#pragma once

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

/// The direction at the left edge of the compass axis, -90 to 270 for a wind of 0 to 360 degrees.
inline double GraphDirOffset(const RaceControl& race) {
    return race.WindDirection - 90.0;
}

/// The x of a compass direction, with one wrap each way.
inline double DirectionToX(double dirOffset, double direction) {
    double x = direction - dirOffset + CompassLeft;
    if (x < CompassLeft) x += 360.0;
    if (x > CompassRight) x -= 360.0;
    return x;
}

/// The compass direction under an x, 0 to 360.
inline double DirectionUnderX(double dirOffset, double x) {
    double direction = x - CompassLeft + dirOffset;
    if (direction < 0.0) direction += 360.0;
    if (direction > 360.0) direction -= 360.0;
    return direction;
}

/// The x of a boat's speed, and of a wind speed.
inline double SpeedToX(double knots) {
    return knots * PixelsPerKnot + SpeedAxisLeft;
}
inline double WindSpeedToX(double knots) {
    return knots * PixelsPerWindKnot + SpeedAxisLeft;
}

}  // namespace keelview
