#include "instruments/graph_line.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "display/stripes.h"

namespace keelview {

void GraphLine::Run::Cover(double x) {
    Left = std::min(Left, x);
    Right = std::max(Right, x);
}

void GraphLine::To(double x, double y) {
    const Point at{x, y};
    const double row = std::floor(y + 0.5);
    if (runs_.empty() || runs_.back().Row != row)
        runs_.push_back({.Row = row, .Left = x, .Right = x, .First = at, .Last = at});
    Run& run = runs_.back();
    run.Cover(x);
    run.Last = at;
    ++run.Count;
}

void GraphLine::ToDirection(const CompassAxis& axis, double direction, double y) {
    const double x = axis.X(direction);
    if (!runs_.empty() && std::abs(x - runs_.back().Last.X) > axis.Width() / 2) {
        const Point last = runs_.back().Last;
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

/// Level strokes in neighbouring rows touch each other.
bool GraphLine::Touch(const Run& run, const Run& next) {
    return run.Level() && next.Level() && std::abs(next.Row - run.Row) == 1.0;
}

/// Strokes that touch are as long as the way from one to the other lies in their rows.
void GraphLine::JoinLevels() {
    for (std::size_t k = 1; k < runs_.size(); ++k) {
        Run& run = runs_[k - 1];
        Run& next = runs_[k];
        if (!Touch(run, next)) continue;
        const double share = ((run.Row + next.Row) / 2 - run.Last.Y) / (next.First.Y - run.Last.Y);
        const double x = run.Last.X + (next.First.X - run.Last.X) * share;
        run.Cover(x);
        next.Cover(x);
    }
}

void GraphLine::End() {
    JoinLevels();
    std::vector<Point> stroke;
    const auto endStroke = [&] {
        if (stroke.size() > 1) strokes_.push_back(stroke);
        stroke.clear();
    };
    for (std::size_t k = 0; k < runs_.size(); ++k) {
        const Run& run = runs_[k];
        if (!run.Level()) {
            stroke.push_back(run.First);
            if (run.Count > 1) stroke.push_back(run.Last);
            continue;
        }
        if (!stroke.empty()) stroke.push_back(run.First);
        endStroke();
        levels_.insert(levels_.end(), {{run.Left, run.Row}, {run.Right, run.Row}});
        if (k + 1 < runs_.size() && !Touch(run, runs_[k + 1])) stroke.push_back(run.Last);
    }
    endStroke();
    runs_.clear();
}

void GraphLine::LayStripes(std::span<const Colour> stripes) {
    const auto lay = [this](const Point& from, const Point& to, Colour ink) {
        std::vector<Point>& ends = ink == White ? white_ : black_;
        ends.insert(ends.end(), {from, to});
    };
    // Where level strokes lie close together the stripes go down the page.
    for (std::size_t i = 0; i + 1 < levels_.size(); i += 2)
        if (const std::optional<Colour> ink = StripeAt(levels_[i].Y, stripes))
            lay(levels_[i], levels_[i + 1], *ink);
    for (const std::vector<Point>& stroke : strokes_)
        for (const LineStripe& stripe : StripesAlong(stroke, stripes))
            lay(stripe.From, stripe.To, stripe.Ink);
}

void GraphLine::AddTo(std::vector<ColouredLine>& lines, Colour colour, bool striped) const {
    lines.push_back({.Points = levels_, .Ink = colour, .Separate = true});
    for (const std::vector<Point>& stroke : strokes_) lines.push_back({.Points = stroke, .Ink = colour});
    if (!striped) return;
    lines.push_back({.Points = white_, .Ink = White, .Separate = true});
    lines.push_back({.Points = black_, .Ink = Black, .Separate = true});
}

}  // namespace keelview
