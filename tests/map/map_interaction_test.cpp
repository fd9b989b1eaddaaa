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
};

TEST_F(MapTest, ClicksZoomInStepsAroundThePointerAndComeHome) {
    Open();
    // The zoom as the mouse chose it, and as the chart is drawn.
    const auto run = [&](Qt::MouseButton button, std::initializer_list<std::pair<double, double>> steps) {
        for (const auto& [zoom, shown] : steps) {
            const Position under = PositionAt(aside);
            ClickMap(aside, button);
            EXPECT_NEAR(app.view.ManualZoom, zoom, 1e-9);
            EXPECT_NEAR(app.view.ZoomFactor, shown, 1e-9) << zoom;
            const bool home = zoom == 1 || shown == 0.5;
            EXPECT_NEAR(app.view.ViewCentreLat, home ? app.area.HomeCentreLat : under.Lat, 1e-9) << zoom;
        }
    };
    run(Qt::LeftButton, {{1.4, 1.4}, {1.96, 1.96}, {2.744, 2.744}});
    run(Qt::RightButton, {{1.96, 1.96}, {1.4, 1.4}, {1, 1}, {1 / 1.4, 1 / 1.4}, {1 / 1.96, 0.5}});
    run(Qt::RightButton, {{1 / 2.744, 0.5}, {0.27, 0.5}, {0.27, 0.5}});
    run(Qt::LeftButton, {{0.378, 0.5}});
}

TEST_F(MapTest, TheMapIsDeafInAutoTraceAndSoundAtAnyZoom) {
    Open();
    Form().Check5.SetValue(true);
    ClickMap(aside);
    EXPECT_EQ(app.view.ManualZoom, 1);
    Form().Check5.SetValue(false);
    driver::Settle();
    for (int click = 0; click < 40; ++click) ClickMap(aside);
    EXPECT_NEAR(PixelsPerMetre(app.view, app.area, app.scale), 100, 1e-6);
    driver::KeyDown(Map(), Qt::Key_Shift);
    ClickMap(aside, Qt::RightButton);
    driver::KeyUp(Map(), Qt::Key_Shift);
    EXPECT_TRUE(app.view.ManualZoom == 1 && app.view.ViewCentreLat == app.area.HomeCentreLat);
}

TEST_F(MapTest, ADragMovesTheMapAndATrembleIsAClick) {
    Open();
    driver::Click(Form().Option6);
    const auto drag = [&](Qt::MouseButton button, QPoint by) {
        driver::Press(driver::Face(Map()), aside, button);
        for (const QPoint& to : {aside + by / 2, aside + by}) driver::MoveTo(Map(), to);
        EXPECT_EQ(Form().Timer1.Enabled(), by.manhattanLength() < 9) << "the map waits for the hand";
        driver::Release(driver::Face(Map()), aside + by, button);
        EXPECT_TRUE(Form().Timer1.Enabled());
    };
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::MiddleButton}) {
        const Position grabbed = PositionAt(aside);
        drag(button, {120, -90});
        EXPECT_EQ(PixelOf(grabbed), aside + QPoint(120, -90));
        EXPECT_EQ(app.view.ManualZoom, 1);
    }
    const Position pressed = PositionAt(aside);
    drag(Qt::LeftButton, {2, 2});
    EXPECT_TRUE(app.view.ManualZoom == 1.4 && std::abs(app.view.ViewCentreLat - pressed.Lat) < 1e-9);
    driver::Click(Form().Command2);  // with a tool in hand, too
    const Position grabbed = PositionAt(aside);
    drag(Qt::LeftButton, {50, 60});
    EXPECT_TRUE(PixelOf(grabbed) == aside + QPoint(50, 60) && Yellow(Form().Command2));
    ClickMap(aside);
    EXPECT_EQ(app.race.Marks.Count(), 1);
}

TEST_F(MapTest, TheWheelZoomsAtThePointerAndInAutoTraceWhatFollows) {
    Open();
    const Position under = PositionAt(aside);
    driver::Wheel(Map(), aside, -2);
    EXPECT_NEAR(app.view.ZoomFactor, 1.25 * 1.25, 1e-9);
    EXPECT_EQ(PixelOf(under), aside);
    driver::Wheel(Form().Picture2, {20, 60}, 1);  // what stands on the map hands the wheel on
    EXPECT_NEAR(app.view.ZoomFactor, 1.25, 1e-9);
    driver::Click(Form().Check5);
    driver::Wheel(Map(), aside, 3);
    EXPECT_TRUE(Form().HScroll2.Value() == 70 && std::abs(app.view.AutoTraceZoom - 0.7) < 1e-9);
    const double followed = app.view.ZoomFactor;
    Form().HScroll2.SetValue(35);
    driver::Settle();
    EXPECT_NEAR(app.view.ZoomFactor, followed / 2, 1e-6);
    // A drag takes the view as it is out of auto trace.
    const double zoom = app.view.ZoomFactor;
    const Position grabbed = PositionAt(aside);
    driver::Press(driver::Face(Map()), aside);
    driver::MoveTo(Map(), aside + QPoint(30, 40));
    driver::Release(driver::Face(Map()), aside + QPoint(30, 40));
    EXPECT_FALSE(Form().Check5.Value() || Form().Picture12.Visible());
    EXPECT_EQ(app.view.ZoomFactor, zoom);
    EXPECT_EQ(PixelOf(grabbed), aside + QPoint(30, 40));
}

TEST_F(MapTest, ShiftMovesTheViewWhateverIsBeingPlaced) {
    Open();
    ClickMap(aside);
    Form().Text9.SetFocus();
    driver::Click(Form().Command2);
    driver::KeyDown(Form().Text9, Qt::Key_Shift);  // the form sees it before any control
    const Position under = PositionAt({700, 200});
    ClickMap({700, 200});
    EXPECT_EQ(RaceTree::PositionText(app.view.Centre()), RaceTree::PositionText(under));
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
    const auto titleAt = [&](double lat, double lon) {
        app.view.CentreOn({lat, lon});
        // The pixel in the middle stands for exactly that place.
        const double there = app.view.MapSide - middle;
        app.view.CentreOn(MapProjection(app).ToEarth({there, there}));
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
    EXPECT_TRUE(FileHolds("MK, " + RaceTree::PositionText(at))) << File();
    EXPECT_FALSE(Yellow(Form().Command2) || Form().Command5.Enabled());
    ClickMap(aside);  // zooms again
    EXPECT_TRUE(app.race.Marks.Count() == 1 && app.view.ManualZoom > 1);
    SetMarks({{500, 500}});
    EXPECT_TRUE(app.race.Marks.Count() == 2 && Form().Command5.Enabled());
}

TEST_F(MapTest, APlaceBeyondTheDateLineIsWrittenAndShownOnItsOwnSide) {
    tree.Boat("a.trk", -2040, 10799.97, SixKnots, 0, -200, 620);
    tree.Boat("b.trk", -2040, -10799.99, SixKnots, 0, -200, 620);
    tree.Race("R1.txt", "BN, a.trk, A\r\nBN, b.trk, B\r\nMK, -2039.5, -10799.98\r\n");
    Open();
    EXPECT_NEAR(app.area.AreaSpan, 820 * SixKnots, 0.01);
    EXPECT_NEAR(app.race.Marks[1].MarkLon, 10800.02, 1e-9);
    const QPoint east = PixelOf({-2039.5, 10800.05});
    driver::MoveTo(Map(), east);
    EXPECT_NE(Form().Caption().find("S 33:59.4"), std::string::npos) << Form().Caption();
    EXPECT_NE(Form().Caption().find("/W 179:59.9"), std::string::npos) << Form().Caption();
    const Position at = PositionAt(east);
    SetMarks({east});
    EXPECT_TRUE(FileHolds("MK, " + RaceTree::PositionText({at.Lat, at.Lon - 21600}))) << File();
    EXPECT_TRUE(FileHolds("MK, -2039.5, -10799.98"));
    EXPECT_EQ(PixelOf(app.race.Marks[2].At()), east);
}

TEST_F(MapTest, ALineFollowsThePointerBetweenItsTwoClicks) {
    Open();
    const auto drawn = [this] { return Form().Line4.Visible(); };
    const QPoint from(300, 400);
    const QPoint to(450, 420);
    driver::Click(Form().Command3);
    driver::MoveTo(Map(), {200, 200});
    EXPECT_TRUE(Yellow(Form().Command3) && !drawn());
    ClickMap(from);
    driver::DoubleClickAt(Map(), {301, 400});  // not a line of a pixel's length
    EXPECT_EQ(app.race.Lines.Count(), 0);
    driver::MoveTo(Map(), to);
    EXPECT_TRUE(drawn() && Form().Line4.X2() == 450);
    EXPECT_NEAR(Form().Line4.X1(), 300, 1e-6);
    ClickMap(to);
    EXPECT_TRUE(FileHolds("LN, " + RaceTree::PositionText(PositionAt(from)) + ", " +
                          RaceTree::PositionText(PositionAt(to))))
        << File();
    EXPECT_FALSE(drawn() || Yellow(Form().Command3));
    for (const bool secondEnd : {false, true}) {  // a second press of the button cancels
        driver::Click(Form().Command3);
        if (secondEnd) ClickMap({600, 600});
        driver::Click(Form().Command3);
        EXPECT_FALSE(drawn() || Yellow(Form().Command3));
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
    EXPECT_FALSE(Yellow(Form().Command3) || Form().Line4.Visible());
    ClickMap({450, 420});
    EXPECT_EQ(app.race.Lines.Count(), 0);
}

TEST_F(MapTest, ClicksPutTheCourseTogether) {
    Open();
    SetMarks({{300, 300}, {500, 300}});
    SetLine({300, 500}, {400, 500});
    driver::Click(Form().Command5);
    EXPECT_TRUE(Form().Picture9.Visible() && !Form().Option11.Enabled());
    EXPECT_EQ(Form().Picture9.Height(), 15 + 55);
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
    EXPECT_TRUE(FileHolds("CRS, L1, MK2, MK2, L1") && Form().Option11.Enabled()) << File();
    EXPECT_EQ(app.passes.FirstPassTime.Count(), 4);  // of this course
    EXPECT_EQ(Form().Picture9.Height(), 4 * 12 + 55);
    driver::MoveTo(Form().Picture8, {250, 20});
    EXPECT_TRUE(Form().Timer1.Enabled());
    driver::Click(Form().Command8);
    EXPECT_TRUE(app.race.CourseOrder.Empty() && !Form().Option11.Enabled());
    EXPECT_EQ(File().find("CRS"), std::string::npos);
    driver::Click(Form().Command5);
    EXPECT_FALSE(Form().Picture9.Visible());
}

TEST_F(MapTest, ShiftJoinsMarksToAGateAndTakesItApartInThePanel) {
    Open();
    SetMarks({{300, 300}, {500, 500}, {560, 500}});
    driver::Click(Form().Command5);
    for (const QPoint& at : {QPoint(300, 300), QPoint(500, 500)}) ClickMap(at);
    driver::ClickAt(Map(), {560, 500}, Qt::LeftButton, Qt::ShiftModifier);
    EXPECT_TRUE(FileHolds("CRS, MK1, MK2/MK3")) << File();
    EXPECT_EQ(Form().List1.Item(1), "2  MK2/MK3");
    const auto between = [this] {  // of the marks of a pair, a dotted yellow line
        return CountPixels(Map().Image(), 510, 498, 550, 502, [](int red, int green, int blue) {
            return red > 200 && green > 200 && blue < 90;
        });
    };
    const int ofGate = between();
    EXPECT_GT(ofGate, 10);
    driver::ClickRow(Form().List1, 1);
    EXPECT_TRUE(FileHolds("CRS, MK1, MK2/MK3")) << "a click without Shift chooses nothing";
    driver::ClickRow(Form().List1, 1, Qt::ShiftModifier);
    EXPECT_TRUE(FileHolds("CRS, MK1, MK2, MK3")) << File();
    EXPECT_LT(between(), ofGate / 3);
    driver::ClickRow(Form().List1, 0, Qt::ShiftModifier);  // no mark before it
    EXPECT_TRUE(FileHolds("CRS, MK1, MK2, MK3"));
    driver::ClickRow(Form().List1, 1, Qt::ShiftModifier);
    EXPECT_TRUE(FileHolds("CRS, MK1/MK2, MK3")) << File();
}

TEST_F(MapTest, ARightClickRemovesTheNearestAndEmptiesTheCourse) {
    Open();
    SetMarks({{300, 300}, {500, 300}, {700, 300}});
    SetLine({300, 500}, {400, 500});
    SetLine({600, 600}, {700, 600});
    const auto left = [this] {  // marks and lines by their pixels, entries of the course
        std::string text;
        for (const Mark& mark : app.race.Marks) text += std::to_string(PixelOf(mark.At()).x()) + " ";
        for (const Line& line : app.race.Lines) text += std::to_string(PixelOf(line.FirstEnd()).x()) + "L ";
        return text + std::to_string(app.race.CourseOrder.Count());
    };
    driver::Click(Form().Command5);
    ClickMap({500, 300});
    const struct {
        const Button& tool;
        QPoint at;
        const char* left;
    } clicks[] = {{Form().Command2, {900, 900}, "300 500 700 300L 600L 1"},  // near nothing
                  {Form().Command2, {501, 301}, "300 700 300L 600L 0"},
                  {Form().Command3, {399, 502}, "300 700 600L 0"},  // by its second end
                  {Form().Command3, {700, 601}, "300 700 0"},
                  {Form().Command3, {300, 301}, "700 0"},
                  {Form().Command3, {700, 301}, "0"}};
    for (const auto& click : clicks) {
        if (!Yellow(click.tool)) driver::Click(click.tool);  // the tool stays in hand
        ClickMap(click.at, Qt::RightButton);
        EXPECT_EQ(left(), click.left);
        EXPECT_EQ(Form().Command5.Enabled(), app.race.Marks.Count() + app.race.Lines.Count() > 1);
    }
    for (const char* key : {"MK,", "LN,"}) EXPECT_EQ(File().find(key), std::string::npos);
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
        EXPECT_TRUE(dialogs.AllAnswered() && Said().find("まで") != std::string::npos) << Said();
    }
    EXPECT_TRUE(app.race.CourseOrder.Count() == MaxClickedEntries && File() == before);
}

TEST_F(MapTest, WhatCannotBeSavedIsToldOnceAndStaysInMemory) {
    Open();
    const auto folder = tree.Root() / "raceadmin";
    std::filesystem::rename(folder, tree.Root() / "away");
    tree.Write("raceadmin", "a file where the folder was");
    dialogs.AnswerOk();
    SetMarks({{300, 300}, {500, 300}});
    EXPECT_TRUE(dialogs.AllAnswered() && app.race.Marks.Count() == 2);
    std::filesystem::remove(folder);
    std::filesystem::rename(tree.Root() / "away", folder);
    SetMarks({{700, 300}});
    for (const int mark : {1, 3})
        EXPECT_TRUE(FileHolds("MK, " + RaceTree::PositionText(app.race.Marks[mark].At())));
}

TEST_F(MapTest, RangeAndBearingAreMeasuredFromTheLastClick) {
    WriteRace(2, "MG, -7\r\n");
    Open();
    driver::Click(Form().Check2);
    const QPoint from(500, 500);
    driver::MoveTo(Map(), {510, 500});
    EXPECT_FALSE(Form().Line4.Visible());
    ClickMap({100, 100});
    ClickMap(from);  // starts anew
    const double pixelsPerMetre = PixelsPerMetre(app.view, app.area, app.scale);
    const int cases[][4] = {{0, -200, 0, 7},     {200, 0, 90, 97}, {0, 200, 180, 187}, {-200, 0, 270, 277},
                            {100, -100, 45, 52}, {-1, -200, 0, 7}, {-10, -200, 357, 4}};
    for (const auto& [east, south, bearing, magnetic] : cases) {
        driver::MoveTo(Map(), from + QPoint(east, south));
        const double metres = std::hypot(east, south) / pixelsPerMetre;
        EXPECT_EQ(Hint().Text(), std::to_string(bearing) + "° / " + std::to_string(magnetic) + "° mag  " +
                                     NumberText(std::floor(metres + 0.5)) + "m");
        EXPECT_TRUE(Form().Line4.Visible() && std::abs(Form().Line4.X1() - 500) < 1e-6);
    }
    EXPECT_EQ(app.view.ManualZoom, 1);
    ClickMap(from, Qt::RightButton);
    EXPECT_FALSE(Form().Check2.Value() || Form().Line4.Visible());
    driver::Click(Form().Check2);
    driver::MoveTo(Map(), {510, 500});
    EXPECT_FALSE(Form().Line4.Visible());
    ClickMap(from);
    driver::Click(Form().Option6);  // the film runs: no more measuring
    EXPECT_TRUE(Form().Check2.Value() && !Form().Line4.Visible());
    ClickMap(from);
    EXPECT_NEAR(app.view.ManualZoom, 1.4, 1e-9);
}

}  // namespace
}  // namespace keelview
