#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "base/angles.h"
#include "map/course_picture.h"
#include "map/finish_list.h"
#include "session/livery.h"
#include "support/sailed_race.h"
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
          Case{-20.5, "-7L00:00:21"}, Case{8, "--L00:00:08"}, Case{12, "---00:00:12"},
          Case{20, "---00:00:20"}}) {
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
    for (const auto time : std::vector<std::optional<int>>{500, 300, {}, 300, -5, 100})
        passes.MarkPassTime.Add({time});
    passes.FirstPassTime = {300};  // at 100 nobody had sailed the rest of the course
    using Boats = std::vector<int>;
    EXPECT_EQ(FinishedBy(passes, 299.9), Boats{});
    EXPECT_EQ(FinishedBy(passes, 300), (Boats{6, 2, 4}));
    EXPECT_EQ(FinishedBy(passes, 1e7), (Boats{6, 2, 4, 1}));
    passes.FirstPassTime = {std::nullopt};
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

TEST(CrossWindLines, EachLeadsThroughItsBoatAcrossTheWindOfTheMoment) {
    TestDesk desk;
    desk.WriteRace(2, "WF, w.csv\r\nWD, 0\r\n");
    desk.tree.Wind(
        "w.csv",
        {{0, 10, 0}, {100, 10, 45}, {200, 10, 90}, {250, 10, 89.99}, {300, 10, 135}, {400, 10, 300}});
    desk.Open();
    desk.Form().Option3.SetValue(true);
    desk.Form().Check4.SetValue(true);
    for (const double time : {0.0, 100.0, 200.0, 250.0, 300.0, 400.0}) {
        desk.Seek(time);
        driver::Settle();
        const double across =
            (desk.app.now.WindNow.DirectionTrue - desk.app.view.ScreenUpDirection + 90) * DegToRad;
        for (int boat = 1; boat <= 2; ++boat) {
            const LineObject& bar = desk.Form().Bar[boat - 1];
            ASSERT_TRUE(bar.Visible());
            const double dx = bar.X2() - bar.X1(), dy = bar.Y2() - bar.Y1(), length = std::hypot(dx, dy);
            EXPECT_GT(length, desk.app.view.MapSide - 1) << time;
            EXPECT_LT(length, desk.app.view.MapSide * 1.5) << time;  // stripes go along all of it
            EXPECT_NEAR(std::abs(dx * std::sin(across) - dy * std::cos(across)), length, 1e-6) << time;
            const Point at = MapProjection(desk.app).ToScreen(desk.app.now.Boats[boat].At());
            EXPECT_NEAR((dx * (at.Y - bar.Y1()) - dy * (at.X - bar.X1())) / length, 0, 1e-6) << time;
        }
    }
}

TEST(PassClockTest, TheLatestRoundingIsCountedUpForFiveMinutes) {
    MarkPasses passes;
    passes.FirstPassTime = {5, 100, 350, {}};
    const auto clock = [&](double time) {
        const auto found = PassClockAt(passes, time);
        return found ? std::to_string(found->Entry) + " " + found->Text : "";
    };
    const std::pair<double, const char*> cases[] = {{50, ""},          {99.9, ""},   {100, "2 0"},
                                                    {225.5, "2 2:05"}, {350, "3 0"}, {399, "3 49"},
                                                    {650, "3 5:00"},   {651, ""},    {1000100, ""}};
    for (const auto& [time, text] : cases) EXPECT_EQ(clock(time), text) << time;
}

const Colour LayLines = ReadableOn(Rgb(0, 255, 255), Rgb(192, 192, 255));

Colour TrackColour(int boat) {
    return ReadableOn(Rgb(0, 255, 255), BoatColour(boat));
}

/// A sailed race on a display, its whole chart shown with tracks, marks and lay lines.
struct SailedDesk : TestDesk {
    explicit SailedDesk(const SailedRace& race, const std::string& lines) {
        tree.Write("raceadmin/Ver.00", "0,1");
        race.Write(tree, "R1.txt", lines);
        Open();
        Seek(300);
        driver::Settle();
    }
    void Choose(OptionButton& option) const {
        option.SetValue(true);
        driver::Settle();
    }
};

/// Where a picture holds a colour; lines may be blended with what lies below them.
struct ColourMap {
    int side;
    std::set<std::pair<int, int>> held;

    ColourMap(const Picture& picture, Colour colour) : side(picture.Width()) {
        const ColourParts wanted = PartsOf(colour);
        for (int y = 0; y < side; ++y)
            for (int x = 0; x < side; ++x) {
                const ColourParts here = PartsOf(picture.PixelAt(x, y));
                if (std::abs(here.Red - wanted.Red) + std::abs(here.Green - wanted.Green) +
                        std::abs(here.Blue - wanted.Blue) <
                    100)
                    held.emplace(x, y);
            }
    }
    int Count() const { return static_cast<int>(held.size()); }
    /// The share of our pixels that the other picture has too, each where `to` leads, to a few pixels.
    double ShareIn(const ColourMap& other, const std::function<Point(Point)>& to, int reach) const {
        double inside = 0;
        double found = 0;
        // The chart's middle is that of the map with its border of two pixels, of which the image has none.
        const double middle = (side + 4) / 2.0;
        for (const auto& [x, y] : held) {
            const Point there = to({x - middle, y - middle});
            const int left = static_cast<int>(std::lround(there.X + middle)) - reach;
            const int top = static_cast<int>(std::lround(there.Y + middle)) - reach;
            if (std::min(left, top) < 0 || std::max(left, top) + 2 * reach >= side) continue;
            ++inside;
            bool near = false;
            for (int dx = 0; dx <= 2 * reach; ++dx)
                for (int dy = 0; dy <= 2 * reach; ++dy)
                    near = near || other.held.contains({left + dx, top + dy});
            found += near ? 1 : 0;
        }
        return inside > 0 ? found / inside : 0;
    }
};

/// Both pictures show the tracks of all boats and the lay lines, one as `to` leads from the other.
void ExpectSamePicture(const Picture& a, const Picture& b, const std::function<Point(Point)>& to) {
    ASSERT_EQ(a.Width(), b.Width());
    for (const Colour colour : {TrackColour(1), TrackColour(2), TrackColour(3), TrackColour(5), LayLines}) {
        const ColourMap one(a, colour);
        const ColourMap other(b, colour);
        EXPECT_GT(one.Count(), 200) << colour;
        EXPECT_NEAR(one.Count(), other.Count(), one.Count() * 0.1) << colour;
        EXPECT_GT(one.ShareIn(other, to, colour == LayLines ? 4 : 2), 0.95) << colour;
    }
}

TEST(PictureSymmetry, TheChartOfAMirroredRaceIsTheMirroredChart) {
    SailedRace race(7);
    race.Wind = 20;
    const SailedDesk desk(race, "NU, 1\r\n");
    const SailedDesk mirrored(race.Mirrored(), "NU, 1\r\n");
    ExpectSamePicture(desk.Map().Image(), mirrored.Map().Image(), [](Point at) {
        return Point{-at.X, at.Y};
    });
}

TEST(PictureSymmetry, TheChartIsDrawnAlikeInEveryQuarterOfTheWorld) {
    SailedRace race(7);
    race.Wind = 20;
    const SailedDesk desk(race, "NU, 1\r\n");
    const auto expect = [&](const SailedRace& elsewhere, double across, double up) {
        const SailedDesk other(elsewhere, "NU, 1\r\n");
        const auto to = [&](Point at) { return Point{at.X * across, at.Y * up}; };
        ExpectSamePicture(desk.Map().Image(), other.Map().Image(), to);
        const auto inOverview = [](const SailedDesk& shown) {
            return ColourMap(shown.Form().Picture6.Image(), TrackColour(1)).Count();
        };
        EXPECT_NEAR(inOverview(other), inOverview(desk), inOverview(desk) * 0.1);
        const auto& marker = other.Form().BoatS[0];
        EXPECT_TRUE(marker.Visible() && marker.Left() > 0 && marker.Left() < other.Form().Picture6.Width());
    };
    expect(race.Southern(), 1, -1);
    expect(race.Western(), -1, 1);
    expect(race.OnDateLine(), 1, 1);
    expect(race.Mirrored().OnDateLine(), -1, 1);
}

TEST(PictureSymmetry, TheChartTurnsWithTheWindAsAWhole) {
    SailedRace race(7);
    race.Wind = 90;
    const SailedDesk desk(race, "NU, 1\r\n");
    const Picture northUp = desk.Map().Image();
    desk.Choose(desk.Form().Option3);  // the east, where the wind comes from, is at the top now
    ExpectSamePicture(northUp, desk.Map().Image(), [](Point at) { return Point{at.Y, -at.X}; });
    desk.Choose(desk.Form().Option2);
    ExpectSamePicture(northUp, desk.Map().Image(), [](Point at) { return at; });
}

TEST(PictureSymmetry, AZoomedChartIsTheMiddleOfTheChartMadeLarger) {
    const SailedRace race(7);
    const SailedDesk desk(race, "NU, 1\r\n");
    const Picture before = desk.Map().Image();
    const int middle = static_cast<int>(desk.app.view.MapSide / 2);
    desk.ClickMap({middle, middle});
    ASSERT_DOUBLE_EQ(desk.app.view.ZoomFactor, 1.4);
    for (const Colour colour : {TrackColour(1), TrackColour(2), TrackColour(3)}) {
        const auto larger = [](Point at) { return Point{at.X * 1.4, at.Y * 1.4}; };
        EXPECT_GT(ColourMap(before, colour).ShareIn(ColourMap(desk.Map().Image(), colour), larger, 3), 0.9);
    }
}

}  // namespace
}  // namespace keelview
