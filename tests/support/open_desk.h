#pragma once

#include <memory>
#include <string>

#include "base/numbers.h"
#include "display/fake_platform.h"
#include "session/start.h"
#include "shell/race_desk.h"
#include "support/qt_driver.h"
#include "support/race_tree.h"

namespace keelview {

/// A person at the open display of a race of two boats off Enoshima, its film standing still 50 seconds
/// after the start. The boats sail north side by side and cross the line L1 at second 100.
struct OpenDesk {
    static constexpr double Lat = 35 * 60 + 17;
    static constexpr double Lon = 139 * 60 + 29;
    static constexpr double SixKnots = 6.0 / 3600;  // minutes of arc a second

    RaceTree tree;
    FakePlatform platform;
    ScriptedDialogs dialogs;
    Services services{platform, dialogs};
    std::unique_ptr<AppState> app = std::make_unique<AppState>();
    std::unique_ptr<Splash> splash;
    std::unique_ptr<RaceDesk> desk;

    explicit OpenDesk(bool editMode = false, bool english = true) {
        platform.Folder = tree.Root();
        platform.Locale = LocaleEnglish;
        tree.Boat("a.trk", Lat, Lon, SixKnots, 0, -200, 620);
        tree.Boat("b.trk", Lat, Lon + 0.1, SixKnots, 0, -200, 620);
        const double line = Lat + SixKnots * 100;
        tree.Race("R1.txt", "BN, a.trk, Alpha\r\nBN, b.trk, Beta\r\nLN, " + NumberText(line) + ", " +
                                NumberText(Lon - 0.05) + ", " + NumberText(line) + ", " +
                                NumberText(Lon + 0.15) + "\r\nCRS, L1\r\n");
        SettleStart(*app, services);
        app->settings.EditMode = editMode;
        app->settings.UseEnglish = english;
        splash = std::make_unique<Splash>(platform.Screen(), english, "", 1.0);
        desk = std::make_unique<RaceDesk>(*app, services, *splash);
        desk->session.LoadRace();
        Form().ShowNow();
        Form().Option7.SetValue(true);
        Form().Picture1.SetEnabled(true);
        FrameAt(50);
    }

    RaceDisp& Form() const { return desk->session.Display(); }
    void FrameAt(double time) const {
        app->clock.ReplayTime = time;
        desk->session.TheFrame().DrawFrame();
    }
    std::string Said() const { return dialogs.All().empty() ? "" : dialogs.All().back().Text; }
};

}  // namespace keelview
