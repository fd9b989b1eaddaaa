#include "analysis/wind_panel.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "analysis/wind_at.h"
#include "base/angles.h"
#include "base/numbers.h"

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
constexpr Colour StartFinishColour = Rgb(0, 255, 0);

/// The point at a distance from another in a direction of the screen, degrees clockwise from its top.
Point Beside(const Point& from, double direction, double distance) {
    const double radians = direction * DegToRad;
    return {from.X + std::sin(radians) * distance, from.Y - std::cos(radians) * distance};
}

Point CompassCentre(const Surface& compass) {
    const double half = compass.Width() / 2;
    return {half, half + CompassDrop};
}

}  // namespace

WindPanel::WindPanel(AppState& app, RaceDisp& form) : app_(app), form_(form) {}

void WindPanel::UpdateWindPanel() {
    if (HasWindFile()) TakeWindOfMoment();
    DrawNorthNeedle();
    DrawWindArrow();
    ShowReadouts();
    MoveCross();
}

void WindPanel::TakeWindOfMoment() {
    const WindSample wind = WindAt(app_.race, app_.wind, app_.clock.ReplayTime);
    WindMoment& now = app_.windNow;
    now.WindDirMagNow = wind.DirectionMagnetic;
    now.WindNow = wind.DirectionTrue;
    now.WindSpeedNow = wind.Speed;
}

// A file without samples says nothing that could be read off.
void WindPanel::ShowReadouts() {
    const bool known = HasSamples();
    form_.Text13.SetText(known ? NumberText(RoundDecimals(app_.windNow.WindDirMagNow, 0)) : "");
    form_.Text14.SetText(known ? NumberText(app_.windNow.WindSpeedNow) : "");
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
    const Point tip = Beside(centre, north, NeedleLength);
    const Point tail = Beside(centre, north + 180, NeedleLength);
    compass.DrawWidth = NeedleWidth;
    compass.Line(tip.X, tip.Y, tail.X, tail.Y);
    for (const double side : {120.0, 240.0}) {
        const Point headEnd = Beside(tip, north + side, NeedleLength * NeedleHead);
        compass.Line(headEnd.X, headEnd.Y, tip.X, tip.Y);
    }
    compass.DrawWidth = 1;
}

// The arrow sits on the rim on the side that the wind comes from, and points at the centre.
void WindPanel::DrawWindArrow() {
    Surface& compass = form_.Picture2;
    const double direction = app_.windNow.WindNow - app_.view.ScreenUpDirection;
    const Point tip = Beside(CompassCentre(compass), direction, ArrowDistance);
    const std::array<Point, 3> corners{tip, Beside(tip, direction + ArrowHalfAngle, ArrowSide),
                                       Beside(tip, direction - ArrowHalfAngle, ArrowSide)};
    compass.FillColor = Red;
    compass.ForeColor = Red;
    compass.Polygon(corners);
}

void WindPanel::ShowForRace() {
    const bool has = HasWindFile();
    app_.display.WindGraphOn = has;
    if (has) DrawWindGraph();
    form_.sWind.SetVisible(has);
    form_.Text13.SetVisible(has);
    form_.Text14.SetVisible(has);
}

void WindPanel::ToggleWindGraph() {
    app_.display.WindGraphOn = !app_.display.WindGraphOn;
    form_.sWind.SetVisible(app_.display.WindGraphOn && HasWindFile());
}

void WindPanel::PlaceWindGraph() {
    const Surface& compass = form_.Picture2;
    const double side = compass.Width();
    form_.sWind.Move(compass.Left(), compass.Top() + compass.Height(), side, side);
}

void WindPanel::DrawWindGraph() {
    Surface& graph = form_.sWind;
    PlaceWindGraph();
    ScaleWindGraph();
    graph.Cls();
    graph.FilledBox(GraphMargin, GraphTop, side_ - GraphMargin, side_ - GraphMargin, GraphColour);
    graph.FontSize = GraphPoints * app_.settings.FontScale;
    graph.ForeColor = White;
    graph.PrintAt(30, 2, "TWD (mag)");
    if (HasSamples()) {
        DrawGraphLine();
        DrawGraphGrid();
    }
    for (const double y : {GraphY(0), FinishY}) graph.Line(0, y, side_, y, StartFinishColour);
    MoveCross();
}

// The first sample is the reference that the range is measured from, so that a range across north stays
// one.
void WindPanel::ScaleWindGraph() {
    side_ = form_.Picture2.Width();
    timeScale_ = app_.race.ReplaySpan > 0 ? (side_ - 20) / app_.race.ReplaySpan : 0.0;
    const auto& directions = app_.wind.WindDirections;
    const double reference = HasSamples() ? directions[1] : 0.0;
    double largest = 0.0;
    double smallest = 0.0;
    for (int sample = 1; HasSamples() && sample <= app_.wind.WindCount; ++sample) {
        const double turn = TurnBetween(reference, directions[static_cast<std::size_t>(sample)]);
        largest = std::max(largest, turn);
        smallest = std::min(smallest, turn);
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

void WindPanel::DrawGraphLine() {
    std::vector<Point> ends;
    Point previous;
    for (int sample = 1; sample <= app_.wind.WindCount; ++sample) {
        const auto i = static_cast<std::size_t>(sample);
        const double time = app_.wind.WindTimes[i];
        const Point here{GraphX(app_.wind.WindDirections[i]), GraphY(time)};
        if (sample > 1 && previous.X > 0 && time >= FirstTime && time < app_.race.RaceDuration)
            ends.insert(ends.end(), {previous, here});
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

void WindPanel::MoveCross() {
    form_.Line8.SetVisible(HasSamples());
    form_.Line9.SetVisible(HasSamples());
    const double x = GraphX(app_.windNow.WindDirMagNow);
    const double y = GraphY(app_.clock.ReplayTime);
    form_.Line9.Place(x, GraphTop, x, side_ - GraphMargin);
    form_.Line8.Place(GraphMargin, y, side_ - GraphMargin, y);
}

}  // namespace keelview
