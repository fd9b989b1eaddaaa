#include "racedata/coastline.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <optional>
#include <set>
#include <string_view>

#include "base/angles.h"
#include "base/files.h"
#include "base/numbers.h"
#include "base/strings.h"
#include "racedata/limits.h"
#include "racedata/shore_file.h"

namespace keelview {

namespace {

constexpr double BesselAxis = 6377397.155;  // metres
constexpr double BesselFlattening = 1 / 299.152813;
constexpr double TargetFlattening = 1 / 298.257222101;
constexpr double ShiftX = -148.0;  // metres, Tokyo datum to WGS-84
constexpr double ShiftY = 508.0;
constexpr double ShiftZ = 680.0;

constexpr double BandMinutes = 40.0;   // first-level square
constexpr double FirstColumn = 100.0;  // degrees east, from which the columns count
constexpr int Numbers = 100;           // of bands and of columns: a cell's name has two digits for each
constexpr int DegreesRound = 360;
constexpr double SquareLat = 5.0;  // second-level square, minutes
constexpr double SquareLon = 7.5;
constexpr double Fractions = 10000.0;  // units of a point along a square's side
constexpr std::string_view Digits = "0123456789";
constexpr int PairsALine = 7;
constexpr std::size_t PairWidth = 10;
constexpr std::size_t FieldWidth = 5;
constexpr std::uintmax_t FileLimit = 64U << 20U;
constexpr double ShoreSpans = 2.0;                   // how far from the middle shore files are read
constexpr std::size_t MostShorePoints = 4'000'000U;  // more than the world's file has

std::string_view Field(std::string_view line, std::size_t from, std::size_t width) {
    return from < line.size() ? line.substr(from, width) : std::string_view();
}

/// The share of a square's side that a field of a point tells; nothing unless it consists of digits.
std::optional<double> ShareOfSide(std::string_view field) {
    field = Trim(field);
    if (field.empty() || field.find_first_not_of(Digits) != std::string_view::npos) return {};
    return LenientNumber(field) / Fractions;
}

/// What is wanted of the coast: a box in minutes of arc.
struct Window {
    double South;
    double North;
    double West;
    double East;
};

/// The box that reaches so many spans from the middle of an area, in longitude no farther than half round.
Window WindowOf(const CoastArea& area, double spans) {
    const double reach = area.Span * spans;
    const double reachLon = std::min(reach / area.LonScale, MinutesRound / 2);
    return {area.CentreLat - reach, area.CentreLat + reach, area.CentreLon - reachLon,
            area.CentreLon + reachLon};
}

/// Reads the lines of one cell into the coast.
class CellReader {
  public:
    CellReader(const Window& window, Coast& coast) : window_(window), coast_(coast) {}

    void Read(std::string_view line) {
        if (line.empty()) return;
        if (line.front() == 'M') {
            OpenSquare(Field(line, 2, 6));
        } else if (line.front() == 'L') {
            point_ = 0;
            length_ = FloorToInt(LenientNumber(Field(line, 49, 6)));
        } else if (inWindow_) {
            ReadPoints(line);
        }
    }

  private:
    void OpenSquare(std::string_view code) {
        point_ = 0;
        length_ = 0;
        inWindow_ = code.size() == 6 && code.find_first_not_of(Digits) == std::string_view::npos;
        if (!inWindow_) return;
        lat0_ =
            LenientNumber(code.substr(0, 2)) * BandMinutes + LenientNumber(code.substr(4, 1)) * SquareLat;
        const double west = (LenientNumber(code.substr(2, 2)) + FirstColumn) * 60 +
                            LenientNumber(code.substr(5, 1)) * SquareLon;
        lon0_ = LongitudeNear(west, (window_.West + window_.East) / 2);
        inWindow_ = lat0_ + SquareLat > window_.South && lat0_ < window_.North && lon0_ < window_.East &&
                    lon0_ + SquareLon > window_.West;
    }

    void ReadPoints(std::string_view line) {
        for (std::size_t pair = 0; pair < PairsALine && point_ < length_; ++pair) {
            const auto x = ShareOfSide(Field(line, pair * PairWidth, FieldWidth));
            const auto y = ShareOfSide(Field(line, pair * PairWidth + FieldWidth, FieldWidth));
            if (!x || !y) return;
            if (++point_ == 1) coast_.emplace_back();
            coast_.back().Add(TokyoToWgs84(lat0_ + *y * SquareLat, lon0_ + *x * SquareLon));
        }
    }

    const Window& window_;
    Coast& coast_;
    bool inWindow_ = false;
    double lat0_ = 0.0;  // south-west corner of the square, minutes
    double lon0_ = 0.0;
    int length_ = 0;  // points of the present polyline
    int point_ = 0;   // points of it read so far
};

std::string TwoDigits(int number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
}

/// The tile of the shore files that is the square of a cell.
int TileOfCell(std::string_view cell) {
    return ShoreTileAt(LenientNumber(Field(cell, 0, 2)) * BandMinutes,
                       (LenientNumber(Field(cell, 2, 2)) + FirstColumn) * 60);
}

ShoreTiles ShoresRound(const std::filesystem::path& appPath, const CoastArea& area) {
    const Window window = WindowOf(area, ShoreSpans);
    return ReadShoreTiles(FindBelow(appPath, "coastline"),
                          ShoreTilesOf(window.South, window.North, window.West, window.East));
}

/// Adds the shores round an area; in the tiles of `cells` those of lakes alone.
void AddShores(const ShoreTiles& tiles, const std::set<int>& cells, double meridian, Coast& coast) {
    std::size_t left = MostShorePoints;
    for (const auto& [tile, packed] : tiles)
        for (const ShoreLine& line : ShoreLinesOf(tile, packed, left)) {
            left -= line.Points.size();
            if (!line.Inland && cells.contains(tile)) continue;
            const double west = line.Points.front().Lon;
            const double turn = LongitudeNear(west, meridian) - west;
            CoastLine& added = coast.emplace_back();
            for (const Position& at : line.Points) added.Add({at.Lat, at.Lon + turn});
        }
}

}  // namespace

int CoastPoints(const Coast& coast) {
    return std::accumulate(coast.begin(), coast.end(), 0, [](int points, const CoastLine& line) {
        return points + static_cast<int>(line.Points.size());
    });
}

void CoastLine::Add(const Position& at) {
    if (Points.empty()) SouthWest = NorthEast = at;
    SouthWest = {std::min(SouthWest.Lat, at.Lat), std::min(SouthWest.Lon, at.Lon)};
    NorthEast = {std::max(NorthEast.Lat, at.Lat), std::max(NorthEast.Lon, at.Lon)};
    Points.push_back(at);
}

Position TokyoToWgs84(double lat, double lon) {
    const double bessel = 2 * BesselFlattening - BesselFlattening * BesselFlattening;
    const double target = 2 * TargetFlattening - TargetFlattening * TargetFlattening;
    const double phi = lat / 60 * DegToRad;
    const double lambda = lon / 60 * DegToRad;
    const double n = BesselAxis / std::sqrt(1 - bessel * std::sin(phi) * std::sin(phi));
    const double x = n * std::cos(phi) * std::cos(lambda) + ShiftX;
    const double y = n * std::cos(phi) * std::sin(lambda) + ShiftY;
    const double z = (1 - bessel) * n * std::sin(phi) + ShiftZ;
    const double east = std::atan2(y, x) / DegToRad * 60;
    const double north = std::atan(z / (1 - target) / std::hypot(x, y)) / DegToRad * 60;
    return {north, LongitudeNear(east, lon)};
}

std::vector<std::string> CoastCells(const CoastArea& area) {
    const double half = area.Span / 2;
    const double halfLon = half / area.LonScale;
    const int south = std::max(FloorToInt((area.CentreLat - half) / BandMinutes), 0);
    const int north = std::min(FloorToInt((area.CentreLat + half) / BandMinutes), Numbers - 1);
    const int west = FloorToInt((area.CentreLon - halfLon) / 60 - FirstColumn);
    const int east = FloorToInt((area.CentreLon + halfLon) / 60 - FirstColumn);
    std::vector<std::string> cells;
    for (int band = south; band <= north && cells.size() < MaxCells; ++band)
        for (int step = 0; step < DegreesRound && west + step <= east && cells.size() < MaxCells; ++step) {
            const int column = ((west + step) % DegreesRound + DegreesRound) % DegreesRound;
            if (column < Numbers) cells.push_back(TwoDigits(band) + TwoDigits(column));
        }
    return cells;
}

Coast LoadCoastlines(const std::filesystem::path& appPath, const std::vector<std::string>& cells,
                     const CoastArea& area) {
    const Window window = WindowOf(area, 1);
    Coast coast;
    std::set<int> read;
    for (const std::string& cell : cells) {
        const auto bytes = ReadWholeFile(FindBelow(appPath, "coastline/" + cell + ".cst"), FileLimit);
        if (!bytes) continue;
        read.insert(TileOfCell(cell));
        CellReader reader(window, coast);
        for (std::string_view rest = *bytes; !rest.empty();) reader.Read(CutLine(rest));
    }
    AddShores(ShoresRound(appPath, area), read, area.CentreLon, coast);
    return coast;
}

std::string CutShores(const std::filesystem::path& appPath, const std::vector<CoastArea>& areas) {
    ShoreTiles tiles;
    for (const CoastArea& area : areas) tiles.merge(ShoresRound(appPath, area));
    return tiles.empty() ? std::string() : ShoreFileOf(tiles);
}

}  // namespace keelview
