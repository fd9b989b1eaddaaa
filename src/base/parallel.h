#pragma once

#include <functional>

namespace keelview {

/// What is done with each of some things, by its number.
using NumberedWork = std::function<void(int number)>;

/// Has `work` done for the numbers 1 to `count`, on all processors at once where the system has threads; it
/// comes back when all is done. What two numbers write must not be the same. `begun`, if there is one, is
/// told each number on the calling thread, in their order, at about the time that work on it begins.
void ForEachInParallel(int count, const NumberedWork& work, const NumberedWork& begun = {});

/// Makes what one thread does with the things that fall to it. May be called on several threads at once.
using Hiring = std::function<NumberedWork()>;

/// The same, where the work of each thread has memory of its own that it keeps from one thing to the next.
void ForEachByWorkers(int count, const Hiring& hire, const NumberedWork& begun = {});

}  // namespace keelview
