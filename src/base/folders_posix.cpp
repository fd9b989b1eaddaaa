#include "base/folders.h"

namespace keelview {
namespace fs = std::filesystem;

std::error_code MakeFolders(const fs::path& folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    return error;
}

std::error_code CopyOver(const fs::path& from, const fs::path& to) {
    std::error_code error;
    fs::copy_file(from, to, fs::copy_options::overwrite_existing, error);
    return error;
}

std::error_code MoveTo(const fs::path& from, const fs::path& to) {
    std::error_code error;
    fs::rename(from, to, error);
    return error;
}

std::error_code RemoveAll(const fs::path& path) {
    std::error_code error;
    fs::remove_all(path, error);
    return error;
}

}  // namespace keelview
