#include "instruments/graph_line.h"

#include <algorithm>
#include <cmath>

#include "display/stripes.h"

namespace keelview {

namespace {

/// Points in a row of pixels, one after another.
struct Run {
    std::size_t First, Next;
    double Row, Left, Right;

    bool Level() const { return Next - First > 2; }
    void Cover(double x) {
        Left = std::min(Left, x);
        Right = std::max(Right, x);
    }
};

/// Level strokes in neighbouring rows touch each other.
bool Touch(const Run& run, const Run& next) {
    return run.Level() && next.Level() && std::abs(next.Row - run.Row) == 1.0;
}

/// The points, row by row. Strokes that touch are as long as the way from one to the other lies in their
/// rows.
std::vector<Run> RunsOf(const std::vector<Point>& points) {
    std::vector<Run> runs;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const double row = std::floor(points[i].Y + 0.5);
        if (runs.empty() || runs.back().Row != row) runs.push_back({i, i, row, points[i].X, points[i].X});
        runs.back().Cover(points[i].X);
        runs.back().Next = i + 1;
    }
    for (std::size_t k = 1; k < runs.size(); ++k) {
        if (!Touch(runs[k - 1], runs[k])) continue;
        const Point& from = points[runs[k].First - 1];
        const Point& to = points[runs[k].First];
        const double border = (runs[k - 1].Row + runs[k].Row) / 2;
        const double x = from.X + (to.X - from.X) * (border - from.Y) / (to.Y - from.Y);
        runs[k - 1].Cover(x);
        runs[k].Cover(x);
    }
    return runs;
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
    const std::vector<Run> runs = RunsOf(points_);
    std::vector<Point> stroke;
    const auto endStroke = [&] {
        if (stroke.size() > 1) strokes_.push_back(stroke);
        stroke.clear();
    };
    for (std::size_t k = 0; k < runs.size(); ++k) {
        const Run& run = runs[k];
        const auto first = points_.begin() + static_cast<std::ptrdiff_t>(run.First);
        const auto next = points_.begin() + static_cast<std::ptrdiff_t>(run.Next);
        if (!run.Level()) {
            stroke.insert(stroke.end(), first, next);
            continue;
        }
        if (!stroke.empty()) stroke.push_back(*first);
        endStroke();
        levels_.insert(levels_.end(), {{run.Left, run.Row}, {run.Right, run.Row}});
        if (k + 1 < runs.size() && !Touch(run, runs[k + 1])) stroke.push_back(next[-1]);
    }
    endStroke();
    points_.clear();
}

void GraphLine::Draw(Canvas& page, Colour colour, std::span<const Colour> stripes) const {
    page.Segments(levels_, colour);
    std::vector<Point> striped;  // where level strokes lie close together the stripes go down the page
    for (const Colour ink : {White, Black}) {
        striped.clear();
        for (std::size_t i = 0; i + 1 < levels_.size() && !stripes.empty(); i += 2)
            if (StripeAt(levels_[i].Y, stripes) == ink)
                striped.insert(striped.end(), {levels_[i], levels_[i + 1]});
        if (!striped.empty()) page.Segments(striped, ink);
    }
    for (const std::vector<Point>& stroke : strokes_) StripedPolyline(page, stroke, colour, stripes);
}

}  // namespace keelview
