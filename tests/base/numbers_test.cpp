#include "base/numbers.h"

#include <gtest/gtest.h>

#include <limits>
#include <tuple>

#include "base/angles.h"

namespace keelview {
namespace {

constexpr double Nan = std::numeric_limits<double>::quiet_NaN();
constexpr double Infinity = std::numeric_limits<double>::infinity();

TEST(Numbers, TheLenientRuleTakesWhatLeadsAndIsAlwaysFinite) {
    using Case = std::pair<const char*, double>;
    for (const auto& [text, value] :
         {Case{"4.7 m", 4.7}, Case{" \t-7x", -7}, Case{"+.5", 0.5}, Case{"5.", 5}, Case{"12,5", 12},
          Case{"1.2.3", 1.2}, Case{"2e3", 2000}})
        EXPECT_EQ(LenientNumber(text), value) << text;
    for (const char* text : {"", "x1", "- 5", "--5", ".", "inf", "-nan", "1e999", "0x10"})
        EXPECT_EQ(LenientNumber(text), 0) << text;
}

TEST(Numbers, TheStrictRulesTakeTheWholeTextOrNothing) {
    EXPECT_EQ(StrictNumber(" 4.7 "), 4.7);
    for (const char* text : {"", "4.7 m", "4,7", "1e999", "nan"}) EXPECT_FALSE(StrictNumber(text)) << text;
    using Case = std::pair<const char*, int>;
    for (const auto& [text, value] : {Case{"9", 9}, Case{"-5", -5}, Case{"2.5", 2}, Case{"3.5", 4},
                                      Case{"-0.5", 0}, Case{"32767.4", 32767}, Case{"-32768.5", -32768}})
        EXPECT_EQ(StrictInteger(text), value) << text;
    for (const char* text : {"32767.5", "-32769", "9h", ""}) EXPECT_FALSE(StrictInteger(text)) << text;
}

TEST(Numbers, TextsAreThoseOfFilesAndPictures) {
    using Case = std::tuple<double, const char*, const char*>;
    for (const auto& [value, file, picture] :
         {Case{210.0, "210", "210"}, Case{0.5, "0.5", ".5"}, Case{-0.532, "-0.532", "-.532"},
          Case{-0.0, "0", "0"}, Case{0.1 + 0.2, "0.3", ".3"}, Case{2112.51, "2112.51", "2112.51"},
          Case{-7.0, "-7", "-7"}, Case{1e-9, "0.000000001", ".000000001"},
          Case{123456789012345678.0, "1.23456789012346E17", "1.23456789012346E17"},
          Case{999999999999999.9, "1000000000000000", "1000000000000000"}, Case{Nan, "0", "0"},
          Case{-Infinity, "0", "0"}}) {
        EXPECT_EQ(NumberText(value), file);
        EXPECT_EQ(SurfaceNumberText(value), picture);
    }
    for (const auto& [speed, text] :
         {std::pair{5.1, "5.10"}, {0.496, ".50"}, {Nan, ".00"}, {12.0, "12.00"}})
        EXPECT_EQ(SpeedText(speed), text);
    EXPECT_EQ(WholeText(-131.5), "-132");
    EXPECT_EQ(WholeText(-0.4), "0");
}

TEST(Numbers, RoundingGoesUpAtHalvesAndFloorsStayInsideAnInt) {
    EXPECT_EQ(RoundDecimals(2.5, 0), 3);
    EXPECT_EQ(RoundDecimals(-2.5, 0), -2);
    EXPECT_EQ(RoundDecimals(1.25, 1), 1.3);
    EXPECT_EQ(FloorToInt(-0.1), -1);
    EXPECT_EQ(FloorToInt(1e12), std::numeric_limits<int>::max());
    EXPECT_EQ(FloorToInt(-Infinity), std::numeric_limits<int>::min());
    EXPECT_EQ(FloorToInt(Nan), 0);
}

TEST(Angles, BearingsAndTurns) {
    using Case = std::tuple<double, double, double>;
    for (const auto& [east, north, bearing] :
         {Case{1.0, 0, 90}, Case{-1, 0, 270}, Case{0, 1, 0}, Case{0, -1, 180}, Case{-1, 1, 315},
          Case{1, -1, 135}, Case{0, 0, 90}, Case{-1e-300, 1, 0}, Case{-1, -1, 225}})
        EXPECT_DOUBLE_EQ(BearingOf(east, north), bearing) << east << " " << north;
    EXPECT_EQ(WrapDifference(-181), 179);
    EXPECT_EQ(WrapDifference(180), 180);
    EXPECT_EQ(WrapDirection(360), 0);
    EXPECT_EQ(WrapDirection(-7), 353);
    EXPECT_EQ(TurnBetween(350, 10 + 720), 20);
    EXPECT_EQ(TurnBetween(10, 350), -20);
}

}  // namespace
}  // namespace keelview
