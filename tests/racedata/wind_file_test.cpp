#include "racedata/wind_file.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "support/temp_tree.h"

namespace keelview {
namespace {

struct WindFileTest : testing::Test {
    TempTree tree;
    std::unique_ptr<RaceControl> race = std::make_unique<RaceControl>();
    WindData wind;

    void SetUp() override {
        race->WindFileName = "R2_WIND.CSV";
        race->StartTimeText = "2004/08/05 12:30:00";
        race->FinishTimeText = "2004/08/05 12:40:00";
        race->DataFromTime = ParseDateTime("2004/08/05 12:26:30");
        race->DataToTime = ParseDateTime(race->FinishTimeText);
    }
    void Load(const std::string& text) {
        tree.Write("winddat/R2_WIND.CSV", text);
        LoadWindFile(tree.Root(), *race, wind);
    }
};

TEST_F(WindFileTest, SamplesOfThePeriodAreKeptInTheirOrder) {
    const std::string text =
        "any header, 1, 2\r\n2004/08/05 12:25:59,5,200\r\n2004/08/05 12:26:00,6.5,201\r\n\r\n"
        "2004/8/5 12:40:59,7 kt, 202.5 M,more,fields\r\n2004/08/05 12:35:00,,203\r\n2004/08/05 "
        "12:41:00,8,204\r\n"
        "2004/08/05 12:35:00,8\r\nsomeday,8,205\r\n";
    Load(text);
    EXPECT_EQ(wind.WindCount, 3);
    EXPECT_EQ(wind.WindTimes, (std::vector<std::int32_t>{0, -240, 659, 300}));
    EXPECT_EQ(wind.WindDirections, (std::vector<double>{0, 201, 202.5, 203}));
    EXPECT_EQ(wind.WindSpeeds[1], 6.5);
    EXPECT_EQ(wind.WindSpeeds[2], 7);
    race->FinishTimeText.clear();  // an open race keeps everything
    Load(text);
    EXPECT_EQ(wind.WindCount, 5);
}

TEST_F(WindFileTest, AFileWithoutSamplesEmptiesAndAMissingOneLeavesAll) {
    Load("h\n2004/08/05 12:30:00,1,2\n");
    EXPECT_EQ(wind.WindCount, 1);
    race->WindFileName = "none.csv";
    LoadWindFile(tree.Root(), *race, wind);
    EXPECT_EQ(wind.WindCount, 1);
    EXPECT_FALSE(WindFileExists(tree.Root(), *race));
    race->WindFileName = "r2_wind.csv";
    EXPECT_TRUE(WindFileExists(tree.Root(), *race));
    for (const char* text : {"TIME,WIND SPEED,WIND DIRECTION (Mag)\r\n", ""}) {
        Load(text);
        EXPECT_EQ(wind.WindCount, 0);
        EXPECT_EQ(wind.WindTimes.size(), 1U);
    }
}

TEST_F(WindFileTest, WhatIsWrittenReadsBack) {
    wind.WindTimes = {0, -210, 0, 600};
    wind.WindSpeeds = {{}, 5.25, {}, 0.0};
    wind.WindDirections = {0, 210, 209.5, -1};
    wind.WindCount = 3;
    std::filesystem::create_directories(tree.Root() / "winddat");
    ASSERT_FALSE(SaveWindFile(tree.Root(), *race, wind));
    const std::string written = tree.Read("winddat/R2_WIND.CSV");
    EXPECT_EQ(written,
              "TIME,WIND SPEED,WIND DIRECTION (Mag)\r\n2004/08/05 12:26:30,5.25,210\r\n"
              "2004/08/05 12:30:00,,209.5\r\n2004/08/05 12:40:00,0,-1\r\n");
    WindData back;
    LoadWindFile(tree.Root(), *race, back);
    EXPECT_EQ(back.WindTimes, wind.WindTimes);
    EXPECT_EQ(back.WindDirections, wind.WindDirections);
    EXPECT_TRUE(SaveWindFile(tree.Root() / "winddat/R2_WIND.CSV", *race, wind));
}

}  // namespace
}  // namespace keelview
