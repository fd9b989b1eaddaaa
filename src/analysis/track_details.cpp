#include "analysis/track_details.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

#include "base/parallel.h"
#include "base/point.h"

namespace keelview {

namespace {

constexpr int Stretch = 256;
constexpr float Always = std::numeric_limits<float>::infinity();

/// A track on a plane on which a minute of arc has one length.
class Plane {
  public:
    Plane(const Track& track, double lonScale) : track_(track), lonScale_(lonScale) {}

    Point At(int fix) const { return {track_.TrackLon[fix] * lonScale_, track_.TrackLat[fix]}; }

    /// The fix between two others that lies furthest from the line between them, and how far squared.
    std::pair<int, double> Furthest(int first, int last) const {
        const Point from = At(first);
        const Point way = {At(last).X - from.X, At(last).Y - from.Y};
        const double length = way.X * way.X + way.Y * way.Y;
        const double share = length > 0 ? 1 / length : 0.0;
        std::pair<int, double> furthest{first, -1.0};
        for (int fix = first + 1; fix < last; ++fix) {
            const Point to = {At(fix).X - from.X, At(fix).Y - from.Y};
            const double along = std::clamp((to.X * way.X + to.Y * way.Y) * share, 0.0, 1.0);
            const double east = to.X - along * way.X;
            const double north = to.Y - along * way.Y;
            const double off = east * east + north * north;
            if (off > furthest.second) furthest = {fix, off};
        }
        return furthest;
    }

  private:
    const Track& track_;
    double lonScale_;
};

/// Between two fixes that stay the furthest stays as long as what it is off, and those on either side of it
/// no longer than it does.
void Divide(const Plane& plane, int first, int last, OneBased<float>& details) {
    struct Part {
        int First, Last;
        float Most;
    };
    std::array<Part, Stretch> open{};  // a stretch has fewer parts
    std::size_t count = 0;
    open[count++] = {first, last, Always};
    while (count > 0) {
        const Part part = open[--count];
        if (part.Last - part.First < 2) continue;
        const auto [fix, squared] = plane.Furthest(part.First, part.Last);
        // Up to the next float, so that what is above a tolerance stays in spite of the rounding.
        const float off = std::nextafter(static_cast<float>(std::sqrt(squared)), Always);
        details[fix] = std::min(off, part.Most);
        open[count++] = {part.First, fix, details[fix]};
        open[count++] = {fix, part.Last, details[fix]};
    }
}

}  // namespace

OneBased<float> DetailsOf(const Track& track, double lonScale) {
    OneBased<float> details(track.Count(), Always);
    const Plane plane(track, lonScale);
    for (int first = 1; first < track.Count(); first += Stretch)
        Divide(plane, first, std::min(first + Stretch, track.Count()), details);
    return details;
}

OneBased<OneBased<float>> DetailsOf(const Tracks& tracks, double lonScale) {
    OneBased<OneBased<float>> details(tracks.Boats.Count());
    ForEachInParallel(tracks.Boats.Count(),
                      [&](int boat) { details[boat] = DetailsOf(tracks.Boats[boat], lonScale); });
    return details;
}

std::vector<int> FixesToDraw(const OneBased<float>& details, int first, int last, double tolerance) {
    std::vector<int> fixes;
    if (first > last) return fixes;
    const bool known = details.Holds(last);
    const auto coarse = static_cast<float>(tolerance);
    for (int fix = first; fix <= last; ++fix)
        if (fix == first || fix == last || !known || details[fix] > coarse) fixes.push_back(fix);
    return fixes;
}

}  // namespace keelview
