#include "editor/race_editor.h"

#include <gtest/gtest.h>

#include <QLineEdit>
#include <filesystem>
#include <memory>
#include <string>

#include "support/qt_driver.h"
#include "support/test_world.h"
#include "support/when_modal.h"

namespace keelview {
namespace {

namespace fs = std::filesystem;

struct RaceEditorTest : testing::Test, TestWorld {
    FileQuestion question;
    int shows = 0;
    std::unique_ptr<RaceEditor> editor;

    RaceEditorTest() {
        platform.Local.Seconds = 9 * 3600;
        tree.Boat("a.trk", 35 * 60, 139.75 * 60, 0.001, 0, -300, 900);
        tree.Boat("b, c.trk", 35 * 60, 139.75 * 60, 0.001, 0, 0, 900);
        tree.Boat("later.trk", 35 * 60, 139.75 * 60, 0.001, 0, 3600, 4000);
        tree.Write("gpsdat/empty.trk", "");
        fs::create_directory(tree.Root() / "raceadmin");
        editor =
            std::make_unique<RaceEditor>(app.settings, app.race, services, question, [this] { ++shows; });
        editor->ShowNow();
    }
    /// Chooses a track and answers the question for the boat's name.
    void Choose(const std::string& file, const std::string& name) {
        driver::Click(editor->Command1);
        editor->Combo1.SetText(file);
        dialogs.AnswerInput(name);
        driver::Click(editor->Command2);
        EXPECT_TRUE(dialogs.AllAnswered());
    }
    /// Presses a button that opens the file dialog, and gives it a name there, or cancels.
    void PressAndName(const Control& button, const std::optional<std::string>& name) {
        WhenModal("FmFileSelect", [name] {
            dynamic_cast<QLineEdit&>(driver::Named("Text1"))
                .setText(QString::fromStdString(name.value_or("")));
            driver::Click(driver::Named(name ? "Command1" : "Command2"));
        });
        driver::Click(button);
    }
};

TEST_F(RaceEditorTest, ARaceIsMadeFromTracksSavedAndShown) {
    driver::Click(editor->Command9);  // no boats: nothing happens
    EXPECT_TRUE(dialogs.All().empty());
    EXPECT_EQ(editor->Text3.Text(), "9");
    Choose("a.trk", "Alpha, 艇 \"1\"");
    EXPECT_FALSE(editor->Frame1.Visible());
    Choose("later.trk", "Beta");
    EXPECT_EQ(editor->Combo1.ListCount(), 4);
    EXPECT_EQ(editor->Text1.Text(), "2004/08/05 12:29:00");  // of the first boat alone
    EXPECT_EQ(editor->Text2.Text(), "2004/08/05 12:45:00");
    driver::Type(editor->Text7, "Spring Cup");
    driver::Type(editor->Text6, "-6.5");
    driver::Type(editor->Text12, "5");
    driver::Click(editor->Option1);
    dialogs.AnswerYesNo(true);
    dialogs.AnswerYesNo(true);
    PressAndName(editor->Command9, "New race");
    EXPECT_TRUE(dialogs.AllAnswered() && editor->Closed());
    EXPECT_EQ(shows, 1);
    EXPECT_EQ(app.race.RaceFileName, "New race.txt");
    const std::string saved = tree.Read("raceadmin/New race.txt");
    for (const char* line :
         {"T1, Spring Cup\r\n", "MG, -6.5\r\n", "LG, 4.7\r\n", "TD, 9\r\n", "NU, 1\r\n",
          "BN, later.trk, Beta\r\n", "LL, 45,160\r\n", "BT,5\r\n", "ST, 2004/08/05 12:29:00\r\n"})
        EXPECT_NE(saved.find(line), std::string::npos) << line << saved;
}

TEST_F(RaceEditorTest, TracksThatCannotBeTakenAreToldAndTheFormStaysOpen) {
    using Case = std::pair<const char*, const char*>;
    for (const auto& [file, said] : {Case{"", "Choose a GPS file"}, Case{"gone.trk", "GPS file not found"},
                                     Case{"b, c.trk", "comma"}, Case{"../a.trk", "slash"}}) {
        driver::Click(editor->Command1);
        editor->Combo1.SetText(file);
        dialogs.AnswerOk();
        driver::Click(editor->Command2);
        EXPECT_NE(Said().find(said), std::string::npos) << file << Said();
        EXPECT_TRUE(editor->Frame1.Visible());
    }
    EXPECT_EQ(editor->Draft().Boats.Count(), 0);
    // A file without a fix is told, and gives no times.
    driver::Click(editor->Command1);
    editor->Combo1.SetText("empty.trk");
    dialogs.AnswerInput("Ghost");
    dialogs.AnswerOk();
    driver::Click(editor->Command2);
    EXPECT_NE(Said().find("No GPS data"), std::string::npos);
    EXPECT_EQ(editor->Text1.Text() + editor->Text2.Text(), "");
    EXPECT_EQ(editor->Draft().Boats.Count(), 1);
    // Cancel and an empty name add nothing.
    for (const std::optional<std::string>& answer : {std::optional<std::string>(), {""}, {"  "}}) {
        driver::Click(editor->Command1);
        dialogs.AnswerInput(answer);
        driver::Click(editor->Command2);
        EXPECT_EQ(editor->Draft().Boats.Count(), 1);
    }
}

TEST_F(RaceEditorTest, AWrongFieldIsToldAndNothingTypedIsLost) {
    Choose("a.trk", "Alpha");
    driver::Type(editor->Text1, "5 August");
    driver::Type(editor->Text5, "long");
    Choose("a.trk", "Alpha 2");  // does not take away what was typed
    dialogs.AnswerOk();
    driver::Click(editor->Command4);
    EXPECT_EQ(Said(), "Incorrect start date or time");
    EXPECT_EQ(editor->Text1.Text() + editor->Text5.Text(), "5 Augustlong");
    driver::Type(editor->Text1, "2004/8/5 12:30:00");
    driver::Type(editor->Text5, "5.2");
    dialogs.AnswerYesNo(false);
    driver::Click(editor->Command4);
    EXPECT_EQ(Said(), "Save Race Control File ?");
    EXPECT_FALSE(editor->Closed());
}

TEST_F(RaceEditorTest, BoatsAreDeletedByAClickWithAKeyHeld) {
    for (int boat = 1; boat <= 4; ++boat) Choose("a.trk", "Boat " + std::to_string(boat));
    driver::MoveTo(editor->List1, {20, 5});
    EXPECT_EQ(editor->Text13.Text(), "Shift + Click to Delete One Data.");
    driver::ClickRow(editor->List1, 1);
    EXPECT_EQ(editor->Draft().Boats.Count(), 4);
    driver::ClickRow(editor->List1, 1, Qt::ControlModifier);
    driver::ClickRow(editor->List1, 0, Qt::ShiftModifier);
    driver::ClickRow(editor->List1, 1, Qt::AltModifier);
    driver::ClickAt(editor->List1, {20, 100}, Qt::LeftButton, Qt::ShiftModifier);  // no row there
    ASSERT_EQ(editor->List1.ListCount(), 1);
    EXPECT_EQ(editor->List1.Item(0), "Boat 3        a.trk");
}

TEST_F(RaceEditorTest, AnOpenedRaceFillsTheFormAndIsEditedOnDisc) {
    tree.Race("R1.txt", "T2, Race 2\r\nWD, 210\r\nLG, 7.5\r\nBN, gone.trk, Ghost\r\nAT, a.pdf\r\n");
    tree.Write("winddat/w.CSV", "");
    tree.Write("attachment/notice, 1.pdf", "");
    driver::Type(editor->Text7, "typed before");
    EXPECT_FALSE(editor->Command5.Enabled());
    PressAndName(editor->Command6, {});
    EXPECT_EQ(editor->Text7.Text(), "typed before");
    PressAndName(editor->Command6, "R1");
    EXPECT_EQ(editor->Caption(), "Edit Race Control FIle   R1.txt");
    EXPECT_EQ(editor->Text7.Text() + "/" + editor->Text8.Text() + "/" + editor->Text5.Text() + "/" +
                  editor->Text4.Text(),
              "Spring Cup/Race 2/7.5/210");
    EXPECT_EQ(editor->List1.Item(0), "Ghost        gone.trk");
    EXPECT_TRUE(editor->Option2.Value());  // the options wait for the person
    driver::Click(editor->Command5);
    EXPECT_EQ(platform.Documents.back(), (tree.Root() / "raceadmin/R1.txt").string());

    PressAndName(editor->Command10, "notice, 1.pdf");
    EXPECT_EQ(editor->List2.ListCount(), 2);
    EXPECT_NE(tree.Read("raceadmin/R1.txt").find("AT, notice, 1.pdf\r\n"), std::string::npos);
    dialogs.AnswerYesNo(true);  // the wind file is there
    PressAndName(editor->Command7, "w");
    EXPECT_EQ(editor->Text11.Text(), "w.csv");
    EXPECT_NE(tree.Read("raceadmin/R1.txt").find("WF, w.csv\r\n"), std::string::npos);
    PressAndName(editor->Command7, {});
    EXPECT_EQ(editor->Text11.Text(), "");
    driver::Click(editor->Command11);
    EXPECT_EQ(editor->List2.ListCount(), 0);
    EXPECT_EQ(tree.Read("raceadmin/R1.txt").find("AT,"), std::string::npos);
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
    dialogs.AnswerYesNo(true);  // a cancelled dialog ends the form without saving
    PressAndName(editor->Command9, {});
    EXPECT_TRUE(editor->Closed());
    EXPECT_TRUE(fs::is_empty(tree.Root() / "raceadmin"));
}

}  // namespace
}  // namespace keelview
