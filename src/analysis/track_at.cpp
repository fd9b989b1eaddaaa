#include "analysis/track_at.h"

#include <algorithm>

#include "analysis/last_at_or_before.h"
#include "base/angles.h"

namespace keelview {

int FindSegment(const Track& track, double t, int hint, bool forward) {
    const auto& times = track.TrackTime;
    const int count = times.Count();
    if (count < 2 || !(times[1] <= t && t < times[count])) return 0;
    const auto holds = [&](int k) { return k >= 1 && k < count && times[k] <= t && t < times[k + 1]; };
    if (holds(hint)) return hint;
    const int next = forward ? hint + 1 : hint - 1;
    return holds(next) ? next : LastAtOrBefore(times, t);
}

int FirstSegment(const Track& track, double t) {
    const auto& times = track.TrackTime;
    for (int k = 1; k < times.Count(); ++k)
        if (times[k] <= t && t < times[k + 1]) return k;
    return 0;
}

TrackMoment MomentOn(const Track& track, int segment, double t) {
    const Position at = PositionOn(track, segment, t);
    const bool derived = track.IsDerived();
    return {.Lat = at.Lat,
            .Lon = at.Lon,
            .Speed = derived ? track.TrackSpeed(segment) : 0.0,
            .Course = derived ? track.TrackCourse(segment) : 0.0};
}

double HeadingOn(const Track& track, int segment, double t) {
    const double course = track.TrackCourse(segment);
    const double end = track.TrackTime[segment + 1];
    const double turn = std::min(1.0, end - track.TrackTime[segment]);  // seconds
    if (end - t >= turn) return course;
    return course + WrapDifference(track.TrackCourse(segment + 1) - course) * (1 - (end - t) / turn);
}

}  // namespace keelview
