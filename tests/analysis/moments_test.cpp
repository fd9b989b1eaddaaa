#include <gtest/gtest.h>

#include "analysis/track_at.h"
#include "analysis/wind_at.h"

namespace keelview {
namespace {

/// Samples at 0, 60 and 120 seconds; the wind swings through north and back, eight degrees west of true.
struct WindAtTest : testing::Test {
    RaceControl race;
    WindData wind{{0, 5.0, 350}, {60, {}, 10}, {120, 7.0, 350}};

    void SetUp() override {
        race.WindFileName = "w.csv";
        race.MagVariation = -8;
        race.WindDirection = 3;
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
        const Wind now = WindAt(race, wind, c.t);
        EXPECT_DOUBLE_EQ(now.DirectionMagnetic, c.magnetic) << c.t;
        EXPECT_DOUBLE_EQ(now.DirectionTrue, c.trueDirection) << c.t;
        EXPECT_DOUBLE_EQ(now.Speed, c.speed) << c.t;
    }
}

TEST_F(WindAtTest, WithoutSamplesTheRacesOwnWindHolds) {
    const auto expectOwn = [&] {
        const Wind now = WindAt(race, wind, 30);
        EXPECT_EQ(now.DirectionTrue, 3);
        EXPECT_EQ(now.DirectionMagnetic, 11);
        EXPECT_EQ(now.Speed, 0);
    };
    race.WindFileName.clear();  // the samples of the race before may still be there
    expectOwn();
    race.WindFileName = "w.csv";
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

TEST_F(WindAtTest, AShiftThroughNorthReadsAsOne) {
    const WindSample shift = BetweenSamples(wind, 1, 45);
    EXPECT_DOUBLE_EQ(shift.WindDirection, 365);
    EXPECT_DOUBLE_EQ(shift.WindSpeed.value_or(0), 1.25);
    EXPECT_DOUBLE_EQ(BetweenSamples(wind, 2, 105).WindDirection, -5);
}

TEST(TrackAt, EveryHintGivesTheSameSegment) {
    Track track;
    track.TrackTime = {-10, 0, 0, 5, 100};
    struct Case {
        double t;
        int segment;
    };
    for (const Case& c : {Case{-10.1, 0}, Case{-10, 1}, Case{-0.1, 1}, Case{0, 3}, Case{4.9, 3}, Case{5, 4},
                          Case{99.9, 4}, Case{100, 0}}) {
        EXPECT_EQ(FirstSegment(track, c.t), c.segment) << c.t;
        for (int hint = -1; hint <= 7; ++hint)
            for (const bool forward : {true, false})
                EXPECT_EQ(FindSegment(track, c.t, hint, forward), c.segment) << c.t << " from " << hint;
    }
    track.TrackTime = {7};
    EXPECT_EQ(FindSegment(track, 7), 0);
}

TEST(TrackAt, WhereTimesFallBackTheSearchesFindASegmentThatHoldsTheMoment) {
    Track track;
    track.TrackTime = {0, 50, 10, 20, 5, 60};
    EXPECT_EQ(FirstSegment(track, 15), 1);
    const int found = FindSegment(track, 15);
    EXPECT_TRUE(track.TrackTime[found] <= 15 && 15 < track.TrackTime[found + 1]) << found;
}

TEST(TrackAt, ABoatStandsOnTheStraightLineBetweenTwoFixes) {
    Track track;
    track.TrackLat = {2100, 2104};
    track.TrackLon = {8400, 8398};
    track.TrackTime = {10, 30};
    const TrackMoment underived = MomentOn(track, 1, 15);
    EXPECT_EQ(underived.Lat, 2101);
    EXPECT_EQ(underived.Lon, 8399.5);
    EXPECT_EQ(underived.Speed, 0);
    track.TrackSpeed = {6, 0};
    track.TrackCourse = {340, 20};
    EXPECT_EQ(MomentOn(track, 1, 29).Course, 340);
    EXPECT_EQ(HeadingOn(track, 1, 29), 340);
    EXPECT_EQ(HeadingOn(track, 1, 29.75), 370);  // already turning
}

}  // namespace
}  // namespace keelview
