#include "instruments/wind_field.h"

#include "base/numbers.h"
#include "session/save_race.h"

namespace keelview {

WindField::WindField(AppState& app, RaceDisp& form, Services& services, Chart& chart,
                     Instruments& instruments, BoatGraphs& graphs)
    : app_(app),
      form_(form),
      services_(services),
      chart_(chart),
      instruments_(instruments),
      graphs_(graphs) {
    form_.Text3.OnMouseDown = [this](const MouseEvent&) { Text3_MouseDown(); };
    form_.Text3.OnChange = [this] { Text3_Change(); };
}

void WindField::Text3_MouseDown() {
    app_.display.WindTextArmed = true;
}

void WindField::Text3_Change() {
    if (!app_.display.WindTextArmed) return;
    double wind = LenientNumber(form_.Text3.Text());
    if (!(wind >= 0 && wind <= 360)) wind = 0;
    app_.race.WindDirection = wind;
    app_.windNow.WindNow = wind;
    app_.view.ZoomFactor = app_.view.ManualZoom;
    // The save turns the map too; it is drawn as it will stand then.
    app_.view.ScreenUpDirection = app_.race.NorthUp ? 0 : wind;
    RedrawAll();
    SaveRace(app_, services_);
}

void WindField::RedrawAll() {
    chart_.DrawBaseChart();
    instruments_.overview.DrawOverviewMap();
    chart_.DrawTimePoints();
    chart_.DrawCourse();
    graphs_.DrawBoatGraphs();
    instruments_.timeBar.DrawTimeBar();
    instruments_.windPanel.UpdateWindPanel();
}

}  // namespace keelview
