#include "session/film.h"

#include <gtest/gtest.h>

#include <QWidget>
#include <functional>
#include <string>

#include "base/dates.h"
#include "support/album.h"
#include "support/test_desk.h"

namespace keelview {
namespace {

struct FilmTest : testing::Test, TestDesk {
    bool Runs() const { return Form().Timer1.Enabled(); }
    void Tick() const { Form().Timer1.OnTimer(); }
    /// A second by the system's clock in which the film ticks so often.
    void Second(int ticks, double length = 1) {
        for (int tick = 0; tick < ticks; ++tick) Tick();
        platform.Seconds += length;
        Form().Timer3.OnTimer();
    }
};

TEST_F(FilmTest, AFilmStandsUntilTheLastReasonIsGone) {
    Open();
    Film& film = TheFilm();
    const auto after = [&](auto... steps) {
        (steps(), ...);
        return Runs();
    };
    const auto play = [&] { film.Play(1); };
    const auto hold = [&](Film::Hold why) { return [&film, why] { film.HoldFor(why); }; };
    const auto release = [&](Film::Hold why) { return [&film, why] { film.Release(why); }; };
    using enum Film::Hold;
    EXPECT_TRUE(after(play));
    EXPECT_FALSE(after(hold(MapClick), hold(MapClick), hold(DataPage), release(MapClick)));
    EXPECT_FALSE(after(play));
    EXPECT_TRUE(after(release(DataPage)));
    EXPECT_FALSE(after(
        hold(WindEntry), [&] { film.Stop(); }, release(WindEntry)));
    EXPECT_TRUE(film.Stopped() && after(play));
    EXPECT_FALSE(after([&] { Form().Close(); }, play));
}

TEST_F(FilmTest, StartAndFinishAreGoneToAsFarAsTheyArePlayed) {
    const auto lineAt = [](double second) {
        const Position west{Lat + SixKnots * second, Lon - 0.05};
        return "LN, " + RaceTree::PositionText(west) + ", " +
               RaceTree::PositionText({west.Lat, west.Lon + 0.3}) + "\r\n";
    };
    for (const bool finishes : {false, true}) {
        WriteRace(2, finishes ? lineAt(10) + lineAt(300) + "CRS, L1, L2\r\n" : "");
        Open();
        const int finish = finishes ? FinishTime(app.passes, 2).value_or(0) : 620;
        EXPECT_NEAR(finish, finishes ? 300 : 620, 2);
        // A range, and what is shown of start and finish.
        const double cases[][4] = {{-210, 900, 0, finish * 1.0},
                                   {90, 900, 90, finish * 1.0},
                                   {-210, 200, 0, std::min(finish, 200) * 1.0},
                                   {-210, -50, -50, -50},
                                   {700, 900, 700, 700}};
        for (const auto& [from, to, start, end] : cases) {
            TheFilm().SetRange(from, to);
            TheFilm().SeekStart();
            EXPECT_EQ(app.now.Time, start) << from;
            TheFilm().SeekFinish();
            EXPECT_EQ(app.now.Time, end) << from;
        }
    }
}

TEST_F(FilmTest, TheRangeWrapsBothWaysAndEndsWithTheTracks) {
    Open();
    TheFilm().SetRace();
    EXPECT_EQ(app.clock.ReplayTime, -200);
    // A range, a time, and what is shown of it.
    const double cases[][4] = {{-210, 600, 599, 599},  {-210, 600, 600, -210}, {-210, 600, -210.5, 600},
                               {100, 200, 200.5, 100}, {100, 200, 99.5, 200},  {100, 900, 620.5, 100},
                               {100, 900, 99.5, 620}};
    for (const auto& [from, to, time, shown] : cases) {
        TheFilm().SetRange(from, to);
        EXPECT_EQ(app.now.Time, from);
        Seek(time);
        EXPECT_TRUE(app.clock.ReplayTime == shown && app.now.Time == shown && !Runs()) << time;
    }
}

TEST_F(FilmTest, TheStepFollowsTheTicksOfAWholeSecond) {
    Open();
    Film& film = TheFilm();
    film.Play(1);
    Second(0);  // what was ticked before
    film.SetSpeed(10);
    Second(20);
    EXPECT_EQ(app.clock.ReplayStep, 0.5);
    film.SetSpeed(15);
    Second(2);      // too few to tell
    Second(5, 60);  // the machine was asleep
    EXPECT_EQ(app.clock.ReplayStep, 0.75);
    film.Play(-1);
    EXPECT_EQ(app.clock.ReplayStep, -0.75);
    Second(10);
    const double before = app.clock.ReplayTime;
    Tick();
    EXPECT_EQ(app.clock.ReplayTime, before - 1.5);
    film.Stop();
    Tick();
    EXPECT_EQ(app.clock.ReplayTime, before - 1.5);
    film.Step(1);
    EXPECT_EQ(app.clock.ReplayTime, before);
}

TEST_F(FilmTest, TheSpeedBarAndTheStepButtonsMoveTheClock) {
    Open();
    for (const auto& [value, speed] : {std::pair{1, 1.0}, {10, 10.0}, {11, 20.0}, {19, 100.0}}) {
        Form().HScroll1.SetValue(value);
        EXPECT_EQ(app.clock.SpeedMultiplier, speed);
    }
    EXPECT_EQ(Form().Text2.Text(), "100 x spd");
    driver::Click(Form().Option6);
    driver::Click(Form().Command7);
    EXPECT_TRUE(app.clock.ReplayStep < 0 && Form().Option7.Value() && !Runs());
    Seek(100);
    app.clock.ReplayStep = 0.161;
    driver::Click(Form().Command7);
    EXPECT_EQ(app.clock.ReplayTime, 99);
    app.clock.ReplayStep = 3.03;
    driver::Click(Form().Command6);
    EXPECT_NEAR(app.clock.ReplayTime, 102.03, 1e-9);
}

TEST_F(FilmTest, WaterWithoutBoatsIsSkipped) {
    tree.Boat("late.trk", Lat, Lon, SixKnots, 0, 100, 620);
    tree.Race("R1.txt", "BN, late.trk, Late\r\n");
    Open();
    TheFilm().Play(1);
    Tick();
    EXPECT_GE(app.clock.ReplayTime, 100);
    EXPECT_LT(app.clock.ReplayTime, 106);
}

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
    for (CheckBox* box : {&form.Bnam[1], &form.Maru[2], &form.Check6, &form.Check5, &form.Check9})
        driver::Click(*box);
    form.Move(0, 0, 1100, 800);
    ExpectLooksAsEver(form, "resized");
}

}  // namespace
}  // namespace keelview
