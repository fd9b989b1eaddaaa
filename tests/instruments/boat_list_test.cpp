#include "instruments/boat_list.h"

#include <gtest/gtest.h>

#include "session/boat_colours.h"
#include "support/test_desk.h"

namespace keelview {
namespace {

struct BoatListTest : testing::Test, TestDesk {
    int PixelsOf(int boat, const Surface& surface, int left, int top, int right, int bottom) const {
        return CountPixels(surface.Image(), left, top, right, bottom,
                           [&](int r, int g, int b) { return Rgb(r, g, b) == BoatColour(boat); });
    }
    void PointAt(const Control& control) const {
        for (const QPoint at : {QPoint(5, 5), {6, 5}}) driver::MoveTo(control, at);
    }
};

TEST_F(BoatListTest, TheLeftButtonTicksTheRightOnePicksOutAndRingsKeepTheirBoat) {
    WriteRace(4);
    Open();
    RaceDisp& form = Form();
    const int side = static_cast<int>(app.view.MapSide);
    const struct {
        const Control& clicked;
        Qt::MouseButton button;
        const char* focused;
    } clicks[] = {{form.Bnam[1], Qt::LeftButton, "134"}, {form.Bnam[2], Qt::RightButton, "3"},
                  {form.Bnam[2], Qt::LeftButton, "1"},  // one boat always stays
                  {form.Maru[3], Qt::LeftButton, "14"},  {form.Bnam[1], Qt::RightButton, "24"},
                  {form.Bnam[3], Qt::LeftButton, "24"},  {form.Label5, Qt::LeftButton, "1234"}};
    for (const auto& click : clicks) {
        driver::MoveTo(form.Picture8, {250, 20});
        driver::Click(click.clicked, click.button);
        std::string focused;
        for (int boat = 1; boat <= 4; ++boat) {
            if (form.InFocus(boat)) focused += std::to_string(boat);
            // Its track is on the map while it is in focus.
            EXPECT_EQ(PixelsOf(boat, Map(), 0, 150, side, side - 150) > 20, form.InFocus(boat));
        }
        EXPECT_EQ(focused, click.focused);
    }
}

TEST_F(BoatListTest, ARowTellsSpeedAndWindAngleOfTheMoment) {
    tree.Sail("a.trk", Lat, Lon, 90, 8, 0, 620);
    tree.Sail("b.trk", Lat, Lon, 0, 4, 0, 300);
    tree.Race("R1.txt", "WD, 30\r\nBN, a.trk, A\r\nBN, b.trk, B\r\n");
    Open();
    const auto row = [&](int boat) {
        return Form().Text5[boat - 1].Text() + " " + Form().Text6[boat - 1].Text();
    };
    const auto bar = [&](int boat, int line) {
        const int y = static_cast<int>(Form().Bnam[boat - 1].Top()) + line;
        return PixelsOf(boat, Form().Picture8, 130, y, 210, y);
    };
    EXPECT_EQ(row(1) + ", " + row(2), "8.00 60, 4.00 -30");
    EXPECT_NEAR(bar(1, 1), 2 * bar(2, 1), 2);
    driver::Click(Form().Bnam[1]);
    EXPECT_TRUE(bar(2, 1) == 0 && bar(2, 4) > 10);  // out of focus a bar is thin
    Seek(400);                                      // its track has ended
    EXPECT_EQ(row(2), " ");
    EXPECT_TRUE(bar(2, 4) == 0 && bar(1, 1) > 20);
}

TEST_F(BoatListTest, ALargeFleetRisesUnderThePointerAndSinksAgain) {
    WriteRace(50);
    Open();
    RaceDisp& form = Form();
    form.Move(0, 0, 1024, 740);  // a screen too low for so many rows below the overview
    driver::Settle();
    for (const Control* elsewhere : std::initializer_list<const Control*>{&Map(), &form.PicTimeBar}) {
        driver::MoveTo(form.Bnam[3], {20, 5});
        EXPECT_TRUE(form.Picture8.Top() == 0 && !form.Picture7.Visible());
        EXPECT_FALSE(form.Text7.Visible());  // another row lies under the pointer now
        driver::MoveTo(*elsewhere, {5, 120});
        EXPECT_TRUE(form.Picture8.Top() == RaceDisp::PanelTop && form.Picture7.Visible());
    }
}

TEST_F(BoatListTest, ARowAndABoatOnTheMapNameTheBoatWhereThereIsRoom) {
    tree.Boat("late.trk", Lat, Lon + 0.3, 0, 0, 300, 620);
    WriteRace(2, "BN, late.trk, Late\r\n");
    Open();
    const RaceDisp& form = Form();
    const int side = static_cast<int>(app.view.MapSide);
    for (const int x : {300, side - 60}) {
        app.view.CentreOn(PositionAt(PixelOf(app.now.Boats[2].At()) + QPoint(side / 2 - x, 0)));
        Seek(50);
        PointAt(form.Bnam[1]);
        EXPECT_TRUE(form.Text8.Text().starts_with("Boat 2("));
        EXPECT_EQ(form.Text8.Left() > x, x == 300);
    }
    driver::MoveTo(Map(), PixelOf(app.now.Boats[2].At()));
    EXPECT_EQ(form.Text7.Text(), form.Text8.Text());
    PointAt(form.Bnam[2]);
    EXPECT_FALSE(form.Text8.Visible());  // that boat is nowhere now
}

}  // namespace
}  // namespace keelview
