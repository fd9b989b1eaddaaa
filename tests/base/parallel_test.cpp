#include "base/parallel.h"

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace keelview
