#include "base/text_encoding.h"

#include <gtest/gtest.h>

#include <tuple>

namespace keelview {
namespace {

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

TEST(TextEncoding, WavesAndMinusesOfBothKindsFindTheirPlace) {
    EXPECT_EQ(EncodeText("〜～−－", TextEncoding::ShiftJis), "\x81\x60\x81\x60\x81\x7C\x81\x7C");
    EXPECT_EQ(EncodeText("髙①ｱ", TextEncoding::ShiftJis), "\xFB\xFC\x87\x40\xB1");
    for (const char* text : {"ñ", "\xFF"}) EXPECT_FALSE(EncodeText(text, TextEncoding::ShiftJis));
    EXPECT_EQ(EncodeText("ñ", TextEncoding::Utf8), "ñ");
}

TEST(TextEncoding, MalformedUtf8IsSeen) {
    for (const char* bytes :
         {"\xC0\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE0\x80\x80", "\xC3", "\x80"})
        EXPECT_FALSE(IsValidUtf8(bytes));
    EXPECT_TRUE(IsValidUtf8("\xF4\x8F\xBF\xBF\xED\x9F\xBF"));
}

}  // namespace
}  // namespace keelview
