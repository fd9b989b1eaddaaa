#include "analysis/way_by_second.h"

#include <algorithm>
#include <cmath>

#include "analysis/medians.h"
#include "racedata/limits.h"

namespace keelview {

namespace {

constexpr double LongestGap = 20.0;  // seconds

/// The scatter of each fix about the middle of its neighbours, which is 1.22 times theirs each way and half
/// of the time within 1.18 times that.
double NoiseOf(const Track& track, const Plane& plane) {
    const int step = std::max(1, track.Count() / 3000);
    std::vector<double> offs;
    for (int fix = 2; fix < track.Count(); fix += step)
        offs.push_back(
            (plane.To(track.At(fix)) - (plane.To(track.At(fix - 1)) + plane.To(track.At(fix + 1))) * 0.5)
                .Length());
    return MedianOf(std::move(offs)) / (1.22 * 1.18);
}

}  // namespace

WayBySecond::WayBySecond(const Track& track, const Plane& plane, int longest) {
    if (track.Count() == 0 || !(std::abs(track.TrackTime[1]) < LongestRace)) return;
    first_ = static_cast<int>(std::ceil(track.TrackTime[1]));
    noise_ = NoiseOf(track, plane);
    sums_.emplace_back();
    counts_.push_back(0);
    double before = track.TrackTime[1];
    Way from = plane.To(track.At(1));
    for (int fix = 2; fix <= track.Count(); ++fix) {
        const double time = track.TrackTime[fix];
        if (!(time > before) || time > LongestRace) continue;
        const Way to = plane.To(track.At(fix));
        const double end = std::min(time, static_cast<double>(first_) + longest);
        for (double t = first_ + static_cast<double>(sums_.size()) - 1; t < end; ++t) {
            const double f = (t - before) / (time - before);
            Add(time - before > LongestGap ? std::nullopt : std::optional(from + (to - from) * f));
        }
        before = time;
        from = to;
    }
}

void WayBySecond::Add(const std::optional<Way>& place) {
    sums_.push_back(sums_.back() + place.value_or(Way{}));
    counts_.push_back(counts_.back() + (place ? 1 : 0));
}

}  // namespace keelview
