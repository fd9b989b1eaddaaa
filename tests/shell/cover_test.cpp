#include "shell/cover.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "support/fake_platform.h"
#include "support/qt_driver.h"
#include "support/scripted_dialogs.h"
#include "support/temp_tree.h"

namespace keelview {
namespace {

struct CoverTest : testing::Test {
    TempTree tree;
    FakePlatform platform;
    ScriptedDialogs dialogs;
    Services services{platform, dialogs};
    AppState app;
    std::string shown;  // what was opened through the doors, in order
    std::unique_ptr<Cover> cover;

    Cover& Open(bool useEnglish = true) {
        app.settings.AppPath = tree.Root();
        app.settings.AppTitle = "Keelview";
        app.settings.UseEnglish = useEnglish;
        cover = std::make_unique<Cover>(
            app, services,
            CoverDoors{[this] { shown += "display "; }, [this] { shown += "editor "; },
                       [this] { shown += "distribution "; }});
        cover->ShowNow();
        return *cover;
    }
};

TEST_F(CoverTest, ARaceIsHandedOverWithNothingLeftOfTheOneBefore) {
    tree.Write("raceadmin/R2.txt", "");
    tree.Write("raceadmin/R1.txt", "");
    tree.Write("raceadmin/Ver.00", "");
    app.race.SingleTrackFile = "old.trk";
    app.race.RaceTitle1 = "Old Cup";
    app.race.StartTimeText = "2004/8/5 12:30:00";
    app.race.BoatCount = 3;
    app.race.AttachCount = 1;
    app.race.PreStartSeconds = 600;
    app.race.MagVariation = -7;
    app.race.BoatLength = 9;
    Cover& form = Open();
    EXPECT_FALSE(form.Frame1.Visible());
    driver::Click(form.Command3);
    EXPECT_TRUE(form.Frame1.Visible());
    EXPECT_EQ(form.Combo1.Text(), "R1.txt");
    EXPECT_EQ(form.Combo1.ListCount(), 2);
    driver::Click(form.Command6);
    EXPECT_FALSE(form.Frame1.Visible());
    EXPECT_EQ(app.race.BoatCount, 3);

    driver::Click(form.Command3);
    form.Combo1.SetText("r2.TXT");
    driver::Click(form.Command5);
    EXPECT_EQ(shown, "display ");
    EXPECT_FALSE(form.Frame1.Visible());
    EXPECT_EQ(app.race.RaceFileName, "r2.TXT");
    EXPECT_EQ(app.race.SingleTrackFile + app.race.RaceTitle1 + app.race.StartTimeText, "");
    EXPECT_EQ(app.race.BoatCount + app.race.AttachCount, 0);
    EXPECT_EQ(app.race.PreStartSeconds, 180);
    EXPECT_EQ(app.race.MagVariation, -7);
    EXPECT_EQ(app.race.BoatLength, 9);
}

TEST_F(CoverTest, ASingleTrackIsChosenFromAllTracksDtrFirst) {
    for (const char* name : {"b.trk", "a.TRK", "z.dtr", "notes.txt"})
        tree.Write(std::string("GPSDat/") + name, "");
    for (int boat = 1; boat <= 500; ++boat)
        tree.Write("GPSDat/江の島, \"" + std::to_string(boat) + "\".trk", "");
    Cover& form = Open();
    driver::Click(form.Command7);
    EXPECT_EQ(app.race.BoatLength, 4.7);
    EXPECT_EQ(form.Combo1.Text(), "z.dtr");
    EXPECT_EQ(form.Combo1.ListCount(), 503);
    driver::Click(form.Command5);
    EXPECT_EQ(app.race.SingleTrackFile, "z.dtr");
    EXPECT_EQ(app.race.RaceFileName, "");
}

TEST_F(CoverTest, AChoiceThatCannotBeOpenedIsToldAndTheChooserStays) {
    Cover& form = Open();
    driver::Click(form.Command3);
    EXPECT_EQ(form.Combo1.Text(), "");
    for (const char* choice : {"", "   ", "gone.txt", "../raceadmin", "\"x\", 江の島.txt"}) {
        SCOPED_TRACE(choice);
        form.Combo1.SetText(choice);
        dialogs.AnswerOk();
        driver::Click(form.Command5);
        EXPECT_TRUE(dialogs.AllAnswered());
        EXPECT_TRUE(form.Frame1.Visible());
        EXPECT_EQ(form.Combo1.Text(), choice);
    }
    EXPECT_EQ(shown, "");
    EXPECT_NE(dialogs.All().back().Text.find("江の島.txt"), std::string::npos);
}

TEST_F(CoverTest, CompanionsStartWithoutWaitingAndAFailureIsTold) {
    Cover& form = Open();
    driver::Click(form.Command1);
    driver::Click(form.Command8);
    ASSERT_EQ(platform.Programs.size(), 2U);
    EXPECT_EQ(platform.Programs[0], tree.Root() / "TRACKDESK.exe");
    EXPECT_EQ(platform.Programs[1], tree.Root() / "GALEPLOT.exe");
    platform.ProgramStarts = false;
    dialogs.AnswerOk();
    driver::Click(form.Command8);
    EXPECT_NE(dialogs.All().back().Text.find("GALEPLOT.exe"), std::string::npos);
    EXPECT_FALSE(form.Closed());
}

TEST_F(CoverTest, TheOtherButtonsLeadOn) {
    Cover& form = Open();
    driver::Click(form.Command2);
    driver::Click(form.Command9);
    EXPECT_EQ(shown, "editor distribution ");
    driver::Click(form.Command4);
    EXPECT_TRUE(platform.Ended);
}

TEST_F(CoverTest, TheManualsButtonNeedsOneManual) {
    EXPECT_FALSE(Open().Command10.Visible());
    tree.Write("help/index.html", "");
    Cover& form = Open();
    ASSERT_TRUE(form.Command10.Visible());
    platform.DocumentResult = 2;  // the English one is missing
    dialogs.AnswerOk();
    driver::Click(form.Command10);
    EXPECT_EQ(platform.Documents.back(), (tree.Root() / "help-e/index.html").string());
    Open(false);
    platform.DocumentResult = 33;
    driver::Click(cover->Command10);
    EXPECT_EQ(platform.Documents.back(), (tree.Root() / "help/index.html").string());
}

TEST_F(CoverTest, HintsFollowThePointer) {
    for (const bool english : {true, false}) {
        SCOPED_TRACE(english);
        Cover& form = Open(english);
        EXPECT_EQ(form.Caption(), english ? "Keelview" : "キール");
        EXPECT_FALSE(form.Text1.Visible());
        driver::MoveTo(form.Command2, {5, 5});
        EXPECT_TRUE(form.Text1.Visible());
        EXPECT_EQ(form.Text1.Height(), 60);
        EXPECT_TRUE(form.Text1.Text().starts_with(english ? "Edit each boat data." : "複数艇のﾃﾞｰﾀを編集"));
        EXPECT_LE(form.Text1.Top() + form.Text1.Height(), form.ScaleHeight());
        driver::MoveTo(form.Command7, {5, 5});
        EXPECT_EQ(form.Text1.Text(), "1艇のみの軌跡を表示");
        EXPECT_EQ(form.Text1.Height(), 17);
        driver::MoveTo(form, {220, 590});
        EXPECT_FALSE(form.Text1.Visible());
    }
}

}  // namespace
}  // namespace keelview
