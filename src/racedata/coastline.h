#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "base/position.h"

namespace keelview {

/// A stretch of coast: joined points on WGS-84, and the box in which they lie.
struct CoastLine {
    std::vector<Position> Points;
    Position SouthWest;
    Position NorthEast;

    void Add(const Position& at);
};

/// The coast of the race area; empty where nothing was found.
using Coast = std::vector<CoastLine>;

/// The number of points of all stretches.
int CoastPoints(const Coast& coast);

/// Where the coast is wanted: the middle and the span of the race area in minutes of arc, and LonScale.
struct CoastArea {
    double CentreLat = 0.0;
    double CentreLon = 0.0;
    double Span = 0.0;
    double LonScale = 1.0;
};

/// From the Tokyo datum (Bessel ellipsoid) to WGS-84, through earth-centred coordinates at height 0. The
/// longitude is counted on from the one given.
Position TokyoToWgs84(double lat, double lon);

/// The names, without extension, of the first-level grid squares (40 minutes by 1 degree) that the race
/// area touches, lower band first, longitude running fastest; at most MaxCells. The grid reaches from the
/// equator to 66:40 N and from 100 E over the date line to 160 W: elsewhere there is no coast.
std::vector<std::string> CoastCells(const CoastArea& area);

/// Reads the coast from `appPath`/coastline; longitudes are counted as that of the middle is. Of the named
/// cells come the second-level squares that lie within a span of the middle; a line that cannot be read is
/// skipped. All tiles of the shore files within two spans, which is farther than the map can be led, add
/// the coast where no such cell has a file, and the lakes, which cells do not have, everywhere.
Coast LoadCoastlines(const std::filesystem::path& appPath, const std::vector<std::string>& cells,
                     const CoastArea& area);

/// What the shore files below `appPath`/coastline hold for races in these areas, as the bytes of one shore
/// file; empty where that is nothing.
std::string CutShores(const std::filesystem::path& appPath, const std::vector<CoastArea>& areas);

}  // namespace keelview
