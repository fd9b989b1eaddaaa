#include "analysis/track_rhythm.h"

#include <algorithm>
#include <cstddef>

namespace keelview {

namespace {

constexpr double GapFactor = 10;    // of the median interval
constexpr double SmallestGap = 30;  // seconds

/// Seconds between fixes, where the time goes on.
std::vector<double> Intervals(const std::vector<GpsFix>& fixes) {
    std::vector<double> intervals;
    for (std::size_t i = 1; i < fixes.size(); ++i)
        if (fixes[i].Time > fixes[i - 1].Time)
            intervals.push_back(static_cast<double>(fixes[i].Time - fixes[i - 1].Time) / 1000);
    return intervals;
}

/// The middle one of some numbers, or the mean of the two in the middle. There is one at least.
double Median(std::vector<double> numbers) {
    const auto middle = numbers.begin() + static_cast<std::ptrdiff_t>(numbers.size() / 2);
    std::ranges::nth_element(numbers, middle);
    if (numbers.size() % 2 == 1) return *middle;
    return (*std::max_element(numbers.begin(), middle) + *middle) / 2;
}

}  // namespace

TrackRhythm RhythmOf(const std::vector<GpsFix>& fixes) {
    TrackRhythm rhythm;
    const std::vector<double> intervals = Intervals(fixes);
    if (intervals.empty()) return rhythm;
    rhythm.MedianInterval = Median(intervals);
    const double gap = std::max(GapFactor * *rhythm.MedianInterval, SmallestGap);
    for (const double seconds : intervals) {
        if (seconds <= gap) continue;
        ++rhythm.Gaps;
        rhythm.LongestGap = std::max(rhythm.LongestGap, seconds);
    }
    return rhythm;
}

}  // namespace keelview
