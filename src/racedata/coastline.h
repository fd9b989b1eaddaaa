#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace keelview {

/// The coast of the race area as one list of points, index 1 to CoastCount, minutes of arc on WGS-84. A
/// negative latitude marks the first point of a polyline.
struct Coast {
    std::vector<double> CoastLat{0.0};
    std::vector<double> CoastLon{0.0};
    int CoastCount = 0;  ///< 0: not read yet, or nothing found
};

/// Where the coast is wanted: the middle and the span of the race area in minutes of arc, and LonScale.
struct CoastArea {
    double CentreLat = 0.0;
    double CentreLon = 0.0;
    double Span = 0.0;
    double LonScale = 1.0;
};

/// A position in minutes of arc.
struct Position {
    double Lat = 0.0;
    double Lon = 0.0;
};

/// From the Tokyo datum (Bessel ellipsoid) to WGS-84, through earth-centred coordinates at height 0.
Position TokyoToWgs84(double lat, double lon);

/// The names, without extension, of the first-level grid squares (40 minutes by 1 degree) that the race
/// area touches, lower band first, longitude running fastest; at most MaxCells.
std::vector<std::string> CoastCells(const CoastArea& area);

/// Reads the named cells below `appPath`/coastline, of them the second-level squares that lie within a span
/// of the middle. A cell without a file is skipped; a line that cannot be read is skipped.
Coast LoadCoastlines(const std::filesystem::path& appPath, const std::vector<std::string>& cells,
                     const CoastArea& area);

}  // namespace keelview
