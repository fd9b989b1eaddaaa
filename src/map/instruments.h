#pragma once

#include "instruments/overview.h"
#include "instruments/time_bar.h"
#include "instruments/wind_panel.h"
#include "session/app_state.h"
#include "session/race_disp.h"

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
