#include <gtest/gtest.h>

#include <QApplication>
#include <QWidget>
#include <set>

#include "instruments/hints.h"
#include "session/livery.h"
#include "shell/race_search.h"
#include "support/album.h"
#include "support/regatta_files.h"
#include "support/test_desk.h"

namespace keelview {
namespace {

namespace fs = std::filesystem;

struct DeskTest : testing::Test, TestDesk {
    /// A race that has something to show for every choice.
    void OpenFullRace() {
        tree.Write("coastline/5239.cst",
                   "M 523973\nL" + std::string(53, ' ') + "2\n 8000 2000 9500 6000\n");
        WriteRace(2, "WD, 40\r\nMK, 2117.2, 8369\r\nMK, 2117.5, 8369.1\r\nCRS, MK1, MK2\r\n");
        Open();
    }
};

TEST_F(DeskTest, EveryChoiceIsSeenAndTakenBackWithoutATrace) {
    OpenFullRace();
    RaceDisp& form = Form();
    // What is clicked, then what takes it back.
    using Clicks = std::initializer_list<const Control*>;
    const struct {
        const char* view;
        Clicks choices, back;
    } cases[] = {{"choice_bare", {&form.Check7, &form.Check6, &form.Check10}, {}},
                 {"choice_no_lay_lines", {&form.Check8, &form.Check1}, {}},
                 {"choice_boat", {&form.Bnam[1], &form.Maru[0]}, {}},
                 {"choice_sea", {&form.BCOL6}, {&form.BCOL1}},
                 {"choice_wind_up", {&form.Option3, &form.Check4}, {&form.Check4, &form.Option2}},
                 {"choice_graphs", {&form.Option10, &form.Bnam[0]}, {&form.Bnam[0], &form.Option9}},
                 {"choice_speeds", {&form.Option11, &form.Option5}, {&form.Option1, &form.Option9}},
                 {"choice_followed", {&form.Check5, &form.Check9, &form.Bnam[1]}, {}}};
    const auto look = [&form](const char* view) {
        driver::MoveTo(form.Picture7, {130, 5});
        ExpectLooksAsEver(form, view);
    };
    driver::Click(form.Check3);  // no hints
    driver::Click(form.BCOL1);
    for (const auto& [view, choices, back] : cases) {
        look("choice_none");
        for (const Control* choice : choices) driver::Click(*choice);
        look(view);
        for (const Control* choice : back.size() > 0 ? back : choices) driver::Click(*choice);
    }
}

TEST_F(DeskTest, TheWindThatAPersonTypesIsTakenWhenItIsFinishedAndSaved) {
    Open();
    driver::Click(Form().Option3);
    Form().Text3.SetText("77");  // by the program
    EXPECT_EQ(app.race.WindDirection, 0);
    for (const auto& [typed, wind] :
         {std::pair{"45", 45.0}, {"360", 360}, {"361", 0}, {"12.5 deg", 12.5}, {"-5", 0}}) {
        const double before = app.race.WindDirection;
        driver::Type(Form().Text3, typed);
        EXPECT_EQ(app.race.WindDirection, before);
        driver::Strike("\n");
        EXPECT_EQ(app.now.WindNow.DirectionTrue, std::fmod(wind, 360)) << typed;
        EXPECT_EQ(app.view.ScreenUpDirection, wind);
        EXPECT_EQ(FileHolds("WD, " + NumberText(wind)), wind > 0) << File();
    }
}

TEST_F(DeskTest, TypedWindIsTakenByAPauseOrWhenTheFieldIsLeft) {
    Open();
    driver::Type(Form().Text3, "45");
    ASSERT_TRUE(Form().Timer4.Enabled());
    Form().Timer4.OnTimer();
    EXPECT_TRUE(app.race.WindDirection == 45 && !Form().Timer4.Enabled());
    driver::Type(Form().Text3, "50");
    driver::ClickAt(Map(), {400, 400}, Qt::MiddleButton);
    EXPECT_EQ(app.race.WindDirection, 50);
    app.race.WindDirection = 7;  // a field that is only visited takes nothing
    driver::Click(Form().Text3);
    driver::Key(Form(), Qt::Key_Escape);
    EXPECT_EQ(app.race.WindDirection, 7);
}

TEST_F(DeskTest, KeysLeadTheFilmWhereverTheKeyboardIs) {
    Open();
    const RaceDisp& form = Form();
    const auto press = [&](Qt::Key key, Qt::KeyboardModifiers held = {}) { driver::Key(form, key, held); };
    for (const Control* focus : std::initializer_list<const Control*>{&form.Bnam[0], &form.Command2,
                                                                      &form.Option3, &form.HScroll1}) {
        driver::Face(*focus).setFocus();
        Seek(50);
        press(Qt::Key_Right);
        press(Qt::Key_Right, Qt::ShiftModifier);
        EXPECT_EQ(app.now.Time, 61);
        press(Qt::Key_Left);
        press(Qt::Key_Left, Qt::ShiftModifier);
        EXPECT_EQ(app.now.Time, 50);
        press(Qt::Key_End);
        EXPECT_EQ(app.now.Time, 600);
        press(Qt::Key_Home);
        EXPECT_EQ(app.now.Time, 0);
        press(Qt::Key_Space);
        EXPECT_TRUE(form.Option6.Value() &&
                    form.Timer1.Enabled());  // forward, though the last step went back
        press(Qt::Key_Space);
        EXPECT_TRUE(form.Option7.Value() && !form.Timer1.Enabled());
    }
    EXPECT_TRUE(form.InFocus(1) && form.Command2.GetBackColor() == ButtonFace && app.race.NorthUp);
    EXPECT_EQ(form.HScroll1.Value(), 5);
    driver::Click(form.Option8);
    press(Qt::Key_Space);
    press(Qt::Key_Space);
    EXPECT_TRUE(form.Option8.Value() && app.clock.ReplayStep < 0);  // the way it was played
    press(Qt::Key_Space);
    driver::Type(Form().Text9, "2004");
    const double time = app.now.Time;
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Left, Qt::Key_Home, Qt::Key_F11}) press(key);
    driver::Strike("?");
    EXPECT_TRUE(app.now.Time == time && form.Option7.Value() && !form.WholeScreen());
    EXPECT_EQ(form.Text9.Text(), "?2004 ");
}

TEST_F(DeskTest, EscapeLeavesOneThingAfterTheOther) {
    Open();
    RaceDisp& form = Form();
    driver::Key(form, Qt::Key_F11);
    driver::Click(form.Command3);
    driver::Key(form, Qt::Key_Question);
    const auto state = [&] {
        return std::string(form.Picture15.Visible() ? "sheet " : "") +
               (form.Command3.GetBackColor() == Yellow ? "tool " : "") +
               (form.WholeScreen() ? "whole" : "");
    };
    for (const char* then : {"sheet tool whole", "tool whole", "whole", "", ""}) {
        EXPECT_EQ(state(), then);
        driver::Key(form, Qt::Key_Escape);
    }
    for (const bool shown : {true, false}) {
        driver::Key(form, Qt::Key_Question);
        EXPECT_EQ(form.Picture15.Visible(), shown);
    }
    driver::Key(form, Qt::Key_F11);
    driver::Click(form.Option10);
    driver::Click(form.Command12);  // wind by hand
    for (const bool entering : {true, false}) {
        EXPECT_TRUE((form.Command12.GetBackColor() == Yellow) == entering && form.WholeScreen());
        driver::Key(form, Qt::Key_Escape);
    }
    EXPECT_FALSE(form.WholeScreen());
}

TEST_F(DeskTest, TheKeyboardGoesOnWhereExitLeads) {
    OpenFullRace();
    for (OptionButton* from : {&Form().Option9, &Form().Option10}) {
        driver::Click(*from);
        driver::Click(Form().Option11);
        driver::Click(Form().Command11);
        EXPECT_TRUE(from->Value() && QApplication::focusWidget() == &driver::Face(*from));
    }
}

TEST_F(DeskTest, EachViewIsCapturedWithTheBoatsTheOverviewAndTheColours) {
    OpenFullRace();
    const fs::path file = tree.Root() / "gpsdat/untitled.bmp";
    const auto capture = [&](const Control& option) {
        driver::Click(option);
        driver::Click(Form().Command10);
        EXPECT_EQ(platform.Documents.back(), file.string());
        return Picture::FromFile(file);
    };
    const Picture map = capture(Form().Option9);
    const int column = static_cast<int>(Map().Width() + 10);
    const int below = static_cast<int>(Form().Picture6.Height()) + 5;
    for (const int b : {1, 2}) EXPECT_EQ(map.PixelAt(column + 150, below + 24 + 16 * b), BoatColour(b));
    const Picture graphs = capture(Form().Option10);
    const Picture page = capture(Form().Option11);
    for (int y = 20; y < 340; ++y) {
        EXPECT_EQ(graphs.PixelAt(305, y), Form().GPIC.Image().PixelAt(300, y - 5));
        EXPECT_EQ(page.PixelAt(305, y), Form().PicTime.Image().PixelAt(300, y - 5));
    }
}

TEST_F(DeskTest, TheRaceThatItsTracksHoldIsFilledInWhereThePersonSaysSo) {
    const SimulatedRegatta regatta({.Seed = 3, .Boats = 6});
    std::string lines;
    WriteRecordings(regatta, tree, "gpsdat/s");
    for (int boat = 1; boat <= regatta.Boats.Boats.Count(); ++boat)
        lines += "BN, s" + std::to_string(boat) + ".trk, Boat " + std::to_string(boat) + "\r\n";
    tree.Race("R1.txt", lines + "MK, 2117.2, 8369\r\nCRS, MK1\r\n");
    Open();
    desk->OnFindRace = [this] { OfferFoundRace(desk->session); };
    const std::string before = File();
    for (const bool yes : {false, true}) {
        dialogs.AnswerYesNo(yes);
        driver::Click(Form().Command19);
        EXPECT_TRUE(dialogs.AllAnswered());
        EXPECT_EQ(File() == before, !yes);
    }
    EXPECT_TRUE(FileHolds("CRS, " + regatta.Course));
    EXPECT_TRUE(FileHolds("ST, " + DateTimeText(RaceTree::Start + regatta.Guns.front())));
    EXPECT_EQ(FinishOrder(app.passes), regatta.Finishes.front());
    EXPECT_FALSE(FileHolds("MK, 2117.2, 8369"));
    EXPECT_EQ(tree.Read("raceadmin/R1.txt.bak"), before);
}

TEST_F(DeskTest, TwoBoatsThatNeverRacedGiveNone) {
    OpenFullRace();
    const std::string before = File();
    desk->OnFindRace = [this] { OfferFoundRace(desk->session); };
    dialogs.AnswerOk();
    driver::Click(Form().Command19);
    EXPECT_TRUE(dialogs.AllAnswered());
    EXPECT_EQ(File(), before);
}

TEST_F(DeskTest, ExitOffersToSaveInEditModeAndStaysWhereThatFails) {
    fs::create_directories(tree.Root() / "raceadmin/taken.txt");
    const std::string other = "T1, of another race\r\n";
    tree.Write("raceadmin/Other.txt", other);
    using Case = std::tuple<const char*, const char*, std::optional<bool>>;
    for (const auto& [name, written, over] :
         {Case{"", "", {}}, Case{"Cup R2", "Cup R2.txt", {}}, Case{"x.TXT", "x.TXT", {}},
          Case{"江の島.txt", "江の島.txt", {}}, Case{"taken", "", {}}, Case{"other", "", false},
          Case{"other", "Other.txt", true}}) {
        const bool fails = *name != '\0' && *written == '\0';
        Open();
        dialogs.AnswerYesNo(true);
        dialogs.AnswerInput(name);
        if (over) dialogs.AnswerYesNo(*over);
        if (fails && !over) dialogs.AnswerOk();
        driver::Click(Form().Command1);
        EXPECT_TRUE(dialogs.AllAnswered());
        EXPECT_EQ(Form().Closed(), !fails);
        EXPECT_EQ(fs::is_regular_file(tree.Root() / "raceadmin" / written), *written != '\0') << name;
        EXPECT_EQ(tree.Read("raceadmin/Other.txt") == other, !over.value_or(false));
    }
}

TEST_F(DeskTest, TabComesToEveryControlWhereReturnAndArrowsWorkAsTheMouseDoes) {
    Open();
    std::set<QString> stops;
    for (int press = 0; press < 50; ++press) {
        driver::Key(Form(), Qt::Key_Tab);
        if (const QWidget* focus = QApplication::focusWidget()) stops.insert(focus->objectName());
    }
    for (const char* name :
         {"Text3", "Bnam(0)", "Maru(1)", "Label5", "Option6", "Command6", "Option3", "Option9", "HScroll1",
          "Command2", "Text9", "Command4", "Check5", "BCOL1", "BCOL6", "Label1"})
        EXPECT_TRUE(stops.contains(name)) << name;
    for (const char* name : {"Command2", "BCOL6", "Bnam(0)"}) {
        driver::Named(name).setFocus();
        driver::Key(Form(), Qt::Key_Return);
    }
    EXPECT_TRUE(Form().Command2.GetBackColor() == Yellow && !Form().InFocus(1));
    EXPECT_EQ(Map().BackColor, Form().BCOL6.BackColor);
    Form().Option2.SetFocus();
    driver::Key(Form().Option2, Qt::Key_Up);
    EXPECT_FALSE(app.race.NorthUp);
}

struct HintsTest : DeskTest {
    const TextBox& Box() const { return Form().Text7; }
    std::string HintOver(const Control& control) const {
        // The box of the hint before may lie in the way.
        for (const QPoint at : {QPoint(3, 6), {4, 6}}) driver::MoveTo(control, at);
        return Box().Visible() ? Box().Text() : "";
    }
};

TEST_F(HintsTest, HintsStandOnTheirColourAndLeaveWhatIsWorthItWhenSwitchedOff) {
    Open(true, false);
    EXPECT_EQ(HintOver(Form().BCOL6), "海面の色を変更します");
    EXPECT_EQ(Box().GetBackColor(), Form().BCOL6.BackColor);
    const auto shown = [this] {
        std::string text;
        for (const Control* each :
             std::initializer_list<const Control*>{&Form().Check3, &Form().Command2, &Form().Command1})
            text += HintOver(*each).empty() ? '-' : Box().GetBackColor() == HintBackground ? 'H' : '?';
        return text;
    };
    EXPECT_EQ(shown(), "HHH");
    driver::Click(Form().Check3);
    EXPECT_EQ(shown(), "H-H");
    Open(false);
    EXPECT_EQ(HintOver(Form().Command1), "");  // no menu stands behind it
    EXPECT_EQ(HintOver(Form().Option11), "Grey: this race has no course");
}

TEST_F(HintsTest, WhatIsGreyTellsWhyAndWhatToDo) {
    Open();
    EXPECT_NE(HintOver(Form().Option11).find("\"Set Course\""), std::string::npos);
    EXPECT_NE(HintOver(Form().Command5).find("two marks or lines"), std::string::npos);
    driver::MoveTo(Form().Label2, {3, 6});
    EXPECT_FALSE(Box().Visible());
    driver::Click(Form().Check5);
    for (const Button* tool : {&Form().Command2, &Form().Command3, &Form().Command5})
        EXPECT_NE(HintOver(*tool).find("untick AutoTrace"), std::string::npos);
}

TEST_F(HintsTest, NoHintCoversTheColumnItIsAboutNorWhatTheMapTells) {
    Open();
    RaceDisp& form = Form();
    const auto boxOf = [](const Control& control) {
        QWidget& face = driver::Face(control);
        return QRect(face.mapTo(face.window(), QPoint()), face.size());
    };
    form.Position.Move(form.MapSide() - 217, 5, 212, 700);  // of a large fleet that has finished
    form.Position.Show();
    form.Picture12.Show();
    std::vector<ControlHint> hints = ControlHints(form);
    const std::vector<ControlHint> grey = GreyHints(form);
    hints.insert(hints.end(), grey.begin(), grey.end());
    for (const ControlHint& hint : hints) {
        for (const bool english : {true, false}) {
            const HintPlace at = PlaceOf(hint, form, english);
            const QRect box = QRectF(at.Left, at.Top, at.Width, at.Height).toRect();
            EXPECT_TRUE(driver::Face(form).rect().contains(box)) << hint.Words.English;
            const QWidget* owner = &driver::Face(*hint.Owner);
            if (driver::Face(form.GPIC).isAncestorOf(owner) ||
                driver::Face(form.PicTime).isAncestorOf(owner))
                continue;
            for (const Control* kept : std::initializer_list<const Control*>{
                     &form.Picture7, &form.Picture8, &form.PicTimeBar, &form.Position, &form.Text11,
                     &form.Text15, &form.Picture12, &form.Text3})
                EXPECT_FALSE(box.intersects(boxOf(*kept))) << hint.Words.English;
        }
    }
}

struct TimeSettingTest : DeskTest {
    TimeSettingTest() { Open(); }
    void TakeTimes(const char* start, const char* finish) const {
        driver::Type(Form().Text9, start);
        driver::Type(Form().Text10, finish);
        driver::Click(Form().Command4);
    }
};

TEST_F(TimeSettingTest, TimesFarFromTheTracksOrNoTimesAtAllAreRefused) {
    const char* const sound = "2004/8/5 12:40:00";
    for (const char* bad : {"", "tomorrow", "2004/8/32", "2004/8/15 12:50:00", "2004/7/26 12:20:00"}) {
        for (int ok = 0; ok < 2; ++ok) dialogs.AnswerOk();
        TakeTimes(bad, sound);
        TakeTimes(sound, bad);
        EXPECT_EQ(Form().Text10.Text(), bad);  // nothing typed is lost
    }
    for (const bool means : {false, false}) dialogs.AnswerYesNo(means);
    TakeTimes("05/08/2004 12:30:00", sound);  // of May or of August
    EXPECT_TRUE(dialogs.AllAnswered() && app.race.Start.Typed() == "2004/8/5 12:30:00");
}

TEST_F(TimeSettingTest, TimesAreSavedUnderANameOrTheOnesOfTheFileComeBack) {
    driver::Click(Form().Bnam[1]);
    const std::string before = File();
    for (const char* name : {"", "R2"}) {
        dialogs.AnswerYesNo(true);
        dialogs.AnswerInput(name);
        TakeTimes("2004/08/05 12:31:00", "2004/8/5 12:39");
        EXPECT_EQ(app.race.RaceDuration, *name == '\0' ? 600 : 480);
        EXPECT_FALSE(Form().InFocus(2));  // the boats stay in or out of focus
    }
    EXPECT_NE(tree.Read("raceadmin/R2.txt").find("ST, 2004/08/05 12:31:00\r\nFT, 2004/8/5 12:39\r\n"),
              std::string::npos);
    EXPECT_EQ(File(), before);
    EXPECT_NEAR(app.now.Boats[1].At().Lat, Lat + SixKnots * (60 + app.now.Time), 1e-6);
    EXPECT_TRUE(Form().Caption().ends_with("(R2.txt)"));
}

TEST_F(TimeSettingTest, ARaceThatHasLostABoatOrItsFileMeanwhileIsStillSound) {
    for (const char* file : {"gpsdat/boat2.trk", "raceadmin/R1.txt"}) {
        std::filesystem::remove(tree.Root() / file);
        if (Form().Bnam.Count() > 1) dialogs.AnswerYesNo(false);  // of one boat there is nothing to ask
        dialogs.AnswerOk();
        driver::Click(Form().Command4);
        EXPECT_TRUE(dialogs.AllAnswered());
        EXPECT_EQ(Form().Bnam.Count(), 1);
    }
    EXPECT_TRUE(Form().Closed() && !Form().Timer3.Enabled());  // no timer looks at what was half read
}

/// What is seen while the film stands is of the present moment, whatever was done to it.
struct MomentTest : testing::Test, TestDesk {
    void OpenWithWind() {
        WriteRace(2, "WF, w.csv\r\n" + RaceTree::LineAcross(0.2));
        tree.Wind("w.csv", {{0, 10, 0}, {590, 10, 90}});
        Open();
    }
    /// The map as it would be if all of it were drawn anew now.
    Picture DrawnAnew() const {
        desk->session.TheStage().Repaint(Changed::Layers);
        driver::Settle();
        return Map().Image();
    }
    static bool Same(const Picture& a, const Picture& b) { return a.Data().Bits == b.Data().Bits; }
    /// Pixels of the ring round a boat.
    int Ring(int boat) const {
        const Picture sprite = Form().Boat[boat - 1].Image();
        return CountPixels(sprite, 0, 0, sprite.Width() - 1, sprite.Height() - 1,
                           [](int r, int g, int b) { return r > 200 && g < 60 && b < 60; });
    }
};

TEST_F(MomentTest, RingAndLabelGoWithThePointerWhereverItLeavesTheRowAndWithTheBoat) {
    WriteRace(3);
    Open();
    RaceDisp& form = Form();
    const int none = Ring(2);
    for (const Control* next : std::initializer_list<const Control*>{&Map(), &form.PicTimeBar, &form.Text1,
                                                                     &form.Picture6, &form.Check10}) {
        for (const int x : {5, 6}) driver::MoveTo(form.Bnam[1], {x, 5});
        EXPECT_GT(Ring(2), none);
        const double left = form.Text8.Left() - form.Boat[1].Left();
        Seek(150);
        EXPECT_NEAR(form.Text8.Left() - form.Boat[1].Left(), left, 1);
        EXPECT_NEAR(form.Text8.Top(), form.Boat[1].Top(), 1);
        Seek(50);
        driver::MoveTo(*next, {4, 4});
        EXPECT_EQ(Ring(2), none);
        EXPECT_FALSE(form.Text8.Visible());
    }
    driver::MoveTo(Map(), PixelOf(app.now.Boats[2].At()));
    const double below = form.Boat[1].Top() - form.Text7.Top();
    Seek(150);
    EXPECT_NEAR(form.Boat[1].Top() - form.Text7.Top(), below, 1);
}

TEST_F(MomentTest, ARowFollowsTheWindAndTheClockAlsoWhereNoBoatIsInView) {
    OpenWithWind();
    const auto row = [this] { return Form().Text5[0].Text() + " " + Form().Text6[0].Text(); };
    EXPECT_EQ(row(), "5.98 -8");              // six minutes of arc an hour are less than six miles there
    EXPECT_FALSE(Form().Option11.Enabled());  // a course of one entry has no legs
    app.view.CentreOn({Lat + 5, Lon});
    Seek(150);
    EXPECT_FALSE(app.now.BoatInView);
    EXPECT_EQ(row(), "5.98 -23");
    EXPECT_EQ(Form().Text1.Text(), "2004/08/05 12:32:30");
}

TEST_F(MomentTest, TheTimeLineGoesOnWhenThePointerGoesFromTheBarIntoThePage) {
    WriteRace(2, RaceTree::LineAcross(0.2) + "CRS, L1, L1\r\n");
    Open();
    RaceDisp& form = Form();
    driver::Click(form.Option10);
    driver::MoveTo(form.PicTimeBar, {10, 300});
    driver::MoveTo(form.PicTimeBar, {11, 300});
    EXPECT_EQ(form.Line1.Y1(), 300);
    driver::MoveTo(form.GPIC, {150, 200});
    EXPECT_EQ(form.Line1.Y1(), desk->timeBar.Axis().Y(50));
    driver::MoveTo(form.PicTimeBar, {10, 300});
    driver::Click(form.Option11);
    driver::MoveTo(form.PicTimeBar, {11, 300});
    driver::MoveTo(form.PicTime, {150, 200});
    const double marker = form.BoatS[0].Top();
    Seek(250);
    EXPECT_LT(form.BoatS[0].Top(), marker);
}

TEST_F(MomentTest, LayLinesAreThoseOfTheWindNowAndNothingElseIsLost) {
    OpenWithWind();
    driver::Click(Form().Check1);
    for (const CheckBox* next : {&Form().Check8, &Form().Check8, &Form().Check1}) {
        for (const double time : {150, 160, 400, 80}) {
            Seek(time);
            const Picture shown = Map().Image();
            EXPECT_TRUE(Same(shown, DrawnAnew())) << time;
        }
        driver::Click(*next);
    }
    driver::Click(Form().Check6);  // no tracks: the wakes grow
    const int side = static_cast<int>(app.view.MapSide);
    const auto red = [](int r, int g, int b) { return r > 150 && g < 60 && b < 60; };  // as boat 1
    const auto wake = [&] { return CountPixels(Map().Image(), 200, 100, side - 200, side - 100, red); };
    const int before = wake();
    for (int time = 80; time < 140; ++time) Seek(time);
    EXPECT_GT(wake(), before + 20);
}

TEST_F(MomentTest, FinishersAreCountedFromTheFirstOneAndListedAsSoonAsTheCourseIsClicked) {
    WriteRace(2, "MK, 2117.5, 8369\r\nMK, 2117.8, 8369\r\n");
    tree.Boat("boat1.trk", Lat, Lon, SixKnots, 0, -200, 620);
    tree.Boat("boat2.trk", Lat, Lon, SixKnots * 1.2, 0, -200, 620);  // the second one in the list wins
    Open();
    const Surface& list = Form().Position;
    Seek(590);
    EXPECT_FALSE(list.Visible());
    driver::Click(Form().Command5);
    for (const double north : {0.5, 0.8}) ClickMap(PixelOf({Lat + north, Lon}));
    driver::Click(Form().Command5);
    EXPECT_EQ(app.race.CourseOrder.Count(), 2);
    EXPECT_TRUE(list.Visible());
    EXPECT_LT(FinishTime(app.passes, 2), FinishTime(app.passes, 1));
    EXPECT_EQ(FinishedBy(app.passes, 590), (std::vector<int>{2, 1}));
    const Picture shown = list.Image();
    *app.passes.FirstPassTime[2] += 100;  // one finished before the others had passed the mark before
    desk->session.TheStage().Repaint(Changed::Course);
    driver::Settle();
    EXPECT_TRUE(Same(list.Image(), shown));
}

TEST_F(MomentTest, ARaceThatIsReadTellsSoUnderItsTitleInTheMapAlsoFromTheGraphs) {
    WriteRace(2);
    tree.Race("R2.txt", "T2, Autumn\r\nBN, boat2.trk, Solo\r\n");
    Open(false);
    driver::Click(Form().Option10);
    Form().Combo1.SetText("R2.txt");
    int told = 0;
    desk->session.OnProgress = [&](std::string_view text, double) {
        if (text.empty()) return false;
        EXPECT_TRUE(Form().Picture1.Visible() && !Form().GPIC.Visible());
        EXPECT_TRUE(Form().Caption().ends_with("Autumn   (R2.txt)")) << Form().Caption();
        ++told;
        return false;
    };
    driver::Click(Form().Command9);
    EXPECT_EQ(told, 1);
    EXPECT_TRUE(Form().Option9.Value());
    EXPECT_FALSE(Form().Text12.Visible());
}

}  // namespace
}  // namespace keelview
