#include "base/dates.h"

#include <gtest/gtest.h>

#include <limits>

namespace keelview {
namespace {

constexpr CivilTime Noon = 1091709000;  // 2004/08/05 12:30:00, as `date -u` counts it

TEST(Dates, AreReadInTheOrdersOfBothLocales) {
    for (const char* text : {"2004/8/5 12:30:00", " 2004-08-05  12:30 ", "8/5/2004 12:30:00 PM",
                             "8/5/2004 12:30 pm", "2004/08/05 午後 12:30:00", "2004/08/05 午後0:30:00"})
        EXPECT_EQ(ParseDateTime(text), Noon) << text;
    EXPECT_EQ(ParseDateTime("8/5/2004 12:30:00 AM"), Noon - 12 * 3600);
    EXPECT_EQ(ParseDateTime("2004/08/05 午前 11:30"), Noon - 3600);
    EXPECT_EQ(ParseDateTime("25/12/2004"), ParseDateTime("2004/12/25"));  // there is no 25th month
    EXPECT_EQ(ParseDateTime("1970/1/1"), 0);
}

TEST(Dates, WhatIsNoMomentIsNone) {
    for (const char* text :
         {"", "2004", "2004/8", "2004/2/30", "2003/2/29", "2004/13/1", "2004/8/5 24:00:00",
          "2004/8/5 12:60", "2004/8/5 12:30:00x", "2004/8/5 12", "4/8/5", "2004/8/-5", "2004/8/5 13:00 PM",
          "20045/8/5", "2004/8/5 12:30:00:00", "0000/1/1", "2004/ 8/5"})
        EXPECT_FALSE(ParseDateTime(text)) << text;
}

TEST(Dates, AreWrittenYearFirstOnEverySystem) {
    EXPECT_EQ(DateTimeText(Noon), "2004/08/05 12:30:00");
    EXPECT_EQ(DateTimeText(-1), "1969/12/31 23:59:59");
    EXPECT_EQ(DateTimeText(std::numeric_limits<CivilTime>::max()), "9999/12/31 23:59:59");
    EXPECT_EQ(DateTimeText(std::numeric_limits<CivilTime>::min()), "0001/01/01 00:00:00");
}

TEST(Dates, MinutesAreCountedByTheClock) {
    EXPECT_EQ(MinuteBoundaries(Noon + 59, Noon), 0);
    EXPECT_EQ(MinuteBoundaries(Noon, Noon - 1), -1);
    EXPECT_EQ(MinuteBoundaries(-61, -60), 1);
}

TEST(Dates, Durations) {
    EXPECT_EQ(DurationText(-3661), "01:01:01");
    EXPECT_EQ(DurationText(360000), "100:00:00");
    EXPECT_EQ(DurationText(std::numeric_limits<std::int64_t>::min()), "2562047788015215:30:08");
    for (const auto& [seconds, text] : {std::pair{59, "59"}, {125, "2:05"}, {3600, "60:00"}})
        EXPECT_EQ(ShortDurationText(seconds), text);
}

}  // namespace
}  // namespace keelview
