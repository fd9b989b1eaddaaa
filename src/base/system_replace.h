#pragma once

#include <filesystem>
#include <string_view>
#include <system_error>

namespace keelview {

// What stands behind ReplaceWholeFile.

/// How the name of a file begins that is being written aside.
inline constexpr std::string_view AsidePrefix = ".write-";

/// The part that desktops do each in their own way: writes a file beside the target, brings it to the disc
/// and gives it the target's name. The target names its folder, which is there, and is no link. On failure
/// the old file stands, and nothing is left beside it. A target that is no file, and one that its own marks
/// or its folder forbid to write, is an error.
std::error_code ReplaceTarget(const std::filesystem::path& target, std::string_view bytes);

}  // namespace keelview
