// A link to a moment shows again what was seen when it was made.

#include "session/moment_link.h"

#include <gtest/gtest.h>

#include "support/test_desk.h"

namespace keelview {
namespace {

TEST(MomentLink, ShowsAgainWhatWasSeen) {
    TestDesk desk;
    desk.WriteRace(3);
    desk.Open(false);
    for (const char* link : {"t=120&boats=1,3&view=graph&x=8369.1&y=2117.2&zoom=2",
                             "t=-30.5&view=map&x=8368.95&y=2117.3&zoom=1.5", "t=200&boats=2&view=data"}) {
        desk.Form().Check5.SetValue(std::string(link).find("zoom") == std::string::npos);
        FollowMomentLink(desk.desk->session, "boats=1,2,3");
        FollowMomentLink(desk.desk->session, link);
        driver::Settle();
        EXPECT_EQ(MomentLink(desk.desk->session), link);
    }
    EXPECT_FALSE(desk.Form().Bnam[0].Value());
    EXPECT_TRUE(desk.Form().Bnam[1].Value());
}

TEST(MomentLink, LeavesWhatItDoesNotTellOrNobodyCanShow) {
    TestDesk desk;
    desk.Open(false);
    desk.Form().Check5.SetValue(false);
    const std::string before = MomentLink(desk.desk->session);
    for (const char* link :
         {"", "&&", "t=", "t=x&view=sky&zoom=0&x=1&y=2", "x=1&y=2", "zoom=3&x=&y=2", "=&t"}) {
        FollowMomentLink(desk.desk->session, link);
        driver::Settle();
        EXPECT_EQ(MomentLink(desk.desk->session), before) << link;
    }
    FollowMomentLink(desk.desk->session, "x=999999&y=-999999&zoom=1e300&t=1e300&boats=7,-1,x");
    driver::Settle();
    EXPECT_EQ(MomentLink(desk.desk->session).find("nan"), std::string::npos);
}

}  // namespace
}  // namespace keelview
