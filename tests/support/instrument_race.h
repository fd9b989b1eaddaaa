#pragma once

#include <cmath>
#include <vector>

#include "analysis/track_derivation.h"
#include "instruments/overview_mouse.h"
#include "instruments/time_bar_mouse.h"
#include "instruments/wind_panel_mouse.h"
#include "map/instruments.h"
#include "map/replay_frame.h"
#include "support/drawn_race.h"
#include "support/qt_driver.h"

namespace keelview {

/// A drawn race with the instruments around its map and the person's mouse on them. Two boats lie about the
/// home centre (2100, 8400), in an area of 2 minutes.
struct InstrumentRace : DrawnRace {
    Chart chart{*app, Form(), services};
    Instruments instruments{*app, Form()};
    ReplayFrame frame{*app, Form(), services, chart, instruments};
    TimeBarMouse timeBarMouse{*app, Form(), chart, frame, instruments.overview, instruments.timeBar};
    WindPanelMouse windPanelMouse{*app, Form(), instruments.windPanel};
    OverviewMouse overviewMouse{*app, Form(), chart, frame, instruments.overview};

    explicit InstrumentRace(bool english = true) : DrawnRace(2, english) {
        app->race.RaceFileName.clear();  // no drawing writes a file
        app->area.HomeCentreLat = 2100;
        app->area.HomeCentreLon = 8400;
        app->area.AreaSpan = 2;
        app->scale = ComputeEarthScale(2100);
        app->view.ViewCentreLat = 2100;
        app->view.ViewCentreLon = 8400;
        QCoreApplication::processEvents();  // the window takes the size of the screen
        Form().LayoutPanels(app->settings, 2);
        app->view.MapSide = Form().MapSide();
        RefreshScales(app->area, app->scale, app->view);
        app->clock.ReplayRangeStart = -210;
        app->clock.ReplayRangeEnd = 600;
        app->clock.LastFixTime = 600;
        app->passes.FirstPassTime.fill(NobodyPassed);
        Form().PicTimeBar.Show();
        Form().Picture1.SetEnabled(true);
    }

    /// A boat that sails north from `lat` 0.001 minutes a second, on a course that is told alone.
    void SailNorth(int boat, int first, int last, double lat, double lon, double course) {
        Sail(boat, first, last, course, 6);
        for (int t = first; t <= last; ++t) {
            app->tracks.TrackLat[boat].push_back(lat + 0.001 * (t - first));
            app->tracks.TrackLon[boat].push_back(lon);
        }
    }

    void Wind(const std::vector<int>& times, const std::vector<double>& directions, double speed = 10) {
        app->race.WindFileName = "w.csv";
        app->wind = {};
        for (std::size_t i = 0; i < times.size(); ++i) {
            app->wind.WindTimes.push_back(times[i]);
            app->wind.WindDirections.push_back(directions[i]);
            app->wind.WindSpeeds.emplace_back(speed);
        }
        app->wind.WindCount = static_cast<int>(times.size());
    }

    /// The y of a time on the time bar, to the pixel.
    int BarY(double time) const {
        return static_cast<int>((600 - time) * app->display.GraphTimeScale + 30 + 0.5);
    }
    /// The whole second under a y of the time bar.
    int SecondAt(int y) const {
        return static_cast<int>(std::floor(600 - (y - 30) * SecondsPerPixel() + 0.5));
    }
    /// The time that a press at BarY stands for is this close.
    double SecondsPerPixel() const { return 1 / app->display.GraphTimeScale; }
};

}  // namespace keelview
