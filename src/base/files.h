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

/// All bytes of a regular file; nothing if it cannot be opened, is no regular file, or holds more than
/// `limit` bytes.
std::optional<std::string> ReadWholeFile(const std::filesystem::path& path,
                                         std::uintmax_t limit = std::uintmax_t{1} << 31);

/// The same into a buffer of the caller, for one file after another; false where the other gives nothing,
/// and the buffer then holds anything.
bool ReadWholeFile(const std::filesystem::path& path, std::uintmax_t limit, std::string& bytes);

/// `size` bytes of a regular file from `begin` on; nothing if it is none, cannot be read or has not so
/// many.
std::optional<std::string> ReadFilePart(const std::filesystem::path& path, std::uintmax_t begin,
                                        std::size_t size);

/// The first bytes of a regular file, `size` of them at most; empty if it cannot be read.
std::string ReadFileHead(const std::filesystem::path& path, std::size_t size);

/// Replaces a file as a whole: writes aside in the same folder, flushes to the disc, renames. A folder that
/// is not there yet is made. On failure the old file stands untouched, nothing is left beside it, and the
/// error says why. Permissions of an old file are kept, and a file that may not be written is not replaced.
/// What a writer that was killed has left beside it goes with a later write, hours on.
std::error_code WriteFileAtomically(const std::filesystem::path& path, std::string_view bytes);

/// The path of `relative` (its parts separated by '/' or '\\') below `base`, where each part is found
/// without regard to the case of letters; an exact match goes first. A part that is not there is taken as
/// written. Parts that would lead out of `base` ("..") become plain names in brackets that do not exist.
std::filesystem::path FindBelow(const std::filesystem::path& base, std::string_view relative);

/// True if the path is a regular file that can be seen.
bool IsFile(const std::filesystem::path& path);

/// The size of a regular file in bytes; nothing if there is none.
std::optional<std::uintmax_t> FileSize(const std::filesystem::path& path);

/// Removes a file; one that is not there is no fault.
void RemoveFile(const std::filesystem::path& path);

/// The regular files that a path means: itself, or all those in and below a folder, in the order of their
/// names. Folders that a link leads to are not entered, but for the path itself, nor is what cannot be
/// read; files and folders whose names begin with a point are passed over. None where nothing is there.
std::vector<std::filesystem::path> FilesBelow(const std::filesystem::path& path);

/// The names of the regular files of a folder that match a pattern with `*` and `?` ("*.*" is every name),
/// in ascending order, both without regard to case. Empty if the folder cannot be read. Names are UTF-8.
std::vector<std::string> ListFiles(const std::filesystem::path& folder, std::string_view pattern);

}  // namespace keelview
