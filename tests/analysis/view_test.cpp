#include "analysis/view.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
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
};

TEST_F(ViewTest, TheDirectionAtTheTopPointsUp) {
    struct Case {
        double up;
        double lat;
        double lon;
        double x;
        double y;
    };
    for (const Case& c : {Case{0, 2101, 8400, 400, 200},    // north of the middle, north up
                          Case{0, 2100, 8402, 600, 400},    // a minute of longitude is half as long
                          Case{90, 2100, 8402, 400, 200},   // east up
                          Case{180, 2101, 8400, 400, 600},  // south up
                          Case{270, 2101, 8402, 600, 600},  // west up: north to the right, east down
                          Case{45, 2101, 8402, 400, 400 - 200 * std::sqrt(2.0)}}) {
        view.ScreenUpDirection = c.up;
        const Point at = Map().ToScreen({c.lat, c.lon});
        EXPECT_NEAR(at.X, c.x, 1e-9) << c.up;
        EXPECT_NEAR(at.Y, c.y, 1e-9) << c.up;
    }
}

TEST_F(ViewTest, ThePointerReadsBackWhatTheMapShows) {
    for (const double up : {0.0, 33.3, 210.0}) {
        for (const double zoom : {0.5, 1.0, 117.0}) {
            view.ScreenUpDirection = up;
            view.ZoomFactor = zoom;
            const Position back = Map().ToEarth(Map().ToScreen({2101.23, 8398.77}));
            EXPECT_NEAR(back.Lat, 2101.23, 1e-9);
            EXPECT_NEAR(back.Lon, 8398.77, 1e-9);
        }
    }
}

TEST_F(ViewTest, AtZoomOneTheAreaTakesThreeQuartersOfTheMap) {
    EXPECT_EQ(Map().PerLatMinute() * area.AreaSpan, 600);
    EXPECT_DOUBLE_EQ(PixelsPerMetre(view, area, scale), 200 / 1852.0);
    EXPECT_DOUBLE_EQ(PixelsPerMetre(view, area, EarthScale{}), 200 / 1852.0);  // no track yet
}

TEST_F(ViewTest, FarOutTheWholeChartIsShownAndTheMouseKeepsItsZoom) {
    view.ViewCentreLat = 2105;
    view.ManualZoom = view.ZoomFactor = 0.6;
    SnapToWholeChart(area, view);
    EXPECT_EQ(view.ViewCentreLat, 2105);
    view.ManualZoom = view.ZoomFactor = 0.59;
    SnapToWholeChart(area, view);
    EXPECT_EQ(view.ZoomFactor, 0.5);
    EXPECT_EQ(view.ManualZoom, 0.59);
    EXPECT_EQ(view.ViewCentreLat, 2100);
}

TEST_F(ViewTest, TheViewThatFollowsHasAllBoatsOnTheMap) {
    view.AutoTraceZoom = 0.5;
    const std::vector<Position> boats{{2101, 8401}, {2100.5, 8404}, {2101.5, 8403}};
    FitTo(boats, area, scale, view);
    EXPECT_EQ(view.ViewCentreLat, 2101);
    EXPECT_EQ(view.ViewCentreLon, 8402.5);
    // One and a half minutes from west to east take half of 0.85 of what the area takes at zoom 1.
    EXPECT_DOUBLE_EQ(Map().ToScreen(boats[1]).X - Map().ToScreen(boats[0]).X, 600 * 0.85 / 2);
    FitTo({}, area, scale, view);
    EXPECT_EQ(view.ViewCentreLat, 2101);
    FitTo({boats.data(), 1}, area, scale, view);
    EXPECT_DOUBLE_EQ(view.ZoomFactor, 3 / 0.02 * 0.5 * 0.85);  // one boat: a box of 37 metres
}

TEST(ScaleBar, IsTheLongestRoundLengthOfAtMost400Pixels) {
    struct Case {
        double pixelsPerMetre;
        double metres;
        int mantissa;
    };
    for (const Case& c :
         {Case{1, 200, 2}, Case{0.7, 500, 5}, Case{0.39, 1000, 1}, Case{0.81, 200, 2}, Case{0.1, 2000, 2},
          Case{80, 2, 2}, Case{200, 1, 1}, Case{60, 5, 5}, Case{500, 0.5, 5}, Case{0.001, 200000, 2}}) {
        const ScaleBar bar = ChooseScaleBar(c.pixelsPerMetre);
        EXPECT_DOUBLE_EQ(bar.BarMetres, c.metres) << c.pixelsPerMetre;
        EXPECT_EQ(bar.Mantissa, c.mantissa) << c.pixelsPerMetre;
        EXPECT_LE(bar.BarMetres * c.pixelsPerMetre, 400);
    }
    for (const double none : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN()})
        EXPECT_EQ(ChooseScaleBar(none).BarMetres, 1.0);
}

}  // namespace
}  // namespace keelview
