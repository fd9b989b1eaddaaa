#include "map/map_interaction.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "base/bilingual.h"
#include "base/numbers.h"
#include "display/hint_box.h"
#include "session/held_keys.h"

namespace keelview {

namespace {

constexpr double ZoomStep = 1.4;
constexpr double LeastZoom = 0.27;
constexpr double HomeAbove = 0.9;  // a zoom above this, and up to the next, is the home view
constexpr double HomeUpTo = 1.1;
constexpr double WholeChartZoom = 0.6;  // at this zoom and below the whole chart is shown anyway

constexpr Text ZoomHint{"Click L-btn=> Enlarge Map\n      R-btn=> Shrink Map\n(shift + L => Move area)",
                        "左ｸﾘｯｸで拡大/右ｸﾘｯｸで縮小\n（shift + 左ｸﾘｯｸで地図移動）"};
constexpr Text ShowAllHint{"\n( Shift + R => Show all area)", "\n（Shift + 右ｸﾘｯｸで全図表示）"};

/// "N 35:17.25'": whole degrees and minutes cut to three decimals.
std::string CoordinateText(double minutes, const char* positive, const char* negative) {
    const double size = std::abs(minutes);
    const double degrees = std::floor(size / 60);
    const double rest = std::floor((size - degrees * 60) * 1000) / 1000;
    return (minutes > 0 ? positive : negative) + NumberText(degrees) + ":" + NumberText(rest) + "'";
}

}  // namespace

MapInteraction::MapInteraction(AppState& app, RaceDisp& form, Services& services, Chart& chart,
                               ReplayFrame& frame)
    : app_(app),
      form_(form),
      chart_(chart),
      frame_(frame),
      course_(app, form, services, chart, frame),
      measuring_(app, form) {
    form_.Picture1.OnMouseDown = [this](const MouseEvent& event) { Picture1_MouseDown(event); };
    form_.Picture1.OnMouseMove = [this](const MouseEvent& event) { Picture1_MouseMove(event); };
}

void MapInteraction::RaceLoaded() {
    course_.Leave();
    measuring_.Forget();
}

void MapInteraction::Picture1_MouseDown(const MouseEvent& event) {
    const MapPosition at = ScreenToMap(app_.view, event.X, event.Y);
    if (app_.display.MeasureMode) {
        measuring_.Click(event.Button, at);
        return;
    }
    if (form_.Check5.Value() || app_.display.ViewMode != ViewKind::Map) return;
    form_.Timer1.SetEnabled(false);
    // Among marks and lines the boats stand still until the pointer comes to a panel.
    if (course_.PickEntry(event, at)) return;
    measuring_.Forget();
    if (ShiftHeld(app_.display, event))
        MoveView(event.Button, at);
    else if (!course_.PlaceAt(at))
        Zoom(event.Button, at);
    form_.Timer1.SetEnabled(true);
}

void MapInteraction::MoveView(MouseButton button, const MapPosition& at) {
    const bool move = button == MouseButton::Left;
    if (!move) app_.view.ManualZoom = 1;
    ShowAround(move ? at : Home());
}

void MapInteraction::Zoom(MouseButton button, const MapPosition& at) {
    const double before = app_.view.ManualZoom;
    double zoom = button == MouseButton::Left ? before * ZoomStep : before / ZoomStep;
    zoom = std::max(zoom, LeastZoom);
    if (zoom == before || !std::isfinite(zoom)) return;
    const bool home = zoom > HomeAbove && zoom <= HomeUpTo;
    app_.view.ManualZoom = home ? 1 : zoom;
    ShowAround(home ? Home() : at);
    frame_.DrawFrame();
    for (int row = 0; row < app_.race.BoatCount; ++row) form_.Boat[row].SetVisible(false);
}

void MapInteraction::ShowAround(const MapPosition& centre) {
    app_.view.ViewCentreLat = centre.Lat;
    app_.view.ViewCentreLon = centre.Lon;
    app_.view.ZoomFactor = app_.view.ManualZoom;
    chart_.DrawAll();
}

MapPosition MapInteraction::Home() const {
    return {app_.area.HomeCentreLat, app_.area.HomeCentreLon};
}

void MapInteraction::Picture1_MouseMove(const MouseEvent& event) {
    form_.Text7.SetBackColor(HintBackground);
    app_.display.PointerOnTimeBar = false;
    app_.display.HoverBoat = -1;
    form_.Text8.Hide();
    form_.LowerBoatList();
    const MapPosition at = ScreenToMap(app_.view, event.X, event.Y);
    if (!form_.Check5.Value()) ShowPosition(at);
    if (course_.Placing())
        course_.FollowPlacing(event);
    else if (course_.Ordering())
        course_.FollowOrdering(event, at);
    else if (app_.display.MeasureMode)
        measuring_.Follow(event, at);
    else if (app_.display.HintsOn && !form_.Check5.Value())
        ShowMapHint(event);
    else
        form_.Text7.Hide();
}

void MapInteraction::ShowPosition(const MapPosition& at) {
    form_.SetCaption(app_.display.PlainTitle + std::string(20, ' ') + CoordinateText(at.Lat, "N ", "S ") +
                     "/" + CoordinateText(at.Lon, "E ", "W "));
}

void MapInteraction::ShowMapHint(const MouseEvent& event) {
    const bool english = app_.settings.UseEnglish;
    const bool showsPart = app_.view.ZoomFactor > WholeChartZoom;
    std::string hint = ZoomHint.Str(english);
    if (showsPart) hint += ShowAllHint.In(english);
    HintPlace place{
        .Left = event.X + 15, .Top = event.Y + 30, .Width = 170, .Height = english ? 42.0 : 32.0};
    if (showsPart) place.Height = english ? 54 : 42;
    if (place.Left + place.Width > 5 + form_.Picture1.Width()) place.Left = event.X - place.Width - 10;
    if (place.Top + place.Height > 5 + form_.Picture1.Height()) place.Top = event.Y - place.Height - 10;
    ShowHint(form_.Text7, hint, place);
    form_.Picture1.Refresh();
}

}  // namespace keelview
