#include "instruments/overview.h"

#include <cmath>
#include <vector>

namespace keelview {

namespace {

/// How far up and to the left of its boat's place a marker begins, pixels.
constexpr double MarkerOffset = 2.0;
/// Fixes closer to the last drawn one than this cannot be told apart on the overview, pixels.
constexpr double FinestStep = 0.25;

Point AsPoint(const ScreenPoint& at) {
    return {at.X, at.Y};
}

}  // namespace

Overview::Overview(AppState& app, RaceDisp& form) : app_(app), form_(form) {}

void Overview::DrawOverviewMap() {
    Surface& overview = form_.Picture6;
    overview.Cls();
    const double height = overview.ScaleHeight();
    centreX_ = centreY_ = height / 2;
    latScale_ = height / app_.area.AreaSpan * app_.view.MapFillFactor;
    lonScale_ = latScale_ * app_.scale.LonScale;
    const Picture image = overview.Image();
    unitX_ = image.Width() / overview.ScaleWidth();
    unitY_ = image.Height() / overview.ScaleHeight();
    for (int boat = 1; boat <= app_.race.BoatCount; ++boat) DrawTrack(boat);
    DrawCoast();
    form_.Timer1.SetEnabled(true);
}

ScreenPoint Overview::ToUnits(double lat, double lon) const {
    const double east = (lon - app_.area.HomeCentreLon) * lonScale_;
    const double south = (app_.area.HomeCentreLat - lat) * latScale_;
    const double sine = app_.view.ScreenUpSin;
    const double cosine = app_.view.ScreenUpCos;
    return {east * cosine + south * sine + centreX_, south * cosine - east * sine + centreY_};
}

ScreenPoint Overview::ToOverview(double lat, double lon) const {
    const ScreenPoint at = ToUnits(lat, lon);
    return {at.X * unitX_, at.Y * unitY_};
}

MapPosition Overview::FromOverview(double x, double y) const {
    const double right = x - centreX_;
    const double down = y - centreY_;
    const double sine = app_.view.ScreenUpSin;
    const double cosine = app_.view.ScreenUpCos;
    const double east = right * cosine - down * sine;
    const double south = right * sine + down * cosine;
    return {app_.area.HomeCentreLat - south / latScale_, app_.area.HomeCentreLon + east / lonScale_};
}

void Overview::DrawTrack(int boat) {
    const auto b = static_cast<std::size_t>(boat);
    if (b >= app_.tracks.TrackLat.size()) return;
    const auto& lats = app_.tracks.TrackLat[b];
    const auto& lons = app_.tracks.TrackLon[b];
    const int count = app_.tracks.TrackPointCount[b];
    const double step = FinestStep / unitY_;
    std::vector<Point> points;
    for (int point = 1; point <= count; ++point) {
        const auto i = static_cast<std::size_t>(point);
        const Point here = AsPoint(ToUnits(lats[i], lons[i]));
        const bool apart = points.empty() || std::abs(here.X - points.back().X) > step ||
                           std::abs(here.Y - points.back().Y) > step;
        if (apart || point == count) points.push_back(here);
    }
    form_.Picture6.Polyline(points, app_.display.BoatColour[b]);
}

// A stretch of coast shows where one of its ends lies inside; one that only crosses the overview does not.
void Overview::DrawCoast() {
    const double side = form_.Picture6.ScaleHeight();
    const auto inside = [side](const Point& at) {
        return at.X > 0 && at.X < side && at.Y > 0 && at.Y < side;
    };
    std::vector<Point> ends;
    Point previous;
    bool previousInside = false;
    for (int point = 1; point <= app_.coast.CoastCount; ++point) {
        const auto i = static_cast<std::size_t>(point);
        const double lat = app_.coast.CoastLat[i];  // negative where a line begins
        const Point here = AsPoint(ToUnits(std::abs(lat), app_.coast.CoastLon[i]));
        const bool hereInside = inside(here);
        if (lat > 0 && point > 1 && (previousInside || hereInside))
            ends.insert(ends.end(), {previous, here});
        previous = here;
        previousInside = hereInside;
    }
    form_.Picture6.Segments(ends, app_.display.InkColour);
}

void Overview::PlaceMarker(int boat) {
    const auto b = static_cast<std::size_t>(boat);
    PlaceMarkerAt(boat, app_.fleet.BoatLatNow[b], app_.fleet.BoatLonNow[b]);
}

void Overview::PlaceMarkerAt(int boat, double lat, double lon) {
    Sprite& marker = form_.BoatS[boat - 1];
    const ScreenPoint at = ToOverview(lat, lon);
    marker.Move(at.X - MarkerOffset, at.Y - MarkerOffset);
    marker.SetVisible(true);
}

void Overview::HideMarker(int boat) {
    form_.BoatS[boat - 1].SetVisible(false);
}

}  // namespace keelview
