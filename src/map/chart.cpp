#include "map/chart.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "analysis/track_at.h"
#include "base/angles.h"
#include "base/numbers.h"
#include "map/coast_picture.h"
#include "map/course_picture.h"
#include "map/turn_marks.h"
#include "session/livery.h"

namespace keelview {

namespace {

constexpr Colour GridColour = Rgb(128, 192, 255);
constexpr double LabelPoints = 9.0;
constexpr double TimePointRadius = 4.0;
constexpr double FinestTurn = 0.5;  // degrees of the wind that turn the lay lines by pixels

}  // namespace

Chart::Chart(const AppState& app, RaceDisp& form) : app_(app), form_(form) {}

void Chart::Repaint(Changed changed) {
    if (!Any(changed, Changed::View | Changed::Course | Changed::Wind | Changed::Layers | Changed::Colours |
                          Changed::Size | Changed::Focus | Changed::Race | Changed::Boats))
        return;
    const Projection projection = MapProjection(app_);
    course_.Forget();
    DrawGround(projection);
    if (form_.Check1.Value() && !form_.Check5.Value()) DrawTimePoints(projection);
    DrawCourseNow();
    DrawTurnMarks(form_.Picture1, app_, projection);
}

void Chart::Show(const Moment& now) {
    if (form_.Check5.Value() || app_.shown.ViewMode != ViewKind::Map) return;
    if (std::abs(WrapDifference(now.WindNow.DirectionTrue - courseWind_)) < FinestTurn) return;
    course_.TakeBack(form_.Picture1);
    DrawCourseNow();
}

void Chart::DrawGround(const Projection& projection) {
    Surface& map = form_.Picture1;
    map.Cls();
    if (form_.Check7.Value()) {
        map.DrawWidth = 2;
        DrawCoast(map, app_.coast, projection, app_.view.MapSide, app_.shown.InkColour);
        map.DrawWidth = 1;
    }
    const double pixelsPerMetre = PixelsPerMetre(app_.view, app_.area, app_.scale);
    if (form_.Check5.Value())
        DrawGrid(projection, ChooseScaleBar(pixelsPerMetre).BarMetres * pixelsPerMetre);
    else if (app_.shown.ShowTracks)
        DrawTracksInFocus(projection);
    DrawScaleBar(pixelsPerMetre);
}

void Chart::DrawGrid(const Projection& projection, double spacing) {
    const Point anchor = projection.ToScreen({app_.view.GridOriginLat, app_.view.GridOriginLon});
    const double edge = app_.view.MapSide;
    std::vector<Point> lines;
    const auto run = [&](double origin, auto&& add) {
        // Only the lines that cross the picture are worth a stroke, however far off the anchor lies.
        const double first = std::ceil((0.0 - origin) / spacing);
        for (double at = origin + first * spacing; at < edge; at += spacing) add(at);
    };
    run(anchor.Y, [&](double y) { lines.insert(lines.end(), {{0, y}, {edge, y}}); });
    run(anchor.X, [&](double x) { lines.insert(lines.end(), {{x, 0}, {x, edge}}); });
    form_.Picture1.Segments(lines, GridColour);
}

void Chart::DrawTracksInFocus(const Projection& projection) {
    std::vector<TrackPiece> pieces;
    for (int boat = 1; boat <= app_.tracks.Boats.Count(); ++boat)
        if (form_.InFocus(boat)) pieces.push_back(PieceOf(boat));
    DrawTracks(form_.Picture1, app_, pieces, projection);
}

/// From the fix at the begin of the replay range to that before its end; a track that does not reach so far
/// is drawn up to its last fix but one.
TrackPiece Chart::PieceOf(int boat) const {
    const Track& track = app_.tracks.Boats[boat];
    const int first = std::max(1, FindSegment(track, app_.clock.ReplayRangeStart));
    int last = FindSegment(track, app_.clock.ReplayRangeEnd);
    if (last < first) last = track.Count() - 1;
    return {boat, first, last};
}

void Chart::DrawScaleBar(double pixelsPerMetre) {
    const ScaleBar bar = ChooseScaleBar(pixelsPerMetre);
    Surface& map = form_.Picture1;
    map.ForeColor = app_.shown.InkColour;
    const double left = 40;
    const double right = 40 + bar.BarMetres * pixelsPerMetre + 1;
    const double y = app_.view.MapSide - 20;
    map.Line(left, y, right, y);
    for (int tick = 0; tick <= bar.Mantissa; ++tick) {
        const double x = left + (right - left) * tick / bar.Mantissa;
        map.Line(x, y - 5, x, y);
    }
    const std::string text = bar.BarMetres < 1000 ? SurfaceNumberText(bar.BarMetres) + "m"
                                                  : SurfaceNumberText(bar.BarMetres / 1000) + "Km";
    map.FontSize = LabelPoints * app_.settings.FontScale;
    map.PrintAt((left + right) / 2 - map.TextWidth(text) / 2, y + 3, text);
}

/// A disk for each boat in focus at every minute of the replay range; its colour tells the minute.
void Chart::DrawTimePoints(const Projection& projection) {
    static constexpr std::array<Colour, 6> MinuteColours{Red, White, Blue, Yellow, Rgb(0, 255, 0), Black};
    Surface& map = form_.Picture1;
    map.Fill = FillStyle::Solid;
    std::size_t minute = 0;
    for (double t = app_.clock.ReplayRangeStart; t <= app_.clock.ReplayRangeEnd; t += 60) {
        map.FillColor = MinuteColours[minute++ % MinuteColours.size()];
        for (int boat = 1; boat <= app_.tracks.Boats.Count(); ++boat) {
            const Track& track = app_.tracks.Boats[boat];
            const int segment = form_.InFocus(boat) ? FindSegment(track, t) : 0;
            if (segment == 0) continue;
            const Point at = projection.ToScreen(PositionOn(track, segment, t));
            map.Circle(at.X, at.Y, TimePointRadius, ReadableOn(app_.shown.SeaColour, BoatColour(boat)));
        }
    }
}

void Chart::DrawCourseNow() {
    const bool mayTurn = HasWindFile(app_.race) && !form_.Check5.Value();
    if (mayTurn) course_.Begin(form_.Picture1);
    DrawCourse(form_.Picture1, app_, form_.Check8.Value(), form_.Check5.Value());
    if (mayTurn) course_.End(form_.Picture1);
    courseWind_ = app_.now.WindNow.DirectionTrue;
}

}  // namespace keelview
