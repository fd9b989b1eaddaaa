#pragma once

#include "racedata/gps_track.h"
#include "racedata/race_control.h"

namespace keelview {

inline constexpr double MetresPerNauticalMile = 1852.0;

/// Size of a minute of arc at a latitude (minutes of arc), from the meridian radius of curvature and that
/// of the prime vertical; flattening of GRS 80, semi-major axis 6378136 m, each with the house factor that
/// brings it to the scale of the charts. At latitude 35 degrees a minute is 1846.3 m by 1518.3 m. Also sets
/// LonScale.
EarthScale ComputeEarthScale(double latitude);

/// Gives each track point the distance sailed up to it, and speed and course on the way to the next; the
/// last point has speed and course 0. Sets TypicalSpeed: the mean of boat 1 from the start to half of the
/// race, which can be 0, negative or not finite for a track that does not cover it.
void DeriveTracks(const RaceControl& race, const EarthScale& scale, Tracks& tracks);

/// Pixels per knot of the speed bars: 70 / (TypicalSpeed x 1.6), and that of 5 knots where TypicalSpeed is
/// no positive number.
double SpeedBarScale(double typicalSpeed);

}  // namespace keelview
