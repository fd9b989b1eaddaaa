#include "shell/start.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/fake_platform.h"
#include "support/scripted_dialogs.h"
#include "support/temp_tree.h"

namespace keelview {
namespace {

/// A start in a tree of its own, with a scripted person and a scripted system.
struct StartTest : testing::Test {
    TempTree tree;
    FakePlatform platform;
    ScriptedDialogs dialogs;
    Services services{platform, dialogs};
    AppState app;

    void SetUp() override {
        platform.Folder = tree.Root();
        platform.Locale = LocaleEnglish;
        tree.Write("gpsdat/keep", "");
    }
    StartOutcome Start() { return SettleStart(app, services); }
};

TEST_F(StartTest, VersionFileSettlesModeLanguageAndTheQuestion) {
    struct Case {
        const char* versionFile;  // empty: none
        bool edit;
        bool english;
    };
    for (const Case& each :
         {Case{"1,1\r\n", false, true}, Case{"1,0", false, false}, Case{"0,1", true, true},
          Case{"1", false, false}, Case{" 1 ,1x\nrest", false, true}, Case{"", true, false}}) {
        SCOPED_TRACE(each.versionFile);
        app = {};
        ScriptedDialogs fresh;
        Services asked{platform, fresh};
        if (each.edit) fresh.AnswerYesNo(true);
        tree.Write("RaceAdmin/Ver.00", each.versionFile);
        EXPECT_EQ(SettleStart(app, asked), each.edit ? StartOutcome::ShowMenu : StartOutcome::ShowRace);
        EXPECT_EQ(app.settings.EditMode, each.edit);
        EXPECT_EQ(app.settings.UseEnglish, each.english);
        EXPECT_EQ(app.settings.AppTitle, each.english ? "Keelview" : "キールビュー");
        EXPECT_TRUE(fresh.AllAnswered());
        if (each.edit) {
            EXPECT_EQ(fresh.All().back().Text, each.english ? "Edit Data ?" : "編集しますか?");
        }
    }
}

TEST_F(StartTest, NoToTheQuestionIsBrowseOnly) {
    dialogs.AnswerYesNo(false);
    EXPECT_EQ(Start(), StartOutcome::ShowRace);
    EXPECT_FALSE(app.settings.EditMode);
}

TEST_F(StartTest, AnUnknownLocaleEndsWithItsMessageInEnglish) {
    tree.Write("raceadmin/Ver.00", "1,0");
    platform.Locale = 0;
    dialogs.AnswerOk();
    EXPECT_EQ(Start(), StartOutcome::End);
    EXPECT_NE(dialogs.All().front().Text.find("change your locale"), std::string::npos);
}

TEST_F(StartTest, TheFirstRaceIsThatOfTheStartFileElseTheFirstOfTheFolder) {
    tree.Write("raceadmin/Ver.00", "1,1");
    tree.Write("raceadmin/b.txt", "");
    tree.Write("raceadmin/a.TXT", "");
    Start();
    EXPECT_EQ(app.race.RaceFileName, "a.TXT");
    struct Case {
        const char* line;
        const char* race;
    };
    for (const Case& each : {Case{"R1.txt\r\n", "R1.txt"}, Case{" \"R 2.txt\" \r\n", "R 2.txt"},
                             Case{"R 2,final.txt", "R 2"}, Case{"", "a.TXT"}}) {
        tree.Write("raceadmin/racefile.st", each.line);
        EXPECT_EQ(FirstRace(app.settings), each.race) << each.line;
    }
}

TEST_F(StartTest, AProgramOnADiscOffersItsInstallerWhereItHasOne) {
    tree.Write("raceadmin/Ver.00", "1,1");
    platform.Drive = DriveIsCdRom;
    EXPECT_EQ(Start(), StartOutcome::ShowRace);  // no installer, no question
    tree.Write("setup.exe", "x");
    dialogs.AnswerYesNo(false);
    EXPECT_EQ(Start(), StartOutcome::ShowRace);
    dialogs.AnswerYesNo(true);
    dialogs.AnswerOk();
    EXPECT_EQ(Start(), StartOutcome::End);
    ASSERT_EQ(platform.Programs.size(), 1U);
    EXPECT_EQ(platform.Programs[0].filename(), "setup.exe");
}

TEST_F(StartTest, BaseDataAreUnpackedOnlyIntoATreeWithoutTracks) {
    tree.Write("raceadmin/Ver.00", "1,1");
    tree.Write("data.exe", "x");
    Start();
    EXPECT_TRUE(platform.Programs.empty());
    std::filesystem::remove_all(tree.Root() / "gpsdat");
    dialogs.AnswerOk();
    const double before = platform.Seconds;
    Start();
    EXPECT_EQ(platform.Programs.size(), 1U);
    EXPECT_GE(platform.Seconds - before, 60.0);
    EXPECT_EQ(dialogs.All().back().Title, "Expansion");
}

}  // namespace
}  // namespace keelview
