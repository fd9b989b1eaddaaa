#pragma once

#include <string>

#include "session/app_state.h"
#include "support/fake_platform.h"
#include "support/race_tree.h"
#include "support/scripted_dialogs.h"

namespace keelview {

/// What the program stands in during a test: a tree on the disc, a system and a person who do as they are
/// told, and a state that is settled for that tree, in English and for editing. Its tree is empty at first.
struct TestWorld {
    static constexpr double Lat = RaceTree::Lat;
    static constexpr double Lon = RaceTree::Lon;
    static constexpr double SixKnots = RaceTree::SixKnots;

    RaceTree tree;
    FakePlatform platform;
    ScriptedDialogs dialogs;
    Services services{platform, dialogs};
    AppState app;

    TestWorld() {
        platform.Folder = tree.Root();
        app.settings.AppPath = tree.Root();
        app.settings.AppTitle = "Keelview";
        app.settings.UiFontName = "MS Sans Serif";
        app.settings.UseEnglish = true;
    }
    TestWorld(const TestWorld&) = delete;
    TestWorld& operator=(const TestWorld&) = delete;

    /// What was told or asked last; empty if nothing was.
    std::string Said() const { return dialogs.All().empty() ? "" : dialogs.All().back().Text; }
};

}  // namespace keelview
