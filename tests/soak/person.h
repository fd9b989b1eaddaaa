#pragma once

#include <QStringList>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <random>
#include <string>
#include <utility>

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

/// Somebody who does anything that can be done, by mouse and keys, in whatever window takes events now.
/// What is done enters at the window, as it does from a window system.
class Person {
  public:
    /// `note` is told each thing that is about to be done, in words.
    Person(Dice& dice, std::function<void(const std::string&)> note)
        : dice_(dice), note_(std::move(note)) {}
    /// Does one thing. It is over when this returns, with all the questions that it brought up; those are
    /// answered by calls from their event loops.
    void Act();
    long Actions() const { return actions_; }

  private:
    class Deed;
    Dice& dice_;
    std::function<void(const std::string&)> note_;
    std::pair<QString, QStringList> errand_;  // that the person is on: its window, and the controls to come
    long actions_ = 0;
};

}  // namespace keelview
