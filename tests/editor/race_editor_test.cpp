#include "editor/race_editor.h"

#include <gtest/gtest.h>

#include <QLineEdit>
#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>

#include "support/fake_platform.h"
#include "support/qt_driver.h"
#include "support/race_tree.h"
#include "support/scripted_dialogs.h"
#include "support/when_modal.h"

namespace keelview {
namespace {

namespace fs = std::filesystem;

struct RaceEditorTest : testing::Test {
    RaceTree tree;
    FakePlatform platform;
    ScriptedDialogs dialogs;
    Services services{platform, dialogs};
    AppState app;
    FileQuestion question;
    int shows = 0;
    std::unique_ptr<FmCompile> editor;

    void SetUp() override {
        app.settings.AppPath = tree.Root();
        app.settings.AppTitle = "Keelview";
        app.settings.UseEnglish = true;
        platform.Local.Seconds = 9 * 3600;
        tree.Boat("a.trk", 35 * 60, 139.75 * 60, 0.001, 0, -300, 900);
        tree.Boat("b, c.trk", 35 * 60, 139.75 * 60, 0.001, 0, 0, 900);
        tree.Boat("later.trk", 35 * 60, 139.75 * 60, 0.001, 0, 3600, 4000);
        tree.Write("gpsdat/empty.trk", "");
        fs::create_directory(tree.Root() / "raceadmin");
        Open();
    }
    FmCompile& Open() {
        editor = std::make_unique<FmCompile>(app, services, question, [this] { ++shows; });
        editor->ShowNow();
        return *editor;
    }
    /// Chooses a track and answers the question for the boat's name.
    void Choose(const std::string& file, const std::string& name) {
        driver::Click(editor->Command1);
        editor->Combo1.SetText(file);
        dialogs.AnswerInput(name);
        driver::Click(editor->Command2);
        EXPECT_TRUE(dialogs.AllAnswered());
    }
    /// Presses a button that opens the file dialog, and gives it a name there.
    void PressAndName(const Control& button, const std::string& name) {
        WhenModal("FmFileSelect", [name] {
            dynamic_cast<QLineEdit&>(driver::Named("Text1")).setText(QString::fromStdString(name));
            driver::Click(driver::Named("Command1"));
        });
        driver::Click(button);
    }
    void PressAndCancel(const Control& button) {
        WhenModal("FmFileSelect", [] { driver::Click(driver::Named("Command2")); });
        driver::Click(button);
    }
    std::string LastSaid() const { return dialogs.All().empty() ? "" : dialogs.All().back().Text; }
};

TEST_F(RaceEditorTest, ARaceIsMadeFromTracksSavedAndShown) {
    driver::Click(editor->Command9);  // no boats: nothing happens
    EXPECT_TRUE(dialogs.All().empty());
    EXPECT_EQ(editor->Text3.Text(), "9");
    driver::Click(editor->Command1);
    EXPECT_EQ(editor->Combo1.ListCount(), 4);
    EXPECT_EQ(editor->Combo1.Text(), "a.trk");
    Choose("a.trk", "Alpha, 艇 \"1\"");
    EXPECT_EQ(dialogs.All().back().Text, "Input Boat Name to be Displayed\r\n(Max 13 Ltrs)");
    EXPECT_FALSE(editor->Frame1.Visible());
    Choose("later.trk", "Beta");
    EXPECT_EQ(editor->List1.Item(0), "Alpha, 艇 \"1\"        a.trk");
    EXPECT_EQ(editor->Text1.Text(), "2004/08/05 12:29:00");  // of the first boat alone
    EXPECT_EQ(editor->Text2.Text(), "2004/08/05 12:45:00");
    driver::Type(editor->Text7, "Spring Cup");
    driver::Type(editor->Text6, "-6.5");
    driver::Type(editor->Text12, "5");
    driver::Click(editor->Option1);

    dialogs.AnswerYesNo(false);
    driver::Click(editor->Command4);
    EXPECT_FALSE(editor->Closed());
    dialogs.AnswerYesNo(true);
    dialogs.AnswerYesNo(true);
    PressAndName(editor->Command9, "New race");
    EXPECT_TRUE(dialogs.AllAnswered());
    EXPECT_TRUE(editor->Closed());
    EXPECT_EQ(shows, 1);
    EXPECT_EQ(app.race.RaceFileName, "New race.txt");
    EXPECT_EQ(app.race.BoatCount, 2);
    const std::string saved = tree.Read("raceadmin/New race.txt");
    for (const char* line :
         {"T1, Spring Cup\r\n", "MG, -6.5\r\n", "LG, 4.7\r\n", "TD, 9\r\n", "NU, 1\r\n",
          "BN, later.trk, Beta\r\n", "LL, 45,160\r\n", "BT,5\r\n", "ST, 2004/08/05 12:29:00\r\n"})
        EXPECT_NE(saved.find(line), std::string::npos) << line << saved;
}

TEST_F(RaceEditorTest, TracksThatCannotBeTakenAreToldAndTheFormStaysOpen) {
    struct Case {
        std::string File;
        std::string Said;
    };
    for (const Case& each : {Case{"", "Choose a GPS file"}, Case{"gone.trk", "GPS file not found"},
                             Case{"b, c.trk", "comma"}, Case{"../a.trk", "slash"}}) {
        SCOPED_TRACE(each.File);
        driver::Click(editor->Command1);
        editor->Combo1.SetText(each.File);
        dialogs.AnswerOk();
        driver::Click(editor->Command2);
        EXPECT_NE(LastSaid().find(each.Said), std::string::npos) << LastSaid();
        EXPECT_TRUE(editor->Frame1.Visible());
    }
    EXPECT_EQ(editor->Draft().BoatCount, 0);
    // A file without a fix is told, and gives no times.
    driver::Click(editor->Command1);
    editor->Combo1.SetText("empty.trk");
    dialogs.AnswerInput("Ghost");
    dialogs.AnswerOk();
    driver::Click(editor->Command2);
    EXPECT_NE(LastSaid().find("No GPS data"), std::string::npos);
    EXPECT_EQ(editor->Text1.Text() + editor->Text2.Text(), "");
    EXPECT_EQ(editor->Draft().BoatCount, 1);
    dialogs.AnswerOk();
    driver::Click(editor->Command9);
    EXPECT_EQ(LastSaid(), "Incorrect start date or time");
    EXPECT_FALSE(editor->Closed());
    // Cancel and an empty name add nothing.
    for (const std::optional<std::string>& answer : {std::optional<std::string>(), {""}, {"  "}}) {
        driver::Click(editor->Command1);
        dialogs.AnswerInput(answer);
        driver::Click(editor->Command2);
        EXPECT_EQ(editor->Draft().BoatCount, 1);
    }
}

TEST_F(RaceEditorTest, AWrongFieldIsToldAndNothingTypedIsLost) {
    Choose("a.trk", "Alpha");
    driver::Type(editor->Text1, "5 August");
    driver::Type(editor->Text3, "-");
    driver::Type(editor->Text5, "long");
    Choose("a.trk", "Alpha 2");  // does not take away what was typed
    for (const auto& [field, good] : {std::pair<TextBox*, std::string>{&editor->Text1, "2004/8/5 12:30:00"},
                                      {&editor->Text3, "9"},
                                      {&editor->Text5, "5.2"}}) {
        const std::string typed = editor->Text5.Text();
        if (field == &editor->Text3) driver::Type(editor->Text3, "-");
        dialogs.AnswerOk();
        driver::Click(editor->Command4);
        EXPECT_TRUE(dialogs.AllAnswered());
        EXPECT_NE(LastSaid().find("Incorrect"), std::string::npos);
        EXPECT_EQ(editor->Text5.Text(), typed);
        driver::Type(*field, good);
    }
    dialogs.AnswerYesNo(false);
    driver::Click(editor->Command4);
    EXPECT_EQ(LastSaid(), "Save Race Control File ?");
}

TEST_F(RaceEditorTest, BoatsAreDeletedByAClickWithAKeyHeld) {
    for (int boat = 1; boat <= 4; ++boat) Choose("a.trk", "Boat " + std::to_string(boat));
    EXPECT_FALSE(editor->Text13.Visible());
    driver::MoveTo(editor->List1, {20, 5});
    EXPECT_TRUE(editor->Text13.Visible());
    EXPECT_EQ(editor->Text13.Text(), "Shift + Click to Delete One Data.");
    driver::ClickRow(editor->List1, 1);
    EXPECT_EQ(editor->Draft().BoatCount, 4);
    driver::ClickRow(editor->List1, 1, Qt::ControlModifier);
    driver::ClickRow(editor->List1, 0, Qt::ShiftModifier);
    driver::ClickRow(editor->List1, 1, Qt::AltModifier);
    ASSERT_EQ(editor->List1.ListCount(), 1);
    EXPECT_EQ(editor->List1.Item(0), "Boat 3        a.trk");
    driver::ClickAt(editor->List1, {20, 100}, Qt::LeftButton, Qt::ShiftModifier);  // no row there
    EXPECT_EQ(editor->Draft().BoatCount, 1);
    EXPECT_EQ(editor->Text1.Text(), "2004/08/05 12:29:00");
    driver::MoveTo(*editor, {640, 610});
    EXPECT_FALSE(editor->Text13.Visible());
}

TEST_F(RaceEditorTest, AnOpenedRaceFillsTheFormAndIsEditedOnDisc) {
    tree.Race("R1.txt", "T2, Race 2\r\nWD, 210\r\nLG, 7.5\r\nBN, gone.trk, Ghost\r\nAT, a.pdf\r\n");
    tree.Write("winddat/w.CSV", "");
    tree.Write("attachment/notice, 1.pdf", "");
    driver::Type(editor->Text7, "typed before");
    EXPECT_FALSE(editor->Command5.Enabled());
    PressAndCancel(editor->Command6);
    EXPECT_EQ(editor->Text7.Text(), "typed before");
    PressAndName(editor->Command6, "R1");
    EXPECT_EQ(editor->Caption(), "Edit Race Control FIle   R1.txt");
    EXPECT_EQ(editor->Text7.Text() + "/" + editor->Text8.Text(), "Spring Cup/Race 2");
    EXPECT_EQ(editor->Text5.Text(), "7.5");
    EXPECT_EQ(editor->Text4.Text(), "210");
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
    PressAndCancel(editor->Command7);
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
    EXPECT_NE(LastSaid().find("could not be written"), std::string::npos);
    EXPECT_FALSE(editor->Closed());
    EXPECT_EQ(editor->List1.ListCount(), 1);
    EXPECT_EQ(shows, 0);
    EXPECT_TRUE(app.race.RaceFileName.empty());
    dialogs.AnswerYesNo(true);  // a cancelled dialog ends the form without saving
    PressAndCancel(editor->Command9);
    EXPECT_TRUE(editor->Closed());
    EXPECT_TRUE(fs::is_empty(tree.Root() / "raceadmin"));
}

TEST_F(RaceEditorTest, TheFiftyFirstBoatAndAttachmentAreRefused) {
    tree.Write("attachment/a.pdf", "");
    std::string lines;
    for (int i = 0; i < 50; ++i) lines += "BN, a.trk, B\r\nAT, a.pdf\r\n";
    tree.Race("R1.txt", lines);
    PressAndName(editor->Command6, "R1");
    dialogs.AnswerOk();
    driver::Click(editor->Command1);
    editor->Combo1.SetText("a.trk");
    driver::Click(editor->Command2);
    EXPECT_EQ(LastSaid(), "A race has at most 50 boats");
    dialogs.AnswerOk();
    PressAndName(editor->Command10, "a.pdf");
    EXPECT_EQ(LastSaid(), "A race has at most 50 attachments");
    EXPECT_EQ(editor->Draft().BoatCount + editor->Draft().AttachCount, 100);
}

TEST_F(RaceEditorTest, EveryTextHasItsTwoLanguages) {
    EXPECT_EQ(editor->Caption(), "Edit Race Control FIle");
    EXPECT_EQ(editor->Command1.Caption(), "Choose GPS file");
    app.settings.UseEnglish = false;
    Open();
    EXPECT_EQ(editor->Caption(), "レース管理ファイル編集");
    EXPECT_EQ(editor->Command8.Caption(), "戻　　　　る");
    EXPECT_EQ(editor->Label12.Caption(), "BOAT NAME　＆  GPS FILE　　　　　 (　Shift + ｸﾘｯｸで削除　）");
    Choose("a.trk", "アルファ");
    EXPECT_EQ(LastSaid(), "表示される艇名を入力してください\r\n(Max 13 Ltrs)");
    editor->Text2.SetText("x");
    dialogs.AnswerOk();
    driver::Click(editor->Command9);
    EXPECT_EQ(LastSaid(), "フィニッシュの日付、時間の入力スタイルが正しくありません");
}

}  // namespace
}  // namespace keelview
