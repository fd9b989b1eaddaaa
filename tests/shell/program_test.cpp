#include "shell/program.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QTest>
#include <filesystem>
#include <memory>
#include <string>

#include "display/application.h"
#include "shell/cover.h"
#include "shell/reference_viewer.h"
#include "support/qt_driver.h"
#include "support/test_world.h"

namespace keelview {
namespace {

/// The program in a tree with one race of two boats, which has all that a race can leave behind.
struct ProgramTest : testing::Test, TestWorld {
    std::unique_ptr<Program> program;

    ProgramTest() {
        tree.Boat("a.trk", Lat, Lon, SixKnots, 0, -200, 620);
        tree.Boat("b.trk", Lat, Lon + 0.1, SixKnots, 0, -100, 300);
        tree.Race("R1.txt",
                  "WD, 30\r\nWF, w.csv\r\nBN, a.trk, Alpha\r\nBN, b.trk, Beta\r\n"
                  "MK, 2117.2, 8369\r\nMK, 2117.5, 8369\r\nCRS, MK1, MK2\r\nAT, notice.pdf\r\n");
        tree.Write("winddat/w.csv", "2004/08/05 12:31:00,12.5,37\r\n2004/08/05 12:35:00,12.5,40\r\n");
        tree.Write("attachment/notice.pdf", "x");
    }

    /// Starts the full program, or a browse-only copy.
    void Start(bool full = true) {
        tree.Write("raceadmin/Ver.00", full ? "0,1" : "1,1");
        if (full) dialogs.AnswerYesNo(true);  // "Edit Data ?"
        const StartOutcome outcome = SettleStart(app, services);
        program = std::make_unique<Program>(
            app, services, [](std::function<void()> task) { TheApplication().Later(std::move(task)); });
        program->Start(outcome);
    }
    Cover& Menu() { return *program->TheMenu(); }
    RaceDisp& Display() { return program->TheDesk()->session.Display(); }
    void Choose(const Button& chooser, const std::string& name) {
        driver::Click(chooser);
        Menu().Combo1.SetText(name);
        driver::Click(Menu().Command5);
    }
    void CloseDisplay() {
        EXPECT_FALSE(program->TheMenu() && Menu().Visible());
        Display().Close();
        driver::Settle();
        EXPECT_EQ(program->TheDesk(), nullptr);
    }
};

TEST_F(ProgramTest, ASingleTrackShowsNothingOfTheRaceBeforeIt) {
    Start();
    Choose(Menu().Command3, "R1.txt");
    EXPECT_TRUE(Display().sWind.Visible() && Display().Option11.Enabled());
    Display().Check5.SetValue(true);
    Display().HScroll1.SetValue(19);
    driver::KeyDown(Display(), Qt::Key_Shift);
    EXPECT_NE(Display().HeldKey, 0);
    CloseDisplay();

    Choose(Menu().Command7, "a.trk");
    EXPECT_EQ(Display().Caption(), " \"Keelview\" Race Browser   (a.trk)");
    // Four minutes after the first fix, to the last one.
    EXPECT_EQ(Display().Text9.Text() + Display().Text10.Text(), "2004/08/05 12:30:402004/08/05 12:40:20");
    EXPECT_FALSE(Display().sWind.Visible() || Display().Option11.Enabled() ||
                 Display().Command13.Enabled());
    EXPECT_TRUE(!Display().Check5.Value() && Display().HeldKey == 0 && app.clock.SpeedMultiplier == 5);
    EXPECT_EQ(app.race.Marks.Count() + app.race.CourseOrder.Count() + app.wind.Count(), 0);
    QTest::qWait(100);
    EXPECT_TRUE(Display().Boat[0].Visible() && app.now.WindNow.DirectionTrue == 0);
}

TEST_F(ProgramTest, ARaceThatAnotherProgramHasOpenIsShownAndThePersonIsTold) {
    Start();
    platform.FileIsFree = false;
    dialogs.AnswerOk();
    Choose(Menu().Command3, "R1.txt");
    EXPECT_TRUE(Said().starts_with("This race is open in another Keelview, too.")) << Said();
    EXPECT_EQ(platform.Claimed, tree.Root() / "raceadmin/R1.txt");
    CloseDisplay();
    EXPECT_EQ(platform.Claimed, "");
    Start(false);  // nothing can be changed there
    EXPECT_EQ(platform.Claimed, "");
}

TEST_F(ProgramTest, WhatCannotBeShownIsToldAndTheMenuStands) {
    tree.Write("gpsdat/empty.trk", "");
    tree.Write("gpsdat/notes.trk", std::string(1000, 'T'));
    tree.Race("R2.txt", "BN, empty.trk, Ghost\r\n");
    tree.Write("raceadmin/Nothing.txt", "");
    Start();
    for (const std::string name : {"empty.trk", "notes.trk", "R2.txt", "Nothing.txt"}) {
        dialogs.AnswerOk();
        Choose(name.ends_with("trk") ? Menu().Command7 : Menu().Command3, name);
        EXPECT_TRUE(dialogs.AllAnswered());
        EXPECT_TRUE(Said().starts_with("No boat of this race has a GPS position in its period.")) << name;
        const std::string why = name == "notes.trk" ? "no kind of track file" : "an empty file";
        EXPECT_EQ(Said().find(why) != std::string::npos, name != "Nothing.txt") << Said();
        EXPECT_TRUE(program->TheDesk() == nullptr && Menu().Visible()) << name;
    }
    Choose(Menu().Command3, "R1.txt");
    EXPECT_TRUE(Display().Visible());
}

TEST_F(ProgramTest, TheEditorOpensTheRaceThatItSaved) {
    Start();
    driver::Click(Menu().Command2);
    RaceEditor& editor = *program->TheEditor();
    EXPECT_TRUE(Menu().Visible());  // it stays underneath
    driver::Type(editor.Text7, "Autumn Cup");
    driver::Click(Menu().Command2);  // a second press brings the same editor forward
    EXPECT_EQ(program->TheEditor(), &editor);

    driver::Click(Menu().Command3);
    driver::Click(editor.Command1);  // the editor lists tracks, the menu races
    Menu().Combo1.SetText("R1.txt");
    driver::Click(Menu().Command5);
    EXPECT_FALSE(editor.Visible());
    CloseDisplay();
    EXPECT_TRUE(editor.Visible() && editor.Text7.Text() == "Autumn Cup");

    // Names as people give them, from the files to the display's title.
    std::filesystem::rename(tree.Root() / "gpsdat/b.trk", tree.Root() / "gpsdat/江の島 \"b\" .trk");
    driver::Click(editor.Command1);
    editor.Combo1.SetText("江の島 \"b\" .trk");
    dialogs.AnswerInput("うみ, \"Solo\" ");
    driver::Click(editor.Command2);
    dialogs.AnswerYesNo(true);  // save
    dialogs.AnswerYesNo(true);  // show
    driver::WhenModal("FmFileSelect", [] { driver::Strike("New, \"1\" 江の島\n"); });
    driver::Click(editor.Command9);
    ASSERT_NE(program->TheDesk(), nullptr);
    EXPECT_EQ(Display().Caption(), " \"Keelview\" Race Browser   Autumn Cup   (New, \"1\" 江の島.txt)");
    EXPECT_EQ(Display().Bnam[0].Caption(), "うみ, \"Solo\"");
    CloseDisplay();
    EXPECT_TRUE(Menu().Visible() && program->TheEditor() == nullptr);
}

TEST_F(ProgramTest, ARaceBesideItsTracksTellsBothPeriodsAndCanBePutRight) {
    const std::string off =
        "ST, 2004/8/5 12:30:00\r\nFT, 2004/8/5 12:40:00\r\nTD, 0\r\nBN, a.trk, Alpha\r\n";
    tree.Write("raceadmin/Off.txt", off);
    Start();
    dialogs.AnswerYesNo(false);
    Choose(Menu().Command3, "Off.txt");
    EXPECT_NE(Said().find("Race:  2004/08/05 12:30:00  -  2004/08/05 12:40:00\r\n"
                          "Tracks:  2004/08/05 03:26:40  -  2004/08/05 03:40:20\r\n"
                          "They would meet with the time difference of the tracks' place: 9"),
              std::string::npos)
        << Said();
    EXPECT_TRUE(Menu().Visible() && tree.Read("raceadmin/Off.txt") == off);

    driver::Click(Menu().Command2);
    RaceEditor& editor = *program->TheEditor();
    const auto inDialog = [](const Control& button) {
        driver::WhenModal("FmFileSelect", [] { driver::Strike("Off.txt\n"); });
        driver::Click(button);
    };
    inDialog(editor.Command6);
    // Save it, over the old one, and show it; but its times are wrong.
    for (const bool answer : {true, true, true, false}) dialogs.AnswerYesNo(answer);
    inDialog(editor.Command9);
    EXPECT_TRUE(editor.Visible() && program->TheDesk() == nullptr && dialogs.AllAnswered());
    driver::Type(editor.Text3, "x");
    dialogs.AnswerYesNo(false);
    driver::Click(Menu().Command4);  // ends the program, but for what is not saved
    EXPECT_FALSE(platform.Ended);
    driver::Type(editor.Text3, "9");
    for (const bool answer : {true, true, true}) dialogs.AnswerYesNo(answer);
    inDialog(editor.Command9);
    EXPECT_TRUE(program->TheEditor() == nullptr && Display().Visible());
    EXPECT_EQ(platform.Claimed, tree.Root() / "raceadmin/Off.txt");  // the editor has not given it up
    CloseDisplay();

    tree.Write("raceadmin/Off.txt", off);
    dialogs.AnswerYesNo(true);
    Choose(Menu().Command3, "Off.txt");
    EXPECT_EQ(Display().Text9.Text() + Display().Text10.Text(), "2004/08/05 03:30:402004/08/05 03:40:20");
    EXPECT_NE(tree.Read("raceadmin/Off.txt").find("ST, 2004/08/05 03:30:40\r\n"), std::string::npos);
}

TEST_F(ProgramTest, BrowseOnlyShowsOneRaceAndEndsWithIt) {
    Start(false);
    EXPECT_TRUE(program->TheMenu() == nullptr && !platform.Ended && Display().Combo1.Visible());
    EXPECT_EQ(app.race.RaceFileName, "R1.txt");
    CloseDisplay();
    EXPECT_TRUE(platform.Ended);
    std::filesystem::remove(tree.Root() / "raceadmin/R1.txt");
    dialogs.AnswerOk();  // the race cannot be shown, and there is no other
    platform.Ended = false;
    Start(false);
    for (const Button* maker : {&Menu().Command1, &Menu().Command2, &Menu().Command8, &Menu().Command9})
        EXPECT_TRUE(Menu().Visible() && !maker->Enabled());
    tree.Race("R2.txt", "BN, a.trk, Alpha\r\n");
    Choose(Menu().Command3, "R2.txt");
    CloseDisplay();
    EXPECT_TRUE(Menu().Visible() && !platform.Ended);
    driver::Click(Menu().Command4);
    EXPECT_TRUE(platform.Ended);
}

TEST(Later, WaitsForTheOutermostEvent) {
    std::string order;
    Form form("Form", Form::Kind::Fixed, 100, 100);
    form.OnMouseDown = [&order](const MouseEvent&) {
        TheApplication().Later([&order] { order += "first "; });
        TheApplication().Later([&order] { order += "second "; });
        TheApplication().ThePlatform().DeliverEvents();
        TheApplication().ThePlatform().Pause(5);
        order += "handler ";
    };
    form.ShowNow();
    driver::ClickAt(form, {50, 50});
    EXPECT_EQ(order, "handler first second ");
}

struct CoverTest : testing::Test, TestWorld {
    std::string shown;  // what was opened through the doors, in order
    std::unique_ptr<Cover> cover;

    Cover& Open(bool useEnglish = true) {
        app.settings.UseEnglish = useEnglish;
        const auto shows = [this](const char* what) { return [this, what] { shown += what; }; };
        cover = std::make_unique<Cover>(app.settings, app.race, services,
                                        CoverDoors{shows("display "),
                                                   shows("editor "),
                                                   shows("distribution "),
                                                   shows("import "),
                                                   shows("wind "),
                                                   {}});
        cover->ShowNow();
        return *cover;
    }
};

TEST_F(CoverTest, ARaceIsHandedOverWithNothingLeftOfTheOneBefore) {
    for (const char* file : {"R2.txt", "R1.txt", "Ver.00"})
        tree.Write(std::string("raceadmin/") + file, "");
    app.race.SingleTrackFile = "old.trk";
    app.race.Boats.Resize(3);
    for (const char* name : {"b.trk", "a.TRK", "z.dtr", "notes.txt"})
        tree.Write(std::string("GPSDat/") + name, "");
    for (int boat = 1; boat <= 500; ++boat)
        tree.Write("GPSDat/江の島, \"" + std::to_string(boat) + "\".trk", "");
    Cover& form = Open();
    const auto offered = [&](const Button& chooser) {
        driver::Click(chooser);
        return form.Combo1.Text() + " of " + std::to_string(form.Combo1.ListCount());
    };
    EXPECT_EQ(offered(form.Command3), "R1.txt of 2");
    driver::Click(form.Command6);
    EXPECT_TRUE(!form.Frame1.Visible() && app.race.Boats.Count() == 3);
    EXPECT_EQ(offered(form.Command3), "R1.txt of 2");
    form.Combo1.SetText("r2.TXT");
    driver::Click(form.Command5);
    EXPECT_TRUE(shown == "display " && !form.Frame1.Visible());
    EXPECT_EQ(app.race.RaceFileName + app.race.SingleTrackFile, "r2.TXT");
    EXPECT_TRUE(app.race.Boats.Empty());
    EXPECT_EQ(offered(form.Command7), "z.dtr of 503");  // all single tracks
    driver::Click(form.Command5);
    EXPECT_EQ(app.race.RaceFileName + app.race.SingleTrackFile, "z.dtr");
}

TEST_F(CoverTest, AChoiceThatCannotBeOpenedIsToldAndTheChooserStays) {
    Cover& form = Open();
    driver::Click(form.Command3);
    EXPECT_EQ(form.Combo1.Text(), "");
    for (const char* choice : {"", "   ", "gone.txt", "../raceadmin", "\"x\", 江の島.txt"}) {
        SCOPED_TRACE(choice);
        form.Combo1.SetText(choice);
        dialogs.AnswerOk();
        driver::Click(form.Command5);
        EXPECT_TRUE(dialogs.AllAnswered() && form.Frame1.Visible());
        EXPECT_EQ(form.Combo1.Text(), choice);
    }
    EXPECT_EQ(shown, "");
    EXPECT_NE(Said().find("江の島.txt"), std::string::npos);
}

TEST_F(CoverTest, TheOtherButtonsLeadOnOrTellWhyNot) {
    Cover& form = Open();
    const auto press = [&form] {
        for (const Button* button : {&form.Command2, &form.Command9, &form.Command1, &form.Command8})
            driver::Click(*button);
    };
    press();
    EXPECT_EQ(shown, "editor distribution import wind ");
    shown.clear();
    for (const char* companion : {"TRACKDESK.exe", "GALEPLOT.exe"}) tree.Write(companion, "");
    press();
    EXPECT_EQ(shown, "editor distribution ");
    EXPECT_EQ(platform.Programs,
              (std::vector{tree.Root() / "TRACKDESK.exe", tree.Root() / "GALEPLOT.exe"}));
    platform.ProgramStarts = false;
    dialogs.AnswerOk();
    driver::Click(form.Command8);
    EXPECT_TRUE(Said().find("GALEPLOT.exe") != std::string::npos && !form.Closed());
    driver::Click(form.Command4);
    EXPECT_TRUE(platform.Ended);
}

TEST_F(CoverTest, TheManualsButtonNeedsOneManual) {
    EXPECT_FALSE(Open().Command10.Visible());
    tree.Write("help/index.html", "");
    for (const bool english : {true, false}) {
        Open(english);
        platform.DocumentResult = english ? 2 : 33;  // the English one is missing
        if (english) dialogs.AnswerOk();
        driver::Click(cover->Command10);
        EXPECT_TRUE(dialogs.AllAnswered());
    }
    EXPECT_EQ(platform.Documents, (std::vector{(tree.Root() / "help-e/index.html").string(),
                                               (tree.Root() / "help/index.html").string()}));
}

TEST_F(CoverTest, ADocumentIsOpenedAndTheDisplayStaysBlockedForAWhile) {
    tree.Write("attachment/notice, \"1\".pdf", "x");
    app.race.AttachFile = {"  notice, \"1\".pdf ", " gone.pdf"};
    Form display("RaceDisp", Form::Kind::Fixed, 300, 300);
    int clicks = 0;
    display.OnMouseDown = [&clicks](const MouseEvent&) { ++clicks; };
    display.ShowNow();
    ReferenceViewer form(app.settings, app.race, services, 0.3);
    EXPECT_EQ(form.List1.Item(0), "notice, \"1\".pdf");
    bool hidden = false;
    driver::WhenModal("RefFm", [&] {
        dialogs.AnswerOk();
        driver::ClickAt(form.List1, {100, 90});  // no row there
        EXPECT_TRUE(form.Visible());
        driver::ClickRow(form.List1, 1);
        EXPECT_TRUE(Said() == "File Not Found" && form.Visible());
        driver::WhenModal("RefFmWait", [&] {
            hidden = !form.Visible();
            driver::ClickAt(display, {50, 50});
        });
        driver::ClickRow(form.List1, 0);
    });
    QElapsedTimer time;
    time.start();
    form.ShowModal();
    EXPECT_GE(time.elapsed(), 300);
    EXPECT_EQ(platform.Documents,
              std::vector<std::string>{(tree.Root() / "attachment/notice, \"1\".pdf").string()});
    EXPECT_TRUE(hidden && form.Closed() && clicks == 0);
    driver::ClickAt(display, {50, 50});
    EXPECT_EQ(clicks, 1);
    ReferenceViewer cancelled(app.settings, app.race, services);
    cancelled.ShowNow();
    driver::Click(cancelled.Command1);
    EXPECT_TRUE(cancelled.Closed() && platform.Documents.size() == 1);
}

}  // namespace
}  // namespace keelview
