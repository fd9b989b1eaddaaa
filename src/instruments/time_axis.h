#pragma once

#include "base/numbers.h"
#include "racedata/race_control.h"

namespace keelview {

/// The time axis that the graphs and the time bar share: the finish of the race lies at the margin, the
/// start below it, time running up the page, over the race's ReplaySpan.
class TimeAxis {
  public:
    /// Pixels above the finish, and below the end of the span.
    static constexpr double Margin = 30.0;

    /// `height`: of the picture, pixels.
    TimeAxis(const RaceControl& race, double height) : raceDuration_(race.RaceDuration) {
        const int span = ReplaySpan(race);
        const double room = height - 2 * Margin;
        if (span > 0 && room > 0) scale_ = room / span;
    }

    /// There is no span or no room: nothing can be placed on it, and no time lies under a y.
    bool Empty() const { return scale_ == 0.0; }
    double Scale() const { return scale_; }  ///< pixels per second

    /// The y of a time, seconds from the start.
    double Y(double seconds) const { return (raceDuration_ - seconds) * scale_ + Margin; }
    /// The whole second under a y.
    int TimeUnder(double y) const { return FloorToInt(raceDuration_ - (y - Margin) / scale_ + 0.5); }

  private:
    int raceDuration_;
    double scale_ = 0.0;
};

}  // namespace keelview
