#pragma once

#include "base/numbers.h"
#include "racedata/race_control.h"

namespace keelview {

/// The time axis that the graphs and the time bar share: the finish of the race lies at y TimeAxisMargin,
/// the start below it, time running up the page.
inline constexpr double TimeAxisMargin = 30.0;

/// Pixels per second of an axis `height` pixels high that covers the race's ReplaySpan; 0 where there is no
/// span or no room, and nothing can then be placed on it.
inline double GraphTimeScaleOf(const RaceControl& race, double height) {
    const double room = height - 2 * TimeAxisMargin;
    return race.ReplaySpan > 0 && room > 0 ? room / race.ReplaySpan : 0.0;
}

/// The y of a time (seconds from the start) at `scale` pixels per second.
inline double TimeToY(const RaceControl& race, double scale, double seconds) {
    return (race.RaceDuration - seconds) * scale + TimeAxisMargin;
}

/// The whole second under a y. `scale` must not be 0.
inline int TimeUnderY(const RaceControl& race, double scale, double y) {
    return FloorToInt(race.RaceDuration - (y - TimeAxisMargin) / scale + 0.5);
}

}  // namespace keelview
