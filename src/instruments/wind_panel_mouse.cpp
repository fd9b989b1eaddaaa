#include "instruments/wind_panel_mouse.h"

#include "base/bilingual.h"
#include "display/hint_box.h"

namespace keelview {

namespace {

constexpr Text GraphHint{"Indicate wind direction graph or not", "ｸﾘｯｸで風向ｸﾞﾗﾌをOn-Off"};

}  // namespace

WindPanelMouse::WindPanelMouse(AppState& app, RaceDisp& form, WindPanel& windPanel)
    : app_(app), form_(form), windPanel_(windPanel) {
    form_.Picture2.OnMouseDown = [this](const MouseEvent&) { Picture2_MouseDown(); };
    form_.sWind.OnClick = [this] { sWind_Click(); };
    for (Surface* panel : {&form_.Picture2, &form_.sWind})
        panel->OnMouseMove = [this, panel](const MouseEvent& event) { ShowGraphHint(*panel, event); };
}

void WindPanelMouse::Picture2_MouseDown() {
    windPanel_.ToggleWindGraph();
    windPanel_.PlaceWindGraph();
}

void WindPanelMouse::sWind_Click() {
    windPanel_.ToggleWindGraph();
}

void WindPanelMouse::ShowGraphHint(const Surface& panel, const MouseEvent& event) {
    if (!app_.display.HintsOn || !windPanel_.HasWindFile()) {
        form_.Text7.Hide();
        return;
    }
    ShowHint(form_.Text7, GraphHint.In(app_.settings.UseEnglish),
             {form_.sWind.Left() + form_.sWind.Width() + 10, panel.Top() + event.Y, 170, 17});
}

}  // namespace keelview
