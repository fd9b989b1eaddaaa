#include "session/race_session.h"

#include <gtest/gtest.h>

#include "support/test_desk.h"

namespace keelview {
namespace {

/// A race of two boats: Alpha sails north over the one line of the course; Beta stops early.
struct RaceSessionTest : testing::Test, TestDesk {
    RaceSessionTest() {
        tree.Boat("a.trk", Lat, Lon, SixKnots, 0, -200, 620);
        tree.Boat("b.trk", Lat, Lon + 0.1, SixKnots, 0, -100, 300);
        tree.Race("R1.txt", "BN, a.trk, Alpha\r\nBN, b.trk, Beta\r\n" + RaceTree::LineAcross(0.1));
        Open(false);
    }
};

TEST_F(RaceSessionTest, TheFormTellsTheRaceAndItsMoment) {
    const RaceDisp& form = Form();
    const auto told = [&form] {
        std::string texts = form.Caption();
        for (const auto* box : {&form.Text9, &form.Text1, &form.Text11, &form.Text5[0], &form.Text5[1]})
            texts += "/" + box->Text();
        return texts + "/" + form.Bnam[1].Caption();
    };
    const std::string race = " \"Keelview\" Race Browser   Spring Cup   (R1.txt)/2004/8/5 12:30:00/";
    Seek(50.5);  // six minutes of arc an hour are less than six miles there
    EXPECT_EQ(told(), race + "2004/08/05 12:30:50/00:00:50/5.98/5.98/Beta");
    EXPECT_TRUE(form.Option2.Value() && !form.Command2.Visible());
    EXPECT_FALSE(form.Option11.Enabled());  // a course of one entry has no legs
    EXPECT_NEAR(app.now.Boats[1].At().Lat, Lat + SixKnots * 50.5, 1e-4);
    const Sprite& sprite = form.Boat[0];
    const QPointF middle(sprite.Left() + sprite.Width() / 2, sprite.Top() + sprite.Height() / 2);
    EXPECT_LT((middle - PixelOf(app.now.Boats[1].At())).manhattanLength(), 2);
    Seek(350);  // Beta's track has ended
    EXPECT_EQ(told(), race + "2004/08/05 12:35:50/00:05:50/5.98//Beta");
    EXPECT_TRUE(sprite.Visible() && !form.Boat[1].Visible());
    EXPECT_EQ(form.Text15.Text() + NumberText(sprite.Width()), "Enlarged15");
    driver::Click(form.Check10);
    EXPECT_EQ(form.Text15.Text(), "Real Size");
    EXPECT_GE(sprite.Width(), 3);
}

TEST_F(RaceSessionTest, AutoTraceHoldsTheFocusedBoatInTheMiddle) {
    const auto alone = [this] { return Form().Picture12.Visible() && !Form().Check6.Enabled(); };
    driver::Click(Form().Check5);
    driver::Click(Form().Bnam[1]);
    driver::Click(Form().Command6);
    EXPECT_TRUE(alone());
    EXPECT_NEAR(app.view.ViewCentreLon, Lon, 1e-6);
    EXPECT_GT(app.view.ZoomFactor, 1.0);
    EXPECT_EQ(app.view.ManualZoom, 1.0);
    driver::Click(Form().Check5);
    EXPECT_EQ(app.view.ZoomFactor, 1.0);
    EXPECT_FALSE(alone() || !Form().Check6.Enabled());
}

}  // namespace
}  // namespace keelview
