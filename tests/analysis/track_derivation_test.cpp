#include "analysis/track_derivation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace keelview {
namespace {

/// One boat's points on a sea where a minute of latitude is a mile and one of longitude half a mile.
struct Sailed {
    RaceControl race;
    EarthScale scale{MetresPerNauticalMile, MetresPerNauticalMile / 2, 0.5};
    Tracks tracks;

    struct Point {
        int time;
        double lat;
        double lon;
    };
    Sailed(const std::vector<Point>& points, int duration) {
        race.RaceDuration = duration;
        tracks.Boats.Resize(1);
        for (const Point& point : points) {
            Sailor().TrackTime.Add(point.time);
            Sailor().TrackLat.Add(point.lat);
            Sailor().TrackLon.Add(point.lon);
        }
        DeriveTracks(race, scale, tracks);
    }
    Track& Sailor() { return tracks.Boats[1]; }
};

TEST(DeriveTracks, EachPointHasItsMilesAndTheWayToTheNext) {
    Sailed sailed({{0, 2100, 8400},
                   {1800, 2103, 8408},  // 3 north, 8 / 2 east: 5 miles in half an hour
                   {3600, 2103, 8408},
                   {3600, 2103, 8406},  // at once
                   {7200, 2102, 8404}},
                  0);
    const std::vector<double> miles{0, 5, 5, 6, 6 + std::sqrt(2.0)};
    const std::vector<double> knots{10, 0, 0, std::sqrt(2.0), 0};
    const std::vector<double> courses{53.13010235415598, 90, 270, 225, 0};
    const Track& track = sailed.Sailor();
    for (std::size_t row = 0; row < 5; ++row) {
        const int fix = static_cast<int>(row) + 1;
        EXPECT_DOUBLE_EQ(track.TrackDist[fix], miles[row]) << fix;
        EXPECT_DOUBLE_EQ(track.TrackSpeed[fix], knots[row]) << fix;
        EXPECT_DOUBLE_EQ(track.TrackCourse[fix], courses[row]) << fix;
    }
    EXPECT_EQ(Sailed({{0, 2100, 8400}}, 600).Sailor().TrackDist, OneBased<double>{0});
}

TEST(DeriveTracks, TheTypicalSpeedIsThatOfTheFirstHalf) {
    // From the start to half of (720 - 120) seconds: minute 5, one mile on.
    EXPECT_DOUBLE_EQ(Sailed({{-60, 2100, 8400}, {0, 2101, 8400}, {300, 2102, 8400}, {600, 2110, 8400}}, 720)
                         .tracks.TypicalSpeed,
                     12);
    // A track from after the start counts from its first point.
    EXPECT_DOUBLE_EQ(
        Sailed({{60, 2101, 8400}, {300, 2103, 8400}, {600, 2110, 8400}}, 720).tracks.TypicalSpeed, 24);
    // A track that ends before the half: what was sailed up to the start counts backward.
    EXPECT_LT(Sailed({{-60, 2100, 8400}, {0, 2101, 8400}, {100, 2102, 8400}}, 720).tracks.TypicalSpeed, 0);
}

TEST(SpeedBarScale, IsAlwaysAUsableScale) {
    EXPECT_DOUBLE_EQ(SpeedBarScale(7), 70 / 11.2);
    for (const double none :
         {0.0, -3.0, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()})
        EXPECT_DOUBLE_EQ(SpeedBarScale(none), 70 / 8.0);
}

}  // namespace
}  // namespace keelview
