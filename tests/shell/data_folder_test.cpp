#include "shell/data_folder.h"

#include <gtest/gtest.h>

#include "support/temp_tree.h"

namespace keelview {
namespace {

namespace fs = std::filesystem;

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

TEST_F(DataFolderTest, TheFirstStartLaysTheUsersFolderOutInTheUsersLanguage) {
    fs::permissions(tree.Root() / "usr/share/keelview/raceadmin/R1.txt", fs::perms{0444});
    EXPECT_EQ(Settle(true), user);
    EXPECT_EQ(UserFile("raceadmin/R1.txt"), "raceadmin/R1.txt");
    EXPECT_EQ(UserFile("raceadmin/Ver.00"), "1,0");
    EXPECT_EQ(UserFile("gun.wav"), "gun.wav");
    EXPECT_FALSE(fs::exists(user / "start"));
    EXPECT_EQ(UserFile("keelview"), "program");
    EXPECT_NE(fs::status(user / "raceadmin/R1.txt").permissions() & fs::perms::owner_write,
              fs::perms::none);
}

TEST_F(DataFolderTest, LaterStartsLeaveItToTheUser) {
    Settle();
    tree.Write("home/share/keelview/raceadmin/R1.txt", "my marks");
    fs::remove(user / "gpsdat/a.trk");
    fs::rename(tree.Root() / "usr", tree.Root() / "opt");  // installed anew in another place
    program = tree.Root() / "opt/bin/keelview";
    EXPECT_EQ(Settle(true), user);
    EXPECT_EQ(UserFile("raceadmin/R1.txt"), "my marks");
    EXPECT_EQ(UserFile("raceadmin/Ver.00"), "1,1");
    EXPECT_FALSE(fs::exists(user / "gpsdat/a.trk"));
    EXPECT_EQ(UserFile("keelview"), "program");
}

TEST_F(DataFolderTest, AnInterruptedFirstStartIsMadeGood) {
    tree.Write("home/share/keelview/gpsdat/mine.trk", "mine");  // there already: stays as it is
    tree.Write("home/share/keelview/.new-coastline/half", "h");
    EXPECT_EQ(Settle(), user);
    EXPECT_EQ(UserFile("gpsdat/mine.trk"), "mine");
    EXPECT_FALSE(fs::exists(user / "gpsdat/a.trk"));
    EXPECT_EQ(UserFile("coastline/5339.cst"), "coastline/5339.cst");
    EXPECT_FALSE(fs::exists(user / "coastline/half"));
    EXPECT_FALSE(fs::exists(user / ".new-coastline"));
}

TEST_F(DataFolderTest, ATreeOfItsOwnStaysWhereItIs) {
    tree.Write("usr/bin/RaceAdmin/R1.txt", "");
    EXPECT_EQ(Settle(), program.parent_path());
    EXPECT_FALSE(fs::exists(user));
    fs::remove_all(program.parent_path() / "RaceAdmin");
    fs::remove_all(tree.Root() / "usr/share");
    EXPECT_EQ(Settle(), program.parent_path());  // nothing is installed either
}

TEST_F(DataFolderTest, AUserWithoutAFolderSeesTheSharedData) {
    tree.Write("home", "a file where the folder should be");
    EXPECT_EQ(Settle(), tree.Root() / "usr/share/keelview");
}

}  // namespace
}  // namespace keelview
