#include <gtest/gtest.h>

#include <tuple>

#include "base/angles.h"
#include "support/test_desk.h"

namespace keelview {
namespace {

struct WindPanelTest : testing::Test, TestDesk {
    /// Where on the compass the weight of what is red lies (the wind's arrow) or dark (the needle, by its
    /// head), degrees about its centre at 45, 55.
    double Weight(bool red) const {
        const Picture compass = Form().Picture2.Image();
        double east = 0, south = 0;
        for (int y = 15; y <= 95; ++y)
            for (int x = 5; x <= 85; ++x) {
                const ColourParts at = PartsOf(compass.PixelAt(x, y));
                if (at.Green > 90 || at.Blue > 90 || (at.Red > 160) != red) continue;
                east += x - 45, south += y - 55;
            }
        return BearingOf(east, -south);
    }
    void ExpectWeights(double wind, double north) const {
        EXPECT_NEAR(WrapDifference(Weight(true) - wind), 0, 3);
        EXPECT_NEAR(WrapDifference(Weight(false) - north), 0, 6);
    }
};

TEST_F(WindPanelTest, ArrowAndNeedleStandAsTheWindAndNorthLieOnTheScreen) {
    WriteRace(2, "WD, 90\r\n");
    Open();
    for (const int wind : {0, 40, 90, 200, 330}) {
        desk->session.Changes().SetWindDirection(wind);
        for (OptionButton* option : {&Form().Option2, &Form().Option3}) {  // north up, wind up
            option->SetValue(true);
            driver::Settle();
            option == &Form().Option2 ? ExpectWeights(wind, 0) : ExpectWeights(0, -wind);
        }
    }
}

TEST_F(WindPanelTest, WithAFileAllFollowsItsSamplesAndAPressTogglesTheGraph) {
    WriteRace(2, "WF, w.csv\r\nMG, -7\r\nWD, 180\r\n");
    tree.Wind("w.csv", {{0, 12, 340}, {100, 14, 20}, {300, 14, 100}});
    Open();
    // 120 degrees take 64 of the graph's pixels, about x 45; 840 seconds take 70 rows, the finish at y 15.
    using Case = std::tuple<double, const char*, double, double>;
    for (const auto& [time, readouts, trueWind, crossX] :
         {Case{-100, "340 12", 333, 13}, Case{25, "350 12.5", 343, 13 + 64 / 12.0},
          Case{75, "10 13.5", 3, 29}, Case{500, "100 14", 93, 77}}) {
        Seek(time);
        EXPECT_EQ(Form().Text13.Text() + " " + Form().Text14.Text(), readouts);
        ExpectWeights(trueWind, 0);
        EXPECT_NEAR(Form().Line9.X1(), crossX, 0.01);
        EXPECT_NEAR(Form().Line8.Y1(), 15 + (600 - time) / 12, 0.01);
    }
    const auto blue = [](int r, int g, int b) { return b > 180 && r < 120 && g < 120; };
    EXPECT_GT(CountPixels(Form().sWind.Image(), 13, 40, 77, 65, blue), 25);

    const auto press = [this](const Surface& face) {
        driver::ClickAt(face, {40, 60});
        return Form().sWind.Visible();
    };
    EXPECT_TRUE(Form().Text13.Visible() && !press(Form().sWind) && press(Form().Picture2));
    driver::MoveTo(Form().Picture2, {40, 90});
    EXPECT_EQ(Form().Text7.Text(), "Indicate wind direction graph or not");
    desk->session.Changes().SetWind(app.wind, "");  // the race has no wind file any more
    driver::Settle();
    driver::MoveTo(Form().Picture2, {40, 91});
    EXPECT_FALSE(Form().Text7.Visible() || Form().Text13.Visible() || Form().sWind.Visible());
    for (int time = 0; time < 2; ++time) EXPECT_FALSE(press(Form().Picture2));
}

}  // namespace
}  // namespace keelview
