#include "map/track_picture.h"

#include <vector>

#include "analysis/track_details.h"
#include "base/parallel.h"
#include "session/livery.h"

namespace keelview {

void DrawTracks(Surface& picture, const AppState& app, std::span<const TrackPiece> pieces,
                const Projection& projection) {
    constexpr double finest = 0.25;  // pixels of the screen
    const double pixelsPerUnit = picture.Image().Height() / picture.ScaleHeight();
    const double tolerance = finest / (pixelsPerUnit * projection.PerLatMinute());
    const OneBased<float> unknown;
    std::vector<std::vector<Point>> ways(pieces.size());
    std::vector<ColouredLine> lines(pieces.size());
    ForEachInParallel(static_cast<int>(pieces.size()), [&](int number) {
        const auto& [boat, first, last] = pieces[static_cast<std::size_t>(number - 1)];
        std::vector<Point>& way = ways[static_cast<std::size_t>(number - 1)];
        const auto& details = app.details.Holds(boat) ? app.details[boat] : unknown;
        for (const int fix : FixesToDraw(details, first, last, tolerance))
            way.push_back(projection.ToScreen(app.tracks.Boats[boat].At(fix)));
        lines[static_cast<std::size_t>(number - 1)] = {
            .Points = way, .Ink = ReadableOn(app.shown.SeaColour, BoatColour(boat))};
    });
    picture.Lines(lines);
}

}  // namespace keelview
