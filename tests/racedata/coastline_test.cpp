#include "racedata/coastline.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "racedata/earth_scale.h"
#include "support/temp_tree.h"

namespace keelview {
namespace {

TEST(TokyoToWgs84, AgreesWithOtherWaysToComputeIt) {
    // By a root of the geodetic equations with height, 40 digits: the origin of the old datum in Tokyo, the
    // south-west and the north-east of the country.
    for (const auto& [tokyo, world] :
         {std::pair{Position{2139.2919133, 8384.6750333}, Position{2139.4856483, 8384.4815171}},
          {{1586, 7676}, {1586.2398748, 7675.8823642}},
          {{2713, 8741}, {2713.1379152, 8740.7432327}}}) {
        const Position at = TokyoToWgs84(tokyo.Lat, tokyo.Lon);
        EXPECT_NEAR(at.Lat, world.Lat, 2e-4);  // 0.2 metres: the height of the shifted point is left out
        EXPECT_NEAR(at.Lon, world.Lon, 1e-6);
    }
    // The origin as it was surveyed anew: 35 39 29.1572 N, 139 44 28.8759 E. Three numbers for a whole
    // country hit it within a metre.
    const Position origin = TokyoToWgs84(2139.2919133, 8384.6750333);
    EXPECT_NEAR(origin.Lat, 35 * 60 + 39 + 29.1572 / 60, 0.0006);
    EXPECT_NEAR(origin.Lon, 139 * 60 + 44 + 28.8759 / 60, 0.0006);
}

TEST(TokyoToWgs84, LeavesNoPlaceWhereItIsNotMeant) {
    // The shift is some hundred metres anywhere on earth.
    for (const Position& at :
         {Position{-2031, 9073}, {2580, -4300}, {-2200, -10799.9}, {10, 10800.1}, {0, 0}}) {
        const Position world = TokyoToWgs84(at.Lat, at.Lon);
        EXPECT_NEAR(world.Lat, at.Lat, 0.6) << at.Lat;
        EXPECT_NEAR(world.Lon, at.Lon, 0.6) << at.Lon;
    }
}

TEST(CoastCells, AreTheSquaresThatTheRaceTouches) {
    using Case = std::pair<CoastArea, std::vector<std::string>>;
    for (const auto& [area, cells] :
         {Case{{2120, 8380, 0.1, 0.8}, {"5239", "5339"}},  // on the very edge of two bands
          Case{{2121, 8380, 1, 0.8}, {"5339"}},
          Case{{2119.9, 8399.9, 1, 0.8}, {"5239", "5240", "5339", "5340"}}})
        EXPECT_EQ(CoastCells(area), cells) << area.CentreLat;
    // The grid goes on over the date line, and has no square south of the equator or west of its end.
    for (const auto& [area, cells] : {Case{{1, 10800, 4, 1}, {"0079", "0080"}},
                                      {{1, -10800, 4, 1}, {"0079", "0080"}},
                                      {{2121, -9601, 1, 0.8}, {"5399"}},
                                      {{2121, -9599, 1, 0.8}, {}},
                                      {{-2031, 9073, 4, 0.8}, {}},
                                      {{2580, -4300, 4, 0.7}, {}},
                                      {{3060, 0, 4, 0.6}, {}}})
        EXPECT_EQ(CoastCells(area), cells) << area.CentreLat << " " << area.CentreLon;
    EXPECT_EQ(CoastCells({2121, 8380, 1, 0}).size(), 20U);  // at the pole a mile spans the globe
    EXPECT_EQ(CoastCells({2121, 8380, 1e9, 0.8}).size(), 20U);
}

/// The head of a line of so many points.
std::string Head(const std::string& points) {
    return "L" + std::string(54 - points.size(), ' ') + points + "\r\n";
}

TEST(LoadCoastlines, ReadsTheSquaresNearTheRace) {
    TempTree tree;
    const CoastArea area{35 * 60 + 20, 139 * 60 + 30, 4, 0.8};
    tree.Write("coastline/5339.cst",
               "M 533904\r\n" + Head("9") +
                   "    0    0 1000    0 2000    0 3000    0 4000    0 5000    0 6000    0\r\n"  // inside
                   " 7000 5000 8000 5000 9000 5000 9999 5000\r\n" +  // two points count, two do not
                   Head("2") +
                   "    010000 500010000\r\n" +                               // a line of its own
                   "M 533977\r\n" + Head("2") + "    0    0    1    0\r\n" +  // out of sight
                   "M 5339\r\n" + Head("2") + "    0    0    1    0\r\n" +    // no square
                   "M 533904\r\n" + Head("4") + "    1    x    2    2\r\n\r\nshort\r\n");
    const Coast coast = LoadCoastlines(tree.Root(), {"5239", "5339"}, area);
    EXPECT_EQ(CoastPoints(coast), 11);
    ASSERT_EQ(coast.size(), 2U);
    ASSERT_EQ(coast[0].Points.size(), 9U);
    // 5339, row 0, column 4: 35 20 N, 139 30 E; x runs east along 7.5 minutes, y north along 5.
    for (const auto& [point, tokyo] : {std::pair(0, Position{2120, 8370}), {8, {2122.5, 8376}}}) {
        const Position world = TokyoToWgs84(tokyo.Lat, tokyo.Lon);
        EXPECT_NEAR(coast[0].Points[point].Lat, world.Lat, 1e-9);
        EXPECT_NEAR(coast[0].Points[point].Lon, world.Lon, 1e-9);
    }
    // A race that counts its longitudes from the west has the coast where it is.
    tree.Write("coastline/5380.cst", "M 538000\n" + Head("2") + "    0    0 5000    0\n");
    const Coast beyond = LoadCoastlines(tree.Root(), {"5380"}, {2121, -10799, 4, 0.8});
    ASSERT_EQ(CoastPoints(beyond), 2);
    EXPECT_NEAR(beyond[0].Points[0].Lon, -10800, 0.6);
    // Fields of a point are digits.
    tree.Write("coastline/5339.cst", "M 533904\n" + Head("3") + "1e3081e3081e3081e308-0001-0001\n");
    EXPECT_TRUE(LoadCoastlines(tree.Root(), {"5339"}, {2120, 8370, 4, 0.8}).empty());
}

TEST(EarthScale, AgreesWithLengthsMeasuredInSpace) {
    // Chords of a millionth of a millionth of a degree between points of the ellipsoid, placed in space by
    // their parametric latitude with 60 digits, times the factors of the charts.
    using Case = std::tuple<double, double, double>;
    for (const auto& [degrees, north, east] :
         {Case{0, 1840.213668, 1851.502587}, Case{35, 1846.309732, 1518.335029},
          Case{-42.5, 1848.680053, 1367.161150}, Case{60, 1854.160135, 928.084081}}) {
        const EarthScale scale = ComputeEarthScale(degrees * 60);
        EXPECT_NEAR(scale.MetresPerLatMinute, north, 1e-6) << degrees;
        EXPECT_NEAR(scale.MetresPerLonMinute, east, 1e-6) << degrees;
        EXPECT_NEAR(scale.LonScale, east / north, 1e-9);
    }
}

}  // namespace
}  // namespace keelview
