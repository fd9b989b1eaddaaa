#include "racedata/tracks/recording.h"

#include <algorithm>
#include <cmath>

#include "base/position.h"

namespace keelview {

void Skip(std::vector<Skipped>& skipped, SkipReason why, int count) {
    const auto found = std::ranges::find(skipped, why, &Skipped::Why);
    if (found == skipped.end())
        skipped.push_back({why, count});
    else
        found->Count += count;
}

void AddFix(Recording& recording, const RecordedFix& fix) {
    const bool onGlobe = std::abs(fix.Lat) <= 90.0 && std::abs(fix.Lon) <= 180.0;  // false for no number
    if (!onGlobe || IsNoPlace(fix.Lat, fix.Lon)) return Skip(recording.Left, SkipReason::NoPlace);
    if (recording.Fixes.size() >= MostFixes) return Skip(recording.Left, SkipReason::TooMany);
    if (!recording.Fixes.empty()) {
        const UnixMs last = recording.Fixes.back().Time;
        if (fix.Time == last) return Skip(recording.Left, SkipReason::SameTime);
        if (fix.Time < last) return Skip(recording.Left, SkipReason::TimeBack);
    }
    recording.Fixes.push_back(fix);
}

}  // namespace keelview
