#pragma once

#include <cmath>
#include <cstdint>

#include "base/point.h"
#include "display/pixels.h"

// How the rasteriser lays a colour over a pixel; for its own files.
namespace keelview::raster {

// Coverage is counted in 256 steps.
inline constexpr int FullCover = 256;

// The four parts of a pixel with room between them, so that all are multiplied at once.
inline constexpr std::uint64_t SpreadParts = 0x00FF00FF00FF00FFU;

inline std::uint64_t Spread(Pixel pixel) {
    return (pixel | static_cast<std::uint64_t>(pixel) << 24U) & SpreadParts;
}

inline Pixel Packed(std::uint64_t parts) {
    parts &= SpreadParts;
    return static_cast<Pixel>(parts | parts >> 24U);
}

// Half a step of a spread pixel's alpha, as it stands in the product of alpha and coverage.
inline constexpr std::uint64_t HalfOfAlpha = 0x0080000000000000U;

/// Lays an opaque colour over a pixel, which may be clear. Colours are rounded down, but the alpha to the
/// nearest: so a shape on a clear ground that is laid over a colour looks as if it had been drawn there.
inline void Blend(Pixel& under, Pixel colour, int cover) {
    if (cover >= FullCover) {
        under = colour;
        return;
    }
    const auto rest = static_cast<std::uint64_t>(FullCover - cover);
    const auto part = static_cast<std::uint64_t>(cover);
    under = Packed((Spread(under) * rest + Spread(colour) * part + HalfOfAlpha) >> 8U);
}

/// A pixel with its alpha laid over another; 255ths are rounded to the nearest.
inline Pixel Over(Pixel under, Pixel above) {
    const Pixel rest = 255U - (above >> 24U);
    const auto share = [rest](Pixel two) {
        const Pixel product = two * rest;
        return (product + (product >> 8U & 0x00FF00FFU) + 0x00800080U) >> 8U & 0x00FF00FFU;
    };
    return above + (share(under & 0x00FF00FFU) | share(under >> 8U & 0x00FF00FFU) << 8U);
}

inline int CoverOf(double share) {
    // A share is never negative, and this is the innermost step of every thick line.
    return static_cast<int>(share * FullCover + 0.5);  // NOLINT(bugprone-incorrect-roundings)
}

// Places further away than this are taken for no place at all; the arithmetic stays exact within it.
inline constexpr double FarAway = 1e12;

inline bool Finite(const Point& place) {
    return std::abs(place.X) < FarAway && std::abs(place.Y) < FarAway;
}

}  // namespace keelview::raster
