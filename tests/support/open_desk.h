#pragma once

#include <string>

#include "support/desk_parts.h"
#include "support/qt_driver.h"

namespace keelview {

/// A person at the open display of a race of two boats off Enoshima, its film standing still 50 seconds
/// after the start. The boats sail north side by side and cross the line L1 at second 100.
struct OpenDesk : DeskParts {
    explicit OpenDesk(bool editMode = false, bool english = true) {
        platform.Locale = LocaleEnglish;
        tree.Boat("a.trk", Lat, Lon, SixKnots, 0, -200, 620);
        tree.Boat("b.trk", Lat, Lon + 0.1, SixKnots, 0, -200, 620);
        tree.Race("R1.txt", "BN, a.trk, Alpha\r\nBN, b.trk, Beta\r\n" + LineAcross(0.2));
        SettleStart(*app, services);
        app->settings.EditMode = editMode;
        app->settings.UseEnglish = english;
        MakeDesk(english);
        desk->session.LoadRace();
        Form().ShowNow();
        Form().Option7.SetValue(true);
        Form().Picture1.SetEnabled(true);
        FrameAt(50);
    }

    std::string Said() const { return dialogs.All().empty() ? "" : dialogs.All().back().Text; }
};

}  // namespace keelview
