#pragma once

#include <filesystem>
#include <string>
#include <system_error>

namespace keelview {

/// The path in the form that may have any length and whose names are taken as they stand.
std::wstring Reach(const std::filesystem::path& path);

/// Why the call to the system failed that was made last.
std::error_code LastError();

}  // namespace keelview
