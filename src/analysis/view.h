#pragma once

#include "racedata/gps_track.h"

namespace keelview {

/// A point of a picture in pixels, y growing downwards.
struct ScreenPoint {
    double X = 0.0;
    double Y = 0.0;
};

/// Which part of the water the map shows: the chart is a flat plane, scaled and turned, without a
/// projection.
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
    double MapWidth = 0.0;           ///< pixels, as read at the last course drawing
    double MapHeight = 0.0;

    // Brought up to date by RefreshScales.
    double ScreenUpRadians = 0.0;
    double ScreenUpSin = 0.0;
    double ScreenUpCos = 1.0;
    double MapCentreX = 0.0;  ///< pixels
    double MapCentreY = 0.0;
    double PixelsPerLatMinute = 1.0;
    double PixelsPerLonMinute = 1.0;
    double PixelsPerMetre = 1.0;
};

/// Works out the scales, the map's middle and the turn from the rest of the view.
void RefreshScales(const TrackArea& area, const EarthScale& scale, View& view);

/// The pixel of a position (minutes of arc); values outside 0 to MapSide lie off the map.
inline ScreenPoint MapToScreen(const View& view, double lat, double lon) {
    const double east = (lon - view.ViewCentreLon) * view.PixelsPerLonMinute;
    const double south = (view.ViewCentreLat - lat) * view.PixelsPerLatMinute;
    return {east * view.ScreenUpCos + south * view.ScreenUpSin + view.MapCentreX,
            south * view.ScreenUpCos - east * view.ScreenUpSin + view.MapCentreY};
}

/// A position in minutes of arc under a pixel: the way back of MapToScreen.
struct MapPosition {
    double Lat = 0.0;
    double Lon = 0.0;
};
MapPosition ScreenToMap(const View& view, double x, double y);

/// The snap to the whole chart: a ZoomFactor below 0.6 becomes 0.5 around the home centre. ManualZoom
/// stays.
void SnapToWholeChart(const TrackArea& area, View& view);

/// The length of the scale bar: the largest 1, 2 or 5 times a power of ten metres not above 400 pixels.
struct ScaleBar {
    int Mantissa = 1;        ///< 1, 2 or 5; the bar has one tick more
    double BarMetres = 1.0;  ///< metres, also the spacing of the grid
};
ScaleBar ChooseScaleBar(double pixelsPerMetre);

}  // namespace keelview
