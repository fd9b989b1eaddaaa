#include "shell/cover.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "support/qt_driver.h"
#include "support/test_world.h"

namespace keelview {
namespace {

struct CoverTest : testing::Test, TestWorld {
    std::string shown;  // what was opened through the doors, in order
    std::unique_ptr<Cover> cover;

    Cover& Open(bool useEnglish = true) {
        app.settings.UseEnglish = useEnglish;
        cover = std::make_unique<Cover>(
            app.settings, app.race, services,
            CoverDoors{[this] { shown += "display "; }, [this] { shown += "editor "; },
                       [this] { shown += "distribution "; }});
        cover->ShowNow();
        return *cover;
    }
};

TEST_F(CoverTest, ARaceIsHandedOverWithNothingLeftOfTheOneBefore) {
    for (const char* file : {"R2.txt", "R1.txt", "Ver.00"})
        tree.Write(std::string("raceadmin/") + file, "");
    app.race.SingleTrackFile = "old.trk";
    app.race.Boats.Resize(3);
    app.race.AttachFile.Add("notice.pdf");
    app.race.PreStartMinutes = 10;
    app.race.BoatLength = 9;
    Cover& form = Open();
    driver::Click(form.Command3);
    EXPECT_EQ(form.Combo1.Text(), "R1.txt");
    EXPECT_EQ(form.Combo1.ListCount(), 2);
    driver::Click(form.Command6);
    EXPECT_FALSE(form.Frame1.Visible());
    EXPECT_EQ(app.race.Boats.Count(), 3);

    driver::Click(form.Command3);
    form.Combo1.SetText("r2.TXT");
    driver::Click(form.Command5);
    EXPECT_EQ(shown, "display ");
    EXPECT_FALSE(form.Frame1.Visible());
    EXPECT_EQ(app.race.RaceFileName + app.race.SingleTrackFile, "r2.TXT");
    EXPECT_EQ(app.race.Boats.Count() + app.race.AttachFile.Count(), 0);
    EXPECT_TRUE(app.race.PreStartMinutes == 3 && app.race.MagVariation == -7 && app.race.BoatLength == 9);
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
    EXPECT_EQ(app.race.RaceFileName + app.race.SingleTrackFile, "z.dtr");
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
        EXPECT_TRUE(dialogs.AllAnswered() && form.Frame1.Visible());
        EXPECT_EQ(form.Combo1.Text(), choice);
    }
    EXPECT_EQ(shown, "");
    EXPECT_NE(Said().find("江の島.txt"), std::string::npos);
}

TEST_F(CoverTest, TheOtherButtonsLeadOnOrTellWhyNotAndHaveTheirHints) {
    Cover& form = Open();
    driver::MoveTo(form.Command2, {5, 5});
    EXPECT_TRUE(form.Text1.Text().starts_with("Edit each boat data."));
    driver::MoveTo(form, {220, 590});
    EXPECT_FALSE(form.Text1.Visible());
    for (const Button* button : {&form.Command2, &form.Command9, &form.Command1, &form.Command8})
        driver::Click(*button);
    EXPECT_EQ(shown, "editor distribution ");
    EXPECT_EQ(platform.Programs,
              (std::vector{tree.Root() / "TRACKDESK.exe", tree.Root() / "GALEPLOT.exe"}));
    platform.ProgramStarts = false;
    dialogs.AnswerOk();
    driver::Click(form.Command8);
    EXPECT_NE(Said().find("GALEPLOT.exe"), std::string::npos);
    EXPECT_FALSE(form.Closed());
    driver::Click(form.Command4);
    EXPECT_TRUE(platform.Ended);
}

TEST_F(CoverTest, TheManualsButtonNeedsOneManual) {
    EXPECT_FALSE(Open().Command10.Visible());
    tree.Write("help/index.html", "");
    for (const bool english : {true, false}) {
        Open(english);
        platform.DocumentResult = english ? 2 : 33;  // the English one is missing
        if (english) dialogs.AnswerOk();
        driver::Click(cover->Command10);
        EXPECT_TRUE(dialogs.AllAnswered());
    }
    EXPECT_EQ(platform.Documents, (std::vector{(tree.Root() / "help-e/index.html").string(),
                                               (tree.Root() / "help/index.html").string()}));
}

}  // namespace
}  // namespace keelview
