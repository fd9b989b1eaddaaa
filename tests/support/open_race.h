#pragma once

#include <gtest/gtest.h>

#include <string>

#include "support/desk_parts.h"
#include "support/qt_driver.h"

namespace keelview {

/// A race on the disc, opened in EditMode on a display that is shown with all that a person can do at it.
/// No timer runs; the map takes the mouse, and auto trace is off.
struct OpenRace : DeskParts {
    /// Boats sail north side by side, "Boat 1" in the west; `lines` are further lines of R1.txt.
    void WriteRace(int boats, const std::string& lines = {}) {
        std::string names;
        for (int boat = 1; boat <= boats; ++boat) {
            const std::string file = "boat" + std::to_string(boat) + ".trk";
            tree.Boat(file, Lat, Lon + 0.1 * (boat - 1), SixKnots, 0, -20, 620);
            names += "BN, " + file + ", Boat " + std::to_string(boat) + "\r\n";
        }
        tree.Race("R1.txt", names + lines);
    }
    void Open(bool english = true, int boats = 2) {
        WriteRace(boats);
        tree.Write("raceadmin/Ver.00", english ? "0,1" : "0,0");
        dialogs.AnswerYesNo(true);  // edit data
        SettleStart(*app, services);
        app->race.RaceFileName = "R1.txt";  // chosen at the menu
        MakeDesk(true);
        ASSERT_TRUE(desk->session.LoadRace());
        Form().ShowNow();
        driver::Settle();
        Form().Timer1.SetEnabled(false);
        for (Control* control : std::initializer_list<Control*>{&Form().Picture1, &Form().Check5})
            control->SetEnabled(true);
    }

    Surface& Map() const { return Form().Picture1; }

    /// The pixel of a position on the map.
    QPoint PixelOf(double lat, double lon) const {
        const ScreenPoint at = MapToScreen(app->view, lat, lon);
        return {static_cast<int>(std::lround(at.X)), static_cast<int>(std::lround(at.Y))};
    }
    /// The position that a click there means.
    MapPosition PositionAt(QPoint pixel) const { return ScreenToMap(app->view, pixel.x(), pixel.y()); }
    void ClickMap(QPoint at, Qt::MouseButton button = Qt::LeftButton) const {
        driver::ClickAt(Map(), at, button);
    }
    std::string File() const { return tree.Read("raceadmin/R1.txt"); }
    bool FileHolds(const std::string& line) const {
        return File().find("\n" + line + "\r\n") != std::string::npos;
    }
};

}  // namespace keelview
