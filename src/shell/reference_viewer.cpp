#include "shell/reference_viewer.h"

#include <cmath>
#include <string>

#include "base/bilingual.h"
#include "base/files.h"
#include "base/strings.h"
#include "session/save_race.h"

namespace keelview {

RefFm::RefFm(const AppState& app, Services& services, double viewerSeconds)
    : Form("RefFm", Kind::Fixed, 273, 155),
      List1(*this, "List1"),
      Command1(*this, "Command1", "CANCEL"),
      app_(app),
      services_(services),
      viewerSeconds_(viewerSeconds) {
    SetFont(app.settings.UiFontName, 9 * app.settings.FontScale);
    SetCaption(Text{"Refference Files", "データ参照"}.In(app.settings.UseEnglish));
    List1.Move(8, 8, 257, 100);
    Command1.Move(65, 124, 121, 17);
    for (int file = 1; file <= app.race.AttachCount; ++file)
        List1.AddItem(Trim(app.race.AttachFile.at(static_cast<std::size_t>(file))));
    List1.OnClick = [this] { List1_Click(); };
    Command1.OnClick = [this] { Close(); };
}

void RefFm::List1_Click() {
    const int row = List1.ListIndex();
    if (row < 0 || row >= app_.race.AttachCount) return;
    const std::string& name = app_.race.AttachFile.at(static_cast<std::size_t>(row) + 1);
    const auto path = FindBelow(FindBelow(app_.settings.AppPath, "attachment"), Trim(name));
    if (!IsFile(path)) return services_.dialogs.Ok("File Not Found", app_.settings.AppTitle);

    Hide();
    OpenDocument(app_, services_, path.string());
    WaitForViewer();
    Close();
}

void RefFm::WaitForViewer() const {
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
