#pragma once

#include <functional>

#include "instruments/boat_graphs.h"
#include "instruments/boat_list.h"
#include "instruments/control_panel.h"
#include "instruments/data_view.h"
#include "instruments/exit_button.h"
#include "instruments/film_controls.h"
#include "instruments/graph_cursors.h"
#include "instruments/hints.h"
#include "instruments/key_sheet.h"
#include "instruments/leg_tables.h"
#include "instruments/overview.h"
#include "instruments/overview_mouse.h"
#include "instruments/race_keys.h"
#include "instruments/screen_capture.h"
#include "instruments/side_panel.h"
#include "instruments/time_bar.h"
#include "instruments/time_bar_mouse.h"
#include "instruments/time_setting.h"
#include "instruments/view_switch.h"
#include "instruments/wind_entry.h"
#include "instruments/wind_field.h"
#include "instruments/wind_panel.h"
#include "instruments/wind_panel_mouse.h"
#include "map/boats.h"
#include "map/chart.h"
#include "map/finish_list.h"
#include "map/map_interaction.h"
#include "map/sea_colours.h"
#include "map/start_signals.h"
#include "session/race_session.h"

namespace keelview {

/// The race display with all that is seen and can be done there.
struct RaceDesk {
    RaceDesk(AppState& app, Services& services)
        : session(app, services),
          form(session.Display()),
          seaColours(app.shown, form, session.TheStage()),
          chart(app, form),
          boats(app, form),
          startSignals(app.settings, services.platform, form),
          finishList(app.race, app.passes, app.settings, services.platform, form),
          mapInteraction(session),
          windPanel(app, form, session.TheCoach()),
          windField(app.race, form, session.Changes()),
          overview(app, form),
          timeBar(app.race, app.tracks, form),
          boatList(session),
          graphs(app, form),
          tables(app, form),
          sidePanel(session),
          windPanelMouse(app.race, form, session.TheVoice(), windPanel),
          overviewMouse(session, overview, windField),
          timeBarMouse(session, timeBar, overview),
          windEntry(session),
          graphCursors(app, form, session.TheFilm(), graphs),
          dataView(session, tables),
          views(session, dataView, windEntry),
          panel(session),
          filmControls(session),
          timeSetting(session),
          hints(app.race, app.settings, form),
          capture(app, form, services, session.TheVoice()),
          exitButton(session),
          keySheet(form, session.TheVoice()),
          keys(form, filmControls, mapInteraction, windEntry, keySheet) {
        // The sea first, as it wipes what is drawn on it; the boats stand on the chart.
        for (Instrument* instrument : std::initializer_list<Instrument*>{
                 &seaColours, &chart, &boats, &startSignals, &finishList, &mapInteraction, &windPanel,
                 &windField, &overview, &timeBar, &boatList, &graphs, &tables, &sidePanel})
            session.TheStage().Add(*instrument);
        form.Command13.OnClick = [this] {
            if (OnReferences) OnReferences();
        };
        form.Command19.OnClick = [this] {
            if (OnFindRace) OnFindRace();
        };
        form.Command18.OnClick = [this] {
            if (OnPage) OnPage();
        };
    }
    RaceDesk(const RaceDesk&) = delete;
    RaceDesk& operator=(const RaceDesk&) = delete;

    /// The person asks for the documents of the race.
    std::function<void()> OnReferences;
    /// The person wants the race to be looked for in its tracks.
    std::function<void()> OnFindRace;
    /// The person wants the race as a page for a browser. Who sets this shows the button for it.
    std::function<void()> OnPage;

    RaceSession session;
    RaceDisp& form;

    SeaColours seaColours;
    Chart chart;
    Boats boats;
    StartSignals startSignals;
    FinishList finishList;
    MapInteraction mapInteraction;
    WindPanel windPanel;
    WindField windField;
    Overview overview;
    TimeBar timeBar;
    BoatList boatList;
    BoatGraphs graphs;
    LegTables tables;
    SidePanel sidePanel;

    WindPanelMouse windPanelMouse;
    OverviewMouse overviewMouse;
    TimeBarMouse timeBarMouse;
    WindEntry windEntry;
    GraphCursors graphCursors;
    DataView dataView;
    ViewSwitch views;
    ControlPanel panel;
    FilmControls filmControls;
    TimeSetting timeSetting;
    Hints hints;
    ScreenCapture capture;
    ExitButton exitButton;
    KeySheet keySheet;
    RaceKeys keys;
};

}  // namespace keelview
