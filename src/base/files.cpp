#include "base/files.h"

#include <algorithm>
#include <string>
#include <utility>

#include "base/paths.h"
#include "base/strings.h"
#include "base/system_files.h"

namespace keelview {
namespace {

namespace fs = std::filesystem;

/// A name that leads nowhere else: ".." and what the system takes for no name are set in brackets.
std::string HarmlessName(std::string_view name) {
    if (name != ".." && SystemTakesName(name)) return std::string(name);
    std::string harmless = "(" + std::string(name) + ")";
    std::replace(harmless.begin(), harmless.end(), '\0', '?');
    return harmless;
}

/// The name of an entry of a folder that equals `name` but for case; the first by bytes of several.
std::string NameIn(const fs::path& folder, const std::string& name) {
    if (PathExists(folder / PathOf(name))) return name;
    std::string found;
    for (const std::string& here : NamesInFolder(folder))
        if (EqualNoCase(here, name) && (found.empty() || here < found)) found = here;
    return found.empty() ? name : found;
}

/// The number of bytes of the character at a place of a UTF-8 text: the byte and the tails behind it.
std::size_t CharacterLength(std::string_view text, std::size_t at) {
    std::size_t end = at + 1;
    while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) ++end;
    return end - at;
}

/// Both in upper case. On a mismatch the last star takes one character more, so the work is at most the
/// product of both lengths.
bool Matches(std::string_view name, std::string_view pattern) {
    constexpr std::size_t none = std::string_view::npos;
    std::size_t n = 0;
    std::size_t p = 0;
    std::size_t star = none;
    std::size_t taken = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            taken = n;
        } else if (p < pattern.size() && pattern[p] == '?') {
            n += CharacterLength(name, n);
            ++p;
        } else if (p < pattern.size() && pattern[p] == name[n]) {
            ++n;
            ++p;
        } else if (star != none) {
            p = star + 1;
            taken += CharacterLength(name, taken);
            n = taken;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', p) == none;
}

}  // namespace

std::optional<std::string> ReadWholeFile(const fs::path& path, std::uintmax_t limit) {
    std::string bytes;
    if (!ReadWholeFile(path, limit, bytes)) return std::nullopt;
    return bytes;
}

bool ReadWholeFile(const fs::path& path, std::uintmax_t limit, std::string& bytes) {
    return ReadRegularFile(path, limit, bytes);
}

std::optional<std::string> ReadFilePart(const fs::path& path, std::uintmax_t begin, std::size_t size) {
    std::string bytes;
    if (begin + size > FileSize(path).value_or(0) || !ReadRegularFilePart(path, begin, size, bytes))
        return std::nullopt;
    return bytes;
}

std::string ReadFileHead(const fs::path& path, std::size_t size) {
    const auto there = static_cast<std::size_t>(std::min<std::uintmax_t>(size, FileSize(path).value_or(0)));
    return ReadFilePart(path, 0, there).value_or("");
}

std::error_code WriteFileAtomically(const fs::path& path, std::string_view bytes) {
    return ReplaceWholeFile(path, bytes);
}

fs::path FindBelow(const fs::path& base, std::string_view relative) {
    std::string parts(relative);
    std::replace(parts.begin(), parts.end(), '\\', '/');
    fs::path path = base;
    for (const std::string_view part : Split(parts, '/')) {
        if (part.empty() || part == ".") continue;
        path /= PathOf(NameIn(path, HarmlessName(part)));
    }
    return path;
}

bool IsFile(const fs::path& path) {
    return RegularFileSize(path).has_value();
}

std::optional<std::uintmax_t> FileSize(const fs::path& path) {
    return RegularFileSize(path);
}

void RemoveFile(const fs::path& path) {
    RemoveFromFolder(path);
}

std::vector<fs::path> FilesBelow(const fs::path& path) {
    std::vector<fs::path> files;
    std::vector<fs::path> open{path};
    if (IsFile(path)) return open;
    while (!open.empty()) {
        const fs::path folder = std::move(open.back());
        open.pop_back();
        for (const std::string& name : NamesInFolder(folder)) {
            if (name.starts_with('.')) continue;
            fs::path entry = folder / PathOf(name);
            if (IsFile(entry))
                files.push_back(std::move(entry));
            else if (IsFolderItself(entry))
                open.push_back(std::move(entry));
        }
    }
    std::ranges::sort(files);
    return files;
}

std::vector<std::string> ListFiles(const fs::path& folder, std::string_view pattern) {
    const std::string upperPattern = pattern == "*.*" ? "*" : UpperAscii(pattern);
    std::vector<std::string> names;
    for (std::string& name : NamesInFolder(folder))
        if (Matches(UpperAscii(name), upperPattern) && IsFile(folder / PathOf(name)))
            names.push_back(std::move(name));
    std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
        const std::string upperA = UpperAscii(a);
        const std::string upperB = UpperAscii(b);
        return upperA != upperB ? upperA < upperB : a < b;
    });
    return names;
}

}  // namespace keelview
