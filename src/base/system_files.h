#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

namespace keelview {

// What whole files need of the system beyond the standard library; one implementation for each system.

/// How the name of a file begins that is being written aside.
inline constexpr std::string_view AsidePrefix = ".write-";

/// Reads a regular file. False if it is none (a folder, a pipe), cannot be read or is longer than `limit`.
bool ReadRegularFile(const std::filesystem::path& path, std::uintmax_t limit, std::string& bytes);

/// Writes a file beside the target, brings it to the disc and gives it the target's name. The target names
/// its folder, which is there, and is no link. On failure the old file stands, and nothing is left beside
/// it. A target that is no file, and one that its own marks or its folder forbid to write, is an error.
std::error_code ReplaceWholeFile(const std::filesystem::path& target, std::string_view bytes);

}  // namespace keelview
