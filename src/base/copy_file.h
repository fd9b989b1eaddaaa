#pragma once

#include <filesystem>
#include <system_error>

namespace keelview {

/// Copies a file over one that may have the name already. That goes first: on Windows the standard library
/// takes any two files for the same one, and refuses.
inline std::error_code CopyOver(const std::filesystem::path& from, const std::filesystem::path& to) {
    std::error_code error;
    std::filesystem::remove(to, error);
    if (!error) std::filesystem::copy_file(from, to, error);
    return error;
}

}  // namespace keelview
