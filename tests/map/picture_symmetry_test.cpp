#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <vector>

#include "session/boat_colours.h"
#include "support/sailed_race.h"
#include "support/test_desk.h"

namespace keelview {
namespace {

constexpr Colour LayLines = Rgb(192, 192, 255);

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
class ColourMap {
  public:
    ColourMap(const Picture& picture, Colour colour) : side_(picture.Width()), held_(side_ * side_) {
        const ColourParts wanted = PartsOf(colour);
        for (int y = 0; y < side_; ++y)
            for (int x = 0; x < side_; ++x) {
                const ColourParts here = PartsOf(picture.PixelAt(x, y));
                held_[At(x, y)] = std::abs(here.Red - wanted.Red) + std::abs(here.Green - wanted.Green) +
                                      std::abs(here.Blue - wanted.Blue) <
                                  100;
            }
    }
    int Count() const { return static_cast<int>(std::count(held_.begin(), held_.end(), true)); }
    /// The share of our pixels that the other picture has too, each where `to` leads, to a few pixels.
    double ShareIn(const ColourMap& other, const std::function<Point(Point)>& to, int reach) const {
        int inside = 0;
        int found = 0;
        // The chart's middle is that of the map with its border of two pixels, of which the image has none.
        const double middle = (side_ + 4) / 2.0;
        for (int y = 0; y < side_; ++y)
            for (int x = 0; x < side_; ++x) {
                if (!held_[At(x, y)]) continue;
                const Point there = to({x - middle, y - middle});
                const int tx = static_cast<int>(std::lround(there.X + middle));
                const int ty = static_cast<int>(std::lround(there.Y + middle));
                if (tx < reach || ty < reach || tx >= side_ - reach || ty >= side_ - reach) continue;
                ++inside;
                found += other.HoldsNear(tx, ty, reach) ? 1 : 0;
            }
        return inside > 0 ? static_cast<double>(found) / inside : 0.0;
    }

  private:
    std::size_t At(int x, int y) const { return static_cast<std::size_t>(y * side_ + x); }
    bool HoldsNear(int x, int y, int reach) const {
        for (int dy = -reach; dy <= reach; ++dy)
            for (int dx = -reach; dx <= reach; ++dx)
                if (held_[At(x + dx, y + dy)]) return true;
        return false;
    }
    int side_;
    std::vector<bool> held_;
};

/// Both pictures show the tracks of all boats and the lay lines, one as `to` leads from the other.
void ExpectSamePicture(const Picture& a, const Picture& b, const std::function<Point(Point)>& to) {
    ASSERT_EQ(a.Width(), b.Width());
    for (const Colour colour : {BoatColour(1), BoatColour(2), BoatColour(3), BoatColour(5), LayLines}) {
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
    for (const Colour colour : {BoatColour(1), BoatColour(2), BoatColour(3)}) {
        const auto larger = [](Point at) { return Point{at.X * 1.4, at.Y * 1.4}; };
        EXPECT_GT(ColourMap(before, colour).ShareIn(ColourMap(desk.Map().Image(), colour), larger, 3), 0.9);
    }
}

TEST(PictureSymmetry, ARaceOnAnotherDayLooksTheSame) {
    const SailedRace race(7);
    SailedRace later = race;
    later.Start = MakeCivilTime(2010, 12, 31, 23, 50, 0).value_or(0);
    const SailedDesk desk(race, "NU, 1\r\n");
    const SailedDesk other(later, "NU, 1\r\n");
    const auto same = [](const Surface& a, const Surface& b) {
        const Picture one = a.Image();
        const Picture two = b.Image();
        bool equal = one.Width() == two.Width() && one.Height() == two.Height();
        for (int y = 0; y < one.Height(); ++y)
            for (int x = 0; x < one.Width(); ++x) equal = equal && one.PixelAt(x, y) == two.PixelAt(x, y);
        return equal;
    };
    EXPECT_TRUE(same(desk.Map(), other.Map()));
    EXPECT_TRUE(same(desk.Form().PicTimeBar, other.Form().PicTimeBar));
    EXPECT_TRUE(same(desk.Form().Picture6, other.Form().Picture6));
    for (const SailedDesk* shown : {&desk, &other}) shown->Choose(shown->Form().Option10);
    EXPECT_TRUE(same(desk.Form().GPIC, other.Form().GPIC));
    for (const SailedDesk* shown : {&desk, &other}) shown->Choose(shown->Form().Option11);
    EXPECT_TRUE(same(desk.Form().PicTime, other.Form().PicTime));
}

}  // namespace
}  // namespace keelview
