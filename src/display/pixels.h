#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "display/colour.h"

namespace keelview {

/// A pixel: alpha in the high byte, from 0, clear, to 255, opaque; red, green and blue are multiplied by
/// it.
using Pixel = std::uint32_t;

/// Where the parts of a pixel stand, from its low bit: as the system's screen takes them, so that an image
/// is shown without a copy.
#ifdef __wasi__
inline constexpr unsigned RedShift = 0;
inline constexpr unsigned BlueShift = 16;
#else
inline constexpr unsigned RedShift = 16;
inline constexpr unsigned BlueShift = 0;
#endif
inline constexpr unsigned GreenShift = 8;

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
