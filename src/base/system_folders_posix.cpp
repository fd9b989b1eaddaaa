// What the standard library does for a system whose names are bytes.

#include <chrono>

#include "base/folders.h"
#include "base/system_files.h"
#include "base/system_replace.h"

namespace keelview {
namespace {

namespace fs = std::filesystem;

/// Removes what writers that were killed have left in a folder: files aside that nobody has touched for
/// hours.
void SweepAsides(const fs::path& folder) {
    const auto old = fs::file_time_type::clock::now() - std::chrono::hours(3);
    for (const std::string& name : NamesInFolder(folder)) {
        if (!name.starts_with(AsidePrefix)) continue;
        std::error_code unseen;
        const auto touched = fs::last_write_time(folder / name, unseen);
        if (!unseen && touched < old) fs::remove(folder / name, unseen);
    }
}

}  // namespace

bool SystemTakesName(std::string_view name) {
    return name.find('\0') == std::string_view::npos;
}

std::optional<std::uintmax_t> RegularFileSize(const fs::path& path) {
    std::error_code error;
    if (!fs::is_regular_file(path, error)) return std::nullopt;
    const std::uintmax_t size = fs::file_size(path, error);
    if (error) return std::nullopt;
    return size;
}

bool PathExists(const fs::path& path) {
    std::error_code error;
    return fs::exists(path, error);
}

std::vector<std::string> NamesInFolder(const fs::path& folder) {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
        names.push_back(entry->path().filename().string());
    return names;
}

bool IsFolderItself(const fs::path& path) {
    std::error_code error;
    return fs::is_directory(fs::symlink_status(path, error));
}

void RemoveFromFolder(const fs::path& path) {
    std::error_code unseen;
    fs::remove(path, unseen);
}

std::error_code ReplaceWholeFile(const fs::path& path, std::string_view bytes) {
    std::error_code error;
    // The target of a link is replaced, not the link.
    fs::path target = fs::is_symlink(path, error) ? fs::weakly_canonical(path, error) : path;
    if (error && error != std::errc::no_such_file_or_directory) return error;
    error.clear();
    if (!target.has_parent_path()) target = fs::path(".") / target;
    error = MakeFolders(target.parent_path());
    if (error) return error;
    SweepAsides(target.parent_path());
    return ReplaceTarget(target, bytes);
}

}  // namespace keelview
