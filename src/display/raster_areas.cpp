#include <algorithm>
#include <cmath>
#include <vector>

#include "display/raster.h"
#include "display/raster_blend.h"

namespace keelview::raster {

namespace {

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
