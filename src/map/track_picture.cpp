#include "map/track_picture.h"

#include <vector>

#include "analysis/track_details.h"
#include "session/livery.h"

namespace keelview {

void DrawTrackLine(Surface& picture, const AppState& app, int boat, int first, int last,
                   const Projection& projection) {
    constexpr double finest = 0.25;  // pixels of the screen
    const double pixelsPerUnit = picture.Image().Height() / picture.ScaleHeight();
    const double tolerance = finest / (pixelsPerUnit * projection.PerLatMinute());
    const OneBased<float> unknown;
    const auto& details = app.details.Holds(boat) ? app.details[boat] : unknown;
    const Track& track = app.tracks.Boats[boat];
    std::vector<Point> points;
    for (const int fix : FixesToDraw(details, first, last, tolerance))
        points.push_back(projection.ToScreen(track.At(fix)));
    picture.Polyline(points, ReadableOn(app.shown.SeaColour, BoatColour(boat)));
}

}  // namespace keelview
