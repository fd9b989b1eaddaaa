#include "display/raster.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace keelview::raster {

namespace {

// Lines that leave their row or column by less than this, in pixels, count as level or upright.
constexpr double AxisTolerance = 0.02;

// Coverage is counted in 256 steps.
constexpr int FullCover = 256;

// The four parts of a pixel with room between them, so that all are multiplied at once.
constexpr std::uint64_t SpreadParts = 0x00FF00FF00FF00FFU;

std::uint64_t Spread(Pixel pixel) {
    return (pixel | static_cast<std::uint64_t>(pixel) << 24U) & SpreadParts;
}

Pixel Packed(std::uint64_t parts) {
    parts &= SpreadParts;
    return static_cast<Pixel>(parts | parts >> 24U);
}

// Half a step of a spread pixel's alpha, as it stands in the product of alpha and coverage.
constexpr std::uint64_t HalfOfAlpha = 0x0080000000000000U;

/// Lays an opaque colour over a pixel, which may be clear. Colours are rounded down, but the alpha to the
/// nearest: so a shape on a clear ground that is laid over a colour looks as if it had been drawn there.
void Blend(Pixel& under, Pixel colour, int cover) {
    if (cover >= FullCover) {
        under = colour;
        return;
    }
    const auto rest = static_cast<std::uint64_t>(FullCover - cover);
    const auto part = static_cast<std::uint64_t>(cover);
    under = Packed((Spread(under) * rest + Spread(colour) * part + HalfOfAlpha) >> 8U);
}

/// A pixel with its alpha laid over another; 255ths are rounded to the nearest.
Pixel Over(Pixel under, Pixel above) {
    const Pixel rest = 255U - (above >> 24U);
    const auto share = [rest](Pixel two) {
        const Pixel product = two * rest;
        return (product + (product >> 8U & 0x00FF00FFU) + 0x00800080U) >> 8U & 0x00FF00FFU;
    };
    return above + (share(under & 0x00FF00FFU) | share(under >> 8U & 0x00FF00FFU) << 8U);
}

int CoverOf(double share) {
    // A share is never negative, and this is the innermost step of every thick line.
    return static_cast<int>(share * FullCover + 0.5);  // NOLINT(bugprone-incorrect-roundings)
}

/// How much of the pixel from `cell` to `cell` + 1 lies between two places of its axis, 0 to 1.
double Overlap(double low, double high, double cell) {
    return std::clamp(std::min(high, cell + 1.0) - std::max(low, cell), 0.0, 1.0);
}

// Places further away than this are taken for no place at all; the arithmetic stays exact within it.
constexpr double FarAway = 1e12;

bool Finite(const Point& place) {
    return std::abs(place.X) < FarAway && std::abs(place.Y) < FarAway;
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

/// A line within AxisTolerance of level or upright, as whole pixels.
void DrawOnAxis(Pixels& image, const Point& from, const Point& to, const Point& origin,
                const Stroke& stroke, bool level) {
    const double thick = std::max(1.0, std::round(stroke.Width));
    const double reach = stroke.Width / 2.0;
    const double side = std::round((level ? from.Y : from.X) - stroke.Width / 2.0);
    const double first = level ? from.X : from.Y;
    const double last = level ? to.X : to.Y;
    const double low = std::round(std::min(first, last) - reach);
    const double high = std::max(low + 1.0, std::round(std::max(first, last) + reach));
    if (stroke.Dash <= 0.0) {
        if (level)
            FillRows(image, low, side, high, side + thick, stroke.Colour);
        else
            FillRows(image, side, low, side + thick, high, stroke.Colour);
        return;
    }
    DashWalk dashes(stroke, low + 0.5 - (level ? origin.X : origin.Y), 1.0);
    for (double at = low; at < high; ++at) {
        if (!dashes.Next()) continue;
        if (level)
            FillRows(image, at, side, at + 1.0, side + thick, stroke.Colour);
        else
            FillRows(image, side, at, side + thick, at + 1.0, stroke.Colour);
    }
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

/// Blends the pixels across a line, from `low` to `high` in steps of coverage; `apart` leads from one pixel
/// to the next. Of the line's length `along` of 256 lie in these pixels.
void BlendAcross(Pixel* pixels, int apart, int count, int low, int high, int along, Pixel colour) {
    const int last = std::min(count - 1, (high - 1) >> CoverBits);
    for (int v = std::max(0, low >> CoverBits); v <= last; ++v) {
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
    const int first = std::max(0, FloorOf(begin));
    const int last = std::min((Steep ? image.Height : image.Width) - 1, -FloorOf(-end) - 1);
    DashWalk dashes(stroke, (first + 0.5 - (Steep ? origin.Y : origin.X)) * stretch, stretch);
    const Fixed step = ToFixed(slope);
    const Fixed thick = ToFixed(2.0 * half);
    Fixed low = ToFixed(v1 + slope * (first + 0.5 - u1) - half);
    for (int u = first; u <= last; ++u, low += step) {
        if (!dashes.Next()) continue;
        const bool whole = u >= begin && u + 1 <= end;
        const int along = whole ? FullCover : CoverOf(Overlap(begin, end, u));
        Pixel* across = Steep ? image.Row(u) : image.Row(0) + u;
        BlendAcross(across, Steep ? 1 : image.Width, Steep ? image.Width : image.Height, ToCoverSteps(low),
                    ToCoverSteps(low + thick), along, stroke.Colour);
    }
}

/// The areas that a polygon's edges cover: each cell holds the change of coverage from the cell at its
/// left, so that a running sum along a row gives the coverage of each pixel.
class AreaSum {
  public:
    AreaSum(int left, int top, int right, int bottom)
        : left_(left), top_(top), width_(right - left), height_(bottom - top) {
        cells_.assign(static_cast<std::size_t>(width_ + 2) * static_cast<std::size_t>(height_), 0.0F);
    }

    void AddEdge(Point from, Point to) {
        if (from.Y == to.Y) return;
        const double sign = from.Y < to.Y ? 1.0 : -1.0;
        if (from.Y > to.Y) std::swap(from, to);
        const double slope = (to.X - from.X) / (to.Y - from.Y);
        const int first = std::max(0, static_cast<int>(std::floor(from.Y - top_)));
        const int last = std::min(height_ - 1, static_cast<int>(std::ceil(to.Y - top_)) - 1);
        for (int row = first; row <= last; ++row) {
            const double y1 = std::max(from.Y, static_cast<double>(top_ + row));
            const double y2 = std::min(to.Y, static_cast<double>(top_ + row + 1));
            if (y2 <= y1) continue;
            AddRow(row, sign * (y2 - y1), from.X + slope * (y1 - from.Y), from.X + slope * (y2 - from.Y));
        }
    }

    void Paint(Pixels& image, Pixel colour) const {
        for (int row = 0; row < height_; ++row) {
            double sum = 0.0;
            const float* cell =
                &cells_[static_cast<std::size_t>(row) * static_cast<std::size_t>(width_ + 2)];
            Pixel* pixel = image.Row(top_ + row) + left_;
            for (int column = 0; column < width_; ++column) {
                sum += cell[column];
                const int cover = CoverOf(std::min(1.0, std::abs(sum)));
                if (cover > 0) Blend(pixel[column], colour, cover);
            }
        }
    }

  private:
    /// Adds the area at the right of an edge piece that stays in one row and leads from column xa to xb.
    void AddRow(int row, double height, double xa, double xb) {
        const double low = std::min(xa, xb) - left_;
        const double high = std::max(xa, xb) - left_;
        float* cells = &cells_[static_cast<std::size_t>(row) * static_cast<std::size_t>(width_ + 2)];
        if (low >= width_) return;
        if (high <= 0.0) {
            cells[0] += static_cast<float>(height);
            return;
        }
        const double perPixel = high - low > 1e-9 ? height / (high - low) : 0.0;
        if (low < 0.0) cells[0] += static_cast<float>(-low * perPixel);
        const double from = std::max(low, 0.0);
        const double to = std::min(high, static_cast<double>(width_));
        if (perPixel == 0.0)
            AddUpright(cells, from, height);
        else
            AddSlope(cells, from, to, perPixel);
    }

    static void AddUpright(float* cells, double at, double height) {
        const int column = static_cast<int>(at);
        const double inside = height * (column + 1 - at);
        cells[column] += static_cast<float>(inside);
        cells[column + 1] += static_cast<float>(height - inside);
    }

    static void AddSlope(float* cells, double from, double to, double perPixel) {
        const int last = static_cast<int>(to);
        double before = 0.0;  // coverage of the pixel at the left
        for (int column = static_cast<int>(from); column <= last; ++column) {
            const double a = std::max(from, static_cast<double>(column));
            const double b = std::min(to, static_cast<double>(column + 1));
            const double cover = perPixel * (a - from + (b - a) * (column + 1 - (a + b) / 2.0));
            cells[column] += static_cast<float>(cover - before);
            before = cover;
        }
        cells[last + 1] += static_cast<float>(perPixel * (to - from) - before);
    }

    int left_;
    int top_;
    int width_;
    int height_;
    std::vector<float> cells_;
};

}  // namespace

// Liang and Barsky, "A New Concept and Method for Line Clipping", ACM TOG 3 (1984).
bool ClipLine(const Pixels& image, double margin, Point& from, Point& to) {
    if (!Finite(from) || !Finite(to)) return false;
    if ((SideOf(image, from, margin) | SideOf(image, to, margin)) == 0) return true;
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
    if (!ClipLine(image, stroke.Width + 2.0, from, to)) return;
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

void FillRows(Pixels& image, double left, double top, double right, double bottom, Pixel colour) {
    const auto within = [](double value, int limit) {
        return std::isnan(value) ? 0 : static_cast<int>(std::clamp(value, 0.0, static_cast<double>(limit)));
    };
    const int x1 = within(left, image.Width);
    const int x2 = within(right, image.Width);
    const int y1 = within(top, image.Height);
    const int y2 = within(bottom, image.Height);
    for (int y = y1; y < y2 && x1 < x2; ++y) {
        Pixel* row = image.Row(y);
        std::fill(row + x1, row + x2, colour);
    }
}

void DrawRing(Pixels& image, Point centre, double radius, double width, Pixel colour, bool filled,
              Pixel fill) {
    if (!Finite(centre) || !(radius >= 0.0 && radius < FarAway)) return;
    const double outer = radius + width / 2.0;
    const double inner = std::max(0.0, radius - width / 2.0);
    const auto limited = [](double value, int limit) {
        return static_cast<int>(std::clamp(std::floor(value), 0.0, static_cast<double>(limit)));
    };
    const int top = limited(centre.Y - outer - 1.0, image.Height);
    const int bottom = limited(centre.Y + outer + 2.0, image.Height);
    for (int y = top; y < bottom; ++y) {
        const double dy = y + 0.5 - centre.Y;
        const double outerSquare = (outer + 1.0) * (outer + 1.0) - dy * dy;
        if (outerSquare <= 0.0) continue;
        const double reach = std::sqrt(outerSquare);
        const int left = limited(centre.X - reach, image.Width);
        const int right = limited(centre.X + reach + 1.0, image.Width);
        // Between these the row lies wholly inside the ring.
        const double innerSquare = inner > 1.0 ? (inner - 1.0) * (inner - 1.0) - dy * dy : 0.0;
        const double hollow = innerSquare > 0.0 ? std::sqrt(innerSquare) : 0.0;
        const int hollowLeft = limited(centre.X - hollow + 1.0, image.Width);
        const int hollowRight = limited(centre.X + hollow - 1.0, image.Width);
        Pixel* row = image.Row(y);
        for (int x = left; x < right; ++x) {
            if (x >= hollowLeft && x < hollowRight) {
                if (filled) std::fill(row + x, row + hollowRight, fill);
                x = hollowRight - 1;
                continue;
            }
            const double dx = x + 0.5 - centre.X;
            const double distance = std::sqrt(dx * dx + dy * dy);
            const double disc = std::clamp(outer + 0.5 - distance, 0.0, 1.0);
            const double hole = inner > 0.0 ? std::clamp(inner + 0.5 - distance, 0.0, 1.0) : 0.0;
            // The fill reaches under the ring's inner edge, so that no ground shines through there.
            if (filled && hole > 0.0) Blend(row[x], fill, CoverOf(std::min(1.0, disc)));
            const int cover = CoverOf(disc - hole);
            if (cover > 0) Blend(row[x], colour, cover);
        }
    }
}

void FillPolygon(Pixels& image, std::span<const Point> corners, Pixel colour) {
    if (corners.size() < 3) return;
    Bounds box;
    for (const Point& corner : corners) {
        if (!Finite(corner)) return;
        box.Add(corner);
    }
    const auto limited = [](double value, int limit) {
        return static_cast<int>(std::clamp(value, 0.0, static_cast<double>(limit)));
    };
    const int left = limited(std::floor(box.Low.X), image.Width);
    const int right = limited(std::ceil(box.High.X), image.Width);
    const int top = limited(std::floor(box.Low.Y), image.Height);
    const int bottom = limited(std::ceil(box.High.Y), image.Height);
    if (left >= right || top >= bottom) return;
    AreaSum sum(left, top, right, bottom);
    for (std::size_t i = 0; i < corners.size(); ++i)
        sum.AddEdge(corners[i], corners[(i + 1) % corners.size()]);
    sum.Paint(image, colour);
}

void LayOver(Pixels& image, const Pixels& picture, int left, int top) {
    const int first = std::max(0, -left);
    const int last = std::min(picture.Width, image.Width - left);
    if (first >= last) return;
    for (int y = std::max(0, -top); y < std::min(picture.Height, image.Height - top); ++y) {
        const Pixel* from = picture.Row(y);
        Pixel* to = image.Row(top + y) + left;
        if (picture.Opaque)
            std::copy(from + first, from + last, to + first);
        else
            for (int x = first; x < last; ++x) to[x] = Over(to[x], from[x]);
    }
}

}  // namespace keelview::raster
