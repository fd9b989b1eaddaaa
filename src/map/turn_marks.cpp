#include "map/turn_marks.h"

#include <array>

#include "analysis/track_at.h"
#include "base/numbers.h"
#include "map/clear_line.h"
#include "session/livery.h"

namespace keelview {

namespace {

constexpr double Reach = 5.0;  // pixels from the middle of a mark to its corners
constexpr double LabelPoints = 9.0;

void DrawSign(Canvas& map, ManoeuvreKind kind, const Point& at) {
    constexpr double flat = Reach - 1;
    const auto beside = [&at](double x, double y) { return Point{at.X + x, at.Y + y}; };
    if (kind == ManoeuvreKind::Gybe)
        map.Circle(at.X, at.Y, flat, map.ForeColor);
    else if (kind == ManoeuvreKind::Tack)
        map.Polygon(std::array{beside(0, -Reach), beside(Reach, 0), beside(0, Reach), beside(-Reach, 0)});
    else
        map.Polygon(
            std::array{beside(-flat, -flat), beside(flat, -flat), beside(flat, flat), beside(-flat, flat)});
}

}  // namespace

void DrawTurnMarks(Canvas& map, const AppState& app, const Projection& projection) {
    const int boat = app.shown.TurningBoat;
    if (!app.tracks.Boats.Holds(boat)) return;
    const Track& track = app.tracks.Boats[boat];
    map.Fill = FillStyle::Solid;
    map.FontSize = LabelPoints * app.settings.FontScale;
    for (const TurnMark& turn : app.shown.Turns) {
        const int segment = FindSegment(track, turn.Time);
        if (segment == 0) continue;
        const Point at = projection.ToScreen(PositionOn(track, segment, turn.Time));
        map.FillColor = BoatColour(boat);
        map.ForeColor = InkOn(BoatColour(boat));
        DrawSign(map, turn.Kind, at);
        if (turn.LossMetres)
            PrintClear(map, {at.X + 8, at.Y - 16}, NumberText(RoundDecimals(*turn.LossMetres, 0)) + " m",
                       app.shown.InkColour);
    }
    map.ForeColor = Black;
}

}  // namespace keelview
