#include "display/colour.h"

namespace keelview {

namespace {

constexpr Colour SystemColour = 0x80000000U;

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

}  // namespace keelview
