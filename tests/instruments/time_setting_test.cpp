#include "instruments/time_setting.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/open_race.h"

namespace keelview {
namespace {

struct TimeSettingTest : testing::Test, OpenRace {
    void TypeTimes(const char* start, const char* finish) {
        driver::Type(Form().Text9, start);
        driver::Type(Form().Text10, finish);
    }
    void Confirm() { driver::Click(Form().Command4); }
};

TEST_F(TimeSettingTest, TimesFarFromTheTracksOrNoTimesAtAllAreRefused) {
    Open();
    const struct {
        const char *start, *finish;
    } cases[] = {{"", "2004/8/5 12:40:00"},
                 {"tomorrow", "2004/8/5 12:40:00"},
                 {"2004/8/5 12:30:00", "2004/8/32"},
                 {"2004/8/15 12:30:00", "2004/8/5 12:40:00"},
                 {"2004/7/26 12:20:00", "2004/8/5 12:40:00"},
                 {"2004/8/5 12:30:00", "2005/8/5 12:40:00"}};
    for (const auto& c : cases) {
        TypeTimes(c.start, c.finish);
        dialogs.AnswerOk();
        Confirm();
        EXPECT_TRUE(dialogs.AllAnswered()) << c.start << " " << c.finish;
        EXPECT_EQ(dialogs.All().back().Text, "Incorrect data format !  Be sure the date format ");
        EXPECT_EQ(Form().Text10.Text(), c.finish);  // nothing typed is lost
    }
    EXPECT_EQ(app->race.StartTimeText, "2004/8/5 12:30:00");
}

TEST_F(TimeSettingTest, TimesAreSavedUnderANameAndTheRaceIsLoadedAnew) {
    Open();
    Form().Bnam[1].SetValue(false);
    TypeTimes("2004/08/05 12:31:00", "2004/8/5 12:39");
    dialogs.AnswerYesNo(true);
    dialogs.AnswerInput("R2");
    Confirm();
    EXPECT_TRUE(dialogs.AllAnswered());
    EXPECT_EQ(dialogs.All()[1].Text, "Do you want to save Race Cintrol File？");
    EXPECT_EQ(dialogs.All()[2].Title, "File Name");
    EXPECT_EQ(app->race.RaceFileName, "R2.txt");
    EXPECT_NE(tree.Read("raceadmin/R2.txt").find("ST, 2004/08/05 12:31:00\r\nFT, 2004/8/5 12:39\r\n"),
              std::string::npos);
    EXPECT_TRUE(FileHolds("ST, 2004/8/5 12:30:00"));  // the file before stays as it was
    EXPECT_EQ(app->race.RaceDuration, 480);
    EXPECT_EQ(app->clock.ReplayRangeEnd, 480);
    EXPECT_NE(Form().Caption().find("(R2.txt)"), std::string::npos);
    EXPECT_FALSE(Form().Bnam[1].Value());  // the boats stay in or out of focus
}

TEST_F(TimeSettingTest, WithoutSavingTheFilesTimesComeBack) {
    Open();
    for (const bool yes : {false, true}) {
        TypeTimes("2004/8/5 12:31:00", "2004/8/5 12:39:00");
        dialogs.AnswerYesNo(yes);
        if (yes) dialogs.AnswerInput("");
        Confirm();
        EXPECT_TRUE(dialogs.AllAnswered());
        EXPECT_EQ(Form().Text9.Text(), "2004/8/5 12:30:00");
        EXPECT_EQ(app->race.RaceDuration, 600);
    }
}

TEST_F(TimeSettingTest, TheTimesOfASingleTrackStay) {
    Open();
    app->race.RaceFileName.clear();
    app->race.SingleTrackFile = "boat1.trk";
    app->race.BoatCount = 1;
    TypeTimes("2004/8/5 12:31:00", "2004/8/5 12:39:00");
    Confirm();
    EXPECT_EQ(Form().Text9.Text(), "2004/8/5 12:31:00");
    EXPECT_EQ(app->race.RaceDuration, 480);
    EXPECT_EQ(app->tracks.TrackTime[1][1], 0);
}

TEST_F(TimeSettingTest, WhatCannotBeWrittenStaysInMemory) {
    Open();
    std::filesystem::rename(tree.Root() / "raceadmin", tree.Root() / "away");
    tree.Write("raceadmin", "a file where the folder was");
    driver::Click(Form().Command2);
    dialogs.AnswerOk();  // the mark could not be saved
    ClickMap({300, 300});
    TypeTimes("2004/8/5 12:31:00", "2004/8/5 12:39:00");
    dialogs.AnswerYesNo(true);
    dialogs.AnswerInput("R2");
    dialogs.AnswerOk();  // nor can the times
    Confirm();
    EXPECT_TRUE(dialogs.AllAnswered());
    EXPECT_EQ(app->race.RaceFileName, "R1.txt");
    dialogs.AnswerYesNo(false);
    Confirm();
    EXPECT_EQ(app->race.MarkCount, 1);
    EXPECT_FALSE(Form().Closed());
    EXPECT_EQ(Form().Text9.Text(), "2004/8/5 12:31:00");
}

TEST_F(TimeSettingTest, ARaceThatHasLostABoatOrItsFileMeanwhileIsStillSound) {
    Open();
    std::filesystem::remove(tree.Root() / "gpsdat/boat2.trk");
    dialogs.AnswerYesNo(false);
    dialogs.AnswerOk();  // one boat's track is gone
    Confirm();
    EXPECT_EQ(Form().Bnam.Count(), 1);
    desk->session.TheFrame().DrawFrame();
    WriteRace(4);
    Confirm();  // a race of one boat has nothing to ask
    EXPECT_EQ(Form().Bnam.Count(), 4);
    std::filesystem::remove(tree.Root() / "raceadmin/R1.txt");
    dialogs.AnswerYesNo(false);
    dialogs.AnswerOk();
    Confirm();
    EXPECT_TRUE(Form().Closed());
    EXPECT_FALSE(Form().Timer3.Enabled());  // no timer looks at what was half read
}

}  // namespace
}  // namespace keelview
