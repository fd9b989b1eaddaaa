// By the system's own calls: those of the C library know neither long paths nor what another program holds
// open.

#include <windows.h>

#include <algorithm>
#include <atomic>
#include <string>
#include <utility>

#include "base/file_names.h"
#include "base/folders.h"
#include "base/reach_windows.h"
#include "base/system_files.h"
#include "base/system_replace.h"

namespace keelview {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t MostAtOnce = 1U << 20U;
constexpr DWORD ShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// What is open in the system, closed when it goes.
class Handle {
  public:
    Handle(const fs::path& path, DWORD rights, DWORD sharing, DWORD how, DWORD marks)
        : handle_(::CreateFileW(Reach(path).c_str(), rights, sharing, nullptr, how, marks, nullptr)) {}
    ~Handle() { Close(); }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
    HANDLE Get() const { return handle_; }
    bool Close() { return !IsOpen() || ::CloseHandle(std::exchange(handle_, INVALID_HANDLE_VALUE)) != 0; }

  private:
    HANDLE handle_;
};

/// Anything to be looked at, where a link leads to, whatever others do with it.
Handle LookAt(const fs::path& path) {
    return {path, FILE_READ_ATTRIBUTES, ShareAll, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS};
}

Handle OpenToRead(const fs::path& path) {
    return {path, GENERIC_READ, ShareAll, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL};
}

std::optional<std::uintmax_t> SizeOf(const Handle& file) {
    BY_HANDLE_FILE_INFORMATION about{};
    if (!file.IsOpen() || ::GetFileType(file.Get()) != FILE_TYPE_DISK ||
        ::GetFileInformationByHandle(file.Get(), &about) == 0 ||
        (about.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        return std::nullopt;
    return (std::uintmax_t{about.nFileSizeHigh} << 32U) + about.nFileSizeLow;
}

/// Reads as many bytes as the buffer has; less are left in it where the file ends before.
bool Fill(const Handle& file, std::string& bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        DWORD count = 0;
        const auto wanted = static_cast<DWORD>(std::min(bytes.size() - done, MostAtOnce));
        if (::ReadFile(file.Get(), bytes.data() + done, wanted, &count, nullptr) == 0) return false;
        if (count == 0) break;
        done += count;
    }
    bytes.resize(done);
    return true;
}

/// Writes all, brings it to the disc and closes.
bool Finish(Handle& file, std::string_view bytes) {
    while (!bytes.empty()) {
        DWORD written = 0;
        const auto count = static_cast<DWORD>(std::min(bytes.size(), MostAtOnce));
        if (::WriteFile(file.Get(), bytes.data(), count, &written, nullptr) == 0) return false;
        bytes.remove_prefix(written);
    }
    return ::FlushFileBuffers(file.Get()) != 0 && file.Close();
}

/// Calls `take` with each entry that a path means; in its last part `*` stands for any letters.
template <typename Take>
void ForEachEntry(const std::wstring& pattern, Take take) {
    WIN32_FIND_DATAW entry{};
    const HANDLE search = ::FindFirstFileW(pattern.c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) return;
    do {
        const std::wstring_view name = entry.cFileName;
        if (name != L"." && name != L"..") take(entry);
    } while (::FindNextFileW(search, &entry) != 0);
    ::FindClose(search);
}

/// All entries of a folder whose names begin so.
std::wstring EntriesOf(const fs::path& folder, std::wstring_view begin = {}) {
    std::wstring pattern = Reach(folder.empty() ? fs::path(".") : folder);
    if (!pattern.ends_with(L'\\')) pattern += L'\\';
    return pattern.append(begin) + L'*';
}

/// Nothing for a name that is no text.
std::optional<std::string> Utf8Of(const wchar_t* wide) {
    const int size =
        ::WideCharToMultiByte(CP_UTF8, WC_ERR_INVALID_CHARS, wide, -1, nullptr, 0, nullptr, nullptr);
    if (size == 0) return std::nullopt;
    std::string text(static_cast<std::size_t>(size), '\0');
    ::WideCharToMultiByte(CP_UTF8, 0, wide, -1, text.data(), size, nullptr, nullptr);
    text.pop_back();  // the end sign
    return text;
}

/// Removes what writers that were killed have left in a folder: files aside that nobody has touched for
/// hours.
void SweepAsides(const fs::path& folder) {
    constexpr std::uint64_t ThreeHours = 3ULL * 3600 * 10'000'000;  // in the system's unit
    const auto number = [](const FILETIME& time) {
        return (std::uint64_t{time.dwHighDateTime} << 32U) + time.dwLowDateTime;
    };
    FILETIME now{};
    ::GetSystemTimeAsFileTime(&now);
    ForEachEntry(EntriesOf(folder, fs::path(AsidePrefix).native()), [&](const WIN32_FIND_DATAW& entry) {
        if (number(entry.ftLastWriteTime) + ThreeHours < number(now))
            RemoveFromFolder(folder / entry.cFileName);
    });
}

/// Why the target cannot be replaced, if so.
std::error_code CheckTarget(const fs::path& target) {
    const std::optional<std::string> name = Utf8Of(target.filename().c_str());
    if (!name || !SystemTakesName(*name)) return {ERROR_INVALID_NAME, std::system_category()};
    const DWORD marks = ::GetFileAttributesW(Reach(target).c_str());
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

/// Where a link at the path leads, else the path itself.
fs::path TargetOf(const fs::path& path) {
    const DWORD marks = ::GetFileAttributesW(Reach(path).c_str());
    if (marks == INVALID_FILE_ATTRIBUTES || (marks & FILE_ATTRIBUTE_REPARSE_POINT) == 0) return path;
    const Handle there = LookAt(path);
    std::wstring target(32768, L'\0');
    target.resize(
        ::GetFinalPathNameByHandleW(there.Get(), target.data(), static_cast<DWORD>(target.size()), 0));
    return target.empty() ? path : fs::path(target);
}

}  // namespace

std::error_code LastError() {
    return {static_cast<int>(::GetLastError()), std::system_category()};
}

std::wstring Reach(const fs::path& path) {
    constexpr std::wstring_view Literal = L"\\\\?\\";
    constexpr std::wstring_view Device = L"\\\\.\\";
    constexpr std::wstring_view Server = L"\\\\";
    std::wstring whole(32768, L'\0');
    whole.resize(::GetFullPathNameW(path.c_str(), static_cast<DWORD>(whole.size()), whole.data(), nullptr));
    if (whole.empty() || whole.starts_with(Literal) || whole.starts_with(Device)) return whole;
    if (!whole.starts_with(Server)) return whole.insert(0, Literal);
    return whole.replace(0, Server.size(), L"\\\\?\\UNC\\");
}

bool SystemTakesName(std::string_view name) {
    return EverySystemTakes(name);
}

std::optional<std::uintmax_t> RegularFileSize(const fs::path& path) {
    return SizeOf(LookAt(path));
}

bool PathExists(const fs::path& path) {
    return LookAt(path).IsOpen();
}

std::vector<std::string> NamesInFolder(const fs::path& folder) {
    std::vector<std::string> names;
    ForEachEntry(EntriesOf(folder), [&](const WIN32_FIND_DATAW& entry) {
        if (std::optional<std::string> name = Utf8Of(entry.cFileName)) names.push_back(*std::move(name));
    });
    return names;
}

bool IsFolderItself(const fs::path& path) {
    bool folder = false;
    ForEachEntry(Reach(path), [&](const WIN32_FIND_DATAW& entry) {
        const bool link = (entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
                          IsReparseTagNameSurrogate(entry.dwReserved0);  // a folder kept in a cloud is none
        folder = (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 && !link;
    });
    return folder;
}

void RemoveFromFolder(const fs::path& path) {
    ::DeleteFileW(Reach(path).c_str());
}

bool ReadRegularFile(const fs::path& path, std::uintmax_t limit, std::string& bytes) {
    const Handle file = OpenToRead(path);
    const std::optional<std::uintmax_t> size = SizeOf(file);
    if (!size || *size > limit) return false;
    bytes.resize(static_cast<std::size_t>(*size));
    return Fill(file, bytes);
}

bool ReadRegularFilePart(const fs::path& path, std::uintmax_t begin, std::size_t size, std::string& bytes) {
    const Handle file = OpenToRead(path);
    LARGE_INTEGER at{};
    at.QuadPart = static_cast<LONGLONG>(begin);
    if (!SizeOf(file) || ::SetFilePointerEx(file.Get(), at, nullptr, FILE_BEGIN) == 0) return false;
    bytes.resize(size);
    return Fill(file, bytes) && bytes.size() == size;
}

std::error_code ReplaceWholeFile(const fs::path& path, std::string_view bytes) {
    const fs::path target = TargetOf(path);
    if (const std::error_code error = MakeFolders(target.parent_path())) return error;
    if (const std::error_code error = CheckTarget(target)) return error;
    SweepAsides(target.parent_path());
    const fs::path aside = NameAside(target);
    Handle file(aside, GENERIC_WRITE, 0, CREATE_NEW, FILE_ATTRIBUTE_NORMAL);
    if (!file.IsOpen()) return LastError();
    if (Finish(file, bytes) && ::MoveFileExW(Reach(aside).c_str(), Reach(target).c_str(),
                                             MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0)
        return {};
    const std::error_code error = LastError();
    file.Close();
    RemoveFromFolder(aside);
    return error;
}

}  // namespace keelview
