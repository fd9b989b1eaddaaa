#include "analysis/track_smoothing.h"

#include <algorithm>
#include <utility>

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
    if (OwnValues() || !(seconds > 0.0)) return track_.TrackSpeed(fix_);
    return (track_.TrackDist[to_] - track_.TrackDist[from_]) / seconds * 3600.0;
}

double SmoothedTrack::Course() const {
    const bool still =
        track_.TrackLat[from_] == track_.TrackLat[to_] && track_.TrackLon[from_] == track_.TrackLon[to_];
    return OwnValues() || still ? track_.TrackCourse(fix_) : track_.CourseBetween(from_, to_);
}

double FastestHeld(const Track& track, double from, double to) {
    double fastest = 0.0, before = 0.0, last = 0.0;  // knots of the two fixes before; none is faster than 0
    for (int fix = 1; fix <= track.Count(); ++fix) {
        const double speed = track.TrackSpeed(fix);
        const double time = track.TrackTime[fix];
        if (time >= from && time < to) fastest = std::max(fastest, std::min({before, last, speed}));
        before = std::exchange(last, speed);
    }
    return fastest;
}

}  // namespace keelview
