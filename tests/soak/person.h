#pragma once

#include <functional>
#include <string>

#include "soak/dice.h"

namespace keelview {

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
    long actions_ = 0;
};

}  // namespace keelview
