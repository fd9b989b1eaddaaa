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
    EXPECT_NEAR(app.wind[2].WindTime, 100, 1);
    EXPECT_EQ(app.wind[4].WindTime, 600);  // past the finish counts as the finish
    EXPECT_TRUE(app.wind[1].WindTime == -300 && LineAt(130, 20, Black));
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

/// Three lines, 0.0201, 0.3005 and 0.7005 miles north. Boat 1 sails north at 6 knots: 12, 180 and 420
/// seconds. Boat 2 at 4.8: 15, then well past the end of the second line. Boat 3 comes from 0.06 miles
/// further south on a way that is 5 % longer at 7 knots: 43, 194 and 410 seconds.
struct LegPagesTest : testing::Test, TestDesk {
    void SetUp() override {
        tree.Boat("a.trk", Lat, Lon, SixKnots, 0, -100, 600);
        tree.Boat("b.trk", Lat, Lon - 0.05, 1.0 / 750, 0, -100, 600);
        tree.Boat("c.trk", Lat - 0.06, Lon - 0.02, 1.0 / 540, 1.0 / 540 * 0.3202 / 0.8164, -100, 600);
        tree.Race(
            "R1.txt",
            "BN, a.trk, A\r\nBN, b.trk, B\r\nBN, c.trk, C\r\nCRS, L1, L2, L3\r\n"
            "LN, 2117.0201, 8368.9, 2117.0201, 8369.1\r\nLN, 2117.3005, 8368.99, 2117.3005, 8369.2\r\n"
            "LN, 2117.7005, 8368.94, 2117.7005, 8369.29\r\n");
        Open();
        driver::Click(Form().Option11);
    }
    Colour At(double x, double y) const {
        return Form().PicTime.Image().PixelAt(FloorToInt(x + 0.5), FloorToInt(y + 0.5));
    }
    /// The rows of the boats, first entries, then legs: "R" is a red number, "D" a dark one, "-" a dash.
    std::string Cells() const {
        const auto red = [](int r, int g, int b) { return r > 150 && g < 110 && b < 110; };
        const auto dark = [](int r, int g, int b) { return r < 110 && g < 110 && b < 110; };
        constexpr int Dash = 5;  // pixels at most
        const Picture page = Form().PicTime.Image();
        std::string cells;
        for (const int y : {83, 101, 119})
            for (const int x : {0, 110, 155, 200, 277, 322}) {
                const auto has = [&](auto like) { return CountPixels(page, x, y, x + 28, y + 13, like); };
                cells += x == 0             ? ' '
                         : has(red) > 0     ? 'R'
                         : has(dark) > Dash ? 'D'
                         : has(dark) > 0    ? '-'
                                            : '?';
            }
        return cells;
    }
};

TEST_F(LegPagesTest, TheBestOfEachColumnIsRedAndWhoIsInFocusLiesOnColour) {
    EXPECT_EQ(Cells(), " RRDDD D---- DDRRR");  // boat 2 has nothing from the entry on that it missed
    EXPECT_EQ(At(50, 18 + 79), BoatColour(1));
    for (const int x : {120, 280}) EXPECT_EQ(At(x, 18 * 2 + 64), Rgb(192, 255, 255));
    driver::Click(Form().Bnam[1]);
    for (const int x : {120, 280}) EXPECT_EQ(At(x, 18 * 2 + 64), White);
    driver::Click(Form().Option4);
    EXPECT_EQ(Cells(), " RRRRR R---- DDDDD");
    driver::Click(Form().Option5);
    EXPECT_EQ(Cells(), " DDDDD D---- RRRRR");
}

TEST_F(LegPagesTest, TheChartsShowHowFarEachBoatIsBehindTheBest) {
    // 275 pixels from y 182 to 457; columns of 45 from x 65 on, by leg from x 260 on. Times: 31 seconds at
    // most, on an axis of 40; by leg 24, on one of 30.
    const double times[][4] = {{1, 110, 0, 40}, {1, 155, 10, 40}, {3, 65, 31, 40},  {3, 110, 14, 40},
                               {3, 155, 0, 40}, {1, 260, 17, 30}, {1, 305, 24, 30}, {3, 305, 0, 30}};
    for (const auto& [boat, x, behind, axis] : times)
        EXPECT_EQ(At(x, 457 - behind / axis * 275), BoatColour(int(boat))) << x << " " << behind;
    EXPECT_NE(At(65, 457 - 3 / 40.0 * 275), BoatColour(2));  // no line leads from there to what it missed
    driver::Click(Form().Option5);  // the best on top, from entry 2 on, on an axis of 1 knot
    const double speeds[][3] = {{1, 110, 1}, {1, 155, 1}, {3, 110, 0}, {3, 260, 0}};
    for (const auto& [boat, x, behind] : speeds)
        EXPECT_EQ(At(x, 182 + behind * 275), BoatColour(int(boat))) << x << " " << behind;
    EXPECT_NE(At(65, 182), BoatColour(3));
}

TEST_F(LegPagesTest, TheAnalysisSplitsEachTimeIntoDistanceAndSpeed) {
    driver::Click(Form().Option12);
    // Axes at 183, 273 and 363 for the race and the legs; 100 % are 180 pixels, no bar is longer than 36.
    // Rows of 36 from y 127 on, with bars for time, distance and speed. Boat 3 is best everywhere.
    const double bars[][4] = {{1, 183, 0, 2.4},  {1, 183, 1, -12.2}, {1, 183, 2, -14.3},
                              {1, 273, 0, 11.3}, {1, 273, 1, -4.8},  {1, 363, 0, 11.1}};
    const Colour colours[] = {Black, Red, Blue};
    for (const auto& [boat, axis, kind, percent] : bars) {
        const double y = (boat - 1) * 36 + 127 + 8 * kind + 5;
        for (const double off : {-2.0, 2.0})
            EXPECT_EQ(At(axis + percent * 1.8 + (percent < 0 ? -off : off), y) == colours[int(kind)],
                      off < 0)
                << boat << " " << axis << " " << kind;
    }
    EXPECT_EQ(At(183, 154), Rgb(0, 255, 255));
    for (const int x : {183, 273, 363})
        EXPECT_NE(At(x, 190), Rgb(0, 255, 255));  // boat 2 sailed none of them
}

TEST_F(LegPagesTest, AClickOnACellGoesToTheRoundingAndTheOtherButtonPutsItRight) {
    const auto click = [&](QPoint at, Qt::MouseButton button = Qt::LeftButton) {
        driver::Click(Form().Option11);
        driver::ClickAt(Form().PicTime, at, button);
    };
    const QPoint boat1Line2{170, 90}, boat3LastLeg{340, 126}, boat2Line2{170, 108};
    click(boat3LastLeg);
    EXPECT_TRUE(app.now.Time == 410 && app.shown.ViewMode == ViewKind::Map && TheFilm().Stopped());
    EXPECT_NEAR(app.view.ViewCentreLat, 2117.7005, 0.01);
    click(boat2Line2);  // it was not there
    EXPECT_TRUE(app.now.Time == 410 && app.shown.ViewMode == ViewKind::Data);
    // Rounded now, not rounded, as found; the third number is what the table says then.
    using Case = std::tuple<QPoint, int, const char*, std::optional<int>, const char*>;
    for (const auto& [cell, choice, line, time, cells] :
         {Case{boat2Line2, 0, "PT, 2, 2, 410", 410, " RRDDD DD-D- DDRRR"},
          Case{boat1Line2, 1, "PT, 1, 2, -", {}, " R-D-- DD-D- DRRRR"},
          Case{boat1Line2, 2, "", 180, " RRDDD DD-D- DDRRR"}}) {
        dialogs.AnswerChoose(choice);
        click(cell, Qt::RightButton);
        EXPECT_EQ(Said(), "Rounded now|Not rounded|As found");
        const int boat = cell == boat2Line2 ? 2 : 1;
        EXPECT_EQ(PassTime(app.passes, boat, 2), time) << line;
        EXPECT_TRUE(*line == 0 ? !FileHolds("PT, 1, 2, -") : FileHolds(line)) << File();
        EXPECT_EQ(Cells(), cells);
    }
    app.settings.EditMode = false;
    click(boat1Line2, Qt::RightButton);  // nobody is asked
    EXPECT_TRUE(dialogs.AllAnswered());
}

TEST_F(LegPagesTest, ViewsTakeEachOthersPlaceAndTheFilmWaitsBehindThePage) {
    RaceDisp& form = Form();
    const auto shows = [&form](const Surface& view, std::initializer_list<const Control*> clicks) {
        for (const Control* click : clicks) driver::Click(*click);
        for (const Surface* each : {&form.Picture1, &form.GPIC, &form.PicTime})
            if (each->Visible() != (each == &view)) return false;
        return true;
    };
    form.Option6.SetValue(true);
    EXPECT_TRUE(shows(form.PicTime, {}) && !form.Timer1.Enabled());
    EXPECT_TRUE(shows(form.Picture1, {&form.Command11}));  // back to where the page was opened from
    EXPECT_TRUE(shows(form.GPIC, {&form.Option10, &form.Option11, &form.Command11}));
    EXPECT_TRUE(form.Timer1.Enabled() && !form.Check2.Enabled());  // there is nothing to measure
    EXPECT_TRUE(shows(form.Picture1, {&form.Option7, &form.Option9}));
    // After a change of table the page is left to the graphs.
    EXPECT_TRUE(shows(form.GPIC, {&form.Option11, &form.Option4, &form.Command11}) &&
                !form.Timer1.Enabled());
}

}  // namespace
}  // namespace keelview
