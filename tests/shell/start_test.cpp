#include "shell/start.h"

#include <gtest/gtest.h>

#include <tuple>

#include "support/test_world.h"

namespace keelview {
namespace {

struct StartTest : testing::Test, TestWorld {
    StartTest() { tree.Write("gpsdat/keep", ""); }
    StartOutcome Start() { return SettleStart(app, services); }
};

TEST_F(StartTest, VersionFileSettlesModeLanguageAndTheQuestion) {
    using Case = std::tuple<const char*, bool, bool>;
    for (const auto& [versionFile, edit, english] :
         {Case{"1,1\r\n", false, true}, Case{"1,0", false, false}, Case{"0,1", true, true},
          Case{"1", false, false}, Case{" 1 ,1x\nrest", false, true}, Case{"", true, false}}) {
        SCOPED_TRACE(versionFile);
        app = {};
        ScriptedDialogs fresh;
        Services asked{platform, fresh};
        if (edit) fresh.AnswerYesNo(true);
        tree.Write("RaceAdmin/Ver.00", versionFile);
        EXPECT_EQ(SettleStart(app, asked), edit ? StartOutcome::ShowMenu : StartOutcome::ShowRace);
        EXPECT_EQ(app.settings.EditMode, edit);
        EXPECT_EQ(app.settings.UseEnglish, english);
        EXPECT_EQ(app.settings.AppTitle, english ? "Keelview" : "キールビュー");
        EXPECT_TRUE(fresh.AllAnswered());
        const std::string asks = english ? "Edit Data ?" : "編集しますか?";
        EXPECT_EQ(fresh.All().size() == 1 && fresh.All().front().Text == asks, edit);
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
    using Case = std::pair<const char*, const char*>;
    for (const auto& [line, race] : {Case{"R1.txt\r\n", "R1.txt"}, Case{" \"R 2.txt\" \r\n", "R 2.txt"},
                                     Case{"R 2,final.txt", "R 2"}, Case{"", "a.TXT"}}) {
        tree.Write("raceadmin/racefile.st", line);
        EXPECT_EQ(FirstRace(app.settings), race) << line;
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
    EXPECT_EQ(platform.Programs, std::vector{tree.Root() / "setup.exe"});
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
