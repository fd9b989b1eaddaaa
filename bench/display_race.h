#pragma once

#include <memory>

#include "analysis/track_details.h"
#include "instruments/race_desk.h"
#include "long_race.h"
#include "support/fake_platform.h"
#include "support/scripted_dialogs.h"

namespace keelview::bench {

/// The long race of so many boats on a display with a map of 1000 x 1000 pixels, with `windSamples` in its
/// wind file.
struct Display {
    std::unique_ptr<AppState> app = std::make_unique<AppState>();
    FakePlatform platform;
    ScriptedDialogs dialogs;
    Services services{platform, dialogs};
    std::unique_ptr<RaceDesk> desk;

    explicit Display(int windSamples, int boats = Boats) {
        app->settings.UseEnglish = true;
        app->race = LongRace(boats);
        SailFleet(app->race, app->tracks, app->area, app->scale);
        app->details = DetailsOf(app->tracks, app->scale.LonScale);
        BlowWind(windSamples, app->race, app->wind);
        desk = std::make_unique<RaceDesk>(*app, services);
        app->view.CentreOn({MiddleLat, MiddleLon});
        app->view.GridOriginLat = MiddleLat;
        app->view.GridOriginLon = MiddleLon;
        app->clock.ReplayRangeEnd = Fixes;
        app->clock.ReplayRangeStart = -60;
        LayOut();
    }
    RaceDisp& Form() const { return desk->form; }
    void ShowMoment() const { desk->session.TheStage().ShowMoment(); }
    /// The form in its size, with all pictures drawn.
    void LayOut() const {
        RaceDisp& form = Form();
        form.Move(0, 0, 1310, 1010);
        form.LoadBoats(app->race.Boats.Count());
        form.LayoutPanels(app->settings, app->race.Boats.Count());
        app->view.MapSide = form.MapSide();
        desk->session.TheStage().Repaint(Changed::All | Changed::Boats);
        ShowMoment();
    }
};

}  // namespace keelview::bench
