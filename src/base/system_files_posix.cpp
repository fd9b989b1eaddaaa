#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <optional>
#include <string>
#include <utility>

#include "base/system_files.h"
#include "base/system_replace.h"

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

/// The size of an open file; nothing if it is not open, or no regular file.
std::optional<std::uintmax_t> SizeOfRegular(const Descriptor& file) {
    struct stat status {};
    if (!file.IsOpen() || ::fstat(file.Number(), &status) != 0 || !S_ISREG(status.st_mode)) return {};
    return static_cast<std::uintmax_t>(status.st_size);
}

/// Reads so many bytes, or up to the end where the file was cut short by someone else meanwhile.
bool ReadFrom(const Descriptor& file, std::uintmax_t begin, std::size_t size, std::string& bytes) {
    bytes.resize(size);
    std::size_t filled = 0;
    while (filled < size) {
        const ssize_t count = ::pread(file.Number(), bytes.data() + filled, size - filled,
                                      static_cast<off_t>(begin + filled));
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return false;
        if (count == 0) break;
        filled += static_cast<std::size_t>(count);
    }
    bytes.resize(filled);
    return true;
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
    const fs::path folder = target.parent_path();
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

/// Writes the file aside and brings it to the disc.
std::error_code WriteAside(Descriptor& file, std::string_view bytes, mode_t mode) {
    if (!WriteAll(file.Number(), bytes)) return LastError();
    if (::fchmod(file.Number(), mode) != 0 || ::fsync(file.Number()) != 0) return LastError();
    if (!file.Close()) return LastError();
    return {};
}

}  // namespace

bool ReadRegularFile(const fs::path& path, std::uintmax_t limit, std::string& bytes) {
    const Descriptor file = OpenToRead(path);
    const std::optional<std::uintmax_t> size = SizeOfRegular(file);
    if (!size || *size > limit) return false;
    return ReadFrom(file, 0, static_cast<std::size_t>(*size), bytes);
}

bool ReadRegularFilePart(const fs::path& path, std::uintmax_t begin, std::size_t size, std::string& bytes) {
    const Descriptor file = OpenToRead(path);
    return SizeOfRegular(file) && ReadFrom(file, begin, size, bytes) && bytes.size() == size;
}

std::error_code ReplaceTarget(const fs::path& target, std::string_view bytes) {
    mode_t mode = 0;
    std::error_code error = CheckTarget(target, mode);
    if (error) return error;
    std::string aside = (target.parent_path() / (std::string(AsidePrefix) + "XXXXXX")).string();
    Descriptor file(::mkostemp(aside.data(), O_CLOEXEC));
    if (!file.IsOpen()) return LastError();
    error = WriteAside(file, bytes, mode);
    if (!error && ::rename(aside.c_str(), target.c_str()) != 0) error = LastError();
    if (error) {
        ::unlink(aside.c_str());
        return error;
    }
    // The name too must reach the disc; where the file system cannot do that, the file stands all the same.
    const Descriptor names = OpenToRead(target.parent_path());
    if (names.IsOpen()) ::fsync(names.Number());
    return {};
}

}  // namespace keelview
