#include "analysis/track_details.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "base/point.h"

namespace keelview {
namespace {

constexpr double LonScale = 0.5;

double DistanceFromSegment(const Point& at, const Point& from, const Point& to) {
    const Point way{to.X - from.X, to.Y - from.Y};
    const double length = std::hypot(way.X, way.Y);
    const double along =
        length > 0 ? ((at.X - from.X) * way.X + (at.Y - from.Y) * way.Y) / length / length : 0;
    const double share = std::fmin(std::fmax(along, 0), 1);
    return std::hypot(at.X - from.X - share * way.X, at.Y - from.Y - share * way.Y);
}

/// A way by a rule that gives the degrees of turn at a fix.
template <class Turn>
Track Sail(int fixes, Turn turn) {
    Track track;
    double lat = 2100, lon = 8300, heading = 0;
    for (int fix = 1; fix <= fixes; ++fix) {
        track.TrackLat.Add(lat);
        track.TrackLon.Add(lon);
        track.TrackTime.Add(fix);
        heading += turn(fix) / 57.29578;
        lat += 0.0015 * std::cos(heading);
        lon += 0.0015 * std::sin(heading) / LonScale;
    }
    return track;
}

TEST(TrackDetails, WhatIsLeftOutLiesWithinTheToleranceOfWhatIsDrawn) {
    std::mt19937 dice(5);
    const auto noise = [&dice](int) { return static_cast<double>(dice() % 41) - 20; };
    const auto legs = [](int fix) { return fix % 300 == 0 ? 90 : 0; };
    const auto spiral = [](int fix) { return 500.0 / fix; };
    const auto toAndFro = [](int fix) { return fix % 7 == 0 ? 180 : 0; };
    for (const Track& track :
         {Sail(3000, noise), Sail(3000, legs), Sail(2000, spiral), Sail(1000, toAndFro), Sail(2, legs)}) {
        const OneBased<float> details = DetailsOf(track, LonScale);
        const auto at = [&track](int fix) {
            return Point{track.TrackLon[fix] * LonScale, track.TrackLat[fix]};
        };
        std::size_t before = 0;
        for (const double tolerance : {0.03, 0.003, 0.0003, 0.0}) {
            const std::vector<int> drawn = FixesToDraw(details, 1, track.Count(), tolerance);
            EXPECT_TRUE(drawn.front() == 1 && drawn.back() == track.Count() && drawn.size() >= before);
            before = drawn.size();
            for (std::size_t k = 1; k < drawn.size(); ++k)
                for (int fix = drawn[k - 1] + 1; fix < drawn[k]; ++fix)
                    ASSERT_LE(DistanceFromSegment(at(fix), at(drawn[k - 1]), at(drawn[k])),
                              tolerance + 1e-9);
        }
    }
    // A square sailed in straight legs is its corners and what parts the stretches.
    const OneBased<float> square = DetailsOf(Sail(3000, legs), LonScale);
    EXPECT_LE(FixesToDraw(square, 1, 3000, 0.0003).size(), 2U + 9U + 11U);
    EXPECT_EQ(FixesToDraw(square, 10, 20, 0.0003), (std::vector{10, 20}));
    EXPECT_EQ(FixesToDraw({}, 3, 6, 1.0), (std::vector{3, 4, 5, 6}));
    EXPECT_TRUE(FixesToDraw(square, 5, 4, 1.0).empty());
}

}  // namespace
}  // namespace keelview
