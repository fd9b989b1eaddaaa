#include "analysis/steady_stretches.h"

#include <algorithm>

namespace keelview {

namespace {

constexpr double BeforeTurn = 3.0, BehindTurn = 10.0;
constexpr double BeforePass = 10.0, BehindPass = 15.0;

}  // namespace

std::optional<TimeSpan> RacingTime(const RaceControl& race, const MarkPasses& passes, int boat) {
    if (race.CourseOrder.Empty()) return TimeSpan{0.0, race.RaceDuration};
    const auto start = PassTime(passes, boat, 1);
    std::optional<int> last;
    for (int entry = 2; entry <= race.CourseOrder.Count(); ++entry)
        if (const auto pass = PassTime(passes, boat, entry)) last = std::max(*pass, last.value_or(*pass));
    if (!last) return {};
    return TimeSpan{std::max(0, start.value_or(0)), *last};
}

std::vector<TimeSpan> SteadyTimes(const std::vector<CourseTurn>& turns,
                                  const OneBased<std::optional<int>>& passes, TimeSpan within) {
    std::vector<TimeSpan> unsteady;
    unsteady.reserve(turns.size() + static_cast<std::size_t>(passes.Count()) + 1);
    for (const CourseTurn& turn : turns)
        unsteady.emplace_back(turn.Start - BeforeTurn, turn.End + BehindTurn);
    for (const auto& pass : passes)
        if (pass) unsteady.emplace_back(*pass - BeforePass, *pass + BehindPass);
    unsteady.emplace_back(within.second, within.second);
    std::ranges::sort(unsteady);
    std::vector<TimeSpan> steady;
    double from = within.first;
    for (const auto& [begin, end] : unsteady) {
        const double to = std::min(begin, within.second);
        if (to > from) steady.emplace_back(from, to);
        from = std::max(from, end);
    }
    return steady;
}

}  // namespace keelview
