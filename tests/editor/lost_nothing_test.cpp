// What the race control editor keeps that nobody told it to give up.

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QListWidget>
#include <string>

#include "editor/race_draft.h"
#include "editor/race_editor.h"
#include "racedata/race_file.h"
#include "support/qt_driver.h"
#include "support/test_world.h"

namespace keelview {
namespace {

TEST(DraftLosesNothing, TimesSetByHandStayWithTheirBoats) {
    RaceControl draft;
    for (const char* name : {"A", "B", "C"}) draft.Boats.Add({std::string(name) + ".trk", name});
    draft.CourseOrder = {"L1"};
    draft.HandPasses = {{1, 1, 100}, {2, 1, 200}, {3, 1, {}}};
    RemoveBoat(draft, 2);
    ASSERT_EQ(draft.HandPasses.Count(), 2);
    EXPECT_EQ(draft.HandPasses[1].Seconds, 100);
    EXPECT_EQ(draft.HandPasses[2].BoatNumber, 2);  // C, which moved up
    EXPECT_FALSE(draft.HandPasses[2].Seconds);
}

TEST(DraftLosesNothing, WhatIsNoRaceFileIsNotOpened) {
    const RaceTree tree;
    tree.Write("raceadmin/notes.txt", "Dear all,\r\nthe race is off\r\n");
    tree.Write("raceadmin/binary.txt", std::string("T1, Cup\r\n\0", 10));
    RaceControl draft;
    for (const char* name : {"notes.txt", "binary.txt"})
        EXPECT_FALSE(OpenDraft(tree.Root(), name, draft)) << name;
    EXPECT_EQ(draft.RaceFileName, "");
    for (const char* name : {"R1.txt", "r1.TXT", ".x.txt"}) EXPECT_TRUE(IsRaceFileName(name)) << name;
    for (const char* name : {"Ver.00", "racefile.st", ".txt", "R1.txt.bak"})
        EXPECT_FALSE(IsRaceFileName(name)) << name;
}

TEST(DraftLosesNothing, HoursAreThoseThatWereSaidOrThePlaces) {
    const DraftFields fields{"Cup", "", "2004/8/5 12:30", "2004/8/5 13:50", "5.75", "", "4.7", "", "",
                             "",    ""};
    RaceControl race;
    EXPECT_FALSE(TakeFields(fields, true, race));
    EXPECT_EQ(race.TimeDiff, 5.75);
    for (const char* bad : {"5.7", "5:30", "24.25"}) {
        DraftFields wrong = fields;
        wrong.TimeDiff = bad;
        EXPECT_NE(TakeFields(wrong, true, race).value_or("").find("Time Diff"), std::string::npos) << bad;
    }
    race = {};
    race.TimeDiff = 0;  // said, so that the longitude has no say
    ProposeTimes(TrackTimes{.FirstLongitude = 139 * 60}, race);
    EXPECT_EQ(race.TimeDiff, 0);
    EXPECT_EQ(NewDraft({}, 0).TimeDiff, std::nullopt);
}

struct EditorLosesNothing : testing::Test, TestWorld {
    FileQuestion question;
    RaceEditor editor{app.settings, app.race, services, question, [] {}};

    void Choose(const std::string& file, bool told) {
        driver::Click(editor.Command1);
        editor.Combo1.SetText(file);
        dialogs.AnswerInput(file);
        if (told) dialogs.AnswerOk();
        driver::Click(editor.Command2);
        EXPECT_TRUE(dialogs.AllAnswered());
    }
    /// Presses a button that opens the file dialog, and gives it a name there; how many files it lists.
    int Name(const Control& button, const char* name) {
        int listed = -1;
        driver::WhenModal("FmFileSelect", [&listed, name] {
            listed = dynamic_cast<QListWidget&>(driver::Named("File1")).count();
            dynamic_cast<QLineEdit&>(driver::Named("Text1")).setText(name);
            driver::Click(driver::Named("Command1"));
        });
        driver::Click(button);
        return listed;
    }
};

TEST_F(EditorLosesNothing, TheFirstTrackWithAFixTellsTheTimesAndFaultyFixesAreTold) {
    editor.ShowNow();
    tree.Write("gpsdat/empty.trk", std::string(900, '#'));
    tree.Boat("a.trk", 35 * 60, 139.75 * 60, 0, 0, -300, 900);
    tree.Write("gpsdat/b.trk", tree.Read("gpsdat/a.trk") + "T N0000.0 E00000.0 2004/08/05 03:50:00 1\r\n");
    Choose("empty.trk", true);
    EXPECT_EQ(editor.Text1.Text() + editor.Text3.Text(), "");
    Choose("a.trk", false);
    EXPECT_EQ(editor.Text1.Text(), "2004/08/05 12:29:00");
    EXPECT_EQ(editor.Text3.Text(), "9");
    Choose("b.trk", true);
    EXPECT_TRUE(Said().ends_with("b.trk : 1"));
}

TEST_F(EditorLosesNothing, OnlyRaceFilesAreOpenedAndWritten) {
    editor.ShowNow();
    tree.Write("raceadmin/Ver.00", "0,1\r\n");
    tree.Write("raceadmin/R1.txt", "T1, Cup\r\n");
    tree.Boat("a.trk", 35 * 60, 139.75 * 60, 0, 0, -300, 900);
    dialogs.AnswerOk();
    EXPECT_EQ(Name(editor.Command6, "Ver.00"), 1);  // it is not in the list
    EXPECT_EQ(editor.Draft().RaceFileName, "");
    Choose("a.trk", false);
    dialogs.AnswerYesNo(true);  // save
    dialogs.AnswerYesNo(true);  // over the old one
    dialogs.AnswerOk();
    Name(editor.Command9, "Ver.00");
    EXPECT_TRUE(dialogs.AllAnswered() && !editor.Closed());
    EXPECT_EQ(tree.Read("raceadmin/Ver.00"), "0,1\r\n");
}

}  // namespace
}  // namespace keelview
