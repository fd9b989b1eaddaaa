#include "analysis/needless_marks.h"

#include <gtest/gtest.h>

namespace keelview {
namespace {

constexpr WindAngles FromNorth{.From = 0, .Beat = 45, .Run = 150};

TEST(NeedlessMarks, AWayIsAsLongAsBoatsHaveToSailIt) {
    const auto sailed = [](double off) { return FromNorth.Length(Towards(off) * 100); };
    EXPECT_NEAR(sailed(0), 100 * std::sqrt(2), 1e-9);
    EXPECT_NEAR(sailed(180), 100 / std::cos(30 * DegToRad), 1e-9);
    EXPECT_EQ(FromNorth.Length({}), 0);
    for (double off = 0; off <= 180; off += 7.5) {
        EXPECT_NEAR(sailed(off), sailed(-off), 1e-9) << off;
        EXPECT_GE(sailed(off), 100 - 1e-9) << off;
        if (off >= 45 && off <= 150) {
            EXPECT_NEAR(sailed(off), 100, 1e-9) << off;
        }
    }
    // However a beat is cut into tacks it is as long.
    const Way tacks = Towards(45) * 70 + Towards(-45) * 30;
    EXPECT_NEAR(FromNorth.Length(tacks), 100, 1e-9);
}

TEST(NeedlessMarks, TacksAndGybesTellHowBoatsSail) {
    std::vector<Corner> corners;
    for (int i = 0; i < 5; ++i) {
        corners.push_back({.At = {}, .In = 320, .Turn = 80});  // a tack in wind from north
        corners.push_back({.At = {}, .In = 140, .Turn = 80});  // a gybe
        corners.push_back({.At = {}, .In = 0, .Turn = 170});   // round a mark
    }
    const WindAngles angles = AnglesOf(corners, 0);
    EXPECT_EQ(std::pair(angles.Beat, angles.Run), std::pair(40.0, 140.0));
    corners.resize(6);
    EXPECT_EQ(AnglesOf(corners, 0).Beat, WindAngles().Beat);
}

/// Four boats that sail from place to place of a course at 3 m a second, all of them 6 m off each on its
/// starboard side, the last one 60 m off the third.
class Fleet {
  public:
    Fleet(const std::vector<Way>& points, const std::vector<int>& places) {
        course_.Places = places;
        for (int boat = 0; boat < 4; ++boat) {
            Track track;
            auto& times = course_.Times.emplace_back();
            double time = 0;
            for (std::size_t leg = 0; leg + 1 < points.size(); ++leg) {
                const Way way = points[leg + 1] - points[leg];
                const Way aside = Towards(way.Bearing() + 90) * (boat == 3 && leg < 3 && leg > 0 ? 60 : 6);
                for (double gone = 0; gone < way.Length(); gone += 3, ++time) {
                    const Position at = water_.From(points[leg] + aside + way * (gone / way.Length()));
                    track.TrackLat.Add(at.Lat);
                    track.TrackLon.Add(at.Lon);
                    track.TrackTime.Add(time);
                }
                if (leg < places.size()) times.emplace_back(static_cast<int>(time));
            }
            ways_.emplace_back(track, water_, 100000);
        }
        for (std::size_t entry = 0; entry < places.size(); ++entry) {
            const auto place = static_cast<std::size_t>(places[entry]);
            marks_.resize(std::max(marks_.size(), place + 1));
            marks_[place] = {.At = points[entry + 1], .ToPort = true};
        }
        points_ = points;
    }

    LaidCourse Laid() const {
        LaidCourse laid{marks_, course_, {}, points_, FromNorth};
        for (const WayBySecond& way : ways_) laid.Fleet.push_back(&way);
        return laid;
    }

  private:
    Plane water_{ComputeEarthScale(35 * 60), {35 * 60, 139 * 60}};
    FoundCourse course_;
    std::vector<FoundMark> marks_;
    std::vector<Way> points_;
    std::vector<WayBySecond> ways_;
};

TEST(NeedlessMarks, NoMarkLiesInTheMidstOfABeat) {
    // Place 2 lies where boats may tack between the start and place 0.
    const Way top{0, 900}, bottom{0, 100}, tacks{180, 500}, wing{600, 500};
    EXPECT_EQ(NeedlessMarks(Fleet({{}, tacks, top, bottom, top, {}}, {2, 0, 1, 0}).Laid()),
              std::vector<std::size_t>{2});
    EXPECT_TRUE(NeedlessMarks(Fleet({{}, wing, top, bottom, top, {}}, {2, 0, 1, 0}).Laid()).empty());
    // Where each place is passed once it may be a mark, unless boats pass far off.
    const Fleet passage({{}, tacks, top, {900, 900}}, {1, 0});
    EXPECT_TRUE(NeedlessMarks(passage.Laid()).empty());
    EXPECT_EQ(RoundedAt(passage.Laid(), 0), 1);
    const Fleet wide({{}, {0, -300}, tacks, top, {900, 900}}, {2, 1, 0});
    EXPECT_EQ(RoundedAt(wide.Laid(), 1), 0.75);
    EXPECT_EQ(NeedlessMarks(wide.Laid()), std::vector<std::size_t>{1});
}

TEST(NeedlessMarks, OfNeighboursOneGoesAtATime) {
    const Fleet fleet({{}, {30, 300}, {0, 600}, {0, 900}, {0, 100}, {0, 900}, {}}, {2, 3, 0, 1, 0});
    EXPECT_EQ(NeedlessMarks(fleet.Laid()).size(), 1U);
}

}  // namespace
}  // namespace keelview
