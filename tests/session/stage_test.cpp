#include "session/stage.h"

#include <gtest/gtest.h>

#include <string>

#include "session/race_session.h"
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

struct RaceSessionTest : testing::Test, TestDesk {};

TEST_F(RaceSessionTest, TheFormTellsTheRaceAndItsMoment) {
    tree.Boat("a.trk", Lat, Lon, SixKnots, 0, -200, 620);
    tree.Boat("b.trk", Lat, Lon + 0.1, SixKnots, 0, -100, 300);
    tree.Race("R1.txt", "WD, 30\r\nBN, a.trk, Alpha\r\nBN, b.trk, Beta\r\n" + RaceTree::LineAcross(0.1));
    Open(false);
    const RaceDisp& form = Form();
    const auto told = [&form] {
        std::string texts = form.Caption();
        for (const auto* box : {&form.Text9, &form.Text1, &form.Text11, &form.Text5[0], &form.Text6[0],
                                &form.Text5[1], &form.Text6[1]})
            texts += "/" + box->Text();
        return texts + "/" + form.Bnam[1].Caption();
    };
    const std::string race = " \"Keelview\" Race Browser   Spring Cup   (R1.txt)/2004/8/5 12:30:00/";
    Seek(50.5);  // six minutes of arc an hour are less than six miles there
    EXPECT_EQ(told(), race + "2004/08/05 12:30:50/00:00:50/5.98/-30/5.98/-30/Beta");
    EXPECT_TRUE(form.Option2.Value() && !form.Command2.Visible());
    EXPECT_FALSE(form.Option11.Enabled());  // a course of one entry has no legs
    Seek(350);                              // Beta's track has ended
    EXPECT_EQ(told(), race + "2004/08/05 12:35:50/00:05:50/5.98/-30///Beta");
    const Sprite& sprite = form.Boat[0];
    EXPECT_TRUE(sprite.Visible() && !form.Boat[1].Visible());
    EXPECT_EQ(form.Text15.Text() + NumberText(sprite.Width()), "Enlarged15");
    driver::Click(form.Check10);
    EXPECT_TRUE(form.Text15.Text() == "Real Size" && sprite.Width() >= 3);
}

}  // namespace
}  // namespace keelview
