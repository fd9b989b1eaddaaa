// What a race control file says stays in it until a person changes it.

#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "racedata/race_file.h"
#include "support/race_tree.h"

namespace keelview {
namespace {

namespace fs = std::filesystem;

struct LostNothing : testing::Test {
    RaceTree tree;
    RaceControl race;

    void SetUp() override {
        for (const char* track : {"gpsdat/a.trk", "gpsdat/b.trk"}) tree.Write(track, "");
        race.RaceFileName = "R.txt";
    }
    void Read(const std::string& text) {
        tree.Write("raceadmin/R.txt", text);
        ReadRaceFile(tree.Root(), race);
    }
    std::string Saved() {
        EXPECT_FALSE(SaveRaceFile(tree.Root(), race));
        return tree.Read("raceadmin/R.txt");
    }
};

TEST_F(LostNothing, AFileThatWouldStayTheSameIsNotWritten) {
    Read("T1, Cup\r\nLG, 4.7\r\nLL, 45,160\r\nBT,3\r\n");
    const auto path = tree.Root() / "raceadmin/R.txt";
    const auto longAgo = fs::last_write_time(path) - std::chrono::hours(100);
    fs::last_write_time(path, longAgo);
    Saved();
    EXPECT_EQ(fs::last_write_time(path), longAgo);
    race.RaceTitle1 = "Cup!";
    Saved();
    EXPECT_NE(fs::last_write_time(path), longAgo);
}

}  // namespace
}  // namespace keelview
