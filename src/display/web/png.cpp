#include "display/png.h"

#include <algorithm>

#include "display/raster_blend.h"
#include "display/web/page_calls.h"
#include "display/web/system.h"

namespace keelview {

// The browser packs it.
std::string PngOf(const Pixels& image) {
    if (image.Width <= 0 || image.Height <= 0) return {};
    constexpr Pixel white = 0xFFFFFFFFU;
    std::vector<Pixel> opaque(image.Bits.size());
    std::ranges::transform(image.Bits, opaque.begin(),
                           [](Pixel pixel) { return raster::Over(white, pixel); });
    page::PagePng(opaque.data(), image.Width, image.Height);
    return PageAnswer::Take();
}

}  // namespace keelview
