#include <algorithm>
#include <map>
#include <utility>

#include "base/page_files.h"
#include "base/system_files.h"

namespace keelview {
namespace {

namespace fs = std::filesystem;

using FilesByPath = std::map<std::string, std::string, std::less<>>;

/// What other systems keep on a disc.
FilesByPath& Disc() {
    static FilesByPath disc;
    return disc;
}

const std::string* FileAt(const fs::path& path) {
    const auto found = Disc().find(path.native());
    return found != Disc().end() ? &found->second : nullptr;
}

/// The first path that lies in a folder, or the end.
FilesByPath::const_iterator FirstIn(const std::string& folder) {
    const auto first = Disc().lower_bound(folder);
    return first != Disc().end() && first->first.starts_with(folder) ? first : Disc().end();
}

std::string AsFolder(const fs::path& path) {
    return path.native().ends_with('/') ? path.native() : path.native() + '/';
}

}  // namespace

char* AddPageFile(const std::string& path, std::string bytes) {
    return Disc().insert_or_assign(path, std::move(bytes)).first->second.data();
}

bool SystemTakesName(std::string_view name) {
    return name.find('\0') == std::string_view::npos;
}

std::optional<std::uintmax_t> RegularFileSize(const fs::path& path) {
    const std::string* const file = FileAt(path);
    return file != nullptr ? std::optional<std::uintmax_t>(file->size()) : std::nullopt;
}

bool PathExists(const fs::path& path) {
    return FileAt(path) != nullptr || IsFolderItself(path);
}

std::vector<std::string> NamesInFolder(const fs::path& folder) {
    const std::string begin = AsFolder(folder);
    std::vector<std::string> names;
    for (auto file = FirstIn(begin); file != Disc().end() && file->first.starts_with(begin); ++file) {
        const std::string_view rest = std::string_view(file->first).substr(begin.size());
        const std::string_view name = rest.substr(0, rest.find('/'));
        if (names.empty() || names.back() != name) names.emplace_back(name);
    }
    return names;
}

bool IsFolderItself(const fs::path& path) {
    return FirstIn(AsFolder(path)) != Disc().end();
}

void RemoveFromFolder(const fs::path& path) {
    Disc().erase(path.native());
}

bool ReadRegularFile(const fs::path& path, std::uintmax_t limit, std::string& bytes) {
    const std::string* const file = FileAt(path);
    if (file == nullptr || file->size() > limit) return false;
    bytes = *file;
    return true;
}

bool ReadRegularFilePart(const fs::path& path, std::uintmax_t begin, std::size_t size, std::string& bytes) {
    const std::string* const file = FileAt(path);
    if (file == nullptr || begin > file->size() || size > file->size() - begin) return false;
    bytes.assign(*file, static_cast<std::size_t>(begin), size);
    return true;
}

std::error_code ReplaceWholeFile(const fs::path& path, std::string_view bytes) {
    AddPageFile(path.native(), std::string(bytes));
    return {};
}

}  // namespace keelview
