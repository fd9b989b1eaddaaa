#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "soak/dice.h"

namespace keelview {

/// Controls of one window, by name, that a person uses one after another.
struct Errand {
    const char* Window;
    std::vector<const char*> Controls;
};

/// The errand that a person is on, and how much of it is done; other things may come between.
struct OnErrand {
    const Errand* What = nullptr;
    std::size_t Done = 0;
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
    Dice& dice_;
    std::function<void(const std::string&)> note_;
    OnErrand errand_;
    long actions_ = 0;
};

}  // namespace keelview
