#include "shell/reference_viewer.h"

#include <chrono>
#include <string>
#include <thread>

#include "base/bilingual.h"
#include "base/files.h"
#include "base/strings.h"
#include "session/save_race.h"

namespace keelview {

namespace {

/// Seconds that the display stays blocked while the viewer of a document comes up.
constexpr double ViewerSeconds = 5.0;

}  // namespace

RefFm::RefFm(const AppState& app, Services& services)
    : Form("RefFm", Kind::Fixed, 273, 155),
      List1(*this, "List1"),
      Command1(*this, "Command1", "CANCEL"),
      app_(app),
      services_(services) {
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
    services_.platform.DeliverEvents();  // so that the form is off the screen before the wait
    const double openedAt = services_.platform.SteadySeconds();
    OpenDocument(app_, services_, path.string());
    WaitForViewer(openedAt);
    // Visible again, the form takes away what was clicked on the display meanwhile.
    Show();
    services_.platform.DeliverEvents();
    Close();
}

void RefFm::WaitForViewer(double openedAt) {
    // No event is handled meanwhile, so that nothing can be done to the display behind this form.
    using namespace std::chrono_literals;
    while (services_.platform.SteadySeconds() - openedAt < ViewerSeconds) std::this_thread::sleep_for(20ms);
}

}  // namespace keelview
