#include "analysis/track_smoothing.h"

#include <algorithm>

#include "base/angles.h"

namespace keelview {

void SmoothedTrack::GoTo(int fix) {
    if (half_ > 0.0) {
        const OneBased<double>& times = track_.TrackTime;
        const double now = times[fix];
        if (fix < fix_) from_ = to_ = 1;
        from_ = std::min(from_, fix);
        while (from_ < fix && times[from_] < now - half_) ++from_;
        to_ = std::max(to_, fix);
        while (to_ < track_.Count() && times[to_ + 1] <= now + half_) ++to_;
    }
    fix_ = fix;
}

double SmoothedTrack::Speed() const {
    const double seconds = track_.TrackTime[to_] - track_.TrackTime[from_];
    if (OwnValues() || !(seconds > 0.0)) return track_.TrackSpeed[fix_];
    return (track_.TrackDist[to_] - track_.TrackDist[from_]) / seconds * 3600.0;
}

double SmoothedTrack::Course() const {
    const double north = track_.TrackLat[to_] - track_.TrackLat[from_];
    const double east = (track_.TrackLon[to_] - track_.TrackLon[from_]) * lonScale_;
    if (OwnValues() || (north == 0.0 && east == 0.0)) return track_.TrackCourse[fix_];
    return BearingOf(east, north);
}

double FastestHeld(const Track& track, double from, double to) {
    constexpr int Held = 3;
    const OneBased<double>& speeds = track.TrackSpeed;
    double fastest = 0.0;
    for (int fix = Held; fix <= speeds.Count(); ++fix) {
        const double time = track.TrackTime[fix];
        if (time < from || time >= to) continue;
        fastest = std::max(fastest, std::min({speeds[fix - 2], speeds[fix - 1], speeds[fix]}));
    }
    return fastest;
}

}  // namespace keelview
