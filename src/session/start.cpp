#include "session/start.h"

#include <optional>
#include <string_view>
#include <vector>

#include "base/bilingual.h"
#include "base/files.h"
#include "base/numbers.h"
#include "base/strings.h"
#include "base/text_encoding.h"

namespace keelview {

namespace {

constexpr std::uintmax_t SettingsFileLimit = 1 << 16;
constexpr double BaseDataSeconds = 60.0;  // how long the unpacking of the base data is waited for

/// The first line of a small text file of the race folder; nothing if there is no line.
std::optional<std::string> FirstLine(const Settings& settings, std::string_view relative) {
    const auto bytes = ReadWholeFile(FindBelow(settings.AppPath, relative), SettingsFileLimit);
    if (!bytes) return {};
    const std::string text = DecodeText(*bytes).Utf8;
    const auto lines = Lines(text);
    if (lines.empty()) return {};
    return std::string(lines.front());
}

void ReadVersionFile(Settings& settings) {
    settings.EditMode = true;
    settings.UseEnglish = false;
    const auto line = FirstLine(settings, "raceadmin/Ver.00");
    if (!line) return;
    std::string_view rest = *line;
    settings.EditMode = LenientNumber(CutHead(rest, ',')) != 1;
    settings.UseEnglish = LenientNumber(rest) > 0;
}

void SettleLook(Settings& settings, Services& services) {
    settings.AppTitle = Text{"Keelview", "キールビュー"}.Str(settings.UseEnglish);
    settings.UiFontName = Text{"MS Sans Serif", "MS P ゴシック"}.Str(settings.UseEnglish);
    const ScreenInfo screen = services.platform.Screen();
    settings.TwipScaleX = screen.TwipsPerPixelX / 15;
    settings.TwipScaleY = screen.TwipsPerPixelY / 15;
    settings.FontScale = settings.TwipScaleX;
}

bool LocaleIsKnown(const Settings& settings, Services& services) {
    const int locale = services.platform.UserLocale();
    if (locale == LocaleJapanese || locale == LocaleEnglish) return true;
    services.dialogs.Ok(
        "This software is written in English (USA)\r\nPlease change your locale set in your PC\r\n\r\n"
        "-----  How to change locale in your PC -----\r\n"
        "Start >> (Settings) >> Control Panel >>Regional Options\r\n"
        "Then change locale to English (United States)\r\n\r\n Then restart the 'Keelview'",
        settings.AppTitle);
    return false;
}

/// True if the person had the program installed from its CD-ROM; the process then ends.
bool InstalledFromDisc(const Settings& settings, Services& services) {
    if (services.platform.DriveType(settings.AppPath) != DriveIsCdRom) return false;
    const auto installer = FindBelow(settings.AppPath, "setup.exe");
    if (!IsFile(installer)) return false;
    const bool english = settings.UseEnglish;
    const Text question{"Do you want to install now ?", "今すぐインストールしますか？"};
    if (!services.dialogs.YesNo(question.In(english), settings.AppTitle)) return false;
    const Text advice{
        "Start up software from Hard Disk after next time because the Software is already installed in HDD "
        "now",
        "ソフトがインストールされますので次回からはHDDから起動してください"};
    services.dialogs.Ok(advice.In(english), settings.AppTitle);
    services.platform.StartProgram(installer);
    return true;
}

void UnpackBaseData(const Settings& settings, Services& services) {
    const auto archive = FindBelow(settings.AppPath, "data.exe");
    std::error_code ignored;
    if (std::filesystem::is_directory(FindBelow(settings.AppPath, "gpsdat"), ignored) || !IsFile(archive))
        return;
    const Text said{"Expand coast line data",
                    "海岸線などの基本データを解凍します\r\n約１分掛かりますがお待ちください。"};
    const Text title{"Expansion", "データの解凍"};
    services.dialogs.Ok(said.In(settings.UseEnglish), title.In(settings.UseEnglish));
    services.platform.StartProgram(archive);
    services.platform.SetBusyPointer(true);
    const double end = services.platform.SteadySeconds() + BaseDataSeconds;
    while (services.platform.SteadySeconds() < end) services.platform.Pause(20);
    services.platform.SetBusyPointer(false);
}

void AskForMode(Settings& settings, Services& services) {
    if (!settings.EditMode) return;
    settings.EditMode = settings.UseEnglish ? services.dialogs.YesNo("Edit Data ?", "Keelview")
                                            : services.dialogs.YesNo("編集しますか?", {});
}

}  // namespace

std::string FirstRace(const Settings& settings) {
    if (const auto line = FirstLine(settings, "raceadmin/racefile.st")) {
        std::string_view rest = *line;
        std::string_view name = Trim(CutHead(rest, ','));
        if (name.size() >= 2 && name.front() == '"' && name.back() == '"')
            name = name.substr(1, name.size() - 2);
        return std::string(name);
    }
    const auto races = ListFiles(FindBelow(settings.AppPath, "raceadmin"), "*.txt");
    return races.empty() ? std::string() : races.front();
}

StartOutcome SettleStart(AppState& app, Services& services) {
    Settings& settings = app.settings;
    settings.AppPath = services.platform.ProgramFolder();
    ReadVersionFile(settings);
    SettleLook(settings, services);
    if (!LocaleIsKnown(settings, services)) return StartOutcome::End;
    if (InstalledFromDisc(settings, services)) return StartOutcome::End;
    UnpackBaseData(settings, services);
    AskForMode(settings, services);
    if (settings.EditMode) return StartOutcome::ShowMenu;
    app.race.RaceFileName = FirstRace(settings);
    return StartOutcome::ShowRace;
}

}  // namespace keelview
