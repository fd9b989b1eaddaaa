#pragma once

#include "analysis/leg_statistics.h"
#include "session/race_disp.h"

namespace keelview {

/// Draws the two charts of differences below the tables of PicTime: how far each boat lies behind the best
/// at each entry (left) and on each leg (right). They are drawn off-screen on Picture3, which takes the
/// width of PicTime and half the map's height, and copied as one image. A kind without charts draws
/// nothing.
void DrawLegCharts(const RaceControl& race, const MarkPasses& passes, const Settings& settings,
                   const LegStatistics& statistics, RaceDisp& form);

}  // namespace keelview
