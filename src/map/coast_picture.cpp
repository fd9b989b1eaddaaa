#include "map/coast_picture.h"

#include <cmath>
#include <vector>

namespace keelview {

namespace {

/// True if a line surely lies off the picture: the circle round its box does.
bool IsOff(const CoastLine& line, const Projection& projection, double side) {
    const Point a = projection.ToScreen(line.SouthWest);
    const Point b = projection.ToScreen(line.NorthEast);
    const double reach = std::hypot(b.X - a.X, b.Y - a.Y) / 2;
    return std::abs((a.X + b.X) - side) / 2 > side / 2 + reach ||
           std::abs((a.Y + b.Y) - side) / 2 > side / 2 + reach;
}

}  // namespace

void DrawCoast(Canvas& picture, const Coast& coast, const Projection& projection, double side, Colour ink) {
    const auto inside = [side](const Point& at) {
        return at.X > 0 && at.X < side && at.Y > 0 && at.Y < side;
    };
    std::vector<Point> run;  // joined stretches, each with an end inside
    const auto flush = [&] {
        if (run.size() > 1) picture.Polyline(run, ink);
        run.clear();
    };
    for (const CoastLine& line : coast) {
        if (IsOff(line, projection, side)) continue;
        Point previous;
        bool previousInside = false;
        bool begins = true;
        for (const Position& position : line.Points) {
            const Point here = projection.ToScreen(position);
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
