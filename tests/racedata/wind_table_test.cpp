#include "racedata/wind_table.h"

#include <gtest/gtest.h>

#include "base/numbers.h"
#include "racedata/wind_file.h"
#include "support/temp_tree.h"

namespace keelview {
namespace {

/// Each reading: time, speed and direction.
std::string Told(const WindTable& table) {
    std::string text;
    for (const WindRow& row : table.Rows)
        text += DateTimeText(row.Time) + " " +
                (row.Speed ? NumberText(RoundDecimals(*row.Speed, 2)) : "-") + " " +
                NumberText(row.Direction) + ", ";
    return text + std::to_string(table.Skipped);
}

TEST(WindTable, TablesOfEveryKindAreRead) {
    const std::vector<std::pair<std::string, std::string>> cases{
        // What the program writes itself, and what people type.
        {"TIME,WIND SPEED,WIND DIRECTION (Mag)\r\n2004/08/05 12:31:00,12.5,37\r\n2004/08/05 "
         "12:30:00,,40\r\n",
         "2004/08/05 12:30:00 - 40, 2004/08/05 12:31:00 12.5 37, 0"},
        {"12:31\t8\t210\n\n12:30:15\t\t200\n", "2025/06/21 12:30:15 - 200, 2025/06/21 12:31:00 8 210, 0"},
        {"2004/8/5 12:30;7,5;200\nx;1;2\n2004/8/5 12:31;7;\n", "2004/08/05 12:30:00 7.5 200, 2"},
        // Other names, orders and units; times of another zone.
        {"Station 1\nDate,Direction,Speed (m/s),Time\n2025-06-21,90,10,12:00:00\n",
         "2025/06/21 12:00:00 19.44 90, 0"},
        {"timestamp,twd,tws\n2025-06-21T12:00:00Z,90,10\n2025-06-21T12:00:00-05:00,91,11\n",
         "2025/06/21 21:00:00 10 90, 2025/06/22 02:00:00 11 91, 0"},
        {"日時,風速,風向\n2025/6/21 12:00,4,90\n", "2025/06/21 12:00:00 4 90, 0"},
        {"unix,twd\n1750507200,90\n", "2025/06/21 21:00:00 - 90, 0"},
        {"", "0"},
        {"a photograph", "1"},
    };
    for (const auto& [table, told] : cases)
        EXPECT_EQ(Told(ReadWindTable(table, 9, "2025/06/21")), told) << table;
}

TEST(WindTable, WhatIsWrittenIsTheWindOfARace) {
    const TempTree tree;
    const WindTable table = ReadWindTable("12:30,8,210\n12:31,9,215\n", 9, "2004/08/05");
    ASSERT_FALSE(WriteWindTable(tree.Root(), "w.csv", table.Rows));
    EXPECT_EQ(ReadWindTable(tree.Read("winddat/w.csv"), 0, "").Rows, table.Rows);
    RaceControl race;
    race.WindFileName = "w.csv";
    race.Start = RaceTime("2004/08/05 12:30:30");
    WindData wind;
    LoadWindFile(tree.Root(), race, wind);
    ASSERT_EQ(wind.Count(), 2);
    EXPECT_TRUE(wind[1].WindTime == -30 && wind[2].WindDirection == 215 && wind[2].WindSpeed == 9);
    EXPECT_FALSE(WriteWindTable(tree.Root(), "none.csv", {}));
}

}  // namespace
}  // namespace keelview
