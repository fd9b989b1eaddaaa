#include "analysis/boat_graphs.h"

#include <cmath>
#include <optional>
#include <string>
#include <utility>

#include "analysis/graph_axes.h"
#include "analysis/page_text.h"
#include "analysis/time_axis.h"
#include "base/dates.h"
#include "base/numbers.h"

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
constexpr Colour StartFinishGreen = Rgb(0, 255, 0);

/// Seconds between two moments, held inside an int; 0 if one is missing.
int SecondsBetween(const std::optional<CivilTime>& from, const std::optional<CivilTime>& to) {
    return from && to ? FloorToInt(static_cast<double>(*to - *from)) : 0;
}

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

BoatGraphs::BoatGraphs(AppState& app, RaceDisp& form) : app_(app), form_(form) {}

void BoatGraphs::DrawBoatGraphs() {
    Surface& page = form_.GPIC;
    SettleSpan();
    bottom_ = page.Height() - BottomMargin;
    PlaceWindButton();
    page.Cls();
    page.FontSize = 9 * app_.settings.FontScale;
    page.DrawWidth = 1;
    app_.display.GraphTimeScale = GraphTimeScaleOf(app_.race, page.Height());
    DrawGround();
    const bool timed = app_.display.GraphTimeScale > 0;
    if (HasWind() && timed) DrawWindSpeed();
    dirOffset_ = GraphDirOffset(app_.race);
    DrawDirectionGrid();
    DrawSpeedGrid();
    if (dirOffset_ < 0) dirOffset_ += 360.0;
    if (!timed) return;
    DrawTimeGrid();
    for (const bool course : {true, false})
        for (const bool inFocus : {false, true}) DrawBoats(inFocus, course);
    if (HasWind()) {
        DrawWindDirection(0, Black);
        DrawWindDirection(180, ReciprocalGrey);
    }
    DrawStartAndFinish();
}

void BoatGraphs::SettleSpan() {
    RaceControl& race = app_.race;
    if (race.ReplaySpan != 0) return;
    race.ReplaySpan = SecondsBetween(race.DataFromTime, race.DataToTime);
    race.RaceDuration =
        SecondsBetween(ParseDateTime(race.StartTimeText), ParseDateTime(race.FinishTimeText));
}

void BoatGraphs::PlaceWindButton() {
    if (!app_.settings.EditMode) return;
    form_.Command12.Move(5, 5, 113, 17);
    form_.Command12.Show();
}

double BoatGraphs::Y(double seconds) const {
    return TimeToY(app_.race, app_.display.GraphTimeScale, seconds);
}

bool BoatGraphs::InRace(double seconds) const {
    return seconds >= EarliestShown && seconds < app_.race.RaceDuration;
}

void BoatGraphs::DrawGround() {
    Surface& page = form_.GPIC;
    page.FilledBox(CompassLeft, ChartTop, CompassRight, bottom_, White);
    page.FilledBox(SpeedAxisLeft, ChartTop, SpeedAxisRight, bottom_, White);
    page.ForeColor = Black;
    PrintCentred(page, (CompassLeft + CompassRight) / 2, 10,
                 HasWind() ? "BCO (Mag) & TWD(Mag) " : "BCO (Mag)");
    PrintCentred(page, (SpeedAxisLeft + SpeedAxisRight) / 2, 10, HasWind() ? "BSP & TWS" : "BSP");
}

void BoatGraphs::DrawWindSpeed() {
    Surface& page = form_.GPIC;
    page.Fill = FillStyle::Solid;
    page.FillColor = WindArea;
    page.ForeColor = WindArea;
    Point last;
    for (int i = 1; i <= app_.wind.WindCount; ++i) {
        const Point at{WindSpeedToX(app_.wind.WindSpeeds[i].value_or(0.0)), Y(app_.wind.WindTimes[i])};
        if (i > 1) {
            if (last.Y < bottom_) {
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
    for (int i = 0; i <= 35; ++i) {
        const double x = DirectionToX(dirOffset_, i * 10);
        page.Line(x, ChartTop, x, bottom_, i % 3 == 0 ? CompassBlue : GridGrey);
    }
    for (int i = 0; i <= 33; i += 3)
        PrintCentred(page, DirectionToX(dirOffset_, i * 10), bottom_ + 4, std::to_string(i * 10));
}

void BoatGraphs::DrawSpeedGrid() {
    Surface& page = form_.GPIC;
    for (int i = 0; i <= 10; ++i) {
        const double x = SpeedToX(i);
        page.Line(x, ChartTop, x, bottom_, i % 5 == 0 ? SpeedGreen : GridGrey);
        PrintCentred(page, x, bottom_ + 4, std::to_string(i));
        page.ForeColor = WindRed;
        PrintCentred(page, x, bottom_ + 20, std::to_string(i * 2));
        page.ForeColor = Black;
    }
}

void BoatGraphs::DrawTimeGrid() {
    Surface& page = form_.GPIC;
    // A race of days has lines for whole hours, half days and so on, so that the grid never gets denser
    // than the pixels are.
    int step = 1;
    const int last = app_.race.RaceDuration / GridSeconds;
    while (step < last && app_.display.GraphTimeScale * GridSeconds * step < NarrowestGrid) step *= 12;
    for (int i = 0; i <= last; i += step) {
        const double y = Y(static_cast<double>(i) * GridSeconds);
        page.Line(CompassLeft + 1, y, CompassRight - 1, y, GridColour(i));
        page.Line(SpeedAxisLeft + 1, y, SpeedAxisRight - 1, y, GridColour(i));
        page.PrintAt(5, y - 5, GridLabel(i));
    }
}

void BoatGraphs::DrawBoats(bool inFocus, bool course) {
    std::vector<Point> line;
    for (int boat = app_.race.BoatCount; boat >= 1; --boat) {
        if (form_.Bnam[boat - 1].Value() != inFocus) continue;
        TraceBoat(boat, course, line);
        ThinRows(line);
        form_.GPIC.Polyline(line, inFocus ? app_.display.BoatColour[boat] : PaleBoat);
    }
}

void BoatGraphs::TraceBoat(int boat, bool course, std::vector<Point>& line) const {
    line.clear();
    const auto& times = app_.tracks.TrackTime[boat];
    const auto& values = (course ? app_.tracks.TrackCourse : app_.tracks.TrackSpeed)[boat];
    for (int point = 1; point <= app_.tracks.TrackPointCount[boat]; ++point) {
        if (!InRace(times[point])) continue;
        const double x = course ? DirectionToX(dirOffset_, values[point] - app_.race.MagVariation)
                                : SpeedToX(values[point]);
        line.push_back({x, Y(times[point])});
    }
}

void BoatGraphs::DrawWindDirection(double turn, Colour colour) {
    std::vector<Point> run;
    for (int i = 1; i <= app_.wind.WindCount; ++i) {
        // Each sample ends a segment only while it lies in the race, but always starts the next one.
        if (!InRace(app_.wind.WindTimes[i])) {
            if (run.size() > 1) form_.GPIC.Polyline(run, colour);
            run.clear();
        }
        run.push_back(
            {DirectionToX(dirOffset_, app_.wind.WindDirections[i] + turn), Y(app_.wind.WindTimes[i])});
    }
    if (run.size() > 1) form_.GPIC.Polyline(run, colour);
}

void BoatGraphs::DrawStartAndFinish() {
    for (const double y : {Y(0), TimeAxisMargin})
        form_.GPIC.Line(0, y, form_.MapSide(), y, StartFinishGreen);
}

}  // namespace keelview
