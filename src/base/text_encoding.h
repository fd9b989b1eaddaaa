#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace keelview {

/// How a text file holds its text.
enum class TextEncoding { Utf8, Utf8WithMark, ShiftJis };

/// A text in UTF-8 together with the encoding it came in.
struct DecodedText {
    std::string Utf8;
    TextEncoding Encoding = TextEncoding::ShiftJis;
};

/// Reads the bytes of a whole file: UTF-8 where they start with its byte-order mark or are valid UTF-8,
/// else code page 932 (Shift-JIS). One exception: if all characters beyond ASCII are two-byte sequences
/// whose bytes are half-width kana of code page 932 as well (a lead of C2 to DF, a tail of A1 to BF) and
/// two stand together, it is code page 932: Cyrillic and Greek words hold other tails too. Pure ASCII
/// counts as Shift-JIS. Bytes that mean nothing become U+FFFD; the text never gets more than three times as
/// long as the bytes.
DecodedText DecodeText(std::string_view bytes);

/// True if the bytes are well-formed UTF-8 (no overlong forms, no surrogates, at most U+10FFFF).
bool IsValidUtf8(std::string_view bytes);

/// The text as bytes of an encoding (without a byte-order mark); nothing if a character has no place in it.
std::optional<std::string> EncodeText(std::string_view utf8, TextEncoding encoding);

}  // namespace keelview
