#include "analysis/view.h"

#include <cmath>

#include "analysis/track_derivation.h"
#include "base/angles.h"

namespace keelview {

namespace {

constexpr double SnapBelowZoom = 0.6;
constexpr double WholeChartZoom = 0.5;
constexpr double LongestBarPixels = 400.0;

}  // namespace

void RefreshScales(const TrackArea& area, const EarthScale& scale, View& view) {
    view.ScreenUpRadians = view.ScreenUpDirection * DegToRad;
    view.ScreenUpSin = std::sin(view.ScreenUpRadians);
    view.ScreenUpCos = std::cos(view.ScreenUpRadians);
    view.PixelsPerLatMinute = view.MapSide / area.AreaSpan * view.MapFillFactor * view.ZoomFactor;
    view.PixelsPerLonMinute = view.PixelsPerLatMinute * scale.LonScale;
    view.MapCentreX = view.MapSide / 2;
    view.MapCentreY = view.MapSide / 2;
    // Without a track there is no scale yet; a minute is a nautical mile then.
    const double metres = scale.MetresPerLatMinute > 0 ? scale.MetresPerLatMinute : MetresPerNauticalMile;
    view.PixelsPerMetre = view.PixelsPerLatMinute / metres;
}

MapPosition ScreenToMap(const View& view, double x, double y) {
    const double right = x - view.MapCentreX;
    const double down = y - view.MapCentreY;
    const double east = right * view.ScreenUpCos - down * view.ScreenUpSin;
    const double south = right * view.ScreenUpSin + down * view.ScreenUpCos;
    return {view.ViewCentreLat - south / view.PixelsPerLatMinute,
            view.ViewCentreLon + east / view.PixelsPerLonMinute};
}

void SnapToWholeChart(const TrackArea& area, View& view) {
    if (!(view.ZoomFactor < SnapBelowZoom)) return;
    view.ZoomFactor = WholeChartZoom;
    view.ViewCentreLat = area.HomeCentreLat;
    view.ViewCentreLon = area.HomeCentreLon;
}

ScaleBar ChooseScaleBar(double pixelsPerMetre) {
    const double metres = LongestBarPixels / pixelsPerMetre;
    if (!std::isfinite(metres) || metres <= 0) return {};
    const double unit = std::pow(10.0, std::floor(std::log10(metres)));
    const double share = metres / unit;
    ScaleBar bar;
    bar.Mantissa = share > 5 ? 5 : share > 2 ? 2 : 1;
    bar.BarMetres = bar.Mantissa * unit;
    return bar;
}

}  // namespace keelview
