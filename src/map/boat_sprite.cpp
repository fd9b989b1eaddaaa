#include "map/boat_sprite.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <tuple>

#include "base/angles.h"
#include "map/screen_geometry.h"

namespace keelview {

namespace {

constexpr double MinBoatSize = 15.0;
constexpr double SmallCraftLength = 3.0;  // metres
constexpr double SmallestSail = 5.0;      // pixels of the sprite below which no sail is drawn
constexpr double SailSwing = 0.4;         // share of the wind angle that the boom swings out

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

BoatShape ShapeFor(double boatLength) {
    if (boatLength < SmallCraftLength) return {SmallHull, SmallSail, 0.3};
    return {LargeHull, LargeSail, 0.1};
}

/// A closed polygon of corners round a place; angles grow by `turn` (1 or -1) from `direction`.
void FillCorners(Sprite& sprite, std::span<const Corner> corners, const Point& from, double side,
                 double direction, double turn, Colour colour, Colour edge) {
    std::array<Point, SmallHull.size()> points;
    std::ranges::transform(corners, points.begin(), [&](const Corner& corner) {
        return PointBeside(from, direction + corner.Angle * turn, corner.Radius * side);
    });
    sprite.ForeColor = edge;
    sprite.FillColor = colour;
    sprite.Polygon(std::span(points).first(corners.size()));
}

/// Half the breadth of a hull at a distance before its middle, both in multiples of the sprite's side.
double HalfBreadthAt(std::span<const Corner> hull, double before) {
    const auto along = [](const Corner& corner) {
        return corner.Radius * std::cos(corner.Angle * DegToRad);
    };
    const auto beside = [](const Corner& corner) {
        return corner.Radius * std::sin(corner.Angle * DegToRad);
    };
    for (std::size_t i = 1; i < hull.size() / 2 + 1; ++i) {  // down the starboard side
        const double from = along(hull[i - 1]);
        const double to = along(hull[i]);
        if (before > from || before < to) continue;
        const double share = (from - before) / (from - to);
        return beside(hull[i - 1]) + (beside(hull[i]) - beside(hull[i - 1])) * share;
    }
    return 0.0;
}

/// Stripes across the hull, the first where it is broad enough and no sail covers it.
void DrawStripes(Sprite& sprite, std::span<const Corner> hull, const BoatLook& look) {
    constexpr double first = 0.27, pitch = 0.14, breadth = 0.08;  // multiples of the side
    const Point middle{look.Side / 2, look.Side / 2};
    sprite.DrawWidth = std::max(1, static_cast<int>(std::lround(breadth * look.Side)));
    double before = first;
    for (const Colour stripe : look.Stripes) {
        const Point station = PointBeside(middle, look.Heading, before * look.Side);
        const double reach = HalfBreadthAt(hull, before) * look.Side;
        const Point port = PointBeside(station, look.Heading - 90, reach);
        const Point starboard = PointBeside(station, look.Heading + 90, reach);
        sprite.Line(port.X, port.Y, starboard.X, starboard.Y, stripe);
        before -= pitch;
    }
    sprite.DrawWidth = 1;
}

void DrawRing(Sprite& sprite, double side) {
    sprite.Fill = FillStyle::None;
    sprite.DrawWidth = 3;
    sprite.Circle(side / 2, side / 2, side / 2 - 1, Red);
    sprite.DrawWidth = 1;
    sprite.Fill = FillStyle::Solid;
}

}  // namespace

SpriteSize SizeOnMap(double boatLength, double pixelsPerMetre, bool enlarge) {
    constexpr double Smallest = 3.0;
    constexpr double Largest = 4000.0;  // larger than any map; keeps the image in bounds at any zoom
    const double side = boatLength * pixelsPerMetre;
    const bool realSize = side >= MinBoatSize || !enlarge;
    return {realSize ? std::min(std::max(side, Smallest), Largest) : MinBoatSize, realSize};
}

double AngleInPicture(double degrees, double side) {
    constexpr double off = 0.1;  // pixels
    const double step = off / (side / 2) / DegToRad;
    return std::round(degrees / step) * step;
}

bool SamePicture(const BoatLook& one, const BoatLook& other) {
    const auto plain = [](const BoatLook& look) {
        return std::tuple(look.Side, look.Length, look.Heading, look.WindAngle, look.Ring, look.Hull,
                          look.Edge, look.Stripes.data(), look.Stripes.size());
    };
    return plain(one) == plain(other);
}

void DrawBoatSprite(Sprite& sprite, const BoatLook& look) {
    const double side = look.Side;
    sprite.SetSize(side, side);
    sprite.Fill = FillStyle::Solid;
    if (look.Ring) DrawRing(sprite, side);
    const BoatShape shape = ShapeFor(look.Length);
    const Point middle{side / 2, side / 2};
    FillCorners(sprite, shape.Hull, middle, side, look.Heading, 1, look.Hull, look.Edge);
    DrawStripes(sprite, shape.Hull, look);
    if (side <= SmallestSail) return;
    const Point mast = PointBeside(middle, look.Heading, shape.Mast * side);
    FillCorners(sprite, shape.Sail, mast, side, look.Heading + 180 + look.WindAngle * SailSwing,
                look.WindAngle > 0 ? 1 : -1, White, White);
    sprite.Circle(mast.X, mast.Y, 1, White);
}

}  // namespace keelview
