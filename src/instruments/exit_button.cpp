#include "instruments/exit_button.h"

#include <string>

#include "base/strings.h"

namespace keelview {

namespace {

constexpr Text SaveQuestion{"Save Race Control File ?", "管理ファイルを保存しますか？"};
constexpr Text NamePrompt{"Input race control file name\r\n(ex. JapanCup2004_R2)",
                          "レース管理ファイル名を入力してください\r\n（ex. JapanCup2004_R2)"};
constexpr Text NameTitle{"Race Control File Name", "レース管理ファイル名"};

}  // namespace

ExitButton::ExitButton(RaceSession& session) : session_(session) {
    session_.Display().Command1.OnClick = [this] { Command1_Click(); };
}

void ExitButton::Command1_Click() {
    if (OfferToSave()) session_.Display().Close();
}

/// False if the race was not saved under the name that the person gave.
bool ExitButton::OfferToSave() {
    const AppState& app = session_.App();
    const Voice& voice = session_.TheVoice();
    if (!app.settings.EditMode || app.race.RaceFileName.empty() || !voice.Ask(SaveQuestion)) return true;
    const auto name = voice.AskLine(NamePrompt, NameTitle, app.race.RaceFileName);
    const std::string given(Trim(name.value_or("")));
    return given.empty() || session_.Saver().SaveAs(given);
}

}  // namespace keelview
