#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "base/dates.h"
#include "support/test_desk.h"

namespace keelview {
namespace {

struct StopTest : testing::Test, TestDesk {
    struct Deed {
        const char* name;
        std::function<void()> act;
    };

    /// All that moves with the clock stands where second `time` has it; the boats sail north.
    void ExpectMoment(double time) const {
        const RaceDisp& form = Form();
        EXPECT_TRUE(form.Option7.Value() && !form.Timer1.Enabled());
        EXPECT_EQ(app.clock.ReplayTime, time);
        EXPECT_EQ(app.now.Time, time);
        const double y = desk->timeBar.Axis().Y(time);
        EXPECT_EQ(form.Line5.Y1(), y);
        EXPECT_EQ(form.Text11.Text(), DurationText(static_cast<int>(time)));
        EXPECT_EQ(form.Text1.Text(), DateTimeText(RaceTree::Start + static_cast<int>(time)));
        if (app.shown.ViewMode == ViewKind::Graph) {
            EXPECT_EQ(form.Line1.Y1(), y);
        }
        if (app.shown.ViewMode != ViewKind::Map) return;
        const QPoint at = PixelOf({Lat + SixKnots * time, Lon});
        const Sprite& boat = form.Boat[0];
        EXPECT_NEAR(boat.Left() + boat.Width() / 2, at.x(), 1);
        EXPECT_NEAR(boat.Top() + boat.Height() / 2, at.y(), 1);
    }
};

TEST_F(StopTest, NothingThatIsClickedMovesTheClockAndThePictureIsAlwaysThatOfItsMoment) {
    WriteRace(2, "WD, 30\r\nWF, w.csv\r\n" + RaceTree::LineAcross(0.2) + "CRS, L1, L1\r\n");
    tree.Wind("w.csv", {{0, 10, 350}, {300, 12, 10}});
    Open();
    RaceDisp& form = Form();
    const auto click = [](const char* name, const Control& control) {
        return Deed{name, [&control] { driver::Click(control); }};
    };
    const auto clickMap = [this](const char* name, QPoint at, Qt::MouseButton button = Qt::LeftButton) {
        return Deed{name, [=, this] { ClickMap(at, button); }};
    };
    const auto moveTo = [](const char* name, const Control& control, QPoint at) {
        return Deed{name, [&control, at] { driver::MoveTo(control, at); }};
    };
    const std::vector<Deed> deeds{
        clickMap("enlarge", {300, 400}),
        clickMap("enlarge", {350, 420}),
        clickMap("shrink", {300, 400}, Qt::RightButton),
        {"move the view",
         [&] {
             driver::ClickAt(Map(), {340, 410}, Qt::LeftButton, Qt::ShiftModifier);
         }},
        {"whole area",
         [&] {
             driver::ClickAt(Map(), {9, 400}, Qt::RightButton, Qt::ShiftModifier);
         }},
        {"overview",
         [&] {
             driver::ClickAt(form.Picture6, {60, 60});
         }},
        click("stop again", form.Option7),
        click("wind up", form.Option3),
        {"turn",
         [&] {
             driver::ClickAt(form.Picture6, {60, 60}, Qt::RightButton);
         }},
        {"type the wind", [&] { driver::Type(form.Text3, "45"); }},
        click("lines across", form.Check4),
        click("north up", form.Option2),
        click("colour", form.BCOL6),
        click("colour", form.BCOL1),
        click("minutes", form.Check1),
        click("no minutes", form.Check1),
        click("no coast", form.Check7),
        click("no tracks", form.Check6),
        click("tracks", form.Check6),
        click("no lay lines", form.Check8),
        click("true size", form.Check10),
        click("focus", form.Bnam[1]),
        click("focus", form.Bnam[1]),
        click("ring", form.Maru[0]),
        click("all in focus", form.Label5),
        click("measure", form.Check2),
        clickMap("from here", {300, 400}),
        click("auto trace", form.Check5),
        click("names", form.Check9),
        {"zoom", [&] { form.HScroll2.SetValue(50); }},
        click("no auto trace", form.Check5),
        {"wind graph",
         [&] {
             driver::ClickAt(form.Picture2, {40, 90});
         }},
        click("set a mark", form.Command2),
        clickMap("mark", {500, 500}),
        click("order the course", form.Command5),
        clickMap("entry", {500, 500}),
        moveTo("to the panel", form.Picture7, {130, 5}),
        moveTo("to the list", form.Picture8, {250, 20}),
        moveTo("time bar", form.PicTimeBar, {10, 200}),
        click("graphs", form.Option10),
        moveTo("time bar", form.PicTimeBar, {10, 300}),
        moveTo("into the graphs", form.GPIC, {150, 300}),
        {"press the graphs",
         [&] {
             driver::ClickAt(form.GPIC, {150, 300});
         }},
        click("tables", form.Option11),
        click("another table", form.Option4),
        {"press the page",
         [&] {
             driver::ClickAt(form.PicTime, {300, 300});
         }},
        click("leave the page", form.Command11),
        click("map", form.Option9),
        {"speed", [&] { form.HScroll1.SetValue(9); }},
        {"resize", [&] { form.Move(0, 0, 1100, 900); }},
    };
    for (const Deed& deed : deeds) {
        SCOPED_TRACE(deed.name);
        deed.act();
        driver::Settle();
        // A second of the timers, as if they fired against all reason.
        form.Timer3.OnTimer();
        form.Timer1.OnTimer();
        driver::MoveTo(form.Picture7, {131, 5});
        ExpectMoment(50);
    }
    driver::Click(form.Command6);
    ExpectMoment(51);
    driver::Click(form.Command7);
    driver::Click(form.Command7);
    ExpectMoment(49);
}

TEST_F(StopTest, EveryPressOfTheFilmsOptionsActsAlsoOnTheOneThatIsSelected) {
    Open();
    RaceDisp& form = Form();
    driver::Click(form.Option6);
    TheFilm().HoldFor(Film::Hold::MapClick);
    driver::Click(form.Option6);
    EXPECT_TRUE(form.Timer1.Enabled());
    driver::Click(form.Option8);
    TheFilm().Play(1);
    driver::Click(form.Option8);
    EXPECT_LT(app.clock.ReplayStep, 0);
    driver::Click(form.Option7);
    TheFilm().Play(1);
    driver::Click(form.Option7);
    EXPECT_FALSE(form.Timer1.Enabled());
}

TEST_F(StopTest, AViewWithoutBoatsIsSearchedOnceAndStaysUnderThePointer) {
    Open();
    const Position empty{Lat + 5, Lon + 5};
    app.view.CentreOn(empty);
    TheFilm().Play(1);
    const auto tick = [this] {
        const double before = app.clock.ReplayTime;
        Form().Timer1.OnTimer();
        return app.clock.ReplayTime - before;
    };
    for (int time = 0; time < 3; ++time) EXPECT_EQ(tick(), app.clock.ReplayStep);
    app.view.CentreOn({Lat + 0.5, Lon});  // they come by at second 300
    app.view.ZoomFactor = 20;
    EXPECT_GT(tick(), 200);
    Seek(400);  // and are gone
    EXPECT_EQ(tick(), app.clock.ReplayStep);
    app.view.CentreOn(empty);
    driver::MoveTo(Map(), {300, 300});
    const auto seconds = [&](int count) {
        for (int second = 0; second < count; ++second) Form().Timer3.OnTimer();
        return app.view.ViewCentreLat == empty.Lat;
    };
    EXPECT_TRUE(seconds(30));
    driver::MoveTo(Form().Picture7, {130, 5});
    EXPECT_TRUE(seconds(10));
    EXPECT_FALSE(seconds(1));
}

TEST_F(StopTest, AResizeKeepsFocusRingsAndTicks) {
    WriteRace(3);
    Open();
    RaceDisp& form = Form();
    const auto ticks = [&] {
        std::string text;
        for (const CheckBox* box :
             {&form.Bnam[0], &form.Bnam[1], &form.Bnam[2], &form.Maru[0], &form.Maru[1], &form.Maru[2],
              &form.Check1, &form.Check3, &form.Check4, &form.Check5, &form.Check6, &form.Check7,
              &form.Check8, &form.Check9, &form.Check10})
            text += box->Value() ? '1' : '0';
        return text;
    };
    for (CheckBox* box : {&form.Bnam[1], &form.Maru[2], &form.Check6, &form.Check5, &form.Check9})
        driver::Click(*box);
    const std::string before = ticks();
    form.Move(0, 0, 1100, 800);
    driver::Settle();
    EXPECT_EQ(ticks(), before);
    EXPECT_TRUE(form.Picture12.Visible());
    EXPECT_EQ(PixelOf(app.view.Centre()).x(), std::lround(form.MapSide() / 2));
}

}  // namespace
}  // namespace keelview
