#include "instruments/time_setting.h"

#include <cstdlib>
#include <optional>

#include "base/bilingual.h"
#include "base/dates.h"
#include "session/save_race.h"

namespace keelview {

namespace {

constexpr CivilTime FarthestSeconds = 240 * 3600;  // of a start or finish from the tracks

constexpr Text BadTimes{"Incorrect data format !  Be sure the date format ",
                        "日時のﾃﾞｰﾀが正しくありません。必ず同じスタイルで入力してください。"};
constexpr Text SaveQuestion{"Do you want to save Race Cintrol File？", "管理ファイルを保存しますか？"};
constexpr Text NamePrompt{"Input race control file name\n（ex. JapanCup2004_R2)",
                          "レース管理ファイル名を入力してください\n（ex. JapanCup2004_R2)"};
constexpr Text NameTitle{"File Name", "レース管理ファイル名"};

/// The text is a moment near one of the tracks; near any, where the tracks tell none.
bool IsNear(const std::string& text, const std::optional<CivilTime>& track) {
    const auto time = ParseDateTime(text);
    return time && (!track || std::abs(*time - *track) < FarthestSeconds);
}

}  // namespace

TimeSetting::TimeSetting(AppState& app, Services& services, RaceSession& session)
    : app_(app), form_(session.Display()), services_(services), session_(session) {
    form_.Command4.OnClick = [this] { Command4_Click(); };
}

void TimeSetting::Command4_Click() {
    const bool english = app_.settings.UseEnglish;
    if (!TimesPass()) {
        services_.dialogs.Ok(BadTimes.In(english), app_.settings.AppTitle);
        return;
    }
    const RaceControl before = app_.race;
    TakeTimes();
    const std::string name = AskForName();
    const bool saved = !name.empty() && SaveRaceAs(app_, services_, name);
    // What could not be written stays in memory: a load would lose it.
    if (!saved && (!name.empty() || app_.display.SaveFailureTold)) {
        app_.race = before;
        return;
    }
    session_.ReloadRace();
}

bool TimeSetting::TimesPass() const {
    return IsNear(form_.Text9.Text(), app_.tracks.FirstGpsTime) &&
           IsNear(form_.Text10.Text(), app_.tracks.LastGpsTime);
}

void TimeSetting::TakeTimes() {
    RaceControl& race = app_.race;
    race.StartTimeText = form_.Text9.Text();
    race.FinishTimeText = form_.Text10.Text();
    race.DataFromTime = ParseDateTime(race.StartTimeText);
    race.DataToTime = ParseDateTime(race.FinishTimeText);
}

/// The name under which the person wants the race saved; empty for not at all.
std::string TimeSetting::AskForName() {
    const bool english = app_.settings.UseEnglish;
    if (app_.race.BoatCount < 2 || !app_.settings.EditMode) return {};
    if (!services_.dialogs.YesNo(SaveQuestion.In(english), app_.settings.AppTitle)) return {};
    return services_.dialogs.Input(NamePrompt.In(english), NameTitle.In(english), app_.race.RaceFileName)
        .value_or("");
}

}  // namespace keelview
