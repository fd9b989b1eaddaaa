#include "map/chart.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <string>
#include <vector>

#include "base/angles.h"
#include "base/numbers.h"
#include "racedata/coastline.h"
#include "session/save_race.h"

namespace keelview {

namespace {

constexpr Colour GridColour = Rgb(128, 192, 255);
constexpr Colour LayLineColour = Rgb(192, 192, 255);
constexpr double LabelPoints = 9.0;
constexpr double LineLabelPoints = 12.0;
constexpr double PassClockPoints = 16.0;

}  // namespace

Chart::Chart(AppState& app, RaceDisp& form, Services& services)
    : app_(app), form_(form), services_(services) {}

void Chart::SetBoatPalette(DisplayState& display) {
    static constexpr std::array<Colour, 15> Palette{
        Rgb(255, 0, 0),   Rgb(0, 0, 255), Rgb(0, 128, 0),     Rgb(128, 128, 0), Rgb(128, 0, 128),
        Rgb(0, 128, 128), Rgb(0, 0, 0),   Rgb(128, 128, 128), Rgb(192, 192, 0), Rgb(96, 96, 0),
        Rgb(192, 0, 0),   Rgb(0, 0, 192), Rgb(0, 128, 0),     Rgb(128, 128, 0), Rgb(128, 0, 128)};
    for (std::size_t boat = 1; boat < display.BoatColour.size(); ++boat)
        display.BoatColour[boat] = Palette[(boat - 1) % Palette.size()];
}

void Chart::DrawAll() {
    DrawBaseChart();
    DrawTimePoints();
    DrawCourse();
}

void Chart::DrawBaseChart() {
    form_.Picture1.Cls();
    SnapToWholeChart(app_.area, app_.view);
    RefreshScales(app_.area, app_.scale, app_.view);
    form_.SetCaption(app_.display.PlainTitle);
    const ScaleBar bar = ChooseScaleBar(app_.view.PixelsPerMetre);
    if (app_.coast.CoastCount == 0) ReadCoast();
    if (form_.Check7.Value()) DrawCoast();
    if (form_.Check5.Value()) DrawGrid(bar.BarMetres * app_.view.PixelsPerMetre);
    if (app_.display.ShowTracks && !form_.Check5.Value()) DrawTracks();
    DrawScaleBar(bar);
}

void Chart::ReadCoast() {
    const CoastArea wanted{app_.view.ViewCentreLat, app_.view.ViewCentreLon, app_.area.AreaSpan,
                           app_.scale.LonScale};
    const std::vector<std::string> cells = CoastCells(wanted);
    app_.race.MapCount = static_cast<int>(cells.size());
    std::copy(cells.begin(), cells.end(), app_.race.MapFile.begin() + 1);
    // The distribution builder finds in the race control file which cells the race needs.
    if (app_.settings.EditMode && app_.race.MapCount > 0) SaveRace(app_, services_);
    app_.coast = LoadCoastlines(app_.settings.AppPath, cells, wanted);
}

void Chart::DrawCoast() {
    const double side = app_.view.MapSide;
    const auto inside = [side](const Point& at) {
        return at.X > 0 && at.X < side && at.Y > 0 && at.Y < side;
    };
    Surface& map = form_.Picture1;
    map.DrawWidth = 2;
    std::vector<Point> run;  // joined segments, each with an end on the map
    const auto flush = [&] {
        if (run.size() > 1) map.Polyline(run, app_.display.InkColour);
        run.clear();
    };
    Point previous;
    bool previousInside = false;
    for (int i = 1; i <= app_.coast.CoastCount; ++i) {
        const auto index = static_cast<std::size_t>(i);
        const double lat = app_.coast.CoastLat[index];
        const ScreenPoint at = MapToScreen(app_.view, std::abs(lat), app_.coast.CoastLon[index]);
        const Point here{at.X, at.Y};
        const bool hereInside = inside(here);
        if (lat < 0 || !(previousInside || hereInside)) {
            flush();
        } else {
            if (run.empty()) run.push_back(previous);
            run.push_back(here);
        }
        previous = here;
        previousInside = hereInside;
    }
    flush();
    map.DrawWidth = 1;
}

void Chart::DrawGrid(double spacing) {
    const ScreenPoint anchor = MapToScreen(app_.view, app_.view.GridOriginLat, app_.view.GridOriginLon);
    const double edge = app_.view.MapHeight;
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

void Chart::DrawTracks() {
    for (int boat = 1; boat <= app_.race.BoatCount; ++boat)
        if (form_.Bnam[boat - 1].Value()) DrawTrack(boat);
}

void Chart::DrawTrack(int boat) {
    const auto b = static_cast<std::size_t>(boat);
    const auto& times = app_.tracks.TrackTime[b];
    const int count = app_.tracks.TrackPointCount[b];
    const auto holds = [&](int k, double t) {
        const auto i = static_cast<std::size_t>(k);
        return times[i] <= t && times[i + 1] > t;
    };
    int first = 1;
    for (int k = 1; k < count; ++k) {
        if (!holds(k, app_.clock.ReplayRangeStart)) continue;
        first = k;
        break;
    }
    int last = count - 1;
    for (int k = first; k < count; ++k) {
        if (!holds(k, app_.clock.ReplayRangeEnd)) continue;
        last = k;
        break;
    }
    std::vector<Point> points;
    points.reserve(static_cast<std::size_t>(std::max(0, last - first + 1)));
    for (int k = first; k <= last; ++k) {
        const auto i = static_cast<std::size_t>(k);
        const ScreenPoint at =
            MapToScreen(app_.view, app_.tracks.TrackLat[b][i], app_.tracks.TrackLon[b][i]);
        points.push_back({at.X, at.Y});
    }
    form_.Picture1.Polyline(points, app_.display.BoatColour[b]);
}

void Chart::DrawScaleBar(const ScaleBar& bar) {
    Surface& map = form_.Picture1;
    map.ForeColor = app_.display.InkColour;
    const double left = 40;
    const double right = 40 + bar.BarMetres * app_.view.PixelsPerMetre + 1;
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

void Chart::DrawTimePoints() {
    if (!form_.Check1.Value()) return;
    form_.Timer1.SetEnabled(false);
    static constexpr std::array<Colour, 6> MinuteColours{Red, White, Blue, Yellow, Rgb(0, 255, 0), Black};
    Surface& map = form_.Picture1;
    map.Fill = FillStyle::Solid;
    app_.fleet.TrackCursor.fill(0);
    std::size_t minute = 0;
    for (double t = app_.clock.ReplayRangeStart; t <= app_.clock.ReplayRangeEnd; t += 60) {
        map.FillColor = MinuteColours[minute++ % MinuteColours.size()];
        for (int boat = 1; boat <= app_.race.BoatCount; ++boat)
            if (form_.Bnam[boat - 1].Value()) DrawTimePoint(boat, t);
    }
    form_.Timer1.SetEnabled(true);
}

void Chart::DrawTimePoint(int boat, double t) {
    const auto b = static_cast<std::size_t>(boat);
    const auto& times = app_.tracks.TrackTime[b];
    for (int k = app_.fleet.TrackCursor[b]; k < app_.tracks.TrackPointCount[b]; ++k) {
        const auto i = static_cast<std::size_t>(k);
        if (!(times[i] <= t && times[i + 1] > t)) continue;
        app_.fleet.TrackCursor[b] = k;
        ScreenPoint at;  // before the first fix the disk stands in the corner of the map
        if (k > 0) {
            const double f = (t - times[i]) / (times[i + 1] - times[i]);
            const auto& lat = app_.tracks.TrackLat[b];
            const auto& lon = app_.tracks.TrackLon[b];
            at = MapToScreen(app_.view, lat[i] + (lat[i + 1] - lat[i]) * f,
                             lon[i] + (lon[i + 1] - lon[i]) * f);
        }
        form_.Picture1.Circle(at.X, at.Y, 4, app_.display.BoatColour[b]);
        return;
    }
}

void Chart::DrawCourse() {
    Surface& map = form_.Picture1;
    app_.view.MapWidth = map.Width();
    app_.view.MapHeight = map.Height();
    app_.view.MapSide = map.Height();
    map.Fill = FillStyle::Solid;
    map.FillColor = Yellow;
    RefreshScales(app_.area, app_.scale, app_.view);
    for (int mark = 1; mark <= app_.race.MarkCount; ++mark) DrawMark(mark);
    for (int line = 1; line <= app_.race.LineCount; ++line) DrawLine(line);
    map.ForeColor = Black;
}

void Chart::DrawMark(int mark) {
    const auto i = static_cast<std::size_t>(mark);
    const ScreenPoint at = MapToScreen(app_.view, app_.race.MarkLat[i], app_.race.MarkLon[i]);
    if (form_.Check8.Value()) {
        DrawLayLines(at, 180, app_.race.LayLineUp);
        DrawLayLines(at, 0, app_.race.LayLineDown);
    }
    DrawEntryDisk(at);
    const std::string label = "MK" + std::to_string(mark);
    DrawEntryLabel(label, at, LabelPoints);
    DrawPassClock(label, at);
}

void Chart::DrawLine(int line) {
    const auto i = static_cast<std::size_t>(line);
    const ScreenPoint from = MapToScreen(app_.view, app_.race.LineLat1[i], app_.race.LineLon1[i]);
    const ScreenPoint to = MapToScreen(app_.view, app_.race.LineLat2[i], app_.race.LineLon2[i]);
    if (form_.Check8.Value()) {
        DrawLayLines(from, 180, app_.race.LayLineUp);
        DrawLayLines(to, 180, app_.race.LayLineUp);
    }
    form_.Picture1.Line(from.X, from.Y, to.X, to.Y, Yellow);
    DrawEntryDisk(from);
    DrawEntryDisk(to);
    const std::string label = "L" + std::to_string(line);
    DrawEntryLabel(label, from, LineLabelPoints);
    DrawPassClock(label, to);
}

void Chart::DrawLayLines(const ScreenPoint& from, double first, double layAngle) {
    Surface& map = form_.Picture1;
    const double length = app_.area.AreaSpan / 2 * app_.view.PixelsPerLatMinute;
    map.Style = DrawStyle::Dotted;
    for (const double offWind : {first, 180 - layAngle, 180 + layAngle}) {
        double direction = offWind + app_.windNow.WindNow - app_.view.ScreenUpDirection;
        if (direction >= 360) direction -= 360;
        const double radians = direction * DegToRad;
        map.Line(from.X, from.Y, from.X + length * std::sin(radians), from.Y - length * std::cos(radians),
                 LayLineColour);
    }
    map.Style = DrawStyle::Solid;
}

void Chart::DrawEntryDisk(const ScreenPoint& at) {
    form_.Picture1.Circle(at.X, at.Y, 3, Black);
}

void Chart::DrawEntryLabel(const std::string& label, const ScreenPoint& at, double points) {
    Surface& map = form_.Picture1;
    map.FontSize = points * app_.settings.FontScale;
    map.ForeColor = app_.display.InkColour;
    map.PrintAt(at.X + 8, at.Y - 5, label);
    map.FontSize = LabelPoints * app_.settings.FontScale;
}

void Chart::DrawPassClock(const std::string& label, const ScreenPoint& at) {
    if (!form_.Check5.Value()) return;
    const auto entry = static_cast<std::size_t>(app_.display.PassClockEntry);
    if (app_.race.CourseOrder[entry] != label) return;
    Surface& map = form_.Picture1;
    map.FontSize = PassClockPoints * app_.settings.FontScale;
    map.ForeColor = Red;
    map.PrintAt(at.X - map.TextWidth(app_.display.PassClockText) / 2, at.Y - 50,
                app_.display.PassClockText);
    map.FontSize = LabelPoints * app_.settings.FontScale;
}

}  // namespace keelview
