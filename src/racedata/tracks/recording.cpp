#include "racedata/tracks/recording.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/position.h"

namespace keelview {
namespace {

/// A place on the globe, and not the one that receivers write when they know none. False for no number.
bool IsPlace(double lat, double lon) {
    return std::abs(lat) <= 90.0 && std::abs(lon) <= 180.0 && !IsNoPlace(lat, lon);
}

}  // namespace

void Skip(std::vector<Skipped>& skipped, SkipReason why, int count) {
    const auto found = std::ranges::find(skipped, why, &Skipped::Why);
    if (found == skipped.end())
        skipped.push_back({why, count});
    else
        found->Count += count;
}

void AddFix(Recording& recording, const RecordedFix& fix) {
    if (!IsPlace(fix.Lat, fix.Lon)) return Skip(recording.Left, SkipReason::NoPlace);
    if (recording.Fixes.size() >= MostFixes) return Skip(recording.Left, SkipReason::TooMany);
    if (!recording.Fixes.empty()) {
        const UnixMs last = recording.Fixes.back().Time;
        if (fix.Time == last) return Skip(recording.Left, SkipReason::SameTime);
        if (fix.Time < last) return Skip(recording.Left, SkipReason::TimeBack);
    }
    recording.Fixes.push_back(fix);
}

void AddMark(RaceHints& hints, NamedPlace mark) {
    if (mark.Name.empty() || !IsPlace(mark.Lat, mark.Lon) || hints.Marks.size() >= MostMarks) return;
    hints.Marks.push_back(std::move(mark));
}

}  // namespace keelview
