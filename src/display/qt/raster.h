#pragma once

#include <cstdint>
#include <span>

namespace keelview::raster {

/// A pixel 0xFFRRGGBB.
using Pixel = std::uint32_t;

/// Pixels of an image in memory, row by row. Places are device pixels as real numbers: pixel (i, j) covers
/// i to i + 1 and j to j + 1.
struct Target {
    Pixel* Bits = nullptr;
    int Width = 0;
    int Height = 0;
    int Stride = 0;  ///< pixels from one row to the next
};

/// A place in device pixels.
struct Place {
    double X = 0.0;
    double Y = 0.0;
};

/// How a line is drawn, in device pixels. Dashes are as long as the gaps between them.
struct Stroke {
    Pixel Colour = 0xFF000000U;
    double Width = 1.0;
    double Dash = 0.0;  ///< length of a dash; 0 draws a whole line
};

/// Beyond which edges of the target, grown by `margin`, a place lies: one bit an edge. A line whose two
/// ends share a bit cannot touch the target.
inline unsigned SideOf(const Target& target, const Place& place, double margin) {
    return static_cast<unsigned>(place.X < -margin) |
           static_cast<unsigned>(place.X > target.Width + margin) << 1U |
           static_cast<unsigned>(place.Y < -margin) << 2U |
           static_cast<unsigned>(place.Y > target.Height + margin) << 3U;
}

/// Cuts a line to what lies on the target and `margin` pixels around it. False if nothing does, or if a
/// coordinate is no number or beyond all reason.
bool ClipLine(const Target& target, double margin, Place& from, Place& to);

/// A straight line with smooth edges. Upright and level lines are snapped to whole pixels, so that they are
/// crisp. Lines of any length cost only what lies on the target; coordinates that are no finite number draw
/// nothing.
void DrawSegment(const Target& target, Place from, Place to, const Stroke& stroke);

/// Fills the pixels from `left`, `top` up to but not including `right`, `bottom`, given as whole pixels.
void FillRows(const Target& target, double left, double top, double right, double bottom, Pixel colour);

/// A ring with smooth edges around a place; `radius` is that of its middle line. The inside is filled where
/// `filled` is set.
void DrawRing(const Target& target, Place centre, double radius, double width, Pixel colour, bool filled,
              Pixel fill);

/// Fills a closed polygon with smooth edges. Corners may lie anywhere; a corner that is no finite number
/// draws nothing.
void FillPolygon(const Target& target, std::span<const Place> corners, Pixel colour);

}  // namespace keelview::raster
