#include "base/text_encoding.h"

#include "base/system_text.h"

namespace keelview {
namespace {

constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view Replacement = "\xEF\xBF\xBD";  // U+FFFD

bool IsAscii(unsigned char c) {
    return c < 0x80;
}
bool IsTail(unsigned char c) {
    return c >= 0x80 && c <= 0xBF;
}

/// Length of the well-formed UTF-8 sequence at the head of a text that is not empty; 0 if it is none.
std::size_t SequenceLength(std::string_view text) {
    const auto byte = [&](std::size_t i) {
        return i < text.size() ? static_cast<unsigned char>(text[i]) : static_cast<unsigned char>(0);
    };
    const unsigned char lead = byte(0);
    if (IsAscii(lead)) return 1;
    if (lead >= 0xC2 && lead <= 0xDF) return IsTail(byte(1)) ? 2 : 0;
    if (lead >= 0xE0 && lead <= 0xEF) {
        const bool overlong = lead == 0xE0 && byte(1) < 0xA0;
        const bool surrogate = lead == 0xED && byte(1) > 0x9F;
        return !overlong && !surrogate && IsTail(byte(1)) && IsTail(byte(2)) ? 3 : 0;
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        const bool overlong = lead == 0xF0 && byte(1) < 0x90;
        const bool tooHigh = lead == 0xF4 && byte(1) > 0x8F;
        return !overlong && !tooHigh && IsTail(byte(1)) && IsTail(byte(2)) && IsTail(byte(3)) ? 4 : 0;
    }
    return 0;
}

/// True if well-formed UTF-8 is more likely half-width kana of code page 932: every character beyond ASCII
/// reads as two kana as well, and two of them stand together, as letters with accents seldom do.
bool LooksLikeHalfWidthKana(std::string_view text) {
    bool together = false;
    bool afterPair = false;
    while (!text.empty()) {
        const std::size_t length = SequenceLength(text);
        if (length > 2 || length == 0) return false;
        if (length == 2 && static_cast<unsigned char>(text[1]) < 0xA1) return false;
        together = together || (length == 2 && afterPair);
        afterPair = length == 2;
        text.remove_prefix(length);
    }
    return together;
}

std::string ReplaceBadUtf8(std::string_view text) {
    std::string good;
    good.reserve(text.size());
    while (!text.empty()) {
        const std::size_t length = SequenceLength(text);
        good += length == 0 ? Replacement : text.substr(0, length);
        text.remove_prefix(length == 0 ? 1 : length);
    }
    return good;
}

bool IsAllAscii(std::string_view bytes) {
    for (const char c : bytes) {
        if (!IsAscii(static_cast<unsigned char>(c))) return false;
    }
    return true;
}

}  // namespace

DecodedText DecodeText(std::string_view bytes) {
    if (bytes.starts_with(ByteOrderMark)) {
        return {ReplaceBadUtf8(bytes.substr(ByteOrderMark.size())), TextEncoding::Utf8WithMark};
    }
    if (IsAllAscii(bytes)) return {std::string(bytes), TextEncoding::ShiftJis};
    if (IsValidUtf8(bytes) && !LooksLikeHalfWidthKana(bytes)) {
        return {std::string(bytes), TextEncoding::Utf8};
    }
    return {DecodeCodePage932(bytes, Replacement), TextEncoding::ShiftJis};
}

bool IsValidUtf8(std::string_view bytes) {
    while (!bytes.empty()) {
        const std::size_t length = SequenceLength(bytes);
        if (length == 0) return false;
        bytes.remove_prefix(length);
    }
    return true;
}

std::optional<std::string> EncodeText(std::string_view utf8, TextEncoding encoding) {
    if (encoding != TextEncoding::ShiftJis || IsAllAscii(utf8)) return std::string(utf8);
    return EncodeCodePage932(utf8);
}

}  // namespace keelview
