#include "racedata/shore_file.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "racedata/coastline.h"
#include "support/temp_tree.h"

namespace keelview {
namespace {

using namespace std::string_literals;

/// In seconds of arc: a line of the sea through three points, the ring of a lake and a stroke in it.
const std::string Tile =
    "\x9e\x65\xf6\x4c\xe1\x1f\x38\x07\x09\x00\x25\x89\xe0\x4c\x00\x12\xe1\x71\x0f\x62\x22\x9c\x39\x06\x80"s;
const std::string Empty = "\x9e\x44\x44\x42\x00"s;  // a tile without a line
constexpr CoastArea Area{2140, 8370, 1, 0.8};       // in the tile of the cell 5339

std::string FileOf(const std::string& tile, double lon = 8340) {
    return ShoreFileOf({{ShoreTileAt(2120, lon), tile}});
}

int PointsOf(const TempTree& tree, const std::vector<std::string>& cells = {}) {
    return CoastPoints(LoadCoastlines(tree.Root(), cells, Area));
}

TEST(ShoreFile, ATileHoldsItsLinesToTheUnit) {
    const auto lines = ShoreLinesOf(ShoreTileAt(2120, 8340), Tile, 100);
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0].Points, (std::vector<Position>{{2120, 8340}, {2120.1, 8340.5}, {2160, 8400}}));
    EXPECT_EQ(lines[1].Points,
              (std::vector<Position>{{2130, 8350}, {2130, 8351}, {2131, 8350.5}, {2130, 8350}}));
    EXPECT_EQ(lines[2].Points.size(), 2U);
    EXPECT_TRUE(!lines[0].Inland && lines[1].Inland && lines[2].Inland);
    EXPECT_EQ(ShoreLinesOf(0, Tile, 6).size(), 1U);  // a limit of points
    for (std::size_t size = 0; size + 1 < Tile.size(); ++size)
        EXPECT_LT(ShoreLinesOf(0, Tile.substr(0, size), 100).size(), 3U) << size;
}

TEST(ShoreFile, CellsGoBeforeTheSeaOfFinerFilesAndThoseBeforeTheWorlds) {
    TempTree tree;
    tree.Write("coastline/World.shore", FileOf(Tile));
    EXPECT_EQ(PointsOf(tree, {"5339"}), 9);  // the cell has no file
    tree.Write("coastline/5339.cst", "M 533904\n");
    EXPECT_EQ(PointsOf(tree, {"5339"}), 6);  // the lake
    EXPECT_EQ(PointsOf(tree), 9);
    tree.Write("coastline/zurich.shore", FileOf(Tile, 480));
    EXPECT_EQ(PointsOf(tree), 9);
    tree.Write("coastline/yokohama.shore", FileOf(Empty));
    EXPECT_EQ(PointsOf(tree), 0);
    EXPECT_EQ(CutShores(tree.Root(), {Area}), FileOf(Empty));
    EXPECT_EQ(CutShores(tree.Root(), {Area, {2140, 510, 1, 0.8}}),
              ShoreFileOf({{ShoreTileAt(2120, 480), Tile}, {ShoreTileAt(2120, 8340), Empty}}));
    EXPECT_TRUE(CutShores(tree.Root(), {{-2140, 510, 1, 0.8}}).empty());
}

TEST(ShoreFile, ABrokenFileIsPassedOver) {
    TempTree tree;
    const std::string good = FileOf(Empty);  // it would go before the world's
    std::string late = good;
    late[16] = '\x7f';  // the tile ends beyond the file
    std::string nowhere = good;
    nowhere[14] = '\x7f';  // no tile has such a number
    std::string many = good;
    many[11] = '\x7f';
    const std::string twice = good.substr(0, 8) + "\2\0\0\0"s + good.substr(12, 8) + good.substr(12);
    for (const std::string& bytes : {""s, "KVSHORE"s, good.substr(0, 19), late, nowhere, many, twice,
                                     good.substr(0, good.size() - 1), "x" + good}) {
        tree.Write("coastline/a.shore", bytes);
        tree.Write("coastline/world.shore", FileOf(Tile));
        EXPECT_EQ(PointsOf(tree), 9) << bytes.size();
    }
}

/// Whether a straight way leads from water to land: an odd number of shores is crossed.
bool LeadsAshore(const Position& water, const Position& land) {
    const CoastArea area{water.Lat * 60, water.Lon * 60, 20, 0.8};
    const auto sideOf = [](const Position& a, const Position& b, const Position& c) {
        return (b.Lon - a.Lon) * (c.Lat - a.Lat) > (b.Lat - a.Lat) * (c.Lon - a.Lon);
    };
    const Position from{water.Lat * 60, water.Lon * 60};
    const Position to{land.Lat * 60, land.Lon * 60};
    int crossed = 0;
    for (const CoastLine& line : LoadCoastlines(KEELVIEW_DATA, {}, area))
        for (std::size_t i = 1; i < line.Points.size(); ++i) {
            const Position& a = line.Points[i - 1];
            const Position& b = line.Points[i];
            if (sideOf(from, to, a) != sideOf(from, to, b) && sideOf(a, b, from) != sideOf(a, b, to))
                ++crossed;
        }
    return crossed % 2 == 1;
}

TEST(WorldShores, LandAndWaterLieWhereTheyAre) {
    struct Case {
        const char* Name;
        Position Water;  // degrees
        std::vector<Position> Land;
        std::vector<Position> MoreWater;
    };
    for (const Case& place : std::vector<Case>{
             {"Sydney", {-33.851, 151.235}, {{-33.88, 151.21}, {-33.80, 151.20}}, {{-33.83, 151.33}}},
             {"Solent", {50.77, -1.27}, {{50.68, -1.30}, {50.87, -1.55}}, {{50.72, -0.95}}},
             {"Chesapeake", {38.95, -76.40}, {{39.00, -76.60}, {38.85, -76.00}}, {{38.70, -76.42}}},
             {"Garda", {45.60, 10.67}, {{45.60, 10.45}, {45.60, 10.90}}, {{45.75, 10.75}}},
             {"IJsselmeer", {52.80, 5.30}, {{52.75, 4.90}, {52.90, 5.60}}, {{52.70, 5.40}}},
             {"Biwa", {35.20, 136.07}, {{35.05, 136.20}, {35.20, 135.80}}, {{35.30, 136.10}}},
             {"Fiji", {-17.10, -179.90}, {{-16.87, -179.97}, {-16.50, -180.65}}, {{-17.20, -180.40}}},
             {"Fiji, eastward",
              {-17.10, 180.10},
              {{-16.87, 180.03}, {-16.50, 179.35}},
              {{-17.20, 179.60}}}}) {
        for (const Position& land : place.Land)
            EXPECT_TRUE(LeadsAshore(place.Water, land)) << place.Name << land.Lat;
        for (const Position& water : place.MoreWater)
            EXPECT_FALSE(LeadsAshore(place.Water, water)) << place.Name;
    }
}

}  // namespace
}  // namespace keelview
