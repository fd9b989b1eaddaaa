#include "instruments/overview_mouse.h"

#include <cmath>
#include <string>

#include "base/angles.h"
#include "display/hint_box.h"
#include "instruments/hint_table.h"

namespace keelview {

namespace {

constexpr Text MoveHint{"L-btn => Move center of map", "左ｸﾘｯｸで地図中心を移動"};
constexpr Text TurnHint{"R-btn => change Wind Dir", "右ｸﾘｯｸで風向を回転"};
constexpr Text TurnCondition{"(Select Windwd btn)", "（「風向が上」にする）"};

}  // namespace

OverviewMouse::OverviewMouse(RaceSession& session, const Overview& overview, WindField& windField)
    : app_(session.App()),
      form_(session.Display()),
      stage_(session.TheStage()),
      film_(session.TheFilm()),
      voice_(session.TheVoice()),
      overview_(overview),
      windField_(windField) {
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
    if (form_.Check5.Value() || app_.view.ZoomFactor <= WholeChartBelow) return;
    app_.view.CentreOn(overview_.InUnits().ToEarth({event.X, event.Y}));
    app_.view.ZoomFactor = app_.view.ManualZoom;
    stage_.Repaint(Changed::View);
}

void OverviewMouse::TurnWind(const MouseEvent& event) {
    if (app_.race.NorthUp || !app_.settings.EditMode) return;
    const Point& middle = overview_.InUnits().Middle();
    const double bearing = BearingOf(event.X - middle.X, middle.Y - event.Y);
    windField_.Take(WrapDirection(std::floor(app_.view.ScreenUpDirection + bearing)));
}

void OverviewMouse::Picture6_MouseMove() {
    film_.Release(Film::Hold::MapClick);
    if (form_.Check3.Value() && !form_.Check5.Value())
        ShowOverviewHint();
    else
        form_.Text7.Hide();
    form_.LowerBoatList();
}

void OverviewMouse::ShowOverviewHint() {
    std::string text = voice_.Str(MoveHint);
    if (app_.settings.EditMode) text += "\n" + voice_.Str(TurnHint) + "\n" + voice_.Str(TurnCondition);
    ShowHint(form_.Text7, text, BesidePanel(form_, 50, 150, 45));
}

}  // namespace keelview
