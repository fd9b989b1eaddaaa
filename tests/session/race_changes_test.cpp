#include "session/race_changes.h"

#include <gtest/gtest.h>

#include "support/test_desk.h"

namespace keelview {
namespace {

struct RaceChangesTest : testing::Test, TestDesk {};

TEST_F(RaceChangesTest, APassIsSetByHandOnceHoweverOftenItIsCorrected) {
    WriteRace(2, "MK, 2117.2, 8369\r\nMK, 2117.4, 8369\r\nCRS, MK1, MK2\r\n");
    Open();
    RaceChanges& changes = desk->session.Changes();
    const auto found = PassTime(app.passes, 1, 2);
    ASSERT_TRUE(found);
    for (const int second : {300, 310}) {
        changes.SetPass(1, 2, second);
        EXPECT_EQ(app.race.HandPasses.Count(), 1);
        EXPECT_EQ(PassTime(app.passes, 1, 2), second);
    }
    changes.SetPass(1, 2, std::nullopt);
    EXPECT_FALSE(PassTime(app.passes, 1, 2));
    changes.PassAsFound(1, 2);
    EXPECT_TRUE(app.race.HandPasses.Empty() && PassTime(app.passes, 1, 2) == found);
}

}  // namespace
}  // namespace keelview
