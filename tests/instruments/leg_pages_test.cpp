#include <gtest/gtest.h>

#include "instruments/boat_graphs.h"
#include "instruments/data_view.h"
#include "instruments/leg_charts.h"
#include "instruments/leg_tables.h"
#include "instruments/view_switch.h"
#include "map/chart.h"
#include "support/drawn_race.h"

namespace keelview {
namespace {

constexpr Colour FocusColour = Rgb(192, 255, 255);

bool Dark(int r, int g, int b) {
    return r < 110 && g < 110 && b < 110;
}
bool Reddish(int r, int g, int b) {
    return r > 150 && g < 110 && b < 110;
}

/// The race display with its three views.
struct Views {
    DrawnRace race;
    Chart chart{*race.app, race.Form(), race.services};
    BoatGraphs graphs{*race.app, race.Form()};
    LegTables tables{*race.app, race.Form(), race.services};
    DataView dataView{*race.app, race.Form(), tables};
    ViewSwitch viewSwitch{*race.app, race.Form(), chart, graphs, tables};
    explicit Views(int boats) : race(boats) {}
    RaceDisp& Form() const { return race.Form(); }
    Picture Page() const { return Form().PicTime.Image(); }

    template <class Like>
    bool Seen(double left, double top, double right, double bottom, Like like) const {
        return CountPixels(Page(), static_cast<int>(left), static_cast<int>(top), static_cast<int>(right),
                           static_cast<int>(bottom), like) > 0;
    }
};

/// Three boats over five entries; boat 2 missed entry 3.
Views FiveEntries() {
    Views views(3);
    views.race.Pass(1, {5, 300, 600, 900, 1200}, {0.01, 0.5, 1.0, 1.5, 2.0});
    views.race.Pass(2, {9, 310, 0, 920, 1230}, {0.01, 0.52, 0, 1.6, 2.2});
    views.race.Pass(3, {7, 305, 640, 930, 1300}, {0.01, 0.5, 1.1, 1.55, 2.1});
    return views;
}

// Columns of five entries are 45 wide: numbers end at 93 + 45 c, and those of leg c at 395 + 45 (c - 2).
struct Cell {
    int boat;
    int entry;
    bool leg;
};

template <class Like>
bool CellHas(const Views& views, const Cell& cell, Like like) {
    const int right = cell.leg ? 395 + 45 * (cell.entry - 2) : 93 + 45 * cell.entry;
    const int top = 18 * cell.boat + 65;
    return views.Seen(right - 28, top, right, top + 13, like);
}

TEST(LegPage, CellsShowTheirNumbersAndTheBestInRed) {
    Views views = FiveEntries();
    ClickOn(views.Form().Option11);
    EXPECT_EQ(StatColWidth(views.race.app->race), 45);
    for (int boat = 1; boat <= 3; ++boat) {
        for (int entry = 1; entry <= 5; ++entry) {
            SCOPED_TRACE(boat * 10 + entry);
            const bool missed = boat == 2 && entry == 3;
            const bool best = boat == 1;
            EXPECT_EQ(CellHas(views, {boat, entry, false}, Reddish), best);
            EXPECT_EQ(CellHas(views, {boat, entry, false}, Dark), !best);  // a missed entry shows 0
            if (entry == 1) continue;
            const bool bestLeg = entry == 4 ? boat == 3 : entry == 5 ? boat == 1 : boat == 1;
            EXPECT_EQ(CellHas(views, {boat, entry, true}, Reddish), bestLeg && !missed);
            EXPECT_EQ(CellHas(views, {boat, entry, true}, Dark), !bestLeg && !missed);
        }
    }
    EXPECT_EQ(views.Page().PixelAt(50, 18 + 65 + 14), views.race.app->display.BoatColour[1]);
    EXPECT_EQ(views.Page().PixelAt(120, 18 * 2 + 65 - 1), FocusColour);
    EXPECT_EQ(views.Page().PixelAt(5 * 45 + 145, 18 * 2 + 65 - 1), FocusColour);
    views.Form().Bnam[1].SetValue(false);
    views.viewSwitch.RedrawView();
    EXPECT_EQ(views.Page().PixelAt(120, 18 * 2 + 65 - 1), White);
}

TEST(LegPage, TheLeaderRunsAlongTheEdgeOfTheCharts) {
    Views views = FiveEntries();
    ClickOn(views.Form().Option11);
    const double top = ChartTop(views.race.app->race);
    EXPECT_EQ(top, 4 * 18 + 85);
    const auto leader = [&](int r, int g, int b) {
        const ColourParts parts = PartsOf(views.race.app->display.BoatColour[1]);
        return r == parts.Red && g == parts.Green && b == parts.Blue;
    };
    // Between entries 1 and 2 on the bottom line; the spread of 100 takes an axis of 200.
    EXPECT_TRUE(views.Seen(80, top + 298, 100, top + 302, leader));
    // For speed the best is on top, and the left chart begins at entry 2.
    ClickOn(views.Form().Option5);
    EXPECT_FALSE(views.Seen(70, top + 23, 100, top + 27, leader));
    EXPECT_TRUE(views.Seen(50, top + 30, 60, top + 290,
                           [](int r, int g, int b) { return r == 192 && g == 255 && b == 255; }));
}

TEST(LegPage, TheAnalysisSplitsEachLegAndSaysWhenTheCourseIsTooLong) {
    Views views = FiveEntries();
    ClickOn(views.Form().Option11);
    ClickOn(views.Form().Option12);
    const auto cyan = [](int r, int g, int b) { return r == 0 && g == 255 && b == 255; };
    const Picture page = views.Page();
    // Total column, axis at 183: boat 3 took 8.3 % longer, 5 % further and 3.1 % slower; 180 pixels are 100
    // %.
    const int row = 2 * 36 + 127;
    EXPECT_EQ(page.PixelAt(183 + 13, row + 5), Black);
    EXPECT_NE(page.PixelAt(183 + 17, row + 5), Black);
    EXPECT_EQ(page.PixelAt(183 + 7, row + 13), Red);
    EXPECT_EQ(page.PixelAt(183 - 4, row + 21), Blue);
    EXPECT_EQ(page.PixelAt(183 + 4, row + 21), FocusColour);
    EXPECT_TRUE(views.Seen(183, 127 + 2, 183, 127 + 32, cyan));
    EXPECT_FALSE(views.Seen(184, 127 + 2, 200, 127 + 24, Dark));  // the best boat's bars have no length
    EXPECT_FALSE(views.Seen(93 + 3 * 90 - 5, 36 + 127 + 2, 93 + 3 * 90 + 5, 36 + 127 + 24, cyan));

    for (const int entries : {21, 30}) {
        views.race.Pass(1, std::vector<int>(entries, 500), std::vector<double>(entries, 1.0));
        views.viewSwitch.RedrawView();
        EXPECT_FALSE(views.Seen(100, 100, 600, 300, cyan));
        EXPECT_TRUE(views.Seen(100, 45, 200, 60, Dark));
    }
}

TEST(LegPage, OddRacesDrawEveryKindOfPage) {
    struct Case {
        int boats;
        std::vector<int> times;
        std::vector<double> miles;
    };
    for (const Case& each :
         {Case{1, {5, 60, 300}, {0, 0.1, 0.5}}, Case{50, {5, 60, 300}, {0, 0.1, 0.5}}, Case{2, {5}, {0}},
          Case{3, {0, 0, 0}, {0, 0, 0}}, Case{2, {60, 60, 60}, {1, 1, 1}},
          Case{2, {-9, 0, 2000000000}, {-1, 0, 9e9}},
          Case{2, std::vector<int>(50, 9), std::vector<double>(50, 1)}, Case{2, {}, {}}}) {
        Views views(each.boats);
        for (int boat = 1; boat <= each.boats; ++boat) views.race.Pass(boat, each.times, each.miles);
        for (OptionButton* option : {&views.Form().Option4, &views.Form().Option5, &views.Form().Option12,
                                     &views.Form().Option1}) {
            option->SetValue(true);
            EXPECT_EQ(views.race.app->display.ViewMode, ViewKind::Data);
        }
    }
}

TEST(LegPage, AHighPageIsDraggedByMouseAndStaysOverItsPlace) {
    Views views(50);
    for (int boat = 1; boat <= 50; ++boat) views.race.Pass(boat, {boat, 100 + boat}, {0.1, 0.5});
    ClickOn(views.Form().Option11);
    Surface& page = views.Form().PicTime;
    EXPECT_EQ(page.Height(), 50 * 18 + 85 + views.Form().MapSide() / 2);
    const double lowest = views.Form().MapSide() - page.Height() + 5;
    const auto drag = [&](int from, int to) {
        QTest::mousePress(Face(page), Qt::LeftButton, {}, {50, from});
        QTest::mouseMove(Face(page), {50, to});
        QTest::mouseRelease(Face(page), Qt::LeftButton, {}, {50, to});
    };
    drag(300, 250);
    EXPECT_EQ(page.Top(), 5 - 50);
    QTest::mouseMove(Face(page), {50, 500});  // no button, no drag
    EXPECT_EQ(page.Top(), 5 - 50);
    drag(100, 400);
    EXPECT_EQ(page.Top(), 5);
    drag(700, 20);
    drag(700, 20);
    drag(1300, 20);
    EXPECT_EQ(page.Top(), lowest);
}

TEST(ViewSwitch, ViewsTakeEachOthersPlaceAndTheFilmObeysStop) {
    Views views = FiveEntries();
    RaceDisp& form = views.Form();
    form.Timer1.SetEnabled(true);
    form.Check2.SetEnabled(true);
    form.Check2.SetValue(true);
    ClickOn(form.Option10);
    EXPECT_EQ(views.race.app->display.ViewMode, ViewKind::Graph);
    EXPECT_TRUE(form.GPIC.Visible() && !form.Picture1.Visible() && !form.PicTime.Visible());
    EXPECT_TRUE(form.Timer1.Enabled());
    EXPECT_FALSE(form.Check2.Value() || form.Check2.Enabled());
    ClickOn(form.Option11);
    EXPECT_TRUE(form.PicTime.Visible() && !form.Picture1.Visible() && !form.GPIC.Visible());
    EXPECT_FALSE(form.Timer1.Enabled());
    ClickOn(form.Command11);  // back to the graphs, from where the page was opened
    EXPECT_TRUE(form.Option10.Value() && form.GPIC.Visible() && !form.PicTime.Visible());
    EXPECT_TRUE(form.Timer1.Enabled());

    form.Option7.SetValue(true);
    form.Timer1.SetEnabled(false);
    ClickOn(form.Option9);
    EXPECT_TRUE(form.Picture1.Visible() && !form.GPIC.Visible());
    EXPECT_TRUE(form.Check2.Enabled());
    EXPECT_FALSE(form.Timer1.Enabled());
    ClickOn(form.Option11);
    ClickOn(form.Command11);
    EXPECT_TRUE(form.Option9.Value() && form.Picture1.Visible());
    EXPECT_FALSE(form.Timer1.Enabled());
    ClickOn(form.Option11);
    ClickOn(form.Option4);  // after a change of table the page is left to the graphs
    ClickOn(form.Command11);
    EXPECT_TRUE(form.Option10.Value());
}

}  // namespace
}  // namespace keelview
