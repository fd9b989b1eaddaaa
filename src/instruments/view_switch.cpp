#include "instruments/view_switch.h"

#include "session/replay_clock.h"

namespace keelview {

ViewSwitch::ViewSwitch(AppState& app, RaceDisp& form, Chart& chart, BoatGraphs& graphs, LegTables& tables)
    : app_(app), form_(form), chart_(chart), graphs_(graphs), tables_(tables) {
    form_.Option9.OnClick = [this] { Option9_Click(); };
    form_.Option10.OnClick = [this] { Option10_Click(); };
    form_.Option11.OnClick = [this] { Option11_Click(); };
}

void ViewSwitch::Option9_Click() {
    app_.display.ViewMode = ViewKind::Map;
    form_.Picture1.Show();
    form_.GPIC.Hide();
    form_.PicTime.Hide();
    ResumeFilm(app_, form_);
    form_.Check2.SetEnabled(form_.Option7.Value());
}

void ViewSwitch::Option10_Click() {
    app_.display.ViewMode = ViewKind::Graph;
    graphs_.DrawBoatGraphs();
    form_.GPIC.Show();
    form_.Picture1.Hide();
    form_.PicTime.Hide();
    ResumeFilm(app_, form_);
    EndMeasuring();
}

void ViewSwitch::Option11_Click() {
    form_.Timer1.SetEnabled(false);
    EndMeasuring();
    tables_.ShowLegStatistics();
    form_.Picture1.Hide();
    form_.GPIC.Hide();
}

void ViewSwitch::EndMeasuring() {
    form_.Check2.SetValue(false);
    form_.Check2.SetEnabled(false);
}

void ViewSwitch::RedrawView() {
    switch (app_.display.ViewMode) {
        case ViewKind::Map:
            chart_.DrawAll();
            break;
        case ViewKind::Graph:
            graphs_.DrawBoatGraphs();
            break;
        case ViewKind::Data:
            tables_.ShowLegStatistics();
            break;
    }
}

}  // namespace keelview
