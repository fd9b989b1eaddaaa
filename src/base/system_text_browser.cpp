#include <algorithm>

#include "base/system_text.h"

namespace keelview {

// All texts of a page are UTF-8; a code page is left out with its tables.

std::string DecodeCodePage932(std::string_view bytes, std::string_view replacement) {
    std::string text;
    for (const char c : bytes)
        if (static_cast<unsigned char>(c) < 0x80)
            text += c;
        else
            text += replacement;
    return text;
}

std::optional<std::string> EncodeCodePage932(std::string_view utf8) {
    const auto plain = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
    return std::ranges::all_of(utf8, plain) ? std::optional<std::string>(utf8) : std::nullopt;
}

}  // namespace keelview
