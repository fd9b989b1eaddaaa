#pragma once

#include <cmath>
#include <functional>
#include <string>
#include <vector>

#include "base/angles.h"
#include "base/dates.h"
#include "base/position.h"
#include "support/race_tree.h"

namespace keelview {

/// A race sailed by a rule, so that it can be sailed once more mirrored, turned or shifted: boats start,
/// beat to MK1, run to MK2, beat again and finish, each on a way of its own made of one number, its seed.
/// The middle of all is 35:17 N, 139:29 E; a fix every second.
struct SailedRace {
    static constexpr double MiddleLat = RaceTree::Lat;
    static constexpr double MiddleLon = RaceTree::Lon;
    static constexpr double LonScale = 0.8173;  // near enough for a way to look like one

    struct Fix {
        int Second;
        Position At;
    };
    std::vector<std::vector<Fix>> Boats;
    std::vector<Position> Marks;
    std::vector<std::pair<Position, Position>> Lines;
    std::string Course = "CRS, L1, MK1, MK2, MK1, L2";
    double Wind = 0.0;                  ///< degrees
    CivilTime Start = RaceTree::Start;  ///< local, 9 hours ahead of the tracks
    int Duration = 2400;                ///< seconds

    explicit SailedRace(unsigned seed, int boats = 5) : random_(seed) {
        Marks = {Place(0, 0.7), Place(0.05, -0.5)};
        Lines = {{Place(-0.1, -0.3), Place(0.1, -0.3)}, {Place(-0.08, 0.2), Place(0.06, 0.2)}};
        for (int boat = 0; boat < boats; ++boat) Boats.push_back(Sail());
    }

    /// The same race with every position somewhere else.
    SailedRace Moved(const std::function<Position(const Position&)>& to) const {
        SailedRace moved = *this;
        for (auto& track : moved.Boats)
            for (Fix& fix : track) fix.At = to(fix.At);
        for (Position& mark : moved.Marks) mark = to(mark);
        for (auto& [from, end] : moved.Lines) from = to(from), end = to(end);
        return moved;
    }
    /// Mirrored at the meridian of the middle; the wind comes from the other side too.
    SailedRace Mirrored() const {
        SailedRace mirrored = Moved([](const Position& at) {
            return Position{at.Lat, 2 * MiddleLon - at.Lon};
        });
        mirrored.Wind = WrapDirection(360 - Wind);
        return mirrored;
    }
    /// Turned by half a turn about the middle.
    SailedRace Turned() const {
        SailedRace turned = Moved([](const Position& at) {
            return Position{2 * MiddleLat - at.Lat, 2 * MiddleLon - at.Lon};
        });
        turned.Wind = WrapDirection(Wind + 180);
        return turned;
    }
    /// The same race south of the equator, where it is seen in a mirror that lies on it.
    SailedRace Southern() const {
        SailedRace southern = Moved([](const Position& at) { return Position{-at.Lat, at.Lon}; });
        southern.Wind = WrapDirection(180 - Wind);
        return southern;
    }
    /// The same race west of Greenwich, in the mirror that stands there.
    SailedRace Western() const {
        SailedRace western = Moved([](const Position& at) { return Position{at.Lat, -at.Lon}; });
        western.Wind = WrapDirection(360 - Wind);
        return western;
    }
    /// The same race with its middle on the date line.
    SailedRace OnDateLine() const {
        return Moved([](const Position& at) {
            return Position{at.Lat, WrapLongitude(at.Lon + 180 * 60 - MiddleLon)};
        });
    }

    /// Writes the race as `name` below a tree, with a track file for each boat.
    void Write(const TempTree& tree, const std::string& name, const std::string& lines = {}) const {
        std::string text = "ST, " + DateTimeText(Start) + "\r\nFT, " + DateTimeText(Start + Duration) +
                           "\r\nTD, 9\r\nWD, " + std::to_string(static_cast<int>(Wind)) + "\r\n";
        for (std::size_t boat = 0; boat < Boats.size(); ++boat) {
            const std::string file = name + std::to_string(boat + 1) + ".trk";
            std::string track = "H a header that readers skip\r\n";
            for (const Fix& fix : Boats[boat]) track += RaceTree::TrackLine(fix.At, Start + fix.Second);
            tree.Write("gpsdat/" + file, track);
            text += "BN, " + file + ", Boat " + std::to_string(boat + 1) + "\r\n";
        }
        for (const Position& mark : Marks) text += "MK, " + RaceTree::PositionText(mark) + "\r\n";
        for (const auto& [from, to] : Lines)
            text += "LN, " + RaceTree::PositionText(from) + ", " + RaceTree::PositionText(to) + "\r\n";
        tree.Write("raceadmin/" + name, text + Course + "\r\n" + lines);
    }

  private:
    using Way = std::vector<std::pair<double, double>>;  ///< nautical miles east and north of the middle

    /// From 0 up to 1.
    double Random() {
        random_ = random_ * 1664525U + 1013904223U;
        return (random_ >> 8U) / 16777216.0;
    }
    /// Nautical miles east and north of the middle, on a grid that figures of a file hold whole.
    static Position Place(double east, double north) {
        const auto whole = [](double minutes) { return std::round(minutes * 1e6) / 1e6; };
        return {whole(MiddleLat + north), whole(MiddleLon + east / LonScale)};
    }

    std::vector<Fix> Sail() {
        const double lane = Random() * 0.14 - 0.07;
        const double width = 0.1 + 0.15 * Random();
        Way way{{lane - 0.05, -0.4}, {lane, -0.3 + 0.002 * Random()}};
        const Way roundMark{{0.05, 0.64}, {0.015, 0.712}, {-0.012, 0.714}, {-0.02, 0.68}};
        Beat(way, lane, -0.3, 0.69, width);
        for (const auto& [east, north] : roundMark) way.emplace_back(east + 0.004 * Random(), north);
        way.emplace_back(0.03 + width * Random(), 0.0);
        for (const auto& [east, north] :
             Way{{0.02, -0.45}, {0.035, -0.514}, {0.065, -0.516}, {0.08, -0.48}})
            way.emplace_back(east, north - 0.004 * Random());
        Beat(way, 0.08, -0.48, 0.64, width);
        for (const auto& [east, north] : roundMark) way.emplace_back(east, north + 0.004 * Random());
        way.emplace_back(lane / 2, 0.1);
        return Follow(way, 10.0 + 4 * Random(), -60 + static_cast<int>(20 * Random()));
    }
    void Beat(Way& way, double from, double south, double north, double width) {
        const int tacks = 2 + static_cast<int>(3 * Random());
        for (int tack = 1; tack < tacks; ++tack)
            way.emplace_back(from * (tacks - tack) / tacks + (tack % 2 == 0 ? width : -width),
                             south + (north - south) * tack / tacks);
    }
    /// A fix a second along a way of straight pieces at a speed in knots.
    static std::vector<Fix> Follow(const Way& way, double knots, int second) {
        std::vector<Fix> track;
        double left = 0;
        for (std::size_t piece = 1; piece < way.size(); ++piece) {
            const auto [east1, north1] = way[piece - 1];
            const auto [east2, north2] = way[piece];
            const double length = std::hypot(east2 - east1, north2 - north1);
            double along = left;
            for (; along < length; along += knots / 3600)
                track.push_back({second++, Place(east1 + (east2 - east1) * along / length,
                                                 north1 + (north2 - north1) * along / length)});
            left = along - length;
        }
        return track;
    }

    unsigned random_;
};

}  // namespace keelview
