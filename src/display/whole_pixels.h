#pragma once

#include <algorithm>
#include <cmath>

namespace keelview {

/// A place of a control: none lies further out than this; one that is no number counts as 0.
inline int WholePixels(double value) {
    return std::isfinite(value) ? static_cast<int>(std::lround(std::clamp(value, -1e6, 1e6))) : 0;
}

/// Its width or height, up to that of the largest screens.
inline int WholeSize(double value) {
    return std::clamp(WholePixels(value), 0, 16384);
}

}  // namespace keelview
