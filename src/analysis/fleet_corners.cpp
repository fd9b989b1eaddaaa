#include "analysis/fleet_corners.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/angles.h"

namespace keelview {

namespace {

constexpr int CourseReach = 8;                      // seconds to either side of a course
constexpr int BetweenCourses = 6;                   // seconds from a corner to where its courses begin
constexpr double UsualNoise = 3;                    // metres; for each one more
constexpr double SecondsForNoise = 0.6;             // a course is taken from more seconds, and
constexpr double LeastTurn = 15, TurnForNoise = 3;  // degrees: a corner turns by more
constexpr double LeastSpeed = 0.5;                  // metres a second
constexpr double OnTheWind = 80, OffTheWind = 100;  // degrees off it of tacks and of gybes

/// Courses by the second, counted on past north, and speeds; no number where the boat hardly moves.
struct Courses {
    std::vector<double> Degrees;
    std::vector<double> Speeds;

    std::size_t Reach;  ///< seconds from a corner to its two courses

    Courses(const WayBySecond& way, double noise)
        : Reach(static_cast<std::size_t>(CourseReach + BetweenCourses + SecondsForNoise * noise)) {
        const int reach = static_cast<int>(Reach) - BetweenCourses;
        double last = 0;
        for (int t = way.First(); t <= way.Last(); ++t) {
            const auto velocity = way.Velocity(t - reach, t + reach);
            const double speed = velocity ? velocity->Length() : 0;
            Speeds.push_back(speed);
            if (!velocity || speed < LeastSpeed) {
                Degrees.push_back(std::numeric_limits<double>::quiet_NaN());
                continue;
            }
            last += TurnBetween(last, velocity->Bearing());
            Degrees.push_back(last);
        }
    }
    double TurnAt(std::size_t i) const {
        if (i < Reach || i + Reach >= Degrees.size()) return 0;
        const double turn = Degrees[i + Reach] - Degrees[i - Reach];
        return std::isfinite(turn) ? turn : 0;
    }
};

/// True if no turn about this second is larger.
bool IsPeak(const std::vector<double>& turns, std::size_t i, std::size_t reach, double least) {
    if (turns[i] < least || turns[i] <= turns[i - 1] || turns[i] < turns[i + 1]) return false;
    for (std::size_t k = i - reach; k <= i + reach; ++k)
        if (turns[k] > turns[i]) return false;
    return true;
}

}  // namespace

std::vector<Corner> FindCorners(const WayBySecond& way, int boat) {
    std::vector<Corner> corners;
    if (way.Empty()) return corners;
    const double noise = std::max(way.Noise() - UsualNoise, 0.0);
    const Courses courses(way, noise);
    const std::size_t reach = courses.Reach;
    const std::size_t count = courses.Degrees.size();
    std::vector<double> turns(count);
    for (std::size_t i = 0; i < count; ++i) turns[i] = std::abs(courses.TurnAt(i));
    for (std::size_t i = reach; i + reach < count; ++i) {
        if (!IsPeak(turns, i, reach, LeastTurn + TurnForNoise * noise)) continue;
        const int t = way.First() + static_cast<int>(i);
        const auto place = way.Mean(t - 2, t + 2);
        if (place)
            corners.push_back({boat, t, *place, courses.Degrees[i - reach], courses.TurnAt(i),
                               (courses.Speeds[i - reach] + courses.Speeds[i + reach]) / 2});
    }
    return corners;
}

CornerKind KindOf(const Corner& corner, const std::optional<double>& wind) {
    if (!wind) return CornerKind::Change;
    const double in = TurnBetween(*wind, corner.In), out = TurnBetween(*wind, corner.Out());
    if (in * out > 0) return CornerKind::Change;
    const auto [least, most] = std::minmax({std::abs(in), std::abs(out)});
    if (most < OnTheWind) return CornerKind::Tack;
    return least > OffTheWind ? CornerKind::Gybe : CornerKind::Change;
}

}  // namespace keelview
