#include "instruments/wind_panel.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <vector>

#include "base/angles.h"
#include "base/numbers.h"
#include "instruments/page_text.h"
#include "map/screen_geometry.h"

namespace keelview {

namespace {

// The compass, pixels.
constexpr double CompassRadius = 20.0;
constexpr double CompassDrop = 10.0;  // its centre lies this far below the middle, under the readouts
constexpr double NeedleLength = 12.0;
constexpr double NeedleHead = 0.6;  // of NeedleLength
constexpr int NeedleWidth = 5;
constexpr double ArrowDistance = 23.0;
constexpr double ArrowSide = 10.0;
constexpr double ArrowHalfAngle = 30.0;  // degrees

// The wind graph, pixels.
constexpr double GraphMargin = 5.0;
constexpr double GraphTop = 15.0;
constexpr double FinishY = 25.0;
constexpr double GraphPoints = 8.0;      // font size
constexpr double NarrowestRange = 30.0;  // degrees, so that a steady wind does not fill the graph
constexpr double RangeShare = 0.8;       // of the graph's width
constexpr double FirstTime = -60.0;      // seconds; nothing earlier is drawn
constexpr Colour GraphColour = Rgb(225, 225, 0);
constexpr Colour BandColour = Rgb(255, 255, 170);
constexpr Colour EstimateColour = Rgb(170, 0, 110);

Point CompassCentre(const Surface& compass) {
    const double half = compass.Width() / 2;
    return {half, half + CompassDrop};
}

}  // namespace

void WindPanel::Repaint(Changed changed) {
    if (Any(changed, Changed::Race)) windGraphOn_ = true;
    if (Any(changed, Changed::Race | Changed::Wind | Changed::Answers)) ShowForRace();
    stale_ = stale_ || Any(changed, Changed::Race | Changed::Wind | Changed::Colours);
}

void WindPanel::Show(const Moment& now) {
    const int second = HasWindFile(app_.race) ? FloorToInt(now.Time) : 0;
    const double up = app_.view.ScreenUpDirection;
    if (!stale_ && second == drawnSecond_ && up == drawnUp_) return;
    stale_ = false;
    drawnSecond_ = second;
    drawnUp_ = up;
    DrawNorthNeedle();
    DrawWindArrow(now.WindNow);
    ShowReadouts(now.WindNow);
    MoveCross(now);
}

// A file without samples says nothing that could be read off.
void WindPanel::ShowReadouts(const Wind& wind) {
    const bool known = HasSamples();
    form_.Text13.SetText(known ? NumberText(RoundDecimals(wind.DirectionMagnetic, 0)) : "");
    form_.Text14.SetText(known ? NumberText(wind.Speed) : "");
}

void WindPanel::DrawNorthNeedle() {
    Surface& compass = form_.Picture2;
    compass.Cls();
    compass.ForeColor = Black;
    compass.DrawWidth = 1;
    compass.Fill = FillStyle::Solid;
    compass.FillColor = White;
    const Point centre = CompassCentre(compass);
    compass.Circle(centre.X, centre.Y, CompassRadius);

    const double north = -app_.view.ScreenUpDirection;
    const Point tip = PointBeside(centre, north, NeedleLength);
    const Point tail = PointBeside(centre, north + 180, NeedleLength);
    compass.DrawWidth = NeedleWidth;
    compass.Line(tip.X, tip.Y, tail.X, tail.Y);
    for (const double side : {120.0, 240.0}) {
        const Point headEnd = PointBeside(tip, north + side, NeedleLength * NeedleHead);
        compass.Line(headEnd.X, headEnd.Y, tip.X, tip.Y);
    }
    compass.DrawWidth = 1;
}

// The arrow sits on the rim on the side that the wind comes from, and points at the centre.
void WindPanel::DrawWindArrow(const Wind& wind) {
    Surface& compass = form_.Picture2;
    const double direction = wind.DirectionTrue - app_.view.ScreenUpDirection;
    const Point tip = PointBeside(CompassCentre(compass), direction, ArrowDistance);
    const std::array<Point, 3> corners{tip, PointBeside(tip, direction + ArrowHalfAngle, ArrowSide),
                                       PointBeside(tip, direction - ArrowHalfAngle, ArrowSide)};
    compass.FillColor = compass.ForeColor = ReadableOn(app_.shown.SeaColour, Red);
    compass.Polygon(corners);
}

void WindPanel::ShowForRace() {
    const bool has = HasWindFile(app_.race);
    if (has) DrawWindGraph();
    form_.sWind.SetVisible(windGraphOn_ && has);
    form_.Text13.SetVisible(has);
    form_.Text14.SetVisible(has);
}

void WindPanel::ToggleWindGraph() {
    windGraphOn_ = !windGraphOn_;
    form_.sWind.SetVisible(windGraphOn_ && HasWindFile(app_.race));
}

void WindPanel::DrawWindGraph() {
    Surface& graph = form_.sWind;
    ScaleWindGraph();
    const Surface& compass = form_.Picture2;
    graph.Move(compass.Left(), compass.Top() + compass.Height(), side_, side_);
    graph.Cls();
    graph.FilledBox(GraphMargin, GraphTop, side_ - GraphMargin, side_ - GraphMargin, GraphColour);
    graph.FontSize = GraphPoints * app_.settings.FontScale;
    graph.ForeColor = InkOn(graph.BackColor);
    graph.PrintAt(30, 2, "TWD (mag)");
    if (HasSamples()) {
        DrawEstimate();
        DrawGraphLine();
        DrawGraphGrid();
    }
    for (const double y : {GraphY(0), FinishY}) graph.Line(0, y, side_, y, StartFinishColour);
}

// The first sample is the reference that the range is measured from, so that a range across north stays
// one.
void WindPanel::ScaleWindGraph() {
    side_ = form_.Picture2.Width();
    const int span = ReplaySpan(app_.race);
    timeScale_ = span > 0 ? (side_ - 20) / span : 0.0;
    const double reference = HasSamples() ? app_.wind[1].WindDirection : 0.0;
    double largest = 0.0;
    double smallest = 0.0;
    if (HasSamples()) {
        for (const WindSample& sample : app_.wind) {
            const double turn = TurnBetween(reference, sample.WindDirection);
            largest = std::max(largest, turn);
            smallest = std::min(smallest, turn);
        }
        for (const WindEstimateSample& sample : Estimated()) {
            const double turn = TurnBetween(reference, MagneticOf(sample));
            largest = std::max(largest, turn);
            smallest = std::min(smallest, turn);
        }
    }
    centreDir_ = reference + (largest + smallest) / 2;
    degScale_ = (side_ - 2 * GraphMargin) / std::max(largest - smallest, NarrowestRange) * RangeShare;
}

double WindPanel::GraphX(double direction) const {
    return side_ / 2 + TurnBetween(centreDir_, direction) * degScale_;
}

double WindPanel::GraphY(double time) const {
    return (app_.race.RaceDuration - time) * timeScale_ + GraphTop;
}

std::span<const WindEstimateSample> WindPanel::Estimated() const {
    const CoachAnswers* answers = coach_.Known();
    if (answers == nullptr) return {};
    return answers->Wind.Estimate().Samples;
}

double WindPanel::MagneticOf(const WindEstimateSample& sample) const {
    return sample.Direction - app_.race.MagVariation;
}

/// Its band as wide as the graph has room for.
void WindPanel::DrawEstimate() {
    std::vector<Point> left, right, middle;
    for (const WindEstimateSample& sample : Estimated()) {
        if (sample.Time < FirstTime || sample.Time > app_.race.RaceDuration) continue;
        const double y = GraphY(sample.Time);
        const double x = GraphX(MagneticOf(sample));
        const double half = sample.Sigma * degScale_;
        left.push_back({std::max(x - half, GraphMargin), y});
        right.push_back({std::min(x + half, side_ - GraphMargin), y});
        middle.push_back({x, y});
    }
    if (middle.empty()) return;
    left.insert(left.end(), right.rbegin(), right.rend());
    Surface& graph = form_.sWind;
    graph.Fill = FillStyle::Solid;
    graph.FillColor = graph.ForeColor = BandColour;
    graph.Polygon(left);
    graph.Polyline(middle, EstimateColour);
    graph.ForeColor = InkOn(graph.BackColor);
}

void WindPanel::DrawGraphLine() {
    std::vector<Point> ends;
    std::optional<Point> previous;
    for (const WindSample& sample : app_.wind) {
        const Point here{GraphX(sample.WindDirection), GraphY(sample.WindTime)};
        if (previous && sample.WindTime >= FirstTime && sample.WindTime < app_.race.RaceDuration)
            ends.insert(ends.end(), {*previous, here});
        previous = here;
    }
    form_.sWind.Segments(ends, Blue);
}

void WindPanel::DrawGraphGrid() {
    std::vector<Point> ends;
    for (int direction = 0; direction < 360; direction += 10) {
        const double x = GraphX(direction);
        if (x > GraphMargin - 1 && x < side_ - GraphMargin)
            ends.insert(ends.end(), {{x, GraphTop + 1}, {x, side_ - GraphMargin}});
    }
    form_.sWind.Segments(ends, White);
}

void WindPanel::MoveCross(const Moment& now) {
    form_.Line8.SetVisible(HasSamples());
    form_.Line9.SetVisible(HasSamples());
    const double x = GraphX(now.WindNow.DirectionMagnetic);
    const double y = GraphY(now.Time);
    form_.Line9.Place(x, GraphTop, x, side_ - GraphMargin);
    form_.Line8.Place(GraphMargin, y, side_ - GraphMargin, y);
}

}  // namespace keelview
