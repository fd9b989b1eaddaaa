#include "racedata/track_faults.h"

#include <cmath>
#include <numbers>

namespace keelview {

namespace {

constexpr double FastestKnots = 100;

/// True if the way from one fix to another takes more than the fastest boat. Ways that it sails on any
/// latitude need no cosine.
bool TooFast(const Track& track, int from, int to) {
    const double seconds = track.TrackTime[to] - track.TrackTime[from];
    if (seconds <= 0) return false;
    const double north = track.TrackLat[to] - track.TrackLat[from];
    const double lonMinutes = track.TrackLon[to] - track.TrackLon[from];
    const double reach = FastestKnots * seconds / 3600;
    if (north * north + lonMinutes * lonMinutes <= reach * reach) return false;
    const double east = lonMinutes * std::cos(track.TrackLat[from] / 60 * std::numbers::pi / 180);
    return north * north + east * east > reach * reach;
}

}  // namespace

int DropImpossibleFixes(Track& track) {
    const int count = track.Count();
    int kept = 1;
    for (int fix = 2; fix <= count; ++fix) {
        const bool impossible = fix < count && TooFast(track, kept, fix) && TooFast(track, fix, fix + 1) &&
                                !TooFast(track, kept, fix + 1);
        if (impossible) continue;
        ++kept;
        track.TrackLat[kept] = track.TrackLat[fix];
        track.TrackLon[kept] = track.TrackLon[fix];
        track.TrackTime[kept] = track.TrackTime[fix];
        if (!track.HasOwnVelocity()) continue;
        track.TrackOwnSpeed[kept] = track.TrackOwnSpeed[fix];
        track.TrackOwnCourse[kept] = track.TrackOwnCourse[fix];
    }
    if (kept >= count) return 0;
    for (auto* column : {&track.TrackLat, &track.TrackLon, &track.TrackTime}) column->Resize(kept);
    if (track.HasOwnVelocity())
        for (auto* column : {&track.TrackOwnSpeed, &track.TrackOwnCourse}) column->Resize(kept);
    return count - kept;
}

}  // namespace keelview
