#include "analysis/turns.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "base/angles.h"

namespace keelview {

namespace {

constexpr double LeastTurn = 25.0;    // degrees
constexpr double LeastRate = 3.0;     // degrees a second
constexpr double LongestPause = 4.0;  // seconds within a turn
constexpr double LeastSpeed = 0.5 * KnotMetres;
constexpr int RateSpan = 2;  // seconds to either side over which a rate is measured

/// Courses of a boat each whole second, counted on past north; no number where it has none.
struct Courses {
    int First = 0;
    std::vector<double> Degrees;

    explicit Courses(const BoatMotion& motion) {
        const auto [from, to] = motion.Span();
        if (!(to > from) || !motion.IsDense()) return;
        First = static_cast<int>(std::ceil(from));
        std::optional<double> last;
        for (int t = First; t <= to; ++t) {
            const std::optional<Way> now = motion.VelocityAt(t);
            if (!now || now->Length() < LeastSpeed) {
                Degrees.push_back(std::numeric_limits<double>::quiet_NaN());
                continue;
            }
            const double bearing = now->Bearing();
            last = last ? *last + TurnBetween(*last, bearing) : bearing;
            Degrees.push_back(*last);
        }
    }
    /// Degrees a second about element i.
    double Rate(std::size_t i) const {
        if (i < RateSpan || i + RateSpan >= Degrees.size()) return 0.0;
        const double rate = (Degrees[i + RateSpan] - Degrees[i - RateSpan]) / (2 * RateSpan);
        return std::isfinite(rate) ? rate : 0.0;
    }
    /// When a turn is half done.
    double HalfOf(const CourseTurn& turn) const {
        const auto begin = static_cast<std::size_t>(turn.Start - First);
        const auto end = static_cast<std::size_t>(turn.End - First);
        const double half = (Degrees[begin] + Degrees[end]) / 2;
        for (std::size_t i = begin; i < end; ++i) {
            const double before = half - Degrees[i], after = half - Degrees[i + 1];
            if (before * after <= 0 && before != after)
                return First + static_cast<double>(i) + before / (before - after);
        }
        return (turn.Start + turn.End) / 2;
    }
};

}  // namespace

std::vector<CourseTurn> FindTurns(const BoatMotion& motion) {
    const Courses courses(motion);
    std::vector<CourseTurn> turns;
    const std::size_t count = courses.Degrees.size();
    for (std::size_t i = 0; i < count; ++i) {
        const double rate = courses.Rate(i);
        if (std::abs(rate) < LeastRate) continue;
        std::size_t end = i;
        while (end + 1 < count && courses.Rate(end + 1) * rate > 0 &&
               std::abs(courses.Rate(end + 1)) >= LeastRate)
            ++end;
        const double degrees = courses.Degrees[end] - courses.Degrees[i];
        const CourseTurn piece{courses.First + static_cast<double>(i),
                               courses.First + static_cast<double>(end),
                               std::isfinite(degrees) ? degrees : 0.0};
        const bool goesOn = !turns.empty() && piece.Start - turns.back().End < LongestPause &&
                            piece.Degrees * turns.back().Degrees > 0;
        if (goesOn) {
            turns.back().End = piece.End;
            turns.back().Degrees += piece.Degrees;
        } else {
            turns.push_back(piece);
        }
        i = end;
    }
    for (CourseTurn& turn : turns) turn.Middle = std::round(courses.HalfOf(turn));
    std::erase_if(turns, [](const CourseTurn& turn) { return std::abs(turn.Degrees) < LeastTurn; });
    return turns;
}

bool HoldsAnotherTurn(const std::vector<CourseTurn>& turns, std::size_t except, double from, double to) {
    for (std::size_t i = 0; i < turns.size(); ++i)
        if (i != except && turns[i].Start < to && turns[i].End > from) return true;
    return false;
}

}  // namespace keelview
