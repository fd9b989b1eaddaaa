#include <gtest/gtest.h>

#include "base/dates.h"

namespace keelview {
namespace {

constexpr CivilTime Noon = 1091709000;  // 2004/08/05 12:30:00, as `date -u` counts it

TEST(DateForms, OneMomentInManyHands) {
    for (const char* text :
         {"05.08.2004 12:30", "5.8.2004 12:30:00", "2004.8.5 12:30", "2004-08-05T12:30:00",
          "2004-08-05T12:30:00Z", "2004-08-05T12:30", "2004年8月5日 12時30分", "2004年8月5日12時30分0秒",
          "2004年08月05日 12:30", "2004年8月5日 午後0時30分", "2004年8月5日\t12:30 PM"})
        EXPECT_EQ(ParseDateTime(text), Noon) << text;
    EXPECT_EQ(ParseDateTime("2004年8月5日"), Noon - 45000);
    EXPECT_EQ(ParseDateTime("2004年8月5日 12時"), Noon - 1800);
    EXPECT_EQ(ParseDateTime("2004/8/5 午前9時"), Noon - 12600);
}

TEST(DateForms, AYearOfTwoDigitsCountsWhereItIsBeyondDoubt) {
    struct Case {
        const char* text;
        const char* day;  // empty: in doubt, or none
    };
    for (const Case& c :
         {Case{"25/12/99", "1999/12/25"}, Case{"12/25/99", "1999/12/25"}, Case{"99/12/25", "1999/12/25"},
          Case{"99-8-5", "1999/08/05"}, Case{"04/04/04", "2004/04/04"}, Case{"31.12.04", ""},
          Case{"31.12.99", "1999/12/31"}, Case{"29/2/99", ""}, Case{"8/25/04", "2004/08/25"},
          Case{"25/8/04", ""},  // 2025/8/4 as well
          Case{"5/8/04", ""}, Case{"05.08.04", ""}, Case{"04/8/5", "2004/08/05"}, Case{"8/5/4", ""},
          Case{"32/13/99", ""}}) {
        const auto read = ParseDateTime(c.text);
        EXPECT_EQ(read ? DateText(*read) : "", c.day) << c.text;
    }
}

TEST(DateForms, WhatOnlyLooksLikeADateIsNone) {
    for (const char* text :
         {"2004-08-05T", "2004-08-05T12", "2004/08/05T12:30", "2004-08-05T12:30+09:00",
          "2004-08-05T12:30:00 PM", "2004-08-05 12:30Z", "16年8月5日", "2004年8月", "2004年8月5", "年月日",
          "2004年8月5日 12時30", "2004年8月5日 30分", "2004年8月5日 12時30分15", "2004年13月5日",
          "08.05.2004.", "2004.08/05", "05.13.2004"})
        EXPECT_FALSE(ParseDateTime(text)) << text;
}

}  // namespace
}  // namespace keelview
