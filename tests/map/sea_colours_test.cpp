#include <gtest/gtest.h>

#include <QImage>
#include <QWidget>
#include <algorithm>
#include <cmath>
#include <map>

#include "session/livery.h"
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

double Contrast(double one, double other) {
    return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}

/// The largest contrast between the sea and a pixel of the map near a place.
double ContrastNear(const QImage& map, QPoint at, int reach, double sea) {
    double furthest = 1;
    for (int y = at.y() - reach; y <= at.y() + reach; ++y) {
        for (int x = at.x() - reach; x <= at.x() + reach; ++x) {
            furthest = std::max(furthest, Contrast(sea, Luminance(map.pixelColor(x, y))));
        }
    }
    return furthest;
}

QImage ImageOf(const Surface& surface) {
    driver::Settle();
    return driver::Face(surface).grab().toImage();
}

/// What is on one picture and not on another, in pieces of some pixels: the share of those that stand out
/// from the sea as a text or a line must. Edges are soft, so the strongest pixel of a piece tells.
double ShareThatIsRead(const QImage& with, const QImage& without, double sea) {
    constexpr int piece = 12;
    std::map<std::pair<int, int>, double> strongest;
    for (int y = 0; y < with.height(); ++y)
        for (int x = 0; x < with.width(); ++x) {
            if (with.pixel(x, y) == without.pixel(x, y)) continue;
            double& contrast = strongest[{x / piece, y / piece}];
            contrast = std::max(contrast, Contrast(Luminance(with.pixelColor(x, y)), sea));
        }
    const auto read = std::ranges::count_if(strongest, [](const auto& one) { return one.second >= 4.5; });
    return strongest.empty() ? 0.0 : static_cast<double>(read) / static_cast<double>(strongest.size());
}

/// Whether names can be read on their fields: each colour that fields are filled with in one picture, and
/// not in another, has pixels beside it that stand out from it as a text must.
void ExpectNamesAreRead(const QImage& with, const QImage& without) {
    std::map<QRgb, double> best;
    for (int y = 1; y < with.height() - 1; ++y)
        for (int x = 1; x < with.width() - 1; ++x) {
            if (with.pixel(x, y) == without.pixel(x, y) || with.pixel(x, y) != with.pixel(x - 1, y))
                continue;
            double& contrast = best[with.pixel(x, y)];
            for (const QPoint beside : {QPoint(x + 1, y), QPoint(x, y + 1), QPoint(x, y - 1)})
                contrast = std::max(contrast, Contrast(Luminance(with.pixelColor(beside)),
                                                       Luminance(with.pixelColor(x, y))));
        }
    for (int boat = 1; boat <= 15; ++boat) {
        const ColourParts parts = PartsOf(BoatColour(boat));
        EXPECT_GE(best[qRgb(parts.Red, parts.Green, parts.Blue)], 4.5) << "name " << boat;
    }
}

TEST_F(SeaColoursTest, NamesLayLinesAndTheClockOfAMarkAreReadOnEverySea) {
    WriteRace(15,
              "WF, w.csv\r\nLL, 45, 150\r\nLN, 2116.9, 8369.02, 2116.9, 8369.12\r\n"
              "LN, 2117.2, 8368.9, 2117.2, 8370.6\r\nCRS, L1, L2\r\n");
    tree.Wind("w.csv", {{0, 12, 300}, {600, 12, 300}});
    Open();
    Seek(240);
    driver::Click(Form().Check5);
    for (const Surface* cell : Form().ColourCells()) {
        driver::Click(*cell);
        const QImage plain = ImageOf(Map());
        const double sea = Luminance(plain.pixelColor(60, static_cast<int>(app.view.MapSide) - 32));
        driver::Click(Form().Check8);
        EXPECT_GE(ShareThatIsRead(plain, ImageOf(Map()), sea), 0.8) << "lay lines";
        driver::Click(Form().Check8);
        const QRect clock(PixelOf({2117.2, 8370.6}) + QPoint(-25, -50), QSize(50, 18));
        Seek(10);  // before the boats pass the line
        EXPECT_GE(ShareThatIsRead(plain.copy(clock), ImageOf(Map()).copy(clock), sea), 0.8) << "clock";
        Seek(240);
        driver::Click(Form().Check9);
        ExpectNamesAreRead(ImageOf(Map()), plain);
        driver::Click(Form().Check9);
    }
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
