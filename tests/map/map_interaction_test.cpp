#include "map/map_interaction.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <string>
#include <vector>

#include "support/test_desk.h"

namespace keelview {
namespace {

struct MapTest : testing::Test, TestDesk {
    const QPoint aside{300, 400};

    const TextBox& Hint() const { return Form().Text7; }
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
    bool Yellow(const Control& button) const { return button.GetBackColor() == keelview::Yellow; }
    static std::string PositionText(const Position& at) {
        return NumberText(at.Lat) + ", " + NumberText(at.Lon);
    }
};

TEST_F(MapTest, ClicksZoomInStepsAroundThePointerAndComeHome) {
    Open();
    struct Step {
        Qt::MouseButton button;
        double zoom, shown;  // as the mouse chose it, and as the chart is drawn
    };
    const auto run = [&](std::initializer_list<Step> steps) {
        for (const Step& step : steps) {
            SCOPED_TRACE(step.zoom);
            const Position under = PositionAt(aside);
            ClickMap(aside, step.button);
            EXPECT_NEAR(app.view.ManualZoom, step.zoom, 1e-9);
            EXPECT_NEAR(app.view.ZoomFactor, step.shown, 1e-9);
            const bool home = step.zoom == 1 || step.shown == 0.5;
            EXPECT_NEAR(app.view.ViewCentreLat, home ? app.area.HomeCentreLat : under.Lat, 1e-9);
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
    EXPECT_TRUE(TheFilm().Stopped());  // a click on the map lets nothing run that was stopped
    EXPECT_FALSE(Form().Timer1.Enabled());
}

TEST_F(MapTest, TheMapIsDeafInAutoTraceAndSoundAtAnyZoom) {
    Open();
    Form().Check5.SetValue(true);
    ClickMap(aside);
    EXPECT_EQ(app.view.ManualZoom, 1);
    Form().Check5.SetValue(false);
    driver::Settle();
    for (int click = 0; click < 120; ++click) ClickMap(aside);
    EXPECT_GT(app.view.ManualZoom, 1e17);
    driver::KeyDown(Map(), Qt::Key_Shift);
    ClickMap(aside, Qt::RightButton);
    driver::KeyUp(Map(), Qt::Key_Shift);
    EXPECT_EQ(app.view.ManualZoom, 1);
    EXPECT_EQ(app.view.ViewCentreLat, app.area.HomeCentreLat);
}

TEST_F(MapTest, ShiftMovesTheViewWhateverIsBeingPlaced) {
    Open();
    ClickMap(aside);
    Form().Text9.SetFocus();
    driver::Click(Form().Command2);
    driver::KeyDown(Form().Text9, Qt::Key_Shift);  // the form sees it before any control
    const Position under = PositionAt({700, 200});
    ClickMap({700, 200});
    EXPECT_NEAR(app.view.ViewCentreLat, under.Lat, 1e-9);
    EXPECT_NEAR(app.view.ViewCentreLon, under.Lon, 1e-9);
    EXPECT_NEAR(app.view.ZoomFactor, 1.4, 1e-9);
    EXPECT_TRUE(app.race.Marks.Empty());
    driver::KeyUp(Form().Text9, Qt::Key_Shift);
    driver::Click(Form().Command2);
    ClickMap(aside);
    EXPECT_NEAR(app.view.ManualZoom, 1.96, 1e-9);
}

TEST_F(MapTest, TheTitleTellsThePositionUnderThePointer) {
    Open();
    const std::string plain = Form().Caption();
    const int middle = static_cast<int>(app.view.MapSide / 2);
    const double half = middle - app.view.MapSide / 2;
    const auto titleAt = [&](double lat, double lon) {
        app.view.CentreOn({lat, lon});
        // The pixel in the middle stands for exactly that place.
        const Position at =
            MapProjection(app).ToEarth({app.view.MapSide / 2 - half, app.view.MapSide / 2 - half});
        app.view.CentreOn(at);
        driver::MoveTo(Map(), {10, 10});
        driver::MoveTo(Map(), {middle, middle});
        return Form().Caption().substr(plain.size());
    };
    const std::string gap(20, ' ');
    EXPECT_EQ(titleAt(2117.2505, 8369.0625), gap + "N 35:17.25'/E 139:29.062'");
    EXPECT_EQ(titleAt(-90.5005, -7350.1255), gap + "S 1:30.5'/W 122:30.125'");
    Form().Check5.SetValue(true);
    Form().Check5.SetValue(false);
    driver::Settle();
    EXPECT_EQ(Form().Caption(), plain);
}

TEST_F(MapTest, AMarkIsPlacedByOneClickAndSavedAtOnce) {
    Open();
    EXPECT_FALSE(Form().Command5.Enabled());
    driver::Click(Form().Command2);
    EXPECT_TRUE(Yellow(Form().Command2));
    const Position at = PositionAt(aside);
    ClickMap(aside);
    EXPECT_TRUE(FileHolds("MK, " + PositionText(at))) << File();
    EXPECT_FALSE(Yellow(Form().Command2));
    EXPECT_FALSE(Form().Command5.Enabled());
    ClickMap(aside);  // zooms again
    EXPECT_EQ(app.race.Marks.Count(), 1);
    EXPECT_NEAR(app.view.ManualZoom, 1.4, 1e-9);
    SetMarks({{500, 500}});
    EXPECT_EQ(app.race.Marks.Count(), 2);
    EXPECT_TRUE(Form().Command5.Enabled());
}

TEST_F(MapTest, ALineFollowsThePointerBetweenItsTwoClicks) {
    Open();
    driver::Click(Form().Command3);
    EXPECT_TRUE(Yellow(Form().Command3));
    const Position from = PositionAt({300, 400});
    const Position to = PositionAt({450, 420});
    driver::MoveTo(Map(), {200, 200});
    EXPECT_FALSE(Form().Line4.Visible());
    ClickMap({300, 400});
    driver::DoubleClickAt(Map(), {301, 400});  // not a line of a pixel's length
    EXPECT_EQ(app.race.Lines.Count(), 0);
    driver::MoveTo(Map(), {450, 420});
    EXPECT_TRUE(Form().Line4.Visible());
    EXPECT_NEAR(Form().Line4.X1(), 300, 1e-6);
    EXPECT_EQ(Form().Line4.X2(), 450);
    ClickMap({450, 420});
    EXPECT_TRUE(FileHolds("LN, " + PositionText(from) + ", " + PositionText(to))) << File();
    EXPECT_FALSE(Form().Line4.Visible());
    EXPECT_FALSE(Yellow(Form().Command3));

    for (const bool secondEnd : {false, true}) {  // a second press of the button cancels
        driver::Click(Form().Command3);
        if (secondEnd) ClickMap({600, 600});
        driver::Click(Form().Command3);
        EXPECT_FALSE(Yellow(Form().Command3));
        EXPECT_FALSE(Form().Line4.Visible());
    }
    EXPECT_EQ(app.race.Lines.Count(), 1);
}

TEST_F(MapTest, TheToolsExcludeEachOther) {
    Open();
    SetMarks({{300, 300}, {500, 300}});
    CheckBox& measure = Form().Check2;
    const std::vector<const Control*> tools{&Form().Command2, &Form().Command3, &Form().Command5, &measure};
    const auto inHand = [&](const Control* tool) {
        return tool == &measure ? measure.Value() : Yellow(*tool);
    };
    for (const Control* from : tools) {
        for (const Control* to : tools) {
            driver::Click(*from);
            EXPECT_TRUE(inHand(from));
            driver::Click(*to);
            for (const Control* each : tools) EXPECT_EQ(inHand(each), each == to && to != from);
            EXPECT_EQ(Form().Picture9.Visible(), to == tools[2] && to != from);
            if (to != from) driver::Click(*to);
        }
    }
    // What was begun is given up with the race.
    driver::Click(Form().Command3);
    ClickMap({300, 400});
    desk->session.ReloadRace();
    EXPECT_FALSE(Yellow(Form().Command3));
    EXPECT_FALSE(Form().Line4.Visible());
    ClickMap({450, 420});
    EXPECT_EQ(app.race.Lines.Count(), 0);
}

TEST_F(MapTest, ClicksPutTheCourseTogether) {
    Open();
    SetMarks({{300, 300}, {500, 300}});
    SetLine({300, 500}, {400, 500});
    driver::Click(Form().Command5);
    EXPECT_TRUE(Form().Picture9.Visible());
    EXPECT_EQ(Form().Picture9.Height(), 15 + 55);
    EXPECT_FALSE(Form().Option11.Enabled());
    driver::Click(Form().Option6);
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
    EXPECT_EQ(app.passes.FirstPassTime.Count(), 4);  // of this course
    EXPECT_EQ(Form().Picture9.Height(), 4 * 12 + 55);
    driver::MoveTo(Form().Picture8, {250, 20});
    EXPECT_TRUE(Form().Timer1.Enabled());

    driver::Click(Form().Command8);
    EXPECT_EQ(app.race.CourseOrder.Count(), 0);
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
    const double third = app.race.Marks[3].MarkLon;
    const double secondLine = app.race.Lines[2].LineLon1;
    driver::Click(Form().Command5);
    ClickMap({500, 300});
    driver::Click(Form().Command2);
    ClickMap({900, 900}, Qt::RightButton);  // near nothing
    EXPECT_EQ(app.race.CourseOrder.Count(), 1);
    ClickMap({501, 301}, Qt::RightButton);
    EXPECT_EQ(app.race.Marks.Count(), 2);
    EXPECT_EQ(app.race.Marks[2].MarkLon, third);
    EXPECT_EQ(app.race.CourseOrder.Count(), 0);
    EXPECT_TRUE(Yellow(Form().Command2));  // the tool stays in hand
    driver::Click(Form().Command3);
    ClickMap({399, 502}, Qt::RightButton);  // by its second end
    EXPECT_EQ(app.race.Lines.Count(), 1);
    EXPECT_EQ(app.race.Lines[1].LineLon1, secondLine);
    EXPECT_TRUE(Form().Command5.Enabled());
    ClickMap({700, 601}, Qt::RightButton);
    ClickMap({300, 301}, Qt::RightButton);
    EXPECT_FALSE(Form().Command5.Enabled());  // nothing to put in order any more
    ClickMap({700, 301}, Qt::RightButton);
    ClickMap({700, 301}, Qt::RightButton);
    EXPECT_EQ(app.race.Marks.Count() + app.race.Lines.Count(), 0);
    EXPECT_EQ(File().find("MK,"), std::string::npos);
    EXPECT_EQ(File().find("LN,"), std::string::npos);
}

TEST_F(MapTest, WhatPassesALimitIsRefusedInTheProgramsLanguage) {
    Open(true, false);
    const Position at = PositionAt(aside);
    while (app.race.Marks.Add({TextNumber(at.Lat), TextNumber(at.Lon)})) {
    }
    while (app.race.Lines.Add({})) {
    }
    while (app.race.CourseOrder.Count() < MaxClickedEntries) app.race.CourseOrder.Add("MK1");
    Form().Command5.SetEnabled(true);
    const std::string before = File();
    for (const Button* button : {&Form().Command2, &Form().Command3, &Form().Command5}) {
        dialogs.AnswerOk();
        driver::Click(*button);
        ClickMap(aside);
        EXPECT_TRUE(dialogs.AllAnswered());
        EXPECT_NE(Said().find("まで"), std::string::npos);
    }
    EXPECT_EQ(app.race.CourseOrder.Count(), MaxClickedEntries);
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
    EXPECT_EQ(app.race.Marks.Count(), 2);
    std::filesystem::remove(folder);
    std::filesystem::rename(tree.Root() / "away", folder);
    SetMarks({{700, 300}});
    for (const int mark : {1, 3}) EXPECT_TRUE(FileHolds("MK, " + PositionText(app.race.Marks[mark].At())));
}

TEST_F(MapTest, RangeAndBearingAreMeasuredFromTheLastClick) {
    Open();
    driver::Click(Form().Check2);
    const QPoint from(500, 500);
    driver::MoveTo(Map(), {510, 500});
    EXPECT_FALSE(Form().Line4.Visible());
    ClickMap({100, 100});
    ClickMap(from);  // starts anew
    const double pixelsPerMetre = PixelsPerMetre(app.view, app.area, app.scale);
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
    EXPECT_EQ(app.view.ManualZoom, 1);
    ClickMap(from, Qt::RightButton);
    EXPECT_FALSE(Form().Check2.Value());
    EXPECT_FALSE(Form().Line4.Visible());
    driver::Click(Form().Check2);
    driver::MoveTo(Map(), {510, 500});
    EXPECT_FALSE(Form().Line4.Visible());
    ClickMap(from);
    driver::Click(Form().Option6);  // the film runs: no more measuring
    EXPECT_FALSE(Form().Line4.Visible());
    EXPECT_TRUE(Form().Check2.Value());
    ClickMap(from);
    EXPECT_NEAR(app.view.ManualZoom, 1.4, 1e-9);
}

TEST_F(MapTest, HintsSayWhatAClickDoesAndStayOnTheMap) {
    Open();
    const int side = static_cast<int>(Map().Width());
    driver::MoveTo(Map(), {side - 100, side - 60});
    EXPECT_NE(Hint().Text().find("Show all area"), std::string::npos);
    EXPECT_LE(Hint().Left() + Hint().Width(), side);
    EXPECT_LE(Hint().Top() + Hint().Height(), side);
    for (int click = 0; click < 2; ++click) ClickMap(aside, Qt::RightButton);
    driver::MoveTo(Map(), {300, 300});
    EXPECT_TRUE(Hint().Visible());
    EXPECT_EQ(Hint().Text().find("Show all area"), std::string::npos);  // it is shown already
    driver::Click(Form().Command2);
    driver::MoveTo(Map(), {400, 300});
    EXPECT_EQ(Hint().Text(), "地図をクリックしてマーク設定");
    driver::Click(Form().Check3);
    driver::MoveTo(Map(), {400, 310});
    EXPECT_FALSE(Hint().Visible());
    driver::Click(Form().Command2);
    driver::MoveTo(Map(), {400, 320});
    EXPECT_FALSE(Hint().Visible());
}

}  // namespace
}  // namespace keelview
