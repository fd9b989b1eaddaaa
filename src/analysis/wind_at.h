#pragma once

#include "racedata/race_control.h"
#include "racedata/wind_file.h"

namespace keelview {

/// The wind at one moment: where it comes from, in degrees 0 up to below 360, and its speed.
struct Wind {
    double DirectionMagnetic = 0.0;  ///< degrees magnetic
    double DirectionTrue = 0.0;      ///< degrees true: magnetic + MagVariation
    double Speed = 0.0;              ///< as in the wind file, to one decimal
};

/// The sample k of the pair with WindTime(k) <= t < WindTime(k + 1), by binary search; 0 before the first
/// sample, Count() from the last sample on or when there are no samples at all. Samples that do not
/// ascend give one of the pairs that hold t.
int FindWindSample(const WindData& wind, double t);

/// The direction and speed between sample k and the next at second t; the direction counts on past north,
/// so that a shift across it reads as one. `sample` must not be the last one.
WindSample BetweenSamples(const WindData& wind, int sample, double t);

/// The wind at second t, interpolated between two samples (through north, the short way round); the first
/// sample's before it, the last one's from it on. A sample without a speed counts as 0 there. A race that
/// names no wind file, or has no samples, has its WindDirection as the true wind, with speed 0.
Wind WindAt(const RaceControl& race, const WindData& wind, double t);

}  // namespace keelview
