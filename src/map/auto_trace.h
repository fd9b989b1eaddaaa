#pragma once

#include "map/chart.h"
#include "session/app_state.h"
#include "session/race_disp.h"

namespace keelview {

/// The view that follows the focused boats: sets the middle and the zoom so that all of them are on the
/// map, and draws the chart anew. ManualZoom stays.
void AutoTrace(AppState& app, RaceDisp& form, Chart& chart);

}  // namespace keelview
