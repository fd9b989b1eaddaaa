#pragma once

#include <bit>
#include <cstdint>
#include <string>

namespace keelview {

/// A number as `size` bytes, the lowest first.
inline std::string Le(std::uint64_t number, int size) {
    std::string bytes;
    for (; size > 0; --size, number >>= 8U) bytes += static_cast<char>(number & 0xFFU);
    return bytes;
}

/// The same, the highest first.
inline std::string Be(std::uint64_t number, int size) {
    const std::string low = Le(number, size);
    return {low.rbegin(), low.rend()};
}

/// A float as its four bytes.
inline std::string Float(float number) {
    return Le(std::bit_cast<std::uint32_t>(number), 4);
}

}  // namespace keelview
