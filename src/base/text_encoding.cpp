#include "base/text_encoding.h"

#include <iconv.h>

#include <array>
#include <cerrno>
#include <cstdint>

namespace keelview {
namespace {

constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view Replacement = "\xEF\xBF\xBD";  // U+FFFD

/// Code page 932 as glibc knows it: of the tables at hand it gives back most codes as they came.
constexpr const char* ShiftJisTable = "CP932";

/// One conversion of the platform's tables, closed when it goes.
class Converter {
  public:
    Converter(const char* to, const char* from) : handle_(iconv_open(to, from)) {}
    ~Converter() {
        if (Ready()) iconv_close(handle_);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;
    Converter(Converter&&) = delete;
    Converter& operator=(Converter&&) = delete;

    bool Ready() const {
        // The platform says "no such table" by a pointer of value -1.
        return reinterpret_cast<std::intptr_t>(handle_) != -1;  // NOLINT(*-reinterpret-cast)
    }

    /// Converts as far as it goes and cuts what was converted off `text`. True if nothing is left.
    bool Convert(std::string_view& text, std::string& out) {
        std::array<char, 4096> buffer{};
        while (!text.empty()) {
            char* from = const_cast<char*>(text.data());  // NOLINT(*-const-cast): only read
            std::size_t fromLeft = text.size();
            char* to = buffer.data();
            std::size_t toLeft = buffer.size();
            const std::size_t result = iconv(handle_, &from, &fromLeft, &to, &toLeft);
            const bool full = result == static_cast<std::size_t>(-1) && errno == E2BIG;
            out.append(buffer.data(), buffer.size() - toLeft);
            text.remove_prefix(text.size() - fromLeft);
            if (result == static_cast<std::size_t>(-1) && !full) return false;
        }
        return true;
    }

  private:
    iconv_t handle_;
};

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

std::string DecodeShiftJis(std::string_view bytes) {
    Converter converter("UTF-8", ShiftJisTable);
    if (!converter.Ready()) return ReplaceBadUtf8(bytes);
    std::string text;
    text.reserve(bytes.size() + bytes.size() / 2);
    while (!converter.Convert(bytes, text)) {
        text += Replacement;
        bytes.remove_prefix(1);
    }
    return text;
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
    return {DecodeShiftJis(bytes), TextEncoding::ShiftJis};
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
    Converter converter(ShiftJisTable, "UTF-8");
    std::string bytes;
    if (!converter.Ready() || !converter.Convert(utf8, bytes)) return std::nullopt;
    return bytes;
}

}  // namespace keelview
