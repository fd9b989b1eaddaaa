#include "display/platform.h"

#include <charconv>

#include "base/strings.h"

namespace keelview {

namespace {

constexpr double SecondsPerDay = 86400.0;

// 1970/01/01 counted in days from 1899/12/30.
constexpr double DaysBeforeUnix = 25569.0;

constexpr int DriveIsFixed = 3;

CivilTime HourOf(CivilTime seconds) {
    const CivilTime hour = seconds / 3600;
    return seconds % 3600 < 0 ? hour - 1 : hour;
}

/// A name of the mount table, where blanks and the like stand as a backslash and three octal figures.
std::string MountName(std::string_view written) {
    std::string name;
    for (std::size_t i = 0; i < written.size(); ++i) {
        unsigned code = 0;
        if (written[i] == '\\' && i + 3 < written.size() &&
            std::from_chars(&written[i + 1], &written[i + 1] + 3, code, 8).ptr == &written[i + 1] + 3) {
            name += static_cast<char>(code);
            i += 3;
        } else {
            name += written[i];
        }
    }
    return name;
}

/// True if the path is the folder or lies below it.
bool LiesBelow(std::string_view path, std::string_view folder) {
    if (folder == "/") return path.starts_with('/');
    return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

}  // namespace

double DateValue(const ClockReading& reading) {
    return DaysBeforeUnix + static_cast<double>(reading.Seconds) / SecondsPerDay +
           reading.Milliseconds / (SecondsPerDay * 1000.0);
}

int LocalUtcOffsetHours(Platform& platform) {
    const ClockReading utc = platform.UtcNow();
    const ClockReading local = platform.LocalNow();
    return static_cast<int>(HourOf(local.Seconds) - HourOf(utc.Seconds));
}

int LocaleCode(std::string_view name) {
    const std::string_view language = name.substr(0, name.find_first_of(".@"));
    if (language == "ja_JP" || language == "ja") return LocaleJapanese;
    if (language.empty() || language == "en_US" || language == "C" || language == "POSIX")
        return LocaleEnglish;
    return 0;
}

int DriveTypeIn(std::string_view mounts, const std::filesystem::path& folder) {
    const std::string path = folder.string();
    std::size_t longest = 0;
    std::string_view kind;
    for (const std::string_view line : Lines(mounts)) {
        const std::vector<std::string_view> fields = Split(line, ' ');
        if (fields.size() < 3) continue;
        const std::string mount = MountName(fields[1]);
        if (mount.size() < longest || !LiesBelow(path, mount)) continue;
        longest = mount.size();
        kind = fields[2];
    }
    return kind == "iso9660" || kind == "udf" ? DriveIsCdRom : DriveIsFixed;
}

}  // namespace keelview
