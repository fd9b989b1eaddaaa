#include "shell/control_panel.h"

#include <string>

#include "base/bilingual.h"
#include "base/files.h"
#include "map/sea_colours.h"
#include "session/save_race.h"

namespace keelview {

ControlPanel::ControlPanel(AppState& app, Services& services, RaceSession& session)
    : app_(app),
      form_(session.Display()),
      services_(services),
      session_(session),
      chart_(session.TheChart()) {
    form_.Command9.OnClick = [this] { Command9_Click(); };
    form_.Check1.OnClick = [this] { Check1_Click(); };
    form_.Check3.OnClick = [this] { app_.display.HintsOn = form_.Check3.Value(); };
    form_.Check5.OnClick = [this] { Check5_Click(); };
    form_.Check6.OnClick = [this] { Check6_Click(); };
    form_.Check7.OnClick = [this] { RedrawMap(); };
    form_.Check8.OnClick = [this] { Check8_Click(); };
    form_.HScroll2.OnChange = [this] { HScroll2_Change(); };
    form_.Option2.OnMouseUp = [this](const MouseEvent&) { Option2_MouseUp(); };
    form_.Option3.OnMouseUp = [this](const MouseEvent&) { Option3_MouseUp(); };
    // By the keyboard too; when a race is loaded the options only say what holds.
    form_.Option2.OnClick = [this] {
        if (!app_.race.NorthUp) TurnMap(true);
    };
    form_.Option3.OnClick = [this] {
        if (app_.race.NorthUp) TurnMap(false);
    };
    form_.btnHATENA.OnClick = [this] { btnHATENA_Click(); };
    form_.Label1.OnClick = [this] { Label1_Click(); };
    const auto cells = form_.ColourCells();
    for (std::size_t cell = 0; cell < cells.size(); ++cell)
        cells[cell]->OnClick = [this, cell] { BCOL_Click(cell); };
}

void ControlPanel::BCOL_Click(std::size_t cell) {
    ChooseSeaColour(cell, app_, form_);
    // What is drawn on the sea went with the old colour.
    session_.TheInstruments().overview.DrawOverviewMap();
    session_.TheInstruments().windPanel.UpdateWindPanel();
    RedrawMap();
}

void ControlPanel::RedrawMap() {
    if (!form_.Check5.Value()) chart_.DrawAll();  // auto trace repaints by itself
}

void ControlPanel::Check1_Click() {
    if (form_.Check1.Value()) {
        chart_.DrawTimePoints();
        return;
    }
    app_.view.ZoomFactor = app_.view.ManualZoom;
    chart_.DrawBaseChart();
    chart_.DrawCourse();
}

void ControlPanel::Check5_Click() {
    const bool autoTrace = form_.Check5.Value();
    for (Control* control :
         std::initializer_list<Control*>{&form_.Command2, &form_.Command3, &form_.Command5, &form_.Check1,
                                         &form_.Check6, &form_.Check7})
        control->SetEnabled(!autoTrace);
    form_.Check9.SetEnabled(autoTrace);
    form_.Check2.SetEnabled(!autoTrace);
    form_.Picture12.SetVisible(autoTrace);
    if (autoTrace) {
        form_.Check2.SetValue(false);
        form_.Picture1.Cls();
        chart_.DrawCourse();
        return;
    }
    form_.Command5.SetEnabled(CourseCanBeSet(app_.race));
    app_.view.ZoomFactor = app_.view.ManualZoom;
    chart_.DrawAll();
}

void ControlPanel::Check6_Click() {
    app_.display.ShowTracks = form_.Check6.Value();
    RedrawMap();
}

void ControlPanel::Check8_Click() {
    if (!form_.Check8.Value()) chart_.DrawBaseChart();
    chart_.DrawCourse();
}

void ControlPanel::HScroll2_Change() {
    app_.view.AutoTraceZoom = form_.HScroll2.Value() / 100.0;
}

void ControlPanel::Option2_MouseUp() {
    TurnMap(true);
}

void ControlPanel::Option3_MouseUp() {
    TurnMap(false);
}

void ControlPanel::TurnMap(bool northUp) {
    app_.race.NorthUp = northUp;
    app_.view.ScreenUpDirection = northUp ? 0.0 : app_.race.WindDirection;
    form_.Check4.SetEnabled(!northUp);
    chart_.DrawBaseChart();
    chart_.DrawCourse();
    session_.TheInstruments().overview.DrawOverviewMap();
    session_.TheInstruments().windPanel.UpdateWindPanel();
}

void ControlPanel::btnHATENA_Click() {
    const char* page = app_.settings.UseEnglish ? "help-e/index.html" : "help/index.html";
    OpenDocument(app_, services_, FindBelow(app_.settings.AppPath, page).string());
}

void ControlPanel::Label1_Click() {
    OpenDocument(app_, services_, std::string(MakerAddress));
}

void ControlPanel::Command9_Click() {
    if (form_.Combo1.Text() == app_.race.RaceFileName) {
        const Text said{"Choose Other File", "既に表示されています"};
        services_.dialogs.Ok(said.In(app_.settings.UseEnglish), app_.settings.AppTitle);
        return;
    }
    session_.OpenOtherRace(form_.Combo1.Text());
}

}  // namespace keelview
