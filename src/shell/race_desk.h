#pragma once

#include "analysis/time_bar_mouse.h"
#include "analysis/wind_panel_mouse.h"
#include "display/splash.h"
#include "map/overview_mouse.h"
#include "session/app_state.h"
#include "session/race_session.h"
#include "shell/control_panel.h"

namespace keelview {

/// The race display with all that a person can do at it.
struct RaceDesk {
    RaceDesk(AppState& app, Services& services, Splash& splash)
        : session(app, services, splash),
          panel(app, services, session),
          timeBarMouse(app, session.Display(), session.TheChart(), session.TheFrame(),
                       session.TheInstruments().overview, session.TheInstruments().timeBar),
          windPanelMouse(app, session.Display(), session.TheInstruments().windPanel),
          overviewMouse(app, session.Display(), session.TheChart(), session.TheFrame(),
                        session.TheInstruments().overview) {}

    RaceSession session;
    ControlPanel panel;
    TimeBarMouse timeBarMouse;
    WindPanelMouse windPanelMouse;
    OverviewMouse overviewMouse;
};

}  // namespace keelview
