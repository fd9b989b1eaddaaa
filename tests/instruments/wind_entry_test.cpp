#include <gtest/gtest.h>

#include "support/test_desk.h"

namespace keelview {
namespace {

struct WindEntryTest : testing::Test, TestDesk {};

TEST_F(WindEntryTest, ALongPreStartHasItsWindAtItsTime) {
    WriteRace(1, "BT,10\r\n");
    Open();
    driver::Click(Form().Option10);
    driver::Click(Form().Command12);
    const int height = FloorToInt(Form().GPIC.Height());
    driver::ClickAt(Form().GPIC, {150, height - 40});  // the axis begins a minute before the pre-start
    driver::ClickAt(Form().GPIC, {130, height - 60});
    ASSERT_EQ(app.wind.Count(), 4);
    const double perPixel = 1260.0 / (height - 60);  // pre-start, race and a minute more
    EXPECT_NEAR(app.wind[2].WindTime, -660 + 10 * perPixel, 2);
    EXPECT_NEAR(app.wind[3].WindTime, -660 + 30 * perPixel, 2);
    EXPECT_EQ(app.wind[1].WindTime, app.wind[2].WindTime);  // the guard lies before no entry
    EXPECT_EQ(app.wind[4].WindTime, 600);
}

}  // namespace
}  // namespace keelview
