#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "base/dates.h"
#include "support/test_desk.h"

namespace keelview {
namespace {

struct StopTest : testing::Test, TestDesk {
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
        EXPECT_TRUE(app.shown.ViewMode != ViewKind::Graph || form.Line1.Y1() == y);
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
    using Deed = std::function<void()>;
    const auto click = [](const Control& control) { return [&control] { driver::Click(control); }; };
    const auto move = [](const Control& control, QPoint at) {
        return [&control, at] { driver::MoveTo(control, at); };
    };
    const auto press = [](const Control& control, QPoint at, Qt::MouseButton button = Qt::LeftButton,
                          Qt::KeyboardModifiers held = {}) {
        return [=, &control] { driver::ClickAt(control, at, button, held); };
    };
    const Deed deeds[]{
        // The map is enlarged, shrunk, moved, shown as a whole, moved by the overview.
        press(Map(), {300, 400}), press(Map(), {350, 420}), press(Map(), {300, 400}, Qt::RightButton),
        press(Map(), {340, 410}, Qt::LeftButton, Qt::ShiftModifier),
        press(Map(), {9, 400}, Qt::RightButton, Qt::ShiftModifier), press(form.Picture6, {60, 60}),
        click(form.Option7),
        // Wind up, the wind turned and typed, lines across it.
        click(form.Option3), press(form.Picture6, {60, 60}, Qt::RightButton),
        [&] { driver::Type(form.Text3, "45"); }, click(form.Check4), click(form.Option2),
        // Colours and what is shown, focus and rings.
        click(form.BCOL6), click(form.BCOL1), click(form.Check1), click(form.Check1), click(form.Check7),
        click(form.Check6), click(form.Check6), click(form.Check8), click(form.Check10),
        click(form.Bnam[1]), click(form.Bnam[1]), click(form.Maru[0]), click(form.Label5),
        // A distance, auto trace and its zoom, the wind's graph, marks and course.
        click(form.Check2), press(Map(), {300, 400}), click(form.Check5), click(form.Check9),
        [&] { form.HScroll2.SetValue(50); }, click(form.Check5), press(form.Picture2, {40, 90}),
        click(form.Command2), press(Map(), {500, 500}), click(form.Command5), press(Map(), {500, 500}),
        // The pointer about the form, the graphs, the tables and back.
        move(form.Picture7, {130, 5}), move(form.Picture8, {250, 20}), move(form.PicTimeBar, {10, 200}),
        click(form.Option10), move(form.PicTimeBar, {10, 300}), move(form.GPIC, {150, 300}),
        press(form.GPIC, {150, 300}), click(form.Option11), click(form.Option4),
        press(form.PicTime, {300, 300}), click(form.Command11), click(form.Option9),
        [&] { form.HScroll1.SetValue(9); }, [&] { form.Move(0, 0, 1100, 900); }};
    for (std::size_t deed = 0; deed < std::size(deeds); ++deed) {
        SCOPED_TRACE("deed " + std::to_string(deed));
        deeds[deed]();
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
    const auto pressTwice = [&](const Control& option, const std::function<void()>& meanwhile) {
        driver::Click(option);
        meanwhile();
        driver::Click(option);
    };
    pressTwice(Form().Option6, [&] { TheFilm().HoldFor(Film::Hold::MapClick); });
    EXPECT_TRUE(Form().Timer1.Enabled());
    pressTwice(Form().Option8, [&] { TheFilm().Play(1); });
    EXPECT_LT(app.clock.ReplayStep, 0);
    pressTwice(Form().Option7, [&] { TheFilm().Play(1); });
    EXPECT_FALSE(Form().Timer1.Enabled());
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
        for (int boat = 0; boat < 3; ++boat)
            for (const CheckBox* box : {&form.Bnam[boat], &form.Maru[boat]})
                text += box->Value() ? '1' : '0';
        for (const CheckBox* box : {&form.Check1, &form.Check4, &form.Check5, &form.Check6, &form.Check9})
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
