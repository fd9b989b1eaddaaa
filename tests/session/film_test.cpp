#include "session/film.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

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

TEST_F(FilmTest, NothingButPlayStartsAFilmThatWasStopped) {
    WriteRace(2, "WF, w.csv\r\n" + RaceTree::LineAcross(0.2) + "CRS, L1, L1\r\n");
    tree.Wind("w.csv", {{0, 10, 350}, {300, 12, 10}});
    Open();
    RaceDisp& form = Form();
    const std::vector<std::function<void()>> deeds{
        [&] {
            ClickMap({300, 400});
        },
        [&] {
            ClickMap({300, 400}, Qt::RightButton);
        },
        [&] {
            driver::ClickAt(form.Picture6, {60, 60});
        },
        [&] {
            driver::ClickAt(form.PicTimeBar, {15, 300});
        },
        [&] {
            driver::ClickAt(form.Picture2, {40, 90});
        },
        [&] {
            driver::MoveTo(form.Picture8, {250, 20});
        },
        [&] { driver::Click(form.Bnam[0]); },
        [&] { driver::Click(form.Maru[0]); },
        [&] { driver::Click(form.Check1); },
        [&] { driver::Click(form.Check2); },
        [&] { driver::Click(form.Check5); },
        [&] { driver::Click(form.Check5); },
        [&] { driver::Click(form.BCOL6); },
        [&] { driver::Click(form.Option3); },
        [&] { driver::Type(form.Text3, "45"); },
        [&] { driver::Click(form.Option10); },
        [&] {
            driver::MoveTo(form.GPIC, {150, 300});
        },
        [&] { driver::Click(form.Option11); },
        [&] {
            driver::ClickAt(form.PicTime, {300, 300});
        },
        [&] { driver::Click(form.Option9); },
        [&] { driver::Click(form.Command2); },
        [&] {
            ClickMap({500, 500});
        },
        [&] { driver::Click(form.Command5); },
        [&] {
            ClickMap({500, 500});
        },
        [&] {
            driver::MoveTo(form.Picture7, {130, 5});
        },
        [&] { driver::Click(form.Command8); },
        [&] { form.HScroll1.SetValue(9); },
        [&] { form.Move(0, 0, 1100, 900); },
    };
    for (std::size_t deed = 0; deed < deeds.size(); ++deed) {
        deeds[deed]();
        driver::Settle();
        EXPECT_FALSE(Runs()) << deed;
        EXPECT_TRUE(form.Option7.Value()) << deed;
    }
    driver::Click(form.Option6);
    EXPECT_TRUE(Runs());
}

TEST_F(FilmTest, AFilmStandsUntilTheLastReasonIsGone) {
    Open();
    Film& film = TheFilm();
    film.Play(1);
    EXPECT_TRUE(Runs());
    film.HoldFor(Film::Hold::MapClick);
    film.HoldFor(Film::Hold::MapClick);
    film.HoldFor(Film::Hold::DataPage);
    film.Release(Film::Hold::MapClick);
    EXPECT_FALSE(Runs());
    film.Play(-1);
    EXPECT_FALSE(Runs());
    film.Release(Film::Hold::DataPage);
    EXPECT_TRUE(Runs());
    film.HoldFor(Film::Hold::WindEntry);
    film.Stop();
    film.Release(Film::Hold::WindEntry);
    EXPECT_FALSE(Runs());
    EXPECT_TRUE(film.Stopped());
    film.Play(1);
    EXPECT_TRUE(Runs());
    film.Close();
    film.Play(1);
    EXPECT_FALSE(Runs());
}

TEST_F(FilmTest, TheRangeWrapsBothWaysAndEndsWithTheTracks) {
    Open();
    TheFilm().SetRace();
    EXPECT_EQ(app.clock.ReplayTime, -200);
    struct Case {
        double from, to;  // the range
        double time, shown;
    };
    for (const Case& each :
         {Case{-210, 600, 599, 599}, Case{-210, 600, 600, -210}, Case{-210, 600, -210.5, 600},
          Case{100, 200, 200.5, 100}, Case{100, 200, 99.5, 200}, Case{100, 900, 620.5, 100},
          Case{100, 900, 99.5, 620}}) {
        SCOPED_TRACE(each.time);
        TheFilm().SetRange(each.from, each.to);
        EXPECT_EQ(app.now.Time, each.from);
        Seek(each.time);
        EXPECT_EQ(app.clock.ReplayTime, each.shown);
        EXPECT_EQ(app.now.Time, each.shown);
        EXPECT_FALSE(Runs());
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
    EXPECT_EQ(app.clock.ReplayStep, 0.75);
    Second(2);      // too few to tell
    Second(5, 60);  // the machine was asleep
    EXPECT_EQ(app.clock.ReplayStep, 0.75);
    film.Play(-1);
    EXPECT_EQ(app.clock.ReplayStep, -0.75);
    Second(10);
    EXPECT_EQ(app.clock.ReplayStep, -1.5);
    const double before = app.clock.ReplayTime;
    Tick();
    EXPECT_EQ(app.clock.ReplayTime, before - 1.5);
    film.Stop();
    Tick();
    EXPECT_EQ(app.clock.ReplayTime, before - 1.5);
    film.Step(1);
    EXPECT_EQ(app.clock.ReplayTime, before);
}

TEST_F(FilmTest, WaterWithoutBoatsIsSkippedAndAViewWithoutBoatsPullsBack) {
    tree.Boat("late.trk", Lat, Lon, SixKnots, 0, 100, 620);
    tree.Race("R1.txt", "BN, late.trk, Late\r\n");
    Open();
    TheFilm().Play(1);
    Tick();
    EXPECT_GE(app.clock.ReplayTime, 100);
    EXPECT_LT(app.clock.ReplayTime, 106);
    app.view.CentreOn({Lat + 5, Lon});
    Seek(300);
    for (int second = 0; second < 10; ++second) Second(0);
    Seek(300);
    EXPECT_FALSE(app.now.BoatInView);
    Second(0);
    Seek(300);
    EXPECT_TRUE(app.now.BoatInView);
}

}  // namespace
}  // namespace keelview
