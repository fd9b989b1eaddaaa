#include "map/navigate.h"

#include <algorithm>
#include <string>

#include "base/bilingual.h"
#include "display/hint_box.h"
#include "session/held_keys.h"

namespace keelview {

namespace {

constexpr double ZoomStep = 1.4;
constexpr double LeastZoom = 0.27;
constexpr double HomeAbove = 0.9;  // a zoom above this, and up to the next, is the home view
constexpr double HomeUpTo = 1.1;

constexpr Text ZoomHint{"Click: left enlarges, right shrinks\nWheel: zooms   Drag: moves the map",
                        "左ｸﾘｯｸで拡大/右ｸﾘｯｸで縮小\nﾎｲｰﾙで拡大縮小/ﾄﾞﾗｯｸﾞで移動"};
constexpr Text ShowAllHint{"\n( Shift + right: the whole area )", "\n（Shift + 右ｸﾘｯｸで全図表示）"};

}  // namespace

Navigate::Navigate(AppState& app, RaceDisp& form, Stage& stage, const Voice& voice)
    : view_(app.view), area_(app.area), scale_(app.scale), form_(form), stage_(stage), voice_(voice) {}

Click Navigate::Press(const MouseEvent& event, const Position& at) {
    if (!ShiftHeld(form_, event))
        Zoom(event.Button, at);
    else if (event.Button == MouseButton::Left)
        ShowAround(at, view_.ManualZoom);
    else
        ShowAround(Home(), 1);
    return Click::Taken;
}

void Navigate::Zoom(MouseButton button, const Position& at) {
    const double before = view_.ManualZoom;
    double zoom = button == MouseButton::Left ? before * ZoomStep : before / ZoomStep;
    zoom = std::clamp(zoom, LeastZoom, LargestZoom(view_, area_, scale_));
    if (zoom == before) return;
    if (zoom > HomeAbove && zoom <= HomeUpTo)
        ShowAround(Home(), 1);
    else
        ShowAround(at, zoom);
}

void Navigate::ShowAround(const Position& centre, double zoom) {
    view_.CentreOn(centre);
    view_.ManualZoom = zoom;
    view_.ZoomFactor = zoom;
    stage_.Repaint(Changed::View);
}

Position Navigate::Home() const {
    return {area_.HomeCentreLat, area_.HomeCentreLon};
}

void Navigate::Follow(const MouseEvent& event, const Position& /*at*/) {
    if (form_.Check3.Value() && !form_.Check5.Value())
        ShowMapHint(event);
    else
        form_.Text7.Hide();
}

void Navigate::ShowMapHint(const MouseEvent& event) {
    const bool showsPart = view_.ZoomFactor > WholeChartBelow;
    std::string hint = voice_.Str(ZoomHint);
    if (showsPart) hint += voice_.In(ShowAllHint);
    HintPlace place{
        .Left = event.X + 15, .Top = event.Y + 30, .Width = 200, .Height = showsPart ? 45.0 : 32.0};
    if (place.Left + place.Width > 5 + form_.Picture1.Width()) place.Left = event.X - place.Width - 10;
    if (place.Top + place.Height > 5 + form_.Picture1.Height()) place.Top = event.Y - place.Height - 10;
    ShowHint(form_.Text7, hint, place);
    form_.Picture1.Refresh();
}

}  // namespace keelview
