#include <algorithm>
#include <atomic>
#include <future>
#include <system_error>
#include <thread>
#include <vector>

#include "base/parallel.h"

namespace keelview {

void ForEachInParallel(int count, const NumberedWork& work, const NumberedWork& begun) {
    std::atomic<int> next{1};
    const auto help = [&] {
        for (int number = next++; number <= count; number = next++) work(number);
    };
    std::vector<std::future<void>> helpers;  // each waits for its thread when it goes
    const int threads = std::min(static_cast<int>(std::thread::hardware_concurrency()), count);
    try {
        while (static_cast<int>(helpers.size()) + 1 < threads)
            helpers.push_back(std::async(std::launch::async, help));
    } catch (const std::system_error&) {
        // As many threads as the system gives are enough: this one is there.
    }
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
