#include "instruments/boat_list.h"

#include <gtest/gtest.h>

#include "instruments/overview.h"
#include "support/test_desk.h"

namespace keelview {
namespace {

struct BoatListTest : testing::Test, TestDesk {
    void PointAt(const Control& control) const {
        for (const QPoint at : {QPoint(5, 5), {6, 5}}) driver::MoveTo(control, at);
    }
};

TEST_F(BoatListTest, TheLeftButtonTicksTheRightOnePicksOutAndRingsKeepTheirBoat) {
    WriteRace(4);
    Open();
    RaceDisp& form = Form();
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
        for (int boat = 1; boat <= 4; ++boat)
            if (form.InFocus(boat)) focused += std::to_string(boat);
        EXPECT_EQ(focused, click.focused);
    }
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

struct OverviewTest : testing::Test, TestDesk {
    QPointF Marker() const { return {Form().BoatS[0].Left() + 2, Form().BoatS[0].Top() + 2}; }
    void PressFromMiddle(QPoint off, Qt::MouseButton button) const {
        const int middle = Form().Picture6.Image().Height() / 2;
        driver::ClickAt(Form().Picture6, QPoint(middle, middle) + off, button);
    }
};

TEST_F(OverviewTest, MarkersFollowTheFilmAndThePointerOnTheTimeBar) {
    tree.Boat("short.trk", Lat, Lon + 0.2, 0, 0, 0, 250);
    WriteRace(1, "BN, short.trk, Short\r\n");
    Open();
    // Pixels for a second: the area's span takes three quarters of the side.
    const double step = SixKnots / app.area.AreaSpan * 0.75 * Form().Picture6.Image().Height();
    Seek(100);
    const QPointF first = Marker();
    const auto expectSecond = [&](double second) {
        EXPECT_LT((Marker() - first + QPointF(0, (second - 100) * step)).manhattanLength(), 1.5);
        EXPECT_EQ(Form().BoatS[1].Visible(), second < 250);  // its track has ended
    };
    Seek(300);
    expectSecond(300);
    const int y = static_cast<int>(desk->timeBar.Axis().Y(400));
    for (const int x : {10, 11}) driver::MoveTo(Form().PicTimeBar, {x, y});
    Seek(200);  // the film leaves the markers to the bar
    expectSecond(400);
    driver::MoveTo(Form().Picture8, {250, 20});
    expectSecond(200);
}

TEST_F(OverviewTest, ALeftPressMovesTheMapUnlessItFollowsTheBoatsOrIsShownAsAWhole) {
    WriteRace(2, "WD, 300\r\n");
    Open();
    driver::Click(Form().Option3);
    const auto offMiddle = [&] { return PixelOf(app.now.Boats[1].At()) - PixelOf(app.view.Centre()); };
    driver::Click(Form().Check5);
    const QPoint followed = offMiddle();
    PressFromMiddle({60, 20}, Qt::LeftButton);
    EXPECT_EQ(offMiddle(), followed);
    driver::Click(Form().Check5);
    ClickMap({300, 300});
    driver::ClickAt(Form().Picture6, Marker().toPoint());
    EXPECT_LT(offMiddle().manhattanLength(), 20);  // a pixel of the overview is ten of the map
    EXPECT_NEAR(Form().Boat[0].Left() + 7.5, PixelOf(app.now.Boats[1].At()).x(), 1);
    for (int click = 0; click < 3; ++click) ClickMap({300, 300}, Qt::RightButton);
    PressFromMiddle({60, 20}, Qt::LeftButton);
    EXPECT_EQ(app.view.ViewCentreLat, app.area.HomeCentreLat);
}

TEST_F(OverviewTest, ARightPressTurnsTheWindOfAWindwardUpMapInEditModeAndSavesIt) {
    WriteRace(2, "WD, 300\r\n");
    const std::string before = File();
    using Case = std::tuple<bool, bool, QPoint, int>;
    for (const auto& [northUp, edit, off, turned] :
         {Case{true, true, {40, 0}, 300}, Case{false, false, {40, 0}, 300}, Case{false, true, {40, 0}, 30},
          Case{false, true, {40, 40}, 75}, Case{false, true, {-40, -40}, 255}}) {
        tree.Write("raceadmin/R1.txt", before);
        Open(edit);
        driver::Click(northUp ? Form().Option2 : Form().Option3);
        PressFromMiddle(off, Qt::RightButton);
        EXPECT_NEAR(app.race.WindDirection, turned, 1.5);
        EXPECT_EQ(app.now.WindNow.DirectionTrue, app.race.WindDirection);
        EXPECT_EQ(app.view.ScreenUpDirection, ScreenUp(app.race));
        EXPECT_TRUE(FileHolds("WD, " + Form().Text3.Text()));
    }
}

}  // namespace
}  // namespace keelview
