#include "shell/reference_viewer.h"

#include <cmath>
#include <string>

#include "base/files.h"
#include "base/strings.h"
#include "display/form_table.h"
#include "session/documents.h"
#include "session/voice.h"

namespace keelview {

ReferenceViewer::ReferenceViewer(const Settings& settings, const RaceControl& race, Services& services,
                                 double viewerSeconds)
    : Form("RefFm", Kind::Fixed, 273, 155),
      settings_(settings),
      race_(race),
      services_(services),
      viewerSeconds_(viewerSeconds) {
    SetFont(settings.UiFontName, 9 * settings.FontScale);
    SetCaption(Text{"Reference Files", "データ参照"}.In(settings.UseEnglish));
    ApplyTable({{List1, {8, 8, 257, 100}}, {Command1, {65, 124, 121, 17}, {"CANCEL", "キャンセル"}}},
               settings.UseEnglish);
    for (const std::string& file : race.AttachFile) List1.AddItem(Trim(file));
    List1.OnClick = [this] { List1_Click(); };
    Command1.OnClick = [this] { Close(); };
}

void ReferenceViewer::List1_Click() {
    const int file = List1.ListIndex() + 1;
    if (!race_.AttachFile.Holds(file)) return;
    const auto folder = FindBelow(settings_.AppPath, "attachment");
    const auto path = FindBelow(folder, Trim(race_.AttachFile[file]));
    if (!IsFile(path))
        return Voice(settings_, services_.dialogs).Say({"File Not Found", "ファイルがありません"});

    Hide();
    OpenDocument(settings_, services_, path.string());
    WaitForViewer();
    Close();
}

void ReferenceViewer::WaitForViewer() const {
    // A form that nobody can see holds the display blocked, as this one does while it is visible; the
    // display goes on painting itself under the viewer's window.
    Form blocker("RefFmWait", Kind::Splash, 1, 1);
    Timer over;
    over.OnTimer = [&blocker] { blocker.Close(); };
    over.SetInterval(static_cast<int>(std::lround(viewerSeconds_ * 1000)));
    over.SetEnabled(true);
    blocker.ShowModal();
}

}  // namespace keelview
