#include "session/race_session.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <string>

#include "support/desk_parts.h"

namespace keelview {
namespace {

/// A race of two boats: Alpha sails north over the line L1 at second 100 and over it alone; Beta stops
/// early.
struct RaceSessionTest : testing::Test, DeskParts {
    RaceSession* session = nullptr;

    void SetUp() override {
        platform.Locale = LocaleEnglish;
        tree.Boat("a.trk", Lat, Lon, SixKnots, 0, -200, 620);
        tree.Boat("b.trk", Lat, Lon + 0.1, SixKnots, 0, -100, 300);
        tree.Race("R1.txt", "BN, a.trk, Alpha\r\nBN, b.trk, Beta\r\n" + LineAcross(0.1));
        tree.Write("gun.wav", "RIFF");
    }

    bool Open() {
        SettleStart(*app, services);
        MakeDesk(true);
        session = &desk->session;
        const bool opened = session->LoadRace();
        session->Display().Timer1.SetEnabled(false);
        return opened;
    }
};

TEST_F(RaceSessionTest, ALoadedRaceShowsItsTitleTimesAndBoats) {
    ASSERT_TRUE(Open());
    EXPECT_EQ(Form().Caption(), " \"Keelview\" Race Browser   Spring Cup   (R1.txt)");
    EXPECT_EQ(Form().Text9.Text(), "2004/8/5 12:30:00");
    EXPECT_EQ(Form().Bnam.Count(), 2);
    EXPECT_EQ(Form().Bnam[1].Caption(), "Beta");
    EXPECT_EQ(app->clock.ReplayTime, -200);
    EXPECT_EQ(app->race.ReplaySpan, 600 + 180 + 60);
    EXPECT_EQ(app->display.BoatColour[16], app->display.BoatColour[1]);
    EXPECT_EQ(app->display.BoatColour[50], app->display.BoatColour[5]);
    EXPECT_FALSE(Form().Command2.Visible());
    EXPECT_TRUE(Form().Combo1.Visible());
    EXPECT_TRUE(Form().Option2.Value());
    EXPECT_FALSE(Form().Option11.Enabled());  // a course of one entry has no legs
}

TEST_F(RaceSessionTest, BoatsStandWhereTheirTracksSay) {
    ASSERT_TRUE(Open());
    FrameAt(50.5);
    EXPECT_NEAR(app->fleet.BoatLatNow[1], Lat + SixKnots * 50.5, 1e-4);
    const ScreenPoint at = MapToScreen(app->view, app->fleet.BoatLatNow[1], app->fleet.BoatLonNow[1]);
    const Sprite& sprite = Form().Boat[0];
    EXPECT_TRUE(sprite.Visible());
    EXPECT_NEAR(sprite.Left() + sprite.Width() / 2, at.X, 1.0);
    EXPECT_NEAR(sprite.Top() + sprite.Height() / 2, at.Y, 1.0);
    EXPECT_NEAR(LenientNumber(Form().Text5[0].Text()), 6.0, 0.3);
    EXPECT_EQ(Form().Text1.Text(), "2004/08/05 12:30:50");
    EXPECT_EQ(Form().Text11.Text(), "00:00:50");
    FrameAt(350);  // Beta's track has ended
    EXPECT_EQ(app->fleet.BoatLatNow[2], 0);
    EXPECT_FALSE(Form().Boat[1].Visible());
    EXPECT_EQ(Form().Text5[1].Text(), "");
}

TEST_F(RaceSessionTest, SignalsCountDownAndTheGunFiresOnce) {
    ASSERT_TRUE(Open());
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
        FrameAt(each.time);
        EXPECT_EQ(Form().Blue_P.Visible(), each.blue);
        EXPECT_EQ(Form().Seven.Visible(), each.seven);
        EXPECT_EQ(Form().Text4.Visible(), each.large);
    }
    FrameAt(-0.5);
    EXPECT_EQ(Form().Text11.Text(), "00:00:01");
    const auto before = platform.Sounds.size();
    FrameAt(0.2);
    FrameAt(0.7);
    EXPECT_EQ(platform.Sounds.size(), before + 1);
}

TEST_F(RaceSessionTest, FinishersAreListedAndTheFilmWrapsAtItsEnd) {
    ASSERT_TRUE(Open());
    EXPECT_NEAR(app->passes.MarkPassTime[1][1], 100, 1);
    FrameAt(95);
    EXPECT_FALSE(Form().Position.Visible());
    FrameAt(102);
    EXPECT_TRUE(Form().Position.Visible());
    EXPECT_EQ(app->fleet.FinishedCount, 1);
    EXPECT_EQ(app->fleet.FinishOrder[1], 1);
    FrameAt(600);
    EXPECT_EQ(app->clock.ReplayTime, -210);
    EXPECT_EQ(app->fleet.FinishedCount, 0);
    app->clock.ReplayStep = -1;
    FrameAt(-211);
    EXPECT_EQ(app->clock.ReplayTime, 600);
}

TEST_F(RaceSessionTest, TheSpeedBarAndTheStepButtonsMoveTheClock) {
    ASSERT_TRUE(Open());
    for (const auto& [value, speed] : {std::pair{1, 1.0}, {10, 10.0}, {11, 20.0}, {19, 100.0}}) {
        Form().HScroll1.SetValue(value);
        EXPECT_EQ(app->clock.SpeedMultiplier, speed);
    }
    EXPECT_EQ(Form().Text2.Text(), "100 x spd");
    app->clock.ReplayTime = 100;
    app->clock.ReplayStep = 0.161;
    Form().Command7.OnClick();
    EXPECT_EQ(app->clock.ReplayTime, 99);
    EXPECT_LT(app->clock.ReplayStep, 0);
    EXPECT_TRUE(Form().Option7.Value());
    app->clock.ReplayStep = 3.03;
    Form().Command6.OnClick();
    EXPECT_NEAR(app->clock.ReplayTime, 102.03, 1e-9);
}

TEST_F(RaceSessionTest, AutoTraceHoldsTheFocusedBoatInTheMiddle) {
    ASSERT_TRUE(Open());
    Form().Check5.SetValue(true);
    EXPECT_FALSE(Form().Check6.Enabled());
    EXPECT_TRUE(Form().Picture12.Visible());
    FrameAt(50);
    Form().Bnam[1].SetValue(false);
    Form().Option7.SetValue(true);
    Form().Command6.OnClick();
    EXPECT_NEAR(app->view.ViewCentreLon, Lon, 1e-6);
    EXPECT_GT(app->view.ZoomFactor, 1.0);
    EXPECT_EQ(app->view.ManualZoom, 1.0);
    Form().Check5.SetValue(false);
    EXPECT_EQ(app->view.ZoomFactor, 1.0);
    EXPECT_TRUE(Form().Check6.Enabled());
}

TEST_F(RaceSessionTest, SpritesGrowWithTheMapAndSayWhetherTheyAreTrue) {
    ASSERT_TRUE(Open());
    app->race.BoatLength = 4.7;
    FrameAt(10);
    EXPECT_FALSE(app->fleet.BoatRealSize);
    EXPECT_EQ(Form().Boat[0].Width(), 15);
    Form().Check10.SetValue(false);
    FrameAt(11);
    EXPECT_TRUE(app->fleet.BoatRealSize);
    EXPECT_GE(Form().Boat[0].Width(), 3);
}

TEST_F(RaceSessionTest, RacesThatCannotBeShownSaySo) {
    tree.Race("R1.txt", "BN, gone.trk, Ghost\r\nBN, small.trk, Small\r\n");
    tree.Write("gpsdat/small.trk", "T");
    dialogs.AnswerOk();  // the missing file
    dialogs.AnswerOk();  // no fix at all
    EXPECT_FALSE(Open());
    EXPECT_NE(dialogs.All()[0].Text.find("gone.trk"), std::string::npos);
    EXPECT_NE(dialogs.All()[1].Text.find("No boat"), std::string::npos);
}

TEST_F(RaceSessionTest, AnotherRaceTakesThePlaceOfTheFirst) {
    tree.Race("R2.txt", "BN, b.trk, Solo\r\n");
    ASSERT_TRUE(Open());
    Form().Combo1.SetText("R1.txt");
    dialogs.AnswerOk();
    Form().Command9.OnClick();
    EXPECT_EQ(dialogs.All().back().Text, "Choose Other File");
    Form().Combo1.SetText("R2.txt");
    Form().Command9.OnClick();
    EXPECT_EQ(app->race.BoatCount, 1);
    EXPECT_EQ(Form().Bnam.Count(), 1);
    EXPECT_EQ(Form().Bnam[0].Caption(), "Solo");
    EXPECT_EQ(app->race.CourseCount, 0);
    FrameAt(10);
    EXPECT_FALSE(Form().Position.Visible());
}

}  // namespace
}  // namespace keelview
