#include "session/boat_colours.h"

#include <array>

namespace keelview {

Colour BoatColour(int boat) {
    static constexpr std::array<Colour, 15> Palette{
        Rgb(255, 0, 0),   Rgb(0, 0, 255), Rgb(0, 128, 0),     Rgb(128, 128, 0), Rgb(128, 0, 128),
        Rgb(0, 128, 128), Rgb(0, 0, 0),   Rgb(128, 128, 128), Rgb(192, 192, 0), Rgb(96, 96, 0),
        Rgb(192, 0, 0),   Rgb(0, 0, 192), Rgb(0, 128, 0),     Rgb(128, 128, 0), Rgb(128, 0, 128)};
    return Palette[static_cast<std::size_t>(boat - 1) % Palette.size()];
}

}  // namespace keelview
