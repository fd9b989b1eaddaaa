#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace keelview {

// Code page 932 (Shift-JIS) by the system's own tables; one implementation for each system.

/// The bytes as UTF-8; each byte that begins no character becomes `replacement`.
std::string DecodeCodePage932(std::string_view bytes, std::string_view replacement);

/// Well-formed UTF-8 as bytes of the code page; nothing if a character has no place in it.
std::optional<std::string> EncodeCodePage932(std::string_view utf8);

}  // namespace keelview
