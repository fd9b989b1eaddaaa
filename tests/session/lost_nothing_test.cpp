// What stays in the file of a race and on the screen though something is missing, wrong or not said.

#include <gtest/gtest.h>

#include <string>

#include "support/test_desk.h"

namespace keelview {
namespace {

struct DeskLosesNothing : testing::Test, TestDesk {};

TEST_F(DeskLosesNothing, MereOpeningWritesNothingAndASaveNamesTheCoast) {
    WriteRace(2, "XX, of a later program\r\n");
    const std::string before = File();
    Open();
    EXPECT_EQ(File(), before);
    for (const bool save : {false, true}) {
        dialogs.AnswerYesNo(save);
        if (save) dialogs.AnswerInput("R1");
        driver::Click(Form().Command4);
        EXPECT_EQ(FileHolds("MAP, 5239"), save);
    }
}

TEST_F(DeskLosesNothing, AllThatIsMissingOrUnreadableIsToldAndKept) {
    WriteRace(2, "BN, gone.trk, Ghost\r\nBN, lost.trk, Lost\r\nWF, w.csv\r\nST, soon\r\nFT, later\r\n");
    for (const bool english : {true, false}) {
        dialogs.AnswerOk();
        Open(true, english);
        const std::string said = Said();
        for (const char* name : {"gone.trk, lost.trk", "w.csv", "ST, soon", "FT, later"})
            EXPECT_NE(said.find(name), std::string::npos) << said;
    }
    EXPECT_EQ(Form().Text9.Text(), "2004/08/05 12:26:40");  // the first fix, second -200 of the race
    EXPECT_EQ(app.race.RaceDuration, 820);
    EXPECT_EQ(Form().Text1.Text(), "2004/08/05 12:27:30");
    driver::Click(Form().Command2);
    ClickMap({200, 200});
    for (const char* line :
         {"BN, gone.trk, Ghost", "BN, lost.trk, Lost", "ST, soon", "FT, later", "BN, boat2.trk, Boat 2"})
        EXPECT_TRUE(FileHolds(line)) << line << File();
    EXPECT_TRUE(File().starts_with("WF, w.csv\r\n"));
}

TEST_F(DeskLosesNothing, TimesOfASingleTrackLeaveItsCourseAlone) {
    WriteRace(1);
    app.race.SingleTrackFile = "boat1.trk";
    desk = std::make_unique<RaceDesk>(app, services);
    ASSERT_TRUE(desk->session.StartSession());
    Form().Option7.SetValue(true);
    Form().Picture1.SetEnabled(true);
    for (const QPoint at : {QPoint(200, 200), QPoint(250, 150)}) {
        driver::Click(Form().Command2);
        ClickMap(at);
    }
    desk->session.Changes().AddToCourse({false, 1});
    desk->session.Changes().AddToCourse({false, 2});
    desk->session.Changes().SetWindDirection(200);
    driver::Type(Form().Text10, "2004/08/05 12:39:00");
    driver::Click(Form().Command4);
    EXPECT_EQ(app.race.RaceDuration, 500);  // from four minutes after the first fix
    EXPECT_EQ(app.race.Marks.Count() + app.race.CourseOrder.Count(), 4);
    EXPECT_EQ(app.race.WindDirection, 200);
    EXPECT_EQ(app.view.ScreenUpDirection, 200);
    EXPECT_TRUE(Form().Option11.Enabled());
}

TEST_F(DeskLosesNothing, TimesThatAreNotSavedStayInTheirFields) {
    Open();
    driver::Type(Form().Text9, "2004/8/5 12:31");
    dialogs.AnswerYesNo(false);
    driver::Click(Form().Command4);
    EXPECT_EQ(Form().Text9.Text(), "2004/8/5 12:31");
    EXPECT_EQ(app.race.RaceDuration, 600);  // shown by its file
}

TEST_F(DeskLosesNothing, ARaceThatCannotBeOpenedLeavesTheOneOnTheScreen) {
    tree.Race("Empty.txt", "BN, gone.trk, Ghost\r\n");
    WriteRace(3);
    Open(false);
    Seek(100);
    for (const char* name : {"none.txt", "Empty.txt"}) {
        Form().Combo1.SetText(name);
        dialogs.AnswerOk();  // one box, about the boat too
        driver::Click(Form().Command9);
        EXPECT_TRUE(dialogs.AllAnswered() && !Form().Closed() && !platform.Ended);
        EXPECT_EQ(app.race.RaceFileName, "R1.txt");
        EXPECT_EQ(app.tracks.Boats.Count(), 3);
        EXPECT_EQ(app.clock.ReplayTime, 100);
    }
    driver::Click(Form().Option6);
    EXPECT_TRUE(Form().Timer1.Enabled() && Form().Boat[2].Visible());
    tree.Race("R2.txt", "BN, boat2.trk, Two\r\n");
    Form().Combo1.SetText("R2.txt");
    driver::Click(Form().Command9);
    EXPECT_EQ(Form().Bnam.Count(), 1);
}

}  // namespace
}  // namespace keelview
