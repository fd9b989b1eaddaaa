#pragma once

#include <algorithm>
#include <bit>
#include <concepts>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace keelview {

/// Knots in a metre a second.
inline constexpr double KnotsPerMetreSecond = 3600.0 / 1852.0;

/// The number whose bytes stand at `at`, which must all be there, in the order of `order`.
template <std::unsigned_integral T>
T UnsignedAt(const char* at, std::endian order = std::endian::little) {
    T number = 0;
    for (std::size_t k = 0; k < sizeof(T); ++k) {
        const std::size_t from = order == std::endian::little ? sizeof(T) - 1 - k : k;
        if constexpr (sizeof(T) > 1) number = static_cast<T>(number << 8U);
        number = static_cast<T>(number | static_cast<unsigned char>(at[from]));
    }
    return number;
}

}  // namespace keelview
