#include "base/files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

#include "support/temp_tree.h"

namespace keelview {
namespace {

namespace fs = std::filesystem;

TEST(Files, AreFoundWithoutRegardToCase) {
    TempTree tree;
    tree.Write("RaceAdmin/R1.txt", "x");
    tree.Write("gpsdat/a.trk", "x");
    tree.Write("gpsdat/A.TRK", "x");
    tree.Write("gpsdat/大会.trk", "x");
    EXPECT_EQ(FindBelow(tree.Root(), "raceadmin\\r1.TXT"), tree.Root() / "RaceAdmin/R1.txt");
    EXPECT_EQ(FindBelow(tree.Root(), "GPSDat/A.TRK"), tree.Root() / "gpsdat/A.TRK");  // exact goes first
    EXPECT_EQ(FindBelow(tree.Root(), "GPSDat/a.Trk"), tree.Root() / "gpsdat/A.TRK");
    EXPECT_EQ(FindBelow(tree.Root(), "gpsdat/大会.TRK"), tree.Root() / "gpsdat/大会.trk");
    EXPECT_EQ(FindBelow(tree.Root(), "GPSDAT/new.trk"), tree.Root() / "gpsdat/new.trk");
    EXPECT_EQ(FindBelow(tree.Root(), "/./gpsdat//a.trk"), tree.Root() / "gpsdat/a.trk");
}

TEST(Files, NoNameLeadsOutOfTheTree) {
    TempTree tree;
    tree.Write("outside.txt", "secret");
    tree.Write("tree/raceadmin/R1.txt", "x");
    const fs::path base = tree.Root() / "tree";
    const std::string zero("../\0/outside.txt", 16);
    for (const std::string& name :
         {std::string("../outside.txt"), std::string("raceadmin\\..\\..\\outside.txt"),
          (tree.Root() / "outside.txt").string(), zero}) {
        const fs::path found = FindBelow(base, name);
        EXPECT_FALSE(IsFile(found)) << found;
        EXPECT_TRUE(found.lexically_normal().string().starts_with(base.string() + "/")) << found;
    }
}

TEST(Files, OnlyRegularFilesAreRead) {
    TempTree tree;
    tree.Write("five", "12345");
    fs::create_directory(tree.Root() / "folder");
    ASSERT_EQ(::mkfifo((tree.Root() / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(ReadWholeFile(tree.Root() / "five", 5), "12345");
    EXPECT_FALSE(ReadWholeFile(tree.Root() / "five", 4));
    for (const char* name : {"folder", "pipe", "none"}) {
        EXPECT_FALSE(ReadWholeFile(tree.Root() / name)) << name;
        EXPECT_FALSE(FileSize(tree.Root() / name)) << name;
    }
    EXPECT_EQ(FileSize(tree.Root() / "five"), 5U);
}

TEST(Files, ListsFollowThePatternAndTheAlphabet) {
    TempTree tree;
    for (const char* name : {"b.txt", "A.TXT", "c.trk", "d", "大.txt", "e.txt.bak"}) tree.Write(name, "");
    fs::create_directory(tree.Root() / "f.txt");
    using Names = std::vector<std::string>;
    EXPECT_EQ(ListFiles(tree.Root(), "*.txt"), (Names{"A.TXT", "b.txt", "大.txt"}));
    EXPECT_EQ(ListFiles(tree.Root(), "?.TXT"), (Names{"A.TXT", "b.txt", "大.txt"}));
    EXPECT_EQ(ListFiles(tree.Root(), "*.*").size(), 6U);
    EXPECT_EQ(ListFiles(tree.Root(), "*t*k"), (Names{"c.trk", "e.txt.bak"}));
    EXPECT_TRUE(ListFiles(tree.Root() / "none", "*").empty());
}

/// Names of everything in a folder, hidden or not.
std::size_t Entries(const fs::path& folder) {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

TEST(Files, AReplacementKeepsRightsAndLinks) {
    TempTree tree;
    tree.Write("real", "old");
    fs::permissions(tree.Root() / "real", fs::perms{0640});
    fs::create_symlink("real", tree.Root() / "link");
    EXPECT_FALSE(WriteFileAtomically(tree.Root() / "link", "new"));
    EXPECT_EQ(tree.Read("real"), "new");
    EXPECT_TRUE(fs::is_symlink(tree.Root() / "link"));
    EXPECT_EQ(fs::status(tree.Root() / "real").permissions(), fs::perms{0640});
    EXPECT_FALSE(WriteFileAtomically(tree.Root() / "fresh", ""));
    EXPECT_EQ(FileSize(tree.Root() / "fresh"), 0U);
    EXPECT_EQ(Entries(tree.Root()), 3U);
}

TEST(Files, WhatMayNotBeWrittenStaysAsItIs) {
    TempTree tree;
    tree.Write("marked", "old");
    tree.Write("shut/file", "old");
    fs::create_directory(tree.Root() / "folder");
    fs::permissions(tree.Root() / "marked", fs::perms{0444});
    fs::permissions(tree.Root() / "shut", fs::perms{0555});
    EXPECT_EQ(WriteFileAtomically(tree.Root() / "marked", "new"), std::errc::permission_denied);
    EXPECT_EQ(WriteFileAtomically(tree.Root() / "shut/file", "new"), std::errc::permission_denied);
    EXPECT_EQ(WriteFileAtomically(tree.Root() / "shut/other", "new"), std::errc::permission_denied);
    EXPECT_EQ(WriteFileAtomically(tree.Root() / "marked/file", "new"), std::errc::not_a_directory);
    EXPECT_TRUE(WriteFileAtomically(tree.Root() / "folder", "new"));
    EXPECT_EQ(tree.Read("marked"), "old");
    EXPECT_EQ(tree.Read("shut/file"), "old");
    EXPECT_EQ(Entries(tree.Root()) + Entries(tree.Root() / "shut"), 4U);
    fs::permissions(tree.Root() / "shut", fs::perms{0755});
    EXPECT_FALSE(WriteFileAtomically(tree.Root() / "none/yet/file", "new"));  // the folders come with it
    EXPECT_EQ(tree.Read("none/yet/file"), "new");
}

}  // namespace
}  // namespace keelview
