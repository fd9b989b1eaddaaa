#include "instruments/time_setting.h"

#include <cstdlib>
#include <optional>

#include "base/dates.h"
#include "session/settle_date.h"

namespace keelview {

namespace {

constexpr CivilTime FarthestSeconds = 240 * 3600;  // of a start or finish from the tracks

constexpr Text BadTimes{"Incorrect date or time !  Type it in the form that stands there.",
                        "日時のﾃﾞｰﾀが正しくありません。必ず同じスタイルで入力してください。"};
constexpr Text SaveQuestion{"Do you want to save the race control file ?", "管理ファイルを保存しますか？"};
constexpr Text NamePrompt{"Input race control file name\n(ex. JapanCup2004_R2)",
                          "レース管理ファイル名を入力してください\n（ex. JapanCup2004_R2)"};
constexpr Text NameTitle{"File Name", "レース管理ファイル名"};

/// The text is a moment near one of the tracks; near any, where the tracks tell none.
bool IsNear(const std::string& text, const std::optional<CivilTime>& track) {
    const auto time = ParseDateTime(text);
    return time && (!track || std::abs(*time - *track) < FarthestSeconds);
}

}  // namespace

TimeSetting::TimeSetting(RaceSession& session)
    : session_(session), app_(session.App()), form_(session.Display()), voice_(session.TheVoice()) {
    form_.Command4.OnClick = [this] { Command4_Click(); };
}

void TimeSetting::Command4_Click() {
    for (TextBox* field : {&form_.Text9, &form_.Text10}) {
        const auto settled = SettleDate(voice_, field->Text());
        if (!settled) return;
        field->SetText(*settled);
    }
    if (!TimesPass()) {
        voice_.Say(BadTimes);
        return;
    }
    const std::string start = form_.Text9.Text();
    const std::string finish = form_.Text10.Text();
    session_.TakeTimes(start, finish, AskForName());
    // Times that were not saved stand in their fields still, however the race was loaded.
    form_.Text9.SetText(start);
    form_.Text10.SetText(finish);
}

bool TimeSetting::TimesPass() const {
    return IsNear(form_.Text9.Text(), app_.tracks.FirstGpsTime) &&
           IsNear(form_.Text10.Text(), app_.tracks.LastGpsTime);
}

/// The name under which the person wants the race saved; empty for not at all.
std::string TimeSetting::AskForName() const {
    if (app_.race.Boats.Count() < 2 || !app_.settings.EditMode || !voice_.Ask(SaveQuestion)) return {};
    return voice_.AskLine(NamePrompt, NameTitle, app_.race.RaceFileName).value_or("");
}

}  // namespace keelview
