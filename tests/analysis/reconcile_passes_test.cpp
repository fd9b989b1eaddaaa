#include "analysis/reconcile_passes.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <functional>
#include <random>
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

struct Fix {
    int Second;
    Spot At;
};

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

/// The way out of the corner of an entry, of length 1.
Spot Outward(int entry) {
    const Spot mark = Places[entry - 1];
    const Spot inward = Towards(mark, Places[entry - 2]) + Towards(mark, Places[entry]);
    return Towards(inward, {0, 0});
}

/// A boat's way from passing to passing, each of which is at a known second.
struct Way {
    std::vector<Fix> Points;

    Way& Go(int second, Spot to) { return Points.push_back({second, to}), *this; }
    /// Past a spot along a direction, at it half a second before or after a second.
    Way& Past(int second, Spot spot, Spot direction, double late) {
        for (const int off : {-6, 6}) Go(second + off, spot + (Pace * (off + late)) * direction);
        return *this;
    }
    /// Over a line that runs from west to east.
    Way& Over(int second, Spot spot, double north) { return Past(second, spot, {north, 0}, -0.6); }
    /// Round the mark of an entry to port so many metres outside it; inside it below 0.
    Way& Round(int entry, int second, double metres) {
        const Spot out = Outward(entry);
        return Past(second, Places[entry - 1] + metres * out, {out.East, -out.North}, 0.4);
    }
    Way& Start(int second) { return Go(-200, {-80, 30}).Over(second, {0, 20}, 1); }
    struct Rounding {
        int Entry, Second;
        double Metres;
    };
    Way& Marks(const std::vector<Rounding>& roundings) {
        for (const auto& [entry, second, metres] : roundings) Round(entry, second, metres);
        return *this;
    }
    Way& Via(const std::vector<Fix>& spots) {
        for (const auto& [second, spot] : spots) Go(second, spot);
        return *this;
    }
    Way& Lap1(int upper, int lower) { return Round(2, upper, 15).Round(3, lower, 20); }
    Way& Lap2(int upper, int lower) { return Round(4, upper, 15).Round(5, lower, 20); }
    Way& Finish(int second) { return Over(second, {500, -300}, 1).Go(second + 100, {300, -500}); }
};

struct Fleet {
    RaceControl race;
    Tracks tracks;
    EarthScale scale{.MetresPerLatMinute = 1852, .MetresPerLonMinute = 1481.6, .LonScale = 0.8};
    MarkPasses passes;
    std::function<Spot(Spot)> Turn;

    explicit Fleet(std::function<Spot(Spot)> turn = [](Spot spot) { return spot; })
        : Turn(std::move(turn)) {
        race.RaceDuration = 6000;
        for (const Spot mark : {Mark1, Mark2}) race.Marks.Add({Lat(mark), Lon(mark)});
        for (const auto& [from, to] :
             {std::pair<Spot, Spot>{{0, -150}, {0, 150}}, {{500, -400}, {500, -200}}})
            race.Lines.Add({Lat(from), Lon(from), Lat(to), Lon(to)});
        race.CourseOrder = {"L1", "MK1", "MK2", "MK1", "MK2", "L2"};
    }
    TextNumber Lat(Spot spot) const { return TextNumber(2100 + Turn(spot).North / 1852); }
    TextNumber Lon(Spot spot) const { return TextNumber(8360 + Turn(spot).East / 1481.6); }

    /// A fix each second on the straight pieces of the way, but none inside the hole.
    void Add(const Way& way, int holeFrom = 0, int holeTo = 0, std::function<Spot()> noise = {}) {
        Track track;
        for (std::size_t i = 1; i < way.Points.size(); ++i) {
            const auto& [from, begin] = way.Points[i - 1];
            const auto& [to, end] = way.Points[i];
            for (int t = from; t < to; ++t) {
                if (t > holeFrom && t < holeTo) continue;
                Spot at = begin + (double(t - from) / (to - from)) * (end + -1 * begin);
                if (noise) at = at + noise();
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
    Way Track;
    Times Answers;
    int HoleFrom = 0;
    int HoleTo = 0;
};

std::vector<Sailed> TwelveBoats() {
    using W = Way;
    const Fix away{900, {650, 0}};
    return {
        {"by the book",
         W().Start(5).Lap1(400, 700).Lap2(1100, 1400).Finish(1600),
         {5, 400, 700, 1100, 1400, 1600}},
        {"at the gun",
         W().Start(0).Lap1(410, 700).Lap2(1100, 1400).Finish(1600),
         {0, 410, 700, 1100, 1400, 1600}},
        {"2 m on the wrong side",
         W().Start(6).Marks({{2, 404, -2}, {3, 705, 20}}).Lap2(1105, 1405).Finish(1605),
         {6, 404, 705, 1105, 1405, 1605}},
        {"wrong side, in a lap of its own after it",
         W().Start(7)
             .Marks({{2, 408, -12}, {3, 708, 20}})
             .Lap2(1107, 1409)
             .Finish(1609)
             .Via({{1800, {-100, 0}}, {2200, {900, 50}}})
             .Round(4, 2300, 10)
             .Go(2500, {500, 300}),
         {7, 408, 708, 1107, 1409, 1609}},
        {"wrong twice, and past the end of the finish",
         W().Start(7)
             .Marks({{2, 418, -20}, {3, 708, 9}, {4, 1117, -4}, {5, 1419, 8}})
             .Over(1619, {500, -180}, 1)
             .Go(1700, {600, -100}),
         {7, 418, 708, 1117, 1419, 1619}},
        {"left out the second upper mark",
         W().Start(8).Lap1(420, 720).Via({away}).Round(5, 1300, 6).Finish(1500),
         {8, 420, 720, None, None, None}},
        {"retired and came home past the mark and the lines",
         W().Start(9)
             .Lap1(430, 730)
             .Via({{900, {500, 900}}, {1100, {1400, 900}}, {1300, {1400, -300}}})
             .Over(1500, {500, -300}, -1)
             .Go(1700, {-100, -100}),
         {9, 430, 730, None, None, None}},
        {"over early, and wrong once",
         W().Start(-8).Marks({{2, 395, -3}, {3, 690, 20}}).Lap2(1090, 1390).Finish(1590),
         {-8, 395, 690, 1090, 1390, 1590}},
        {"a hole at the first lower mark, wrong after it",
         W().Start(9).Marks({{2, 435, 15}, {3, 740, 30}, {4, 1140, -5}, {5, 1440, 20}}).Finish(1640),
         {9, 435, None, 1140, 1440, 1640},
         640,
         870},
        {"a hole far from all marks hides none",
         W().Start(9).Lap1(437, 742).Via({away}).Round(5, 1300, 6).Finish(1500),
         {9, 437, 742, None, None, None},
         880,
         920},
        {"a turn after the mark, wrong on the next lap",
         W().Start(10)
             .Round(2, 440, 30)
             .Via({{460, {1060, -60}}, {480, {1060, 60}}})
             .Marks({{2, 500, 12}, {3, 780, 20}, {4, 1180, -6}, {5, 1480, 20}})
             .Finish(1680),
         {10, 440, 780, 1180, 1480, 1680}},
        {"too late for a start",
         W().Start(500).Lap1(900, 1200).Lap2(1600, 1900).Finish(2100),
         {None, 900, 1200, 1600, 1900, 2100}},
    };
}

TEST(ReconcilePasses, EachBoatHasTheTimesThatItSailed) {
    const std::vector<Sailed> boats = TwelveBoats();
    std::vector<MarkPasses> passes;
    for (const std::function<Spot(Spot)>& turn :
         {std::function([](Spot s) { return s; }), std::function([](Spot s) {
              return Spot{s.North, -s.East};
          }),
          std::function([](Spot s) {
              return Spot{-s.East, s.North};
          })}) {
        Fleet fleet(turn);
        for (const Sailed& boat : boats) fleet.Add(boat.Track, boat.HoleFrom, boat.HoleTo);
        FindAllPasses(fleet.race, fleet.tracks, fleet.scale, fleet.passes);
        EXPECT_TRUE(passes.empty() || fleet.passes.MarkPassTime == passes.front().MarkPassTime);
        passes.push_back(fleet.passes);
    }
    for (int boat = 1; boat <= 12; ++boat)
        for (int entry = 1; entry <= 6; ++entry) {
            const auto [what, way, answers, from, to] = boats[boat - 1];
            const std::optional<int> found = PassTime(passes[0], boat, entry), answer = answers[entry - 1];
            EXPECT_EQ(found.has_value(), answer.has_value()) << what << ", entry " << entry;
            EXPECT_NEAR(found.value_or(0), answer.value_or(0), 1) << what << ", entry " << entry;
        }
}

TEST(ReconcilePasses, AMarkThatNobodyWasAtIsPassedOver) {
    Fleet fleet;
    fleet.race.Marks[2].MarkLat = fleet.Lat({-300, 60});  // stored where it had lain the day before
    fleet.Add(Way().Start(5).Lap1(400, 700).Lap2(1100, 1400).Finish(1600));
    fleet.Add(Way().Start(9).Lap1(410, 710).Go(1000, {300, 1500}));
    FindAllPasses(fleet.race, fleet.tracks, fleet.scale, fleet.passes);
    EXPECT_EQ(fleet.Found(1), (Times{5, 400, None, 1100, None, 1600}));
    EXPECT_EQ(fleet.Found(2), (Times{9, 410, None, None, None, None})) << "one rounding is not two";
    EXPECT_EQ(FirstFinishTime(fleet.passes), 1600);
}

TEST(ReconcilePasses, WhatAPersonSetHolds) {
    Fleet fleet;
    fleet.Add(Way().Start(5).Round(2, 404, -20).Round(3, 700, 20).Lap2(1100, 1400).Finish(1600));
    fleet.Add(Way().Start(9));
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

constexpr int Unseen = -1000;  // in a hole of the track: no time, or one near the hole

/// A boat with faults of any kind, and what it sailed.
struct Faulty {
    Way Track;
    Times Answers;
    int HoleFrom = 0;
    int HoleTo = 0;
};

class Sea {
  public:
    explicit Sea(unsigned seed) : random_(seed) {}
    double From(double low, double high) { return low + (high - low) * random_() / 4294967296.0; }
    int Second(int low, int high) { return int(From(low, high)); }
    bool Chance(double share) { return From(0, 1) < share; }

    Faulty Sail() {
        Faulty boat;
        int t = Chance(0.1) ? Second(370, 500) : Chance(0.1) ? Second(-30, -1) : Second(0, 30);
        boat.Track.Start(t);
        boat.Answers.push_back(t > 360 ? None : std::optional(t));
        const int end = Chance(0.25) ? Second(2, 6) : 7;     // retires before this entry
        const int missed = Chance(0.15) ? Second(4, 6) : 0;  // leaves this one out, and sails on
        for (int entry = 2; entry < std::min(end, 6); ++entry) {
            t += Second(250, 330);
            // Wide of the way back, so that no line or mark is near.
            boat.Track.Go(t - 120, {From(450, 650), From(-60, 190)});
            if (entry == missed) continue;
            boat.Track.Round(entry, t, missed == 0 && Chance(0.2) ? -From(1, 24) : From(3, 60));
            if (Chance(0.1)) Turn(entry, t, boat);
            if (Chance(0.1) && missed == 0 && boat.HoleTo == 0) Hole(t, boat);
            if (missed == 0 || entry < missed) boat.Answers.push_back(InHole(t, boat) ? Unseen : t);
        }
        if (end == 7) {
            t += Second(150, 250);
            boat.Track.Over(t, {500, From(-390, -210)}, 1);
            if (missed == 0) boat.Answers.push_back(t);
        }
        GoHome(end == 7 ? t : t + 20, end == 7, boat);
        boat.Answers.resize(6);
        return boat;
    }
    Spot Noise() { return {From(-1, 1), From(-1, 1)}; }

  private:
    static bool InHole(int t, const Faulty& boat) { return t > boat.HoleFrom && t < boat.HoleTo; }
    /// A penalty, turned after the mark; the second passing of it is none.
    void Turn(int entry, int t, Faulty& boat) {
        const Spot mark = Places[entry - 1];
        const double out = entry % 2 == 0 ? 50 : -50;
        boat.Track.Go(t + 15, mark + Spot{out, -out}).Go(t + 30, mark + Spot{out, out});
        boat.Track.Round(entry, t + 45, From(3, 60));
    }
    void Hole(int t, Faulty& boat) {
        const int at = t + Second(-100, 10);
        boat.HoleFrom = at - Second(20, 60);
        boat.HoleTo = at + Second(20, 60);
    }
    /// Who finished goes where it likes, who retired by the sides or drifts about.
    void GoHome(int t, bool finished, Faulty& boat) {
        if (finished) {
            boat.Track.Go(t + 100, {From(550, 700), From(-500, -350)})
                .Go(t + 400, {-300, From(-500, -300)});
            return;
        }
        const Spot here = boat.Track.Points.back().At;
        if (Chance(0.5)) {
            boat.Track.Go(t + 300, here + Spot{From(-15, 15), From(-15, 15)});
            return;
        }
        boat.Track.Go(t + 200, {here.North, 700}).Go(t + 500, {500, 900});
        if (Chance(0.5)) boat.Track.Go(t + 800, {1500, -300}).Go(t + 1100, {400, -300});  // over the finish
        boat.Track.Go(t + 1300, {-200, -400}).Go(t + 1500, {-200, From(-100, 100)});
    }

    std::mt19937 random_;
};

TEST(ReconcilePasses, OfAFleetWithFaultsNoneIsWrongAndNoneInvented) {
    for (unsigned seed = 1; seed <= 15; ++seed) {
        Sea sea(seed);
        Fleet fleet;
        std::vector<Faulty> boats;
        for (int i = 0; i < 20; ++i) {
            boats.push_back(sea.Sail());
            fleet.Add(boats.back().Track, boats.back().HoleFrom, boats.back().HoleTo,
                      [&] { return sea.Noise(); });
        }
        FindAllPasses(fleet.race, fleet.tracks, fleet.scale, fleet.passes);
        for (int boat = 1; boat <= 20; ++boat)
            for (int entry = 1; entry <= 6; ++entry) {
                const std::optional<int> truth = boats[boat - 1].Answers[entry - 1];
                const std::optional<int> found = PassTime(fleet.passes, boat, entry);
                SCOPED_TRACE(testing::Message()
                             << "seed " << seed << " boat " << boat << " entry " << entry);
                if (truth == Unseen) {
                    EXPECT_NEAR(found.value_or(boats[boat - 1].HoleTo), boats[boat - 1].HoleTo, 130);
                } else {
                    EXPECT_EQ(found.has_value(), truth.has_value())
                        << found.value_or(-1) << " " << truth.value_or(-1);
                    EXPECT_NEAR(found.value_or(0), truth.value_or(found.value_or(0)), 30);
                }
            }
    }
}

}  // namespace
}  // namespace keelview
