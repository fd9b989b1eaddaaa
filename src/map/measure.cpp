#include "map/measure.h"

#include <cmath>
#include <string>

#include "base/angles.h"
#include "base/numbers.h"
#include "display/hint_box.h"

namespace keelview {

namespace {

/// "59° / 66° mag  1532m": the bearing in whole degrees, true and magnetic, and the range.
std::string Readout(const EarthScale& scale, double variation, const Position& from, const Position& to) {
    const double north = to.Lat - from.Lat;
    const double east = (to.Lon - from.Lon) * scale.LonScale;
    const double bearing = FloorToInt(BearingOf(east, north) + 0.5) % 360;
    const int magnetic = FloorToInt(WrapDirection(TurnBetween(variation, bearing)) + 0.5) % 360;
    const double metres = std::floor(std::hypot(east, north) * scale.MetresPerLatMinute + 0.5);
    return WholeText(bearing) + "° / " + std::to_string(magnetic) + "° mag  " + NumberText(metres) + "m";
}

}  // namespace

Measure::Measure(const AppState& app, RaceDisp& form) : app_(app), form_(form) {}

Click Measure::Press(const MouseEvent& event, const Position& at) {
    if (event.Button == MouseButton::Left)
        start_ = at;
    else
        form_.Check2.SetValue(false);
    return Click::Taken;
}

void Measure::Follow(const MouseEvent& event, const Position& at) {
    if (!start_) {
        form_.Text7.Hide();
        return;
    }
    const Point start = MapProjection(app_).ToScreen(*start_);
    form_.Line4.Place(start.X, start.Y, event.X, event.Y);
    form_.Line4.SetVisible(true);
    const std::string readout = Readout(app_.scale, app_.race.MagVariation, *start_, at);
    ShowHint(form_.Text7, readout,
             {.Left = 10, .Top = 10, .Width = form_.Text7.TextWidth(readout) + 10, .Height = 15});
    form_.Picture1.Refresh();
}

void Measure::Leave() {
    start_.reset();
    form_.Line4.SetVisible(false);
}

}  // namespace keelview
