#pragma once

#include <gtest/gtest.h>

#include <QPoint>
#include <cmath>
#include <memory>
#include <string>

#include "instruments/race_desk.h"
#include "support/qt_driver.h"
#include "support/test_world.h"

namespace keelview {

/// A person at the display of a race, with all that can be done there; to be driven by support/qt_driver.
///
///     TestDesk desk;
///     desk.WriteRace(2, "WF, w.csv\r\nMK, 2117.2, 8369\r\n");   // or tree.Race and tree.Boat by hand
///     desk.tree.Wind("w.csv", {{0, 12, 350}, {300, 14, 10}});
///     desk.Open();                                              // of two boats where nothing was written
///     desk.Seek(120);
///
/// An open race comes from the disc, through the loader and onto the form, as it does for a person. Its
/// film is stopped at second 50; the map takes the mouse, and auto trace is off. driver::Settle() has
/// everything drawn that is marked, and what the driver does settles by itself.
struct TestDesk : TestWorld {
    std::unique_ptr<RaceDesk> desk;

    /// Writes R1.txt: boats that sail north side by side at six knots from second -200 to 620, a tenth of a
    /// minute apart, with "Boat 1" in the west; `lines` are further lines of it.
    void WriteRace(int boats, const std::string& lines = {}) {
        std::string names;
        for (int boat = 1; boat <= boats; ++boat) {
            const std::string file = "boat" + std::to_string(boat) + ".trk";
            tree.Boat(file, Lat, Lon + 0.1 * (boat - 1), SixKnots, 0, -200, 620);
            names += "BN, " + file + ", Boat " + std::to_string(boat) + "\r\n";
        }
        tree.Race("R1.txt", names + lines);
    }

    /// Opens R1.txt, for editing or browse-only.
    void Open(bool edit = true, bool english = true) {
        if (File().empty()) WriteRace(2);
        app.settings.EditMode = edit;
        app.settings.UseEnglish = english;
        app.race.RaceFileName = "R1.txt";
        desk = std::make_unique<RaceDesk>(app, services);
        ASSERT_TRUE(desk->session.StartSession());
        // What the display does by itself two seconds later.
        Form().Timer2.SetEnabled(false);
        for (Control* control : std::initializer_list<Control*>{&Form().Picture1, &Form().Check5})
            control->SetEnabled(true);
        Form().Option7.SetValue(true);
        Seek(50);
        driver::Settle();
    }

    RaceDisp& Form() const { return desk->session.Display(); }
    Surface& Map() const { return Form().Picture1; }
    Film& TheFilm() const { return desk->session.TheFilm(); }
    void Seek(double time) const { TheFilm().Seek(time); }

    /// The pixel of a position on the map, and the position that a click there means.
    QPoint PixelOf(const Position& at) const {
        const Point pixel = MapProjection(app).ToScreen(at);
        return {static_cast<int>(std::lround(pixel.X)), static_cast<int>(std::lround(pixel.Y))};
    }
    Position PositionAt(QPoint pixel) const {
        return MapProjection(app).ToEarth({static_cast<double>(pixel.x()), static_cast<double>(pixel.y())});
    }
    void ClickMap(QPoint at, Qt::MouseButton button = Qt::LeftButton) const {
        driver::ClickAt(Map(), at, button);
    }

    /// The race control file as it stands on the disc, and whether it has such a line.
    std::string File() const { return tree.Read("raceadmin/R1.txt"); }
    bool FileHolds(const std::string& line) const {
        return File().find("\n" + line + "\r\n") != std::string::npos;
    }
};

/// How many pixels of a box look like this: `like` gets red, green and blue, 0 to 255.
template <class Like>
int CountPixels(const Picture& picture, int left, int top, int right, int bottom, Like like) {
    int count = 0;
    for (int y = top; y <= bottom; ++y) {
        for (int x = left; x <= right; ++x) {
            const ColourParts parts = PartsOf(picture.PixelAt(x, y));
            if (like(parts.Red, parts.Green, parts.Blue)) ++count;
        }
    }
    return count;
}

}  // namespace keelview
