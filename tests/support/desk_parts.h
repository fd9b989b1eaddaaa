#pragma once

#include <memory>
#include <string>

#include "base/numbers.h"
#include "instruments/race_desk.h"
#include "shell/start.h"
#include "support/fake_platform.h"
#include "support/race_tree.h"
#include "support/scripted_dialogs.h"

namespace keelview {

/// What a display of a race needs in a test: a race on the disc, stand-ins for the system and the person,
/// and the desk when it is made.
struct DeskParts {
    static constexpr double Lat = RaceTree::Lat;
    static constexpr double Lon = RaceTree::Lon;
    static constexpr double SixKnots = RaceTree::SixKnots;

    RaceTree tree;
    FakePlatform platform;
    ScriptedDialogs dialogs;
    Services services{platform, dialogs};
    std::unique_ptr<AppState> app = std::make_unique<AppState>();
    std::unique_ptr<Splash> splash;
    std::unique_ptr<RaceDesk> desk;

    DeskParts() { platform.Folder = tree.Root(); }

    /// The line of a race control file for a line of `width` minutes in the boats' way; they cross it at
    /// second 100.
    static std::string LineAcross(double width) {
        const std::string lat = NumberText(Lat + SixKnots * 100);
        return "LN, " + lat + ", " + NumberText(Lon - 0.05) + ", " + lat + ", " +
               NumberText(Lon - 0.05 + width) + "\r\nCRS, L1\r\n";
    }
    void MakeDesk(bool english) {
        splash = std::make_unique<Splash>(platform.Screen(), english, "", 1.0);
        desk = std::make_unique<RaceDesk>(*app, services, *splash);
    }
    RaceDisp& Form() const { return desk->session.Display(); }
    void FrameAt(double time) const {
        app->clock.ReplayTime = time;
        desk->session.TheFrame().DrawFrame();
    }
};

}  // namespace keelview
