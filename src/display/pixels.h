#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "display/colour.h"

namespace keelview {

/// A pixel 0xAARRGGBB: alpha from 0, clear, to 255, opaque; red, green and blue are multiplied by it.
using Pixel = std::uint32_t;

inline constexpr Pixel ClearPixel = 0;

/// The opaque pixel of a colour.
Pixel PixelOf(Colour colour);
/// The colour of a pixel as it was before the alpha; Black where it is clear.
Colour ColourOf(Pixel pixel);

/// An image in memory, row by row from the top.
struct Pixels {
    std::vector<Pixel> Bits;
    int Width = 0;       ///< device pixels
    int Height = 0;      ///< device pixels
    double Ratio = 1.0;  ///< device pixels to a pixel of the layout
    bool Opaque = true;  ///< no pixel lets anything through

    bool Empty() const { return Bits.empty(); }
    Pixel* Row(int y) { return Bits.data() + static_cast<std::ptrdiff_t>(y) * Width; }
    const Pixel* Row(int y) const { return Bits.data() + static_cast<std::ptrdiff_t>(y) * Width; }
};

/// The bytes of a Windows bitmap file of 24 bits a pixel; the alpha is left out.
std::string BitmapFile(const Pixels& image);

}  // namespace keelview
