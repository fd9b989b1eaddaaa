#pragma once

#include <filesystem>
#include <system_error>

namespace keelview {

// Folders and whole files, at paths of any length; of desktops alone, one implementation for each family.

/// Makes a folder, and those that it lies in.
std::error_code MakeFolders(const std::filesystem::path& folder);

/// Copies a file over one that may have the name already. The copy may be written.
std::error_code CopyOver(const std::filesystem::path& from, const std::filesystem::path& to);

/// Gives a file or folder a name that is free, in the same file system.
std::error_code MoveTo(const std::filesystem::path& from, const std::filesystem::path& to);

/// Removes a file, or a folder with all that is in it. Where nothing is there, nothing is to do.
std::error_code RemoveAll(const std::filesystem::path& path);

}  // namespace keelview
