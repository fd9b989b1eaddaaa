#include "shell/reference_viewer.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <string>

#include "support/qt_driver.h"
#include "support/test_world.h"

namespace keelview {
namespace {

struct ReferenceViewerTest : testing::Test, TestWorld {
    ReferenceViewerTest() {
        tree.Write("attachment/notice, \"1\".pdf", "x");
        app.race.AttachFile = {"  notice, \"1\".pdf ", " gone.pdf"};
    }
};

TEST_F(ReferenceViewerTest, ADocumentIsOpenedAndTheDisplayStaysBlockedForAWhile) {
    Form display("RaceDisp", Form::Kind::Fixed, 300, 300);
    int clicks = 0;
    display.OnMouseDown = [&clicks](const MouseEvent&) { ++clicks; };
    display.ShowNow();
    ReferenceViewer form(app.settings, app.race, services, 0.3);
    EXPECT_EQ(form.List1.Item(0), "notice, \"1\".pdf");
    bool hidden = false;
    driver::WhenModal("RefFm", [&] {
        dialogs.AnswerOk();
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
}

TEST_F(ReferenceViewerTest, CancelAndAnEmptyPlaceOpenNothing) {
    ReferenceViewer form(app.settings, app.race, services);
    form.ShowNow();
    driver::ClickAt(form.List1, {100, 90});
    EXPECT_FALSE(form.Closed());
    driver::Click(form.Command1);
    EXPECT_TRUE(form.Closed() && platform.Documents.empty());
}

}  // namespace
}  // namespace keelview
