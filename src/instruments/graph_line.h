#pragma once

#include <span>
#include <vector>

#include "base/point.h"
#include "display/canvas.h"
#include "instruments/graph_axes.h"

namespace keelview {

/// A line of the graphs, put together point by point along the time, and drawn as often as it is wanted. In
/// a row of pixels with more than two points, as long tracks have dozens in each, it is one level stroke
/// over all that the line covers there.
class GraphLine {
  public:
    /// Goes on to a point.
    void To(double x, double y);
    /// Goes on to a direction the short way round: over an edge of the compass and in again at the other.
    void ToDirection(const CompassAxis& axis, double direction, double y);
    /// Ends the stroke of the points since the last End: what follows is not joined to it.
    void End();
    /// Lays stripes along what has been put together (display/stripes.h).
    void LayStripes(std::span<const Colour> stripes);
    /// Adds what is to be drawn to other lines, in a colour and, where it is `striped`, under its stripes.
    /// It refers to this line.
    void AddTo(std::vector<ColouredLine>& lines, Colour colour, bool striped = false) const;

  private:
    /// Points in a row of pixels, one after another.
    struct Run {
        double Row, Left, Right;
        Point First, Last;
        int Count = 0;

        bool Level() const { return Count > 2; }
        void Cover(double x);
    };
    static bool Touch(const Run& run, const Run& next);
    void JoinLevels();

    std::vector<Run> runs_;  // since the last End
    std::vector<std::vector<Point>> strokes_;
    // Both ends of each level stroke and stripe.
    std::vector<Point> levels_, white_, black_;
};

}  // namespace keelview
