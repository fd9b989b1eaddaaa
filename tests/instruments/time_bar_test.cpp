#include "instruments/time_bar.h"

#include <gtest/gtest.h>

#include <random>

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
    for (double& course : app.tracks.Boats[1].TrackCourse) course = static_cast<double>(random() % 360);
    desk->session.TheStage().Repaint(Changed::Wind);
    driver::Settle();
    const Picture drawn = Bar().Image();
    const Track& track = app.tracks.Boats[1];
    for (int fix = 2; fix <= track.Count(); ++fix) {
        const bool upwind = track.TrackCourse[fix] < 80 || track.TrackCourse[fix] > 260;
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
    EXPECT_TRUE(hint.Text().ends_with("   365 /  12.3")) << hint.Text();
    EXPECT_EQ(Form().Line1.Y1(), Y(300));
}

}  // namespace
}  // namespace keelview
