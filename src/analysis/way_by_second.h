#pragma once

#include <optional>
#include <vector>

#include "analysis/plane.h"
#include "racedata/gps_track.h"

namespace keelview {

/// A boat's places by the whole second, straight on between its fixes, and quick means of them: noise of
/// metres takes nothing from what is asked of many seconds. In a gap of more than 20 s there is none.
class WayBySecond {
  public:
    WayBySecond() = default;
    /// Fixes whose times fall back are passed over; behind `longest` seconds the way ends.
    WayBySecond(const Track& track, const Plane& plane, int longest);

    /// No second has a place.
    bool Empty() const { return sums_.size() < 2; }
    int First() const { return first_; }  ///< second of the first place
    int Last() const { return first_ + static_cast<int>(sums_.size()) - 2; }

    /// Metres by which its places scatter from one fix to the next, each way.
    double Noise() const { return noise_; }

    /// Metres on the plane; nothing where there is no place.
    std::optional<Way> At(int t) const { return Mean(t, t); }

    /// The mean place of some seconds, both ends included; nothing where one of them has none.
    std::optional<Way> Mean(int from, int to) const {
        if (from < first_ || to > Last() || to < from) return {};
        const auto begin = static_cast<std::size_t>(from - first_);
        const auto end = static_cast<std::size_t>(to - first_ + 1);
        if (counts_[end] - counts_[begin] != to - from + 1) return {};
        return (sums_[end] - sums_[begin]) * (1.0 / (to - from + 1));
    }

    /// Metres a second: from the mean place of a stretch's first half to that of its second half.
    std::optional<Way> Velocity(int from, int to) const {
        const int half = (to - from + 1) / 2;
        const auto before = Mean(from, from + half - 1);
        const auto behind = Mean(to - half + 1, to);
        if (half < 1 || !before || !behind) return {};
        return (*behind - *before) * (1.0 / (to - from + 1 - half));
    }

  private:
    void Add(const std::optional<Way>& place);

    int first_ = 0;
    double noise_ = 0.0;
    std::vector<Way> sums_;    // of the places before each second
    std::vector<int> counts_;  // how many those are
};

}  // namespace keelview
