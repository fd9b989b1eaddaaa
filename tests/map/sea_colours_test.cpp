#include <gtest/gtest.h>

#include <QImage>
#include <QWidget>
#include <algorithm>
#include <cmath>

#include "support/test_desk.h"

namespace keelview {
namespace {

struct SeaColoursTest : testing::Test, TestDesk {};

/// Relative luminance in sRGB, from the pixel itself (IEC 61966-2-1).
double Luminance(const QColor& colour) {
    const auto light = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * light(colour.redF()) + 0.7152 * light(colour.greenF()) + 0.0722 * light(colour.blueF());
}

/// The largest contrast between the sea and a pixel of the map near a place.
double ContrastNear(const QImage& map, QPoint at, int reach, double sea) {
    double furthest = 1;
    for (int y = at.y() - reach; y <= at.y() + reach; ++y) {
        for (int x = at.x() - reach; x <= at.x() + reach; ++x) {
            const double ink = Luminance(map.pixelColor(x, y));
            furthest = std::max(furthest, (std::max(sea, ink) + 0.05) / (std::min(sea, ink) + 0.05));
        }
    }
    return furthest;
}

TEST_F(SeaColoursTest, WhatSaysSomethingIsReadOnEverySeaFromTheStart) {
    constexpr int boats = 15;  // all colours that boats have
    WriteRace(boats, "WF, w.csv\r\nLL, 45, 150\r\nLN, 2116.9, 8369.02, 2116.9, 8369.12\r\n");
    tree.Wind("w.csv", {{0, 12, 300}, {600, 12, 300}});
    Open();
    std::vector<Surface*> cells{nullptr};  // as the display opens
    for (Surface* cell : Form().ColourCells()) cells.push_back(cell);
    for (const Surface* cell : cells) {
        if (cell != nullptr) driver::Click(*cell);
        driver::Settle();
        const QImage map = driver::Face(Map()).grab().toImage();
        const int bar = static_cast<int>(app.view.MapSide) - 20;
        const double sea = Luminance(map.pixelColor(60, bar - 12));
        EXPECT_GE(ContrastNear(map, {60, bar}, 2, sea), 4.5) << "scale bar";
        EXPECT_GE(ContrastNear(map, PixelOf({2116.9, 8369.05}), 2, sea), 4.5) << "start line";
        for (int boat = 1; boat <= boats; ++boat)
            EXPECT_GE(ContrastNear(map, PixelOf({Lat + SixKnots * 400, Lon + 0.1 * (boat - 1)}), 1, sea),
                      4.5)
                << "track " << boat;
    }
}

}  // namespace
}  // namespace keelview
