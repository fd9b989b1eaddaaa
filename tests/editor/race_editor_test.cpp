#include "editor/race_editor.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "editor/file_select.h"
#include "support/qt_driver.h"
#include "support/test_world.h"

namespace keelview {
namespace {

namespace fs = std::filesystem;

struct RaceEditorTest : testing::Test, TestWorld {
    int shows = 0;
    std::unique_ptr<RaceEditor> editor;

    RaceEditorTest() {
        platform.Local.Seconds = 9 * 3600;
        tree.Boat("a.trk", 35 * 60, 139.75 * 60, 0.001, 0, -300, 900);
        tree.Boat("b, c.trk", 35 * 60, 139.75 * 60, 0.001, 0, 0, 900);
        tree.Boat("later.trk", 35 * 60, 139.75 * 60, 0.001, 0, 3600, 4000);
        tree.Write("gpsdat/empty.trk", "");
        fs::create_directory(tree.Root() / "raceadmin");
        editor = std::make_unique<RaceEditor>(app.settings, app.race, services, [this] { ++shows; });
        editor->ShowNow();
    }
    /// Chooses a track and answers the question for the boat's name.
    void Choose(const std::string& file, const std::optional<std::string>& name) {
        dialogs.AnswerInput(name);
        Choose(file);
    }
    void Choose(const std::string& file) {
        driver::Click(editor->Command1);
        editor->Combo1.SetText(file);
        driver::Click(editor->Command2);
        EXPECT_TRUE(dialogs.AllAnswered());
    }
    /// Presses a button that opens the file dialog, and types a name there, or cancels.
    void PressAndName(const Control& button, const std::optional<std::string>& name) {
        driver::WhenModal("FmFileSelect", [name] {
            name ? driver::Strike(*name + "\n") : driver::Click(driver::Named("Command2"));
        });
        driver::Click(button);
    }
};

TEST_F(RaceEditorTest, ARaceIsMadeFromTracksSavedAndShown) {
    driver::Click(editor->Command9);  // no boats: nothing happens
    EXPECT_TRUE(dialogs.All().empty());
    tree.Race("Old.txt", "MK, 2117.2, 8369\r\nLN, 2117, 8369, 2117, 8370\r\nCRS, L1, MK1\r\nAT, a.pdf\r\n");
    PressAndName(editor->Command12, "Old");
    EXPECT_EQ(editor->Text3.Text(), "9");
    Choose("a.trk", "Alpha, 艇 \"1\"");
    EXPECT_FALSE(editor->Frame1.Visible());
    Choose("later.trk", "Beta");
    EXPECT_EQ(editor->Combo1.ListCount(), 4);  // start and finish are those of the first boat alone
    EXPECT_EQ(editor->Text1.Text() + " " + editor->Text2.Text(), "2004/08/05 12:29:00 2004/08/05 12:45:00");
    driver::Type(editor->Text7, "Spring Cup");
    driver::Type(editor->Text6, "-6.5");
    driver::Type(editor->Text12, "5");
    driver::Click(editor->Option1);
    dialogs.AnswerYesNo(true);
    dialogs.AnswerYesNo(true);
    PressAndName(editor->Command9, "New race");
    EXPECT_TRUE(dialogs.AllAnswered() && !editor->Closed() && shows == 1);  // who shows it closes it
    EXPECT_EQ(app.race.RaceFileName, "New race.txt");
    EXPECT_EQ(tree.Read("raceadmin/New race.txt"),
              "T1, Spring Cup\r\nMG, -6.5\r\nLG, 4.7\r\nST, 2004/08/05 12:29:00\r\n"
              "FT, 2004/08/05 12:45:00\r\nTD, 9\r\nNU, 1\r\nBN, a.trk, Alpha, \x92\xF8 \"1\"\r\n"
              "BN, later.trk, Beta\r\nMK, 2117.2, 8369\r\nLN, 2117, 8369, 2117, 8370\r\nCRS, L1, MK1\r\n"
              "LL, 45,160\r\nBT,5\r\n");
}

TEST_F(RaceEditorTest, TracksThatCannotBeTakenAreToldAndTheFormStaysOpen) {
    for (const auto& [file, said] : {std::pair{"", "Choose a GPS file"},
                                     {"gone.trk", "GPS file not found"},
                                     {"b, c.trk", "comma"},
                                     {" a.trk", "blanks"},
                                     {"../a.trk", "slash"}}) {
        dialogs.AnswerOk();
        Choose(file);
        EXPECT_NE(Said().find(said), std::string::npos) << file << Said();
        EXPECT_TRUE(editor->Frame1.Visible() && editor->Draft().Boats.Empty());
    }
    dialogs.AnswerInput("Ghost");
    dialogs.AnswerOk();
    Choose("empty.trk");  // has no fix: it is told, and gives no times
    EXPECT_NE(Said().find("no GPS data"), std::string::npos);
    EXPECT_EQ(editor->Text1.Text() + editor->Text2.Text(), "");
    dialogs.AnswerYesNo(false);
    Choose("EMPTY.trk");  // a boat of the race already
    for (const std::optional<std::string>& none : {std::optional<std::string>(), {"  "}}) {
        dialogs.AnswerYesNo(true);
        Choose("empty.trk", none);
        EXPECT_EQ(editor->Draft().Boats.Count(), 1);
    }
    tree.Write("gpsdat/b.trk", tree.Read("gpsdat/a.trk") + "T N0000.0 E00000.0 2004/08/05 03:50:00 1\r\n");
    dialogs.AnswerInput("Beta");
    dialogs.AnswerOk();  // faulty fixes are told, and the first track with a fix tells the times
    Choose("b.trk");
    EXPECT_TRUE(Said().find("b.trk : faulty") != std::string::npos && Said().ends_with(" 1"));
    EXPECT_EQ(editor->Text1.Text() + editor->Text3.Text(), "2004/08/05 12:29:009");
}

TEST_F(RaceEditorTest, OnlyRaceFilesAreOpenedAndWritten) {
    tree.Write("raceadmin/Ver.00", "0,1\r\n");
    dialogs.AnswerOk();
    PressAndName(editor->Command6, "Ver.00");
    EXPECT_EQ(editor->Draft().RaceFileName, "");
    Choose("a.trk", "Alpha");
    dialogs.AnswerYesNo(true);  // save
    dialogs.AnswerYesNo(true);  // over the old one
    dialogs.AnswerOk();
    PressAndName(editor->Command9, "Ver.00");
    EXPECT_TRUE(dialogs.AllAnswered() && !editor->Closed());
    EXPECT_EQ(tree.Read("raceadmin/Ver.00"), "0,1\r\n");
}

TEST_F(RaceEditorTest, AWrongFieldIsToldAndNothingTypedIsLost) {
    Choose("a.trk", "Alpha");
    driver::Type(editor->Text1, "5 August");
    driver::Type(editor->Text5, "long");
    dialogs.AnswerYesNo(true);
    Choose("a.trk", "Alpha 2");  // does not take away what was typed
    dialogs.AnswerOk();
    driver::Click(editor->Command4);
    EXPECT_EQ(Said(), "Incorrect start date or time");
    EXPECT_EQ(editor->Text1.Text() + editor->Text5.Text(), "5 Augustlong");
    driver::Type(editor->Text1, "04/08/2004 12:30");  // of April or of August
    driver::Type(editor->Text5, "5.2");
    for (const bool means : {false, false}) dialogs.AnswerYesNo(means);
    driver::Click(editor->Command4);
    for (const bool means : {false, true}) dialogs.AnswerYesNo(means);
    dialogs.AnswerYesNo(false);
    driver::Click(editor->Command4);
    EXPECT_TRUE(Said() == "Save Race Control File ?" && !editor->Closed());
    EXPECT_EQ(editor->Draft().Start.Typed(), "2004/08/04 12:30:00");
}

TEST_F(RaceEditorTest, TwelveBoatsAreEnteredInSixClicks) {
    std::vector<fs::path> picked{tree.Root() / "gpsdat/empty.trk", tree.Root() / "gpsdat/b, c.trk"};
    for (int boat = 10; boat < 22; ++boat) {
        const std::string file = "stick/boat" + std::to_string(boat) + ".trk";
        tree.Write(file, tree.Read("gpsdat/a.trk"));
        picked.push_back(tree.Root() / file);
    }
    int clicks = 0;
    const auto click = [&clicks](auto& what) { ++clicks, driver::Click(what); };
    dialogs.AnswerFiles(picked);
    dialogs.AnswerOk();
    click(editor->Command14);
    EXPECT_TRUE(dialogs.AllAnswered() && Said().find("empty.trk : ") != std::string::npos &&
                Said().find("b, c.trk : ") != std::string::npos);
    driver::WhenModal("FmFileSelect", [] { driver::Strike("Twelve\n"); });
    for (const bool saveAndShow : {true, true}) dialogs.AnswerYesNo(saveAndShow), ++clicks;
    click(editor->Command4);
    EXPECT_TRUE(shows == 1 && clicks <= 6);
    const std::string race = tree.Read("raceadmin/Twelve.txt");
    for (int boat = 10; boat < 22; ++boat) {
        const std::string name = "boat" + std::to_string(boat);
        EXPECT_NE(race.find("BN, " + name + ".trk, " + name + "\r\n"), std::string::npos) << race;
    }
    dialogs.AnswerFiles({picked.back(), tree.Root() / "gpsdat/later.trk"});
    dialogs.AnswerYesNo(false);  // once is enough
    driver::Click(editor->Command14);
    EXPECT_EQ(editor->Draft().Boats.Count(), 13);
}

TEST_F(RaceEditorTest, BoatsAreNamedOrderedAndDeletedInTheirList) {
    for (const char* file : {"c.trk", "d.trk"})
        tree.Write("gpsdat/" + std::string(file), tree.Read("gpsdat/a.trk"));
    Choose("a.trk", "1"), Choose("later.trk", "2"), Choose("c.trk", "3"), Choose("d.trk", "4");
    driver::MoveTo(editor->List1, {20, 5});
    EXPECT_EQ(editor->Text13.Text(), "Shift + Click deletes, double click renames, drag moves.");
    const auto rows = [this] {
        std::string rows;
        for (int row = 0; row < editor->List1.ListCount(); ++row) rows += editor->List1.Item(row) + "|";
        return rows;
    };
    driver::DoubleClickAt(editor->List1, {20, 20});
    driver::Strike("Solo, 2\n");
    driver::ClickRow(editor->List1, 3);
    driver::Key(editor->List1, Qt::Key_F2);
    driver::Strike("not this");
    driver::Key(editor->List1, Qt::Key_Escape);
    EXPECT_EQ(rows(), "1        a.trk|Solo, 2        later.trk|3        c.trk|4        d.trk|");
    driver::DragRow(editor->List1, 0, 2);
    EXPECT_EQ(rows(), "Solo, 2        later.trk|3        c.trk|1        a.trk|4        d.trk|");
    EXPECT_EQ(editor->List1.ListIndex(), 2);
    driver::ClickRow(editor->List1, 1);
    EXPECT_EQ(editor->Draft().Boats.Count(), 4);
    driver::ClickRow(editor->List1, 1, Qt::ControlModifier);
    driver::ClickRow(editor->List1, 0, Qt::ShiftModifier);
    driver::ClickRow(editor->List1, 1, Qt::AltModifier);
    driver::ClickAt(editor->List1, {20, 100}, Qt::LeftButton, Qt::ShiftModifier);  // no row there
    EXPECT_EQ(rows(), "1        a.trk|");
}

TEST_F(RaceEditorTest, BoatsThatAreNotSavedAreAskedAbout) {
    driver::Type(editor->Text7, "no boats yet");
    Choose("a.trk", "Alpha");
    tree.Race("R1.txt", "BN, later.trk, Beta\r\n");
    dialogs.AnswerYesNo(false);
    driver::Click(editor->Command6);  // another race would take their place
    for (const bool leaves : {false, true}) {
        dialogs.AnswerYesNo(leaves);
        driver::Click(editor->Command8);
        EXPECT_EQ(editor->Closed(), leaves);
        EXPECT_TRUE(dialogs.AllAnswered() && Said().find("not saved") != std::string::npos);
    }
    editor->ShowNow();
    dialogs.AnswerYesNo(true);
    PressAndName(editor->Command6, "R1");
    EXPECT_EQ(editor->Text7.Text() + "/" + editor->Draft().Boats[1].BoatName, "Spring Cup/Beta");
    driver::Click(editor->Command8);  // as it stands in its file
    EXPECT_TRUE(editor->Closed());
}

TEST_F(RaceEditorTest, AnOpenedRaceFillsTheFormAndIsEditedOnDisc) {
    tree.Race("R1.txt", "T2, Race 2\r\nWD, 210\r\nLG, 7.5\r\nBN, gone.trk, Ghost\r\nAT,a.pdf\r\n");
    tree.Write("winddat/w.CSV", "");
    tree.Write("attachment/notice, 1.pdf", "");
    driver::Type(editor->Text7, "typed before");
    EXPECT_FALSE(editor->Command5.Enabled());
    PressAndName(editor->Command6, {});
    EXPECT_EQ(editor->Text7.Text(), "typed before");
    PressAndName(editor->Command6, "R1");
    std::string shown = editor->Caption() + "/" + editor->List1.Item(0);
    for (const auto* field : {&editor->Text7, &editor->Text8, &editor->Text5, &editor->Text4})
        shown += "/" + field->Text();
    EXPECT_EQ(shown, "Edit Race Control File   R1.txt/Ghost        gone.trk/Spring Cup/Race 2/7.5/210");
    EXPECT_TRUE(editor->Option2.Value());  // the options wait for the person
    driver::Click(editor->Command5);
    EXPECT_EQ(platform.Documents.back(), (tree.Root() / "raceadmin/R1.txt").string());

    const std::string race =
        "T1, Spring Cup\r\nT2, Race 2\r\nLG, 7.5\r\nST, 2004/8/5 12:30:00\r\n"
        "FT, 2004/8/5 12:40:00\r\nTD, 9\r\nWD, 210\r\nNU, 1\r\nBN, gone.trk, Ghost\r\nLL, "
        "45,160\r\nBT,3\r\n";
    PressAndName(editor->Command10, "notice, 1.pdf");
    PressAndName(editor->Command7, "w");
    EXPECT_EQ(editor->Text11.Text() + NumberText(editor->List2.ListCount()), "w.csv2");
    EXPECT_EQ(tree.Read("raceadmin/R1.txt"), "WF, w.csv\r\n" + race + "AT, a.pdf\r\nAT, notice, 1.pdf\r\n");
    PressAndName(editor->Command7, {});
    EXPECT_EQ(editor->Text11.Text(), "w.csv");
    driver::Click(editor->Command13);
    driver::Click(editor->Command11);
    EXPECT_EQ(editor->Text11.Text() + NumberText(editor->List2.ListCount()), "0");
    EXPECT_EQ(tree.Read("raceadmin/R1.txt"), race);
}

TEST_F(RaceEditorTest, ARaceThatAnotherProgramHasOpenIsToldWhereItIsOpenedAndWhereItIsSaved) {
    const auto expectTold = [this](const std::string& race) {
        const auto about = [](const auto& said) { return said.Text.find("open in another Keelview") + 1; };
        EXPECT_EQ(std::ranges::count_if(dialogs.All(), about), race == "R1.txt" ? 1 : 2);
        EXPECT_TRUE(dialogs.AllAnswered());
        EXPECT_EQ(platform.Claimed, tree.Root() / "raceadmin" / race);
    };
    tree.Race("R1.txt", "BN, a.trk, Alpha\r\n");
    platform.FileIsFree = false;
    dialogs.AnswerOk();
    PressAndName(editor->Command6, "R1");
    expectTold("R1.txt");
    dialogs.AnswerYesNo(true);
    dialogs.AnswerOk();
    dialogs.AnswerYesNo(true);
    PressAndName(editor->Command9, "R2");
    expectTold("R2.txt");
}

TEST_F(RaceEditorTest, AFileThatCannotBeWrittenIsToldAndTheFormStays) {
    Choose("a.trk", "Alpha");
    fs::permissions(tree.Root() / "raceadmin", fs::perms::owner_read | fs::perms::owner_exec);
    dialogs.AnswerYesNo(true);
    dialogs.AnswerOk();
    PressAndName(editor->Command9, "R9");
    fs::permissions(tree.Root() / "raceadmin", fs::perms::owner_all);
    EXPECT_NE(Said().find("could not be written"), std::string::npos);
    EXPECT_TRUE(!editor->Closed() && shows == 0 && app.race.RaceFileName.empty());
    dialogs.AnswerYesNo(true);
    PressAndName(editor->Command9, {});  // a cancelled dialog leads back
    EXPECT_TRUE(!editor->Closed() && fs::is_empty(tree.Root() / "raceadmin"));
    dialogs.AnswerYesNo(true);
    dialogs.AnswerYesNo(false);
    PressAndName(editor->Command9, "R9");
    EXPECT_TRUE(editor->Closed() && fs::exists(tree.Root() / "raceadmin/R9.txt"));
}

}  // namespace
}  // namespace keelview
