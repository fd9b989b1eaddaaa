#include "racedata/race_file.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <tuple>
#include <vector>

#include "racedata/gps_track.h"
#include "support/race_tree.h"

namespace keelview {
namespace {

constexpr const char* Sample =
    "WF, R2_WIND.CSV\r\nT1, Spring Cup\r\nT2, Race 2\r\nMG, -7\r\nLG, 4.7\r\nBO, 1.2\r\n"
    "ST, 2004/8/5 12:30:00\r\n"
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
    RaceFileReport Read(const std::string& text) {
        Put(text);
        return ReadRaceFile(tree.Root(), race);
    }
    /// The file as it is after a save.
    std::string Saved() {
        EXPECT_FALSE(SaveRaceFile(tree.Root(), race));
        return tree.Read("raceadmin/R2.txt");
    }
    /// Boats, marks, lines, course, coast cells and documents.
    std::vector<int> Counts() const {
        return {race.Boats.Count(),       race.Marks.Count(),   race.Lines.Count(),
                race.CourseOrder.Count(), race.MapFile.Count(), race.AttachFile.Count()};
    }
};

TEST_F(RaceFileTest, EveryKeyOfTheSampleArrivesAndIsWrittenInTheOrderOfTheWriter) {
    const RaceFileReport report = Read(Sample);
    EXPECT_TRUE(report.Opened);
    EXPECT_EQ(report.SkippedLines, 0);
    EXPECT_EQ(race.WindDirection, 210);
    EXPECT_EQ(race.BowAhead, 1.2);
    EXPECT_EQ(race.Marks[1].MarkLat, 2112.51);
    EXPECT_EQ(race.DataFromTime, ParseDateTime("2004/8/5 12:26:30"));
    EXPECT_EQ(race.DataToTime, ParseDateTime("2004/8/5 13:50:00"));
    EXPECT_EQ(race.RaceDuration, 4800);
    EXPECT_EQ(ReplaySpan(race), 5040);
    // What is not known is dropped; the blank behind the comma is part of a document's name.
    Read(std::string("XX, unknown\r\nBT,2.6\r\nno comma\r\n\r\n") + Sample);
    race.MapFile.Add("5339");
    std::string expected = Sample;
    expected.replace(expected.find("LL,"), 0, "MAP, 5339\r\n");
    expected.replace(expected.find("AT, "), 4, "AT,  ");
    EXPECT_EQ(Saved(), expected);
    race = {};
    race.RaceFileName = "R2.txt";
    race.BoatLength = 4.7F;  // as the system holds it
    race.LayLineUp = 42.5;
    race.PreStartMinutes = 2.5;
    EXPECT_EQ(Saved(), "LG, 4.7\r\nLL, 42.5,160\r\nBT,3\r\n");
    race = {};  // no race is open: nothing is written
    EXPECT_EQ(Saved(), "LG, 4.7\r\nLL, 42.5,160\r\nBT,3\r\n");
}

TEST_F(RaceFileTest, ValuesAreReadLenientlyAndBadLinesChangeNothing) {
    const RaceFileReport report = Read(
        " T1 ,  Cup, day 2 \nLL, 0,170\nBT,2.6\nTD, 2.5\nTD, nine\nMG, -7 west\nLL, 50\nMK, 1\n"
        "LN, 1, 2, 3\nBN, boat1.trk\nBN, boat1.trk, Boat, No 1\nt1, small\nNU, x\nWD, 1e999\n");
    EXPECT_EQ(report.SkippedLines, 6);
    EXPECT_EQ(PreStartSeconds(race), 156);
    EXPECT_EQ(Saved(),
              "T1, Cup, day 2\r\nMG, -7\r\nLG, 4.7\r\nTD, 2.5\r\nBN, boat1.trk, Boat, No 1\r\nLL, "
              "45,170\r\nBT,3\r\n");
}

TEST_F(RaceFileTest, AFileStartsFromTheResetValuesButKeepsVariationAndLength) {
    Read(Sample);
    race.BoatLength = 9;
    Read("T2, Next\nST, soon\n");  // no date: it stays in the file
    EXPECT_FALSE(race.DataFromTime);
    EXPECT_EQ(Saved(), "T2, Next\r\nMG, -7\r\nLG, 9\r\nST, soon\r\nLL, 45,160\r\nBT,3\r\n");
    race.BoatLength = 0;
    Read("LG, 0\n");
    EXPECT_FLOAT_EQ(static_cast<float>(race.BoatLength), 4.7F);
    std::filesystem::remove(tree.Root() / "raceadmin/R2.txt");
    EXPECT_FALSE(ReadRaceFile(tree.Root(), race).Opened);
}

TEST_F(RaceFileTest, TheLimitsHold) {
    std::string text;
    for (int i = 1; i <= 210; ++i)
        text += "BN, boat1.trk, B\nMK, 1, 2\nLN, 1, 2, 3, 4\nCRS, MK1, MK2\nAT, a\nMAP, 5339\n";
    EXPECT_EQ(Read(text).SkippedLines, 10 + 150 + 190 + 185 + 210 + 160);
    EXPECT_EQ(Counts(), (std::vector{200, 60, 20, 50, 0, 50}));
    EXPECT_TRUE(ReadRaceFileForDistribution(tree.Root(), race));
    EXPECT_EQ(race.MapFile.Count(), 20);
}

TEST_F(RaceFileTest, AClockOffsetMovesTheTrackAndStaysInTheFile) {
    tree.Boat("a.trk", RaceTree::Lat, RaceTree::Lon, 0.001, 0, 0, 50);
    const std::string lines = "BN, a.trk, A\r\nBN, gone.trk, Gone\r\nBN, a.trk, Late\r\n";
    tree.Race("R2.txt",
              "CL, 3, -2.5\r\nCL, 2, 1\r\nCL, 4, 1\r\nCL, 1, soon\r\nCL, 1\r\nCL, 1, 1e9\r\n" + lines);
    EXPECT_EQ(ReadRaceFile(tree.Root(), race).SkippedLines, 4);
    Tracks tracks;
    TrackArea area;
    EarthScale scale;
    LoadAllTracks(tree.Root(), race, tracks, area, scale, {});
    EXPECT_EQ(tracks.Boats[1].TrackTime[1], 0);
    EXPECT_EQ(tracks.Boats[2].TrackTime[1], -2.5);
    EXPECT_FALSE(SaveRaceFile(tree.Root(), race));
    EXPECT_NE(tree.Read("raceadmin/R2.txt").find(lines + "CL, 2, 1\r\nCL, 3, -2.5\r\n"), std::string::npos);
}

TEST_F(RaceFileTest, TheEditorKeepsWhatTheFileSays) {
    Put(" T1, not seen\nT2, seen\nLG, 5 m\nLG, 6\nWF, none.csv\nBN, gone.trk, A\nMAP, 5339\n"
        "ST, 2004/8/5 12:30:00\nFT, 2004/8/5 13:00:00\n");
    ASSERT_TRUE(ReadRaceFileForEdit(tree.Root(), race));
    EXPECT_EQ(race.RaceTitle1 + race.RaceTitle2 + race.WindFileName, "seennone.csv");
    EXPECT_EQ(race.BoatLength, 6);
    EXPECT_EQ(Counts(), (std::vector{1, 0, 0, 0, 0, 0}));
    EXPECT_EQ(race.DataFromTime, ParseDateTime("2004/8/5 12:25:00"));
    EXPECT_EQ(race.RaceDuration, 1800);
    race.RaceFileName = "none.txt";
    EXPECT_FALSE(ReadRaceFileForEdit(tree.Root(), race));
}

TEST_F(RaceFileTest, TheDistributionReadsItsFourKeys) {
    race.RaceTitle1 = "stays";
    race.MapFile.Add("gone.cst");
    Put(std::string(Sample) + "MAP, 5339 \n AT ,  b.pdf\n");
    ASSERT_TRUE(ReadRaceFileForDistribution(tree.Root(), race));
    EXPECT_EQ(race.RaceTitle1 + race.WindFileName, "staysR2_WIND.CSV");
    EXPECT_EQ(Counts(), (std::vector{2, 0, 0, 0, 1, 2}));
    EXPECT_EQ(race.MapFile[1] + race.AttachFile[1] + race.AttachFile[2], "5339.cstnotice.pdfb.pdf");
}

TEST_F(RaceFileTest, AFileKeepsItsEncoding) {
    // The file before (empty: none yet), the title that it gets, and the line of it.
    using Case = std::tuple<std::string, std::string, std::string>;
    const std::string mark = "\xEF\xBB\xBF";
    for (const auto& [before, title, after] : {
             Case{"", "テスト", "T1, \x83\x65\x83\x58\x83\x67\r\n"},
             Case{"", "Кубок 杯 ñ", "T1, Кубок 杯 ñ\r\n"},
             Case{"T1, 杯\r\n", "テスト", "T1, テスト\r\n"},
             Case{"T1, 杯\r\n", "Cup", "T1, Cup\r\n"},
             Case{mark + "T1, a\r\n", "テスト", mark + "T1, テスト\r\n"},
             Case{"T1, \x94\x74\r\n", "テスト", "T1, \x83\x65\x83\x58\x83\x67\r\n"},
             // The doubled code of the NOT sign stays what it was.
             Case{"T1, \xEE\xF9\r\n", "￢", "T1, \xEE\xF9\r\n"},
             // Texts whose bytes would be taken for another encoding get the one that is told apart.
             Case{"", "ñó", mark + "T1, ñó\r\n"},
             Case{"", "ﾃｱ", "T1, ﾃｱ\r\n"},
         }) {
        Put(before);
        if (before.empty()) std::filesystem::remove(tree.Root() / "raceadmin/R2.txt");
        race = {};
        race.RaceFileName = "R2.txt";
        race.RaceTitle1 = title;
        EXPECT_EQ(Saved(), after + "LL, 45,160\r\nBT,3\r\n");
        ReadRaceFile(tree.Root(), race);
        EXPECT_EQ(race.RaceTitle1, title);
    }
}

TEST_F(RaceFileTest, AFileThatWouldStayTheSameIsNotWritten) {
    Read("T1, Cup\r\nLG, 4.7\r\nLL, 45,160\r\nBT,3\r\n");
    const auto path = tree.Root() / "raceadmin/R2.txt";
    const auto longAgo = std::filesystem::last_write_time(path) - std::chrono::hours(100);
    std::filesystem::last_write_time(path, longAgo);
    Saved();
    EXPECT_EQ(std::filesystem::last_write_time(path), longAgo);
    race.RaceTitle1 = "Cup!";
    Saved();
    EXPECT_NE(std::filesystem::last_write_time(path), longAgo);
}

TEST_F(RaceFileTest, WhatIsAbsentKeepsItsPlaceInTheFile) {
    const std::string file =
        "WF, w.csv\r\nLG, 4.7\r\nBN, gone.trk, Ghost\r\nBN, boat1.trk, Alpha\r\nBN, lost.trk, Lost\r\n"
        "BN, far.trk, Far\r\nBN, boat2.trk, Beta\r\nCRS, L1, MK1\r\nPT, 1, 2, 700\r\nPT, 5, 1, -\r\n"
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

TEST_F(RaceFileTest, ATimeDifferenceOfNoneOrOfQuartersIsOne) {
    using Case = std::pair<std::string, std::optional<double>>;
    for (const auto& [line, hours] :
         {Case{"TD, 0", 0}, Case{"TD, 5.5", 5.5}, Case{"TD, -3.75", -3.75}, Case{"TD, 9", 9},
          Case{"TD, 5.3", {}}, Case{"TD, 5:30", {}}, Case{"TD, ", {}}, Case{"TD, 1e9", {}}}) {
        Read(line + "\n");
        EXPECT_EQ(race.TimeDiff, hours) << line;
        EXPECT_EQ(Saved(), "LG, 4.7\r\n" + (hours ? line + "\r\n" : "") + "LL, 45,160\r\nBT,3\r\n");
    }
}

TEST_F(RaceFileTest, TimesSetByHandAreReadForTheCellsOfTheRace) {
    Read(
        "PT, 2, 1, 80\nPT, 1, 1, 90\nPT, 1, 1, -\nPT, 1, 2, -5\nPT, 3, 1, 10\nPT, 1, 3, 10\nPT, 0, 1, 10\n"
        "PT, 1, 1\nPT, 1, 1, soon\nPT, 1, 1, 2, 3\nPT, 1.5, 1, 3\nPT, 1, 1, 1e9\n"
        "BN, boat1.trk, A\nBN, boat2.trk, B\nCRS, L1, MK1\n");
    const std::string saved = Saved();
    EXPECT_NE(saved.find("CRS, L1, MK1\r\nPT, 1, 1, -\r\nPT, 1, 2, -5\r\nPT, 2, 1, 80\r\nLL"),
              std::string::npos)
        << saved;
}

TEST_F(RaceFileTest, AGateIsTakenApartAndMadeAgainWithWhatWasSetByHand) {
    const std::string file =
        "LG, 4.7\r\nBN, boat1.trk, A\r\nCRS, L1, MK1, MK2/MK3, MK1\r\nPT, 1, 2, 90\r\nPT, 1, 3, 200\r\n"
        "PT, 1, 4, 300\r\nLL, 45,160\r\nBT,3\r\n";
    Read(file);
    EXPECT_EQ(Saved(), file);
    for (const int none : {1, 2, 4}) EXPECT_FALSE(ToggleGate(race, none)) << none;
    EXPECT_EQ(Saved(), file);
    EXPECT_TRUE(ToggleGate(race, 3));
    EXPECT_NE(
        Saved().find("CRS, L1, MK1, MK2, MK3, MK1\r\nPT, 1, 2, 90\r\nPT, 1, 3, 200\r\nPT, 1, 5, 300\r\nLL"),
        std::string::npos);
    race.HandPasses.Add({1, 4, 250});  // of the mark that becomes the gate's second one
    EXPECT_TRUE(ToggleGate(race, 4));
    EXPECT_EQ(Saved(), file);
}

TEST_F(RaceFileTest, AFileThatIsWrittenAnewStaysBesideTheNewOne) {
    Read(Sample);
    const auto writeAnew = [this](const char* title) {
        race.RaceTitle1 = title;
        return SaveRaceFileAnew(tree.Root(), race);
    };
    EXPECT_FALSE(writeAnew("Summer Cup"));
    EXPECT_EQ(tree.Read("raceadmin/R2.txt.bak"), Sample);
    const std::string second = tree.Read("raceadmin/R2.txt");
    EXPECT_FALSE(writeAnew("Winter Cup"));
    EXPECT_EQ(tree.Read("raceadmin/R2.txt.bak"), second);
    const std::string third = tree.Read("raceadmin/R2.txt");
    EXPECT_TRUE(second.find("Summer Cup") != std::string::npos &&
                third.find("Winter Cup") != std::string::npos);
    std::filesystem::remove(tree.Root() / "raceadmin/R2.txt.bak");
    std::filesystem::create_directories(tree.Root() / "raceadmin/R2.txt.bak/taken");
    EXPECT_TRUE(writeAnew("Lost Cup"));
    EXPECT_EQ(tree.Read("raceadmin/R2.txt"), third);
    race.RaceFileName = "New.txt";
    EXPECT_FALSE(writeAnew("New Cup"));
    EXPECT_TRUE(!tree.Read("raceadmin/New.txt").empty() && tree.Read("raceadmin/New.txt.bak").empty());
}

TEST(CourseKey, NamesALineOrAMarkWithinTheLimits) {
    using Case = std::tuple<const char*, bool, int>;
    for (const auto& [text, line, number] :
         {Case{"L1", true, 1}, Case{"MK60", false, 60}, Case{"L21", true, 0}, Case{"MK61", false, 0},
          Case{"L", true, 0}, Case{"", false, 0}, Case{"MK-1", false, 0}, Case{"MKx", false, 0}}) {
        const CourseKey key = ParseCourseKey(text);
        EXPECT_EQ(key.IsLine, line) << text;
        EXPECT_EQ(key.Number, number) << text;
    }
}

}  // namespace
}  // namespace keelview
