#include "instruments/overview.h"

#include <gtest/gtest.h>

#include <cmath>

#include "support/instrument_race.h"

namespace keelview {
namespace {

struct OverviewTest : testing::Test, InstrumentRace {
    Overview& overview = instruments.overview;
    Surface& picture = Form().Picture6;
    const double side = picture.Image().Height();

    void TurnMap(double up) {
        app->view.ScreenUpDirection = up;
        RefreshScales(app->area, app->scale, app->view);
        overview.DrawOverviewMap();
    }
    /// A press so many pixels to the right of the middle and above it.
    void ClickFromMiddle(double right, double up, Qt::MouseButton button) {
        const ScreenPoint middle = overview.ToOverview(2100, 8400);
        driver::ClickAt(
            picture,
            {static_cast<int>(std::lround(middle.X + right)), static_cast<int>(std::lround(middle.Y - up))},
            button);
    }
};

TEST_F(OverviewTest, AreaSpanTakesThreeQuartersAndTheMapsTopIsUp) {
    struct {
        double up, north, east;  // minutes from the middle, east ones as long as north ones
        double right, above;     // shares of the side
    } const cases[] = {{0, 1, 0, 0, 0.375},   {0, 0, 1, 0.375, 0},    {90, 0, 1, 0, 0.375},
                       {90, 1, 0, -0.375, 0}, {180, 1, 0, 0, -0.375}, {270, 0, -1, 0, 0.375}};
    for (const auto& c : cases) {
        TurnMap(c.up);
        const double lat = 2100 + c.north;
        const double lon = 8400 + c.east / app->scale.LonScale;
        const ScreenPoint at = overview.ToOverview(lat, lon);
        // The overview's scale is a little wider than it is high.
        const double wide = 15 / 14.813664;
        EXPECT_NEAR(at.X, side * (0.5 + c.right) * wide, 0.01) << c.up;
        EXPECT_NEAR(at.Y, side * (0.5 - c.above), 0.01) << c.up;
        const MapPosition back = overview.FromOverview(at.X / side * 14.813664, at.Y / side * 15);
        EXPECT_NEAR(back.Lat, lat, 1e-9);
        EXPECT_NEAR(back.Lon, lon, 1e-9);
    }
}

TEST_F(OverviewTest, ShowsTracksMarkersAndTheCoastThatReachesIn) {
    SailNorth(1, 0, 999, 2099.5, 8400, 0);
    app->coast.CoastLat = {0, -2100.5, 2100.5, -2101.2, 2101.2, -2101, 2101};
    app->coast.CoastLon = {0, 8399.5, 8399.7, 8398.3, 8401.7, 8405, 8399};
    app->coast.CoastCount = 6;
    app->display.InkColour = Black;
    Form().Timer1.SetEnabled(false);
    overview.DrawOverviewMap();
    EXPECT_TRUE(Form().Timer1.Enabled());
    const Picture drawn = picture.Image();
    const auto pixelsAt = [&](double lat, double lon, auto like) {
        const ScreenPoint at = overview.ToOverview(lat, lon);
        const int x = static_cast<int>(at.X);
        const int y = static_cast<int>(at.Y);
        return CountPixels(drawn, x - 1, y - 1, x + 1, y + 1, like);
    };
    const auto red = [](int r, int g, int b) { return r > g + 80 && r > b + 80; };
    const auto ink = [](int r, int g, int b) { return r + g + b < 390; };
    EXPECT_GT(pixelsAt(2100, 8400, red), 0);      // the track of boat 1
    EXPECT_GT(pixelsAt(2100.5, 8399.6, ink), 0);  // coast inside
    EXPECT_EQ(pixelsAt(2101.2, 8400, ink), 0);    // both ends outside
    EXPECT_GT(pixelsAt(2101, 8401, ink), 0);      // one end inside

    app->fleet.BoatLatNow[1] = 2100.2;
    app->fleet.BoatLonNow[1] = 8400.1;
    overview.PlaceMarker(1);
    EXPECT_TRUE(Form().BoatS[0].Visible());
    EXPECT_NEAR(Form().BoatS[0].Left() + 2, overview.ToOverview(2100.2, 8400.1).X, 0.01);
}

TEST_F(OverviewTest, ALeftPressMovesTheMapUnlessItFollowsTheBoats) {
    TurnMap(90);
    struct {
        bool trace;
        double zoom;
        bool moves;
    } const cases[] = {{true, 2, false}, {false, 0.6, false}, {false, 0.7, true}};
    for (const auto& c : cases) {
        Form().Check5.SetValue(c.trace);
        app->view.ViewCentreLat = 2100;
        app->view.ZoomFactor = c.zoom;
        app->view.ManualZoom = 1.4;
        ClickFromMiddle(40, 0, Qt::LeftButton);  // to the right lies south with east at the top
        if (!c.moves) {
            EXPECT_EQ(app->view.ViewCentreLat, 2100) << c.zoom;
            continue;
        }
        EXPECT_NEAR(app->view.ViewCentreLat, 2100 - 40 * 2 / (side * 0.75), 0.02);
        EXPECT_NEAR(app->view.ViewCentreLon, 8400, 0.02);
        EXPECT_EQ(app->view.ZoomFactor, 1.4);
    }
}

TEST_F(OverviewTest, ARightPressTurnsTheWindOfAWindwardUpMapInEditMode) {
    struct {
        bool northUp, editMode;
        double up, right, above, turned;
    } const cases[] = {{true, true, 10, 40, 0, 10},
                       {false, false, 10, 40, 0, 10},
                       {false, true, 10, 40, 0, 100},
                       {false, true, 300, 40, -40, 75},
                       {false, true, 300, -40, 40, 255}};
    bool told = false;
    Form().Text3.OnChange = [&] { told = app->display.WindTextArmed; };
    for (const auto& c : cases) {
        app->race.NorthUp = c.northUp;
        app->settings.EditMode = c.editMode;
        app->display.WindTextArmed = false;
        app->race.WindDirection = c.up;
        Form().Text3.SetText("-");
        told = false;
        TurnMap(c.up);
        ClickFromMiddle(c.right, c.above, Qt::RightButton);
        EXPECT_NEAR(app->view.ScreenUpDirection, c.turned, 1.5);
        EXPECT_EQ(app->race.WindDirection, app->view.ScreenUpDirection);
        EXPECT_EQ(told, c.turned != c.up);
        const std::string turned = std::to_string(static_cast<int>(app->windNow.WindNow));
        EXPECT_EQ(Form().Text3.Text(), told ? turned : "-");
    }
}

TEST_F(OverviewTest, ThePointerShowsTheHintRestartsTheFilmAndLowersTheList) {
    Form().RaiseBoatList();
    const TextBox& hint = Form().Text7;
    Form().Timer1.SetEnabled(false);
    driver::MoveTo(picture, {70, 70});
    EXPECT_TRUE(hint.Visible());
    EXPECT_EQ(hint.Text(),
              "L-btn => Move center of map\nR-btn => change Wind Dir\n（Select Windward btn）");
    EXPECT_TRUE(Form().Timer1.Enabled());
    app->settings.EditMode = false;
    driver::MoveTo(picture, {71, 70});
    EXPECT_EQ(hint.Text(), "L-btn => Move center of map");
    Form().Option7.SetValue(true);
    Form().Timer1.SetEnabled(false);
    app->display.HintsOn = false;
    driver::MoveTo(picture, {72, 70});
    EXPECT_FALSE(hint.Visible());
    EXPECT_FALSE(Form().Timer1.Enabled());
    EXPECT_FALSE(Form().PanelRaised());
}

}  // namespace
}  // namespace keelview
