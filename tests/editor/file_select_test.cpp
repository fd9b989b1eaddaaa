#include "editor/file_select.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "support/qt_driver.h"
#include "support/test_world.h"

namespace keelview {
namespace {

struct FileSelectTest : testing::Test, TestWorld {
    FileQuestion question;

    FileSelectTest() {
        for (const char* file : {"races/R1.txt", "races/江の島, \"2\".txt", "races/plain", "secret.txt"})
            tree.Write(file, "");
        question.FileFolder = tree.Root() / "races";
        question.FileExtension = "txt";
    }
};

TEST_F(FileSelectTest, NamesAreTestedByTheModeOfTheQuestion) {
    constexpr auto In = FileQuestion::Mode::MustExist;
    constexpr auto Out = FileQuestion::Mode::ToWrite;
    constexpr auto Name = FileQuestion::Mode::ToName;
    using Case = std::tuple<FileQuestion::Mode, std::string, std::string>;  // the name is empty: told
    for (const auto& [mode, typed, name] :
         {Case{In, "  R1  ", "R1.txt"}, Case{In, "r1.TXT", "r1.TXT"}, Case{In, "*.txt", ""},
          Case{In, "", ""}, Case{In, "R7", ""}, Case{In, "plain", ""}, Case{In, "../secret.txt", ""},
          Case{In, "..", ""}, Case{Out, "*.*", ""}, Case{Out, "", ""}, Case{Out, "/tmp/x.txt", ""},
          Case{Out, "a\\b", ""}, Case{Out, "New one", "New one.txt"}, Case{Out, "R2.dat", "R2.dat"},
          Case{Name, "R1", "R1.txt"}, Case{Name, "new", "new.txt"}, Case{Name, "", ""}}) {
        SCOPED_TRACE(typed);
        question.FileMode = mode;
        FileSelect form(app.settings, dialogs, question);
        form.ShowNow();
        driver::Key(form, Qt::Key_Delete);  // the whole text is chosen
        if (name.empty()) dialogs.AnswerOk();
        driver::Strike(typed + "\n");
        EXPECT_TRUE(dialogs.AllAnswered());
        EXPECT_EQ(form.Closed(), !name.empty());
        EXPECT_EQ(question.FileResultName, name);
        EXPECT_EQ(question.ShellTarget.empty(), name.empty());
    }
    EXPECT_EQ(dialogs.All().front().Text, "Input File Name");
    FileSelect form(app.settings, dialogs, question);
    form.ShowNow();
    EXPECT_EQ(form.Caption() + NumberText(form.File1.ListCount()), "Keelview3");
    question.FileMode = In;
    driver::ClickRow(form.File1, 2);
    driver::Click(form.Command1);
    EXPECT_EQ(question.ShellTarget, tree.Root() / "races/江の島, \"2\".txt");
}

TEST_F(FileSelectTest, AnExistingFileAsksBeforeItIsOverwrittenAndCancelLeavesNothing) {
    question.FileMode = FileQuestion::Mode::ToWrite;
    question.Proposal = "R1";
    for (const bool over : {false, true}) {
        question.ShellTarget = "of an earlier dialog";
        FileSelect form(app.settings, dialogs, question);
        form.ShowNow();
        dialogs.AnswerYesNo(over);
        driver::Click(form.Command1);
        EXPECT_EQ(Said(), "A file of this name exists.\r\nOverwrite?");
        EXPECT_EQ(form.Closed(), over);
        if (!over) driver::KeyDown(form, Qt::Key_Escape);
        EXPECT_TRUE(form.Closed());
        EXPECT_EQ(question.ShellTarget.filename(), over ? "R1.txt" : "");
    }
    question.FileFolder = tree.Root() / "gone";
    EXPECT_EQ(FileSelect(app.settings, dialogs, question).File1.ListCount(), 0);
}

}  // namespace
}  // namespace keelview
