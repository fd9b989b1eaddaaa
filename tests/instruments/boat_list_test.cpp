#include "instruments/boat_list.h"

#include <gtest/gtest.h>

#include <string>

#include "support/open_race.h"

namespace keelview {
namespace {

/// The list on a map of 1000 by 1000 pixels, where the control panel begins at 676.
struct BoatListTest : testing::Test, OpenRace {
    void OpenFleet(int boats, bool english = true) {
        Open(english, boats);
        Form().Move(0, 0, 1310, 1010);
        driver::Settle();
        Form().Option7.SetValue(true);  // the film would start again over the list
    }
    /// The numbers of the rows that are ticked, as "1 3 ".
    std::string InFocus() const {
        std::string rows;
        for (int row = 0; row < app->race.BoatCount; ++row)
            if (Form().Bnam[row].Value()) rows += std::to_string(row + 1) + " ";
        return rows;
    }
    /// The pointer comes to a place and moves a little there.
    void PointAt(const Control& control, QPoint at) const {
        driver::MoveTo(control, at);
        driver::MoveTo(control, at + QPoint(1, 0));
    }
    /// A boat of 20 pixels with its corner there, at 5.123 knots.
    void Place(int boat, double left, double top) const {
        app->fleet.BoatLatNow[boat] = 2100;
        app->fleet.BoatSpeedNow[boat] = 5.123;
        Form().Boat[boat - 1].SetSize(20, 20);
        Form().Boat[boat - 1].Move(left, top);
        Form().Boat[boat - 1].SetVisible(true);
    }
};

TEST_F(BoatListTest, TheLeftButtonOrTheSpaceBarTicksTheRightOnePicksOut) {
    OpenFleet(4);
    RaceDisp& form = Form();
    EXPECT_EQ(InFocus(), "1 2 3 4 ");
    driver::Click(form.Bnam[1]);
    EXPECT_EQ(InFocus(), "1 3 4 ");
    form.Bnam[2].SetFocus();
    driver::Key(form.Bnam[2], Qt::Key_Space);
    EXPECT_EQ(InFocus(), "1 4 ");
    driver::Click(form.Bnam[2], Qt::RightButton);
    EXPECT_EQ(InFocus(), "3 ");
    driver::Click(form.Bnam[2]);  // one boat always stays
    EXPECT_EQ(InFocus(), "1 ");
    driver::Click(form.Maru[3]);
    EXPECT_EQ(InFocus(), "1 4 ");
    driver::Click(form.Bnam[1], Qt::RightButton);
    EXPECT_EQ(InFocus(), "2 4 ");
    driver::Click(form.Bnam[3]);  // a ring keeps its boat in focus
    EXPECT_EQ(InFocus(), "2 4 ");
    form.HScroll2.SetValue(40);
    driver::MoveTo(form.Picture8, {250, 20});
    driver::Click(form.Label5);
    EXPECT_EQ(InFocus(), "1 2 3 4 ");
    EXPECT_EQ(form.HScroll2.Value(), 100);
}

TEST_F(BoatListTest, AChangeOfFocusRedrawsTheMap) {
    OpenFleet(2);
    RaceDisp& form = Form();
    form.Picture1.FilledBox(0, 0, 400, 400, Red);
    driver::Click(form.Maru[1]);  // no redraw of its own
    EXPECT_EQ(form.Picture1.Image().PixelAt(200, 300), Red);
    driver::Click(form.Bnam[0]);
    EXPECT_NE(form.Picture1.Image().PixelAt(200, 300), Red);
}

TEST_F(BoatListTest, ALargeFleetRisesUnderThePointerAndSinksAgain) {
    OpenFleet(50);
    RaceDisp& form = Form();
    const auto lowered = [&] {
        return form.Picture8.Top() == RaceDisp::PanelTop && form.Picture7.Visible();
    };
    const auto raised = [&] { return form.Picture8.Top() == 0 && !form.Picture7.Visible(); };
    EXPECT_TRUE(lowered());
    const Control* const sinking[] = {&form.Picture1, &form.PicTimeBar, &form};
    for (const Control* elsewhere : sinking) {
        driver::MoveTo(form.Bnam[3], {20, 5});
        EXPECT_TRUE(raised());
        EXPECT_FALSE(form.Text7.Visible());  // another row lies under the pointer now
        const bool ground = elsewhere == &form;
        driver::MoveTo(*elsewhere, ground ? QPoint(1200, 800) : QPoint(10, 120));
        EXPECT_TRUE(lowered());
        driver::MoveTo(form.Picture8, {250, 20});
        EXPECT_TRUE(raised());
        driver::MoveTo(*elsewhere, ground ? QPoint(1200, 801) : QPoint(11, 120));
        EXPECT_TRUE(lowered());
    }
    // At rest the control panel lies over the end of the list, and its buttons can be reached.
    driver::Click(form.Option6);
    EXPECT_TRUE(form.Option6.Value());
}

TEST_F(BoatListTest, ASmallFleetStaysWhereItIs) {
    OpenFleet(30);  // 470 pixels: down to 648
    driver::MoveTo(Form().Bnam[3], {20, 5});
    EXPECT_TRUE(Form().PanelRaised());
    EXPECT_EQ(Form().Picture8.Top(), RaceDisp::PanelTop);
    EXPECT_TRUE(Form().Picture7.Visible());
}

TEST_F(BoatListTest, RowsNameTheirBoatOnTheMap) {
    OpenFleet(4);
    RaceDisp& form = Form();
    app->fleet.BoatLatNow = {};
    Place(2, 300, 200);
    driver::MoveTo(form.Picture8, {250, 20});
    PointAt(form.Bnam[1], {20, 5});
    EXPECT_EQ(app->display.HoverBoat, 1);
    EXPECT_TRUE(form.Text8.Visible());
    EXPECT_EQ(form.Text8.Text(), "Boat 2(5.12)");
    EXPECT_EQ(form.Text8.GetForeColor(), app->display.BoatColour[2]);
    EXPECT_EQ(form.Text8.Left(), 326);
    EXPECT_EQ(form.Text8.Top(), 200);
    EXPECT_EQ(form.Text7.Text().substr(0, 25), "Cecked boats are focused.");
    EXPECT_EQ(form.Text7.Top(), form.Bnam[1].Top() + RaceDisp::PanelTop - 67);
    Place(2, form.MapSide() - 60, 200);  // no room at its right
    PointAt(form.Maru[1], {5, 5});
    EXPECT_LT(form.Text8.Left() + form.Text8.Width(), form.MapSide() - 60);
    EXPECT_EQ(form.Text7.Text().substr(0, 27), "Cecked boat is focused and ");
    driver::MoveTo(form.Picture8, {250, 20});
    PointAt(form.Bnam[2], {20, 5});  // this boat has no position
    EXPECT_FALSE(form.Text8.Visible());

    driver::Click(form.Check3);
    driver::MoveTo(form.Picture8, {250, 20});
    PointAt(form.Bnam[1], {30, 5});
    EXPECT_FALSE(form.Text7.Visible());
    EXPECT_TRUE(form.Text8.Visible());  // a name, not a hint
    driver::MoveTo(form.Picture8, {250, 20});
    EXPECT_FALSE(form.Text8.Visible());
    EXPECT_EQ(app->display.HoverBoat, -1);
}

TEST_F(BoatListTest, ABoatOnTheMapTellsItsName) {
    OpenFleet(4, false);
    RaceDisp& form = Form();
    Place(3, 300, 200);
    driver::MoveTo(form.Picture1, {310, 210});
    EXPECT_TRUE(form.Text7.Visible());
    EXPECT_EQ(form.Text7.Text(), "Boat 3(5.12)");
    EXPECT_EQ(form.Text7.GetForeColor(), app->display.BoatColour[3]);
    EXPECT_EQ(form.Text7.Top(), 185);
    driver::MoveTo(form.Label5, {50, 5});
    EXPECT_EQ(form.Text7.Text(), "ここをクリックすると全艇にチェックが入ります");
    EXPECT_EQ(form.Text7.GetForeColor(), Black);
    EXPECT_EQ(form.Text7.Left(), form.Picture8.Left() - 245);
}

}  // namespace
}  // namespace keelview
