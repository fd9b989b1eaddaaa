#include "display/raster.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "display/raster_blend.h"

namespace keelview::raster {

namespace {

// Lines that leave their row or column by less than this, in pixels, count as level or upright.
constexpr double AxisTolerance = 0.02;

/// How much of the pixel from `cell` to `cell` + 1 lies between two places of its axis, 0 to 1.
double Overlap(double low, double high, double cell) {
    return std::clamp(std::min(high, cell + 1.0) - std::max(low, cell), 0.0, 1.0);
}

/// Tells step by step whether the dashes of a line cover a place; they are counted from its start, so that
/// they stand still where the line is cut.
class DashWalk {
  public:
    DashWalk(const Stroke& stroke, double signedDistance, double step) : dash_(stroke.Dash), step_(step) {
        if (dash_ <= 0.0) return;
        phase_ = std::fmod(signedDistance, 2.0 * dash_);
        if (phase_ < 0.0) phase_ += 2.0 * dash_;
    }
    /// Whether this place is covered; moves on to the next.
    bool Next() {
        if (dash_ <= 0.0) return true;
        const bool covered = phase_ < dash_;
        phase_ += step_;
        while (phase_ >= 2.0 * dash_) phase_ -= 2.0 * dash_;
        return covered;
    }

  private:
    double dash_;
    double step_;
    double phase_ = 0.0;
};

/// To the nearest whole number, halves away from 0, as std::round does; the value fits in an int.
int Rounded(double value) {
    return static_cast<int>(value + (value < 0.0 ? -0.5 : 0.5));  // NOLINT(bugprone-incorrect-roundings)
}

/// Sets the pixels of a box, without its right and its bottom, as far as it lies on the image.
void FillBox(Pixels& image, int left, int top, int right, int bottom, Pixel colour) {
    const int x1 = std::max(left, 0);
    const int x2 = std::min(right, image.Width);
    const int y2 = std::min(bottom, image.Height);
    for (int y = std::max(top, 0); y < y2 && x1 < x2; ++y) {
        Pixel* row = image.Row(y);
        std::fill(row + x1, row + x2, colour);
    }
}

/// A line within AxisTolerance of level or upright, as whole pixels.
void DrawOnAxis(Pixels& image, const Point& from, const Point& to, const Point& origin,
                const Stroke& stroke, bool level) {
    const int thick = std::max(1, Rounded(stroke.Width));
    const double reach = stroke.Width / 2.0;
    const int side = Rounded((level ? from.Y : from.X) - reach);
    const double first = level ? from.X : from.Y;
    const double last = level ? to.X : to.Y;
    const int low = Rounded(std::min(first, last) - reach);
    const int high = std::max(low + 1, Rounded(std::max(first, last) + reach));
    const auto fill = [&](int begin, int end) {
        if (level)
            FillBox(image, begin, std::max(side, stroke.FirstRow), end,
                    std::min(side + thick, stroke.EndRow), stroke.Colour);
        else
            FillBox(image, side, std::max(begin, stroke.FirstRow), side + thick,
                    std::min(end, stroke.EndRow), stroke.Colour);
    };
    if (stroke.Dash <= 0.0) {
        fill(low, high);
        return;
    }
    DashWalk dashes(stroke, low + 0.5 - (level ? origin.X : origin.Y), 1.0);
    for (int at = low; at < high; ++at)
        if (dashes.Next()) fill(at, at + 1);
}

/// The largest whole number that is not above a value that fits in an int; the innermost loops call it.
int FloorOf(double value) {
    const int whole = static_cast<int>(value);
    return whole - static_cast<int>(whole > value);
}

// Places across a slanting line are walked as whole numbers of 2^-32 pixels, and covered in 2^-8.
using Fixed = std::int64_t;
constexpr int FixedBits = 32;
constexpr int CoverBits = 8;

Fixed ToFixed(double value) {
    return static_cast<Fixed>(value * static_cast<double>(Fixed{1} << FixedBits));
}

int ToCoverSteps(Fixed value) {
    constexpr int drop = FixedBits - CoverBits;
    return static_cast<int>((value + (Fixed{1} << (drop - 1))) >> drop);
}

/// The pixels that may be drawn across a line, without the end.
struct Across {
    int First;
    int End;
};

/// Blends the pixels across a line, from `low` to `high` in steps of coverage; `apart` leads from one pixel
/// to the next. Of the line's length `along` of 256 lie in these pixels.
void BlendAcross(Pixel* pixels, int apart, Across limits, int low, int high, int along, Pixel colour) {
    const int last = std::min(limits.End - 1, (high - 1) >> CoverBits);
    for (int v = std::max(limits.First, low >> CoverBits); v <= last; ++v) {
        const int begin = v << CoverBits;
        const int cover = (std::min(high, begin + FullCover) - std::max(low, begin)) * along >> CoverBits;
        Blend(pixels[v * apart], colour, cover);
    }
}

/// A slanting line, walked along its longer axis. `Steep` exchanges the axes.
template <bool Steep>
void DrawSlanting(Pixels& image, const Point& from, const Point& to, const Point& origin,
                  const Stroke& stroke) {
    double u1 = Steep ? from.Y : from.X;
    double v1 = Steep ? from.X : from.Y;
    double u2 = Steep ? to.Y : to.X;
    double v2 = Steep ? to.X : to.Y;
    if (u1 > u2) {
        std::swap(u1, u2);
        std::swap(v1, v2);
    }
    const double slope = (v2 - v1) / (u2 - u1);
    const double stretch = std::sqrt(1.0 + slope * slope);  // length per step of the walk
    const double half = stroke.Width / 2.0 * stretch;
    const double reach = stroke.Width / 2.0 / stretch;
    const double begin = u1 - reach;
    const double end = u2 + reach;
    const Across rows{stroke.FirstRow, std::min(stroke.EndRow, image.Height)};
    const Across columns{0, image.Width};
    const Across& walked = Steep ? rows : columns;
    const Across& across = Steep ? columns : rows;
    const int first = std::max(walked.First, FloorOf(begin));
    const int last = std::min(walked.End, -FloorOf(-end)) - 1;
    DashWalk dashes(stroke, (first + 0.5 - (Steep ? origin.Y : origin.X)) * stretch, stretch);
    const Fixed step = ToFixed(slope);
    const Fixed thick = ToFixed(2.0 * half);
    Fixed low = ToFixed(v1 + slope * (first + 0.5 - u1) - half);
    for (int u = first; u <= last; ++u, low += step) {
        if (!dashes.Next()) continue;
        const bool whole = u >= begin && u + 1 <= end;
        const int along = whole ? FullCover : CoverOf(Overlap(begin, end, u));
        Pixel* pixels = Steep ? image.Row(u) : image.Row(0) + u;
        BlendAcross(pixels, Steep ? 1 : image.Width, across, ToCoverSteps(low), ToCoverSteps(low + thick),
                    along, stroke.Colour);
    }
}

}  // namespace

// Liang and Barsky, "A New Concept and Method for Line Clipping", ACM TOG 3 (1984).
bool ClipLine(const Pixels& image, double margin, Point& from, Point& to) {
    if (!Finite(from) || !Finite(to)) return false;
    const Bounds reach = ReachOf(image, {.Width = margin});
    if ((SideOf(reach, from) | SideOf(reach, to)) == 0) return true;
    const double dx = to.X - from.X;
    const double dy = to.Y - from.Y;
    double enter = 0.0;
    double leave = 1.0;
    const auto cut = [&](double direction, double distance) {
        if (direction == 0.0) return distance >= 0.0;
        const double at = distance / direction;
        if (direction < 0.0)
            enter = std::max(enter, at);
        else
            leave = std::min(leave, at);
        return enter <= leave;
    };
    if (!cut(-dx, from.X + margin) || !cut(dx, image.Width + margin - from.X) ||
        !cut(-dy, from.Y + margin) || !cut(dy, image.Height + margin - from.Y))
        return false;
    const Point start = from;
    if (leave < 1.0) to = {start.X + leave * dx, start.Y + leave * dy};
    if (enter > 0.0) from = {start.X + enter * dx, start.Y + enter * dy};
    return true;
}

void DrawSegment(Pixels& image, Point from, Point to, const Stroke& stroke) {
    const Point origin = from;
    const double room = stroke.Width + 2.0;
    if (!ClipLine(image, room, from, to)) return;
    const double wide = std::abs(to.X - from.X);
    const double high = std::abs(to.Y - from.Y);
    if (high < AxisTolerance)
        DrawOnAxis(image, from, to, origin, stroke, true);
    else if (wide < AxisTolerance)
        DrawOnAxis(image, from, to, origin, stroke, false);
    else if (wide >= high)
        DrawSlanting<false>(image, from, to, origin, stroke);
    else
        DrawSlanting<true>(image, from, to, origin, stroke);
}

Stroke InBand(const Stroke& stroke, const Pixels& image, int band, int bands) {
    Stroke part = stroke;
    part.FirstRow = image.Height * band / bands;
    part.EndRow = image.Height * (band + 1) / bands;
    return part;
}

void FillRows(Pixels& image, double left, double top, double right, double bottom, Pixel colour) {
    const auto within = [](double value, int limit) {
        return std::isnan(value) ? 0 : static_cast<int>(std::clamp(value, 0.0, static_cast<double>(limit)));
    };
    FillBox(image, within(left, image.Width), within(top, image.Height), within(right, image.Width),
            within(bottom, image.Height), colour);
}

}  // namespace keelview::raster
