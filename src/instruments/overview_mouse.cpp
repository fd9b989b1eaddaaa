#include "instruments/overview_mouse.h"

#include <cmath>
#include <string>

#include "base/angles.h"
#include "base/bilingual.h"
#include "base/numbers.h"
#include "display/hint_box.h"
#include "session/replay_clock.h"

namespace keelview {

namespace {

/// At this zoom and below the whole chart is shown, and its middle stays where it is.
constexpr double WholeChartZoom = 0.6;

constexpr Text MoveHint{"L-btn => Move center of map", "左ｸﾘｯｸで地図中心を移動"};
constexpr Text TurnHint{"R-btn => change Wind Dir", "右ｸﾘｯｸで風向を回転"};
constexpr Text TurnCondition{"（Select Windward btn）", "（「風向が上」にする）"};

}  // namespace

OverviewMouse::OverviewMouse(AppState& app, RaceDisp& form, Chart& chart, ReplayFrame& frame,
                             Overview& overview)
    : app_(app), form_(form), chart_(chart), frame_(frame), overview_(overview) {
    form_.Picture6.OnMouseDown = [this](const MouseEvent& event) { Picture6_MouseDown(event); };
    form_.Picture6.OnMouseMove = [this](const MouseEvent&) { Picture6_MouseMove(); };
}

void OverviewMouse::Picture6_MouseDown(const MouseEvent& event) {
    if (event.Button == MouseButton::Left)
        MoveMap(event);
    else
        TurnWind(event);
}

void OverviewMouse::MoveMap(const MouseEvent& event) {
    if (form_.Check5.Value() || app_.view.ZoomFactor <= WholeChartZoom) return;
    const MapPosition at = overview_.FromOverview(event.X, event.Y);
    app_.view.ViewCentreLat = at.Lat;
    app_.view.ViewCentreLon = at.Lon;
    app_.view.ZoomFactor = app_.view.ManualZoom;
    chart_.DrawAll();
    frame_.DrawFrame();
}

void OverviewMouse::TurnWind(const MouseEvent& event) {
    if (app_.race.NorthUp || !app_.settings.EditMode) return;
    const ScreenPoint centre = overview_.Centre();
    const double bearing = BearingOf(event.X - centre.X, centre.Y - event.Y);
    double up = std::floor(app_.view.ScreenUpDirection + bearing);
    if (up > 360) up -= 360;
    app_.view.ScreenUpDirection = up;
    app_.race.WindDirection = up;
    app_.windNow.WindNow = up;
    // The wind's field redraws and saves, as if the person had typed the direction.
    app_.display.WindTextArmed = true;
    form_.Text3.SetText(NumberText(up));
}

void OverviewMouse::Picture6_MouseMove() {
    ResumeFilm(app_, form_);
    if (app_.display.HintsOn && !form_.Check5.Value())
        ShowOverviewHint();
    else
        form_.Text7.Hide();
    form_.LowerBoatList();
}

void OverviewMouse::ShowOverviewHint() {
    const bool english = app_.settings.UseEnglish;
    std::string text = MoveHint.Str(english);
    if (app_.settings.EditMode) text += "\n" + TurnHint.Str(english) + "\n" + TurnCondition.Str(english);
    ShowHint(form_.Text7, text, {form_.Picture5.Left() - 150, 50, 150, 45});
}

}  // namespace keelview
