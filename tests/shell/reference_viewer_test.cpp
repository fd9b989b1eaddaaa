#include "shell/reference_viewer.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <string>

#include "support/fake_platform.h"
#include "support/qt_driver.h"
#include "support/scripted_dialogs.h"
#include "support/temp_tree.h"
#include "support/when_modal.h"

namespace keelview {
namespace {

struct RefFmTest : testing::Test {
    TempTree tree;
    FakePlatform platform;
    ScriptedDialogs dialogs;
    Services services{platform, dialogs};
    AppState app;

    void SetUp() override {
        app.settings.AppPath = tree.Root();
        app.settings.AppTitle = "Keelview";
        tree.Write("attachment/notice, \"1\".pdf", "x");
        app.race.AttachCount = 2;
        app.race.AttachFile[1] = "  notice, \"1\".pdf ";
        app.race.AttachFile[2] = " gone.pdf";
    }
};

TEST_F(RefFmTest, ADocumentIsOpenedAndTheDisplayStaysBlockedForAWhile) {
    Form display("RaceDisp", Form::Kind::Fixed, 300, 300);
    int clicks = 0;
    display.OnMouseDown = [&clicks](const MouseEvent&) { ++clicks; };
    display.ShowNow();
    RefFm form(app, services, 0.3);
    EXPECT_EQ(form.List1.Item(0), "notice, \"1\".pdf");
    bool hidden = false;
    WhenModal("RefFm", [&] {
        dialogs.AnswerOk();
        driver::ClickRow(form.List1, 1);
        EXPECT_EQ(dialogs.All().back().Text, "File Not Found");
        EXPECT_TRUE(form.Visible());
        WhenModal("RefFmWait", [&] {
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
    EXPECT_TRUE(hidden);
    EXPECT_TRUE(form.Closed());
    EXPECT_EQ(clicks, 0);
    driver::ClickAt(display, {50, 50});
    EXPECT_EQ(clicks, 1);
}

TEST_F(RefFmTest, CancelAndAnEmptyPlaceOpenNothing) {
    for (const bool english : {true, false}) {
        app.settings.UseEnglish = english;
        RefFm form(app, services);
        EXPECT_EQ(form.Caption(), english ? "Refference Files" : "データ参照");
        form.ShowNow();
        driver::ClickAt(form.List1, {100, 90});
        EXPECT_FALSE(form.Closed());
        driver::Click(form.Command1);
        EXPECT_TRUE(form.Closed());
    }
    EXPECT_TRUE(platform.Documents.empty());
}

}  // namespace
}  // namespace keelview
