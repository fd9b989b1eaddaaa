#include "instruments/graph_cursors.h"

#include <algorithm>
#include <string>

#include "analysis/wind_at.h"
#include "base/dates.h"
#include "base/numbers.h"
#include "display/hint_box.h"
#include "instruments/graph_axes.h"

namespace keelview {

namespace {

constexpr double CursorRight = 210.0;  // the reciprocal of a direction further right lies off the chart
constexpr double CursorReach = 10.0;
constexpr double HintWidth = 85.0;

}  // namespace

GraphCursors::GraphCursors(const AppState& app, RaceDisp& form, Film& film)
    : app_(app), form_(form), film_(film) {
    form_.GPIC.OnMouseMove = [this](const MouseEvent& event) { GPIC_MouseMove(event); };
}

void GraphCursors::GPIC_MouseMove(const MouseEvent& event) {
    const TimeAxis axis(app_.race, form_.GPIC.Height());
    if (axis.Empty()) return;
    form_.LowerBoatList();
    film_.Release(Film::Hold::MapClick);
    if (event.X < CompassLeft || event.X > CursorRight) {
        HideCursors();
        return;
    }
    PlaceCursors(event.X, event.Y);
    ShowWindHint(axis, event.X, event.Y);
}

void GraphCursors::HideCursors() {
    for (LineObject* line : {&form_.Line2, &form_.Line7, &form_.Line3}) line->SetVisible(false);
    form_.Text7.Hide();
}

void GraphCursors::PlaceCursors(double x, double y) {
    const auto place = [y](LineObject& line, double at) {
        line.Place(at, y + CursorReach, at, y - CursorReach);
        line.SetVisible(true);
    };
    place(form_.Line2, x - app_.race.LayLineUp);
    place(form_.Line7, x + app_.race.LayLineUp);
    place(form_.Line3, x + 180);
}

bool GraphCursors::WindKnownAt(int seconds) const {
    if (!HasWindFile(app_.race)) return false;
    const int sample = FindWindSample(app_.wind, seconds);
    return sample > 0 && sample < app_.wind.Count();
}

void GraphCursors::ShowWindHint(const TimeAxis& axis, double x, double y) {
    const int seconds = axis.TimeUnder(y);
    const auto& start = app_.race.Start.At();
    if (!start || !WindKnownAt(seconds)) return;
    const std::string direction = SurfaceNumberText(DirectionUnderX(GraphDirOffset(app_.race), x));
    ShowHint(form_.Text7, TimeOfDayText(*start + seconds) + " / " + direction,
             {.Left = std::max(x - HintWidth / 2 + form_.GPIC.Left(), 5.0),
              .Top = y - 30,
              .Width = HintWidth,
              .Height = 15});
}

}  // namespace keelview
