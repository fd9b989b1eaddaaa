#pragma once

#include "analysis/time_bar.h"
#include "analysis/wind_panel.h"
#include "display/race_disp.h"
#include "map/overview.h"
#include "session/app_state.h"

namespace keelview {

/// The instruments that stand around the map and follow the replay.
struct Instruments {
    Instruments(AppState& app, RaceDisp& form)
        : overview(app, form), windPanel(app, form), timeBar(app, form) {}

    Overview overview;
    WindPanel windPanel;
    TimeBar timeBar;
};

}  // namespace keelview
