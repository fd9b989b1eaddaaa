#include "session/race_session.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "support/test_desk.h"

namespace keelview {
namespace {

/// A race of two boats: Alpha sails north over the line L1 at second 100 and over it alone; Beta stops
/// early.
struct RaceSessionTest : testing::Test, TestDesk {
    RaceSessionTest() {
        tree.Boat("a.trk", Lat, Lon, SixKnots, 0, -200, 620);
        tree.Boat("b.trk", Lat, Lon + 0.1, SixKnots, 0, -100, 300);
        tree.Race("R1.txt", "BN, a.trk, Alpha\r\nBN, b.trk, Beta\r\n" + RaceTree::LineAcross(0.1));
        tree.Write("gun.wav", "RIFF");
        Open(false);
    }
};

TEST_F(RaceSessionTest, ALoadedRaceShowsItsTitleTimesAndBoats) {
    EXPECT_EQ(Form().Caption(), " \"Keelview\" Race Browser   Spring Cup   (R1.txt)");
    EXPECT_EQ(Form().Text9.Text(), "2004/8/5 12:30:00");
    ASSERT_EQ(Form().Bnam.Count(), 2);
    EXPECT_EQ(Form().Bnam[1].Caption(), "Beta");
    EXPECT_FALSE(Form().Command2.Visible());
    EXPECT_TRUE(Form().Option2.Value());
    EXPECT_FALSE(Form().Option11.Enabled());  // a course of one entry has no legs
}

TEST_F(RaceSessionTest, BoatsStandWhereTheirTracksSay) {
    Seek(50.5);
    EXPECT_NEAR(app.now.Boats[1].At().Lat, Lat + SixKnots * 50.5, 1e-4);
    const Point at = MapProjection(app).ToScreen(app.now.Boats[1].At());
    const Sprite& sprite = Form().Boat[0];
    EXPECT_TRUE(sprite.Visible());
    EXPECT_NEAR(sprite.Left() + sprite.Width() / 2, at.X, 1.0);
    EXPECT_NEAR(sprite.Top() + sprite.Height() / 2, at.Y, 1.0);
    EXPECT_NEAR(LenientNumber(Form().Text5[0].Text()), 6.0, 0.3);
    EXPECT_EQ(Form().Text1.Text(), "2004/08/05 12:30:50");
    EXPECT_EQ(Form().Text11.Text(), "00:00:50");
    Seek(350);  // Beta's track has ended
    EXPECT_FALSE(app.now.Boats[2].IsSomewhere());
    EXPECT_FALSE(Form().Boat[1].Visible());
    EXPECT_EQ(Form().Text5[1].Text(), "");
}

TEST_F(RaceSessionTest, SignalsCountDownAndTheGunFiresOnce) {
    struct Case {
        double time;
        bool blue;
        bool seven;
        bool large;
    };
    for (const Case& each :
         {Case{-199, true, false, false}, Case{-58, true, true, false}, Case{-50, false, true, false},
          Case{-20.5, false, true, true}, Case{8, false, false, true}, Case{20, false, false, false}}) {
        SCOPED_TRACE(each.time);
        Seek(each.time);
        EXPECT_EQ(Form().Blue_P.Visible(), each.blue);
        EXPECT_EQ(Form().Seven.Visible(), each.seven);
        EXPECT_EQ(Form().Text4.Visible(), each.large);
    }
    Seek(-0.5);
    EXPECT_EQ(Form().Text11.Text(), "00:00:01");
    const auto before = platform.Sounds.size();
    Seek(0.2);
    Seek(0.7);
    EXPECT_EQ(platform.Sounds.size(), before + 1);
}

TEST_F(RaceSessionTest, FinishersAreListedUntilTheFilmBeginsAnew) {
    EXPECT_NEAR(FinishTime(app.passes, 1).value_or(0), 100, 1);
    Seek(95);
    EXPECT_FALSE(Form().Position.Visible());
    Seek(102);
    EXPECT_TRUE(Form().Position.Visible());
    Seek(600);
    EXPECT_FALSE(Form().Position.Visible());
}

TEST_F(RaceSessionTest, TheSpeedBarAndTheStepButtonsMoveTheClock) {
    for (const auto& [value, speed] : {std::pair{1, 1.0}, {10, 10.0}, {11, 20.0}, {19, 100.0}}) {
        Form().HScroll1.SetValue(value);
        EXPECT_EQ(app.clock.SpeedMultiplier, speed);
    }
    EXPECT_EQ(Form().Text2.Text(), "100 x spd");
    driver::Click(Form().Option6);
    driver::Click(Form().Command7);
    EXPECT_LT(app.clock.ReplayStep, 0);
    EXPECT_TRUE(Form().Option7.Value());
    EXPECT_FALSE(Form().Timer1.Enabled());
    Seek(100);
    app.clock.ReplayStep = 0.161;
    driver::Click(Form().Command7);
    EXPECT_EQ(app.clock.ReplayTime, 99);
    app.clock.ReplayStep = 3.03;
    driver::Click(Form().Command6);
    EXPECT_NEAR(app.clock.ReplayTime, 102.03, 1e-9);
}

TEST_F(RaceSessionTest, AutoTraceHoldsTheFocusedBoatInTheMiddle) {
    driver::Click(Form().Check5);
    EXPECT_FALSE(Form().Check6.Enabled());
    EXPECT_TRUE(Form().Picture12.Visible());
    driver::Click(Form().Bnam[1]);
    driver::Click(Form().Command6);
    EXPECT_NEAR(app.view.ViewCentreLon, Lon, 1e-6);
    EXPECT_GT(app.view.ZoomFactor, 1.0);
    EXPECT_EQ(app.view.ManualZoom, 1.0);
    driver::Click(Form().Check5);
    EXPECT_EQ(app.view.ZoomFactor, 1.0);
    EXPECT_TRUE(Form().Check6.Enabled());
}

TEST_F(RaceSessionTest, SpritesSayWhetherTheyAreTrue) {
    EXPECT_EQ(Form().Text15.Text(), "Enlarged");
    EXPECT_EQ(Form().Boat[0].Width(), 15);
    driver::Click(Form().Check10);
    EXPECT_EQ(Form().Text15.Text(), "Real Size");
    EXPECT_GE(Form().Boat[0].Width(), 3);
}

}  // namespace
}  // namespace keelview
