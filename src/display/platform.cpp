#include "display/platform.h"

#include <chrono>

namespace keelview {

int LocalUtcOffsetHours(Platform& platform) {
    const auto hour = [](const ClockReading& reading) {
        return std::chrono::floor<std::chrono::hours>(std::chrono::seconds(reading.Seconds)).count();
    };
    return static_cast<int>(hour(platform.LocalNow()) - hour(platform.UtcNow()));
}

}  // namespace keelview
