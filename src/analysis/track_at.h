#pragma once

#include "racedata/gps_track.h"

namespace keelview {

/// The segment of a boat's track that holds second t: the k with TrackTime(k) <= t < TrackTime(k + 1); 0
/// when there is none, that is before the first fix, from the last fix on, and for a boat or a track that
/// does not exist. `hint` is a segment close to the one sought, as a film's last frame knows it; any value
/// gives the same result, a good one in one or two comparisons, any other in a binary search. `forward` is
/// the direction in which the time moves. In a track whose times do not ascend throughout, it is one of the
/// segments that hold t.
int FindSegment(const Tracks& tracks, int boat, double t, int hint = 1, bool forward = true);

/// Where a boat is at a moment, and how it moves there.
struct TrackMoment {
    double Lat = 0.0;     ///< minutes of arc, on the straight line between two fixes
    double Lon = 0.0;     ///< minutes of arc
    double Speed = 0.0;   ///< knots, that of the whole segment
    double Course = 0.0;  ///< degrees true, that of the whole segment
};

/// The moment t on segment k as FindSegment gives it; speed and course are 0 before DeriveTracks.
TrackMoment MomentOn(const Tracks& tracks, int boat, int segment, double t);

}  // namespace keelview
