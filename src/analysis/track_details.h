#pragma once

#include <vector>

#include "base/one_based.h"
#include "racedata/gps_track.h"

namespace keelview {

/// What a track's fixes matter to its picture, by fix: the line through those above a tolerance keeps
/// within that tolerance of the whole way. In minutes of arc of latitude; first and last fix, and those
/// between two stretches, always stay. The algorithm of Ramer (1972), Douglas and Peucker (1973), in
/// stretches of 256 fixes, so that no shape of a way makes it slow. `lonScale` is the length of a minute of
/// longitude.
OneBased<float> DetailsOf(const Track& track, double lonScale);

/// The same of all boats, worked out on all processors.
OneBased<OneBased<float>> DetailsOf(const Tracks& tracks, double lonScale);

/// The fixes from one to another that a picture with a tolerance needs, both of them included. All of them
/// where nothing is known of their details.
std::vector<int> FixesToDraw(const OneBased<float>& details, int first, int last, double tolerance);

}  // namespace keelview
