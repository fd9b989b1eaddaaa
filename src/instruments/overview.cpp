#include "instruments/overview.h"

#include <vector>

#include "analysis/track_at.h"
#include "map/coast_picture.h"
#include "map/track_picture.h"
#include "session/livery.h"

namespace keelview {

namespace {

/// How far up and to the left of its boat's place a marker begins, pixels.
constexpr double MarkerOffset = 2.0;

}  // namespace

void Overview::Repaint(Changed changed) {
    if (Any(changed, Changed::Boats)) ReadyMarkers();
    if (Any(changed, Changed::Race | Changed::Boats | Changed::Colours) ||
        app_.view.ScreenUpDirection != drawnUp_)
        Draw();
}

void Overview::ReadyMarkers() {
    for (int boat = 1; boat <= app_.race.Boats.Count(); ++boat) {
        Sprite& marker = form_.BoatS[boat - 1];
        DrawLiveryField(marker, boat, {0, 0}, {marker.Width() - 1, marker.Height() - 1});
        marker.Box(0, 0, marker.Width() - 1, marker.Height() - 1, White);
        marker.SetVisible(false);
    }
}

void Overview::Draw() {
    Surface& overview = form_.Picture6;
    overview.Cls();
    const double height = overview.ScaleHeight();
    const double latScale = height / app_.area.AreaSpan * app_.view.MapFillFactor;
    const Picture image = overview.Image();
    pixelsPerUnit_ = {image.Width() / overview.ScaleWidth(), image.Height() / height};
    drawnUp_ = app_.view.ScreenUpDirection;
    projection_ = Projection({app_.area.HomeCentreLat, app_.area.HomeCentreLon}, {height / 2, height / 2},
                             drawnUp_, latScale, latScale * app_.scale.LonScale);
    std::vector<TrackPiece> tracks;
    for (int boat = 1; boat <= app_.tracks.Boats.Count(); ++boat)
        tracks.push_back({boat, 1, app_.tracks.Boats[boat].Count()});
    DrawTracks(overview, app_, tracks, projection_);
    DrawCoast(overview, app_.coast, projection_, height, app_.shown.InkColour);
}

void Overview::Show(const Moment& now) {
    if (app_.shown.PointerOnTimeBar) return;
    for (int boat = 1; boat <= now.Boats.Count(); ++boat) {
        if (now.Boats[boat].IsSomewhere())
            PlaceMarker(boat, now.Boats[boat].At());
        else
            HideMarker(boat);
    }
}

void Overview::PreviewMoment(int time) {
    for (int boat = 1; boat <= app_.tracks.Boats.Count(); ++boat) {
        const Track& track = app_.tracks.Boats[boat];
        const int fix = FindSegment(track, time);
        if (fix > 0)
            PlaceMarker(boat, track.At(fix));
        else
            HideMarker(boat);
    }
}

void Overview::PlaceMarker(int boat, const Position& at) {
    const Point place = projection_.ToScreen(at);
    Sprite& marker = form_.BoatS[boat - 1];
    marker.Move(place.X * pixelsPerUnit_.X - MarkerOffset, place.Y * pixelsPerUnit_.Y - MarkerOffset);
    marker.SetVisible(true);
}

void Overview::HideMarker(int boat) {
    form_.BoatS[boat - 1].SetVisible(false);
}

}  // namespace keelview
