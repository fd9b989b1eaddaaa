#include "map/auto_trace.h"

#include <algorithm>

namespace keelview {

void AutoTrace(AppState& app, RaceDisp& form, Chart& chart) {
    double minLat = 100000;
    double maxLat = -100000;
    double minLon = 1000000;
    double maxLon = -1000000;
    for (int boat = 1; boat <= app.race.BoatCount; ++boat) {
        const auto b = static_cast<std::size_t>(boat);
        const double lat = app.fleet.BoatLatNow[b];
        const double lon = app.fleet.BoatLonNow[b];
        if (!form.Bnam[boat - 1].Value() || lat <= 0) continue;
        minLat = std::min(minLat, lat);
        maxLat = std::max(maxLat, lat);
        minLon = std::min(minLon, lon);
        maxLon = std::max(maxLon, lon);
    }
    app.view.ViewCentreLat = (maxLat + minLat) / 2;
    app.view.ViewCentreLon = (maxLon + minLon) / 2;
    // A single boat would be shown at infinite zoom: 0.02 minutes is the smallest box, 37 metres.
    constexpr double SmallestBox = 0.02;
    constexpr double Margin = 0.85;
    double box = std::max({maxLat - minLat, (maxLon - minLon) * app.scale.LonScale, SmallestBox});
    box /= app.view.AutoTraceZoom;
    app.view.ZoomFactor = app.area.AreaSpan / box * Margin;
    chart.DrawBaseChart();
    chart.DrawCourse();
}

}  // namespace keelview
