#include "session/film.h"

#include <gtest/gtest.h>

#include <QWidget>
#include <functional>

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
    EXPECT_FALSE(after([&] { film.Close(); }, play));
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

}  // namespace
}  // namespace keelview
