#pragma once

#include <span>
#include <vector>

#include "base/point.h"
#include "display/canvas.h"
#include "instruments/graph_axes.h"

namespace keelview {

/// A line of the graphs, put together point by point along the time and drawn in one stroke. What lies in
/// one row of pixels is thinned out, which the picture does not show: long tracks have dozens of fixes in
/// each row.
class GraphLine {
  public:
    /// In a colour, with stripes along it (display/stripes.h).
    GraphLine(Canvas& page, Colour colour, std::span<const Colour> stripes = {})
        : page_(page), colour_(colour), stripes_(stripes) {}
    /// Goes on to a point.
    void To(double x, double y) { points_.push_back({x, y}); }
    /// Goes on to a direction the short way round: over an edge of the compass and in again at the other.
    void ToDirection(const CompassAxis& axis, double direction, double y);
    /// Draws what was put together since the last End.
    void End();

  private:
    Canvas& page_;
    Colour colour_;
    std::span<const Colour> stripes_;
    std::vector<Point> points_;
};

}  // namespace keelview
