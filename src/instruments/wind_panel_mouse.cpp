#include "instruments/wind_panel_mouse.h"

#include "display/hint_box.h"

namespace keelview {

namespace {

constexpr Text GraphHint{"Indicate wind direction graph or not", "ｸﾘｯｸで風向ｸﾞﾗﾌをOn-Off"};

}  // namespace

WindPanelMouse::WindPanelMouse(const RaceControl& race, RaceDisp& form, const Voice& voice,
                               WindPanel& windPanel)
    : race_(race), form_(form), voice_(voice), windPanel_(windPanel) {
    form_.Picture2.OnMouseDown = [this](const MouseEvent&) { windPanel_.ToggleWindGraph(); };
    form_.sWind.OnClick = [this] { windPanel_.ToggleWindGraph(); };
    for (Surface* panel : {&form_.Picture2, &form_.sWind})
        panel->OnMouseMove = [this, panel](const MouseEvent& event) { ShowGraphHint(*panel, event); };
}

void WindPanelMouse::ShowGraphHint(const Surface& panel, const MouseEvent& event) {
    if (!form_.Check3.Value() || !HasWindFile(race_)) {
        form_.Text7.Hide();
        return;
    }
    ShowHint(form_.Text7, voice_.In(GraphHint),
             {form_.sWind.Left() + form_.sWind.Width() + 10, panel.Top() + event.Y, 170, 17});
}

}  // namespace keelview
