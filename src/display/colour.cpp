#include "display/colour.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace keelview {

namespace {

constexpr Colour SystemColour = 0x80000000U;

using LightOfPart = std::array<double, 256>;

/// The share of light of each value that a part of a colour has in sRGB (IEC 61966-2-1), 0 to 1.
LightOfPart LightOfParts() {
    LightOfPart light{};
    for (std::size_t part = 0; part < light.size(); ++part) {
        const double value = static_cast<double>(part) / 255.0;
        light[part] = value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    }
    return light;
}

/// Colours are asked for as each boat is drawn, and powers take their time.
double LightOf(int part) {
    static const LightOfPart light = LightOfParts();
    return light[static_cast<std::size_t>(part)];
}

double LuminanceOf(Colour colour) {
    const ColourParts parts = PartsOf(colour);
    return 0.2126 * LightOf(parts.Red) + 0.7152 * LightOf(parts.Green) + 0.0722 * LightOf(parts.Blue);
}

}  // namespace

ColourParts PartsOf(Colour colour) {
    if ((colour & SystemColour) != 0) {
        if (colour == WindowBackground) return {255, 255, 255};
        if (colour == ButtonFace) return {240, 240, 240};
        return {0, 0, 0};
    }
    return {static_cast<int>(colour & 0xFFU), static_cast<int>(colour >> 8U & 0xFFU),
            static_cast<int>(colour >> 16U & 0xFFU)};
}

double ContrastOf(Colour one, Colour other) {
    const auto [darker, lighter] = std::minmax({LuminanceOf(one), LuminanceOf(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

Colour InkOn(Colour ground) {
    return ContrastOf(Black, ground) >= ContrastOf(White, ground) ? Black : White;
}

Colour ReadableOn(Colour ground, Colour wish) {
    constexpr int steps = 32;
    const Colour ink = InkOn(ground);
    const ColourParts from = PartsOf(wish);
    const ColourParts to = PartsOf(ink);
    for (int step = 0; step < steps; ++step) {
        const auto mixed = [step](int one, int other) {
            return static_cast<unsigned>(one + (other - one) * step / steps);
        };
        const Colour colour =
            Rgb(mixed(from.Red, to.Red), mixed(from.Green, to.Green), mixed(from.Blue, to.Blue));
        if (ContrastOf(colour, ground) >= ReadableContrast) return colour;
    }
    return ink;
}

}  // namespace keelview
