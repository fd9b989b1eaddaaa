#include "editor/file_select.h"

#include <gtest/gtest.h>

#include <string>

#include "support/qt_driver.h"
#include "support/scripted_dialogs.h"
#include "support/temp_tree.h"

namespace keelview {
namespace {

struct FileSelectTest : testing::Test {
    TempTree tree;
    Settings settings;
    ScriptedDialogs dialogs;
    FileQuestion question;

    void SetUp() override {
        settings.AppTitle = "Keelview";
        settings.UseEnglish = true;
        tree.Write("races/R1.txt", "");
        tree.Write("races/江の島, \"2\".txt", "");
        tree.Write("races/plain", "");
        tree.Write("secret.txt", "");
        question.FileFolder = tree.Root() / "races";
        question.FileExtension = "txt";
    }
};

TEST_F(FileSelectTest, ItListsTheFolderAndTakesAClickedName) {
    FmFileSelect form(settings, dialogs, question);
    form.ShowNow();
    EXPECT_EQ(form.Caption(), "Keelview");
    EXPECT_EQ(form.Text1.Text(), "*.txt");
    ASSERT_EQ(form.File1.ListCount(), 3);
    driver::ClickRow(form.File1, 2);
    EXPECT_EQ(form.Text1.Text(), "江の島, \"2\".txt");
    driver::Click(form.Command1);
    EXPECT_TRUE(form.Closed());
    EXPECT_EQ(question.FileResultName, "江の島, \"2\".txt");
    EXPECT_EQ(question.ShellTarget, tree.Root() / "races/江の島, \"2\".txt");
}

TEST_F(FileSelectTest, NamesAreTestedByTheModeOfTheQuestion) {
    enum class Outcome { Taken, Told };
    struct Case {
        FileQuestion::Mode Mode;
        std::string Typed;
        Outcome Wanted;
        std::string Name;
    };
    constexpr auto In = FileQuestion::Mode::MustExist;
    constexpr auto Out = FileQuestion::Mode::ToWrite;
    for (const Case& each :
         {Case{In, "  R1  ", Outcome::Taken, "R1.txt"}, Case{In, "r1.TXT", Outcome::Taken, "r1.TXT"},
          Case{In, "*.txt", Outcome::Told, {}}, Case{In, "", Outcome::Told, {}},
          Case{In, "R7", Outcome::Told, {}}, Case{In, "plain", Outcome::Told, {}},
          Case{In, "../secret.txt", Outcome::Told, {}}, Case{In, "..", Outcome::Told, {}},
          Case{Out, "*.*", Outcome::Told, {}}, Case{Out, "", Outcome::Told, {}},
          Case{Out, "/tmp/x.txt", Outcome::Told, {}}, Case{Out, "a\\b", Outcome::Told, {}},
          Case{Out, "New one", Outcome::Taken, "New one.txt"},
          Case{Out, "R2.dat", Outcome::Taken, "R2.dat"}}) {
        SCOPED_TRACE(each.Typed);
        question.FileMode = each.Mode;
        FmFileSelect form(settings, dialogs, question);
        form.ShowNow();
        driver::Type(form.Text1, each.Typed);
        if (each.Wanted == Outcome::Told) dialogs.AnswerOk();
        driver::Click(form.Command1);
        EXPECT_TRUE(dialogs.AllAnswered());
        EXPECT_EQ(form.Closed(), each.Wanted == Outcome::Taken);
        EXPECT_EQ(question.FileResultName, each.Name);
        EXPECT_EQ(question.ShellTarget.empty(), each.Wanted == Outcome::Told);
    }
    EXPECT_EQ(dialogs.All().front().Text, "Input File Name");
}

TEST_F(FileSelectTest, AnExistingFileAsksBeforeItIsOverwritten) {
    question.FileMode = FileQuestion::Mode::ToWrite;
    question.FilePattern = "R1";  // the text of an earlier dialog
    FmFileSelect form(settings, dialogs, question);
    form.ShowNow();
    dialogs.AnswerYesNo(false);
    driver::Click(form.Command1);
    EXPECT_EQ(dialogs.All().back().Text, "Same File Name Exists.\r\nOverwight?.");
    EXPECT_FALSE(form.Closed());
    EXPECT_TRUE(question.ShellTarget.empty());
    dialogs.AnswerYesNo(true);
    driver::Click(form.Command1);
    EXPECT_EQ(question.FileResultName, "R1.txt");
}

TEST_F(FileSelectTest, CancelAndAFolderThatIsNotThereLeaveNothing) {
    question.FileFolder = tree.Root() / "gone";
    question.ShellTarget = "of an earlier dialog";
    FmFileSelect form(settings, dialogs, question);
    form.ShowNow();
    EXPECT_EQ(form.File1.ListCount(), 0);
    driver::Click(form.Command2);
    EXPECT_TRUE(form.Closed());
    EXPECT_TRUE(question.ShellTarget.empty());
}

}  // namespace
}  // namespace keelview
