#pragma once

#include "racedata/gps_track.h"
#include "racedata/race_control.h"

namespace keelview {

/// Gives each track point the distance sailed up to it, and each track the scale that its speeds and
/// courses follow from. Sets TypicalSpeed: the mean of boat 1 from the start to half of the race, which can
/// be 0, negative or not finite for a track that does not cover it.
void DeriveTracks(const RaceControl& race, const EarthScale& scale, Tracks& tracks);

/// Pixels per knot of the speed bars: 70 / (TypicalSpeed x 1.6), and that of 5 knots where TypicalSpeed is
/// no positive number.
double SpeedBarScale(double typicalSpeed);

}  // namespace keelview
