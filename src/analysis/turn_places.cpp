#include "analysis/turn_places.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <unordered_map>
#include <utility>

#include "analysis/medians.h"

namespace keelview {

namespace {

constexpr double Taken = 32;  // metres about a place within which all turns are its own
constexpr std::size_t MostPlaces = 48;
constexpr double LeastScore = 0.06;  // of the boats' weights, but for 0.8 of one boat's

double WeightOf(const Corner& corner, const std::optional<double>& wind) {
    switch (KindOf(corner, wind)) {
        case CornerKind::Tack:
            return 0.3;
        case CornerKind::Gybe:
            return 0.5;
        case CornerKind::Change:
            break;
    }
    return std::abs(corner.Turn) < 40 ? 0.75 : 1.0;
}

/// The corners by the squares of water in which they lie.
class Squares {
  public:
    explicit Squares(const std::vector<Corner>& corners) : corners_(corners) {
        for (std::size_t i = 0; i < corners.size(); ++i) squares_[KeyOf(corners[i].At, 0, 0)].push_back(i);
    }

    template <class Take>
    void ForEachNear(Way at, double metres, Take take) const {
        const int reach = static_cast<int>(std::ceil(metres / Side));
        for (int east = -reach; east <= reach; ++east)
            for (int north = -reach; north <= reach; ++north) {
                const auto square = squares_.find(KeyOf(at, east, north));
                if (square == squares_.end()) continue;
                for (const std::size_t i : square->second)
                    if ((corners_[i].At - at).Square() <= metres * metres) take(i);
            }
    }

  private:
    static constexpr double Side = 25;
    static std::int64_t KeyOf(Way at, int east, int north) {
        constexpr std::int64_t row = 1 << 20;
        return (std::llround(at.East / Side) + east) * row + std::llround(at.North / Side) + north;
    }

    const std::vector<Corner>& corners_;
    std::unordered_map<std::int64_t, std::vector<std::size_t>> squares_;
};

/// The search for places, the best first.
class TurnSearch {
  public:
    TurnSearch(const std::vector<Corner>& corners, int boats, const std::optional<double>& wind)
        : corners_(corners),
          squares_(corners),
          taken_(corners.size()),
          best_(static_cast<std::size_t>(boats)) {
        for (const Corner& corner : corners) {
            weights_.push_back(WeightOf(corner, wind));
            boats_ = std::max(boats_, corner.Boat + 1);
        }
        best_.resize(static_cast<std::size_t>(boats_));
    }

    std::vector<TurnPlace> Run(int boats) {
        std::vector<TurnPlace> places;
        std::vector<std::pair<double, std::size_t>> seeds;
        seeds.reserve(corners_.size());
        for (std::size_t i = 0; i < corners_.size(); ++i) seeds.emplace_back(ScoreAt(i), i);
        std::ranges::make_heap(seeds);
        while (!seeds.empty() && places.size() < MostPlaces) {
            std::ranges::pop_heap(seeds);
            const auto [score, seed] = seeds.back();
            seeds.pop_back();
            if (score < std::max(0.8, LeastScore * boats)) break;
            if (taken_[seed]) continue;
            const double now = ScoreAt(seed);
            if (now < score) {
                seeds.emplace_back(now, seed);
                std::ranges::push_heap(seeds);
                continue;
            }
            places.push_back(TakeAt(seed));
        }
        return places;
    }

  private:
    bool SameSide(std::size_t a, std::size_t b) const {
        return (corners_[a].Turn < 0) == (corners_[b].Turn < 0);
    }

    /// The weights of the boats that turn about a corner, to its side.
    double ScoreAt(std::size_t seed) {
        std::vector<int> seen;
        squares_.ForEachNear(corners_[seed].At, TurnReach, [&](std::size_t i) {
            if (taken_[i] || !SameSide(i, seed)) return;
            double& best = best_[static_cast<std::size_t>(corners_[i].Boat)];
            if (best == 0) seen.push_back(corners_[i].Boat);
            best = std::max(best, weights_[i]);
        });
        double score = 0;
        for (const int boat : seen) score += std::exchange(best_[static_cast<std::size_t>(boat)], 0.0);
        return score;
    }

    /// The turns about a place, whose middle is sought from a corner; they make no other place.
    TurnPlace TakeAt(std::size_t seed) {
        Way at = corners_[seed].At;
        for (int round = 0; round < 3; ++round) {
            std::vector<double> easts, norths;
            squares_.ForEachNear(at, TurnReach + 5, [&](std::size_t i) {
                if (taken_[i] || !SameSide(i, seed)) return;
                easts.push_back(corners_[i].At.East);
                norths.push_back(corners_[i].At.North);
            });
            if (!easts.empty()) at = {MedianOf(std::move(easts)), MedianOf(std::move(norths))};
        }
        TurnPlace place;
        squares_.ForEachNear(at, Taken, [&](std::size_t i) {
            if (!SameSide(i, seed)) {
                if ((corners_[i].At - at).Length() <= TurnReach) place.Others.push_back(corners_[i]);
            } else if (!taken_[i]) {
                taken_[i] = true;
                place.Turns.push_back(corners_[i]);
            }
        });
        return place;
    }

    const std::vector<Corner>& corners_;
    Squares squares_;
    std::vector<double> weights_;
    std::vector<bool> taken_;
    std::vector<double> best_;  // by boat, while a score is added up
    int boats_ = 0;
};

}  // namespace

std::vector<TurnPlace> FindTurnPlaces(const std::vector<Corner>& corners, int boats,
                                      const std::optional<double>& wind) {
    return TurnSearch(corners, boats, wind).Run(boats);
}

}  // namespace keelview
