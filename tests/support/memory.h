#pragma once

#include <cstddef>

namespace keelview {

/// Bytes that are allocated and not freed, as the allocator counts them; under the address sanitizer too.
std::size_t AllocatedBytes();
/// Kilobytes of the process that are in memory.
long ResidentKilobytes();

}  // namespace keelview
