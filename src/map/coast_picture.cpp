#include "map/coast_picture.h"

#include <vector>

namespace keelview {

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
        Point previous;
        bool previousInside = false;
        bool begins = true;
        for (const Position& position : line) {
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
