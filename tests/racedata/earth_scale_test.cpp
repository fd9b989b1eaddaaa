#include "racedata/earth_scale.h"

#include <gtest/gtest.h>

namespace keelview {
namespace {

TEST(EarthScale, AgreesWithLengthsMeasuredInSpace) {
    // Chords of a millionth of a millionth of a degree between points of the ellipsoid, placed in space by
    // their parametric latitude with 60 digits, times the factors of the charts.
    struct Case {
        double degrees;
        double north;
        double east;
    };
    for (const Case& c : {Case{0, 1840.213668, 1851.502587}, Case{35, 1846.309732, 1518.335029},
                          Case{35.3, 1846.401329, 1512.772619}, Case{-42.5, 1848.680053, 1367.161150},
                          Case{60, 1854.160135, 928.084081}}) {
        const EarthScale scale = ComputeEarthScale(c.degrees * 60);
        EXPECT_NEAR(scale.MetresPerLatMinute, c.north, 1e-6) << c.degrees;
        EXPECT_NEAR(scale.MetresPerLonMinute, c.east, 1e-6) << c.degrees;
        EXPECT_NEAR(scale.LonScale, c.east / c.north, 1e-9);
    }
}

}  // namespace
}  // namespace keelview
