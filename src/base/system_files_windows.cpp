#include <windows.h>

#include <algorithm>
#include <atomic>
#include <fstream>
#include <string>
#include <utility>

#include "base/system_files.h"
#include "base/system_replace.h"

namespace keelview {
namespace {

namespace fs = std::filesystem;

std::error_code LastError() {
    return {static_cast<int>(::GetLastError()), std::system_category()};
}

/// A file of the system that is being written, closed when it goes.
class NewFile {
  public:
    explicit NewFile(const fs::path& path)
        : handle_(::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL,
                                nullptr)) {}
    ~NewFile() { Close(); }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
    /// Writes all, brings it to the disc and closes.
    bool Finish(std::string_view bytes) {
        constexpr std::size_t most = 1U << 20U;
        while (!bytes.empty()) {
            DWORD written = 0;
            const auto count = static_cast<DWORD>(std::min(bytes.size(), most));
            if (::WriteFile(handle_, bytes.data(), count, &written, nullptr) == 0) return false;
            bytes.remove_prefix(written);
        }
        if (::FlushFileBuffers(handle_) == 0) return false;
        return Close();
    }
    bool Close() { return !IsOpen() || ::CloseHandle(std::exchange(handle_, INVALID_HANDLE_VALUE)) != 0; }

  private:
    HANDLE handle_;
};

/// Why the target cannot be replaced, if so.
std::error_code CheckTarget(const fs::path& target) {
    const DWORD marks = ::GetFileAttributesW(target.c_str());
    if (marks == INVALID_FILE_ATTRIBUTES)
        return ::GetLastError() == ERROR_FILE_NOT_FOUND ? std::error_code{} : LastError();
    if ((marks & FILE_ATTRIBUTE_DIRECTORY) != 0) return std::make_error_code(std::errc::is_a_directory);
    if ((marks & FILE_ATTRIBUTE_READONLY) != 0) return std::make_error_code(std::errc::permission_denied);
    return {};
}

/// A name beside the target that no other writer takes at the same time.
fs::path NameAside(const fs::path& target) {
    static std::atomic<unsigned> number{0};
    const std::string name = std::string(AsidePrefix) + std::to_string(::GetCurrentProcessId()) + "-" +
                             std::to_string(::GetTickCount64()) + "-" + std::to_string(++number);
    return target.parent_path() / name;
}

}  // namespace

bool ReadRegularFile(const fs::path& path, std::uintmax_t limit, std::string& bytes) {
    std::error_code error;
    if (!fs::is_regular_file(path, error)) return false;
    const std::uintmax_t size = fs::file_size(path, error);
    if (error || size > limit) return false;
    std::ifstream file(path, std::ios::binary);
    bytes.resize(static_cast<std::size_t>(size));
    file.read(bytes.data(), static_cast<std::streamsize>(size));
    if (file.bad()) return false;
    bytes.resize(static_cast<std::size_t>(file.gcount()));  // less if cut short by someone else meanwhile
    return true;
}

bool ReadRegularFilePart(const fs::path& path, std::uintmax_t begin, std::size_t size, std::string& bytes) {
    std::error_code error;
    if (!fs::is_regular_file(path, error)) return false;
    std::ifstream file(path, std::ios::binary);
    bytes.resize(size);
    file.seekg(static_cast<std::streamoff>(begin));
    file.read(bytes.data(), static_cast<std::streamsize>(size));
    return !file.fail();
}

std::error_code ReplaceTarget(const fs::path& target, std::string_view bytes) {
    if (const std::error_code error = CheckTarget(target)) return error;
    const fs::path aside = NameAside(target);
    NewFile file(aside);
    if (!file.IsOpen()) return LastError();
    if (file.Finish(bytes) && ::MoveFileExW(aside.c_str(), target.c_str(),
                                            MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0)
        return {};
    const std::error_code error = LastError();
    file.Close();
    ::DeleteFileW(aside.c_str());
    return error;
}

}  // namespace keelview
