#include "shell/start.h"

#include <utility>

#include "base/bilingual.h"
#include "base/files.h"
#include "racedata/start_files.h"
#include "session/voice.h"

namespace keelview {

namespace {

constexpr double BaseDataSeconds = 60.0;  // how long the unpacking of the base data is waited for

void SettleLook(Settings& settings, const ScreenInfo& screen) {
    settings.AppTitle = Text{"Keelview", "キールビュー"}.Str(settings.UseEnglish);
    settings.UiFontName = Text{"MS Sans Serif", "MS P ゴシック"}.Str(settings.UseEnglish);
    settings.TwipScaleX = screen.TwipsPerPixelX / 15;
    settings.TwipScaleY = screen.TwipsPerPixelY / 15;
    settings.FontScale = settings.TwipScaleX;
}

/// True if the person had the program installed from its CD-ROM; the process then ends.
bool InstalledFromDisc(const Settings& settings, Platform& platform, const Voice& voice) {
    if (platform.DriveType(settings.AppPath) != DriveIsCdRom) return false;
    const auto installer = FindBelow(settings.AppPath, "setup.exe");
    if (!IsFile(installer)) return false;
    if (!voice.Ask({"Do you want to install now ?", "今すぐインストールしますか？"})) return false;
    constexpr Text Advice{
        "The software will be installed on the hard disk now. Start it from there from the next time on.",
        "ソフトがインストールされますので次回からはHDDから起動してください"};
    voice.Say(Advice);
    platform.StartProgram(installer);
    return true;
}

void UnpackBaseData(const Settings& settings, Platform& platform, const Voice& voice) {
    const auto archive = FindBelow(settings.AppPath, "data.exe");
    std::error_code ignored;
    if (std::filesystem::is_directory(FindBelow(settings.AppPath, "gpsdat"), ignored) || !IsFile(archive))
        return;
    const Text said{"Expand the coastline data",
                    "海岸線などの基本データを解凍します\r\n約１分掛かりますがお待ちください。"};
    const Text title{"Expansion", "データの解凍"};
    voice.SayUnder(voice.In(title), voice.In(said));
    platform.StartProgram(archive);
    platform.SetBusyPointer(true);
    const double end = platform.SteadySeconds() + BaseDataSeconds;
    while (platform.SteadySeconds() < end) platform.Pause(20);
    platform.SetBusyPointer(false);
}

}  // namespace

std::string FirstRace(const Settings& settings) {
    if (auto named = ReadStartRace(settings.AppPath)) return *std::move(named);
    const auto races = ListFiles(FindBelow(settings.AppPath, "raceadmin"), "*.txt");
    return races.empty() ? std::string() : races.front();
}

StartOutcome SettleStart(AppState& app, Services& services, bool filesHanded) {
    Settings& settings = app.settings;
    settings.AppPath = services.platform.ProgramFolder();
    const StartSettings chosen = ReadStartSettings(settings.AppPath);
    settings.EditMode = chosen.EditMode;
    settings.UseEnglish = chosen.UseEnglish.value_or(!services.platform.UserIsJapanese());
    services.platform.SetLanguage(settings.UseEnglish);
    SettleLook(settings, services.platform.Screen());
    const Voice voice(settings, services.dialogs);
    if (InstalledFromDisc(settings, services.platform, voice)) return StartOutcome::End;
    UnpackBaseData(settings, services.platform, voice);
    if (settings.EditMode && !filesHanded)
        settings.EditMode = voice.Ask({"Edit Data ?", "編集しますか?"}, {"Keelview", {}});
    if (settings.EditMode) return StartOutcome::ShowMenu;
    app.race.RaceFileName = FirstRace(settings);
    return StartOutcome::ShowRace;
}

}  // namespace keelview
