#include "base/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <string>
#include <utility>

#include "base/strings.h"

namespace keelview {
namespace {

namespace fs = std::filesystem;

std::error_code LastError() {
    return {errno, std::generic_category()};
}

/// An open file of the platform, closed when it goes.
class Descriptor {
  public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() {
        if (number_ >= 0) ::close(number_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    Descriptor(Descriptor&&) = delete;
    Descriptor& operator=(Descriptor&&) = delete;

    bool IsOpen() const { return number_ >= 0; }
    int Number() const { return number_; }

    /// Closes now, so that an error on the way to the disc is seen.
    bool Close() { return ::close(std::exchange(number_, -1)) == 0; }

  private:
    int number_;
};

Descriptor OpenToRead(const fs::path& path) {
    // Without O_NONBLOCK a named pipe would hold the program until someone writes into it.
    return Descriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
}

bool WriteAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(file, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

/// The rights of a new file: those that the process gives to all its files.
mode_t NewFileMode() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666U & ~mask;
}

/// True if the path may be written, by its own marks too: those stop even a user who may do anything.
bool MayWrite(const fs::path& path, const struct stat& status) {
    return (status.st_mode & 0222U) != 0 && ::access(path.c_str(), W_OK) == 0;
}

/// What the target of a replacement is like, or why it cannot be replaced.
std::error_code CheckTarget(const fs::path& target, mode_t& mode) {
    struct stat status {};
    const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
    if (::stat(folder.c_str(), &status) != 0) return LastError();
    if (!MayWrite(folder, status)) return std::make_error_code(std::errc::permission_denied);
    if (::stat(target.c_str(), &status) != 0) {
        mode = NewFileMode();
        return errno == ENOENT ? std::error_code{} : LastError();
    }
    if (!S_ISREG(status.st_mode)) return std::make_error_code(std::errc::is_a_directory);
    if (!MayWrite(target, status)) return std::make_error_code(std::errc::permission_denied);
    mode = status.st_mode & 07777U;
    return {};
}

constexpr std::string_view AsidePrefix = ".write-";

/// Removes what writers that were killed have left in a folder: files aside that nobody has touched for
/// hours.
void SweepAsides(const fs::path& folder) {
    const auto old = fs::file_time_type::clock::now() - std::chrono::hours(3);
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        if (!entry->path().filename().string().starts_with(AsidePrefix)) continue;
        std::error_code unseen;
        if (entry->last_write_time(unseen) < old && !unseen) fs::remove(entry->path(), unseen);
    }
}

/// Writes the file aside and brings it to the disc.
std::error_code WriteAside(Descriptor& file, std::string_view bytes, mode_t mode) {
    if (!WriteAll(file.Number(), bytes)) return LastError();
    if (::fchmod(file.Number(), mode) != 0 || ::fsync(file.Number()) != 0) return LastError();
    if (!file.Close()) return LastError();
    return {};
}

/// A name that leads nowhere else: ".." and names cut short by a zero byte are set in brackets.
std::string HarmlessName(std::string_view name) {
    if (name != ".." && name.find('\0') == std::string_view::npos) return std::string(name);
    std::string harmless = "(" + std::string(name) + ")";
    std::replace(harmless.begin(), harmless.end(), '\0', '?');
    return harmless;
}

/// The name of an entry of a folder that equals `name` but for case; the first by bytes of several.
std::string NameIn(const fs::path& folder, const std::string& name) {
    std::error_code error;
    if (fs::exists(folder / name, error)) return name;
    std::string found;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        const std::string here = entry->path().filename().string();
        if (EqualNoCase(here, name) && (found.empty() || here < found)) found = here;
    }
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
    const Descriptor file = OpenToRead(path);
    struct stat status {};
    if (!file.IsOpen() || ::fstat(file.Number(), &status) != 0 || !S_ISREG(status.st_mode)) return false;
    const auto expected = static_cast<std::uintmax_t>(status.st_size);
    if (expected > limit) return false;
    bytes.resize(static_cast<std::size_t>(expected));
    std::size_t filled = 0;
    while (filled < bytes.size()) {
        const ssize_t count = ::read(file.Number(), bytes.data() + filled, bytes.size() - filled);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return false;
        if (count == 0) break;  // cut short by someone else meanwhile
        filled += static_cast<std::size_t>(count);
    }
    bytes.resize(filled);
    return true;
}

std::error_code WriteFileAtomically(const fs::path& path, std::string_view bytes) {
    std::error_code error;
    // The target of a link is replaced, not the link.
    const fs::path target = fs::is_symlink(path, error) ? fs::weakly_canonical(path, error) : path;
    if (error && error != std::errc::no_such_file_or_directory) return error;
    error.clear();
    if (target.has_parent_path()) fs::create_directories(target.parent_path(), error);
    if (error) return error;
    mode_t mode = 0;
    error = CheckTarget(target, mode);
    if (error) return error;

    const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
    SweepAsides(folder);
    std::string aside = (folder / (std::string(AsidePrefix) + "XXXXXX")).string();
    Descriptor file(::mkostemp(aside.data(), O_CLOEXEC));
    if (!file.IsOpen()) return LastError();
    error = WriteAside(file, bytes, mode);
    if (!error && ::rename(aside.c_str(), target.c_str()) != 0) error = LastError();
    if (error) {
        ::unlink(aside.c_str());
        return error;
    }
    // The name too must reach the disc; where the file system cannot do that, the file stands all the same.
    const Descriptor names = OpenToRead(folder);
    if (names.IsOpen()) ::fsync(names.Number());
    return {};
}

fs::path FindBelow(const fs::path& base, std::string_view relative) {
    std::string parts(relative);
    std::replace(parts.begin(), parts.end(), '\\', '/');
    fs::path path = base;
    for (const std::string_view part : Split(parts, '/')) {
        if (part.empty() || part == ".") continue;
        path /= NameIn(path, HarmlessName(part));
    }
    return path;
}

bool IsFile(const fs::path& path) {
    std::error_code error;
    return fs::is_regular_file(path, error);
}

std::optional<std::uintmax_t> FileSize(const fs::path& path) {
    if (!IsFile(path)) return std::nullopt;
    std::error_code error;
    const std::uintmax_t size = fs::file_size(path, error);
    if (error) return std::nullopt;
    return size;
}

std::vector<std::string> ListFiles(const fs::path& folder, std::string_view pattern) {
    const std::string upperPattern = pattern == "*.*" ? "*" : UpperAscii(pattern);
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        std::error_code unseen;
        if (!entry->is_regular_file(unseen)) continue;
        std::string name = entry->path().filename().string();
        if (Matches(UpperAscii(name), upperPattern)) names.push_back(std::move(name));
    }
    std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
        const std::string upperA = UpperAscii(a);
        const std::string upperB = UpperAscii(b);
        return upperA != upperB ? upperA < upperB : a < b;
    });
    return names;
}

}  // namespace keelview
