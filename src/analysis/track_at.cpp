#include "analysis/track_at.h"

#include <cstddef>

namespace keelview {

int FindSegment(const Tracks& tracks, int boat, double t, int hint, bool forward) {
    if (boat < 1 || boat > MaxBoats || static_cast<std::size_t>(boat) >= tracks.TrackTime.size()) return 0;
    const auto& times = tracks.TrackTime[boat];
    const int count = tracks.TrackPointCount[boat];
    if (count < 2 || !(times[1] <= t && t < times[count])) return 0;
    const auto holds = [&](int k) { return k >= 1 && k < count && times[k] <= t && t < times[k + 1]; };
    if (holds(hint)) return hint;
    const int next = forward ? hint + 1 : hint - 1;
    if (holds(next)) return next;
    // times[low] <= t < times[high] holds all the way, so the two close in on a segment whatever lies
    // between them.
    int low = 1;
    int high = count;
    while (high - low > 1) {
        const int middle = low + (high - low) / 2;
        (times[middle] <= t ? low : high) = middle;
    }
    return low;
}

TrackMoment MomentOn(const Tracks& tracks, int boat, int segment, double t) {
    const auto& lat = tracks.TrackLat[boat];
    const auto& lon = tracks.TrackLon[boat];
    const auto& times = tracks.TrackTime[boat];
    const double from = times[segment];
    const double f = (t - from) / (times[segment + 1] - from);
    TrackMoment moment;
    moment.Lat = lat[segment] + (lat[segment + 1] - lat[segment]) * f;
    moment.Lon = lon[segment] + (lon[segment + 1] - lon[segment]) * f;
    if (tracks.TrackSpeed.size() == tracks.TrackTime.size() && !tracks.TrackSpeed[boat].empty()) {
        moment.Speed = tracks.TrackSpeed[boat][segment];
        moment.Course = tracks.TrackCourse[boat][segment];
    }
    return moment;
}

}  // namespace keelview
