#include "instruments/time_setting.h"

#include <gtest/gtest.h>

#include "support/test_desk.h"

namespace keelview {
namespace {

struct TimeSettingTest : testing::Test, TestDesk {
    TimeSettingTest() { Open(); }
    void TakeTimes(const char* start, const char* finish) const {
        driver::Type(Form().Text9, start);
        driver::Type(Form().Text10, finish);
        driver::Click(Form().Command4);
        EXPECT_TRUE(dialogs.AllAnswered()) << start << " " << finish;
    }
};

TEST_F(TimeSettingTest, TimesFarFromTheTracksOrNoTimesAtAllAreRefused) {
    const char* const sound = "2004/8/5 12:40:00";
    for (const char* bad : {"", "tomorrow", "2004/8/32", "2004/8/15 12:50:00", "2004/7/26 12:20:00"}) {
        for (const bool start : {true, false}) {
            dialogs.AnswerOk();
            TakeTimes(start ? bad : sound, start ? sound : bad);
        }
        EXPECT_EQ(Form().Text10.Text(), bad);  // nothing typed is lost
    }
    EXPECT_EQ(app.race.Start.Typed(), "2004/8/5 12:30:00");
}

TEST_F(TimeSettingTest, TimesAreSavedUnderANameOrTheOnesOfTheFileComeBack) {
    driver::Click(Form().Bnam[1]);
    const std::string before = File();
    for (const char* name : {"", "R2"}) {
        dialogs.AnswerYesNo(true);
        dialogs.AnswerInput(name);
        TakeTimes("2004/08/05 12:31:00", "2004/8/5 12:39");
        EXPECT_EQ(app.race.RaceDuration, *name == '\0' ? 600 : 480);
        EXPECT_FALSE(Form().InFocus(2));  // the boats stay in or out of focus
    }
    const std::string times = "ST, 2004/08/05 12:31:00\r\nFT, 2004/8/5 12:39\r\n";
    EXPECT_NE(tree.Read("raceadmin/R2.txt").find(times), std::string::npos);
    EXPECT_EQ(File(), before);
    EXPECT_NEAR(app.now.Boats[1].At().Lat, Lat + SixKnots * (60 + app.now.Time), 1e-6);
    EXPECT_TRUE(Form().Caption().ends_with("(R2.txt)"));
}

TEST_F(TimeSettingTest, ARaceThatHasLostABoatOrItsFileMeanwhileIsStillSound) {
    for (const char* file : {"gpsdat/boat2.trk", "raceadmin/R1.txt"}) {
        std::filesystem::remove(tree.Root() / file);
        if (Form().Bnam.Count() > 1) dialogs.AnswerYesNo(false);  // of one boat there is nothing to ask
        dialogs.AnswerOk();
        driver::Click(Form().Command4);
        EXPECT_TRUE(dialogs.AllAnswered());
        EXPECT_EQ(Form().Bnam.Count(), 1);
    }
    EXPECT_TRUE(Form().Closed());
    EXPECT_FALSE(Form().Timer3.Enabled());  // no timer looks at what was half read
}

}  // namespace
}  // namespace keelview
