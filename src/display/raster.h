#pragma once

#include <algorithm>
#include <limits>
#include <span>

#include "base/point.h"
#include "display/pixels.h"

/// Draws into an image in memory. Points are device pixels as real numbers: pixel (i, j) covers i to i + 1
/// and j to j + 1. Colours are opaque.
namespace keelview::raster {

/// How a line is drawn, in device pixels. Dashes are as long as the gaps between them.
struct Stroke {
    Pixel Colour = 0xFF000000U;
    double Width = 1.0;
    double Dash = 0.0;  ///< length of a dash; 0 draws a whole line
    /// The rows that are drawn, from the first up to but not including the last: others may be drawn by
    /// another thread at the same time. All rows of the image at first.
    int FirstRow = 0;
    int EndRow = std::numeric_limits<int>::max();
};

/// What a stroke may draw on, grown by its width.
inline Bounds ReachOf(const Pixels& image, const Stroke& stroke) {
    return Bounds{
        {0.0, static_cast<double>(stroke.FirstRow)},
        {static_cast<double>(image.Width), static_cast<double>(std::min(image.Height, stroke.EndRow))}}
        .Grown(stroke.Width);
}

/// Beyond which edges of a box a point lies: one bit an edge. A line whose two ends share a bit does not
/// touch the box.
inline unsigned SideOf(const Bounds& box, const Point& at) {
    return static_cast<unsigned>(at.X < box.Low.X) | static_cast<unsigned>(at.X > box.High.X) << 1U |
           static_cast<unsigned>(at.Y < box.Low.Y) << 2U | static_cast<unsigned>(at.Y > box.High.Y) << 3U;
}

/// Cuts a line to what lies on the image and `margin` pixels around it. False if nothing does, or if a
/// coordinate is no number or beyond all reason.
bool ClipLine(const Pixels& image, double margin, Point& from, Point& to);

/// A straight line with smooth edges. Upright and level lines are snapped to whole pixels, so that they are
/// crisp. Lines of any length cost only what lies on the image; coordinates that are no finite number draw
/// nothing.
void DrawSegment(Pixels& image, Point from, Point to, const Stroke& stroke);

/// The image's rows cut into so many bands, from the top: the stroke as it draws in one of them, from 0.
Stroke InBand(const Stroke& stroke, const Pixels& image, int band, int bands);

/// Sets the pixels from `left`, `top` up to but not including `right`, `bottom`, given as whole pixels; a
/// clear colour wipes them out.
void FillRows(Pixels& image, double left, double top, double right, double bottom, Pixel colour);

/// A ring with smooth edges around a point; `radius` is that of its middle line. The inside is filled where
/// `filled` is set.
void DrawRing(Pixels& image, Point centre, double radius, double width, Pixel colour, bool filled,
              Pixel fill);

/// Fills a closed polygon with smooth edges. Corners may lie anywhere; a corner that is no finite number
/// draws nothing.
void FillPolygon(Pixels& image, std::span<const Point> corners, Pixel colour);

/// Lays a picture over the image with its top left at a device pixel, pixel upon pixel; it shows through
/// where it is clear.
void LayOver(Pixels& image, const Pixels& picture, int left, int top);

}  // namespace keelview::raster
