#include "instruments/graph_line.h"

#include <cmath>
#include <utility>

#include "display/stripes.h"

namespace keelview {

namespace {

/// Leaves of each run of points in the same row of pixels the two that stand furthest apart, the one nearer
/// to the row before first: the same picture, as the line fills the row between them, from a fraction of
/// the points and of the way.
void ThinRows(std::vector<Point>& line) {
    std::size_t kept = 0;
    for (std::size_t first = 0; first < line.size();) {
        const double row = std::floor(line[first].Y);
        std::size_t next = first + 1;
        Point left = line[first];
        Point right = left;
        for (; next < line.size() && std::floor(line[next].Y) == row; ++next) {
            if (line[next].X < left.X) left = line[next];
            if (line[next].X > right.X) right = line[next];
        }
        if (next - first > 2) {
            const double from = kept > 0 ? line[kept - 1].X : left.X;
            if (std::abs(from - right.X) < std::abs(from - left.X)) std::swap(left, right);
            line[kept++] = left;
            line[kept++] = right;
            first = next;
        }
        while (first < next) line[kept++] = line[first++];
    }
    line.resize(kept);
}

}  // namespace

void GraphLine::ToDirection(const CompassAxis& axis, double direction, double y) {
    const double x = axis.X(direction);
    if (!points_.empty() && std::abs(x - points_.back().X) > axis.Width() / 2) {
        const Point last = points_.back();
        const bool overRight = x < last.X;
        const double edge = overRight ? axis.Right() : axis.Left();
        const double way = x + (overRight ? axis.Width() : -axis.Width()) - last.X;
        const double at = way == 0.0 ? y : last.Y + (y - last.Y) * (edge - last.X) / way;
        To(edge, at);
        End();
        To(overRight ? axis.Left() : axis.Right(), at);
    }
    To(x, y);
}

void GraphLine::End() {
    ThinRows(points_);
    if (points_.size() > 1) StripedPolyline(page_, points_, colour_, stripes_);
    points_.clear();
}

}  // namespace keelview
