#include <gtest/gtest.h>

#include <tuple>
#include <utility>

#include "analysis/track_smoothing.h"
#include "instruments/data_page.h"
#include "session/boat_colours.h"
#include "support/album.h"
#include "support/test_desk.h"

namespace keelview {
namespace {

// The compass from x 30 on, with the race's wind a quarter of its width from the left, takes six parts of
// the width, the speed five, 10 pixels further right.
struct BoatGraphsTest : testing::Test, TestDesk {
    int before = 240, finish = 600;  // seconds: four minutes and the race

    void OpenGraphs() {
        Open();
        driver::Click(Form().Option10);
    }
    /// The row of a second: between margins of 30 pixels, the finish on top.
    int Y(double second) const {
        return FloorToInt((finish - second) * (Form().GPIC.Height() - 60) / (finish + before) + 30.5);
    }
    int Room() const { return FloorToInt(Form().GPIC.Width()) - 55; }
    /// The x of degrees from the left edge of the compass, and of knots where 10 are shown.
    int Degrees(double degrees) const { return FloorToInt(30.5 + degrees * (Room() * 6 / 11) / 360); }
    int Knots(double knots, double reach = 10) const {
        return FloorToInt(Room() * 6 / 11 + 40.5 + knots * (Room() - Room() * 6 / 11) / reach);
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

TEST_F(BoatGraphsTest, BoatsStandAtTheirCourseAndSpeedInTheirTime) {
    tree.Sail("a.trk", Lat, Lon, 83, 6, -150, 700);  // 90 magnetic
    tree.Sail("b.trk", Lat, Lon, 263, 3, -150, 700);
    tree.Race("R1.txt", "MG, -7\r\nBN, a.trk, A\r\nBN, b.trk, B\r\n");
    OpenGraphs();
    const int places[][3] = {{0, 180, 0}, {90, 90, 270}, {210, 330, 150}, {360, 180, 0}};
    for (const auto& [wind, first, second] : places) {
        desk->session.Changes().SetWindDirection(wind);
        driver::Settle();
        EXPECT_TRUE(LineAt(Degrees(first), 220, BoatColour(1)) &&
                    LineAt(Degrees(second), 220, BoatColour(2)))
            << wind;
    }
    for (const int second : {-66, -55, 595, 605})  // from a minute before the start to the finish
        EXPECT_EQ(LineAt(Knots(6), second, BoatColour(1)), second > -60 && second < 600) << second;
}

TEST_F(BoatGraphsTest, ALongTrackKeepsItsExtremes) {
    // Dozens of fixes to ten rows at 4 knots; every 100 seconds a leap, a single one at some 22.
    finish = 7200;
    std::string track;
    for (int piece = 0; piece < 72; ++piece) {
        tree.Sail("a.trk", Lat + piece * 0.005, Lon, 0, 4, piece * 100, piece * 100 + 99);
        track += tree.Read("gpsdat/a.trk");
    }
    tree.Write("gpsdat/a.trk", track);
    tree.Race("R1.txt", "FT, 2004/8/5 14:30:00\r\nBN, a.trk, A\r\n");
    OpenGraphs();
    const auto red = [](int r, int g, int b) { return r > g + 60 && g == b; };
    EXPECT_GT(CountPixels(Form().GPIC.Image(), Knots(9), Y(7190), Knots(9), Y(50), red), 65);
}

TEST_F(BoatGraphsTest, WindOfAFileIsReadUnderThePointer) {
    WriteRace(2, "WF, w.csv\r\n");
    tree.Wind("w.csv", {{-100, 9, 40}, {250, 9, 40}, {500, 9, 40}});
    OpenGraphs();
    const RaceDisp& form = Form();
    const auto pointAt = [&](int x, double second) { driver::MoveTo(form.GPIC, {x, Y(second)}); };
    pointAt(Degrees(120), 300);
    EXPECT_NEAR(form.Line2.X1(), Degrees(75), 1);
    EXPECT_NEAR(form.Line7.X1(), Degrees(165), 1);
    EXPECT_NEAR(form.Line3.X1(), Degrees(300), 1);
    EXPECT_TRUE(form.Text7.Visible() && form.Line2.Visible());
    EXPECT_TRUE(form.Text7.Text() == "12:34:59 / 30" || form.Text7.Text() == "12:35:00 / 30");
    pointAt(Degrees(182), 300);
    EXPECT_FALSE(form.Line2.Visible() || form.Line3.Visible());
    EXPECT_TRUE(LineAt(Degrees(130), 420, Black));
    EXPECT_TRUE(LineAt(Degrees(130), 590, Black) == false);  // the wind is not known from 500 on
    desk->session.Changes().SetWind(app.wind, "");           // the race has no wind file any more
    driver::Settle();
    EXPECT_FALSE(LineAt(Degrees(130), 420, Black));
    // Under the pointer are a moment, what stands on the axis there, and the boat whose line it is.
    pointAt(Knots(6), 300);
    EXPECT_TRUE(form.Text7.Visible() && form.Text7.Text().ends_with(" Kts  Boat 1")) << form.Text7.Text();
    pointAt(Knots(8), 300);
    EXPECT_TRUE(form.Text7.Visible() && form.Text7.Text().ends_with(" Kts")) << form.Text7.Text();
}

TEST_F(BoatGraphsTest, TheSpeedsReachTheFastestBoatAndACourseAcrossTheEdgeIsNoLineAcross) {
    tree.Sail("b.trk", Lat, Lon, 300, 14.2, -150, 700);
    std::string track;
    for (int piece = -3; piece < 14; ++piece) {  // the edge of the compass lies at north
        tree.Sail("a.trk", Lat + piece, Lon, piece % 2 == 0 ? 5 : 355, 5, piece * 50, piece * 50 + 49);
        track += tree.Read("gpsdat/a.trk");
    }
    tree.Write("gpsdat/a.trk", track);
    tree.Race("R1.txt", "WD, 90\r\nBN, a.trk, A\r\nBN, b.trk, B\r\n");
    OpenGraphs();
    const int reach = app.tracks.Boats[2].TrackSpeed[9] > 15 ? 16 : 15;
    EXPECT_TRUE(LineAt(Knots(14.2, reach), 300, BoatColour(2)));
    desk->session.Changes().SetWindDirection(90);
    driver::Settle();
    const auto red = [](int r, int g, int b) { return r > g + 60 && g == b; };
    const auto across = [&](double from, double to) {
        return CountPixels(Form().GPIC.Image(), Degrees(from), Y(590), Degrees(to), Y(10), red);
    };
    EXPECT_EQ(across(20, 340), 0);
    EXPECT_GT(across(2, 3), 8);
    EXPECT_GT(across(357, 358), 8);
}

TEST_F(BoatGraphsTest, SmoothedASpeedIsThatOfTheWayAround) {
    constexpr double fast = SixKnots * 1.4;
    tree.Boat("a.trk", Lat, Lon, SixKnots, 0, -150, 299);
    const std::string slow = tree.Read("gpsdat/a.trk");
    tree.Boat("a.trk", Lat - 300 * (fast - SixKnots), Lon, fast, 0, 300, 700);
    tree.Write("gpsdat/a.trk", slow + tree.Read("gpsdat/a.trk"));
    tree.Race("R1.txt", "BN, a.trk, A\r\n");
    OpenGraphs();
    const Track& a = app.tracks.Boats[1];
    SmoothedTrack smoothed(a, app.scale.LonScale, 15);
    const auto at = [&](int second) {
        smoothed.GoTo(FindSegment(a, second));
        return smoothed.Speed();
    };
    EXPECT_NEAR(at(280), a.TrackSpeed[FindSegment(a, 280)], 0.02);
    EXPECT_NEAR(at(300), (a.TrackSpeed[FindSegment(a, 280)] + a.TrackSpeed[FindSegment(a, 320)]) / 2, 0.1);
    EXPECT_NEAR(at(320), a.TrackSpeed[FindSegment(a, 320)], 0.02);
    const Picture raw = Form().GPIC.Image();
    const auto differs = [&] {
        const Picture now = Form().GPIC.Image();
        for (int x = Knots(5); x < Knots(9.5); ++x)
            for (int y = Y(310); y < Y(290); ++y)
                if (now.PixelAt(x, y) != raw.PixelAt(x, y)) return true;
        return false;
    };
    driver::Click(Form().Option15);
    EXPECT_TRUE(differs());
    driver::Click(Form().Option13);
    EXPECT_FALSE(differs());
}

TEST_F(BoatGraphsTest, WindEnteredByHandIsSortedBetweenGuardsAndWritten) {
    OpenGraphs();
    const Button& entry = Form().Command12;
    Form().Option6.SetValue(true);  // the film plays
    Enter(Degrees(120), 100);       // the mode is off
    driver::Click(entry);
    EXPECT_TRUE(entry.GetBackColor() == Yellow && !Form().Timer1.Enabled());
    for (const auto& [x, second] : {std::pair{29, 100},
                                    {Degrees(361), 100},
                                    {Degrees(120), 400},
                                    {Degrees(100), 100},
                                    {Degrees(140), 610}})
        Enter(x, second);  // the first two are outside
    EXPECT_EQ(Directions(), (std::vector<double>{10, 10, 30, 50, 50}));
    EXPECT_NEAR(app.wind[2].WindTime, 100, 1);
    EXPECT_EQ(app.wind[4].WindTime, 600);  // past the finish counts as the finish
    EXPECT_TRUE(app.wind[1].WindTime == -300 && LineAt(Degrees(100), 20, Black));
    dialogs.AnswerYesNo(true);
    driver::Click(entry);
    EXPECT_EQ(Said(), "Do you want to save Wind Data File ?");
    EXPECT_TRUE(tree.Read("winddat/R1_WIND.CSV")
                    .starts_with("TIME,WIND SPEED,WIND DIRECTION (Mag)\r\n2004/08/05 12:25:00,,10\r\n"));

    dialogs.AnswerYesNo(true);  // the file may be written over, and the entry goes on where it ended
    driver::Click(entry);
    Enter(Degrees(110), 200);
    EXPECT_EQ(Directions(), (std::vector<double>{10, 10, 20, 30, 50, 50}));
    app.wind = {{0, 5, 77}, {100, 6, 77}};  // unless other data was read meanwhile
    Enter(Degrees(110), 100);
    EXPECT_EQ(Directions(), std::vector<double>(3, 20));
    EXPECT_EQ(app.wind[2].WindSpeed, 6);  // the hand sets directions alone
    driver::Click(entry);                 // a single sample is no file: no question
    dialogs.AnswerYesNo(false);
    driver::Click(entry);
    EXPECT_TRUE(entry.GetBackColor() == ButtonFace && Form().Timer1.Enabled() && dialogs.AllAnswered());
}

TEST_F(BoatGraphsTest, ALongPreStartHasItsWindAtItsTime) {
    before = 660;
    WriteRace(1, "BT,10\r\n");
    OpenGraphs();
    driver::Click(Form().Command12);
    Enter(Degrees(120), -640);
    Enter(Degrees(100), -620);
    ASSERT_EQ(app.wind.Count(), 4);
    EXPECT_NEAR(app.wind[2].WindTime, -640, 2);
    EXPECT_NEAR(app.wind[3].WindTime, -620, 2);
    EXPECT_EQ(app.wind[1].WindTime, app.wind[2].WindTime);  // the guard lies before no entry
    EXPECT_EQ(app.wind[4].WindTime, 600);
    EXPECT_TRUE(LineAt(Degrees(100), 590, Black));  // the line runs to the finish
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
};

TEST_F(LegPagesTest, EachChartStandsByTheNumbersOfTheRace) {
    const RaceDisp& form = Form();
    constexpr Colour Row = Rgb(192, 255, 255);
    // 275 pixels from y 182 to 457; columns of 45 from x 65 on, by leg from x 260 on. Behind the best by up
    // to 31 seconds, on an axis of 40, by leg 24, on one of 30; in speed up to a knot, the best on top.
    // Factors in per cent of 1.8 pixels, their bars on axes at 183, 273 and 363, boat 1 from y 127 on.
    const struct {
        const Control& page;
        Colour colour;
        double x, y;
    } places[] = {{form.Option1, BoatColour(1), 155, 457 - 10 / 40.0 * 275},
                  {form.Option1, BoatColour(3), 65, 457 - 31 / 40.0 * 275},
                  {form.Option1, BoatColour(1), 305, 457 - 24 / 30.0 * 275},
                  {form.Option5, BoatColour(1), 155, 457},
                  {form.Option5, BoatColour(3), 260, 182},
                  {form.Option12, Black, 273 + (11.3 * 1.8 - 2), 132},
                  {form.Option12, Row, 273 + (11.3 * 1.8 + 2), 132},
                  {form.Option12, Red, 183 - (12.2 * 1.8 - 2), 140},
                  {form.Option12, Row, 183 - (12.2 * 1.8 + 2), 140},
                  {form.Option12, Blue, 183 - (14.3 * 1.8 - 2), 148}};
    driver::Click(form.Bnam[1]);
    const Control* page = nullptr;
    for (const auto& place : places) {
        if (&place.page != std::exchange(page, &place.page)) driver::Click(place.page);
        EXPECT_EQ(form.PicTime.Image().PixelAt(FloorToInt(place.x + 0.5), FloorToInt(place.y + 0.5)),
                  place.colour)
            << place.x << " " << place.y;
    }
    // Boat 2 has dashes from the entry on that it missed, no line leads to them, and it has no factors.
    ExpectLooksAsEver(form, "factors_missed");
    driver::Click(form.Option1);
    ExpectLooksAsEver(form, "times_missed");
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
    // Rounded now, not rounded, as found.
    using Case = std::tuple<QPoint, int, const char*, std::optional<int>>;
    for (const auto& [cell, choice, line, time] :
         {Case{boat2Line2, 0, "PT, 2, 2, 410", 410}, Case{boat1Line2, 1, "PT, 1, 2, -", {}},
          Case{boat1Line2, 2, "", 180}}) {
        dialogs.AnswerChoose(choice);
        click(cell, Qt::RightButton);
        EXPECT_EQ(Said(), "Rounded now|Not rounded|As found");
        EXPECT_EQ(PassTime(app.passes, cell == boat2Line2 ? 2 : 1, 2), time) << line;
        EXPECT_TRUE(*line == 0 ? !FileHolds("PT, 1, 2, -") : FileHolds(line)) << File();
    }
    app.settings.EditMode = false;
    click(boat1Line2, Qt::RightButton);  // nobody is asked
    EXPECT_TRUE(dialogs.AllAnswered());
}

TEST_F(LegPagesTest, APageLargerThanItsPlaceIsDraggedAndTurnedToItsEnd) {
    Form().Move(0, 0, 500, 200);
    driver::Settle();
    const Surface& page = Form().PicTime;
    const double lowest = DataPageTop + app.view.MapSide - page.Height();
    ASSERT_LT(lowest, DataPageTop - 30);
    driver::Press(driver::Face(page), {100, 100});
    driver::MoveTo(page, {100, 90});
    EXPECT_EQ(page.Top(), DataPageTop - 10);
    driver::Release(driver::Face(page), {100, 90});
    EXPECT_FALSE(Form().Picture14.Visible());
    driver::Wheel(page, {100, 100}, 5);
    EXPECT_TRUE(page.Top() == lowest && Form().Picture14.Visible());  // the head has gone out of sight
    Form().Option4.SetValue(true);
    driver::Settle();
    EXPECT_TRUE(page.Top() == DataPageTop && !Form().Picture14.Visible());
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
