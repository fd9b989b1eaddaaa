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

TEST_F(SeaColoursTest, TheScaleBarIsReadOnEverySeaFromTheStart) {
    Open();
    std::vector<Surface*> cells{nullptr};  // as the display opens
    for (Surface* cell : Form().ColourCells()) cells.push_back(cell);
    for (const Surface* cell : cells) {
        if (cell != nullptr) driver::Click(*cell);
        driver::Settle();
        const QImage map = driver::Face(Map()).grab().toImage();
        const int bar = static_cast<int>(app.view.MapSide) - 20;
        const double sea = Luminance(map.pixelColor(60, bar - 12));
        double furthest = 1;
        for (int y = bar - 2; y <= bar + 2; ++y) {
            const double ink = Luminance(map.pixelColor(60, y));
            furthest = std::max(furthest, (std::max(sea, ink) + 0.05) / (std::min(sea, ink) + 0.05));
        }
        EXPECT_GE(furthest, 4.5);
    }
}

}  // namespace
}  // namespace keelview
