#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "map/course_picture.h"
#include "map/finish_list.h"
#include "support/test_desk.h"

namespace keelview {
namespace {

struct SignalsTest : testing::Test, TestDesk {
    void SetUp() override { tree.Write("gun.wav", "RIFF"); }
    std::size_t Guns() const { return platform.Sounds.size(); }
};

TEST_F(SignalsTest, FlagsAndClockCountDownAndTheGunFiresOnce) {
    Open();
    struct Case {
        double time;
        bool blue, seven, large;
        const char* clock;
    };
    for (const Case& c : {Case{-199, true, false, false, "00:03:19"},
                          {-58, true, true, false, "00:00:58"},
                          {-50, false, true, false, "00:00:50"},
                          {-20.5, false, true, true, "00:00:21"},
                          {8, false, false, true, "00:00:08"},
                          {20, false, false, false, "00:00:20"}}) {
        SCOPED_TRACE(c.time);
        Seek(c.time);
        EXPECT_EQ(Form().Blue_P.Visible(), c.blue);
        EXPECT_EQ(Form().Seven.Visible(), c.seven);
        EXPECT_EQ(Form().Text4.Visible(), c.large);
        EXPECT_EQ(Form().Text11.Text(), c.clock);
    }
    const std::size_t before = Guns();
    for (const double time : {-0.5, 0.2, 0.7, 1.5}) Seek(time);
    EXPECT_EQ(Guns(), before + 1);
}

TEST_F(SignalsTest, AFlagSlidesDownWithTheFilmAndIsBackBeforeItIsShownAgain) {
    Open();
    const auto top = [this] { return Form().Blue_P.Top(); };
    Seek(-61);
    const double rest = top();
    Seek(-59.9);
    Seek(-59.8);
    const double fallen = top();
    EXPECT_NEAR(fallen, rest + app.view.MapSide / 15, 2);
    desk->session.TheStage().Repaint(Changed::Layers);  // the same moment once more
    driver::Settle();
    EXPECT_EQ(top(), fallen);
    EXPECT_EQ(Form().Seven.Top(), rest);
    for (const double elsewhere : {-59.9, -30.0, -100.0}) {
        Seek(-59.8);
        Seek(elsewhere);
        EXPECT_LT(top(), fallen) << elsewhere;
    }
}

constexpr std::optional<int> Missed;

TEST(FinishedByTest, BoatsStandInTheOrderOfTheirFinishFromTheFirstOneOn) {
    MarkPasses passes;
    for (const std::optional<int> time : std::vector<std::optional<int>>{500, 300, Missed, 300, -5, 100})
        passes.MarkPassTime.Add({time});
    passes.FirstPassTime = {300};  // at 100 nobody had sailed the rest of the course
    using Boats = std::vector<int>;
    EXPECT_EQ(FinishedBy(passes, 299.9), Boats{});
    EXPECT_EQ(FinishedBy(passes, 300), (Boats{6, 2, 4}));
    EXPECT_EQ(FinishedBy(passes, 1e7), (Boats{6, 2, 4, 1}));
    passes.FirstPassTime = {Missed};
    EXPECT_EQ(FinishedBy(passes, 1e7), Boats{});
    EXPECT_EQ(FinishedBy({}, 1e7), Boats{});
}

TEST_F(SignalsTest, FinishersAreListedAndShotForWhileTheFilmGoesForward) {
    WriteRace(2, RaceTree::LineAcross(0.2));
    tree.Boat("boat2.trk", Lat, Lon + 0.1, SixKnots / 2, 0, -200, 620);  // half as fast
    Open();
    const Surface& list = Form().Position;
    const auto shots = [&](double time) {
        const std::size_t before = Guns();
        Seek(time);
        return Guns() - before;
    };
    EXPECT_EQ(shots(98), 0U);
    EXPECT_FALSE(list.Visible());
    EXPECT_EQ(shots(102), 1U);
    EXPECT_EQ(shots(103), 0U);
    const double one = list.Height();
    EXPECT_TRUE(list.Visible());
    EXPECT_EQ(shots(202), 1U);
    EXPECT_GT(list.Height(), one);
    EXPECT_EQ(shots(150), 0U);  // nobody knows yet who is second
    EXPECT_EQ(list.Height(), one);
    EXPECT_EQ(shots(50), 0U);
    EXPECT_FALSE(list.Visible());
    EXPECT_EQ(shots(250), 1U);  // once, however many finished meanwhile
    driver::Click(Form().Command7);
    driver::Click(Form().Option7);
    EXPECT_EQ(shots(50) + shots(250), 0U);  // the film goes backward
}

TEST(PassClockTest, TheLatestRoundingIsCountedUpForFiveMinutes) {
    MarkPasses passes;
    passes.FirstPassTime = {5, 100, 350, Missed};
    const auto clock = [&](double time) {
        const auto found = PassClockAt(passes, time);
        return found ? std::to_string(found->Entry) + " " + found->Text : "";
    };
    const struct {
        double time;
        const char* text;
    } cases[] = {{50, ""},      {99.9, ""},      {100, "2 0"}, {225.5, "2 2:05"}, {350, "3 0"},
                 {399, "3 49"}, {650, "3 5:00"}, {651, ""},    {1000100, ""}};
    for (const auto& c : cases) EXPECT_EQ(clock(c.time), c.text) << c.time;
}

}  // namespace
}  // namespace keelview
