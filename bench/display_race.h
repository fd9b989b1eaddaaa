#pragma once

#include <memory>

#include "long_race.h"
#include "map/boat_sprite.h"
#include "map/chart.h"
#include "session/app_state.h"
#include "session/race_disp.h"
#include "support/fake_platform.h"
#include "support/scripted_dialogs.h"

namespace keelview::bench {

/// The long race on a display with a map of 1000 x 1000 pixels, with `windSamples` in its wind file.
struct Display {
    std::unique_ptr<AppState> app = std::make_unique<AppState>();
    FakePlatform platform;
    ScriptedDialogs dialogs;
    Services services{platform, dialogs};
    std::unique_ptr<RaceDisp> shown;

    explicit Display(int windSamples) {
        app->settings.UseEnglish = true;
        app->race = LongRace();
        SailFleet(app->race, app->tracks, app->area, app->scale);
        BlowWind(windSamples, app->race, app->wind);
        app->clock.ReplayRangeEnd = app->clock.LastFixTime = Fixes;
        app->clock.ReplayRangeStart = -60;
        app->view.ViewCentreLat = app->view.GridOriginLat = MiddleLat;
        app->view.ViewCentreLon = app->view.GridOriginLon = MiddleLon;
        app->passes.FirstPassTime.fill(NobodyPassed);
        shown = std::make_unique<RaceDisp>(app->settings);
        RaceDisp& form = *shown;
        form.Move(0, 0, 1310, 1010);
        form.LayoutPanels(app->settings, Boats);
        app->view.MapSide = app->view.MapWidth = app->view.MapHeight = form.MapSide();
        Chart::SetBoatPalette(app->display);
        CreateBoatControls(*app, form);
    }
};

}  // namespace keelview::bench
