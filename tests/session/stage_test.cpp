#include "session/stage.h"

#include <gtest/gtest.h>

#include <string>

#include "session/race_session.h"
#include "session/racing.h"
#include "support/test_desk.h"

namespace keelview {
namespace {

/// A race of two boats, of which the second ends at second 40, on a stage with one instrument that notes
/// what it is told.
struct StageTest : testing::Test, TestWorld {
    struct Probe : Instrument {
        explicit Probe(const AppState& state) : app(state) {}
        const AppState& app;
        std::string calls;
        Changed changed = Changed::Nothing;
        double lonAtRepaint = 0.0;
        void Repaint(Changed what) override {
            calls += "repaint ", changed = what, lonAtRepaint = app.view.ViewCentreLon;
        }
        void Show(const Moment& /*now*/) override { calls += "show "; }
    };
    RaceDisp form{app.settings};
    Stage stage{app, form};
    Probe probe{app};

    StageTest() {
        tree.Boat("a.trk", Lat, Lon, SixKnots, 0, -20, 620);
        tree.Boat("b.trk", Lat, Lon + 0.1, SixKnots, 0, -20, 40);
        tree.Race("R1.txt", "WD, 30\r\nBN, a.trk, Alpha\r\nBN, b.trk, Beta\r\n");
        app.race.RaceFileName = "R1.txt";
        LoadRace(tree.Root(), app);
        app.view.CentreOn({app.area.HomeCentreLat, app.area.HomeCentreLon});
        app.view.MapSide = 1000;
        form.LoadBoats(2);
        form.Ticks[2].InFocus = false;
        stage.Add(probe);
    }
    std::string Calls() { return std::exchange(probe.calls, {}); }
};

TEST_F(StageTest, SeveralChangesAreDrawnOnceAndThenTheMoment) {
    stage.Repaint(Changed::Course);
    stage.Repaint(Changed::Wind);
    EXPECT_EQ(Calls(), "");
    driver::Settle();
    EXPECT_EQ(Calls(), "repaint show ");
    EXPECT_EQ(probe.changed, Changed::Course | Changed::Wind);
    stage.ShowMoment();
    EXPECT_EQ(Calls(), "show ");
    stage.Repaint(Changed::Race);
    stage.ShowMoment();  // the next frame comes before the idle moment
    EXPECT_EQ(Calls(), "repaint show ");
    EXPECT_EQ(probe.changed, Changed::Race);
    driver::Settle();
    EXPECT_EQ(Calls(), "");
}

TEST_F(StageTest, AMomentHoldsTheWindAndWhereEverybodyIs) {
    const auto seen = [&](double time) {
        app.clock.ReplayTime = time;
        stage.ShowMoment();
        return app.now.BoatInView;
    };
    app.clock.ReplayStep = -0.5;
    EXPECT_TRUE(seen(20.5) && app.now.Time == 20.5 && !app.now.Forward);
    EXPECT_NEAR(app.now.Boats[1].TrueWindAngle, -app.now.WindNow.DirectionTrue, 0.1);
    EXPECT_TRUE(app.now.Boats[2].IsSomewhere());
    EXPECT_TRUE(seen(50) && !app.now.Boats[2].IsSomewhere());
    app.view.CentreOn({Lat + 5, Lon});
    EXPECT_FALSE(seen(50));
    app.shown.ViewMode = ViewKind::Graph;  // all boats are on the graphs
    EXPECT_TRUE(seen(50));
}

TEST_F(StageTest, InAutoTraceTheViewFollowsTheBoatsInFocusBeforeAnythingIsDrawn) {
    form.Check5.SetValue(true);
    app.clock.ReplayTime = 30;
    stage.ShowMoment();
    EXPECT_EQ(Calls(), "repaint show ");
    EXPECT_TRUE(Any(probe.changed, Changed::View));
    EXPECT_NEAR(probe.lonAtRepaint, Lon, 1e-6);
    app.shown.ViewMode = ViewKind::Data;
    stage.ShowMoment();
    EXPECT_EQ(Calls(), "show ");
}

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

struct DeskLosesNothing : testing::Test, TestDesk {};

TEST_F(DeskLosesNothing, MereOpeningWritesNothingAndASaveNamesTheCoast) {
    WriteRace(2, "XX, of a later program\r\n");
    const std::string before = File();
    Open();
    EXPECT_EQ(File(), before);
    for (const bool save : {false, true}) {
        dialogs.AnswerYesNo(save);
        if (save) dialogs.AnswerInput("R1");
        driver::Click(Form().Command4);
        EXPECT_EQ(FileHolds("MAP, 5239"), save);
    }
}

TEST_F(DeskLosesNothing, AllThatIsMissingOrUnreadableIsToldAndKept) {
    WriteRace(2, "BN, gone.trk, Ghost\r\nBN, lost.trk, Lost\r\nWF, w.csv\r\nST, soon\r\nFT, later\r\n");
    for (const bool english : {true, false}) {
        dialogs.AnswerOk();
        Open(true, english);
        const std::string said = Said();
        for (const char* name : {"gone.trk, lost.trk", "w.csv", "ST, soon", "FT, later"})
            EXPECT_NE(said.find(name), std::string::npos) << said;
    }
    EXPECT_EQ(Form().Text9.Text(), "2004/08/05 12:26:40");  // the first fix, second -200 of the race
    EXPECT_EQ(app.race.RaceDuration, 820);
    EXPECT_EQ(Form().Text1.Text(), "2004/08/05 12:27:30");
    driver::Click(Form().Command2);
    ClickMap({200, 200});
    for (const char* line :
         {"BN, gone.trk, Ghost", "BN, lost.trk, Lost", "ST, soon", "FT, later", "BN, boat2.trk, Boat 2"})
        EXPECT_TRUE(FileHolds(line)) << line << File();
    EXPECT_TRUE(File().starts_with("WF, w.csv\r\n"));
}

TEST_F(DeskLosesNothing, TimesOfASingleTrackLeaveItsCourseAlone) {
    WriteRace(1);
    app.race.SingleTrackFile = "boat1.trk";
    desk = std::make_unique<RaceDesk>(app, services);
    ASSERT_TRUE(desk->session.StartSession());
    Form().Option7.SetValue(true);
    Form().Picture1.SetEnabled(true);
    for (const QPoint at : {QPoint(200, 200), QPoint(250, 150)}) {
        driver::Click(Form().Command2);
        ClickMap(at);
    }
    desk->session.Changes().AddToCourse({false, 1});
    desk->session.Changes().AddToCourse({false, 2});
    desk->session.Changes().SetWindDirection(200);
    driver::Type(Form().Text10, "2004/08/05 12:39:00");
    driver::Click(Form().Command4);
    EXPECT_EQ(app.race.RaceDuration, 500);  // from four minutes after the first fix
    EXPECT_EQ(app.race.Marks.Count() + app.race.CourseOrder.Count(), 4);
    EXPECT_EQ(app.race.WindDirection, 200);
    EXPECT_EQ(app.view.ScreenUpDirection, 200);
    EXPECT_TRUE(Form().Option11.Enabled());
}

TEST_F(DeskLosesNothing, TimesThatAreNotSavedStayInTheirFields) {
    Open();
    driver::Type(Form().Text9, "2004/8/5 12:31");
    dialogs.AnswerYesNo(false);
    driver::Click(Form().Command4);
    EXPECT_EQ(Form().Text9.Text(), "2004/8/5 12:31");
    EXPECT_EQ(app.race.RaceDuration, 600);  // shown by its file
}

TEST_F(DeskLosesNothing, ARaceThatCannotBeOpenedLeavesTheOneOnTheScreen) {
    tree.Race("Empty.txt", "BN, gone.trk, Ghost\r\n");
    WriteRace(3);
    Open(false);
    Seek(100);
    for (const char* name : {"none.txt", "Empty.txt"}) {
        Form().Combo1.SetText(name);
        dialogs.AnswerOk();  // one box, about the boat too
        driver::Click(Form().Command9);
        EXPECT_TRUE(dialogs.AllAnswered() && !Form().Closed() && !platform.Ended);
        EXPECT_EQ(app.race.RaceFileName, "R1.txt");
        EXPECT_EQ(app.tracks.Boats.Count(), 3);
        EXPECT_EQ(app.clock.ReplayTime, 100);
    }
    driver::Click(Form().Option6);
    EXPECT_TRUE(Form().Timer1.Enabled() && Form().Boat[2].Visible());
}

}  // namespace
}  // namespace keelview
