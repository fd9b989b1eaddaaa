#include "session/stage.h"

#include <gtest/gtest.h>

#include <string>

#include "support/qt_driver.h"
#include "support/test_world.h"

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
        for (const int row : {0, 1}) form.Bnam[row].SetValue(row == 0);
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
    app.clock.ReplayTime = 20.5;
    app.clock.ReplayStep = -0.5;
    stage.ShowMoment();
    EXPECT_TRUE(app.now.Time == 20.5 && !app.now.Forward && app.now.WindNow.DirectionTrue == 30);
    EXPECT_NEAR(app.now.Boats[1].At().Lat, Lat + SixKnots * 20.5, 1e-6);
    EXPECT_NEAR(app.now.Boats[1].TrueWindAngle, -30, 0.1);
    EXPECT_TRUE(app.now.Boats[2].IsSomewhere());
    app.clock.ReplayTime = 50;
    stage.ShowMoment();
    EXPECT_TRUE(!app.now.Boats[2].IsSomewhere() && app.now.BoatInView);
    app.view.CentreOn({Lat + 5, Lon});
    stage.ShowMoment();
    EXPECT_FALSE(app.now.BoatInView);
    app.shown.ViewMode = ViewKind::Graph;  // all boats are on the graphs
    stage.ShowMoment();
    EXPECT_TRUE(app.now.BoatInView);
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

}  // namespace
}  // namespace keelview
