#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <memory>

#include "base/system_files.h"
#include "base/system_replace.h"

namespace keelview {
namespace {

namespace fs = std::filesystem;

std::error_code LastError() {
    return {errno, std::generic_category()};
}

struct Closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
    void operator()(DIR* folder) const { ::closedir(folder); }
};
using File = std::unique_ptr<std::FILE, Closer>;

std::error_code MakeFolder(const fs::path& folder) {
    if (folder.empty() || PathExists(folder)) return {};
    if (const std::error_code error = MakeFolder(folder.parent_path())) return error;
    return ::mkdir(folder.c_str(), 0777) == 0 ? std::error_code{} : LastError();
}

std::error_code WriteNew(const fs::path& path, std::string_view bytes) {
    const File file(std::fopen(path.c_str(), "wb"));
    const bool written = file != nullptr &&
                         std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size() &&
                         std::fflush(file.get()) == 0 && ::fsync(::fileno(file.get())) == 0;
    return written ? std::error_code{} : LastError();
}

}  // namespace

bool SystemTakesName(std::string_view name) {
    return name.find('\0') == std::string_view::npos;
}

std::optional<std::uintmax_t> RegularFileSize(const fs::path& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    return static_cast<std::uintmax_t>(status.st_size);
}

bool PathExists(const fs::path& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0;
}

std::vector<std::string> NamesInFolder(const fs::path& folder) {
    std::vector<std::string> names;
    const std::unique_ptr<DIR, Closer> open(::opendir(folder.c_str()));
    while (const dirent* entry = open ? ::readdir(open.get()) : nullptr) {
        std::string name = entry->d_name;
        if (name != "." && name != "..") names.push_back(std::move(name));
    }
    return names;
}

bool IsFolderItself(const fs::path& path) {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

void RemoveFromFolder(const fs::path& path) {
    ::unlink(path.c_str());
}

bool ReadRegularFile(const fs::path& path, std::uintmax_t limit, std::string& bytes) {
    const std::optional<std::uintmax_t> size = RegularFileSize(path);
    if (!size || *size > limit) return false;
    const File file(std::fopen(path.c_str(), "rb"));
    if (!file) return false;
    bytes.resize(static_cast<std::size_t>(*size));
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file.get()));
    return std::ferror(file.get()) == 0;
}

bool ReadRegularFilePart(const fs::path& path, std::uintmax_t begin, std::size_t size, std::string& bytes) {
    if (!RegularFileSize(path)) return false;
    const File file(std::fopen(path.c_str(), "rb"));
    if (!file || std::fseek(file.get(), static_cast<long>(begin), SEEK_SET) != 0) return false;
    bytes.resize(size);
    return std::fread(bytes.data(), 1, size, file.get()) == size;
}

std::error_code ReplaceWholeFile(const fs::path& path, std::string_view bytes) {
    if (const std::error_code error = MakeFolder(path.parent_path())) return error;
    // There are no rights here and no other writers: one name aside will do, and what a killed writer has
    // left there is written over.
    fs::path aside = path;
    aside.replace_filename(std::string(AsidePrefix) + path.filename().string());
    std::error_code error = WriteNew(aside, bytes);
    if (!error && ::rename(aside.c_str(), path.c_str()) != 0) error = LastError();
    if (error) ::unlink(aside.c_str());
    return error;
}

}  // namespace keelview
