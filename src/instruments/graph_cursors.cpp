#include "instruments/graph_cursors.h"

#include <algorithm>

#include "base/dates.h"
#include "base/numbers.h"
#include "display/hint_box.h"

namespace keelview {

namespace {

constexpr double CursorReach = 10.0;
constexpr double LeastHintWidth = 85.0;

}  // namespace

GraphCursors::GraphCursors(const AppState& app, RaceDisp& form, Film& film, const BoatGraphs& graphs)
    : app_(app), form_(form), film_(film), graphs_(graphs) {
    form_.GPIC.OnMouseMove = [this](const MouseEvent& event) { GPIC_MouseMove(event); };
    form_.GPIC.OnMouseLeave = [this] { HideCursors(), form_.Text7.Hide(); };
}

void GraphCursors::GPIC_MouseMove(const MouseEvent& event) {
    if (graphs_.Times().Empty()) return;
    form_.LowerBoatList();
    film_.Release(Film::Hold::MapClick);
    const CompassAxis compass = graphs_.Compass();
    if (event.X < compass.Left() || event.X > compass.Middle())
        HideCursors();
    else
        PlaceCursors(event.X, event.Y);
    TellWhatIsAt({event.X, event.Y});
}

void GraphCursors::HideCursors() {
    for (LineObject* line : {&form_.Line2, &form_.Line7, &form_.Line3}) line->SetVisible(false);
}

void GraphCursors::PlaceCursors(double x, double y) {
    const auto place = [y](LineObject& line, double at) {
        line.Place(at, y + CursorReach, at, y - CursorReach);
        line.SetVisible(true);
    };
    const CompassAxis compass = graphs_.Compass();
    const double layLine = app_.race.LayLineUp * compass.PixelsPerDegree();
    place(form_.Line2, x - layLine);
    place(form_.Line7, x + layLine);
    place(form_.Line3, x + compass.Width() / 2);
}

void GraphCursors::TellWhatIsAt(const Point& at) {
    const std::string text = TextAt(at);
    if (text.empty()) return form_.Text7.Hide();
    const double width = std::max(form_.GPIC.TextWidth(text) + 12, LeastHintWidth);
    const double rightmost = form_.GPIC.Left() + form_.GPIC.Width() - width;
    form_.Text7.SetBackColor(HintBackground);
    ShowHint(form_.Text7, text,
             {.Left = std::max(std::min(at.X - width / 2 + form_.GPIC.Left(), rightmost), 5.0),
              .Top = at.Y - 30,
              .Width = width,
              .Height = 15});
}

std::string GraphCursors::TextAt(const Point& at) const {
    const CompassAxis compass = graphs_.Compass();
    const SpeedAxis speeds = graphs_.Speeds();
    const bool onCompass = compass.Holds(at.X);
    if (!onCompass && !speeds.Holds(at.X)) return {};
    const int seconds = graphs_.Times().TimeUnder(at.Y);
    const auto& start = app_.race.Start.At();
    std::string text = start ? TimeOfDayText(*start + seconds) : DurationText(seconds);
    text += " / " + (onCompass ? NumberText(compass.DirectionUnder(at.X))
                               : SpeedText(speeds.KnotsUnder(at.X)) + " Kts");
    if (const auto boat = graphs_.BoatUnder(at)) text += "  " + app_.race.Boats[*boat].BoatName;
    return text;
}

}  // namespace keelview
