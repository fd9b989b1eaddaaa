#include <code_page_932.h>  // made by the build

#include <algorithm>
#include <array>
#include <utility>

#include "base/system_text.h"
#include "base/text_encoding.h"

namespace keelview {
namespace {

constexpr std::size_t PairsPerLead = 188;
constexpr char16_t FirstKana = 0xFF61;  // A1 to DF, the half-width kana
constexpr char16_t LastKana = 0xFF9F;

/// Characters that share a code with a like one, which is what the code reads as.
constexpr std::array<std::pair<char16_t, std::string_view>, 9> Likenesses{{{0xA2, "\x81\x91"},
                                                                           {0xA3, "\x81\x92"},
                                                                           {0xA5, "\\"},
                                                                           {0xAC, "\x81\xCA"},
                                                                           {0x2014, "\x81\x5C"},
                                                                           {0x2016, "\x81\x61"},
                                                                           {0x203E, "~"},
                                                                           {0x2212, "\x81\x7C"},
                                                                           {0x301C, "\x81\x60"}}};

constexpr unsigned char Byte(char c) {
    return static_cast<unsigned char>(c);
}

/// Where the pairs of a lead byte begin in the table; behind its end for a byte that leads no pair.
constexpr std::size_t RowOf(unsigned char lead) {
    if (lead >= 0x81 && lead <= 0x9F) return PairsPerLead * (lead - 0x81U);
    if (lead >= 0xE0 && lead <= 0xFC) return PairsPerLead * (lead - 0xE0U + 31U);
    return CodePage932Pairs.size();
}

/// The character of a pair of bytes; 0 if they are none.
char16_t PairAt(unsigned char lead, unsigned char trail) {
    const std::size_t row = RowOf(lead);
    if (row == CodePage932Pairs.size() || trail < 0x40 || trail == 0x7F || trail > 0xFC) return 0;
    return CodePage932Pairs[row + trail - (trail < 0x7F ? 0x40 : 0x41)];
}

/// The bytes of an element of the table.
std::string PairText(std::size_t index) {
    const std::size_t lead = index / PairsPerLead;
    const std::size_t trail = index % PairsPerLead;
    return {static_cast<char>(lead < 31 ? lead + 0x81 : lead - 31 + 0xE0),
            static_cast<char>(trail < 63 ? trail + 0x40 : trail + 0x41)};
}

std::string Utf8Of(char16_t c) {
    const auto tail = [&](int shift) { return static_cast<char>(0x80 | ((c >> shift) & 0x3F)); };
    if (c < 0x80) return {static_cast<char>(c)};
    if (c < 0x800) return {static_cast<char>(0xC0 | (c >> 6)), tail(0)};
    return {static_cast<char>(0xE0 | (c >> 12)), tail(6), tail(0)};
}

/// Cuts the first character off well-formed UTF-8; 0 for one of more than 16 bits.
char16_t CutCharacter(std::string_view& utf8) {
    const unsigned char lead = Byte(utf8.front());
    const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    unsigned value = length == 1 ? lead : lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) value = value << 6 | (Byte(utf8[i]) & 0x3FU);
    utf8.remove_prefix(length);
    return length < 4 ? static_cast<char16_t>(value) : 0;
}

/// The bytes of a character beyond ASCII; none if it has no place. Of several codes the lowest is taken,
/// but none with ED or EE before it: what stands there stands in FA to FC again.
std::string CodeOf(char16_t c) {
    if (c >= FirstKana && c <= LastKana) return {static_cast<char>(c - FirstKana + 0xA1)};
    for (const auto& [character, code] : Likenesses)
        if (character == c) return std::string(code);
    if (c == 0) return {};
    const auto begin = CodePage932Pairs.begin();
    const auto end = CodePage932Pairs.end();
    auto found = std::find(begin, begin + RowOf(0xED), c);
    if (found == begin + RowOf(0xED)) found = std::find(begin + RowOf(0xEF), end, c);
    return found == end ? std::string{} : PairText(static_cast<std::size_t>(found - begin));
}

}  // namespace

std::string DecodeCodePage932(std::string_view bytes, std::string_view replacement) {
    std::string text;
    text.reserve(bytes.size() + bytes.size() / 2);
    while (!bytes.empty()) {
        const unsigned char first = Byte(bytes.front());
        std::size_t length = 1;
        if (first < 0x80) {
            text += bytes.front();
        } else if (first >= 0xA1 && first <= 0xDF) {
            text += Utf8Of(static_cast<char16_t>(first - 0xA1 + FirstKana));
        } else if (const char16_t pair = bytes.size() > 1 ? PairAt(first, Byte(bytes[1])) : 0; pair != 0) {
            text += Utf8Of(pair);
            length = 2;
        } else {
            text += replacement;
        }
        bytes.remove_prefix(length);
    }
    return text;
}

std::optional<std::string> EncodeCodePage932(std::string_view utf8) {
    if (!IsValidUtf8(utf8)) return std::nullopt;
    std::string bytes;
    while (!utf8.empty()) {
        const bool ascii = Byte(utf8.front()) < 0x80;
        const char16_t c = CutCharacter(utf8);
        const std::string code = ascii ? std::string{static_cast<char>(c)} : CodeOf(c);
        if (code.empty()) return std::nullopt;
        bytes += code;
    }
    return bytes;
}

}  // namespace keelview
