#include "analysis/mark_passing.h"

#include <gtest/gtest.h>

#include "support/regatta_course.h"

namespace keelview {
namespace {

Plane Water() {
    return {ComputeEarthScale(35 * 60), {35 * 60, 139 * 60}};
}

/// A boat's way that comes on one course and goes on another, as far off a mark before it as behind it.
WayBySecond WayAround(Way mark, double in, double turn, double berth, double noise, Dice& dice) {
    constexpr double speed = 2.5;
    const double aside = turn < 0 ? 90 : -90;  // the mark lies within the turn
    const Way corner = mark + Towards(in + turn / 2 + aside) * (berth / std::cos(turn / 2 * DegToRad));
    Track track;
    for (int t = -60; t <= 60; ++t) {
        const Way at = corner + Towards(t < 0 ? in : in + turn) * (t * speed) +
                       Way{dice.Gauss(), dice.Gauss()} * noise;
        const Position place = Water().From(at);
        track.TrackLat.Add(place.Lat);
        track.TrackLon.Add(place.Lon);
        track.TrackTime.Add(t);
    }
    return {track, Water(), 1000};
}

TEST(MarkPassing, AMarkIsFoundWhereverBoatsTurnRoundIt) {
    Dice dice(5);
    for (const double turn : {-100.0, -90.0, -45.0, -20.0, 20.0, 45.0, 110.0}) {
        const Way mark{40, -25};
        std::vector<WayBySecond> ways;
        std::vector<Passing> passings;
        ways.reserve(9);
        passings.reserve(9);
        for (int boat = 0; boat < 9; ++boat)
            ways.push_back(WayAround(mark, 200 + dice.Between(-4, 4), turn, dice.Between(3, 12), 2, dice));
        for (const WayBySecond& way : ways)
            passings.push_back({&way, static_cast<int>(dice.Between(-6, 6))});
        for (const Way off : {Way{15, 5}, Way{-12, -12}}) {
            const Way found = FitMark(passings, turn < 0, mark + off);
            EXPECT_LT((found - mark).Length(), 6) << turn;
        }
        EXPECT_EQ(MarkLike(BerthsAt(passings, mark), turn < 0), 1) << turn;
        EXPECT_EQ(MarkLike(BerthsAt(passings, mark + Towards(200 + turn / 2) * 200), turn < 0), 0) << turn;
    }
}

TEST(MarkPassing, OneBoatThatGoesItsOwnWayMovesNoMark) {
    Dice dice(6);
    std::vector<WayBySecond> ways;
    ways.reserve(7);
    for (int boat = 0; boat < 6; ++boat) ways.push_back(WayAround({}, 90, -60, 4 + boat, 1, dice));
    ways.push_back(WayAround({20, 30}, 40, 100, 10, 1, dice));
    std::vector<Passing> passings;
    passings.reserve(ways.size());
    for (const WayBySecond& way : ways) passings.push_back({&way, 0});
    EXPECT_LT(FitMark(passings, true, {10, -10}).Length(), 5);
}

}  // namespace
}  // namespace keelview
