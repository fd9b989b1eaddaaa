#include "instruments/boat_graphs.h"

#include <cmath>
#include <string>
#include <utility>

#include "instruments/graph_axes.h"
#include "instruments/page_text.h"
#include "map/screen_geometry.h"
#include "session/boat_colours.h"

namespace keelview {

namespace {

constexpr double ChartTop = 30.0;
constexpr double BottomMargin = 40.0;
constexpr double EarliestShown = -60.0;  // seconds from the start
constexpr int GridSeconds = 300;
constexpr double NarrowestGrid = 2.0;  // pixels between two lines of the time grid

constexpr Colour GridGrey = Rgb(192, 192, 192);
constexpr Colour CompassBlue = Rgb(96, 96, 255);
constexpr Colour SpeedGreen = Rgb(128, 255, 128);
constexpr Colour WindRed = Rgb(255, 128, 128);
constexpr Colour WindArea = Rgb(255, 225, 225);
constexpr Colour PaleBoat = Rgb(225, 225, 225);
constexpr Colour ReciprocalGrey = Rgb(128, 128, 128);

/// Leaves of each run of points in the same row of pixels the two that stand furthest apart, the one nearer
/// to the row before first: the same picture, as the line fills the row between them, from a fraction of
/// the points and of the way. Long tracks have dozens of fixes in each row.
void ThinRows(std::vector<Point>& line) {
    std::size_t kept = 0;
    for (std::size_t first = 0; first < line.size();) {
        const double row = std::floor(line[first].Y);
        std::size_t next = first + 1;
        Point left = line[first];
        Point right = left;
        for (; next < line.size() && std::floor(line[next].Y) == row; ++next) {
            if (line[next].X < left.X) left = line[next];
            if (line[next].X > right.X) right = line[next];
        }
        if (next - first > 2) {
            const double from = kept > 0 ? line[kept - 1].X : left.X;
            if (std::abs(from - right.X) < std::abs(from - left.X)) std::swap(left, right);
            line[kept++] = left;
            line[kept++] = right;
            first = next;
        }
        while (first < next) line[kept++] = line[first++];
    }
    line.resize(kept);
}

/// The colour of the time grid's line number i: every 10, 30 and 60 minutes stand out.
Colour GridColour(int i) {
    if (i % 12 == 0) return Red;
    if (i % 6 == 0) return Rgb(255, 128, 0);
    if (i % 2 == 0) return Rgb(255, 192, 192);
    return GridGrey;
}

/// "1:05" for line number 13.
std::string GridLabel(int i) {
    const std::string minutes = "00" + std::to_string(i % 12 * 5);
    return std::to_string(i / 12) + ":" + minutes.substr(minutes.size() - 2);
}

}  // namespace

void BoatGraphs::Repaint(Changed changed) {
    const Changed mine =
        Changed::Race | Changed::Boats | Changed::Wind | Changed::Size | Changed::Focus | Changed::Mode;
    if (app_.shown.ViewMode == ViewKind::Graph && Any(changed, mine)) Draw();
}

void BoatGraphs::Show(const Moment& now) {
    if (app_.shown.ViewMode != ViewKind::Graph || app_.shown.PointerOnTimeBar) return;
    const double y = Axis().Y(now.Time);
    form_.Line1.Place(CompassLeft, y, form_.GPIC.Width(), y);
}

void BoatGraphs::Draw() {
    Surface& page = form_.GPIC;
    PlaceWindButton();
    page.Cls();
    page.FontSize = 9 * app_.settings.FontScale;
    page.DrawWidth = 1;
    DrawGround();
    const bool timed = !Axis().Empty();
    const bool hasWind = HasWindFile(app_.race);
    if (hasWind && timed) DrawWindSpeed();
    DrawDirectionGrid();
    DrawSpeedGrid();
    if (!timed) return;
    DrawTimeGrid();
    for (const bool course : {true, false})
        for (const bool inFocus : {false, true}) DrawBoats(inFocus, course);
    if (hasWind) {
        DrawWindDirection(0, Black);
        DrawWindDirection(180, ReciprocalGrey);
    }
    DrawStartAndFinish();
}

double BoatGraphs::ChartBottom() const {
    return form_.GPIC.Height() - BottomMargin;
}

void BoatGraphs::PlaceWindButton() {
    if (!app_.settings.EditMode) return;
    form_.Command12.Move(5, 5, 113, 17);
    form_.Command12.Show();
}

bool BoatGraphs::InRace(double seconds) const {
    return seconds >= EarliestShown && seconds < app_.race.RaceDuration;
}

void BoatGraphs::DrawGround() {
    Surface& page = form_.GPIC;
    const bool hasWind = HasWindFile(app_.race);
    page.FilledBox(CompassLeft, ChartTop, CompassRight, ChartBottom(), White);
    page.FilledBox(SpeedAxisLeft, ChartTop, SpeedAxisRight, ChartBottom(), White);
    page.ForeColor = Black;
    PrintCentred(page, (CompassLeft + CompassRight) / 2, 10,
                 hasWind ? "BCO (Mag) & TWD(Mag) " : "BCO (Mag)");
    PrintCentred(page, (SpeedAxisLeft + SpeedAxisRight) / 2, 10, hasWind ? "BSP & TWS" : "BSP");
}

void BoatGraphs::DrawWindSpeed() {
    Surface& page = form_.GPIC;
    const TimeAxis axis = Axis();
    page.Fill = FillStyle::Solid;
    page.FillColor = WindArea;
    page.ForeColor = WindArea;
    Point last;
    for (int sample = 1; sample <= app_.wind.Count(); ++sample) {
        const WindSample& wind = app_.wind[sample];
        const Point at{WindSpeedToX(wind.WindSpeed.value_or(0.0)), axis.Y(wind.WindTime)};
        if (sample > 1) {
            if (last.Y < ChartBottom()) {
                const Point corners[] = {at, last, {SpeedAxisLeft, last.Y}, {SpeedAxisLeft, at.Y}};
                page.Polygon(corners);
            }
            page.Line(at.X, at.Y, last.X, last.Y, WindRed);
        }
        last = at;
    }
    page.ForeColor = Black;
}

void BoatGraphs::DrawDirectionGrid() {
    Surface& page = form_.GPIC;
    // Not wrapped, unlike that of boats and wind: the direction at both edges has its line at the right
    // one.
    const double offset = app_.race.WindDirection - 90.0;
    for (int i = 0; i <= 35; ++i) {
        const double x = DirectionToX(offset, i * 10);
        page.Line(x, ChartTop, x, ChartBottom(), i % 3 == 0 ? CompassBlue : GridGrey);
    }
    for (int i = 0; i <= 33; i += 3)
        PrintCentred(page, DirectionToX(offset, i * 10), ChartBottom() + 4, std::to_string(i * 10));
}

void BoatGraphs::DrawSpeedGrid() {
    Surface& page = form_.GPIC;
    for (int i = 0; i <= 10; ++i) {
        const double x = SpeedToX(i);
        page.Line(x, ChartTop, x, ChartBottom(), i % 5 == 0 ? SpeedGreen : GridGrey);
        PrintCentred(page, x, ChartBottom() + 4, std::to_string(i));
        page.ForeColor = WindRed;
        PrintCentred(page, x, ChartBottom() + 20, std::to_string(i * 2));
        page.ForeColor = Black;
    }
}

void BoatGraphs::DrawTimeGrid() {
    Surface& page = form_.GPIC;
    const TimeAxis axis = Axis();
    // A race of days has lines for whole hours, half days and so on, so that the grid never gets denser
    // than the pixels are.
    int step = 1;
    const int last = app_.race.RaceDuration / GridSeconds;
    while (step < last && axis.Scale() * GridSeconds * step < NarrowestGrid) step *= 12;
    for (int i = 0; i <= last; i += step) {
        const double y = axis.Y(static_cast<double>(i) * GridSeconds);
        page.Line(CompassLeft + 1, y, CompassRight - 1, y, GridColour(i));
        page.Line(SpeedAxisLeft + 1, y, SpeedAxisRight - 1, y, GridColour(i));
        page.PrintAt(5, y - 5, GridLabel(i));
    }
}

void BoatGraphs::DrawBoats(bool inFocus, bool course) {
    std::vector<Point> line;
    for (int boat = app_.tracks.Boats.Count(); boat >= 1; --boat) {
        if (form_.InFocus(boat) != inFocus) continue;
        TraceBoat(boat, course, line);
        ThinRows(line);
        form_.GPIC.Polyline(line, inFocus ? BoatColour(boat) : PaleBoat);
    }
}

void BoatGraphs::TraceBoat(int boat, bool course, std::vector<Point>& line) const {
    line.clear();
    const TimeAxis axis = Axis();
    const double offset = GraphDirOffset(app_.race);
    const Track& track = app_.tracks.Boats[boat];
    for (int fix = 1; fix <= track.Count(); ++fix) {
        const double time = track.TrackTime[fix];
        if (!InRace(time)) continue;
        const double x = course ? DirectionToX(offset, track.TrackCourse[fix] - app_.race.MagVariation)
                                : SpeedToX(track.TrackSpeed[fix]);
        line.push_back({x, axis.Y(time)});
    }
}

void BoatGraphs::DrawWindDirection(double turn, Colour colour) {
    const TimeAxis axis = Axis();
    const double offset = GraphDirOffset(app_.race);
    std::vector<Point> run;
    for (const WindSample& sample : app_.wind) {
        // Each sample ends a segment only while it lies in the race, but always starts the next one.
        if (!InRace(sample.WindTime)) {
            if (run.size() > 1) form_.GPIC.Polyline(run, colour);
            run.clear();
        }
        run.push_back({DirectionToX(offset, sample.WindDirection + turn), axis.Y(sample.WindTime)});
    }
    if (run.size() > 1) form_.GPIC.Polyline(run, colour);
}

void BoatGraphs::DrawStartAndFinish() {
    for (const double y : {Axis().Y(0), TimeAxis::Margin})
        form_.GPIC.Line(0, y, form_.MapSide(), y, StartFinishColour);
}

}  // namespace keelview
