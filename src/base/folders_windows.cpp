// By the system's own calls, as the library's take paths of 260 characters at the most.

#include <windows.h>

#include "base/folders.h"
#include "base/paths.h"
#include "base/reach_windows.h"
#include "base/system_files.h"

namespace keelview {
namespace {

namespace fs = std::filesystem;

std::error_code ErrorUnless(BOOL done) {
    return done != 0 ? std::error_code{} : LastError();
}

}  // namespace

std::error_code MakeFolders(const fs::path& folder) {
    if (folder.empty() || PathExists(folder)) return {};
    if (folder.has_relative_path())
        if (const std::error_code error = MakeFolders(folder.parent_path())) return error;
    if (::CreateDirectoryW(Reach(folder).c_str(), nullptr) != 0 || ::GetLastError() == ERROR_ALREADY_EXISTS)
        return {};
    return LastError();
}

std::error_code CopyOver(const fs::path& from, const fs::path& to) {
    const std::wstring target = Reach(to);
    if (::CopyFileW(Reach(from).c_str(), target.c_str(), FALSE) == 0) return LastError();
    return ErrorUnless(::SetFileAttributesW(target.c_str(), FILE_ATTRIBUTE_NORMAL));
}

std::error_code MoveTo(const fs::path& from, const fs::path& to) {
    return ErrorUnless(::MoveFileExW(Reach(from).c_str(), Reach(to).c_str(), MOVEFILE_WRITE_THROUGH));
}

std::error_code RemoveAll(const fs::path& path) {
    const std::wstring entry = Reach(path);
    const DWORD marks = ::GetFileAttributesW(entry.c_str());
    if (marks == INVALID_FILE_ATTRIBUTES) {
        const DWORD why = ::GetLastError();
        return why == ERROR_FILE_NOT_FOUND || why == ERROR_PATH_NOT_FOUND ? std::error_code{} : LastError();
    }
    if ((marks & FILE_ATTRIBUTE_READONLY) != 0) ::SetFileAttributesW(entry.c_str(), FILE_ATTRIBUTE_NORMAL);
    if ((marks & FILE_ATTRIBUTE_DIRECTORY) == 0) return ErrorUnless(::DeleteFileW(entry.c_str()));
    if (IsFolderItself(path))
        for (const std::string& name : NamesInFolder(path))
            if (const std::error_code error = RemoveAll(path / PathOf(name))) return error;
    return ErrorUnless(::RemoveDirectoryW(entry.c_str()));
}

}  // namespace keelview
