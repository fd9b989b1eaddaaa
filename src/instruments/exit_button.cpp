#include "instruments/exit_button.h"

#include <string>

#include "base/bilingual.h"
#include "base/strings.h"
#include "session/save_race.h"

namespace keelview {

namespace {

constexpr Text SaveQuestion{"Save Race Control File？", "管理ファイルを保存しますか？"};
constexpr Text NamePrompt{"Input Race Control File Name\r\n（ex. JapanCup2005_R2)",
                          "レース管理ファイル名を入力してください\r\n（ex. JapanCup2004_R2)"};
constexpr Text NameTitle{"Race Control File name", "レース管理ファイル名"};

}  // namespace

ExitButton::ExitButton(AppState& app, RaceDisp& form, Services& services)
    : app_(app), form_(form), services_(services) {
    form_.Command1.OnClick = [this] { Command1_Click(); };
}

void ExitButton::Command1_Click() {
    if (OfferToSave()) form_.Close();
}

/// False if the race could not be saved under the name that the person gave.
bool ExitButton::OfferToSave() {
    const bool english = app_.settings.UseEnglish;
    if (!app_.settings.EditMode || app_.race.RaceFileName.empty()) return true;
    if (!services_.dialogs.YesNo(SaveQuestion.In(english), app_.settings.AppTitle)) return true;
    const auto name =
        services_.dialogs.Input(NamePrompt.In(english), NameTitle.In(english), app_.race.RaceFileName);
    const std::string given(Trim(name.value_or("")));
    return given.empty() || SaveRaceAs(app_, services_, given);
}

}  // namespace keelview
