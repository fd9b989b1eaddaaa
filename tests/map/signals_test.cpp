#include <gtest/gtest.h>

#include <map>
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
    // A moment, the flags Blue and Seven, the large figures, and the clock.
    using Case = std::pair<double, const char*>;
    for (const auto& [time, shown] :
         {Case{-199, "B--00:03:19"}, Case{-58, "B7-00:00:58"}, Case{-50, "-7-00:00:50"},
          Case{-20.5, "-7L00:00:21"}, Case{8, "--L00:00:08"}, Case{20, "---00:00:20"}}) {
        Seek(time);
        const RaceDisp& form = Form();
        EXPECT_EQ(std::string(form.Blue_P.Visible() ? "B" : "-") + (form.Seven.Visible() ? "7" : "-") +
                      (form.Text4.Visible() ? "L" : "-") + form.Text11.Text(),
                  shown);
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

TEST(FinishedByTest, BoatsStandInTheOrderOfTheirFinishFromTheFirstOneOn) {
    MarkPasses passes;
    for (const int time : {500, 300, 0, 300, -5, 100}) passes.MarkPassTime.Add({time});
    passes.FirstPassTime = {300};  // at 100 nobody had sailed the rest of the course
    using Boats = std::vector<int>;
    EXPECT_EQ(FinishedBy(passes, 299.9), Boats{});
    EXPECT_EQ(FinishedBy(passes, 300), (Boats{6, 2, 4}));
    EXPECT_EQ(FinishedBy(passes, 1e7), (Boats{6, 2, 4, 1}));
    passes.FirstPassTime = {NobodyPassed};
    EXPECT_EQ(FinishedBy(passes, 1e7), Boats{});
    EXPECT_EQ(FinishedBy({}, 1e7), Boats{});
}

TEST_F(SignalsTest, FinishersAreListedAndShotForWhileTheFilmGoesForward) {
    WriteRace(2, RaceTree::LineAcross(0.2));
    tree.Boat("boat2.trk", Lat, Lon + 0.1, SixKnots / 2, 0, -200, 620);  // half as fast
    Open();
    const auto shots = [&](double time) {
        const std::size_t before = Guns();
        Seek(time);
        return Guns() - before;
    };
    // A moment, the shots when the film comes there, and who is on the list.
    const double cases[][3] = {{98, 0, 0},  {102, 1, 1}, {103, 0, 1}, {202, 1, 2},
                               {150, 0, 1}, {50, 0, 0},  {250, 1, 2}};
    std::map<double, double> heights;
    for (const auto& [time, fired, listed] : cases) {
        EXPECT_EQ(shots(time), fired) << time;
        EXPECT_EQ(Form().Position.Visible(), listed > 0) << time;
        const double height = Form().Position.Height();
        EXPECT_EQ(heights.try_emplace(listed, height).first->second, listed > 0 ? height : heights[0]);
    }
    EXPECT_GT(heights[2], heights[1]);
    driver::Click(Form().Command7);
    driver::Click(Form().Option7);
    EXPECT_EQ(shots(50) + shots(250), 0U);  // the film goes backward
}

TEST(PassClockTest, TheLatestRoundingIsCountedUpForFiveMinutes) {
    MarkPasses passes;
    passes.FirstPassTime = {5, 100, 350, NobodyPassed};
    const auto clock = [&](double time) {
        const auto found = PassClockAt(passes, time);
        return found ? std::to_string(found->Entry) + " " + found->Text : "";
    };
    const std::pair<double, const char*> cases[] = {{50, ""},          {99.9, ""},   {100, "2 0"},
                                                    {225.5, "2 2:05"}, {350, "3 0"}, {399, "3 49"},
                                                    {650, "3 5:00"},   {651, ""},    {1000100, ""}};
    for (const auto& [time, text] : cases) EXPECT_EQ(clock(time), text) << time;
}

}  // namespace
}  // namespace keelview
