#include <gtest/gtest.h>

#include "display/application.h"
#include "shell/program.h"
#include "support/qt_driver.h"
#include "support/test_world.h"

namespace keelview {
namespace {

struct BrowseOnly : testing::Test, TestWorld {};

TEST_F(BrowseOnly, AFirstRaceThatCannotBeOpenedLeadsToAMenuThatChangesNothing) {
    tree.Boat("a.trk", Lat, Lon, SixKnots, 0, -200, 620);
    tree.Race("R2.txt", "BN, a.trk, Alpha\r\n");
    tree.Write("raceadmin/racefile.st", "R1.txt\r\n");
    Program program(app, services,
                    [](std::function<void()> task) { TheApplication().Later(std::move(task)); });
    dialogs.AnswerOk();
    program.Start(SettleStart(app, services));
    ASSERT_TRUE(program.TheMenu());
    Cover& menu = *program.TheMenu();
    for (const Button* maker : {&menu.Command1, &menu.Command2, &menu.Command8, &menu.Command9})
        EXPECT_FALSE(maker->Enabled());
    driver::Click(menu.Command3);
    menu.Combo1.SetText("R2.txt");
    driver::Click(menu.Command5);
    ASSERT_TRUE(program.TheDesk());
    program.TheDesk()->session.Display().Close();
    driver::Settle();
    EXPECT_TRUE(menu.Visible() && !platform.Ended);
    driver::Click(menu.Command4);
    EXPECT_TRUE(platform.Ended);
}

}  // namespace
}  // namespace keelview
