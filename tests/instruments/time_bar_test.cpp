#include "instruments/time_bar.h"

#include <gtest/gtest.h>

#include <random>
#include <tuple>

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

}  // namespace
}  // namespace keelview
