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

TEST_F(LostNothing, WhatIsAbsentKeepsItsPlaceInTheFile) {
    const std::string file =
        "WF, w.csv\r\nLG, 4.7\r\nBN, gone.trk, Ghost\r\nBN, a.trk, Alpha\r\nBN, lost.trk, Lost\r\n"
        "BN, far.trk, Far\r\nBN, b.trk, Beta\r\nCRS, L1, MK1\r\nPT, 1, 2, 700\r\nPT, 5, 1, -\r\n"
        "LL, 45,160\r\nBT,3\r\n";
    Read(file);
    ASSERT_EQ(race.Boats.Count(), 2);
    EXPECT_EQ(BoatNumberInFile(race, 1), 2);
    EXPECT_EQ(BoatNumberInFile(race, 2), 5);
    EXPECT_FALSE(HasWindFile(race));
    EXPECT_EQ(Saved(), file);
    tree.Write("winddat/w.csv", "");
    for (const char* track : {"gone", "lost", "far"})
        tree.Write(std::string("gpsdat/") + track + ".trk", "");
    Read(file);
    EXPECT_EQ(race.Boats.Count(), 5);
    EXPECT_TRUE(race.AbsentBoats.Empty() && HasWindFile(race));
    EXPECT_EQ(Saved(), file);
}

TEST_F(LostNothing, ATimeDifferenceOfNoneOrOfQuartersIsOne) {
    struct Case {
        const char* line;
        std::optional<double> hours;
    };
    for (const Case& c :
         {Case{"TD, 0", 0}, Case{"TD, 5.5", 5.5}, Case{"TD, -3.75", -3.75}, Case{"TD, 9", 9},
          Case{"TD, 5.3", {}}, Case{"TD, 5:30", {}}, Case{"TD, ", {}}, Case{"TD, 1e9", {}}}) {
        Read(std::string(c.line) + "\n");
        EXPECT_EQ(race.TimeDiff, c.hours) << c.line;
        const bool written = Saved().find(std::string(c.line) + "\r\n") != std::string::npos;
        EXPECT_EQ(written, c.hours.has_value()) << c.line;
    }
}

TEST_F(LostNothing, TimesSetByHandAreReadForTheCellsOfTheRace) {
    Read(
        "PT, 2, 1, 80\nPT, 1, 1, 90\nPT, 1, 1, -\nPT, 1, 2, -5\nPT, 3, 1, 10\nPT, 1, 3, 10\nPT, 0, 1, 10\n"
        "PT, 1, 1\nPT, 1, 1, soon\nPT, 1, 1, 2, 3\nPT, 1.5, 1, 3\nPT, 1, 1, 1e9\n"
        "BN, a.trk, A\nBN, b.trk, B\nCRS, L1, MK1\n");
    const std::string saved = Saved();
    EXPECT_NE(saved.find("CRS, L1, MK1\r\nPT, 1, 1, -\r\nPT, 1, 2, -5\r\nPT, 2, 1, 80\r\nLL"),
              std::string::npos)
        << saved;
}

}  // namespace
}  // namespace keelview
