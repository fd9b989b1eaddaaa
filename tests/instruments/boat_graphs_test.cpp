#include <gtest/gtest.h>

#include <tuple>

#include "session/boat_colours.h"
#include "support/test_desk.h"

namespace keelview {
namespace {

// One pixel a degree from x 30 on, the race's wind at x 120; 30 pixels a knot from x 400 on.
struct BoatGraphsTest : testing::Test, TestDesk {
    int span = 840;  // three minutes, the race and a minute more

    void OpenGraphs() {
        Open();
        driver::Click(Form().Option10);
    }
    /// The row of a second: between margins of 30 pixels, the finish on top.
    int Y(double second) const {
        return FloorToInt((span - 240 - second) * (Form().GPIC.Height() - 60) / span + 30.5);
    }
    /// The colour of a line lies within a pixel of the place.
    bool LineAt(int x, double second, Colour colour) const {
        const auto same = [&](int r, int g, int b) { return colour == Rgb(r, g, b); };
        return CountPixels(Form().GPIC.Image(), x - 1, Y(second) - 1, x + 1, Y(second) + 1, same) > 0;
    }
    void Enter(int x, double second) const { driver::ClickAt(Form().GPIC, {x, Y(second)}); }
    std::vector<double> Directions() const {
        std::vector<double> directions;
        for (const WindSample& sample : app.wind) directions.push_back(sample.WindDirection);
        return directions;
    }
};

TEST_F(BoatGraphsTest, BoatsStandAtTheirCourseAndSpeedInTheirTimeThoseInFocusOnTop) {
    for (const char* file : {"a.trk", "b.trk"}) tree.Sail(file, Lat, Lon, 83, 6, -150, 700);  // 90 magnetic
    tree.Sail("c.trk", Lat, Lon, 263, 3, -150, 700);
    tree.Race("R1.txt", "MG, -7\r\nBN, a.trk, A\r\nBN, b.trk, B\r\nBN, c.trk, C\r\n");
    OpenGraphs();
    const int places[][3] = {{0, 210, 30}, {90, 120, 300}, {210, 360, 180}, {360, 210, 30}};
    for (const auto& [wind, first, third] : places) {
        desk->session.Changes().SetWindDirection(wind);
        driver::Settle();
        EXPECT_TRUE(LineAt(first, 220, BoatColour(1)) && LineAt(third, 220, BoatColour(3))) << wind;
    }
    EXPECT_TRUE(LineAt(490, 220, BoatColour(3)));
    for (const int second : {-66, -55, 220, 595, 605})  // from a minute before the start to the finish
        EXPECT_EQ(LineAt(580, second, BoatColour(1)), second > -60 && second < 600) << second;
    driver::Click(Form().Bnam[0]);
    EXPECT_TRUE(LineAt(580, 220, BoatColour(2)) && !LineAt(580, 220, BoatColour(1)));
    driver::Click(Form().Bnam[1]);
    EXPECT_TRUE(LineAt(580, 220, Rgb(225, 225, 225)) && !LineAt(580, 220, BoatColour(2)));
}

TEST_F(BoatGraphsTest, ALongTrackKeepsItsExtremes) {
    // Dozens of fixes to ten rows at 4 knots; every 100 seconds a leap, a single one at some 22.
    span = 7200 + 240;
    std::string track;
    for (int piece = 0; piece < 72; ++piece) {
        tree.Sail("a.trk", Lat + piece * 0.005, Lon, 0, 4, piece * 100, piece * 100 + 99);
        track += tree.Read("gpsdat/a.trk");
    }
    tree.Write("gpsdat/a.trk", track);
    tree.Race("R1.txt", "FT, 2004/8/5 14:30:00\r\nBN, a.trk, A\r\n");
    OpenGraphs();
    const auto red = [](int r, int g, int b) { return r > g + 60 && g == b; };
    EXPECT_GT(CountPixels(Form().GPIC.Image(), 660, Y(7190), 660, Y(50), red), 65);
}

TEST_F(BoatGraphsTest, WindOfAFileIsDrawnAndReadUnderThePointer) {
    WriteRace(2, "WF, w.csv\r\n");
    tree.Wind("w.csv", {{-100, 9, 40}, {250, 9, 40}, {500, 9, 40}});
    OpenGraphs();
    using Line = std::tuple<int, int, Colour>;
    const auto lines = {Line{450, 420, Rgb(255, 225, 225)}, Line{535, 420, Rgb(255, 128, 128)},
                        Line{160, 20, Black}, Line{160, 420, Black}, Line{340, 420, Rgb(128, 128, 128)}};
    for (const auto& [x, second, colour] : lines) EXPECT_TRUE(LineAt(x, second, colour)) << x;
    EXPECT_FALSE(LineAt(160, 550, Black));
    const RaceDisp& form = Form();
    driver::MoveTo(form.GPIC, {150, Y(300)});
    const std::vector<double> cursors{form.Line2.X1(), form.Line7.X1(), form.Line3.X1()};
    EXPECT_EQ(cursors, (std::vector<double>{105, 195, 330}));
    EXPECT_TRUE(form.Text7.Visible() && form.Line2.Visible());
    EXPECT_TRUE(form.Text7.Text() == "12:34:59 / 30" || form.Text7.Text() == "12:35:00 / 30");
    driver::MoveTo(form.GPIC, {215, Y(300)});
    EXPECT_FALSE(form.Line2.Visible() || form.Line3.Visible() || form.Text7.Visible());
    driver::MoveTo(form.GPIC, {150, Y(550)});  // after the last sample there is no wind to tell of
    EXPECT_TRUE(form.Line2.Visible() && !form.Text7.Visible());
    desk->session.Changes().SetWind(app.wind, "");  // the race has no wind file any more
    driver::Settle();
    for (const auto& [x, second, colour] : lines) EXPECT_FALSE(LineAt(x, second, colour)) << x;
}

TEST_F(BoatGraphsTest, WindEnteredByHandIsSortedBetweenGuardsAndWritten) {
    OpenGraphs();
    const Button& entry = Form().Command12;
    Form().Option6.SetValue(true);  // the film plays
    Enter(150, 100);                // the mode is off
    driver::Click(entry);
    EXPECT_TRUE(entry.GetBackColor() == Yellow && !Form().Timer1.Enabled());
    for (const auto& [x, second] : {std::pair{29, 100}, {391, 100}, {150, 400}, {130, 100}, {170, 610}})
        Enter(x, second);  // the first two are outside
    EXPECT_EQ(Directions(), (std::vector<double>{10, 10, 30, 50, 50}));
    EXPECT_EQ(app.wind[1].WindTime, -300);
    EXPECT_NEAR(app.wind[2].WindTime, 100, 1);
    EXPECT_EQ(app.wind[4].WindTime, 600);  // past the finish counts as the finish
    EXPECT_TRUE(LineAt(130, 20, Black));
    dialogs.AnswerYesNo(true);
    driver::Click(entry);
    EXPECT_EQ(Said(), "Do you want to save Wind Data File ?");
    EXPECT_TRUE(tree.Read("winddat/R1_WIND.CSV")
                    .starts_with("TIME,WIND SPEED,WIND DIRECTION (Mag)\r\n2004/08/05 12:25:00,,10\r\n"));

    dialogs.AnswerYesNo(true);  // the file may be written over, and the entry goes on where it ended
    driver::Click(entry);
    Enter(140, 200);
    EXPECT_EQ(Directions(), (std::vector<double>{10, 10, 20, 30, 50, 50}));
    app.wind = {{0, 5, 77}, {100, 6, 77}};  // unless other data was read meanwhile
    Enter(140, 100);
    EXPECT_EQ(Directions(), std::vector<double>(3, 20));
    EXPECT_EQ(app.wind[2].WindSpeed, 6);  // the hand sets directions alone
    driver::Click(entry);                 // a single sample is no file: no question
    dialogs.AnswerYesNo(false);
    driver::Click(entry);
    EXPECT_TRUE(entry.GetBackColor() == ButtonFace && Form().Timer1.Enabled() && dialogs.AllAnswered());
}

}  // namespace
}  // namespace keelview
