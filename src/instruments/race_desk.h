#pragma once

#include "instruments/boat_graphs.h"
#include "instruments/boat_list.h"
#include "instruments/control_panel.h"
#include "instruments/data_view.h"
#include "instruments/exit_button.h"
#include "instruments/graph_cursors.h"
#include "instruments/hints.h"
#include "instruments/leg_tables.h"
#include "instruments/overview_mouse.h"
#include "instruments/screen_capture.h"
#include "instruments/time_bar_mouse.h"
#include "instruments/time_setting.h"
#include "instruments/view_switch.h"
#include "instruments/wind_entry.h"
#include "instruments/wind_field.h"
#include "instruments/wind_panel_mouse.h"
#include "map/map_interaction.h"
#include "session/app_state.h"
#include "session/race_session.h"
#include "shell/reference_viewer.h"
#include "shell/splash.h"

namespace keelview {

/// The race display with all that a person can do at it.
struct RaceDesk {
    RaceDesk(AppState& app, Services& services, Splash& splash)
        : session(app, services, splash),
          panel(app, services, session),
          timeSetting(app, services, session),
          mapInteraction(app, session.Display(), services, session.TheChart(), session.TheFrame()),
          hints(app, session.Display()),
          timeBarMouse(app, session.Display(), session.TheChart(), session.TheFrame(),
                       session.TheInstruments().overview, session.TheInstruments().timeBar),
          windPanelMouse(app, session.Display(), session.TheInstruments().windPanel),
          overviewMouse(app, session.Display(), session.TheChart(), session.TheFrame(),
                        session.TheInstruments().overview),
          graphs(app, session.Display()),
          tables(app, session.Display(), services),
          views(app, session.Display(), session.TheChart(), graphs, tables),
          boatList(app, session.Display(), views),
          dataView(app, session.Display(), tables),
          windEntry(app, session.Display(), services, graphs),
          graphCursors(app, session.Display(), graphs, windEntry),
          windField(app, session.Display(), services, session.TheChart(), session.TheInstruments(), graphs),
          capture(app, session.Display(), services),
          exitButton(app, session.Display(), services) {
        session.OnRaceLoaded = [this] {
            boatList.ConnectRows();
            mapInteraction.RaceLoaded();
        };
        session.Display().Command13.OnClick = [&app, &services] { RefFm(app, services).ShowModal(); };
    }

    RaceSession session;
    ControlPanel panel;
    TimeSetting timeSetting;
    MapInteraction mapInteraction;
    Hints hints;
    TimeBarMouse timeBarMouse;
    WindPanelMouse windPanelMouse;
    OverviewMouse overviewMouse;
    BoatGraphs graphs;
    LegTables tables;
    ViewSwitch views;
    BoatList boatList;
    DataView dataView;
    WindEntry windEntry;
    GraphCursors graphCursors;
    WindField windField;
    ScreenCapture capture;
    ExitButton exitButton;
};

}  // namespace keelview
