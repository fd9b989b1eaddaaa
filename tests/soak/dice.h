#pragma once

#include <cstddef>
#include <cstdint>
#include <random>

namespace keelview {

/// All that is left to chance, by one seed.
class Dice {
  public:
    explicit Dice(std::uint64_t seed) : engine_(seed) {}
    /// A number from 0 below `count`, which is above 0.
    int Below(int count) { return static_cast<int>(engine_() % static_cast<std::uint64_t>(count)); }
    bool OneIn(int count) { return Below(count) == 0; }
    template <class List>
    const auto& Of(const List& list) {
        return list[static_cast<std::size_t>(Below(static_cast<int>(std::size(list))))];
    }

  private:
    std::mt19937_64 engine_;
};

}  // namespace keelview
