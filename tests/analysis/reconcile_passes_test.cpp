#include "analysis/reconcile_passes.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "analysis/mark_rounding.h"

namespace keelview {
namespace {

/// Metres north and east of the middle of the start line.
struct Spot {
    double North;
    double East;
};

Spot operator+(Spot a, Spot b) {
    return {a.North + b.North, a.East + b.East};
}
Spot operator*(double f, Spot a) {
    return {f * a.North, f * a.East};
}

using Times = std::vector<std::optional<int>>;
constexpr std::optional<int> None;

constexpr double Pace = 5;  // metres a second through a passing
constexpr Spot Mark1{1000, 0};
constexpr Spot Mark2{200, 60};
// Two laps: L1, MK1, MK2, MK1, MK2, L2; a line counts as its first end.
constexpr Spot Places[] = {{0, -150}, Mark1, Mark2, Mark1, Mark2, {500, -400}};

Spot Towards(Spot from, Spot to) {
    const Spot way = to + -1 * from;
    return (1 / std::hypot(way.North, way.East)) * way;
}

/// Where a boat is, by second; it goes straight between. A step is an entry, the second in which the boat
/// passes it, and metres outside a mark, inside it below 0, or to the east on a line. A step of entry 0 is
/// a second and metres north and east.
std::vector<std::pair<int, Spot>> Way(const std::string& steps) {
    std::vector<std::pair<int, Spot>> way{{-200, {-80, 30}}};
    std::istringstream text(steps);
    int entry, second;
    double at, east;
    while (text >> entry >> second >> at) {
        if (entry == 0) {
            text >> east;
            way.push_back({second, {at, east}});
            continue;
        }
        Spot spot = Places[entry - 1], direction{1, 0};  // lines are crossed northwards, marks left to port
        double late = -0.6;                              // half a second before or after the second
        if (entry == 1 || entry == 6) {
            spot.East = at;
        } else {
            const Spot out =
                Towards(Towards(spot, Places[entry - 2]) + Towards(spot, Places[entry]), {0, 0});
            spot = spot + at * out;
            direction = {out.East, -out.North};
            late = 0.4;
        }
        for (const int off : {-6, 6})
            way.push_back({second + off, spot + (Pace * (off + late)) * direction});
    }
    return way;
}

struct Fleet {
    RaceControl race;
    Tracks tracks;
    EarthScale scale{.MetresPerLatMinute = 1852, .MetresPerLonMinute = 1481.6, .LonScale = 0.8};
    MarkPasses passes;
    int Turned;  // 0: as it is, 1: mirrored, 2: by a quarter

    explicit Fleet(int turned = 0) : Turned(turned) {
        race.RaceDuration = 6000;
        for (const Spot mark : {Mark1, Mark2}) race.Marks.Add({Lat(mark), Lon(mark)});
        for (const auto& [from, to] :
             {std::pair<Spot, Spot>{{0, -150}, {0, 150}}, {{500, -400}, {500, -200}}})
            race.Lines.Add({Lat(from), Lon(from), Lat(to), Lon(to)});
        race.CourseOrder = {"L1", "MK1", "MK2", "MK1", "MK2", "L2"};
    }
    Spot Turn(Spot at) const {
        return Turned == 0 ? at : Turned == 1 ? Spot{at.North, -at.East} : Spot{-at.East, at.North};
    }
    TextNumber Lat(Spot spot) const { return TextNumber(2100 + Turn(spot).North / 1852); }
    TextNumber Lon(Spot spot) const { return TextNumber(8360 + Turn(spot).East / 1481.6); }

    /// A fix each second on the straight pieces of the way, but none inside the hole.
    void Add(const std::string& steps, const std::pair<int, int>& hole = {}) {
        Track track;
        const auto way = Way(steps);
        for (std::size_t i = 1; i < way.size(); ++i) {
            const auto& [from, begin] = way[i - 1];
            const auto& [to, end] = way[i];
            for (int t = from; t < to; ++t) {
                if (t > hole.first && t < hole.second) continue;
                const Spot at = begin + (double(t - from) / (to - from)) * (end + -1 * begin);
                track.TrackTime.Add(t);
                track.TrackLat.Add(Lat(at));
                track.TrackLon.Add(Lon(at));
            }
        }
        track.TrackDist.Assign(track.Count(), 0);
        tracks.Boats.Add(track);
        race.Boats.Add({});
    }
    Times Found(int boat) const {
        return {passes.MarkPassTime[boat].begin(), passes.MarkPassTime[boat].end()};
    }
};

struct Sailed {
    const char* What;
    std::string Way;
    Times Answers;
    std::pair<int, int> Hole = {};
};

const std::string Away = "0 900 650 0 ", Home = " 0 2400 300 -500";
const Sailed TwelveBoats[] = {
    {"by the book",
     "1 5 20  2 400 15  3 700 20  4 1100 15  5 1400 20  6 1600 -300" + Home,
     {5, 400, 700, 1100, 1400, 1600}},
    {"at the gun",
     "1 0 20  2 410 15  3 700 20  4 1100 15  5 1400 20  6 1600 -300" + Home,
     {0, 410, 700, 1100, 1400, 1600}},
    {"2 m on the wrong side",
     "1 6 20  2 404 -2  3 705 20  4 1105 15  5 1405 20  6 1605 -300" + Home,
     {6, 404, 705, 1105, 1405, 1605}},
    {"wrong side, in a lap of its own after it",
     "1 7 20  2 408 -12  3 708 20  4 1107 15  5 1409 20  6 1609 -300  0 1709 300 -500  0 1800 -100 0  "
     "0 2200 900 50  4 2300 10  0 2500 500 300",
     {7, 408, 708, 1107, 1409, 1609}},
    {"wrong twice, and past the end of the finish",
     "1 7 20  2 418 -20  3 708 9  4 1117 -4  5 1419 8  6 1619 -180  0 1700 600 -100",
     {7, 418, 708, 1117, 1419, 1619}},
    {"left out the second upper mark",
     "1 8 20  2 420 15  3 720 20 " + Away + "5 1300 6  6 1500 -300" + Home,
     {8, 420, 720, None, None, None}},
    {"retired and came home past the mark and the lines",
     "1 9 20  2 430 15  3 730 20  0 900 500 900  0 1100 1400 900  0 1300 1400 -300  0 1494 533 -300  "
     "0 1506 473 -300  0 1700 -100 -100",
     {9, 430, 730, None, None, None}},
    {"over early, and wrong once",
     "1 -8 20  2 395 -3  3 690 20  4 1090 15  5 1390 20  6 1590 -300" + Home,
     {-8, 395, 690, 1090, 1390, 1590}},
    {"a hole at the first lower mark, wrong after it",
     "1 9 20  2 435 15  3 740 30  4 1140 -5  5 1440 20  6 1640 -300" + Home,
     {9, 435, None, 1140, 1440, 1640},
     {640, 870}},
    {"a hole far from all marks hides none",
     "1 9 20  2 437 15  3 742 20 " + Away + "5 1300 6  6 1500 -300" + Home,
     {9, 437, 742, None, None, None},
     {880, 920}},
    {"a turn after the mark, wrong on the next lap",
     "1 10 20  2 440 30  0 460 1060 -60  0 480 1060 60  2 500 12  3 780 20  4 1180 -6  5 1480 20  "
     "6 1680 -300  0 2400 300 -500",
     {10, 440, 780, 1180, 1480, 1680}},
    {"too late for a start",
     "1 500 20  2 900 15  3 1200 20  4 1600 15  5 1900 20  6 2100 -300" + Home,
     {None, 900, 1200, 1600, 1900, 2100}}};

TEST(ReconcilePasses, EachBoatHasTheTimesThatItSailed) {
    for (const int turned : {0, 1, 2}) {
        Fleet fleet(turned);
        for (const Sailed& boat : TwelveBoats) fleet.Add(boat.Way, boat.Hole);
        FindAllPasses(fleet.race, fleet.tracks, fleet.scale, fleet.passes);
        for (int boat = 1; boat <= 12; ++boat)
            for (int entry = 0; entry < 6; ++entry)
                EXPECT_NEAR(fleet.Found(boat)[entry].value_or(INT_MIN),
                            TwelveBoats[boat - 1].Answers[entry].value_or(INT_MIN), 1)
                    << TwelveBoats[boat - 1].What << ", entry " << entry + 1;
    }
}

TEST(ReconcilePasses, AMarkThatNobodyWasAtIsPassedOver) {
    Fleet fleet;
    fleet.race.Marks[2].MarkLat = fleet.Lat({-300, 60});  // stored where it had lain the day before
    fleet.Add(TwelveBoats[0].Way);
    fleet.Add("1 9 20  2 410 15  3 710 20  0 1000 300 1500");
    FindAllPasses(fleet.race, fleet.tracks, fleet.scale, fleet.passes);
    EXPECT_EQ(fleet.Found(1), (Times{5, 400, None, 1100, None, 1600}));
    EXPECT_EQ(fleet.Found(2), (Times{9, 410, None, None, None, None})) << "one rounding is not two";
    EXPECT_EQ(FirstFinishTime(fleet.passes), 1600);
}

TEST(ReconcilePasses, WhatAPersonSetHolds) {
    Fleet fleet;
    fleet.Add("1 5 20  2 404 -20  3 700 20  4 1100 15  5 1400 20  6 1600 -300");
    fleet.Add("1 9 20");
    for (const HandPass& hand :
         {HandPass{1, 3, 50}, HandPass{1, 3, 695}, HandPass{1, 6, None}, HandPass{2, 2, 0},
          HandPass{3, 1, 7}, HandPass{1, 7, 7}, HandPass{1, 0, 7}, HandPass{2, 3, INT_MIN}})
        fleet.race.HandPasses.Add(hand);
    FindAllPasses(fleet.race, fleet.tracks, fleet.scale, fleet.passes);
    EXPECT_EQ(fleet.Found(1), (Times{5, 404, 695, 1100, 1400, None}));
    EXPECT_EQ(fleet.Found(2), (Times{9, 0, None, None, None, None}));
    const auto& sources = fleet.passes.MarkPassSource;
    EXPECT_EQ(sources[1][2], PassSource::Chain);
    for (const auto source : {sources[1][3], sources[1][6], sources[2][2]})
        EXPECT_EQ(source, PassSource::Hand);
    EXPECT_EQ(sources[2][3], PassSource::None);
    EXPECT_EQ(FirstFinishTime(fleet.passes), std::nullopt);
}

}  // namespace
}  // namespace keelview
