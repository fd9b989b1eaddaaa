#include <gtest/gtest.h>

#include <QImage>
#include <QWidget>
#include <tuple>
#include <utility>

#include "analysis/track_smoothing.h"
#include "instruments/data_page.h"
#include "session/livery.h"
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
    Colour LineColour(int boat) const { return ReadableOn(Form().GPIC.BackColor, BoatColour(boat)); }
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
        EXPECT_TRUE(LineAt(Degrees(first), 220, LineColour(1)) &&
                    LineAt(Degrees(second), 220, LineColour(2)))
            << wind;
    }
    for (const int second : {-66, -55, 595, 605})  // from a minute before the start to the finish
        EXPECT_EQ(LineAt(Knots(6), second, LineColour(1)), second > -60 && second < 600) << second;
}

TEST_F(BoatGraphsTest, OfTheLinesOfTheTimeThoseOfTenThirtyAndSixtyMinutesStandOut) {
    finish = 7200;
    WriteRace(1, "FT, 2004/8/5 14:30:00\r\n");
    OpenGraphs();
    for (const auto& [second, colour] : {std::pair{300, Rgb(192, 192, 192)},
                                         {600, Rgb(255, 192, 192)},
                                         {1800, Rgb(255, 128, 0)},
                                         {3600, Red}})
        EXPECT_TRUE(LineAt(Degrees(205), second, colour)) << second;
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
    const int reach = app.tracks.Boats[2].TrackSpeed(9) > 15 ? 16 : 15;
    EXPECT_TRUE(LineAt(Knots(14.2, reach), 300, LineColour(2)));
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
    SmoothedTrack smoothed(a, 15);
    const auto at = [&](int second) {
        smoothed.GoTo(FindSegment(a, second));
        return smoothed.Speed();
    };
    EXPECT_NEAR(at(280), a.TrackSpeed(FindSegment(a, 280)), 0.02);
    EXPECT_NEAR(at(300), (a.TrackSpeed(FindSegment(a, 280)) + a.TrackSpeed(FindSegment(a, 320))) / 2, 0.1);
    EXPECT_NEAR(at(320), a.TrackSpeed(FindSegment(a, 320)), 0.02);
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
    driver::Click(Form().Option14);
    EXPECT_TRUE(differs());
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

TEST(GraphLine, OfDozensOfPointsInARowLooksAsDrawnFromPointToPoint) {
    Form form("Form", Form::Kind::Fixed, 300, 300);
    Surface page(form, "Page", BorderStyle::None);
    page.Move(0, 0, 300, 300);
    form.ShowNow();
    const auto seen = [&page] { return driver::Face(page).grab().toImage(); };
    GraphLine line;
    std::vector<Point> points;
    double y = 290;
    for (int i = 0; y > 10; ++i) {
        const double leap = i % 97 == 0 ? 60 : 3;
        points.push_back({150 + 70 * std::sin(y / 20) + leap * std::sin(i * 1.9), y});
        line.To(points.back().X, y);
        y -= y < 200 && y > 190 ? 4 : y > 100 || i % 16 == 0 ? 0.1 : 0.6;  // a gap, and sparse at the end
    }
    line.End();
    std::vector<ColouredLine> lines;
    line.AddTo(lines, Red);
    page.Lines(lines);
    const QImage fast = seen();
    page.Cls();
    EXPECT_GT(Furthest(fast, seen()), 200);
    page.Polyline(points, Red);
    EXPECT_LE(std::max(Furthest(fast, seen()), Furthest(seen(), fast)), 180);
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
    // 275 pixels from y 163 to 438; columns of 90 from x 40 on, by leg from the middle on. Behind the best
    // by up to 31 seconds, on an axis of 40, by leg 24, on one of 30; in speed up to a knot, the best on
    // top. Factors in per cent of 2.4 pixels, their bars on axes at 170, 290 and 410, boat 1 from y 127 on.
    const double middle = form.PicTime.Width() / 2;
    const struct {
        const Control& page;
        Colour colour;
        double x, y;
    } places[] = {{form.Option1, ReadableOn(Row, BoatColour(1)), 265, 438 - 10 / 40.0 * 275},
                  {form.Option1, ReadableOn(Row, BoatColour(3)), 85, 438 - 31 / 40.0 * 275},
                  {form.Option1, ReadableOn(Row, BoatColour(1)), middle + 175, 438 - 24 / 30.0 * 275},
                  {form.Option5, ReadableOn(Row, BoatColour(1)), 265, 438},
                  {form.Option5, ReadableOn(Row, BoatColour(3)), middle + 85, 163},
                  {form.Option12, Black, 290 + (11.3 * 2.4 - 2), 132},
                  {form.Option12, Row, 290 + (11.3 * 2.4 + 2), 132},
                  {form.Option12, Red, 170 - (12.2 * 2.4 - 2), 140},
                  {form.Option12, Row, 170 - (12.2 * 2.4 + 2), 140},
                  {form.Option12, Blue, 170 - (14.3 * 2.4 - 2), 148}};
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
    const auto cell = [&](int boat, int entry, bool byLeg) {
        const int y = 75 + 18 * boat;
        for (int i = 0; i < 600; ++i) {
            const int x = byLeg ? 600 - i : i;
            const auto held = desk->tables.CellAt({x + 0.0, y + 0.0});
            if (held && held->Entry == entry && held->Boat == boat) return QPoint(x, y);
        }
        return QPoint();
    };
    const QPoint boat1Line2 = cell(1, 2, false), boat3LastLeg = cell(3, 3, true),
                 boat2Line2 = cell(2, 2, false);
    click(boat3LastLeg);
    EXPECT_TRUE(app.now.Time == 410 && app.shown.ViewMode == ViewKind::Map && TheFilm().Stopped());
    EXPECT_NEAR(app.view.ViewCentreLat, 2117.7005, 0.01);
    click(boat2Line2);  // it was not there
    EXPECT_TRUE(app.now.Time == 410 && app.shown.ViewMode == ViewKind::Data);
    // Rounded now, not rounded, as found.
    using Case = std::tuple<QPoint, int, const char*, std::optional<int>>;
    for (const auto& [at, choice, line, time] :
         {Case{boat2Line2, 0, "PT, 2, 2, 410", 410}, Case{boat1Line2, 1, "PT, 1, 2, -", {}},
          Case{boat1Line2, 2, "", 180}}) {
        dialogs.AnswerChoose(choice);
        click(at, Qt::RightButton);
        EXPECT_EQ(Said(), "Rounded now|Not rounded|As found");
        EXPECT_EQ(PassTime(app.passes, at == boat2Line2 ? 2 : 1, 2), time) << line;
        EXPECT_TRUE(*line == 0 ? !FileHolds("PT, 1, 2, -") : FileHolds(line)) << File();
    }
    app.settings.EditMode = false;
    click(boat1Line2, Qt::RightButton);  // nobody is asked
    EXPECT_TRUE(dialogs.AllAnswered());
}

TEST_F(LegPagesTest, APageLargerThanItsPlaceIsScrolledBelowItsHeadAndBesideItsNames) {
    Form().Move(0, 0, 500, 200);
    driver::Settle();
    const Surface& page = Form().PicTime;
    const ScrollBar& down = Form().VScroll2;
    const ScrollBar& across = Form().HScroll3;
    ASSERT_TRUE(down.Max() > 40 && across.Max() > 40 && down.Value() == 0);
    const Picture before = page.Image();
    const auto same = [&](int left, int top, int right, int bottom) {
        const Picture now = page.Image();
        for (int x = left; x < right; ++x)
            for (int y = top; y < bottom; ++y)
                if (now.PixelAt(x, y) != before.PixelAt(x, y)) return false;
        return true;
    };
    driver::Press(driver::Face(page), {130, 120});
    driver::MoveTo(page, {130, 110});
    EXPECT_EQ(down.Value(), 10);
    driver::Release(driver::Face(page), {130, 110});
    EXPECT_TRUE(same(0, 35, 150, 79) && !same(10, 85, 150, 110));
    driver::Wheel(page, {130, 100}, 50);
    EXPECT_TRUE(down.Value() == down.Max() && same(0, 35, 150, 79));
    Form().Option4.SetValue(true);
    driver::Settle();
    EXPECT_EQ(down.Value(), 0);
    Form().Option1.SetValue(true);
    driver::Settle();
    driver::Press(driver::Face(page), {150, 120});
    driver::MoveTo(page, {120, 120});
    driver::Release(driver::Face(page), {120, 120});
    EXPECT_EQ(across.Value(), 30);
    EXPECT_TRUE(same(0, 35, 99, 110) && !same(101, 40, 180, 110));
}

TEST_F(LegPagesTest, WhatIsUnderThePointerIsToldAndTheHeadSwitchesToTheClock) {
    const RaceDisp& form = Form();
    const auto tells = [&](int x, int y) {
        driver::MoveTo(form.PicTime, {x, y});
        return form.Text7.Visible() ? form.Text7.Text() : "";
    };
    EXPECT_EQ(tells(85, FloorToInt(438 - 31 / 40.0 * 275)), "C");
    EXPECT_EQ(tells(265, FloorToInt(438 - 10 / 40.0 * 275) + 2), "A");
    EXPECT_EQ(tells(300, 200), "");
    const Picture seconds = form.PicTime.Image();
    driver::ClickAt(form.PicTime, {130, 72});
    const auto ink = [](int r, int g, int b) { return r + g + b < 500; };
    const auto inkIn = [&](const Picture& page) { return CountPixels(page, 105, 84, 500, 134, ink); };
    EXPECT_GT(inkIn(form.PicTime.Image()), inkIn(seconds));  // 2:48 is more than 168
    driver::ClickAt(form.PicTime, {130, 72});
    EXPECT_EQ(inkIn(form.PicTime.Image()), inkIn(seconds));
    driver::Click(form.Option12);
    EXPECT_EQ(tells(170, 135).substr(0, 8), "A  TTL: ");
    EXPECT_EQ(tells(170, 171), "");  // boat 2 has not finished
}

TEST(StatText, NumbersOfAColumnStandUnderEachOther) {
    using Case = std::tuple<StatKind, bool, double, const char*>;
    for (const auto& [kind, asClock, value, text] :
         {Case{StatKind::Time, false, 3723, "3723"}, Case{StatKind::Time, true, 3723, "1:02:03"},
          Case{StatKind::Time, true, 754, "12:34"}, Case{StatKind::Time, true, 5, "0:05"},
          Case{StatKind::Time, true, -12, "-0:12"}, Case{StatKind::Distance, true, 1852, "1852"},
          Case{StatKind::Speed, false, 6, "6.000"}, Case{StatKind::Speed, false, 5.3, "5.300"},
          Case{StatKind::Speed, true, 12.345, "12.345"}})
        EXPECT_EQ(StatText(kind, asClock, value), text);
}

TEST(TableLayout, ColumnsOfALongCourseHoldTheirNumbersBesideEachOther) {
    RaceControl race;
    race.Boats.Add({"", "A"});
    LegStatistics statistics{.Kind = StatKind::Time, .Cumulative = {}, .ByLeg = {}, .GateMark = {}};
    OneBased<std::optional<double>> row;
    for (int entry = 1; entry <= MaxCourseEntries; ++entry) {
        race.CourseOrder.Add("MK" + std::to_string(entry));
        row.Add(entry * 1000.0);
    }
    for (LegTable* table : {&statistics.Cumulative, &statistics.ByLeg}) table->Value.Add(row);
    const auto measure = [](std::string_view text) { return 7.0 * static_cast<double>(text.size()); };
    const TableLayout layout(race, statistics, true, 100, measure);
    double before = layout.NamesRight();
    for (const TableLayout::Column& column : layout.Columns()) {
        const double number = measure(StatText(StatKind::Time, true, column.Entry * 1000.0));
        EXPECT_GT(column.Right - number, before) << column.Entry;
        EXPECT_GT(column.Right - measure(ColumnHead(race, column)), before) << column.Entry;
        EXPECT_EQ(layout.ColumnAt(column.Right), &column);
        before = column.Right;
    }
    EXPECT_GT(layout.Width(), before);
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
