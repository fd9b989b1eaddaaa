#include "session/save_race.h"

#include <array>
#include <string_view>
#include <system_error>
#include <utility>

#include "base/bilingual.h"
#include "base/files.h"
#include "racedata/race_file.h"

namespace keelview {

bool SaveRace(AppState& app, Services& services) {
    app.view.ScreenUpDirection = app.race.NorthUp ? 0.0 : app.race.WindDirection;
    if (app.race.RaceFileName.empty()) return true;
    const std::error_code error = SaveRaceFile(app.settings.AppPath, app.race);
    if (!error) {
        app.display.SaveFailureTold = false;
        return true;
    }
    if (!std::exchange(app.display.SaveFailureTold, true)) {
        const Text said{"The race control file could not be written: ",
                        "レース管理ファイルを書き込めませんでした: "};
        services.dialogs.Ok(
            said.Str(app.settings.UseEnglish) + app.race.RaceFileName + "\r\n(" + error.message() + ")",
            app.settings.AppTitle);
    }
    return false;
}

bool SaveRaceAs(AppState& app, Services& services, const std::string& name) {
    const bool hasExtension =
        name.find(".txt") != std::string::npos || name.find(".TXT") != std::string::npos;
    const std::string nameBefore =
        std::exchange(app.race.RaceFileName, hasExtension ? name : name + ".txt");
    const bool toldBefore = std::exchange(app.display.SaveFailureTold, false);
    if (SaveRace(app, services)) return true;
    app.race.RaceFileName = nameBefore;
    app.display.SaveFailureTold = toldBefore;
    return false;
}

void PlayGun(const AppState& app, Services& services) {
    const auto gun = FindBelow(app.settings.AppPath, "gun.wav");
    if (IsFile(gun)) services.platform.PlaySound(gun);
}

bool OpenDocument(const AppState& app, Services& services, const std::string& target) {
    const int result = services.platform.OpenDocument(target, app.settings.AppPath);
    if (result > 32) return true;
    // These messages exist in Japanese only.
    static constexpr std::array<std::pair<int, std::string_view>, 7> Messages{{
        {0, "メモリまたはリソースが足りません。"},
        {2, "ファイルが見つかりません。"},
        {3, "パスが見つかりません。"},
        {5, "アクセスは拒否されました。"},
        {11, "不正な形式の実行ファイルです。"},
        {27, "関連付けが不完全です。"},
        {31, "関連付けが指定されていません。"},
    }};
    std::string_view message = "ファイルを開けません。";
    for (const auto& [code, text] : Messages)
        if (code == result) message = text;
    services.dialogs.Ok(message, {});
    return false;
}

}  // namespace keelview
