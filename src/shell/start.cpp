#include "shell/start.h"

#include <utility>

#include "base/bilingual.h"
#include "base/files.h"
#include "racedata/start_files.h"

namespace keelview {

namespace {

constexpr double BaseDataSeconds = 60.0;  // how long the unpacking of the base data is waited for

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
    if (auto named = ReadStartRace(settings.AppPath)) return *std::move(named);
    const auto races = ListFiles(FindBelow(settings.AppPath, "raceadmin"), "*.txt");
    return races.empty() ? std::string() : races.front();
}

StartOutcome SettleStart(AppState& app, Services& services) {
    Settings& settings = app.settings;
    settings.AppPath = services.platform.ProgramFolder();
    const StartSettings chosen = ReadStartSettings(settings.AppPath);
    settings.EditMode = chosen.EditMode;
    settings.UseEnglish = chosen.UseEnglish;
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
