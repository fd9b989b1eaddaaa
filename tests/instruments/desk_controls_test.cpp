#include <gtest/gtest.h>

#include <QApplication>
#include <QWidget>
#include <set>

#include "instruments/hints.h"
#include "session/boat_colours.h"
#include "support/album.h"
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

TEST_F(DeskTest, TheWindThatAPersonTypesIsTakenAndSavedAtOnce) {
    Open();
    driver::Click(Form().Option3);
    Form().Text3.SetText("77");  // by the program
    EXPECT_EQ(app.race.WindDirection, 0);
    for (const auto& [typed, wind] :
         {std::pair{"45", 45.0}, {"360", 360}, {"361", 0}, {"12.5 deg", 12.5}, {"-5", 0}}) {
        driver::Type(Form().Text3, typed);
        EXPECT_EQ(app.now.WindNow.DirectionTrue, std::fmod(wind, 360)) << typed;
        EXPECT_EQ(app.view.ScreenUpDirection, wind);
        EXPECT_EQ(FileHolds("WD, " + NumberText(wind)), wind > 0) << File();
    }
}

TEST_F(DeskTest, EachViewIsCapturedWithTheBoatsTheOverviewAndTheColours) {
    OpenFullRace();
    const fs::path file = tree.Root() / "gpsdat/無題.bmp";
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
    const QPoint at = PixelOf(app.now.Boats[1].At());
    const auto sail = [](int r, int g, int b) { return r + g + b == 3 * 255; };
    EXPECT_GT(CountPixels(map, at.x() + 1, at.y() + 1, at.x() + 9, at.y() + 9, sail), 3);
    const Picture graphs = capture(Form().Option10);
    const Picture page = capture(Form().Option11);
    for (int y = 20; y < 340; ++y) {
        EXPECT_EQ(graphs.PixelAt(305, y), Form().GPIC.Image().PixelAt(300, y - 5));
        EXPECT_EQ(page.PixelAt(305, y), Form().PicTime.Image().PixelAt(300, y - 5));
    }
}

TEST_F(DeskTest, ExitOffersToSaveInEditModeAndStaysWhereThatFails) {
    fs::create_directories(tree.Root() / "raceadmin/taken.txt");
    using Case = std::pair<const char*, const char*>;
    for (const auto& [name, written] : {Case{"", ""}, Case{"Cup R2", "Cup R2.txt"}, Case{"x.TXT", "x.TXT"},
                                        Case{"江の島.txt", "江の島.txt"}, Case{"taken", ""}}) {
        const bool fails = *name != '\0' && *written == '\0';
        Open();
        dialogs.AnswerYesNo(true);
        dialogs.AnswerInput(name);
        if (fails) dialogs.AnswerOk();
        driver::Click(Form().Command1);
        EXPECT_TRUE(dialogs.AllAnswered());
        EXPECT_EQ(Form().Closed(), !fails);
        EXPECT_EQ(fs::is_regular_file(tree.Root() / "raceadmin" / written), *written != '\0') << name;
    }
}

TEST_F(DeskTest, TabComesToEveryControlWhereSpaceAndArrowsWorkAsTheMouseDoes) {
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
        driver::Key(Form(), Qt::Key_Space);
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

}  // namespace
}  // namespace keelview
