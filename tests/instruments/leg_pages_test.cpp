#include <gtest/gtest.h>

#include "session/boat_colours.h"
#include "support/test_desk.h"

namespace keelview {
namespace {

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
