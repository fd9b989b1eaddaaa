#pragma once

#include <algorithm>
#include <span>

#include "base/point.h"
#include "base/position.h"
#include "racedata/gps_track.h"

namespace keelview {

/// A flat picture of the water, scaled and turned: a position to a pixel and back. It serves the map and
/// the overview alike.
class Projection {
  public:
    Projection() = default;
    /// `centre` stands at the point `at` of the picture, the direction `up` (degrees) points up, and a
    /// minute of latitude and of longitude have so many pixels.
    Projection(const Position& centre, const Point& at, double up, double perLatMinute,
               double perLonMinute);

    /// The pixel of a position; it may lie off the picture.
    Point ToScreen(const Position& position) const {
        const double east = (position.Lon - centre_.Lon) * perLonMinute_;
        const double south = (centre_.Lat - position.Lat) * perLatMinute_;
        return {east * cosine_ + south * sine_ + at_.X, south * cosine_ - east * sine_ + at_.Y};
    }
    /// The position under a pixel: the way back.
    Position ToEarth(const Point& pixel) const;

    const Point& Middle() const { return at_; }
    double PerLatMinute() const { return perLatMinute_; }  ///< pixels of a minute of latitude

  private:
    Position centre_;
    Point at_;
    double sine_ = 0.0;
    double cosine_ = 1.0;
    double perLatMinute_ = 1.0;
    double perLonMinute_ = 1.0;
};

/// Which part of the water the map shows.
struct View {
    double ViewCentreLat = 0.0;  ///< minutes of arc at the middle of the map
    double ViewCentreLon = 0.0;
    double GridOriginLat = 0.0;  ///< anchor of the grid: the centre as the race was loaded
    double GridOriginLon = 0.0;
    double ZoomFactor = 1.0;         ///< zoom that the drawing uses now
    double ManualZoom = 1.0;         ///< zoom chosen by mouse
    double AutoTraceZoom = 1.0;      ///< 0.10 to 1.00, share of the map that the boats take in auto trace
    double MapFillFactor = 0.75;     ///< share of the map side that AreaSpan takes at ZoomFactor 1
    double ScreenUpDirection = 0.0;  ///< degrees, compass direction at the top of the map
    double MapSide = 0.0;            ///< pixels, side of the square map

    Position Centre() const { return {ViewCentreLat, ViewCentreLon}; }
    /// A place beyond a pole is taken for the pole.
    void CentreOn(const Position& at) {
        constexpr double pole = 90.0 * 60.0;
        ViewCentreLat = std::clamp(at.Lat, -pole, pole);
        ViewCentreLon = at.Lon;
    }
};

/// At this zoom and below the whole chart is shown, and its middle stays at the home centre.
inline constexpr double WholeChartBelow = 0.6;

/// The map's projection.
Projection MapProjection(const View& view, const TrackArea& area, const EarthScale& scale);

/// Pixels of the map for a metre. Without a track there is no scale yet; a minute is a nautical mile then.
double PixelsPerMetre(const View& view, const TrackArea& area, const EarthScale& scale);

/// The zoom at which a pixel of the map is a centimetre, 1 at least: nobody enlarges beyond it.
double LargestZoom(const View& view, const TrackArea& area, const EarthScale& scale);

/// Moves the view so that a position comes to lie under a pixel of the map.
void BringUnder(const Position& place, const Point& pixel, const TrackArea& area, const EarthScale& scale,
                View& view);

/// Zooms what is shown by a factor, up to the largest zoom, and keeps the position under a pixel of the map
/// where it is. ManualZoom follows. From the whole chart the zoom goes on at once, out of it no further
/// than there.
void ZoomAt(const Point& pixel, double factor, const TrackArea& area, const EarthScale& scale, View& view);

/// The snap to the whole chart: a ZoomFactor below 0.6 becomes 0.5 around the home centre. ManualZoom
/// stays.
void SnapToWholeChart(const TrackArea& area, View& view);

/// The view that follows: sets the middle and the zoom so that all the places are on the map, the smallest
/// box being 0.02 minutes (37 metres), and the boats taking the share AutoTraceZoom of it. ManualZoom
/// stays. Nothing changes without a place.
void FitTo(std::span<const Position> places, const TrackArea& area, const EarthScale& scale, View& view);

/// The length of the scale bar: the largest 1, 2 or 5 times a power of ten metres not above 400 pixels.
struct ScaleBar {
    int Mantissa = 1;        ///< 1, 2 or 5; the bar has one tick more
    double BarMetres = 1.0;  ///< metres, also the spacing of the grid
};
ScaleBar ChooseScaleBar(double pixelsPerMetre);

}  // namespace keelview
