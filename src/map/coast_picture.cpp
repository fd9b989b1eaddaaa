#include "map/coast_picture.h"

#include <cmath>
#include <vector>

namespace keelview {

namespace {

/// What cannot be told apart on the picture, as a share of its side.
constexpr double FinestShare = 1.0 / 4000;

/// True if nothing can be seen of a line: it is tiny, or the circle round its box lies off the picture.
bool IsUnseen(const CoastLine& line, const Projection& projection, double side) {
    const Point a = projection.ToScreen(line.SouthWest);
    const Point b = projection.ToScreen(line.NorthEast);
    const double reach = std::hypot(b.X - a.X, b.Y - a.Y) / 2;
    const auto off = [&](double middle) { return std::abs(middle - side / 2) > side / 2 + reach; };
    return reach < FinestShare * side || off((a.X + b.X) / 2) || off((a.Y + b.Y) / 2);
}

}  // namespace

void DrawCoast(Canvas& picture, const Coast& coast, const Projection& projection, double side, Colour ink) {
    const auto inside = [side](const Point& at) {
        return at.X > 0 && at.X < side && at.Y > 0 && at.Y < side;
    };
    std::vector<Point> run;  // joined stretches, each with an end inside
    const auto isNear = [finest = FinestShare * side](const Point& a, const Point& b) {
        return std::abs(a.X - b.X) < finest && std::abs(a.Y - b.Y) < finest;
    };
    const auto flush = [&] {
        if (run.size() > 1) picture.Polyline(run, ink);
        run.clear();
    };
    for (const CoastLine& line : coast) {
        if (IsUnseen(line, projection, side)) continue;
        Point previous;
        bool previousInside = false;
        bool begins = true;
        for (const Position& position : line.Points) {
            const Point here = projection.ToScreen(position);
            if (!begins && isNear(here, previous) && &position != &line.Points.back()) continue;
            const bool hereInside = inside(here);
            if (begins || !(previousInside || hereInside)) {
                flush();
            } else {
                if (run.empty()) run.push_back(previous);
                run.push_back(here);
            }
            begins = false;
            previous = here;
            previousInside = hereInside;
        }
    }
    flush();
}

}  // namespace keelview
