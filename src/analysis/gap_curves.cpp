#include "analysis/gap_curves.h"

#include <algorithm>
#include <functional>

#include "base/parallel.h"

namespace keelview {

namespace {

/// When a boat's gap is told.
std::vector<double> TimesOf(const CourseProgress& progress, const MarkPasses& passes, int boat,
                            double every) {
    const double last = std::min<double>(progress.Last(), FinishTime(passes, boat).value_or(LongestRace));
    std::vector<double> times;
    for (int step = 0; step * every <= last; ++step) times.push_back(step * every);
    if (passes.MarkPassTime.Holds(boat))
        for (const auto& pass : passes.MarkPassTime[boat])
            if (pass && *pass >= 0 && *pass <= last) times.push_back(*pass);
    std::ranges::sort(times);
    const auto twice = std::ranges::unique(times);
    times.erase(twice.begin(), twice.end());
    return times;
}

GapCurves GapsTo(const CourseProgress& progress, const MarkPasses& passes, double every,
                 const std::function<std::optional<int>(double)>& other) {
    GapCurves curves(progress.Boats());
    ForEachInParallel(curves.Count(), [&](int boat) {
        for (const double t : TimesOf(progress, passes, boat, every)) {
            const auto to = other(t);
            if (const auto gap = to ? progress.GapSeconds(boat, *to, t) : std::nullopt)
                curves[boat].push_back({t, *gap});
        }
    });
    return curves;
}

}  // namespace

GapCurves GapsToLeader(const CourseProgress& progress, const MarkPasses& passes, double every) {
    // The leaders of the even moments serve all boats.
    std::vector<std::optional<int>> leaders;
    for (int step = 0; step * every <= progress.Last(); ++step)
        leaders.push_back(progress.LeaderAt(step * every));
    return GapsTo(progress, passes, every, [&](double t) {
        const auto step = static_cast<std::size_t>(t / every);
        return static_cast<double>(step) * every == t && step < leaders.size() ? leaders[step]
                                                                               : progress.LeaderAt(t);
    });
}

GapCurves GapsToBoat(const CourseProgress& progress, const MarkPasses& passes, int boat, double every) {
    return GapsTo(progress, passes, every, [boat](double) { return boat; });
}

}  // namespace keelview
