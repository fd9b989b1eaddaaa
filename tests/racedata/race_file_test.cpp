#include "racedata/race_file.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/race_tree.h"

namespace keelview {
namespace {

constexpr const char* Sample =
    "WF, R2_WIND.CSV\r\nT1, Spring Cup\r\nT2, Race 2\r\nMG, -7\r\nLG, 4.7\r\nST, 2004/8/5 12:30:00\r\n"
    "FT, 2004/8/5 13:50:00\r\nTD, 9\r\nWD, 210\r\nNU, 1\r\nBN, boat1.trk, Alpha\r\nBN, boat2.trk, Beta\r\n"
    "MK, 2112.51, 8385.14\r\nLN, 2111.02, 8384.80, 2111.11, 8384.970\r\nCRS, L1, MK1, L1\r\n"
    "LL, 45,160\r\nBT,3\r\nAT, notice.pdf\r\n";

/// A tree with the tracks and the wind of the sample, and a race that its tests read into and write from.
struct RaceFileTest : testing::Test {
    RaceTree tree;
    RaceControl race;

    void SetUp() override {
        for (const char* name : {"gpsdat/boat1.trk", "gpsdat/boat2.trk", "winddat/R2_WIND.CSV"})
            tree.Write(name, "");
        race.RaceFileName = "R2.txt";
    }
    void Put(const std::string& text) { tree.Write("raceadmin/R2.txt", text); }
    std::string Written() { return tree.Read("raceadmin/R2.txt"); }
    RaceFileReport Read(const std::string& text) {
        Put(text);
        return ReadRaceFile(tree.Root(), race);
    }
    void Save() { EXPECT_FALSE(SaveRaceFile(tree.Root(), race)); }
};

TEST_F(RaceFileTest, EveryKeyOfTheSampleArrives) {
    const RaceFileReport report = Read(Sample);
    EXPECT_TRUE(report.Opened);
    EXPECT_EQ(report.SkippedLines, 0);
    EXPECT_EQ(race.WindFileName, "R2_WIND.CSV");
    EXPECT_EQ(race.RaceTitle1 + "|" + race.RaceTitle2 + "|" + race.RaceTitle3, "Spring Cup|Race 2|");
    EXPECT_EQ(race.MagVariation, -7);
    EXPECT_EQ(race.TimeDiff, 9);
    EXPECT_EQ(race.WindDirection, 210);
    EXPECT_TRUE(race.NorthUp);
    ASSERT_EQ(race.Boats.Count(), 2);
    EXPECT_EQ(race.Boats[2].BoatFile + race.Boats[2].BoatName, "boat2.trkBeta");
    EXPECT_EQ(race.Marks[1].MarkLat, 2112.51);
    EXPECT_EQ(race.Lines[1].LineLon2.Text(), "8384.970");
    EXPECT_EQ(race.CourseOrder, (decltype(race.CourseOrder){"L1", "MK1", "L1"}));
    EXPECT_EQ(race.AttachFile[1], " notice.pdf");
    EXPECT_EQ(race.DataFromTime, ParseDateTime("2004/8/5 12:26:30"));
    EXPECT_EQ(race.DataToTime, ParseDateTime("2004/8/5 13:50:00"));
    EXPECT_EQ(race.RaceDuration, 4800);
    EXPECT_EQ(ReplaySpan(race), 5040);
}

TEST_F(RaceFileTest, TheWriterWritesItsOwnOrderAndFormAndDropsWhatItDoesNotKnow) {
    Read(std::string("XX, unknown\r\nBT,2.6\r\nno comma\r\n\r\n") + Sample);
    race.MapFile.Add("5339");
    Save();
    std::string expected = Sample;
    expected.replace(expected.find("LL,"), 0, "MAP, 5339\r\n");
    expected.replace(expected.find("AT, "), 4, "AT,  ");  // the blank behind the comma is part of the name
    EXPECT_EQ(Written(), expected);
    race = {};
    race.RaceFileName = "R2.txt";
    race.BoatLength = 4.7F;  // as the system holds it
    race.LayLineUp = 42.5;
    race.PreStartMinutes = 2.5;
    Save();
    EXPECT_EQ(Written(), "LG, 4.7\r\nLL, 42.5,160\r\nBT,3\r\n");
    race.RaceFileName.clear();
    Save();  // no race is open: nothing is written
    EXPECT_EQ(Written(), "LG, 4.7\r\nLL, 42.5,160\r\nBT,3\r\n");
}

TEST_F(RaceFileTest, ValuesAreReadLenientlyAndBadLinesChangeNothing) {
    const RaceFileReport report = Read(
        " T1 ,  Cup, day 2 \nLL, 0,170\nBT,2.6\nTD, 2.5\nTD, nine\nMG, -7 west\nLL, 50\nMK, 1\n"
        "LN, 1, 2, 3\nBN, boat1.trk\nBN, boat1.trk, Boat, No 1\nt1, small\nNU, x\nWD, 1e999\n");
    EXPECT_EQ(race.RaceTitle1, "Cup, day 2");
    EXPECT_EQ(race.LayLineUp, 45);
    EXPECT_EQ(race.LayLineDown, 170);
    EXPECT_EQ(PreStartSeconds(race), 156);
    EXPECT_EQ(race.TimeDiff, 2.5);
    EXPECT_EQ(race.MagVariation, -7);
    EXPECT_EQ(race.Marks.Count() + race.Lines.Count(), 0);
    ASSERT_EQ(race.Boats.Count(), 1);
    EXPECT_EQ(race.Boats[1].BoatName, "Boat, No 1");
    EXPECT_FALSE(race.NorthUp);
    EXPECT_EQ(race.WindDirection, 0);
    EXPECT_EQ(report.SkippedLines, 6);
}

TEST_F(RaceFileTest, AFileStartsFromTheResetValuesButKeepsVariationAndLength) {
    Read(Sample);
    race.BoatLength = 9;
    Read("T2, Next\n");
    EXPECT_TRUE(race.Boats.Empty() && race.Marks.Empty() && race.Lines.Empty() &&
                race.CourseOrder.Empty() && race.AttachFile.Empty());
    EXPECT_EQ(race.RaceTitle1 + race.WindFileName + race.Start.Typed(), "");
    EXPECT_FALSE(race.TimeDiff);
    EXPECT_EQ(race.LayLineUp + race.LayLineDown + PreStartSeconds(race), 45 + 160 + 180);
    EXPECT_EQ(race.MagVariation, -7);
    EXPECT_EQ(race.BoatLength, 9);
    EXPECT_FALSE(race.DataFromTime);
    race.BoatLength = 0;
    EXPECT_FALSE(Read("LG, 0\nST, soon\n").MissingTracks.size());
    EXPECT_FLOAT_EQ(static_cast<float>(race.BoatLength), 4.7F);
    EXPECT_TRUE(race.Start.Unreadable() && !race.Start.At() && !race.DataFromTime);
    std::filesystem::remove(tree.Root() / "raceadmin/R2.txt");
    EXPECT_FALSE(ReadRaceFile(tree.Root(), race).Opened);
}

TEST_F(RaceFileTest, BoatsWithoutATrackAndAMissingWindAreLeftOut) {
    const RaceFileReport report =
        Read("WF, none.csv\nBN, gone.trk, A\nBN, BOAT2.trk, B\nBN, lost.trk, C\n");
    EXPECT_EQ(report.MissingTracks, (std::vector<std::string>{"gone.trk", "lost.trk"}));
    ASSERT_EQ(race.Boats.Count(), 1);
    EXPECT_EQ(race.Boats[1].BoatFile + race.Boats[1].BoatName, "BOAT2.trkB");
    EXPECT_EQ(race.WindFileName, "");
}

TEST_F(RaceFileTest, TheLimitsHold) {
    std::string text;
    for (int i = 1; i <= 60; ++i)
        text += "BN, boat1.trk, B\nMK, 1, 2\nLN, 1, 2, 3, 4\nCRS, MK1, MK2\nAT, a\nMAP, 5339\n";
    Read(text);
    EXPECT_EQ(race.Boats.Count(), 50);
    EXPECT_EQ(race.Marks.Count(), 30);
    EXPECT_EQ(race.Lines.Count(), 10);
    EXPECT_EQ(race.CourseOrder.Count(), 50);
    EXPECT_EQ(race.AttachFile.Count(), 50);
    EXPECT_TRUE(ReadRaceFileForDistribution(tree.Root(), race));
    EXPECT_EQ(race.MapFile.Count(), 20);
}

TEST_F(RaceFileTest, TheEditorKeepsWhatTheFileSays) {
    Put(" T1, not seen\nT2, seen\nLG, 5 m\nLG, 6\nWF, none.csv\nBN, gone.trk, A\nMAP, 5339\n"
        "ST, 2004/8/5 12:30:00\nFT, 2004/8/5 13:00:00\n");
    ASSERT_TRUE(ReadRaceFileForEdit(tree.Root(), race));
    EXPECT_EQ(race.RaceTitle1 + race.RaceTitle2, "seen");
    EXPECT_EQ(race.BoatLength, 6);
    EXPECT_EQ(race.WindFileName, "none.csv");
    EXPECT_EQ(race.Boats.Count(), 1);
    EXPECT_EQ(race.MapFile.Count(), 0);
    EXPECT_EQ(race.DataFromTime, ParseDateTime("2004/8/5 12:25:00"));
    EXPECT_EQ(race.RaceDuration, 1800);
    race.RaceFileName = "none.txt";
    EXPECT_FALSE(ReadRaceFileForEdit(tree.Root(), race));
}

TEST_F(RaceFileTest, TheDistributionReadsItsFourKeys) {
    race.RaceTitle1 = "stays";
    Put(std::string(Sample) + "MAP, 5339 \n AT ,  b.pdf\n");
    ASSERT_TRUE(ReadRaceFileForDistribution(tree.Root(), race));
    EXPECT_EQ(race.RaceTitle1, "stays");
    EXPECT_EQ(race.Boats.Count(), 2);
    EXPECT_EQ(race.MapFile[1], "5339.cst");
    EXPECT_EQ(race.AttachFile[1] + race.AttachFile[2], "notice.pdfb.pdf");
    EXPECT_EQ(race.WindFileName, "R2_WIND.CSV");
}

TEST_F(RaceFileTest, AFileKeepsItsEncoding) {
    struct Case {
        const char* name;
        std::string before;  // bytes of the file; empty: no file yet
        std::string title;
        std::string after;  // bytes of the title's line
    };
    const std::string mark = "\xEF\xBB\xBF";
    for (const Case& c : {
             Case{"new", "", "テスト", "T1, \x83\x65\x83\x58\x83\x67\r\n"},
             Case{"new, beyond Shift-JIS", "", "Кубок 杯 ñ", "T1, Кубок 杯 ñ\r\n"},
             Case{"UTF-8", "T1, 杯\r\n", "テスト", "T1, テスト\r\n"},
             Case{"UTF-8, without need from now on", "T1, 杯\r\n", "Cup", "T1, Cup\r\n"},
             Case{"UTF-8 with its mark", mark + "T1, a\r\n", "テスト", mark + "T1, テスト\r\n"},
             Case{"Shift-JIS", "T1, \x94\x74\r\n", "テスト", "T1, \x83\x65\x83\x58\x83\x67\r\n"},
             // The doubled code of the NOT sign stays what it was.
             Case{"untouched", "T1, \xEE\xF9\r\n", "￢", "T1, \xEE\xF9\r\n"},
             // Texts whose bytes would be taken for another encoding get the one that is told apart.
             Case{"accents like kana", "", "ñó", mark + "T1, ñó\r\n"},
             Case{"kana like an accent", "", "ﾃｱ", "T1, ﾃｱ\r\n"},
         }) {
        SCOPED_TRACE(c.name);
        std::filesystem::remove(tree.Root() / "raceadmin/R2.txt");
        std::filesystem::create_directories(tree.Root() / "raceadmin");
        if (!c.before.empty()) Put(c.before);
        race = {};
        race.RaceFileName = "R2.txt";
        race.RaceTitle1 = c.title;
        Save();
        EXPECT_EQ(Written(), c.after + "LL, 45,160\r\nBT,3\r\n");
        ReadRaceFile(tree.Root(), race);
        EXPECT_EQ(race.RaceTitle1, c.title);
    }
}

TEST_F(RaceFileTest, AFileThatMayNotBeWrittenStaysWhole) {
    Read(Sample);
    const auto path = tree.Root() / "raceadmin/R2.txt";
    std::filesystem::permissions(path, std::filesystem::perms{0444});
    race.RaceTitle1 = "Changed";
    EXPECT_EQ(SaveRaceFile(tree.Root(), race), std::errc::permission_denied);
    EXPECT_EQ(Written(), Sample);
    std::filesystem::remove_all(tree.Root() / "raceadmin");
    EXPECT_FALSE(SaveRaceFile(tree.Root(), race));  // a tree of tracks alone gets its folder
    tree.Write("tracks only", "");
    EXPECT_TRUE(SaveRaceFile(tree.Root() / "tracks only", race));
}

TEST(CourseKey, NamesALineOrAMarkWithinTheLimits) {
    struct Case {
        const char* key;
        bool line;
        int number;
    };
    for (const Case& c :
         {Case{"L1", true, 1}, Case{"MK30", false, 30}, Case{"L11", true, 0}, Case{"MK31", false, 0},
          Case{"L", true, 0}, Case{"", false, 0}, Case{"MK-1", false, 0}, Case{"MKx", false, 0}}) {
        const CourseKey key = ParseCourseKey(c.key);
        EXPECT_EQ(key.IsLine, c.line) << c.key;
        EXPECT_EQ(key.Number, c.number) << c.key;
    }
}

}  // namespace
}  // namespace keelview
