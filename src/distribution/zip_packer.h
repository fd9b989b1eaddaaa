#pragma once

#include <filesystem>
#include <system_error>

namespace keelview {

/// Packs a folder, under its own name, as a zip file that every desktop opens; programs can be started from
/// it, and the names are UTF-8. Replaces the file as a whole; the error where that, or reading a file,
/// fails.
std::error_code PackZip(const std::filesystem::path& folder, const std::filesystem::path& packed);

}  // namespace keelview
