#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace keelview {

// All that the rooms without a window ask of a file system. Each system has an implementation of its own,
// so that those rooms also run where the standard library knows no files.

/// Whether the system can have a file of this name (UTF-8, without folders).
bool SystemTakesName(std::string_view name);

/// The size of a regular file in bytes, also where a link leads to it; nothing if there is none.
std::optional<std::uintmax_t> RegularFileSize(const std::filesystem::path& path);

/// True if anything that can be seen stands at the path, or where a link at the path leads.
bool PathExists(const std::filesystem::path& path);

/// The names (UTF-8) of all that is in a folder, in no order; none if it cannot be read.
std::vector<std::string> NamesInFolder(const std::filesystem::path& folder);

/// True for a folder, and false for a link that leads to one.
bool IsFolderItself(const std::filesystem::path& path);

/// Takes a file out of its folder, if it is there.
void RemoveFromFolder(const std::filesystem::path& path);

/// Reads a regular file. False if it is none (a folder, a pipe), cannot be read or is longer than `limit`.
bool ReadRegularFile(const std::filesystem::path& path, std::uintmax_t limit, std::string& bytes);

/// Reads `size` bytes of a regular file from `begin` on; false if it is none, cannot be read or has not so
/// many.
bool ReadRegularFilePart(const std::filesystem::path& path, std::uintmax_t begin, std::size_t size,
                         std::string& bytes);

/// Replaces a file as a whole, as WriteFileAtomically promises it.
std::error_code ReplaceWholeFile(const std::filesystem::path& path, std::string_view bytes);

}  // namespace keelview
