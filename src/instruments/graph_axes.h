#pragma once

#include <algorithm>
#include <cmath>

#include "base/angles.h"
#include "racedata/race_control.h"

namespace keelview {

/// How the two charts of the graphs share the width of their picture: beside the labels of the time, the
/// course takes six parts and the speed five.
struct GraphColumns {
    static constexpr double Left = 30.0;
    static constexpr double Gap = 10.0;
    static constexpr double RightMargin = 15.0;

    double CompassRight = Left;
    double SpeedLeft = Left;
    double SpeedRight = Left;

    /// `width`: of the picture, pixels.
    explicit GraphColumns(double width) {
        const double room = std::max(width - Left - Gap - RightMargin, 11.0);
        CompassRight = Left + std::floor(room * 6 / 11);
        SpeedLeft = CompassRight + Gap;
        SpeedRight = Left + Gap + std::floor(room);
    }
};

/// The axis of the left chart: a compass of 360 degrees, placed so that the race's wind stands a quarter of
/// its width from the left.
class CompassAxis {
  public:
    /// `width`: of the picture, pixels.
    CompassAxis(const RaceControl& race, double width)
        : right_(GraphColumns(width).CompassRight), offset_(WrapDirection(race.WindDirection - 90.0)) {}

    double Left() const { return GraphColumns::Left; }
    double Right() const { return right_; }
    double Width() const { return right_ - Left(); }
    double PixelsPerDegree() const { return Width() / 360.0; }
    bool Holds(double x) const { return x >= Left() && x <= right_; }

    /// The x of a direction in degrees, from the left edge up to before the right one, however far off the
    /// direction lies.
    double X(double direction) const {
        double turn = direction - offset_;
        if (turn < 0.0 || turn >= 360.0) turn -= 360.0 * std::floor(turn / 360.0);
        return Left() + turn * PixelsPerDegree();
    }
    /// The whole direction under an x, 0 up to below 360.
    double DirectionUnder(double x) const {
        return WrapDirection(std::floor(WrapDirection((x - Left()) / PixelsPerDegree() + offset_) + 0.5));
    }
    /// Right of it the reciprocal of a direction lies off the chart.
    double Middle() const { return Left() + Width() / 2; }

  private:
    double right_;
    double offset_;  // the direction at the left edge, 0 up to below 360
};

/// The axis of the right chart: speeds from 0 to at least 10 knots, and twice as much of wind.
class SpeedAxis {
  public:
    /// `width`: of the picture, pixels; `fastest`: that it has to reach, knots.
    SpeedAxis(double width, double fastest) : left_(GraphColumns(width).SpeedLeft) {
        right_ = GraphColumns(width).SpeedRight;
        constexpr double least = 10.0;
        constexpr double most = 10'000.0;
        const double reach = std::clamp(fastest, least, most);
        constexpr double narrowest = 24.0;  // pixels between two labels
        while ((right_ - left_) / reach * step_ < narrowest && step_ < most) step_ = NextStep(step_);
        steps_ = static_cast<int>(std::ceil(reach / step_));
    }

    double Left() const { return left_; }
    double Right() const { return right_; }
    int Steps() const { return steps_; }  ///< of the grid
    int Step() const { return step_; }    ///< knots from one line of the grid to the next: 1, 2, 5, 10 ...
    double Middle() const { return (left_ + right_) / 2; }
    bool Holds(double x) const { return x >= left_ && x <= right_; }

    /// The x of a boat's speed; a faster one stands at the right edge.
    double X(double knots) const { return std::min(left_ + knots * PixelsPerKnot(), right_); }
    double WindX(double knots) const { return X(knots / WindKnots); }
    double KnotsUnder(double x) const { return (x - left_) / PixelsPerKnot(); }

    /// Knots of wind that stand where a boat's knot stands.
    static constexpr int WindKnots = 2;

  private:
    /// 1, 2, 5, 10, 20, 50 ...
    static int NextStep(int step) {
        for (int power = step; power > 0; power /= 10)
            if (power == 2) return step / 2 * 5;
        return step * 2;
    }
    double PixelsPerKnot() const { return (right_ - left_) / (steps_ * step_); }

    double left_;
    double right_ = 0.0;
    int step_ = 1;
    int steps_ = 1;
};

}  // namespace keelview
