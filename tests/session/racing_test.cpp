#include "session/racing.h"

#include <gtest/gtest.h>

#include "support/test_desk.h"

namespace keelview {
namespace {

/// Winner crosses the only line at second 100; Passer sails past it, Moored lies still, Drifter has no
/// wind.
struct RacingTest : testing::Test, TestDesk {
    RacingTest() {
        tree.Boat("winner.trk", Lat, Lon, SixKnots, 0, -400, 620);
        tree.Boat("passer.trk", Lat, Lon + 0.3, SixKnots, 0, -400, 620);
        tree.Boat("moored.trk", Lat - 0.5, Lon, 0, 0, -400, 620);
        tree.Boat("drifter.trk", Lat, Lon + 0.1, SixKnots / 12, 0, -400, 50);
        tree.Race("R1.txt",
                  "BT, 6\r\nBN, winner.trk, W\r\nBN, passer.trk, P\r\nBN, moored.trk, M\r\n"
                  "BN, drifter.trk, D\r\n" +
                      RaceTree::LineAcross(0.1));
        Open();
    }
    std::string Racing(double time) const {
        std::string boats;
        for (int boat = 1; boat <= 4; ++boat)
            if (IsRacing(app, boat, time)) boats += app.race.Boats[boat].BoatName;
        return boats;
    }
};

TEST_F(RacingTest, WhoFinishedLongAgoNeverStartedOrIsAshoreDoesNotRace) {
    const int finish = FinishTime(app.passes, 1).value_or(0);
    ASSERT_NEAR(finish, 100, 1);
    EXPECT_EQ(Racing(-100), "WPD");
    EXPECT_EQ(Racing(finish - 1), "WPD");
    EXPECT_EQ(Racing(finish + 1), "W");
    EXPECT_EQ(Racing(finish + 300), "W");
    EXPECT_EQ(Racing(finish + 301), "");
}

TEST_F(RacingTest, AutoTraceFollowsWhoRacesAndAtOnceWhoComesIntoFocus) {
    const auto westToEast = [&](double west, double east) {
        EXPECT_NEAR(app.view.ViewCentreLon, Lon + (west + east) / 2, 1e-6);
        EXPECT_GT(app.view.ViewCentreLat, Lat);  // the moored boat lies in the south
    };
    driver::Click(Form().Check5);
    westToEast(0, 0.3);
    EXPECT_TRUE(app.view.ZoomFactor > 1 && app.view.ManualZoom == 1);
    EXPECT_TRUE(Form().Picture12.Visible() && !Form().Check6.Enabled());
    driver::Click(Form().Bnam[1]);
    EXPECT_NEAR(app.view.ViewCentreLon, Lon, 1e-6);
    driver::Click(Form().Label5);
    westToEast(0, 0.3);
    Seek(300);
    westToEast(0, 0);
    Seek(500);  // nobody races any more
    EXPECT_NEAR(app.view.ViewCentreLon, Lon + 0.15, 1e-6);
    driver::Click(Form().Check5);
    EXPECT_TRUE(app.view.ZoomFactor == 1 && !Form().Picture12.Visible() && Form().Check6.Enabled());
}

}  // namespace
}  // namespace keelview
