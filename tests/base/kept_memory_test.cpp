#include "base/kept_memory.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <string>
#include <vector>

namespace keelview {
namespace {

/// How often the system is asked for a page while eight megabytes are taken, written and given back.
long FaultsOfUse() {
    constexpr int pieces = 8, size = 1 << 20;
    rusage before{}, after{};
    getrusage(RUSAGE_SELF, &before);
    std::vector<std::string>(pieces, std::string(size, 'k')).clear();
    getrusage(RUSAGE_SELF, &after);
    return after.ru_minflt - before.ru_minflt;
}

TEST(KeptMemory, WhatWasGivenBackIsTakenAgainWithoutTheSystem) {
#if defined(__SANITIZE_ADDRESS__) || !defined(__GLIBC__)
    GTEST_SKIP() << "a library of its own gives the memory";
#endif
    KeepMemory();
    FaultsOfUse();
    EXPECT_LT(FaultsOfUse(), 200);  // of 2,300 pages
}

}  // namespace
}  // namespace keelview
