#pragma once

#include "racedata/gps_track.h"

namespace keelview {

/// The segment of a track that holds second t: the k with TrackTime(k) <= t < TrackTime(k + 1); 0 when
/// there is none, that is before the first fix, from the last fix on, and for a track of fewer than two
/// fixes. `hint` is a segment close to the one sought, as a film's last frame knows it; any value gives the
/// same result, a good one in one or two comparisons, any other in a binary search. `forward` is the
/// direction in which the time moves. In a track whose times do not ascend throughout, it is one of the
/// segments that hold t.
int FindSegment(const Track& track, double t, int hint = 1, bool forward = true);

/// The first segment that holds second t, 0 if there is none. It looks at one fix after another: where
/// times fall back, what was sailed is counted up to the first moment at t, and a binary search may find a
/// later one.
int FirstSegment(const Track& track, double t);

/// The boat has a track of more than one fix.
inline bool HasSegment(const Tracks& tracks, int boat) {
    return tracks.Boats.Holds(boat) && tracks.Boats[boat].Count() > 1;
}

/// The straight way along a segment at second t, which may lie past its end.
inline Position PositionOn(const Track& track, int segment, double t) {
    const Position begin = track.At(segment);
    const Position end = track.At(segment + 1);
    const double from = track.TrackTime[segment];
    const double f = (t - from) / (track.TrackTime[segment + 1] - from);
    return {begin.Lat + (end.Lat - begin.Lat) * f, begin.Lon + (end.Lon - begin.Lon) * f};
}

/// Where a boat is at a moment, and how it moves there.
struct TrackMoment {
    double Lat = 0.0;     ///< minutes of arc, on the straight line between two fixes
    double Lon = 0.0;     ///< minutes of arc
    double Speed = 0.0;   ///< knots, that of the whole segment
    double Course = 0.0;  ///< degrees true, that of the whole segment
};

/// The moment t on segment k as FindSegment gives it; speed and course are 0 before DeriveTracks.
TrackMoment MomentOn(const Track& track, int segment, double t);

/// The heading of a boat at second t on a segment, degrees: its course, and in the last second of a segment
/// (the whole of a shorter one) already on the turn towards that of the next one.
double HeadingOn(const Track& track, int segment, double t);

}  // namespace keelview
