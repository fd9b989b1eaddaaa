#include "map/boat_sprite.h"

#include <array>
#include <cmath>
#include <span>

#include "base/angles.h"

namespace keelview {

namespace {

constexpr double MinBoatSize = 15.0;
constexpr double DefaultBoatLength = 4.7;  // metres
constexpr double SmallCraftLength = 3.0;   // metres
constexpr double SmallestSail = 5.0;       // pixels of the sprite below which no sail is drawn
constexpr double SailSwing = 0.4;          // share of the wind angle that the boom swings out

/// A corner by its distance (a multiple of the sprite's side) and its angle in degrees.
struct Corner {
    double Radius;
    double Angle;
};

/// The shape of a hull and its sail, seen from above with the bow up.
struct BoatShape {
    std::span<const Corner> Hull;
    std::span<const Corner> Sail;  // from the mast, angles off the boom
    double Mast;                   // distance of the mast before the middle
};

constexpr std::array<Corner, 8> SmallHull{
    {{0.5, 10}, {0.3, 50}, {0.3, 120}, {0.5, 160}, {0.5, -160}, {0.3, -120}, {0.3, -50}, {0.5, -10}}};
constexpr std::array<Corner, 7> LargeHull{
    {{0.5, 0}, {0.17, 60}, {0.2, 120}, {0.5, 165}, {0.5, -165}, {0.2, -120}, {0.17, -60}}};
constexpr std::array<Corner, 4> SmallSail{{{0, 0}, {0.8, 0}, {0.35, 24}, {0.15, 45}}};
constexpr std::array<Corner, 4> LargeSail{{{0, 0}, {0.6, 0}, {0.25, 24}, {0.1, 45}}};

BoatShape ShapeOf(double boatLength) {
    if (boatLength < SmallCraftLength) return {SmallHull, SmallSail, 0.3};
    return {LargeHull, LargeSail, 0.1};
}

ScreenPoint Polar(const ScreenPoint& from, double radius, double degrees) {
    return {from.X + radius * std::sin(degrees * DegToRad), from.Y - radius * std::cos(degrees * DegToRad)};
}

/// The course of a boat in degrees; in the last second of a segment it already turns towards the next one.
double HeadingAt(const Tracks& tracks, int boat, int point, double time) {
    const auto& courses = tracks.TrackCourse[static_cast<std::size_t>(boat)];
    const auto k = static_cast<std::size_t>(point);
    const double left = tracks.TrackTime[static_cast<std::size_t>(boat)][k + 1] - time;
    if (left >= 1) return courses[k];
    return courses[k] + WrapDifference(courses[k + 1] - courses[k]) * (1 - left);
}

/// A closed polygon of corners round a place; angles grow by `turn` (1 or -1) from `direction`.
void FillCorners(Sprite& boat, std::span<const Corner> corners, const ScreenPoint& from, double side,
                 double direction, double turn) {
    std::array<Point, SmallHull.size()> points;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const ScreenPoint at = Polar(from, corners[i].Radius * side, direction + corners[i].Angle * turn);
        points[i] = {at.X, at.Y};
    }
    boat.Polygon(std::span(points).first(corners.size()));
}

void DrawRing(Sprite& boat, double side) {
    boat.Fill = FillStyle::None;
    boat.DrawWidth = 3;
    boat.Circle(side / 2, side / 2, side / 2 - 1, Red);
    boat.DrawWidth = 1;
    boat.Fill = FillStyle::Solid;
}

/// The side of a sprite in pixels; notes whether it is the boat's true size.
double SpriteSide(AppState& app, bool enlarge) {
    if (app.race.BoatLength == 0) app.race.BoatLength = DefaultBoatLength;
    double side = app.race.BoatLength * app.view.PixelsPerMetre;
    app.fleet.BoatRealSize = side >= MinBoatSize || !enlarge;
    if (!app.fleet.BoatRealSize) side = MinBoatSize;
    constexpr double Smallest = 3.0;
    constexpr double Largest = 4000.0;  // larger than any map; keeps the image in bounds at any zoom
    return std::min(std::max(side, Smallest), Largest);
}

/// A boat's row of the list, as it is before the film.
void FillRow(RaceDisp& form, int row, const std::string& name, Colour colour) {
    const auto place = [row](auto& array) {
        array[row].Move(array[0].Left(), array[0].Top() + RaceDisp::RowPitch * row, array[0].Width(),
                        array[0].Height());
        array[row].Show();
    };
    place(form.Bnam);
    place(form.Text5);
    place(form.Text6);
    place(form.Maru);
    form.Bnam[row].SetBackColor(colour);
    form.Bnam[row].SetForeColor(White);
    form.Bnam[row].SetCaption(name);
    form.Bnam[row].SetValue(true);
    form.Maru[row].SetValue(false);
    form.Text5[row].SetText("");
    form.Text6[row].SetText("");
    form.Bar[row].SetBorderColor(colour);
    form.Bar[row].SetVisible(false);
}

/// A boat's pictures on the map and on the overview.
void ReadySprites(RaceDisp& form, int row, Colour colour) {
    form.Boat[row].Fill = FillStyle::Solid;
    form.Boat[row].ForeColor = colour;
    form.Boat[row].SetVisible(false);
    Sprite& marker = form.BoatS[row];
    marker.FilledBox(0, 0, marker.Width() - 1, marker.Height() - 1, colour);
    marker.Box(0, 0, marker.Width() - 1, marker.Height() - 1, White);
    marker.SetVisible(false);
}

}  // namespace

void CreateBoatControls(AppState& app, RaceDisp& form) {
    const int count = app.race.BoatCount;
    form.Boat.Load(count);
    form.BoatS.Load(count);
    form.Bar.Load(count);
    form.Bnam.Load(count);
    form.Text5.Load(count);
    form.Text6.Load(count);
    form.Maru.Load(count);
    for (int row = 0; row < count; ++row) {
        const auto boat = static_cast<std::size_t>(row) + 1;
        FillRow(form, row, app.race.BoatName[boat], app.display.BoatColour[boat]);
        ReadySprites(form, row, app.display.BoatColour[boat]);
    }
    app.display.BoatControlsBuilt = true;
}

void RemoveBoatControls(AppState& app, RaceDisp& form) {
    if (app.race.BoatCount == 0) return;
    form.Boat.UnloadAbove0();
    form.BoatS.UnloadAbove0();
    form.Bar.UnloadAbove0();
    form.Bnam.UnloadAbove0();
    form.Text5.UnloadAbove0();
    form.Text6.UnloadAbove0();
    form.Maru.UnloadAbove0();
    app.display.BoatControlsBuilt = false;
}

double DrawBoatSprite(AppState& app, RaceDisp& form, int boat, int point, double time) {
    const double side = SpriteSide(app, form.Check10.Value());
    const BoatShape shape = ShapeOf(app.race.BoatLength);
    Sprite& sprite = form.Boat[boat - 1];
    const Colour colour = app.display.BoatColour[static_cast<std::size_t>(boat)];
    sprite.SetSize(side, side);
    if (form.Maru[boat - 1].Value() || app.display.HoverBoat == boat - 1) DrawRing(sprite, side);
    sprite.ForeColor = colour;
    sprite.FillColor = colour;

    const double heading = HeadingAt(app.tracks, boat, point, time);
    const double onScreen = WrapDifference(heading - app.view.ScreenUpDirection);
    const double windAngle = WrapDifference(app.windNow.WindNow - heading);
    const ScreenPoint middle{side / 2, side / 2};
    FillCorners(sprite, shape.Hull, middle, side, onScreen, 1);
    if (side > SmallestSail) {
        sprite.ForeColor = White;
        sprite.FillColor = White;
        const ScreenPoint mast = Polar(middle, shape.Mast * side, onScreen);
        FillCorners(sprite, shape.Sail, mast, side, onScreen + 180 + windAngle * SailSwing,
                    windAngle > 0 ? 1 : -1);
        sprite.Circle(mast.X, mast.Y, 1, White);
    }
    return side;
}

}  // namespace keelview
