#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <tuple>

#include "instruments/boat_list.h"
#include "instruments/overview.h"
#include "instruments/time_bar.h"
#include "support/test_desk.h"

namespace keelview {
namespace {

struct TimeBarTest : testing::Test, TestDesk {
    Surface& Bar() const { return Form().PicTimeBar; }
    int Y(double time) const { return static_cast<int>(std::lround(desk->timeBar.Axis().Y(time))); }
    bool Marked(double time) const { return Bar().Image().PixelAt(3, Y(time)) == Yellow; }
    void DragWithShift(int from, int to, Qt::MouseButton button = Qt::LeftButton) const {
        driver::Press(driver::Face(Bar()), {10, from}, button, Qt::ShiftModifier);
        driver::KeyDown(Map(), Qt::Key_Shift);
        driver::MoveTo(Bar(), {10, to});
        driver::Release(driver::Face(Bar()), {10, to}, button, Qt::ShiftModifier);
        driver::KeyUp(Map(), Qt::Key_Shift);
    }
    void ExpectNear(double value, double time) const {
        EXPECT_NEAR(value, time, 1 / desk->timeBar.Axis().Scale());
    }
    void ExpectRange(double from, double to) const {
        ExpectNear(app.clock.ReplayRangeStart, from);
        ExpectNear(app.clock.ReplayRangeEnd, to);
    }
};

// Boxes from each fix up to y 50, painted one over the other, are what a zone is.
TEST_F(TimeBarTest, ZonesLookLikeBoxesPaintedInTheOrderOfTheFixes) {
    WriteRace(1, "WD, 350\r\n");
    Open();
    std::mt19937 random(7);
    for (double& lat : app.tracks.Boats[1].TrackLat) lat += 1e-4 * static_cast<double>(random() % 1000);
    for (double& lon : app.tracks.Boats[1].TrackLon) lon += 1e-4 * static_cast<double>(random() % 1000);
    desk->session.TheStage().Repaint(Changed::Wind);
    driver::Settle();
    const Picture drawn = Bar().Image();
    const Track& track = app.tracks.Boats[1];
    for (int fix = 2; fix <= track.Count(); ++fix) {
        const bool upwind = track.TrackCourse(fix) < 80 || track.TrackCourse(fix) > 260;
        Bar().FilledBox(8, Y(track.TrackTime[fix]), 20, 50, upwind ? White : Rgb(192, 192, 192));
    }
    for (int y = 31; y < drawn.Height(); ++y)
        EXPECT_TRUE(std::abs(y - Y(0)) < 2 || drawn.PixelAt(14, y) == Bar().Image().PixelAt(14, y)) << y;
}

TEST_F(TimeBarTest, AClickJumpsTheFilmAndEverythingShowsThatSecond) {
    Open();
    for (const int time : {550, -100, 300}) {
        driver::ClickAt(Bar(), {10, Y(time)});
        ExpectNear(app.now.Time, time);
        EXPECT_NEAR(app.now.Boats[1].At().Lat, Lat + SixKnots * app.now.Time, 1e-6);
        EXPECT_EQ(Form().Line5.Y1(), desk->timeBar.Axis().Y(app.now.Time));
        EXPECT_TRUE(TheFilm().Stopped());
    }
}

TEST_F(TimeBarTest, AShiftDragLimitsTheFilmInEitherDirectionUntilAnotherButtonLiftsIt) {
    Open();
    for (const auto& [from, to] : {std::pair{100, 400}, {400, 100}}) {
        driver::Click(Form().Check6);  // no tracks; a new range shows them again
        DragWithShift(Y(from), Y(to));
        ExpectRange(100, 400);
        EXPECT_TRUE(Marked(250) && !Marked(50) && app.shown.ShowTracks);
        EXPECT_EQ(app.now.Time, app.clock.ReplayRangeStart);
        Seek(77);
        DragWithShift(300, 300);  // no drag
        ExpectRange(100, 400);
        DragWithShift(200, 200, Qt::RightButton);
        ExpectRange(-240, 840);
        EXPECT_FALSE(Marked(250));
    }
    driver::Press(driver::Face(Bar()), {10, 300}, Qt::LeftButton, Qt::ShiftModifier);
    driver::Release(driver::Face(Bar()), {10, 200});  // Shift went up before the button
    ExpectRange(-240, 840);
    app.race.RaceDuration = -1000;  // a race without a span
    DragWithShift(100, 300);
    ExpectRange(-240, 840);
}

TEST_F(TimeBarTest, ARangeStaysMarkedWhenTheBarIsDrawnAnew) {
    Open();
    DragWithShift(Y(100), Y(300));
    desk->session.Changes().SetWindDirection(40);
    driver::Settle();
    EXPECT_TRUE(Marked(200) && !Marked(320));
    Form().Move(0, 0, 1000, 800);
    driver::Settle();
    EXPECT_TRUE(Marked(200) && !Marked(320));
    desk->session.ReloadRace();
    EXPECT_FALSE(Marked(200));
}

TEST_F(TimeBarTest, ThePointerTellsTheTimeAndBesideTheGraphsTheWind) {
    WriteRace(2, "WF, w.csv\r\n");
    tree.Wind("w.csv", {{0, 12.25, 350}, {400, 12.25, 10}});
    Open();
    const TextBox& hint = Form().Text7;
    driver::MoveTo(Bar(), {10, static_cast<int>(Bar().Height()) - 2});
    EXPECT_NE(hint.Text().find(" Sec)\nClick to change the time."), std::string::npos);
    EXPECT_EQ(hint.Top() + hint.Height(), Form().MapSide() - 10);  // it stays on the form
    driver::Click(Form().Option10);
    driver::MoveTo(Bar(), {10, Y(300)});
    EXPECT_TRUE(hint.Text().ends_with("   365 /  12.3") && Form().Line1.Y1() == Y(300)) << hint.Text();
}

struct WindPanelTest : testing::Test, TestDesk {};

TEST_F(WindPanelTest, WithAFileAllFollowsItsSamplesAndAPressTogglesTheGraph) {
    WriteRace(2, "WF, w.csv\r\nMG, -7\r\nWD, 180\r\n");
    tree.Wind("w.csv", {{0, 12, 340}, {100, 14, 20}, {300, 14, 100}});
    Open();
    // 120 degrees take 64 of the graph's pixels, about x 45; 840 seconds take 70 rows, the finish at y 15.
    using Case = std::tuple<double, const char*, double>;
    for (const auto& [time, readouts, crossX] :
         {Case{-100, "340 12", 13}, Case{25, "350 12.5", 13 + 64 / 12.0}, Case{75, "10 13.5", 29},
          Case{500, "100 14", 77}}) {
        Seek(time);
        EXPECT_EQ(Form().Text13.Text() + " " + Form().Text14.Text(), readouts);
        EXPECT_NEAR(Form().Line9.X1(), crossX, 0.01);
        EXPECT_NEAR(Form().Line8.Y1(), 15 + (600 - time) / 12, 0.01);
    }
    const auto press = [this](const Surface& face) {
        driver::ClickAt(face, {40, 60});
        return Form().sWind.Visible();
    };
    EXPECT_TRUE(Form().Text13.Visible() && !press(Form().sWind) && press(Form().Picture2));
    driver::MoveTo(Form().Picture2, {40, 90});
    EXPECT_EQ(Form().Text7.Text(), "Indicate wind direction graph or not");
    desk->session.Changes().SetWind(app.wind, "");  // the race has no wind file any more
    driver::Settle();
    driver::MoveTo(Form().Picture2, {40, 91});
    EXPECT_FALSE(Form().Text7.Visible() || Form().Text13.Visible() || Form().sWind.Visible());
    for (int time = 0; time < 2; ++time) EXPECT_FALSE(press(Form().Picture2));
}

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

TEST_F(BoatListTest, AFleetBeyondTheRowsIsScrolledWithItsTicksAndByTheKeyboard) {
    for (int boat = 1; boat <= 9; ++boat)
        tree.Boat("b" + std::to_string(boat) + ".trk", Lat, Lon + 0.1 * boat, SixKnots, 0, -60, 60);
    std::string names;
    for (int boat = 1; boat <= 90; ++boat)
        names += "BN, b" + std::to_string(boat % 9 + 1) + ".trk, Boat " + std::to_string(boat) + "\r\n";
    tree.Race("R1.txt", names);
    Open();
    RaceDisp& form = Form();
    form.Move(0, 0, 1024, 740);
    driver::Settle();
    const int rows = form.Bnam.Count();
    EXPECT_TRUE(rows < 90 && form.VScroll1.Visible());
    PointAt(form.Bnam[2]);
    driver::Click(form.Bnam[2], Qt::RightButton);
    driver::Wheel(form.Bnam[2], {5, 5}, 1);
    EXPECT_EQ(form.Bnam[0].Caption(), "Boat 4");
    EXPECT_EQ(app.shown.HoverBoat, 6);
    EXPECT_FALSE(form.Bnam[2].Value());
    EXPECT_EQ(form.Text5[2].Text(), "5.98");
    driver::Click(form.Maru[2]);
    driver::Wheel(form.Bnam[2], {5, 5}, 100);
    EXPECT_EQ(form.Bnam[rows - 1].Caption(), "Boat 90");
    driver::Wheel(form.Bnam[2], {5, 5}, -100);
    for (int boat = 1; boat <= 90; ++boat) EXPECT_EQ(form.InFocus(boat), boat == 3 || boat == 6) << boat;
    EXPECT_TRUE(form.Bnam[2].Value() && form.Maru[5].Value() && !form.Maru[2].Value());
    form.Bnam[rows - 2].SetFocus();
    driver::Key(form, Qt::Key_Tab);
    EXPECT_EQ(form.VScroll1.Value(), std::min(rows - rows / 2, 90 - rows));
    driver::Key(form, Qt::Key_Return);
    EXPECT_TRUE(form.InFocus(rows) && !form.InFocus(90));
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
