#pragma once

#include <QTest>
#include <QWidget>
#include <memory>
#include <string>
#include <vector>

#include "display/fake_platform.h"
#include "display/qt/native_control.h"
#include "display/race_disp.h"
#include "map/boat_sprite.h"
#include "map/chart.h"
#include "session/app_state.h"

namespace keelview {

/// A race put together in memory on a shown display: 600 seconds from 2004/08/05 12:30:00, wind from north.
struct DrawnRace {
    std::unique_ptr<AppState> app = std::make_unique<AppState>();
    FakePlatform platform;
    ScriptedDialogs dialogs;
    Services services{platform, dialogs};
    std::unique_ptr<RaceDisp> shown;

    explicit DrawnRace(int boats, bool english = true) {
        app->settings.UseEnglish = english;
        RaceControl& race = app->race;
        race.BoatCount = boats;
        race.RaceFileName = "R2.txt";
        race.StartTimeText = "2004/08/05 12:30:00";
        race.FinishTimeText = "2004/08/05 12:40:00";
        race.RaceDuration = 600;
        race.ReplaySpan = 840;
        Tracks& tracks = app->tracks;
        for (auto* column : {&tracks.TrackLat, &tracks.TrackLon, &tracks.TrackDist, &tracks.TrackSpeed,
                             &tracks.TrackCourse})
            column->assign(static_cast<std::size_t>(boats) + 1, {0.0});
        tracks.TrackTime.assign(static_cast<std::size_t>(boats) + 1, {0});
        for (int boat = 1; boat <= boats; ++boat) race.BoatName[boat] = "Boat " + std::to_string(boat);
        shown = std::make_unique<RaceDisp>(app->settings);
        Form().Move(0, 0, 1310, 1010);  // a map of 1000 by 1000, whatever the screen
        Form().LayoutPanels(app->settings, boats);
        Chart::SetBoatPalette(app->display);
        CreateBoatControls(*app, Form());
        Form().ShowNow();
    }

    RaceDisp& Form() const { return *shown; }

    /// A fix every second from `first` to `last` at a steady course and speed.
    void Sail(int boat, int first, int last, double course, double knots) {
        Tracks& tracks = app->tracks;
        for (int t = first; t <= last; ++t) {
            tracks.TrackTime[boat].push_back(t);
            tracks.TrackCourse[boat].push_back(course);
            tracks.TrackSpeed[boat].push_back(knots);
            ++tracks.TrackPointCount[boat];
        }
    }

    /// Times and miles of a boat at the entries of the course, from entry 1.
    void Pass(int boat, const std::vector<int>& times, const std::vector<double>& miles) {
        app->race.CourseCount = static_cast<int>(times.size());
        for (int entry = 1; entry <= app->race.CourseCount; ++entry) {
            app->race.CourseOrder[entry] = "MK" + std::to_string(entry);
            app->passes.MarkPassTime[boat][entry] = times[entry - 1];
            app->passes.MarkPassDist[boat][entry] = miles[entry - 1];
        }
        app->passes.StatsReady = true;
    }
};

/// The part of a control that the mouse meets.
inline QWidget* Face(const Control& control) {
    return NativeControl::Of(control).Inner;
}

inline void ClickOn(const Control& control) {
    QTest::mouseClick(Face(control), Qt::LeftButton, {}, {8, Face(control)->height() / 2});
}

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
