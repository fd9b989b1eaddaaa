#pragma once

#include <cstdint>

namespace keelview {

/// A colour 0x00BBGGRR, or one of the system colours below.
using Colour = std::uint32_t;

constexpr Colour Rgb(unsigned red, unsigned green, unsigned blue) {
    return red | green << 8U | blue << 16U;
}

inline constexpr Colour WindowBackground = 0x80000005U;
inline constexpr Colour WindowText = 0x80000008U;
inline constexpr Colour ButtonFace = 0x8000000FU;

inline constexpr Colour Black = Rgb(0, 0, 0);
inline constexpr Colour White = Rgb(255, 255, 255);
inline constexpr Colour Red = Rgb(255, 0, 0);
inline constexpr Colour Blue = Rgb(0, 0, 255);
inline constexpr Colour Yellow = Rgb(255, 255, 0);
inline constexpr Colour HintBackground = Rgb(255, 255, 192);

/// Red, green and blue of a colour, 0 to 255 each; system colours are resolved.
struct ColourParts {
    int Red = 0;
    int Green = 0;
    int Blue = 0;
};
ColourParts PartsOf(Colour colour);

/// How well two colours stand out from each other, from 1 (the same) to 21 (black on white), in either
/// order: the contrast ratio (L1 + 0.05) / (L2 + 0.05) of their relative luminances in sRGB (W3C, Web
/// Content Accessibility Guidelines 2.1).
double ContrastOf(Colour one, Colour other);

/// The contrast that a text, or a line that says something, has at least (the same guidelines, level AA).
inline constexpr double ReadableContrast = 4.5;

/// Black or white, whichever stands out more from a ground; either way it is readable on it.
Colour InkOn(Colour ground);

/// The colour that is wished for where it can be read on the ground; else the nearest to it, on its way to
/// the ground's ink, that can.
Colour ReadableOn(Colour ground, Colour wish);

}  // namespace keelview
