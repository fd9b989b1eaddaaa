#pragma once

#include <vector>

#include "analysis/leg_statistics.h"
#include "base/point.h"
#include "session/race_disp.h"

namespace keelview {

/// Height of the two charts of differences, pixels.
inline constexpr double LegChartsHeight = 345.0;

/// A piece of a boat's line on one of the charts, from entry to entry without a gap; a piece of one entry
/// is its dot.
struct ChartLine {
    int Boat = 0;
    std::vector<Point> Points;  ///< pixels of the charts
};

/// Draws the two charts of differences off-screen on Picture3, which takes the width of PicTime: how far
/// each boat lies behind the best at each entry (left) and on each leg (right), both as wide as there is
/// room. Boats without a value at an entry have a gap there, and play no part in the scale. Gives the lines
/// from the topmost boat down. There must be a kind with charts.
std::vector<ChartLine> DrawLegCharts(const RaceControl& race, const MarkPasses& passes,
                                     const Settings& settings, StatKind kind, RaceDisp& form);

/// The boat whose line lies under a point of the charts, the nearest one; 0 where none is near.
int LineUnder(const std::vector<ChartLine>& lines, const Point& at);

}  // namespace keelview
