#include "base/files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "base/file_names.h"
#include "support/temp_tree.h"

namespace keelview {
namespace {

namespace fs = std::filesystem;

TEST(Files, AreFoundWithoutRegardToCase) {
    TempTree tree;
    for (const char* file : {"RaceAdmin/R1.txt", "gpsdat/a.trk", "gpsdat/A.TRK", "gpsdat/大会.trk"})
        tree.Write(file, "x");
    using Case = std::pair<const char*, const char*>;  // an exact name goes first
    for (const auto& [asked, found] :
         {Case{"raceadmin\\r1.TXT", "RaceAdmin/R1.txt"}, Case{"GPSDat/A.TRK", "gpsdat/A.TRK"},
          Case{"GPSDat/a.Trk", "gpsdat/A.TRK"}, Case{"gpsdat/大会.TRK", "gpsdat/大会.trk"},
          Case{"GPSDAT/new.trk", "gpsdat/new.trk"}, Case{"/./gpsdat//a.trk", "gpsdat/a.trk"}})
        EXPECT_EQ(FindBelow(tree.Root(), asked), tree.Root() / found);
}

TEST(Files, NoNameLeadsOutOfTheTree) {
    TempTree tree;
    tree.Write("outside.txt", "secret");
    tree.Write("tree/raceadmin/R1.txt", "x");
    const fs::path base = tree.Root() / "tree";
    using namespace std::string_literals;
    for (const std::string& name : {"../outside.txt"s, R"(raceadmin\..\..\outside.txt)"s,
                                    "../\0/outside.txt"s, (tree.Root() / "outside.txt").string()}) {
        const std::string found = FindBelow(base, name).lexically_normal().string();
        EXPECT_TRUE(found.starts_with(base.string() + "/") && !IsFile(found)) << found;
    }
}

TEST(FileNames, OneThatSomeSystemDoesNotTakeIsKnown) {
    for (const char* good :
         {"R1.txt", "江の島.trk", "console.txt", "COM.trk", "COM10", "a.CON", "LPTx", ".a", "😀"})
        EXPECT_TRUE(EverySystemTakes(good)) << good;
    for (const char* bad : {"", "CON", "con.txt", "Nul .trk", "aux.tar.gz", "COM1", "lpt0.txt", "COM\u00B2",
                            "a:b", "a?", "a\nb", "a/b", "a\\b", "a.", "a "})
        EXPECT_FALSE(EverySystemTakes(bad)) << bad;
}

TEST(Files, OnlyRegularFilesAreRead) {
    TempTree tree;
    tree.Write("five", "12345");
    fs::create_directory(tree.Root() / "folder");
    ASSERT_EQ(::mkfifo((tree.Root() / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(ReadWholeFile(tree.Root() / "five", 5), "12345");
    EXPECT_FALSE(ReadWholeFile(tree.Root() / "five", 4));
    for (const char* name : {"folder", "pipe", "none"})
        EXPECT_FALSE(ReadWholeFile(tree.Root() / name) || FileSize(tree.Root() / name)) << name;
    EXPECT_EQ(FileSize(tree.Root() / "five"), 5U);
}

TEST(Files, ListsFollowThePatternAndTheAlphabet) {
    TempTree tree;
    for (const char* name : {"b.txt", "A.TXT", "c.trk", "d", "大.txt", "e.txt.bak"}) tree.Write(name, "");
    fs::create_directory(tree.Root() / "f.txt");
    using Names = std::vector<std::string>;
    for (const char* pattern : {"*.txt", "?.TXT"})
        EXPECT_EQ(ListFiles(tree.Root(), pattern), (Names{"A.TXT", "b.txt", "大.txt"}));
    EXPECT_EQ(ListFiles(tree.Root(), "*.*").size(), 6U);
    EXPECT_EQ(ListFiles(tree.Root(), "*t*k"), (Names{"c.trk", "e.txt.bak"}));
    EXPECT_TRUE(ListFiles(tree.Root() / "none", "*").empty());
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
    EXPECT_FALSE(WriteFileAtomically(tree.Root() / "none/yet/file", "new"));  // the folders come with it
    EXPECT_EQ(tree.Read("none/yet/file"), "new");
    EXPECT_EQ(ListFiles(tree.Root(), "*"), (std::vector<std::string>{"link", "real"}));
}

TEST(Files, WhatMayNotBeWrittenStaysAsItIs) {
    TempTree tree;
    tree.Write("marked", "old");
    tree.Write("shut/file", "old");
    fs::create_directory(tree.Root() / "folder");
    fs::permissions(tree.Root() / "marked", fs::perms{0444});
    fs::permissions(tree.Root() / "shut", fs::perms{0555});
    for (const char* file : {"marked", "shut/file", "shut/other"})
        EXPECT_EQ(WriteFileAtomically(tree.Root() / file, "new"), std::errc::permission_denied) << file;
    EXPECT_EQ(WriteFileAtomically(tree.Root() / "marked/file", "new"), std::errc::not_a_directory);
    EXPECT_TRUE(WriteFileAtomically(tree.Root() / "folder", "new"));
    EXPECT_EQ(tree.Read("marked") + tree.Read("shut/file"), "oldold");
    EXPECT_EQ(ListFiles(tree.Root(), "*").size() + ListFiles(tree.Root() / "shut", "*").size(), 2U);
    fs::permissions(tree.Root() / "shut", fs::perms{0755});
}

}  // namespace
}  // namespace keelview
