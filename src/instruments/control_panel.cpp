#include "instruments/control_panel.h"

#include <string>

#include "session/documents.h"

namespace keelview {

namespace {

constexpr Text AlreadyShown{"Choose Other File", "既に表示されています"};

}  // namespace

ControlPanel::ControlPanel(RaceSession& session)
    : session_(session), app_(session.App()), form_(session.Display()), stage_(session.TheStage()) {
    form_.Command9.OnClick = [this] { Command9_Click(); };
    form_.Check1.OnClick = [this] { Check1_Click(); };
    form_.Check5.OnClick = [this] { Check5_Click(); };
    form_.Check6.OnClick = [this] { Check6_Click(); };
    for (CheckBox* layer : {&form_.Check4, &form_.Check7, &form_.Check8, &form_.Check9, &form_.Check10})
        layer->OnClick = [this] { stage_.Repaint(Changed::Layers); };
    form_.HScroll2.OnChange = [this] { HScroll2_Change(); };
    // When a race is loaded the options only say what holds.
    form_.Option2.OnClick = [this] {
        if (!app_.race.NorthUp) TurnMap(true);
    };
    form_.Option3.OnClick = [this] {
        if (app_.race.NorthUp) TurnMap(false);
    };
    const auto open = [this](const std::string& target) {
        OpenDocument(app_.settings, session_.TheServices(), target);
    };
    form_.btnHATENA.OnClick = [this, open] { open(ManualPath(app_.settings).string()); };
    form_.Label1.OnClick = [open] { open(std::string(MakerAddress)); };
}

void ControlPanel::Check1_Click() {
    if (!form_.Check1.Value()) {
        app_.view.ZoomFactor = app_.view.ManualZoom;
        stage_.Repaint(Changed::View);
    }
    stage_.Repaint(Changed::Layers);
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
    } else {
        form_.Command5.SetEnabled(CourseCanBeSet(app_.race));
        app_.view.ZoomFactor = app_.view.ManualZoom;
    }
    stage_.Repaint(Changed::View | Changed::Layers);
}

void ControlPanel::Check6_Click() {
    app_.shown.ShowTracks = form_.Check6.Value();
    stage_.Repaint(Changed::Layers);
}

void ControlPanel::HScroll2_Change() {
    app_.view.AutoTraceZoom = form_.HScroll2.Value() / 100.0;
    stage_.Repaint(Changed::Nothing);  // in auto trace the view follows
}

void ControlPanel::TurnMap(bool northUp) {
    form_.Check4.SetEnabled(!northUp);
    session_.Changes().SetNorthUp(northUp);
}

void ControlPanel::Command9_Click() {
    if (form_.Combo1.Text() == app_.race.RaceFileName)
        session_.TheVoice().Say(AlreadyShown);
    else
        session_.OpenOtherRace(form_.Combo1.Text());
}

}  // namespace keelview
