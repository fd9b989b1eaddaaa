#pragma once

#include <optional>
#include <span>
#include <vector>

#include "base/point.h"
#include "display/canvas.h"
#include "display/colour.h"

namespace keelview {

/// A stripe on a line.
struct LineStripe {
    Point From;
    Point To;
    Colour Ink = Black;
};

/// The stripes along a way of straight pieces (pixels): all of them in a group, and such groups again and
/// again from the begin of the way on. No stripes, or a way without length, give none.
std::vector<LineStripe> StripesAlong(std::span<const Point> way, std::span<const Colour> stripes);

/// The ink of the stripe that covers a place so many pixels from where a line begins; nothing between them.
std::optional<Colour> StripeAt(double along, std::span<const Colour> stripes);

/// Joined lines through points in the canvas's pixels, DrawWidth wide, with stripes along them.
void StripedPolyline(Canvas& canvas, std::span<const Point> way, Colour ground,
                     std::span<const Colour> stripes);

/// A field filled with a colour, with upright stripes at its right end; those for which it has no room are
/// left out.
void StripedBox(Canvas& canvas, const Point& topLeft, const Point& bottomRight, Colour ground,
                std::span<const Colour> stripes);

/// Width of a stripe at the end of a field, and from one to the next, pixels.
inline constexpr double FieldStripe = 3.0;
inline constexpr double FieldStripePitch = 5.0;

}  // namespace keelview
