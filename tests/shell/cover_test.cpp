#include "shell/cover.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <memory>
#include <string>

#include "shell/reference_viewer.h"
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
    for (const char* name : {"b.trk", "a.TRK", "z.dtr", "notes.txt"})
        tree.Write(std::string("GPSDat/") + name, "");
    for (int boat = 1; boat <= 500; ++boat)
        tree.Write("GPSDat/江の島, \"" + std::to_string(boat) + "\".trk", "");
    Cover& form = Open();
    const auto offered = [&](const Button& chooser) {
        driver::Click(chooser);
        return form.Combo1.Text() + " of " + std::to_string(form.Combo1.ListCount());
    };
    EXPECT_EQ(offered(form.Command3), "R1.txt of 2");
    driver::Click(form.Command6);
    EXPECT_TRUE(!form.Frame1.Visible() && app.race.Boats.Count() == 3);
    EXPECT_EQ(offered(form.Command3), "R1.txt of 2");
    form.Combo1.SetText("r2.TXT");
    driver::Click(form.Command5);
    EXPECT_TRUE(shown == "display " && !form.Frame1.Visible());
    EXPECT_EQ(app.race.RaceFileName + app.race.SingleTrackFile, "r2.TXT");
    EXPECT_TRUE(app.race.Boats.Empty() && app.race.AttachFile.Empty());
    EXPECT_EQ(app.race.PreStartMinutes, 3);
    EXPECT_EQ(offered(form.Command7), "z.dtr of 503");  // all single tracks
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
    EXPECT_TRUE(Said().find("GALEPLOT.exe") != std::string::npos && !form.Closed());
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

TEST_F(CoverTest, ADocumentIsOpenedAndTheDisplayStaysBlockedForAWhile) {
    tree.Write("attachment/notice, \"1\".pdf", "x");
    app.race.AttachFile = {"  notice, \"1\".pdf ", " gone.pdf"};
    Form display("RaceDisp", Form::Kind::Fixed, 300, 300);
    int clicks = 0;
    display.OnMouseDown = [&clicks](const MouseEvent&) { ++clicks; };
    display.ShowNow();
    ReferenceViewer form(app.settings, app.race, services, 0.3);
    EXPECT_EQ(form.List1.Item(0), "notice, \"1\".pdf");
    bool hidden = false;
    driver::WhenModal("RefFm", [&] {
        dialogs.AnswerOk();
        driver::ClickAt(form.List1, {100, 90});  // no row there
        EXPECT_TRUE(form.Visible());
        driver::ClickRow(form.List1, 1);
        EXPECT_TRUE(Said() == "File Not Found" && form.Visible());
        driver::WhenModal("RefFmWait", [&] {
            hidden = !form.Visible();
            driver::ClickAt(display, {50, 50});
        });
        driver::ClickRow(form.List1, 0);
    });
    QElapsedTimer time;
    time.start();
    form.ShowModal();
    EXPECT_GE(time.elapsed(), 300);
    EXPECT_EQ(platform.Documents,
              std::vector<std::string>{(tree.Root() / "attachment/notice, \"1\".pdf").string()});
    EXPECT_TRUE(hidden && form.Closed() && clicks == 0);
    driver::ClickAt(display, {50, 50});
    EXPECT_EQ(clicks, 1);
    ReferenceViewer cancelled(app.settings, app.race, services);
    cancelled.ShowNow();
    driver::Click(cancelled.Command1);
    EXPECT_TRUE(cancelled.Closed() && platform.Documents.size() == 1);
}

}  // namespace
}  // namespace keelview
