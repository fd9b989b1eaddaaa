#include "map/map_interaction.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <string>
#include <vector>

#include "analysis/nearest_entry.h"
#include "support/open_race.h"

namespace keelview {
namespace {

struct MapTest : testing::Test, OpenRace {
    const QPoint aside{300, 400};

    View& TheView() const { return app->view; }
    RaceControl& Race() const { return app->race; }
    const TextBox& Hint() const { return Form().Text7; }
    /// Two marks and a line, by clicks at these pixels.
    void SetMarks(const std::vector<QPoint>& places) {
        for (const QPoint& at : places) {
            driver::Click(Form().Command2);
            ClickMap(at);
        }
    }
    void SetLine(QPoint from, QPoint to) {
        driver::Click(Form().Command3);
        ClickMap(from);
        ClickMap(to);
    }
    bool Yellow(const Button& button) const { return button.GetBackColor() == keelview::Yellow; }
};

TEST_F(MapTest, ClicksZoomInStepsAroundThePointerAndComeHome) {
    Open();
    const double homeLat = app->area.HomeCentreLat;
    struct Step {
        Qt::MouseButton button;
        double zoom, shown;  // as the mouse chose it, and as the chart is drawn
    };
    const auto run = [&](std::initializer_list<Step> steps) {
        for (const Step& step : steps) {
            SCOPED_TRACE(step.zoom);
            const MapPosition under = PositionAt(aside);
            ClickMap(aside, step.button);
            EXPECT_NEAR(TheView().ManualZoom, step.zoom, 1e-9);
            EXPECT_NEAR(TheView().ZoomFactor, step.shown, 1e-9);
            const bool home = step.zoom == 1 || step.shown == 0.5;
            EXPECT_NEAR(TheView().ViewCentreLat, home ? homeLat : under.Lat, 1e-9);
        }
    };
    run({{Qt::LeftButton, 1.4, 1.4}, {Qt::LeftButton, 1.96, 1.96}, {Qt::LeftButton, 2.744, 2.744}});
    run({{Qt::RightButton, 1.96, 1.96}, {Qt::RightButton, 1.4, 1.4}, {Qt::RightButton, 1, 1}});
    run({{Qt::RightButton, 1 / 1.4, 1 / 1.4},
         {Qt::RightButton, 1 / 1.96, 0.5},
         {Qt::RightButton, 1 / 2.744, 0.5},
         {Qt::RightButton, 0.27, 0.5},
         {Qt::RightButton, 0.27, 0.5},
         {Qt::LeftButton, 0.378, 0.5}});
    EXPECT_TRUE(Form().Timer1.Enabled());
    EXPECT_FALSE(Form().Boat[0].Visible());  // until the next frame
}

TEST_F(MapTest, TheMapIsDeafInAutoTraceAndSoundAtAnyZoom) {
    Open();
    Form().Check5.SetValue(true);
    ClickMap(aside);
    EXPECT_EQ(TheView().ManualZoom, 1);
    Form().Check5.SetValue(false);
    for (int click = 0; click < 120; ++click) ClickMap(aside);
    EXPECT_GT(TheView().ManualZoom, 1e17);
    driver::KeyDown(Map(), Qt::Key_Shift);
    ClickMap(aside, Qt::RightButton);
    driver::KeyUp(Map(), Qt::Key_Shift);
    EXPECT_EQ(TheView().ManualZoom, 1);
    EXPECT_EQ(TheView().ViewCentreLat, app->area.HomeCentreLat);
}

TEST_F(MapTest, ShiftMovesTheViewAndTheFormSeesItBeforeAnyControl) {
    Open();
    ClickMap(aside);
    Form().Text9.SetFocus();
    driver::KeyDown(Form().Text9, Qt::Key_Shift);
    const MapPosition under = PositionAt({700, 200});
    ClickMap({700, 200});
    EXPECT_NEAR(TheView().ViewCentreLat, under.Lat, 1e-9);
    EXPECT_NEAR(TheView().ViewCentreLon, under.Lon, 1e-9);
    EXPECT_NEAR(TheView().ZoomFactor, 1.4, 1e-9);
    driver::KeyUp(Form().Text9, Qt::Key_Shift);
    ClickMap(aside);
    EXPECT_NEAR(TheView().ManualZoom, 1.96, 1e-9);
}

TEST_F(MapTest, TheTitleTellsThePositionUnderThePointer) {
    Open();
    const double middle = TheView().MapCentreX;
    const auto titleAt = [&](double lat, double lon) {
        TheView().ViewCentreLat = lat;
        TheView().ViewCentreLon = lon;
        driver::MoveTo(Map(), {10, 10});
        driver::MoveTo(Map(), {static_cast<int>(middle), static_cast<int>(middle)});
        return Form().Caption().substr(app->display.PlainTitle.size());
    };
    const std::string gap(20, ' ');
    EXPECT_EQ(titleAt(2117.2505, 8369.0625), gap + "N 35:17.25'/E 139:29.062'");
    EXPECT_EQ(titleAt(-90.5, -7350.125), gap + "S 1:30.5'/W 122:30.125'");
    Form().Check5.SetValue(true);
    Form().Check5.SetValue(false);
    EXPECT_EQ(Form().Caption(), app->display.PlainTitle);
}

TEST_F(MapTest, AMarkIsPlacedByOneClickAndSavedAtOnce) {
    Open();
    EXPECT_FALSE(Form().Command5.Enabled());
    driver::Click(Form().Command2);
    EXPECT_TRUE(Yellow(Form().Command2));
    const MapPosition at = PositionAt(aside);
    ClickMap(aside);
    EXPECT_TRUE(FileHolds("MK, " + NumberText(at.Lat) + ", " + NumberText(at.Lon))) << File();
    EXPECT_FALSE(Yellow(Form().Command2));
    EXPECT_FALSE(Form().Command5.Enabled());
    ClickMap(aside);  // zooms again
    EXPECT_EQ(Race().MarkCount, 1);
    EXPECT_NEAR(TheView().ManualZoom, 1.4, 1e-9);
    SetMarks({{500, 500}});
    EXPECT_EQ(Race().MarkCount, 2);
    EXPECT_TRUE(Form().Command5.Enabled());
}

TEST_F(MapTest, ALineFollowsThePointerBetweenItsTwoClicks) {
    Open();
    driver::Click(Form().Command3);
    EXPECT_TRUE(Yellow(Form().Command3));
    const MapPosition from = PositionAt({300, 400});
    const MapPosition to = PositionAt({450, 420});
    driver::MoveTo(Map(), {200, 200});
    EXPECT_FALSE(Form().Line4.Visible());
    ClickMap({300, 400});
    driver::DoubleClickAt(Map(), {301, 400});  // not a line of a pixel's length
    EXPECT_EQ(Race().LineCount, 0);
    driver::MoveTo(Map(), {450, 420});
    EXPECT_TRUE(Form().Line4.Visible());
    EXPECT_NEAR(Form().Line4.X1(), 300, 1e-6);
    EXPECT_EQ(Form().Line4.X2(), 450);
    ClickMap({450, 420});
    EXPECT_TRUE(FileHolds("LN, " + NumberText(from.Lat) + ", " + NumberText(from.Lon) + ", " +
                          NumberText(to.Lat) + ", " + NumberText(to.Lon)))
        << File();
    EXPECT_FALSE(Form().Line4.Visible());
    EXPECT_FALSE(Yellow(Form().Command3));

    for (const bool secondEnd : {false, true}) {  // a second press of the button cancels
        driver::Click(Form().Command3);
        if (secondEnd) ClickMap({600, 600});
        driver::Click(Form().Command3);
        EXPECT_FALSE(Yellow(Form().Command3));
        EXPECT_FALSE(Form().Line4.Visible());
    }
    EXPECT_EQ(Race().LineCount, 1);
}

TEST_F(MapTest, TheModesExcludeEachOther) {
    Open();
    SetMarks({{300, 300}, {500, 300}});
    const std::vector<const Button*> buttons{&Form().Command2, &Form().Command3, &Form().Command5};
    for (const Button* from : buttons) {
        for (const Button* to : buttons) {
            driver::Click(*from);
            EXPECT_TRUE(Yellow(*from));
            driver::Click(*to);
            for (const Button* each : buttons) EXPECT_EQ(Yellow(*each), each == to && to != from);
            EXPECT_EQ(Form().Picture9.Visible(), to == buttons[2] && to != from);
            if (to != from) driver::Click(*to);
        }
    }
}

TEST_F(MapTest, ClicksPutTheCourseTogether) {
    Open();
    SetMarks({{300, 300}, {500, 300}});
    SetLine({300, 500}, {400, 500});
    app->passes.FirstPassTime[1] = 10;
    driver::Click(Form().Command5);
    EXPECT_TRUE(Form().Picture9.Visible());
    EXPECT_EQ(Form().Picture9.Height(), 15 + 55);
    EXPECT_FALSE(Form().Option11.Enabled());
    const struct {
        QPoint at;
        const char *name, *order;  // the label under the pointer; the course after the click
    } clicks[] = {{{302, 498}, "LINE-1", "1  L1"},
                  {{700, 700}, "", "1  L1"},
                  {{505, 303}, "MK2", "2  MK2"},
                  {{505, 303}, "MK2", "3  MK2"},
                  {{398, 500}, "LINE-1", "4  L1"}};
    driver::MoveTo(Map(), {700, 700});
    for (const auto& click : clicks) {
        driver::MoveTo(Map(), click.at);
        EXPECT_EQ(Hint().Visible() ? Hint().Text() : "", click.name);
        ClickMap(click.at, Qt::MiddleButton);
        EXPECT_EQ(Form().List1.Item(Form().List1.ListCount() - 1), click.order);
        EXPECT_FALSE(Form().Timer1.Enabled());  // the boats stand still among the marks
    }
    EXPECT_TRUE(FileHolds("CRS, L1, MK2, MK2, L1")) << File();
    EXPECT_TRUE(Form().Option11.Enabled());
    EXPECT_EQ(app->passes.FirstPassTime[1], NobodyPassed);  // that of the course before
    EXPECT_EQ(Form().Picture9.Height(), 4 * 12 + 55);
    driver::MoveTo(Form().Picture8, {250, 20});
    EXPECT_TRUE(Form().Timer1.Enabled());

    driver::Click(Form().Command8);
    EXPECT_EQ(Race().CourseCount, 0);
    EXPECT_EQ(File().find("CRS"), std::string::npos);
    EXPECT_FALSE(Form().Option11.Enabled());
    driver::Click(Form().Command5);
    EXPECT_FALSE(Form().Picture9.Visible());
}

TEST_F(MapTest, ARightClickRemovesTheNearestAndEmptiesTheCourse) {
    Open();
    SetMarks({{300, 300}, {500, 300}, {700, 300}});
    SetLine({300, 500}, {400, 500});
    SetLine({600, 600}, {700, 600});
    const double third = Race().MarkLon[3];
    const double secondLine = Race().LineLon1[2];
    driver::Click(Form().Command5);
    ClickMap({500, 300});
    driver::Click(Form().Command2);
    ClickMap({900, 900}, Qt::RightButton);  // near nothing
    EXPECT_EQ(Race().CourseCount, 1);
    ClickMap({501, 301}, Qt::RightButton);
    EXPECT_EQ(Race().MarkCount, 2);
    EXPECT_EQ(Race().MarkLon[2], third);
    EXPECT_EQ(Race().CourseCount, 0);
    EXPECT_TRUE(Yellow(Form().Command2));  // the mode stays on
    driver::Click(Form().Command3);
    ClickMap({399, 502}, Qt::RightButton);  // by its second end
    EXPECT_EQ(Race().LineCount, 1);
    EXPECT_EQ(Race().LineLon1[1], secondLine);
    ClickMap({700, 601}, Qt::RightButton);
    ClickMap({300, 301}, Qt::RightButton);
    ClickMap({700, 301}, Qt::RightButton);
    ClickMap({700, 301}, Qt::RightButton);
    EXPECT_EQ(Race().MarkCount + Race().LineCount, 0);
    EXPECT_EQ(File().find("MK,"), std::string::npos);
    EXPECT_EQ(File().find("LN,"), std::string::npos);
}

TEST_F(MapTest, WhatPassesALimitIsRefusedInTheProgramsLanguage) {
    Open(false);
    Race().MarkCount = MaxMarks;
    Race().LineCount = MaxLines;
    Race().CourseCount = MaxClickedEntries;
    Race().MarkLat[1] = TextNumber(PositionAt(aside).Lat);
    Race().MarkLon[1] = TextNumber(PositionAt(aside).Lon);
    Form().Command5.SetEnabled(true);
    const std::string before = File();
    for (const Button* button : {&Form().Command2, &Form().Command3, &Form().Command5}) {
        dialogs.AnswerOk();
        driver::Click(*button);
        ClickMap(aside);
        EXPECT_TRUE(dialogs.AllAnswered());
        EXPECT_NE(dialogs.All().back().Text.find("まで"), std::string::npos);
    }
    EXPECT_EQ(Race().MarkCount, MaxMarks);
    EXPECT_EQ(Race().LineCount, MaxLines);
    EXPECT_EQ(Race().CourseCount, MaxClickedEntries);
    EXPECT_EQ(File(), before);
}

TEST_F(MapTest, WhatCannotBeSavedIsToldOnceAndStaysInMemory) {
    Open();
    const auto folder = tree.Root() / "raceadmin";
    std::filesystem::rename(folder, tree.Root() / "away");
    tree.Write("raceadmin", "a file where the folder was");
    dialogs.AnswerOk();
    SetMarks({{300, 300}, {500, 300}});
    EXPECT_TRUE(dialogs.AllAnswered());
    EXPECT_EQ(Race().MarkCount, 2);
    std::filesystem::remove(folder);
    std::filesystem::rename(tree.Root() / "away", folder);
    SetMarks({{700, 300}});
    EXPECT_TRUE(FileHolds("MK, " + Race().MarkLat[1].Text() + ", " + Race().MarkLon[1].Text()));
    EXPECT_TRUE(FileHolds("MK, " + Race().MarkLat[3].Text() + ", " + Race().MarkLon[3].Text()));
}

TEST_F(MapTest, RangeAndBearingAreMeasuredFromTheLastClick) {
    Open();
    driver::Click(Form().Option7);
    driver::Click(Form().Check2);
    const QPoint from(500, 500);
    driver::MoveTo(Map(), {510, 500});
    EXPECT_FALSE(Form().Line4.Visible());
    ClickMap({100, 100});
    ClickMap(from);  // starts anew
    const double pixelsPerMetre = TheView().PixelsPerMetre;
    const struct {
        QPoint to;
        int bearing, magnetic;
    } cases[] = {{{500, 300}, 0, 7},   {{700, 500}, 90, 97}, {{500, 700}, 180, 187}, {{300, 500}, 270, 277},
                 {{600, 400}, 45, 52}, {{499, 300}, 0, 7},   {{490, 300}, 357, 4}};
    for (const auto& c : cases) {
        driver::MoveTo(Map(), c.to);
        const double metres = std::hypot(c.to.x() - 500, c.to.y() - 500) / pixelsPerMetre;
        EXPECT_EQ(Hint().Text(), std::to_string(c.bearing) + "度／" + std::to_string(c.magnetic) + "mag  " +
                                     NumberText(std::floor(metres + 0.5)) + "m");
        EXPECT_TRUE(Form().Line4.Visible());
        EXPECT_NEAR(Form().Line4.X1(), 500, 1e-6);
    }
    EXPECT_EQ(TheView().ManualZoom, 1);
    ClickMap(from, Qt::RightButton);
    EXPECT_FALSE(Form().Check2.Value());
    EXPECT_FALSE(Form().Line4.Visible());
    driver::Click(Form().Check2);
    driver::MoveTo(Map(), {510, 500});
    EXPECT_FALSE(Form().Line4.Visible());
    ClickMap(from);
    driver::Click(Form().Option6);  // the film runs: no more measuring
    EXPECT_FALSE(app->display.MeasureMode);
    EXPECT_TRUE(Form().Check2.Value());
}

TEST_F(MapTest, HintsSayWhatAClickDoesAndStayOnTheMap) {
    Open();
    const int side = static_cast<int>(Map().Width());
    const struct {
        double zoom;
        QPoint at;
        double left, top, height;
    } cases[] = {{1, {300, 300}, 315, 330, 54},
                 {0.5, {300, 300}, 315, 330, 42},
                 {1, {side - 100, side - 60}, side - 280.0, side - 124.0, 54}};
    for (const auto& c : cases) {
        TheView().ZoomFactor = c.zoom;
        driver::MoveTo(Map(), {10, 10});
        driver::MoveTo(Map(), c.at);
        EXPECT_TRUE(Hint().Visible());
        EXPECT_EQ(Hint().Text().find("Show all area") != std::string::npos, c.height == 54);
        EXPECT_EQ(Hint().Left(), c.left);
        EXPECT_EQ(Hint().Top(), c.top);
        EXPECT_EQ(Hint().Height(), c.height);
    }
    driver::Click(Form().Command2);
    driver::MoveTo(Map(), {100, 300});
    EXPECT_EQ(Hint().Text(), "地図をクリックしてマーク設定");
    EXPECT_EQ(Hint().Left(), Map().Left() + 110);
    driver::MoveTo(Map(), {400, 300});
    EXPECT_EQ(Hint().Left(), Map().Left() + 190);
    driver::Click(Form().Check3);
    driver::MoveTo(Map(), {400, 310});
    EXPECT_FALSE(Hint().Visible());
    driver::Click(Form().Command2);
    driver::MoveTo(Map(), {400, 320});
    EXPECT_FALSE(Hint().Visible());
}

TEST(NearestEntryTest, TheFirstOfEqualsInsideTheGripIsTaken) {
    RaceControl race;
    race.MarkCount = 2;
    race.LineCount = 2;
    const auto at = [](double value) { return TextNumber(value); };
    race.MarkLat = {at(0), at(100), at(100)};
    race.MarkLon = {at(0), at(200), at(200)};
    race.LineLat1 = {at(0), at(101), at(102)};
    race.LineLon1 = {at(0), at(200), at(200)};
    race.LineLat2 = {at(0), at(102), at(100)};
    race.LineLon2 = {at(0), at(200), at(200)};
    EarthScale scale;
    scale.LonScale = 0.5;
    const struct {
        double lat, lon, zoom;
        const char* entry;
    } cases[] = {{100, 200, 1, "MK1"},    {100.099, 200, 1, "MK1"}, {100.101, 200, 1, ""},
                 {100, 200.19, 1, "MK1"}, {100.099, 200, 2, ""},    {101, 200, 1, "L1"},
                 {102, 200, 1, "L1"},     {100, 200, 1e6, "MK1"}};
    for (const auto& c : cases) {
        const auto entry = NearestEntry(race, scale, c.zoom, {c.lat, c.lon});
        EXPECT_EQ(entry ? CourseKeyText(*entry) : "", c.entry) << c.lat << ' ' << c.lon;
    }
}

}  // namespace
}  // namespace keelview
