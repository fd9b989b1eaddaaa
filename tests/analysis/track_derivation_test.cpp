#include "analysis/track_derivation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <vector>

namespace keelview {
namespace {

TEST(EarthScale, AgreesWithLengthsMeasuredInSpace) {
    // Chords of a millionth of a millionth of a degree between points of the ellipsoid, placed in space by
    // their parametric latitude with 60 digits, times the factors of the charts.
    struct Case {
        double degrees;
        double north;
        double east;
    };
    for (const Case& c : {Case{0, 1840.213668, 1851.502587}, Case{35, 1846.309732, 1518.335029},
                          Case{35.3, 1846.401329, 1512.772619}, Case{-42.5, 1848.680053, 1367.161150},
                          Case{60, 1854.160135, 928.084081}}) {
        const EarthScale scale = ComputeEarthScale(c.degrees * 60);
        EXPECT_NEAR(scale.MetresPerLatMinute, c.north, 1e-6) << c.degrees;
        EXPECT_NEAR(scale.MetresPerLonMinute, c.east, 1e-6) << c.degrees;
        EXPECT_NEAR(scale.LonScale, c.east / c.north, 1e-9);
    }
}

/// One boat's points on a sea where a minute of latitude is a mile and one of longitude half a mile.
struct Sailed {
    std::unique_ptr<RaceControl> race = std::make_unique<RaceControl>();
    EarthScale scale{MetresPerNauticalMile, MetresPerNauticalMile / 2, 0.5};
    Tracks tracks;

    struct Point {
        int time;
        double lat;
        double lon;
    };
    Sailed(const std::vector<Point>& points, int duration) {
        race->BoatCount = 1;
        race->RaceDuration = duration;
        for (auto* column : {&tracks.TrackLat, &tracks.TrackLon, &tracks.TrackDist, &tracks.TrackSpeed,
                             &tracks.TrackCourse})
            column->assign(2, {0.0});
        tracks.TrackTime.assign(2, {0});
        for (const Point& point : points) {
            tracks.TrackTime[1].push_back(point.time);
            tracks.TrackLat[1].push_back(point.lat);
            tracks.TrackLon[1].push_back(point.lon);
        }
        tracks.TrackPointCount[1] = static_cast<int>(points.size());
        DeriveTracks(*race, scale, tracks);
    }
};

TEST(DeriveTracks, EachPointHasItsMilesAndTheWayToTheNext) {
    const Sailed sailed({{0, 2100, 8400},
                         {1800, 2103, 8408},  // 3 north, 8 / 2 east: 5 miles in half an hour
                         {3600, 2103, 8408},
                         {3600, 2103, 8406},  // at once
                         {7200, 2102, 8404}},
                        0);
    const std::vector<double> miles{0, 0, 5, 5, 6, 6 + std::sqrt(2.0)};
    const std::vector<double> knots{0, 10, 0, 0, std::sqrt(2.0), 0};
    const std::vector<double> courses{0, 53.13010235415598, 90, 270, 225, 0};
    for (int point = 0; point <= 5; ++point) {
        EXPECT_DOUBLE_EQ(sailed.tracks.TrackDist[1][point], miles[point]) << point;
        EXPECT_DOUBLE_EQ(sailed.tracks.TrackSpeed[1][point], knots[point]) << point;
        EXPECT_DOUBLE_EQ(sailed.tracks.TrackCourse[1][point], courses[point]) << point;
    }
    EXPECT_EQ(Sailed({{0, 2100, 8400}}, 600).tracks.TrackDist[1], (std::vector<double>{0, 0}));
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
