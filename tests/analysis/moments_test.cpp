#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "analysis/track_at.h"
#include "analysis/wind_at.h"

namespace keelview {
namespace {

/// Samples at 0, 60 and 120 seconds; the wind swings through north and back, eight degrees west of true.
struct WindAtTest : testing::Test {
    std::unique_ptr<RaceControl> race = std::make_unique<RaceControl>();
    WindData wind{{0, 0, 60, 120}, {{}, 5.0, {}, 7.0}, {0, 350, 10, 350}, 3};

    void SetUp() override {
        race->WindFileName = "w.csv";
        race->MagVariation = -8;
        race->WindDirection = 3;
    }
};

TEST_F(WindAtTest, TurnsTheShortWayAndHoldsAtBothEnds) {
    struct Case {
        double t;
        double magnetic;
        double trueDirection;
        double speed;
    };
    for (const Case& c :
         {Case{-500, 350, 342, 5}, Case{0, 350, 342, 5}, Case{15, 355, 347, 3.8}, Case{45, 5, 357, 1.3},
          Case{90, 0, 352, 3.5}, Case{120, 350, 342, 7}, Case{1e9, 350, 342, 7}}) {
        const WindSample sample = WindAt(*race, wind, c.t);
        EXPECT_DOUBLE_EQ(sample.DirectionMagnetic, c.magnetic) << c.t;
        EXPECT_DOUBLE_EQ(sample.DirectionTrue, c.trueDirection) << c.t;
        EXPECT_DOUBLE_EQ(sample.Speed, c.speed) << c.t;
    }
}

TEST_F(WindAtTest, WithoutSamplesTheRacesOwnWindHolds) {
    const auto expectOwn = [&] {
        const WindSample sample = WindAt(*race, wind, 30);
        EXPECT_EQ(sample.DirectionTrue, 3);
        EXPECT_EQ(sample.DirectionMagnetic, 11);
        EXPECT_EQ(sample.Speed, 0);
    };
    race->WindFileName.clear();  // the samples of the race before may still be there
    expectOwn();
    race->WindFileName = "w.csv";
    wind = {};
    expectOwn();
    EXPECT_EQ(FindWindSample(wind, 30), 0);
}

TEST_F(WindAtTest, ThePairIsThatWhichHoldsTheMoment) {
    EXPECT_EQ(FindWindSample(wind, -0.1), 0);
    EXPECT_EQ(FindWindSample(wind, 59.9), 1);
    EXPECT_EQ(FindWindSample(wind, 60), 2);
    EXPECT_EQ(FindWindSample(wind, 120), 3);
}

TEST(TrackAt, EveryHintGivesTheSameSegment) {
    Tracks tracks;
    tracks.TrackTime = {{0}, {0, -10, 0, 0, 5, 100}, {0, 7}};
    tracks.TrackPointCount[1] = 5;
    tracks.TrackPointCount[2] = 1;
    struct Case {
        double t;
        int segment;
    };
    for (const Case& c : {Case{-10.1, 0}, Case{-10, 1}, Case{-0.1, 1}, Case{0, 3}, Case{4.9, 3}, Case{5, 4},
                          Case{99.9, 4}, Case{100, 0}})
        for (int hint = -1; hint <= 7; ++hint)
            for (const bool forward : {true, false})
                EXPECT_EQ(FindSegment(tracks, 1, c.t, hint, forward), c.segment) << c.t << " from " << hint;
    for (const int boat : {0, 2, 3, 51}) EXPECT_EQ(FindSegment(tracks, boat, 7), 0);
}

TEST(TrackAt, ABoatStandsOnTheStraightLineBetweenTwoFixes) {
    Tracks tracks;
    tracks.TrackTime = {{0}, {0, 10, 30}};
    tracks.TrackLat = {{0}, {0, 2100, 2104}};
    tracks.TrackLon = {{0}, {0, 8400, 8398}};
    const TrackMoment underived = MomentOn(tracks, 1, 1, 15);
    EXPECT_EQ(underived.Lat, 2101);
    EXPECT_EQ(underived.Lon, 8399.5);
    EXPECT_EQ(underived.Speed, 0);
    tracks.TrackSpeed = {{0}, {0, 6, 0}};
    tracks.TrackCourse = {{0}, {0, 340, 0}};
    EXPECT_EQ(MomentOn(tracks, 1, 1, 29).Course, 340);
}

}  // namespace
}  // namespace keelview
