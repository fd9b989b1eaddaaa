#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace keelview {

/// The path that a UTF-8 text names. Texts become paths here alone: elsewhere a system with wide names
/// would take each byte for a character.
inline std::filesystem::path PathOf(std::string_view utf8) {
    return std::u8string(utf8.begin(), utf8.end());
}

}  // namespace keelview
