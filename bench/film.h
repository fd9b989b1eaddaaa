#pragma once

#include <cmath>
#include <numbers>

#include "display_race.h"

namespace keelview::bench {

inline constexpr int CoastPointCount = 100000;
inline constexpr double StepSeconds = 0.16;

/// A jagged coast all round in stretches of a hundred points, of which one part in a hundred lies on the
/// map.
inline void LayCoast(Coast& coast) {
    coast.clear();
    for (int i = 0; i < CoastPointCount; ++i) {
        const double turn = i * 2 * std::numbers::pi / CoastPointCount;
        const double away = 1.0 + 40 * (1 - std::cos(turn)) + 0.01 * std::sin(i * 0.7);
        if (i % 100 == 0) coast.emplace_back();
        coast.back().Add({MiddleLat + away * std::cos(turn / 2), MiddleLon + away * std::sin(turn / 2)});
    }
}

/// The film on a display that is shown: what the person sees is painted too, by Refresh.
struct Film : Display {
    explicit Film(int boats = Boats) : Display(5000, boats) {
        LayCoast(app->coast);
        Form().Check5.SetValue(true);
        Form().Check9.SetValue(true);
        Form().ShowNow();
        app->clock.ReplayStep = StepSeconds;
        app->clock.ReplayTime = 600;
        ShowMoment();
    }
    /// One tick: the moment is shown; in auto trace the view follows and the chart is drawn anew, all
    /// boats with names and wakes.
    void Tick() const {
        app->clock.ReplayTime += StepSeconds;
        ShowMoment();
    }
};

}  // namespace keelview::bench
