#pragma once

#include <cmath>
#include <numbers>

#include "display_race.h"
#include "map/auto_trace.h"
#include "map/instruments.h"
#include "map/replay_frame.h"

namespace keelview::bench {

inline constexpr int CoastPoints = 100000;
inline constexpr double StepSeconds = 0.16;

/// A jagged coast all round, of which one part in a hundred lies on the map.
inline void LayCoast(Coast& coast) {
    coast.CoastCount = CoastPoints;
    for (int i = 0; i < CoastPoints; ++i) {
        const double turn = i * 2 * std::numbers::pi / CoastPoints;
        const double away = 1.0 + 40 * (1 - std::cos(turn)) + 0.01 * std::sin(i * 0.7);
        const double lat = MiddleLat + away * std::cos(turn / 2);
        coast.CoastLat.push_back(i % 100 == 0 ? -lat : lat);
        coast.CoastLon.push_back(MiddleLon + away * std::sin(turn / 2));
    }
}

/// The film on a display that is shown: what the person sees is painted too, by Refresh.
struct Film : Display {
    Film() : Display(5000) {
        LayCoast(app->coast);
        shown->Check5.SetValue(true);
        shown->Check9.SetValue(true);
        shown->ShowNow();
        app->clock.ReplayStep = StepSeconds;
        app->clock.ReplayTime = 600;
        frame.DrawFrame();
    }
    /// One tick in auto trace: the view follows, the chart is drawn anew, 50 boats with names and wakes.
    void TickInAutoTrace() {
        app->clock.ReplayTime += StepSeconds;
        AutoTrace(*app, *shown, chart);
        frame.DrawFrame();
    }

    Chart chart{*app, *shown, services};
    Instruments instruments{*app, *shown};
    ReplayFrame frame{*app, *shown, services, chart, instruments};
};

}  // namespace keelview::bench
