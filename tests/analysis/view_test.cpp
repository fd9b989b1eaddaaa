#include "analysis/view.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <tuple>
#include <vector>

namespace keelview {
namespace {

/// A map of 800 pixels around 35 degrees north whose area spans 3 minutes: 200 pixels a minute at zoom 1.
struct ViewTest : testing::Test {
    TrackArea area;
    EarthScale scale{1852, 926, 0.5};
    View view;

    void SetUp() override {
        area.AreaSpan = 3;
        area.HomeCentreLat = 2100;
        area.HomeCentreLon = 8400;
        view.MapSide = 800;
        view.CentreOn({2100, 8400});
    }
    Projection Map() const { return MapProjection(view, area, scale); }
    /// Zoom and middle.
    using Seen = std::tuple<double, double, double, double>;
    Seen Sees() const { return {view.ZoomFactor, view.ManualZoom, view.ViewCentreLat, view.ViewCentreLon}; }
};

TEST_F(ViewTest, TheDirectionAtTheTopPointsUpAndThePointerReadsBack) {
    EXPECT_EQ(Map().PerLatMinute() * area.AreaSpan, 600);  // three quarters of the map at zoom 1
    for (const EarthScale& some : {scale, EarthScale{}})   // without a track there is none yet
        EXPECT_DOUBLE_EQ(PixelsPerMetre(view, area, some), 200 / 1852.0);
    using Case = std::tuple<double, Position, Point>;
    for (const auto& [up, at, pixel] :
         {Case{0, {2101, 8400}, {400, 200}},    // north of the middle, north up
          Case{0, {2100, 8402}, {600, 400}},    // a minute of longitude is half as long
          Case{90, {2100, 8402}, {400, 200}},   // east up
          Case{180, {2101, 8400}, {400, 600}},  // south up
          Case{270, {2101, 8402}, {600, 600}},  // west up: north to the right, east down
          Case{45, {2101, 8402}, {400, 400 - 200 * std::numbers::sqrt2}}})
        for (const double zoom : {1.0, 0.5, 117.0}) {
            view.ScreenUpDirection = up;
            view.ZoomFactor = zoom;
            const Point shown = Map().ToScreen(at);
            EXPECT_NEAR(shown.X, 400 + (pixel.X - 400) * zoom, 1e-9) << up;
            EXPECT_NEAR(shown.Y, 400 + (pixel.Y - 400) * zoom, 1e-9) << up;
            EXPECT_NEAR(Map().ToEarth(shown).Lat, at.Lat, 1e-9);
            EXPECT_NEAR(Map().ToEarth(shown).Lon, at.Lon, 1e-9);
        }
}

TEST_F(ViewTest, FarOutTheWholeChartIsShownAndTheMouseKeepsItsZoom) {
    for (const auto& [zoom, seen] :
         {std::pair{0.6, Seen{0.6, 0.6, 2105, 8400}}, {0.59, Seen{0.5, 0.59, 2100, 8400}}}) {
        view.ViewCentreLat = 2105;
        view.ManualZoom = view.ZoomFactor = zoom;
        SnapToWholeChart(area, view);
        EXPECT_EQ(Sees(), seen);
    }
}

TEST_F(ViewTest, TheViewThatFollowsHasAllBoatsOnTheMap) {
    view.AutoTraceZoom = 0.5;
    const std::vector<Position> boats{{2101, 8401}, {2100.5, 8404}, {2101.5, 8403}};
    FitTo(boats, area, scale, view);
    // One and a half minutes from west to east take half of 0.85 of what the area takes at zoom 1.
    const Seen following{3 / 1.5 * 0.5 * 0.85, 1, 2101, 8402.5};
    EXPECT_EQ(Sees(), following);
    FitTo({}, area, scale, view);
    EXPECT_EQ(Sees(), following);
    FitTo({boats.data(), 1}, area, scale, view);
    EXPECT_EQ(Sees(), (Seen{3 / 0.02 * 0.5 * 0.85, 1, 2101, 8401}));  // one boat: a box of 37 metres
}

TEST_F(ViewTest, TheWheelKeepsWhatIsUnderThePointerAndTurnsBackWhatItDid) {
    for (const double up : {0.0, 77.0, 200.0})
        for (const Point& pixel : {Point{400, 400}, {10, 700}, {799, 0}}) {
            view.ScreenUpDirection = up;
            view.ManualZoom = view.ZoomFactor = 3;
            const Seen before = Sees();
            const Position under = Map().ToEarth(pixel);
            for (const double factor : {1.25, 1.07, 1 / 1.07, 1 / 1.25}) {
                ZoomAt(pixel, factor, area, scale, view);
                EXPECT_NEAR(Map().ToEarth(pixel).Lat, under.Lat, 1e-9) << up;
                EXPECT_NEAR(Map().ToEarth(pixel).Lon, under.Lon, 1e-9) << up;
                EXPECT_EQ(view.ManualZoom, view.ZoomFactor);
            }
            EXPECT_NEAR(view.ZoomFactor, std::get<0>(before), 1e-9);
            EXPECT_NEAR(view.ViewCentreLat, std::get<2>(before), 1e-9);
            const Position grabbed = Map().ToEarth({123, 456});
            BringUnder(grabbed, pixel, area, scale, view);
            EXPECT_NEAR(Map().ToScreen(grabbed).X, pixel.X, 1e-6);
            EXPECT_NEAR(Map().ToScreen(grabbed).Y, pixel.Y, 1e-6);
            view.CentreOn({2100, 8400});
        }
}

TEST_F(ViewTest, TheZoomEndsAtACentimetreAPixelAndAtTheWholeChart) {
    const Point pixel{100, 200};
    for (int notch = 0; notch < 200; ++notch) ZoomAt(pixel, 1.25, area, scale, view);
    EXPECT_NEAR(PixelsPerMetre(view, area, scale), 100, 1e-9);
    const Seen largest = Sees();
    ZoomAt(pixel, 1.25, area, scale, view);
    EXPECT_NEAR(view.ViewCentreLat, std::get<2>(largest), 1e-9);
    for (int notch = 0; notch < 200; ++notch) ZoomAt(pixel, 0.8, area, scale, view);
    EXPECT_EQ(view.ZoomFactor, 0.5);
    ZoomAt(pixel, 1.001, area, scale, view);  // the least turn leads out of the whole chart
    EXPECT_GT(view.ZoomFactor, WholeChartBelow);
}

TEST(ScaleBar, IsTheLongestRoundLengthOfAtMost400Pixels) {
    using Case = std::tuple<double, double, int>;
    for (const auto& [pixelsPerMetre, metres, mantissa] :
         {Case{1, 200, 2}, Case{0.7, 500, 5}, Case{0.39, 1000, 1}, Case{80, 2, 2}, Case{200, 1, 1},
          Case{500, 0.5, 5}, Case{0.001, 200000, 2}, Case{0, 1, 1}, Case{-1, 1, 1}, Case{NAN, 1, 1}}) {
        const ScaleBar bar = ChooseScaleBar(pixelsPerMetre);
        EXPECT_DOUBLE_EQ(bar.BarMetres, metres) << pixelsPerMetre;
        EXPECT_EQ(bar.Mantissa, mantissa) << pixelsPerMetre;
    }
}

}  // namespace
}  // namespace keelview
