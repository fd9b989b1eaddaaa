#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <tuple>

#include "analysis/track_at.h"
#include "analysis/track_derivation.h"
#include "analysis/track_rhythm.h"
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
    void Expect(double t, double magnetic, double trueDirection, double speed, int sample) const {
        const Wind now = WindAt(race, wind, t);
        EXPECT_DOUBLE_EQ(now.DirectionMagnetic, magnetic) << t;
        EXPECT_DOUBLE_EQ(now.DirectionTrue, trueDirection) << t;
        EXPECT_DOUBLE_EQ(now.Speed, speed) << t;
        EXPECT_EQ(FindWindSample(wind, t), sample) << t;
    }
};

TEST_F(WindAtTest, TurnsTheShortWayAndHoldsAtBothEnds) {
    Expect(-0.1, 350, 342, 5, 0);
    Expect(0, 350, 342, 5, 1);
    Expect(15, 355, 347, 3.8, 1);
    Expect(45, 5, 357, 1.3, 1);
    Expect(60, 10, 2, 0, 2);
    Expect(90, 0, 352, 3.5, 2);
    Expect(120, 350, 342, 7, 3);
    Expect(1e9, 350, 342, 7, 3);
    const WindSample shift = BetweenSamples(wind, 1, 45);  // through north it reads as one
    EXPECT_DOUBLE_EQ(shift.WindDirection, 365);
    EXPECT_DOUBLE_EQ(shift.WindSpeed.value_or(0), 1.25);
    EXPECT_DOUBLE_EQ(BetweenSamples(wind, 2, 105).WindDirection, -5);
    race.WindFileName.clear();  // the samples of the race before may still be there
    Expect(30, 11, 3, 0, 1);
    race.WindFileName = "w.csv";
    wind = {};
    Expect(30, 11, 3, 0, 0);
}

TEST(TrackAt, EveryHintGivesTheSameSegment) {
    Track track;
    track.TrackTime = {-10, 0, 0, 5, 100};
    for (const auto& [t, segment] :
         {std::pair{-10.1, 0}, {-10, 1}, {-0.1, 1}, {0, 3}, {4.9, 3}, {5, 4}, {99.9, 4}, {100, 0}}) {
        EXPECT_EQ(FirstSegment(track, t), segment) << t;
        for (int hint = -1; hint <= 7; ++hint)
            for (const bool forward : {true, false})
                EXPECT_EQ(FindSegment(track, t, hint, forward), segment) << t << " from " << hint;
    }
    track.TrackTime = {7};
    EXPECT_EQ(FindSegment(track, 7), 0);
    track.TrackTime = {0, 50, 10, 20, 5, 60};  // the clock falls back
    EXPECT_EQ(FirstSegment(track, 15), 1);
    const int found = FindSegment(track, 15);
    EXPECT_TRUE(track.TrackTime[found] <= 15 && 15 < track.TrackTime[found + 1]) << found;
}

/// One boat's points (second, latitude, longitude) on a sea where a minute of latitude is a mile and one of
/// longitude half a mile.
Tracks Derived(int duration, const std::vector<std::tuple<int, double, double>>& points) {
    RaceControl race;
    race.RaceDuration = duration;
    Tracks tracks;
    tracks.Boats.Resize(1);
    for (const auto& [time, lat, lon] : points) {
        tracks.Boats[1].TrackTime.Add(time);
        tracks.Boats[1].TrackLat.Add(lat);
        tracks.Boats[1].TrackLon.Add(lon);
    }
    DeriveTracks(race, {MetresPerNauticalMile, MetresPerNauticalMile / 2, 0.5}, tracks);
    return tracks;
}

TEST(TrackAt, ABoatStandsOnTheStraightLineBetweenTwoFixes) {
    // 4 miles north and 3 west in 20 seconds, then 3 east.
    Track track = Derived(0, {{10, 2100, 8400}, {30, 2104, 8394}, {50, 2108, 8400}}).Boats[1];
    const TrackMoment now = MomentOn(track, 1, 15);
    constexpr double course = 323.13010235415598, turn = 2 * 36.86989764584402;
    EXPECT_EQ(std::tuple(now.Lat, now.Lon), std::tuple(2101, 8398.5));
    EXPECT_DOUBLE_EQ(now.Speed, 900);
    EXPECT_DOUBLE_EQ(now.Course, course);
    EXPECT_DOUBLE_EQ(HeadingOn(track, 1, 29), course);
    EXPECT_DOUBLE_EQ(HeadingOn(track, 1, 29.75), course + turn * 0.75);  // already turning
    track.TrackDist.Clear();                                             // not derived yet
    EXPECT_EQ(MomentOn(track, 1, 15).Speed, 0);
}

TEST(TrackRhythm, IsTheMiddleIntervalAndWhatIsFarLongerIsAGap) {
    const auto rhythm = [](std::initializer_list<UnixMs> seconds) {
        std::vector<GpsFix> fixes;
        for (const UnixMs second : seconds) fixes.push_back({.Time = second * 1000});
        return RhythmOf(fixes);
    };
    EXPECT_FALSE(rhythm({7, 7}).MedianInterval);
    EXPECT_EQ(rhythm({0, 1, 3, 7}).MedianInterval, 2);         // of 1, 2 and 4
    EXPECT_EQ(rhythm({0, 1, 3, 7, 6, 14}).MedianInterval, 3);  // of 1, 2, 4 and 8; a clock that falls back
    const TrackRhythm gaps = rhythm({0, 4, 8, 12, 52, 56, 97});
    EXPECT_EQ(std::tuple(gaps.MedianInterval, gaps.Gaps, gaps.LongestGap), std::tuple(4, 1, 41));
}

TEST(DeriveTracks, EachPointHasItsMilesAndTheWayToTheNext) {
    // 3 north and 8 / 2 east are 5 miles in half an hour; the fourth fix is at the time of the third.
    const Tracks tracks = Derived(
        0,
        {{0, 2100, 8400}, {1800, 2103, 8408}, {3600, 2103, 8408}, {3600, 2103, 8406}, {7200, 2102, 8404}});
    using Row = std::tuple<double, double, double>;
    int fix = 0;
    for (const auto& [miles, knots, course] :
         {Row{0, 10, 53.13010235415598}, Row{5, 0, 90}, Row{5, 0, 270}, Row{6, std::numbers::sqrt2, 225},
          Row{6 + std::numbers::sqrt2, 0, 0}}) {
        EXPECT_DOUBLE_EQ(tracks.Boats[1].TrackDist[++fix], miles);
        EXPECT_DOUBLE_EQ(tracks.Boats[1].TrackSpeed(fix), knots) << fix;
        EXPECT_DOUBLE_EQ(tracks.Boats[1].TrackCourse(fix), course) << fix;
    }
    EXPECT_EQ(Derived(600, {{0, 2100, 8400}}).Boats[1].TrackDist, OneBased<double>{0});
}

TEST(DeriveTracks, TheTypicalSpeedIsThatOfTheFirstHalf) {
    const auto typical = [](const auto&... points) { return Derived(720, {points...}).TypicalSpeed; };
    using At = std::tuple<int, double, double>;
    const At before{-60, 2100, 8400};
    const At start{0, 2101, 8400};
    const At finish{600, 2110, 8400};
    // From the start to half of (720 - 120) seconds: minute 5, one mile on.
    EXPECT_DOUBLE_EQ(typical(before, start, At{300, 2102, 8400}, finish), 12);
    // A track from after the start counts from its first point.
    EXPECT_DOUBLE_EQ(typical(At{60, 2101, 8400}, At{300, 2103, 8400}, finish), 24);
    // A track that ends before the half: what was sailed up to the start counts backward.
    EXPECT_LT(typical(before, start, At{100, 2102, 8400}), 0);
    for (const auto& [speed, knots] : {std::pair{7.0, 11.2}, {0, 8}, {-3, 8}, {INFINITY, 8}, {NAN, 8}})
        EXPECT_DOUBLE_EQ(SpeedBarScale(speed), 70 / knots);
}

}  // namespace
}  // namespace keelview
