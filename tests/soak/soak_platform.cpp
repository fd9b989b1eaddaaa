#include "soak/soak_platform.h"

#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <ctime>

namespace {

std::atomic<long>& Milliseconds() {
    static std::atomic<long> passed{0};
    return passed;
}

}  // namespace

void keelview::simulated_clock::Advance(int milliseconds) {
    Milliseconds() += milliseconds;
}

double keelview::simulated_clock::Seconds() {
    return static_cast<double>(Milliseconds()) / 1000;
}

// Stands before the C library's function of that name for every library of the process.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): the library's names are reserved
extern "C" int clock_gettime(clockid_t clock, timespec* time) noexcept {
    if (clock != CLOCK_MONOTONIC || gettid() != getpid())
        return static_cast<int>(syscall(SYS_clock_gettime, clock, time));
    // It begins so early that it lies behind any machine's own clock: a thread that waits for a moment of
    // it waits for nothing.
    *time = {1 + Milliseconds() / 1000, Milliseconds() % 1000 * 1'000'000};
    return 0;
}
