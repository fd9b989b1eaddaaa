#include "analysis/boat_motion.h"

#include <gtest/gtest.h>

#include "analysis/steady_stretches.h"

namespace keelview {
namespace {

constexpr double Told = 1 / KnotMetres;  // knots of a metre a second

/// A boat that sails north, each second 0.05 m/s faster than in the one before, with a receiver that tells
/// it.
BoatMotion Accelerating() {
    Tracks tracks;
    tracks.Boats.Resize(1);
    Track& track = tracks.Boats[1];
    const EarthScale scale = ComputeEarthScale(2100);
    for (int t = 0; t <= 120; ++t) {
        track.TrackTime.Add(t);
        track.TrackLat.Add(2100 + (2 * t + 0.025 * t * t) / scale.MetresPerLatMinute);
        track.TrackLon.Add(8400);
        track.TrackOwnSpeed.Add(static_cast<float>((2 + 0.05 * t) * Told));
        track.TrackOwnCourse.Add(0);
    }
    return FleetMotion(tracks, scale).Boats[1];
}

TEST(BoatMotion, TheReceiversVelocityIsTakenAndGoesOnEvenlyFromFixToFix) {
    const BoatMotion motion = Accelerating();
    ASSERT_EQ(motion.Source(), VelocitySource::Receiver);
    for (const double t : {20.0, 20.25, 60.5, 99.9}) {
        const auto there = motion.At(t);
        ASSERT_TRUE(there) << t;
        EXPECT_NEAR(there->Velocity.North, 2 + 0.05 * t, 1e-5) << t;
        EXPECT_NEAR(there->Velocity.East, 0, 1e-9);
        EXPECT_NEAR(motion.VelocityAt(t)->North, 2 + 0.05 * t, 1e-5) << t;
        EXPECT_NEAR(there->At.North, 2 * t + 0.025 * t * t, 0.01) << t;
    }
    EXPECT_NEAR(motion.SumOfVelocities(10.5, 40.25)->North,
                2 * 29.75 + 0.025 * (40.25 * 40.25 - 10.5 * 10.5), 0.01);
}

TEST(SteadyTimes, LeaveOutTurnsAndPassings) {
    CourseTurn turn;
    turn.Start = 100;
    turn.End = 104;
    EXPECT_EQ(SteadyTimes({turn}, {50, std::nullopt, 200}, {0, 300}),
              (std::vector<TimeSpan>{{0, 40}, {65, 97}, {114, 190}, {215, 300}}));
    EXPECT_EQ(SteadyTimes({turn}, {}, {102, 110}), std::vector<TimeSpan>{});
}

}  // namespace
}  // namespace keelview
