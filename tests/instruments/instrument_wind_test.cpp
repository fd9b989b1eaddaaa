#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "instruments/wind_panel.h"
#include "racedata/wind_file.h"
#include "support/instrument_race.h"
#include "support/temp_tree.h"

namespace keelview {
namespace {

bool IsRed(int red, int green, int blue) {
    return red > 200 && green < 80 && blue < 80;
}

struct WindPanelTest : testing::Test, InstrumentRace {
    WindPanel& panel = instruments.windPanel;
    Surface& compass = Form().Picture2;

    void UpdateAt(double time) {
        app->clock.ReplayTime = time;
        panel.UpdateWindPanel();
    }
    /// Which side of the compass the arrow stands on: "N", "E", "S" or "W".
    std::string ArrowSide() const {
        const Picture picture = compass.Image();
        const int cx = 45;
        const int cy = 55;
        std::string sides;
        if (CountPixels(picture, cx - 15, cy - 40, cx + 15, cy - 22, IsRed) > 10) sides += "N";
        if (CountPixels(picture, cx + 22, cy - 15, cx + 40, cy + 15, IsRed) > 10) sides += "E";
        if (CountPixels(picture, cx - 15, cy + 22, cx + 15, cy + 40, IsRed) > 10) sides += "S";
        if (CountPixels(picture, cx - 40, cy - 15, cx - 22, cy + 15, IsRed) > 10) sides += "W";
        return sides;
    }
};

TEST_F(WindPanelTest, TheArrowStandsOnTheSideTheWindComesFrom) {
    struct {
        double wind, up;
        const char* side;
    } const cases[] = {{0, 0, "N"},   {90, 0, "E"},  {180, 0, "S"},
                       {270, 0, "W"}, {40, 40, "N"}, {10, 100, "W"}};
    for (const auto& c : cases) {
        app->windNow.WindNow = c.wind;
        app->view.ScreenUpDirection = c.up;
        UpdateAt(0);
        EXPECT_EQ(ArrowSide(), c.side) << c.wind << " " << c.up;
        EXPECT_EQ(app->windNow.WindNow, c.wind);  // without a wind file nothing here changes it
    }
}

TEST_F(WindPanelTest, ReadoutsAndWindFollowTheSamplesAndHoldTheirEnds) {
    Wind({0, 100}, {350, 10}, 12);
    app->wind.WindSpeeds[2] = 14;
    app->race.MagVariation = -7;
    panel.ShowForRace();
    struct {
        double time;
        const char *direction, *speed;
        double trueWind;
    } const cases[] = {{-500, "350", "12", 343}, {0, "350", "12", 343}, {25, "355", "12.5", 348},
                       {75, "5", "13.5", 358},   {99.9, "10", "14", 3}, {5000, "10", "14", 3}};
    for (const auto& c : cases) {
        UpdateAt(c.time);
        EXPECT_EQ(Form().Text13.Text(), c.direction) << c.time;
        EXPECT_EQ(Form().Text14.Text(), c.speed) << c.time;
        EXPECT_NEAR(app->windNow.WindNow, c.trueWind, 0.05) << c.time;
    }
    EXPECT_TRUE(Form().Text13.Visible());
}

TEST_F(WindPanelTest, TheCrossStandsAtTheMomentAcrossNorth) {
    Wind({0, 300, 599}, {350, 40, 350});
    panel.ShowForRace();
    UpdateAt(300);
    // 50 degrees take 64 of the 80 pixels, 840 seconds take 70.
    EXPECT_NEAR(Form().Line9.X1(), 45 + 32, 0.01);
    EXPECT_NEAR(Form().Line8.Y1(), 15 + 300 * 70.0 / 840, 0.01);
    UpdateAt(0);
    EXPECT_NEAR(Form().Line9.X1(), 45 - 32, 0.01);
    const auto blue = [](int r, int g, int b) { return b > 180 && r < 120 && g < 120; };
    EXPECT_GT(CountPixels(Form().sWind.Image(), 13, 15, 77, 65, blue), 60);
    Wind({0, 600}, {100, 100});
    panel.DrawWindGraph();
    UpdateAt(0);
    EXPECT_NEAR(Form().Line9.X1(), 45, 0.01);
}

TEST_F(WindPanelTest, APressOnCompassOrGraphShowsOrHidesTheGraph) {
    Wind({0, 600}, {100, 110});
    panel.ShowForRace();
    Surface& graph = Form().sWind;
    ASSERT_TRUE(graph.Visible());
    EXPECT_EQ(graph.Top(), compass.Top() + compass.Height());
    EXPECT_EQ(graph.Width(), 90);
    driver::ClickAt(graph, {40, 40});
    EXPECT_FALSE(graph.Visible());
    driver::ClickAt(compass, {40, 90}, Qt::RightButton);
    EXPECT_TRUE(graph.Visible());
    driver::MoveTo(compass, {40, 90});
    EXPECT_TRUE(Form().Text7.Visible());
    EXPECT_EQ(Form().Text7.Text(), "Indicate wind direction graph or not");
    EXPECT_EQ(Form().Text7.Left(), 105);
    EXPECT_EQ(Form().Text7.Top(), 95);

    app->race.WindFileName = "";  // the file has vanished; its samples are still held
    panel.ShowForRace();
    UpdateAt(300);
    driver::MoveTo(compass, {40, 91});
    EXPECT_FALSE(Form().Text7.Visible());
    EXPECT_FALSE(Form().Text13.Visible());
    for (int press = 0; press < 2; ++press) {
        driver::ClickAt(compass, {40, 90});
        EXPECT_FALSE(graph.Visible());
    }
}

TEST_F(WindPanelTest, BadWindFilesLeaveASoundDisplay) {
    const std::string header = "TIME,WIND SPEED,WIND DIRECTION (Mag)\r\n";
    std::string wide = header + "2004/08/05 12:31:00,5,200";
    for (int field = 0; field < 57; ++field) wide += ",9";
    const std::string files[] = {
        "",
        header,
        header + "2004/08/05 12:31:00\r\n2004/08/05 12:32:00,5\r\n",
        wide,
        header + "yesterday,5,200\r\n,,\r\n",
        header + "2004/08/05 12:39:00,5,200\r\n2004/08/05 12:31:00,5,210\r\n2004/08/05 12:35:00,5,190\r\n",
        header + "2004/08/05 12:31:00,5,720\r\n2004/08/05 12:36:00,5,-10\r\n2004/08/05 12:37:00,x,7\r\n",
        header + "2004/08/05 12:31:00,5,10\r\n2004/08/05 12:31:00,5,20\r\n",
    };
    TempTree tree;
    for (const std::string& file : files) {
        tree.Write("winddat/w.csv", file);
        app->race.WindFileName = "w.csv";
        app->race.FinishTimeText = "";
        LoadWindFile(tree.Root(), app->race, app->wind);
        panel.ShowForRace();
        for (const double time : {-1e9, -200.0, 60.0, 61.0, 360.0, 400.0, 1e9}) {
            for (const double step : {0.5, -0.5}) {
                app->clock.ReplayStep = step;
                UpdateAt(time);
                EXPECT_GE(app->windNow.WindNow, 0) << file;
                EXPECT_LT(app->windNow.WindNow, 360) << file;
                EXPECT_TRUE(std::isfinite(app->windNow.WindSpeedNow)) << file;
                EXPECT_TRUE(std::isfinite(Form().Line9.X1())) << file;
            }
        }
        EXPECT_EQ(Form().Text13.Text().empty(), app->wind.WindCount == 0) << file;
    }
}

}  // namespace
}  // namespace keelview
