#include <algorithm>
#include <atomic>
#include <functional>
#include <future>
#include <system_error>
#include <thread>
#include <vector>

#include "base/parallel.h"

namespace keelview {

namespace {

/// Threads at work, each waited for when it goes.
using Helpers = std::vector<std::future<void>>;

/// So many helpers, or as many as the system gives: whoever starts them works too, so that none is enough.
template <class Help>
Helpers StartHelpers(int wanted, const Help& help) {
    Helpers helpers;
    try {
        for (int i = 0; i < wanted; ++i) helpers.push_back(std::async(std::launch::async, help));
    } catch (const std::system_error&) {
        return helpers;
    }
    return helpers;
}

}  // namespace

void ForEachInParallel(int count, const NumberedWork& work, const NumberedWork& begun) {
    ForEachByWorkers(
        count, [&] { return NumberedWork(std::ref(work)); }, begun);
}

void ForEachByWorkers(int count, const Hiring& hire, const NumberedWork& begun) {
    std::atomic<int> next{1};
    const auto help = [&] {
        const NumberedWork work = hire();
        for (int number = next++; number <= count; number = next++) work(number);
    };
    const int threads = std::min(static_cast<int>(std::thread::hardware_concurrency()), count);
    Helpers helpers = StartHelpers(threads - 1, help);
    const NumberedWork work = hire();
    int told = 0;
    const auto tellUpTo = [&](int number) {
        while (begun && told < number) begun(++told);
    };
    for (int number = next++; number <= count; number = next++) {
        tellUpTo(number);
        work(number);
    }
    tellUpTo(count);
    for (std::future<void>& helper : helpers) helper.get();
}

}  // namespace keelview
