#include "racedata/start_files.h"

#include <cstdint>
#include <string_view>

#include "base/files.h"
#include "base/numbers.h"
#include "base/strings.h"
#include "base/text_encoding.h"

namespace keelview {

namespace {

constexpr std::uintmax_t FileLimit = 1 << 16;

/// The first line of a small text file of the race folder; nothing if there is no line.
std::optional<std::string> FirstLine(const std::filesystem::path& appPath, std::string_view relative) {
    const auto bytes = ReadWholeFile(FindBelow(appPath, relative), FileLimit);
    if (!bytes) return {};
    const std::string text = DecodeText(*bytes).Utf8;
    if (text.empty()) return {};
    std::string_view rest = text;
    return std::string(CutLine(rest));
}

}  // namespace

StartSettings ReadStartSettings(const std::filesystem::path& appPath) {
    StartSettings settings;
    const auto line = FirstLine(appPath, "raceadmin/Ver.00");
    if (!line) return settings;
    std::string_view rest = *line;
    settings.EditMode = LenientNumber(CutHead(rest, ',')) != 1;
    if (!Trim(rest).empty()) settings.UseEnglish = LenientNumber(rest) > 0;
    return settings;
}

std::optional<std::string> ReadStartRace(const std::filesystem::path& appPath) {
    const auto line = FirstLine(appPath, "raceadmin/racefile.st");
    if (!line) return {};
    std::string_view rest = *line;
    std::string_view name = Trim(CutHead(rest, ','));
    if (name.size() >= 2 && name.front() == '"' && name.back() == '"')
        name = name.substr(1, name.size() - 2);
    return std::string(name);
}

}  // namespace keelview
