#include "base/parallel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <numeric>
#include <vector>

namespace keelview {
namespace {

TEST(Parallel, WorkIsDoneOnceEachAndToldInOrder) {
    std::vector<int> done(1000), told, all(1000);
    std::iota(all.begin(), all.end(), 1);
    const auto work = [&](int number) { done[static_cast<std::size_t>(number - 1)] += number; };
    ForEachInParallel(1000, work, [&](int number) { told.push_back(number); });
    EXPECT_EQ(done, all);
    EXPECT_EQ(told, all);
}

TEST(Parallel, EachWorkerKeepsItsOwnMemory) {
    std::atomic<int> workers = 0;
    std::array<std::atomic<int>, 64> done{};
    const auto hire = [&]() -> NumberedWork {
        ++workers;
        return [&, mine = 0](int) mutable { ++done.at(static_cast<std::size_t>(mine++)); };
    };
    ForEachByWorkers(static_cast<int>(done.size()), hire);
    // The n-th thing of a worker is done by at most all of them, and together they do all.
    EXPECT_TRUE(std::ranges::all_of(done, [&](int times) { return times <= workers; }));
    EXPECT_EQ(std::accumulate(done.begin(), done.end(), 0), 64);
    ForEachByWorkers(0, hire, [](int) { FAIL() << "nothing is there to be told"; });
}

}  // namespace
}  // namespace keelview
