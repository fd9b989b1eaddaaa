#include "instruments/time_bar.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "support/instrument_race.h"

namespace keelview {
namespace {

constexpr Colour Grey = Rgb(192, 192, 192);
constexpr Colour Ground = Rgb(128, 128, 128);

struct TimeBarTest : testing::Test, InstrumentRace {
    Surface& bar = Form().PicTimeBar;
    Clock& clock = app->clock;

    void Draw() {
        chart.DrawAll();
        instruments.overview.DrawOverviewMap();
        instruments.timeBar.DrawTimeBar();
    }
    Colour ZoneAt(double time) { return bar.Image().PixelAt(14, BarY(time) - 3); }
};

TEST_F(TimeBarTest, ZonesFollowTheCourseOfBoat1AgainstTheWind) {
    app->race.WindDirection = 350;
    const std::vector<double> courses{10, 261, 260, 80, 79, 170};  // of 100 seconds each
    for (std::size_t i = 0; i < courses.size(); ++i)
        SailNorth(1, static_cast<int>(i) * 100, static_cast<int>(i) * 100 + 99, 2100, 8400, courses[i]);
    Draw();
    const std::vector<Colour> zones{White, White, Grey,
                                    Grey,  White, Grey};  // exactly 90 degrees is downwind
    for (std::size_t i = 0; i < zones.size(); ++i)
        EXPECT_EQ(ZoneAt(static_cast<double>(i) * 100 + 40), zones[i]) << courses[i];
    EXPECT_EQ(ZoneAt(-50), Ground);
    EXPECT_EQ(bar.Image().PixelAt(2, BarY(0)), Rgb(0, 255, 0));
    EXPECT_EQ(bar.Image().PixelAt(2, 30), Rgb(0, 255, 0));
}

// Boxes from each point up to y 50, painted one over the other, are what a zone is; times may be in any
// order.
TEST_F(TimeBarTest, ZonesLookLikeBoxesPaintedInTheOrderOfThePoints) {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> step(-3, 9);
    std::uniform_real_distribution<double> course(0, 360);
    for (int t = -200; t < 700; t += step(random)) SailNorth(1, t, t, 2100, 8400, course(random));
    Draw();
    const Picture drawn = bar.Image();
    bar.Cls();
    for (std::size_t i = 2; i < app->tracks.TrackTime[1].size(); ++i) {
        const double y = (600 - app->tracks.TrackTime[1][i]) * app->display.GraphTimeScale + 30;
        const double angle = app->tracks.TrackCourse[1][i];
        bar.FilledBox(8, std::floor(y + 0.5), 20, 50, angle < 90 || angle > 270 ? White : Grey);
    }
    const Picture painted = bar.Image();
    const int start = BarY(0);
    int same = 0;
    for (int y = 31; y < painted.Height(); ++y)
        if (std::abs(y - start) > 1) same += drawn.PixelAt(14, y) == painted.PixelAt(14, y) ? 1 : -10000;
    EXPECT_GT(same, painted.Height() - 40);
}

TEST_F(TimeBarTest, AClickJumpsTheReplayAndTheFrameKeepsItInTheRange) {
    SailNorth(1, -200, 600, 2100, 8400, 0);
    app->race.CourseCount = 2;
    app->passes.FirstPassTime[2] = 500;
    Draw();
    app->fleet.FinishedCount = 1;
    driver::ClickAt(bar, {10, BarY(550)});
    EXPECT_NEAR(clock.ReplayTime, 550, SecondsPerPixel());
    EXPECT_EQ(app->fleet.FinishedCount, 1);
    EXPECT_NEAR(app->fleet.BoatLatNow[1], 2100.75, 0.01);
    EXPECT_NEAR(Form().Line5.Y1(), BarY(550), 1);
    driver::ClickAt(bar, {10, BarY(300)});
    EXPECT_NEAR(clock.ReplayTime, 300, SecondsPerPixel());
    EXPECT_EQ(app->fleet.FinishedCount, 0);
    for (const int outside : {3, bar.Image().Height() - 2}) {  // after the finish, before the range
        driver::ClickAt(bar, {10, outside});
        EXPECT_GE(clock.ReplayTime, -210);
        EXPECT_LE(clock.ReplayTime, 600);
    }
}

TEST_F(TimeBarTest, AShiftDragLimitsTheReplayInEitherDirection) {
    SailNorth(1, -200, 600, 2100, 8400, 0);
    for (const auto& [from, to] : {std::pair{100, 400}, {400, 100}}) {
        clock.ReplayRangeStart = -210;
        clock.ReplayRangeEnd = 600;
        app->display.ShowTracks = false;
        Draw();
        driver::Press(driver::Face(bar), {10, BarY(from)}, Qt::LeftButton, Qt::ShiftModifier);
        app->display.HeldKey = ShiftKey;
        driver::MoveTo(bar, {10, BarY(to)});
        EXPECT_EQ(bar.Image().PixelAt(3, BarY(250)), Yellow);
        EXPECT_EQ(bar.Image().PixelAt(3, BarY(50)), Ground);
        driver::Release(driver::Face(bar), {10, BarY(to)}, Qt::LeftButton, Qt::ShiftModifier);
        EXPECT_NEAR(clock.ReplayRangeStart, 100, SecondsPerPixel());
        EXPECT_NEAR(clock.ReplayRangeEnd, 400, SecondsPerPixel());
        EXPECT_EQ(clock.ReplayTime, clock.ReplayRangeStart);
        EXPECT_TRUE(app->display.ShowTracks);
        clock.ReplayTime = 450;
        frame.DrawFrame();
        EXPECT_EQ(clock.ReplayTime, clock.ReplayRangeStart);
    }
    driver::Press(driver::Face(bar), {10, 200}, Qt::RightButton, Qt::ShiftModifier);
    EXPECT_EQ(bar.Image().PixelAt(3, BarY(250)), Ground);
    driver::Release(driver::Face(bar), {10, 200}, Qt::RightButton, Qt::ShiftModifier);
    EXPECT_EQ(clock.ReplayRangeStart, -240);
    EXPECT_EQ(clock.ReplayRangeEnd, 840);
}

TEST_F(TimeBarTest, AShiftPressWithoutADragLeavesClockAndRangeAlone) {
    SailNorth(1, -200, 600, 2100, 8400, 0);
    Draw();
    clock.ReplayTime = 77;
    const auto unchanged = [&] {
        EXPECT_EQ(clock.ReplayTime, 77);
        EXPECT_EQ(clock.ReplayRangeStart, -210);
        EXPECT_EQ(clock.ReplayRangeEnd, 600);
    };
    driver::Press(driver::Face(bar), {10, 300}, Qt::LeftButton, Qt::ShiftModifier);
    driver::Release(driver::Face(bar), {10, 300}, Qt::LeftButton, Qt::ShiftModifier);
    unchanged();
    driver::Press(driver::Face(bar), {10, 300}, Qt::LeftButton,
                  Qt::ShiftModifier);  // Shift goes up before the button does
    driver::Release(driver::Face(bar), {10, 200});
    unchanged();
    app->display.HeldKey = ShiftKey;
    driver::MoveTo(bar, {10, 100});
    EXPECT_EQ(bar.Image().PixelAt(3, 150), Ground);
}

TEST_F(TimeBarTest, TheOverviewShowsTheMomentUnderThePointer) {
    SailNorth(1, 0, 600, 2100, 8400, 0);
    SailNorth(2, 0, 200, 2100, 8400, 0);
    Draw();
    Form().RaiseBoatList();
    driver::MoveTo(bar, {10, BarY(400)});
    EXPECT_FALSE(Form().PanelRaised());
    EXPECT_FALSE(app->display.PointerOnTimeBar);  // the first move has only lowered the list
    driver::MoveTo(bar, {11, BarY(400)});
    EXPECT_TRUE(app->display.PointerOnTimeBar);
    EXPECT_FALSE(Form().BoatS[1].Visible());
    ASSERT_TRUE(Form().BoatS[0].Visible());
    const ScreenPoint at = instruments.overview.ToOverview(2100.4, 8400);
    EXPECT_NEAR(Form().BoatS[0].Top(), at.Y - 2, 0.2);
    clock.ReplayTime = 100;
    frame.DrawFrame();  // leaves the markers to the bar
    EXPECT_NEAR(Form().BoatS[0].Top(), at.Y - 2, 0.2);
    app->display.PointerOnTimeBar = false;
    app->fleet.BoatInView = true;
    frame.DrawFrame();
    EXPECT_NEAR(Form().BoatS[0].Top(), instruments.overview.ToOverview(2100.1, 8400).Y - 2, 0.2);
}

TEST_F(TimeBarTest, TheHintTellsTheTimeAndTheWaysOfTheBar) {
    SailNorth(1, 0, 600, 2100, 8400, 0);
    Draw();
    driver::MoveTo(bar, {10, BarY(100)});
    const int second = static_cast<int>(std::floor(600 - (BarY(100) - 30) * SecondsPerPixel() + 0.5));
    const std::string time =
        "2004/08/05 12:31:" + std::to_string(second - 60) + "   (" + std::to_string(second) + " Sec)";
    const TextBox& hint = Form().Text7;
    EXPECT_TRUE(hint.Visible());
    EXPECT_EQ(hint.Text().substr(0, time.size()), time);
    EXPECT_NE(hint.Text().find("\n\nShift+ Drag & drop to focus play back period."), std::string::npos);
    EXPECT_EQ(hint.Left(), bar.Left() - 265);
    driver::MoveTo(bar, {10, bar.Image().Height() - 2});
    EXPECT_EQ(hint.Top(), Form().MapSide() - 91);
    app->display.HintsOn = false;
    driver::MoveTo(bar, {10, BarY(100)});
    EXPECT_EQ(hint.Text(), time);
    EXPECT_EQ(hint.Width(), 200);
}

TEST_F(TimeBarTest, BesideTheGraphsTheHintTellsTheWind) {
    Wind({0, 400}, {350, 10}, 12.25);
    Draw();
    app->display.ViewMode = ViewKind::Graph;
    driver::MoveTo(bar, {10, BarY(305)});
    const std::string wind = "12:35:0" + std::to_string(SecondAt(BarY(305)) - 300) + "   365 /  12.3";
    EXPECT_EQ(Form().Text7.Text(), wind);
    EXPECT_EQ(Form().Line1.Y1(), BarY(305));
    driver::MoveTo(bar, {10, BarY(500)});  // no wind there: the cursor goes on alone
    EXPECT_EQ(Form().Line1.Y1(), BarY(500));
    EXPECT_EQ(Form().Text7.Text(), wind);
}

TEST_F(TimeBarTest, ARaceWithoutASpanTakesNoMouse) {
    app->race.ReplaySpan = 0;
    Draw();
    driver::Press(driver::Face(bar), {10, 100}, Qt::RightButton, Qt::ShiftModifier);
    driver::MoveTo(bar, {10, 120});
    driver::Release(driver::Face(bar), {10, 140}, Qt::RightButton, Qt::ShiftModifier);
    EXPECT_EQ(clock.ReplayRangeEnd, 600);
    EXPECT_FALSE(app->display.PointerOnTimeBar);
}

}  // namespace
}  // namespace keelview
