#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <tuple>

#include "base/angles.h"
#include "base/dates.h"
#include "base/numbers.h"
#include "base/text_encoding.h"

namespace keelview {
namespace {

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
          Case{999999999999999.9, "1000000000000000", "1000000000000000"}, Case{NAN, "0", "0"},
          Case{-INFINITY, "0", "0"}}) {
        EXPECT_EQ(NumberText(value), file);
        EXPECT_EQ(SurfaceNumberText(value), picture);
    }
    for (const auto& [speed, text] :
         {std::pair{5.1, "5.10"}, {0.496, ".50"}, {NAN, ".00"}, {12.0, "12.00"}})
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
    EXPECT_EQ(FloorToInt(-INFINITY), std::numeric_limits<int>::min());
    EXPECT_EQ(FloorToInt(NAN), 0);
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

constexpr CivilTime Noon = 1091709000;  // 2004/08/05 12:30:00, as `date -u` counts it

TEST(Dates, AreReadInTheOrdersOfBothLocales) {
    for (const char* text :
         {"2004/8/5 12:30:00", " 2004-08-05  12:30 ", "8/5/2004 12:30:00 PM", "8/5/2004 12:30 pm",
          "2004/08/05 午後 12:30:00", "2004/08/05 午後0:30:00", "05.08.2004 12:30", "5.8.2004 12:30:00",
          "2004.8.5 12:30", "2004-08-05T12:30:00", "2004-08-05T12:30:00Z", "2004-08-05T12:30",
          "2004年8月5日 12時30分", "2004年8月5日12時30分0秒", "2004年08月05日 12:30",
          "2004年8月5日 午後0時30分", "2004年8月5日\t12:30 PM"})
        EXPECT_EQ(ParseDateTime(text), Noon) << text;
    for (const auto& [text, before] : {std::pair{"8/5/2004 12:30:00 AM", 43200},
                                       {"2004/08/05 午前 11:30", 3600},
                                       {"2004年8月5日", 45000},
                                       {"2004年8月5日 12時", 1800},
                                       {"2004/8/5 午前9時", 12600},
                                       {"1970/1/1", int(Noon)}})
        EXPECT_EQ(ParseDateTime(text), Noon - before) << text;
}

TEST(Dates, DaysAreTakenWhereTheyAreBeyondDoubt) {
    using Case = std::pair<const char*, const char*>;  // no day: in doubt, or none
    for (const auto& [text, day] :
         {Case{"25/12/2004", "2004/12/25"}, Case{"25/12/99", "1999/12/25"}, Case{"12/25/99", "1999/12/25"},
          Case{"99/12/25", "1999/12/25"}, Case{"99-8-5", "1999/08/05"}, Case{"04/04/04", "2004/04/04"},
          Case{"31.12.04", ""}, Case{"31.12.99", "1999/12/31"}, Case{"29/2/99", ""},
          Case{"8/25/04", "2004/08/25"}, Case{"25/8/04", ""},  // 2025/8/4 as well
          Case{"5/8/04", ""}, Case{"05.08.04", ""}, Case{"04/8/5", "2004/08/05"}, Case{"8/5/4", ""},
          Case{"32/13/99", ""}}) {
        const auto read = ParseDateTime(text);
        EXPECT_EQ(read ? DateText(*read) : "", day) << text;
    }
}

TEST(Dates, ADateMayReadInSeveralWays) {
    using Case = std::pair<const char*, const char*>;
    for (const auto& [text, readings] :
         {Case{"03/10/2026", "2026/03/10 2026/10/03 "}, Case{"2026/03/10", "2026/03/10 "},
          Case{"25/12/2026 9:00", "2026/12/25 "}, Case{"3.10.2026", "2026/10/03 "},
          Case{"10/10/2026", "2026/10/10 "}, Case{"5/8/04", "2004/05/08 2004/08/05 "},
          Case{"01/02/03", "2001/02/03 2003/01/02 2003/02/01 "}, Case{"03/10/2026 25:00", ""},
          Case{"2/30/2026", ""}, Case{"tomorrow", ""}, Case{"", ""}}) {
        std::string read;
        for (const CivilTime each : DateReadings(text)) read += DateText(each) + " ";
        EXPECT_EQ(read, readings) << text;
    }
}

TEST(Dates, WhatIsNoMomentIsNone) {
    for (const char* text : {"",
                             "2004",
                             "2004/8",
                             "2004/2/30",
                             "2003/2/29",
                             "2004/13/1",
                             "2004/8/5 24:00:00",
                             "2004/8/5 12:60",
                             "2004/8/5 12:30:00x",
                             "2004/8/5 12",
                             "4/8/5",
                             "2004/8/-5",
                             "2004/8/5 13:00 PM",
                             "20045/8/5",
                             "2004/8/5 12:30:00:00",
                             "0000/1/1",
                             "2004/ 8/5",
                             "2004-08-05T",
                             "2004-08-05T12",
                             "2004/08/05T12:30",
                             "2004-08-05T12:30+09:00",
                             "2004-08-05T12:30:00 PM",
                             "2004-08-05 12:30Z",
                             "16年8月5日",
                             "2004年8月",
                             "2004年8月5",
                             "年月日",
                             "2004年8月5日 12時30",
                             "2004年8月5日 30分",
                             "2004年8月5日 12時30分15",
                             "2004年13月5日",
                             "08.05.2004.",
                             "2004.08/05",
                             "2004/00008/05",
                             "05.13.2004"})
        EXPECT_FALSE(ParseDateTime(text)) << text;
}

TEST(Dates, AreWrittenYearFirstOnEverySystem) {
    EXPECT_EQ(DateTimeText(Noon), "2004/08/05 12:30:00");
    EXPECT_EQ(DateTimeText(-1), "1969/12/31 23:59:59");
    EXPECT_EQ(DateTimeText(std::numeric_limits<CivilTime>::max()), "9999/12/31 23:59:59");
    EXPECT_EQ(DateTimeText(std::numeric_limits<CivilTime>::min()), "0001/01/01 00:00:00");
}

TEST(Dates, MinutesAreCountedByTheClockAndDurationsByTheirLength) {
    EXPECT_EQ(MinuteBoundaries(Noon + 59, Noon), 0);
    EXPECT_EQ(MinuteBoundaries(Noon, Noon - 1), -1);
    EXPECT_EQ(MinuteBoundaries(-61, -60), 1);
    EXPECT_EQ(DurationText(-3661), "01:01:01");
    EXPECT_EQ(DurationText(360000), "100:00:00");
    EXPECT_EQ(DurationText(std::numeric_limits<std::int64_t>::min()), "2562047788015215:30:08");
    EXPECT_EQ(ShortDurationText(59) + " " + ShortDurationText(125) + " " + ShortDurationText(3600),
              "59 2:05 60:00");
}

TEST(TextEncoding, TellsWhatAFileIsWrittenIn) {
    using Case = std::tuple<std::string, TextEncoding, std::string>;
    for (const auto& [bytes, encoding, text] : {
             Case{"T1, Cup", TextEncoding::ShiftJis, "T1, Cup"},
             Case{"\x83\x65\x83\x58\x83\x67", TextEncoding::ShiftJis, "テスト"},
             Case{"テスト", TextEncoding::Utf8, "テスト"},
             Case{"\xEF\xBB\xBFテスト", TextEncoding::Utf8WithMark, "テスト"},
             Case{"\xEF\xBB\xBF\xC3\xB1\xC3\xB3", TextEncoding::Utf8WithMark, "ñó"},
             // Half-width kana and accented letters share their bytes: two pairs together are kana.
             Case{"\xC3\xB1\xC3\xB3", TextEncoding::ShiftJis, "ﾃｱﾃｳ"},
             Case{"\xC3\xB1u", TextEncoding::Utf8, "ñu"},
             Case{"Ca\xC3\xB1ones", TextEncoding::Utf8, "Cañones"},
             Case{"\xC3\xB1\xC3\x81", TextEncoding::Utf8, "ñÁ"},  // 81 is no kana
             Case{"\xD0\x9A\xD1\x83\xD0\xB1\xD0\xBE\xD0\xBA", TextEncoding::Utf8, "Кубок"},
             Case{"\x81\x60\x87\x8A", TextEncoding::ShiftJis, "～㈱"},                    // of NEC
             Case{"a\x83\xFF z", TextEncoding::ShiftJis, "a\xEF\xBF\xBD\xEF\xBF\xBD z"},  // no characters
             Case{"\xEF\xBB\xBF-\xC3", TextEncoding::Utf8WithMark, "-\xEF\xBF\xBD"},
         }) {
        const DecodedText decoded = DecodeText(bytes);
        EXPECT_EQ(decoded.Encoding, encoding) << text;
        EXPECT_EQ(decoded.Utf8, text);
    }
}

TEST(TextEncoding, EachCharacterFindsItsPlaceOrIsSeenToHaveNone) {
    EXPECT_EQ(EncodeText("〜～−－髙①ｱ", TextEncoding::ShiftJis),
              "\x81\x60\x81\x60\x81\x7C\x81\x7C\xFB\xFC\x87\x40\xB1");
    for (const char* text : {"ñ", "\xFF"}) EXPECT_FALSE(EncodeText(text, TextEncoding::ShiftJis));
    EXPECT_EQ(EncodeText("ñ", TextEncoding::Utf8), "ñ");
    for (const char* bytes :
         {"\xC0\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE0\x9F\xBF", "\xC3", "\x80"})
        EXPECT_FALSE(IsValidUtf8(bytes));
    EXPECT_TRUE(IsValidUtf8("\xF4\x8F\xBF\xBF\xED\x9F\xBF\xE0\xA0\x80"));
}

}  // namespace
}  // namespace keelview
