#include "instruments/overview.h"

#include <gtest/gtest.h>

#include "session/boat_colours.h"
#include "support/test_desk.h"

namespace keelview {
namespace {

struct OverviewTest : testing::Test, TestDesk {
    QPointF Marker() const { return {Form().BoatS[0].Left() + 2, Form().BoatS[0].Top() + 2}; }
    void PressFromMiddle(QPoint off, Qt::MouseButton button) const {
        const int middle = Form().Picture6.Image().Height() / 2;
        driver::ClickAt(Form().Picture6, QPoint(middle, middle) + off, button);
    }
};

TEST_F(OverviewTest, MarkersFollowTheFilmAndThePointerOnTheTimeBarInEveryTurnOfTheMap) {
    tree.Boat("short.trk", Lat, Lon + 0.2, 0, 0, 0, 250);
    WriteRace(1, "WD, 90\r\nBN, short.trk, Short\r\n");
    Open();
    const int y = static_cast<int>(desk->timeBar.Axis().Y(400));
    const Picture& drawn = Form().Picture6.Image();
    // Pixels for a hundred seconds: the area's span takes three quarters of the side.
    const double step = SixKnots * 100 / app.area.AreaSpan * 0.75 * drawn.Height();
    for (const auto& [top, north] :
         {std::pair{&Form().Option2, QPointF(0, -step)}, {&Form().Option3, {-step, 0}}}) {
        driver::Click(*top);
        Seek(100);
        const QPointF first = Marker();
        const auto expectSteps = [&](double steps) {
            EXPECT_LT((Marker() - first - steps * north).manhattanLength(), 1.5);
            EXPECT_EQ(Form().Picture6.Image().PixelAt(qRound(Marker().x()), qRound(Marker().y())),
                      BoatColour(1));
        };
        Seek(300);
        expectSteps(2);
        EXPECT_FALSE(Form().BoatS[1].Visible());  // its track has ended
        for (const int x : {10, 11}) driver::MoveTo(Form().PicTimeBar, {x, y});
        Seek(200);  // the film leaves the markers to the bar
        expectSteps(3);
        driver::MoveTo(Form().Picture8, {250, 20});
        expectSteps(1);
        EXPECT_TRUE(Form().BoatS[1].Visible());
    }
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
    struct Case {
        bool northUp, edit;
        QPoint off;
        int turned;
    };
    for (const Case& c :
         {Case{true, true, {40, 0}, 300}, Case{false, false, {40, 0}, 300}, Case{false, true, {40, 0}, 30},
          Case{false, true, {40, 40}, 75}, Case{false, true, {-40, -40}, 255}}) {
        tree.Write("raceadmin/R1.txt", before);
        Open(c.edit);
        driver::Click(c.northUp ? Form().Option2 : Form().Option3);
        PressFromMiddle(c.off, Qt::RightButton);
        EXPECT_NEAR(app.race.WindDirection, c.turned, 1.5);
        EXPECT_EQ(app.now.WindNow.DirectionTrue, app.race.WindDirection);
        EXPECT_EQ(app.view.ScreenUpDirection, ScreenUp(app.race));
        EXPECT_TRUE(FileHolds("WD, " + Form().Text3.Text()));
    }
}

}  // namespace
}  // namespace keelview
