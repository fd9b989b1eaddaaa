#include "racedata/wind_file.h"

#include <gtest/gtest.h>

#include <string>

#include "base/numbers.h"
#include "support/temp_tree.h"

namespace keelview {
namespace {

struct WindFileTest : testing::Test {
    TempTree tree;
    RaceControl race;
    WindData wind;

    void SetUp() override {
        race.WindFileName = "R2_WIND.CSV";
        race.Start = RaceTime("2004/08/05 12:30:00");
        race.Finish = RaceTime("2004/08/05 12:40:00");
        race.DataFromTime = ParseDateTime("2004/08/05 12:26:30");
        race.DataToTime = race.Finish.At();
    }
    /// Time, speed and direction of each sample that a file gives.
    std::string Load(const std::string& text) {
        tree.Write("winddat/R2_WIND.CSV", text);
        LoadWindFile(tree.Root(), race, wind);
        std::string samples;
        for (const WindSample& sample : wind)
            samples += std::to_string(sample.WindTime) + " " + NumberText(sample.WindSpeed.value_or(-1)) +
                       " " + NumberText(sample.WindDirection) + ", ";
        return samples;
    }
};

TEST_F(WindFileTest, SamplesOfThePeriodAreKeptInTheirOrder) {
    const std::string text =  // whatever its first line is, it is the header
        "2004/08/05 12:35:00,9,999\r\n2004/08/05 12:25:59,5,200\r\n2004/08/05 12:26:00,6.5,201\r\n\r\n"
        "2004/8/5 12:40:59,7 kt, 202.5 M,more,fields\r\n2004/08/05 12:35:00,,203\r\n"
        "2004/08/05 12:41:00,8,204\r\n2004/08/05 12:35:00,8\r\nsomeday,8,205\r\n";
    EXPECT_EQ(Load(text), "-240 6.5 201, 659 7 202.5, 300 0 203, ");
    race.Finish = {};  // an open race keeps everything
    EXPECT_EQ(Load(text), "-241 5 200, -240 6.5 201, 659 7 202.5, 300 0 203, 660 8 204, ");
    race.WindFileName = "none.csv";  // a missing file leaves all, one without samples nothing
    LoadWindFile(tree.Root(), race, wind);
    EXPECT_EQ(wind.Count(), 5);
    EXPECT_FALSE(WindFileExists(tree.Root(), race));
    race.WindFileName = "r2_wind.csv";
    EXPECT_TRUE(WindFileExists(tree.Root(), race));
    EXPECT_EQ(Load("TIME,WIND SPEED,WIND DIRECTION (Mag)\r\n") + Load(""), "");
}

TEST_F(WindFileTest, WhatIsWrittenReadsBack) {
    wind = {{-210, 5.25, 210}, {0, {}, 209.5}, {600, 0.0, -1}};
    std::filesystem::create_directories(tree.Root() / "winddat");
    ASSERT_FALSE(SaveWindFile(tree.Root(), race, wind));
    const std::string written = tree.Read("winddat/R2_WIND.CSV");
    EXPECT_EQ(written,
              "TIME,WIND SPEED,WIND DIRECTION (Mag)\r\n2004/08/05 12:26:30,5.25,210\r\n"
              "2004/08/05 12:30:00,,209.5\r\n2004/08/05 12:40:00,0,-1\r\n");
    EXPECT_EQ(Load(written), "-210 5.25 210, 0 0 209.5, 600 0 -1, ");
    EXPECT_TRUE(SaveWindFile(tree.Root() / "winddat/R2_WIND.CSV", race, wind));
}

}  // namespace
}  // namespace keelview
