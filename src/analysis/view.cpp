#include "analysis/view.h"

#include <algorithm>
#include <cmath>

#include "base/angles.h"
#include "racedata/earth_scale.h"

namespace keelview {

namespace {

constexpr double WholeChartZoom = 0.5;
constexpr double SmallestBox = 0.02;  // minutes; a single boat would be shown at infinite zoom
constexpr double BoxShare = 0.85;     // of the area's share of the map, at AutoTraceZoom 1
constexpr double LongestBarPixels = 400.0;
constexpr double MostPixelsPerMetre = 100.0;

double PixelsPerLatMinute(const View& view, const TrackArea& area) {
    return view.MapSide / area.AreaSpan * view.MapFillFactor * view.ZoomFactor;
}

}  // namespace

Projection::Projection(const Position& centre, const Point& at, double up, double perLatMinute,
                       double perLonMinute)
    : centre_(centre),
      at_(at),
      sine_(std::sin(up * DegToRad)),
      cosine_(std::cos(up * DegToRad)),
      perLatMinute_(perLatMinute),
      perLonMinute_(perLonMinute) {}

Position Projection::ToEarth(const Point& pixel) const {
    const double right = pixel.X - at_.X;
    const double down = pixel.Y - at_.Y;
    const double east = right * cosine_ - down * sine_;
    const double south = right * sine_ + down * cosine_;
    return {centre_.Lat - south / perLatMinute_, centre_.Lon + east / perLonMinute_};
}

Projection MapProjection(const View& view, const TrackArea& area, const EarthScale& scale) {
    const double perLatMinute = PixelsPerLatMinute(view, area);
    const double middle = view.MapSide / 2;
    return {view.Centre(),
            {middle, middle},
            view.ScreenUpDirection,
            perLatMinute,
            perLatMinute * scale.LonScale};
}

double PixelsPerMetre(const View& view, const TrackArea& area, const EarthScale& scale) {
    const double metres = scale.MetresPerLatMinute > 0 ? scale.MetresPerLatMinute : MetresPerNauticalMile;
    return PixelsPerLatMinute(view, area) / metres;
}

double LargestZoom(const View& view, const TrackArea& area, const EarthScale& scale) {
    const double zoom = view.ZoomFactor * (MostPixelsPerMetre / PixelsPerMetre(view, area, scale));
    return std::isfinite(zoom) ? std::max(zoom, 1.0) : 1.0;
}

void BringUnder(const Position& place, const Point& pixel, const TrackArea& area, const EarthScale& scale,
                View& view) {
    const Position there = MapProjection(view, area, scale).ToEarth(pixel);
    view.CentreOn({view.ViewCentreLat + place.Lat - there.Lat, view.ViewCentreLon + place.Lon - there.Lon});
}

void ZoomAt(const Point& pixel, double factor, const TrackArea& area, const EarthScale& scale, View& view) {
    const Position place = MapProjection(view, area, scale).ToEarth(pixel);
    const double from = factor > 1 ? std::max(view.ZoomFactor, WholeChartBelow) : view.ZoomFactor;
    const double zoom = std::clamp(from * factor, WholeChartZoom, LargestZoom(view, area, scale));
    view.ZoomFactor = zoom;
    view.ManualZoom = zoom;
    BringUnder(place, pixel, area, scale, view);
}

void SnapToWholeChart(const TrackArea& area, View& view) {
    if (!(view.ZoomFactor < WholeChartBelow)) return;
    view.ZoomFactor = WholeChartZoom;
    view.CentreOn({area.HomeCentreLat, area.HomeCentreLon});
}

void FitTo(std::span<const Position> places, const TrackArea& area, const EarthScale& scale, View& view) {
    if (places.empty()) return;
    const auto [south, north] = std::ranges::minmax(places, {}, &Position::Lat);
    const auto [west, east] = std::ranges::minmax(places, {}, &Position::Lon);
    view.CentreOn({(north.Lat + south.Lat) / 2, (east.Lon + west.Lon) / 2});
    const double box =
        std::max({north.Lat - south.Lat, (east.Lon - west.Lon) * scale.LonScale, SmallestBox});
    view.ZoomFactor = area.AreaSpan / (box / view.AutoTraceZoom) * BoxShare;
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
