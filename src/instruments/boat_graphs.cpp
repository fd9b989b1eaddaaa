#include "instruments/boat_graphs.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "analysis/track_smoothing.h"
#include "base/numbers.h"
#include "base/parallel.h"
#include "instruments/page_text.h"
#include "session/livery.h"

namespace keelview {

namespace {

constexpr double ChartTop = 30.0;
constexpr double BottomMargin = 40.0;
constexpr int EarliestShown = -60;  // seconds from the start
constexpr int GridSeconds = 300;
constexpr double NarrowestGrid = 2.0;  // pixels between two lines of the time grid
constexpr double LineReach = 4.0;      // pixels from a line to a pointer that means it

constexpr Colour GridGrey = Rgb(192, 192, 192);
constexpr Colour CompassBlue = Rgb(96, 96, 255);
constexpr Colour SpeedGreen = Rgb(128, 255, 128);
constexpr Colour WindRed = Rgb(255, 128, 128);
constexpr Colour WindArea = Rgb(255, 225, 225);
constexpr Colour PaleBoat = Rgb(225, 225, 225);
constexpr Colour ReciprocalGrey = Rgb(128, 128, 128);

/// Calls each(begin, end) for each piece of the wind between two times, cut off there.
template <class Each>
void ForEachPiece(const WindData& wind, int from, int to, Each each) {
    for (int sample = 1; sample < wind.Count(); ++sample) {
        const int begin = std::max(wind[sample].WindTime, from);
        const int end = std::min(wind[sample + 1].WindTime, to);
        if (begin < end) each(BetweenSamples(wind, sample, begin), BetweenSamples(wind, sample, end));
    }
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

void DrawLine(Surface& page, const GraphLine& line, Colour colour) {
    std::vector<ColouredLine> lines;
    line.AddTo(lines, colour);
    page.Lines(lines);
}

}  // namespace

BoatGraphs::BoatGraphs(const AppState& app, RaceDisp& form) : app_(app), form_(form) {
    for (OptionButton* option : {&form_.Option13, &form_.Option14, &form_.Option15})
        option->OnClick = [this] {
            curves_.Clear();
            Repaint(Changed::Mode);
        };
}

void BoatGraphs::Repaint(Changed changed) {
    const Changed mine =
        Changed::Race | Changed::Boats | Changed::Wind | Changed::Size | Changed::Focus | Changed::Mode;
    const bool shown = app_.shown.ViewMode == ViewKind::Graph;
    if (!shown || Any(changed, Changed::Race | Changed::Boats)) curves_.Clear();
    if (Any(changed, Changed::Race | Changed::Boats | Changed::Wind)) fastest_.reset();
    if (!shown || !Any(changed, mine)) return;
    if (!fastest_) fastest_ = Fastest();
    if (changed != Changed::Focus) {
        PlaceControls();
        PutLinesTogether();
    }
    Draw();
}

void BoatGraphs::Show(const Moment& now) {
    if (app_.shown.ViewMode != ViewKind::Graph || app_.shown.PointerOnTimeBar) return;
    const double y = Times().Y(now.Time);
    form_.Line1.Place(GraphColumns::Left, y, form_.GPIC.Width(), y);
}

void BoatGraphs::Draw() {
    Surface& page = form_.GPIC;
    page.Cls();
    page.FontSize = 9 * app_.settings.FontScale;
    page.DrawWidth = 1;
    DrawGround();
    const bool timed = !Times().Empty();
    const bool hasWind = HasWindFile(app_.race);
    if (hasWind && timed) DrawWindSpeed();
    DrawDirectionGrid();
    DrawSpeedGrid();
    if (!timed) return;
    DrawTimeGrid();
    DrawBoats();
    if (hasWind) {
        DrawWindDirection(0, Black);
        DrawWindDirection(180, ReciprocalGrey);
    }
    DrawStartAndFinish();
}

double BoatGraphs::ChartBottom() const {
    return form_.GPIC.Height() - BottomMargin;
}

double BoatGraphs::SmoothingSeconds() const {
    if (form_.Option14.Value()) return 5.0;
    return form_.Option15.Value() ? 15.0 : 0.0;
}

void BoatGraphs::PlaceControls() {
    Frame& choice = form_.Frame5;
    choice.Move(Compass().Right() + GraphColumns::Gap / 2 - choice.Width() / 2, choice.Top(),
                choice.Width(), choice.Height());
    if (app_.settings.EditMode) form_.Command12.Show();
}

double BoatGraphs::Fastest() const {
    double fastest = 0.0;
    for (const Track& track : app_.tracks.Boats)
        fastest = std::max(fastest, FastestHeld(track, EarliestShown, app_.race.RaceDuration));
    if (!HasWindFile(app_.race)) return fastest;
    ForEachPiece(app_.wind, EarliestShown, app_.race.RaceDuration,
                 [&](const WindSample& begin, const WindSample& end) {
                     const double knots = std::max(begin.WindSpeed.value_or(0), end.WindSpeed.value_or(0));
                     fastest = std::max(fastest, knots / SpeedAxis::WindKnots);
                 });
    return fastest;
}

void BoatGraphs::DrawGround() {
    Surface& page = form_.GPIC;
    const bool hasWind = HasWindFile(app_.race);
    const CompassAxis compass = Compass();
    const SpeedAxis speeds = Speeds();
    page.FilledBox(compass.Left(), ChartTop, compass.Right(), ChartBottom(), White);
    page.FilledBox(speeds.Left(), ChartTop, speeds.Right(), ChartBottom(), White);
    page.ForeColor = Black;
    PrintCentred(page, compass.Middle(), 10, hasWind ? "BCO (Mag) & TWD(Mag) " : "BCO (Mag)");
    PrintCentred(page, speeds.Middle(), 10, hasWind ? "BSP & TWS" : "BSP");
}

void BoatGraphs::DrawWindSpeed() {
    Surface& page = form_.GPIC;
    const TimeAxis times = Times();
    const SpeedAxis speeds = Speeds();
    GraphLine line;
    std::vector<Point> area;  // a corner in each row of pixels, at the strongest wind there
    const auto addPlace = [&](const WindSample& sample) {
        const Point at{speeds.WindX(sample.WindSpeed.value_or(0)), times.Y(sample.WindTime)};
        line.To(at.X, at.Y);
        if (area.empty() || std::round(area.back().Y) != std::round(at.Y))
            area.push_back(at);
        else
            area.back().X = std::max(area.back().X, at.X);
    };
    ForEachPiece(app_.wind, times.TimeUnder(ChartBottom()), app_.race.RaceDuration,
                 [&](const WindSample& begin, const WindSample& end) {
                     addPlace(begin);
                     addPlace(end);
                 });
    if (area.empty()) return;
    area.insert(area.end(), {{speeds.Left(), area.back().Y}, {speeds.Left(), area.front().Y}});
    page.Fill = FillStyle::Solid;
    page.FillColor = WindArea;
    page.ForeColor = WindArea;
    page.Polygon(area);
    page.ForeColor = Black;
    line.End();
    DrawLine(page, line, WindRed);
}

void BoatGraphs::DrawDirectionGrid() {
    Surface& page = form_.GPIC;
    const CompassAxis compass = Compass();
    for (int i = 0; i <= 35; ++i) {
        const double x = compass.X(i * 10);
        page.Line(x, ChartTop, x, ChartBottom(), i % 3 == 0 ? CompassBlue : GridGrey);
        if (i % 3 == 0) PrintCentred(page, x, ChartBottom() + 4, std::to_string(i * 10));
    }
}

void BoatGraphs::DrawSpeedGrid() {
    Surface& page = form_.GPIC;
    const SpeedAxis speeds = Speeds();
    for (int i = 0; i <= speeds.Steps(); ++i) {
        const int knots = i * speeds.Step();
        const double x = speeds.X(knots);
        page.Line(x, ChartTop, x, ChartBottom(), i % 5 == 0 ? SpeedGreen : GridGrey);
        PrintCentred(page, x, ChartBottom() + 4, std::to_string(knots));
        page.ForeColor = ReadableOn(page.BackColor, WindRed);
        PrintCentred(page, x, ChartBottom() + 20, std::to_string(knots * SpeedAxis::WindKnots));
        page.ForeColor = Black;
    }
}

void BoatGraphs::DrawTimeGrid() {
    Surface& page = form_.GPIC;
    const TimeAxis axis = Times();
    const CompassAxis compass = Compass();
    const SpeedAxis speeds = Speeds();
    // A race of days has lines for whole hours, half days and so on, so that the grid never gets denser
    // than the pixels are.
    int step = 1;
    const int last = app_.race.RaceDuration / GridSeconds;
    while (step < last && axis.Scale() * GridSeconds * step < NarrowestGrid) step *= 12;
    for (int i = 0; i <= last; i += step) {
        const double y = axis.Y(static_cast<double>(i) * GridSeconds);
        page.Line(compass.Left() + 1, y, compass.Right() - 1, y, GridColour(i));
        page.Line(speeds.Left() + 1, y, speeds.Right() - 1, y, GridColour(i));
        page.PrintAt(5, y - 5, GridLabel(i));
    }
}

/// Boats in focus lie over the others, and of each the one of the lowest number on top.
void BoatGraphs::DrawBoats() {
    std::vector<ColouredLine> lines;
    for (const bool inFocus : {false, true})
        for (int boat = app_.tracks.Boats.Count(); boat >= 1; --boat) {
            if (form_.InFocus(boat) != inFocus) continue;
            const Colour ink = inFocus ? ReadableOn(form_.GPIC.BackColor, BoatColour(boat)) : PaleBoat;
            lines_[boat].Course.AddTo(lines, ink, inFocus);
            lines_[boat].Speed.AddTo(lines, ink, inFocus);
        }
    form_.GPIC.Lines(lines);
}

/// The lines stay the same until something but the focus changes.
void BoatGraphs::PutLinesTogether() {
    const int boats = Times().Empty() ? 0 : app_.tracks.Boats.Count();
    const bool known = curves_.Count() == boats;
    curves_.Resize(boats);
    lines_.Assign(boats, {});
    ForEachInParallel(boats, [&](int boat) {
        if (!known) curves_[boat] = CurveOf(boat);
        lines_[boat] = LinesOf(boat);
    });
}

std::vector<BoatGraphs::CurvePoint> BoatGraphs::CurveOf(int boat) const {
    std::vector<CurvePoint> curve;
    const Track& track = app_.tracks.Boats[boat];
    SmoothedTrack smoothed(track, SmoothingSeconds());
    for (int fix = 1; fix <= track.Count(); ++fix) {
        const double time = track.TrackTime[fix];
        if (time < EarliestShown || time >= app_.race.RaceDuration) continue;
        smoothed.GoTo(fix);
        curve.push_back(
            {time, static_cast<float>(smoothed.Course()), static_cast<float>(smoothed.Speed())});
    }
    return curve;
}

BoatGraphs::BoatLines BoatGraphs::LinesOf(int boat) const {
    BoatLines lines;
    const TimeAxis times = Times();
    const CompassAxis compass = Compass();
    const SpeedAxis speeds = Speeds();
    for (const CurvePoint& point : curves_[boat]) {
        const double y = times.Y(point.Time);
        lines.Course.ToDirection(compass, point.Course - app_.race.MagVariation, y);
        lines.Speed.To(speeds.X(point.Speed), y);
    }
    for (GraphLine* line : {&lines.Course, &lines.Speed}) {
        line->End();
        line->LayStripes(LiveryOf(boat).Stripes);
    }
    return lines;
}

void BoatGraphs::DrawWindDirection(double turn, Colour colour) {
    const TimeAxis times = Times();
    const CompassAxis compass = Compass();
    GraphLine line;
    const auto addPiece = [&](const WindSample& begin, const WindSample& end) {
        for (const WindSample* sample : {&begin, &end})
            line.ToDirection(compass, sample->WindDirection + turn, times.Y(sample->WindTime));
    };
    ForEachPiece(app_.wind, EarliestShown, app_.race.RaceDuration, addPiece);
    line.End();
    DrawLine(form_.GPIC, line, colour);
}

void BoatGraphs::DrawStartAndFinish() {
    for (const double y : {Times().Y(0), TimeAxis::Margin})
        form_.GPIC.Line(0, y, form_.MapSide(), y, StartFinishColour);
}

std::optional<int> BoatGraphs::BoatUnder(const Point& at) const {
    const bool onCompass = Compass().Holds(at.X);
    if (Times().Empty() || (!onCompass && !Speeds().Holds(at.X))) return {};
    std::optional<int> nearest;
    double least = LineReach;
    for (int boat = 1; boat <= app_.tracks.Boats.Count(); ++boat) {
        const double distance = DistanceTo(boat, onCompass ? Chart::Course : Chart::Speed, at);
        // Of lines upon each other the one that lies on top is meant: in focus, of the lowest number.
        const bool over = nearest && form_.InFocus(boat) && !form_.InFocus(*nearest);
        if (distance > LineReach || (distance >= least && !over && nearest)) continue;
        if (nearest && form_.InFocus(*nearest) && !form_.InFocus(boat)) continue;
        nearest = boat;
        least = distance;
    }
    return nearest;
}

/// Pixels across from a point to the nearest of what a boat's line covers in its row.
double BoatGraphs::DistanceTo(int boat, Chart chart, const Point& at) const {
    const Track& track = app_.tracks.Boats[boat];
    const double time = Times().TimeUnder(at.Y);
    const double halfRow = 0.5 / Times().Scale();
    const int first = FindSegment(track, std::max<double>(time - halfRow, EarliestShown));
    double distance = std::numeric_limits<double>::infinity();
    if (first == 0) return distance;
    const CompassAxis compass = Compass();
    const SpeedAxis speeds = Speeds();
    SmoothedTrack smoothed(track, SmoothingSeconds());
    std::optional<double> before;
    for (int fix = first; fix <= track.Count(); ++fix) {
        smoothed.GoTo(fix);
        const double x = chart == Chart::Course ? compass.X(smoothed.Course() - app_.race.MagVariation)
                                                : speeds.X(smoothed.Speed());
        const auto [left, right] = std::minmax({x, before.value_or(x)});
        if (right - left < compass.Width() / 2)
            distance = std::min(distance, std::max({left - at.X, at.X - right, 0.0}));
        before = x;
        if (track.TrackTime[fix] > time + halfRow) break;
    }
    return distance;
}

}  // namespace keelview
