#include "shell/start.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <memory>
#include <tuple>

#include "display/qt/system.h"
#include "shell/data_folder.h"
#include "support/test_world.h"

namespace keelview {
namespace {

namespace fs = std::filesystem;

struct StartTest : testing::Test, TestWorld {
    StartTest() { tree.Write("gpsdat/keep", ""); }
    StartOutcome Start() { return SettleStart(app, services); }
};

TEST_F(StartTest, TheVersionFileAndThePersonSettleModeAndLanguage) {
    using Case = std::tuple<const char*, int, bool>;  // the answer, or -1: not asked
    for (const auto& [versionFile, answer, english] :
         {Case{"1,1\r\n", -1, true}, Case{"1,0", -1, false}, Case{"0,1", 1, true}, Case{"0,1", 0, true},
          Case{" 1 ,1x\nrest", -1, true}, Case{"1,x", -1, false}}) {
        SCOPED_TRACE(versionFile);
        app = {};
        const std::size_t before = dialogs.All().size();
        if (answer >= 0) dialogs.AnswerYesNo(answer == 1);
        tree.Write("RaceAdmin/Ver.00", versionFile);
        EXPECT_EQ(Start(), answer == 1 ? StartOutcome::ShowMenu : StartOutcome::ShowRace);
        EXPECT_EQ(app.settings.EditMode, answer == 1);
        EXPECT_EQ(app.settings.UseEnglish, english);
        EXPECT_EQ(app.settings.AppTitle, english ? "Keelview" : "キールビュー");
        EXPECT_TRUE(dialogs.AllAnswered());
        EXPECT_EQ(dialogs.All().size() - before, answer < 0 ? 0U : 1U);
        EXPECT_TRUE(answer < 0 || Said() == (english ? "Edit Data ?" : "編集しますか?"));
    }
}

TEST_F(StartTest, EveryLocaleStartsInTheLanguageThatSuitsItBest) {
    const auto system = MakePlatform({});
    const QByteArray before = qgetenv("LC_ALL");
    for (const auto& [locale, japanese] : {std::pair("de_DE.UTF-8", false),
                                           {"C", false},
                                           {"jam_JM.UTF-8", false},
                                           {"ar_EG@x", false},
                                           {"ja_JP.UTF-8", true},
                                           {"ja_JP.eucJP", true},
                                           {"ja", true}}) {
        SCOPED_TRACE(locale);
        qputenv("LC_ALL", locale);
        platform.Japanese = system->UserIsJapanese();
        for (const char* versionFile : {"1", "1,", "", "1,0", "1,1"}) {
            app = {};
            tree.Write("raceadmin/Ver.00", versionFile);
            if (*versionFile == 0) dialogs.AnswerYesNo(false);
            EXPECT_EQ(Start(), StartOutcome::ShowRace);
            const char chosen = std::string_view(versionFile).size() == 3 ? versionFile[2] : 0;
            EXPECT_EQ(app.settings.UseEnglish, chosen == 0 ? !japanese : chosen == '1') << versionFile;
        }
    }
    qputenv("LC_ALL", before);
}

TEST(ClaimedFile, OneProgramAtATimeHoldsItAndLeavesNothing) {
    TempTree tree;
    const fs::path file = tree.Root() / "江の島.txt";
    const auto first = MakePlatform({});
    auto second = MakePlatform({});
    EXPECT_TRUE(first->ClaimFile(file) && first->ClaimFile(file) && !second->ClaimFile(file));
    EXPECT_TRUE(first->ClaimFile(tree.Root() / "other.txt") && second->ClaimFile(file) &&
                !first->ClaimFile(file));
    second.reset();
    EXPECT_TRUE(first->ClaimFile(file) && first->ClaimFile({}));
    EXPECT_TRUE(fs::is_empty(tree.Root()));
    EXPECT_TRUE(first->ClaimFile(tree.Root() / "no such folder" / "R1.txt"));
}

TEST(SystemWords, AreInTheProgramsLanguage) {
    const auto system = MakePlatform({});
    const auto seen = [] {
        const QMessageBox box(QMessageBox::Question, {}, {},
                              QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
        QStringList words;
        for (const QAbstractButton* button : box.buttons()) words += button->text();
        QLineEdit field;
        const std::unique_ptr<QMenu> menu(field.createStandardContextMenu());
        for (const QAction* action : menu->actions())
            if (!action->isSeparator()) words += action->text().section('\t', 0, 0);
        return words;
    };
    const QStringList english = seen();
    EXPECT_TRUE(english.contains("&Yes") && english.contains("&Copy"));
    system->SetLanguage(false);
    const QStringList japanese = seen();
    ASSERT_EQ(japanese.size(), english.size());
    for (const QString& word : japanese) EXPECT_GT(word[0].unicode(), 0x3000) << word.toStdString();
    system->SetLanguage(true);
    EXPECT_EQ(seen(), english);
}

TEST_F(StartTest, TheFirstRaceIsThatOfTheStartFileElseTheFirstOfTheFolder) {
    tree.Write("raceadmin/Ver.00", "1,1");
    for (const char* race : {"raceadmin/b.txt", "raceadmin/a.TXT"}) tree.Write(race, "");
    Start();
    EXPECT_EQ(app.race.RaceFileName, "a.TXT");
    using Case = std::pair<const char*, const char*>;
    for (const auto& [line, race] : {Case{"R1.txt\r\n", "R1.txt"}, Case{" \"R 2.txt\" \r\n", "R 2.txt"},
                                     Case{"R 2,final.txt", "R 2"}, Case{"", "a.TXT"}}) {
        tree.Write("raceadmin/racefile.st", line);
        EXPECT_EQ(FirstRace(app.settings), race) << line;
    }
}

TEST_F(StartTest, ADiscOffersItsInstallerAndATreeWithoutTracksHasItsBaseDataUnpacked) {
    tree.Write("raceadmin/Ver.00", "1,1");
    tree.Write("data.exe", "x");
    platform.Drive = DriveIsCdRom;
    EXPECT_EQ(Start(), StartOutcome::ShowRace);  // neither an installer nor a want of data
    EXPECT_TRUE(platform.Programs.empty());
    fs::remove_all(tree.Root() / "gpsdat");
    dialogs.AnswerOk();
    Start();
    EXPECT_GE(platform.Seconds, 60);
    EXPECT_EQ(dialogs.All().back().Title, "Expansion");
    tree.Write("gpsdat/keep", "");
    tree.Write("setup.exe", "x");
    dialogs.AnswerYesNo(false);
    EXPECT_EQ(Start(), StartOutcome::ShowRace);
    dialogs.AnswerYesNo(true);
    dialogs.AnswerOk();
    EXPECT_EQ(Start(), StartOutcome::End);
    EXPECT_EQ(platform.Programs, (std::vector{tree.Root() / "data.exe", tree.Root() / "setup.exe"}));
}

/// An installation below usr, and a user who has started nothing yet.
struct DataFolderTest : testing::Test {
    TempTree tree;
    fs::path program = tree.Root() / "usr/bin/keelview";
    fs::path user = tree.Root() / "home/share/keelview";

    void SetUp() override {
        tree.Write("usr/bin/keelview", "program");
        for (const char* file : {"raceadmin/R1.txt", "gpsdat/a.trk", "coastline/5339.cst", "gun.wav"})
            tree.Write("usr/share/keelview/" + std::string(file), file);
        tree.Write("usr/share/keelview/start/en/Ver.00", "1,1");
        tree.Write("usr/share/keelview/start/ja/Ver.00", "1,0");
    }
    fs::path Settle(bool japanese = false) { return SettleDataFolder(program, user, japanese); }
    std::string UserFile(const std::string& name) { return tree.Read("home/share/keelview/" + name); }
};

TEST_F(DataFolderTest, TheFirstStartLaysTheUsersFolderOutAndLaterOnesLeaveItToTheUser) {
    fs::permissions(tree.Root() / "usr/share/keelview/raceadmin/R1.txt", fs::perms{0444});
    EXPECT_EQ(Settle(true), user);
    EXPECT_EQ(tree.Files(user),
              "coastline/5339.cst gpsdat/a.trk gun.wav keelview raceadmin/R1.txt raceadmin/Ver.00 ");
    EXPECT_EQ(UserFile("raceadmin/R1.txt") + UserFile("raceadmin/Ver.00"), "raceadmin/R1.txt1,0");
    EXPECT_NE(fs::status(user / "raceadmin/R1.txt").permissions() & fs::perms::owner_write,
              fs::perms::none);
    tree.Write("home/share/keelview/raceadmin/R1.txt", "my marks");
    fs::remove(user / "gpsdat/a.trk");
    fs::rename(tree.Root() / "usr", tree.Root() / "opt");  // installed anew in another place
    program = tree.Root() / "opt/bin/keelview";
    tree.Write("opt/share/keelview/coastline/world.shore", "new");
    tree.Write("opt/share/keelview/coastline/5339.cst", "new");
    EXPECT_EQ(Settle(), user);
    EXPECT_EQ(UserFile("coastline/world.shore") + UserFile("coastline/5339.cst"), "newcoastline/5339.cst");
    EXPECT_EQ(UserFile("raceadmin/R1.txt") + UserFile("raceadmin/Ver.00"), "my marks1,0");
    EXPECT_TRUE(UserFile("keelview") == "program" && !fs::exists(user / "gpsdat/a.trk"));
}

TEST_F(DataFolderTest, AnInterruptedFirstStartIsMadeGood) {
    tree.Write("home/share/keelview/gpsdat/mine.trk", "mine");  // there already: stays as it is
    tree.Write("home/share/keelview/.new-coastline/half", "h");
    EXPECT_EQ(Settle(), user);
    EXPECT_EQ(tree.Files(user),
              "coastline/5339.cst gpsdat/mine.trk gun.wav keelview raceadmin/R1.txt raceadmin/Ver.00 ");
    EXPECT_EQ(UserFile("raceadmin/Ver.00"), "1,1");
    EXPECT_FALSE(fs::exists(user / ".new-coastline"));
}

TEST_F(DataFolderTest, ATreeThatNobodyMayWriteToIsCopiedForItsUserUnlessItOnlyShows) {
    const fs::path beside = program.parent_path();
    tree.Write("usr/bin/raceadmin/R9.txt", "R9");
    tree.Write("usr/bin/raceadmin/.trial/held", "");  // nothing can be written in its place
    tree.Write("usr/bin/plugins/own.so", "");
    tree.Write("usr/bin/raceadmin/Ver.00", "1,1");
    EXPECT_EQ(Settle(), beside);
    EXPECT_FALSE(fs::exists(user));
    tree.Write("usr/bin/raceadmin/Ver.00", "0,1");
    EXPECT_EQ(Settle(true), user);
    EXPECT_EQ(UserFile("raceadmin/R9.txt") + UserFile("raceadmin/Ver.00"), "R90,1");
    EXPECT_FALSE(fs::exists(user / "plugins") || fs::exists(user / "gun.wav"));
    fs::remove_all(beside / "raceadmin/.trial");
    EXPECT_EQ(Settle(), beside);
}

TEST_F(DataFolderTest, ATreeOfItsOwnOrAUserWithoutAFolderSeesTheDataWhereTheyAre) {
    tree.Write("home", "a file where the folder should be");
    EXPECT_EQ(Settle(), tree.Root() / "usr/share/keelview");
    fs::remove(tree.Root() / "home");
    tree.Write("usr/bin/RaceAdmin/R1.txt", "");
    EXPECT_EQ(Settle(), program.parent_path());
    EXPECT_FALSE(fs::exists(user));
    fs::remove_all(program.parent_path() / "RaceAdmin");
    fs::remove_all(tree.Root() / "usr/share");
    EXPECT_EQ(Settle(), program.parent_path());  // nothing is installed either
}

}  // namespace
}  // namespace keelview
