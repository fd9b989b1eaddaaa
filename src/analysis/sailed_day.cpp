#include "analysis/sailed_day.h"

#include <algorithm>
#include <utility>

#include "analysis/medians.h"

namespace keelview {

namespace {

constexpr double SecondsInAll = 12e6;  // of all ways; some hundred megabytes
constexpr double LeastSeconds = 20000;
constexpr double LyingRadius = 30;   // metres in which what lies still stays
constexpr double DriftSpeed = 0.12;  // metres a second of what drifts
constexpr double FleetWay = 400;     // metres that a fleet sails at least

Position FirstPlace(const Tracks& tracks) {
    for (const Track& track : tracks.Boats)
        if (track.Count() > 0) return track.At(1);
    return {};
}

/// How far a way goes from its middle, but for its outermost twentieth; and its mean speed from end to end.
struct Extent {
    Way Middle;
    double Radius = 0.0;
    double Drift = 0.0;
};

Extent ExtentOf(const WayBySecond& way) {
    std::vector<double> easts, norths;
    const int step = std::max(1, (way.Last() - way.First()) / 400);
    for (int t = way.First(); t <= way.Last(); t += step)
        if (const auto at = way.At(t)) easts.push_back(at->East), norths.push_back(at->North);
    Extent extent;
    extent.Middle = {MedianOf(easts), MedianOf(norths)};
    std::vector<double> offs;
    offs.reserve(easts.size());
    for (std::size_t i = 0; i < easts.size(); ++i)
        offs.push_back((Way{easts[i], norths[i]} - extent.Middle).Length());
    extent.Radius = QuantileOf(std::move(offs), 0.95);
    if (easts.size() > 1)
        extent.Drift = Way{easts.back() - easts.front(), norths.back() - norths.front()}.Length() /
                       std::max(1, way.Last() - way.First());
    return extent;
}

}  // namespace

SailedDay ReadDay(const Tracks& tracks, const EarthScale& scale) {
    SailedDay day;
    day.Water = Plane(scale, FirstPlace(tracks));
    const int longest =
        static_cast<int>(std::max(LeastSeconds, SecondsInAll / std::max(tracks.Boats.Count(), 1)));
    std::vector<std::pair<int, WayBySecond>> all;
    double widest = 0;
    std::vector<Extent> extents;
    for (int boat = 1; boat <= tracks.Boats.Count(); ++boat) {
        WayBySecond way(tracks.Boats[boat], day.Water, longest);
        if (way.Empty()) continue;
        extents.push_back(ExtentOf(way));
        widest = std::max(widest, extents.back().Radius);
        all.emplace_back(boat, std::move(way));
    }
    for (std::size_t i = 0; i < all.size(); ++i) {
        const Extent& extent = extents[i];
        const bool lies = extent.Radius < LyingRadius || (extent.Drift < DriftSpeed && extent.Radius < 100);
        if (lies && widest > FleetWay / 2) {
            day.Lying.push_back(extent.Middle);
            day.LyingNumbers.push_back(all[i].first);
        } else if (extent.Radius >= LyingRadius) {
            day.Numbers.push_back(all[i].first);
            day.Corners.push_back(FindCorners(all[i].second, static_cast<int>(day.Ways.size())));
            day.Ways.push_back(std::move(all[i].second));
        }
    }
    return day;
}

int SailedDay::Last() const {
    int last = 0;
    for (const WayBySecond& way : Ways) last = std::max(last, way.Last());
    return last;
}

}  // namespace keelview
