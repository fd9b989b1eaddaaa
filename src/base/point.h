#pragma once

#include <algorithm>
#include <limits>

namespace keelview {

/// A point of a picture in pixels, or in the scale of a canvas that has one; Y grows downwards.
struct Point {
    double X = 0.0;
    double Y = 0.0;
};

/// The upright box around points; empty at first. A coordinate that is no number widens nothing.
struct Bounds {
    Point Low{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
    Point High{-std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};

    void Add(const Point& at) { Add(Bounds{at, at}); }
    void Add(const Bounds& other) {
        Low = {std::min(Low.X, other.Low.X), std::min(Low.Y, other.Low.Y)};
        High = {std::max(High.X, other.High.X), std::max(High.Y, other.High.Y)};
    }
    /// The same with room at all sides.
    Bounds Grown(double room) const {
        return {{Low.X - room, Low.Y - room}, {High.X + room, High.Y + room}};
    }
};

}  // namespace keelview
