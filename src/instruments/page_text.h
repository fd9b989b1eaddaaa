#pragma once

#include <string_view>

#include "display/canvas.h"

namespace keelview {

/// The lines of start and finish on bar and graphs.
inline constexpr Colour StartFinishColour = Rgb(0, 255, 0);

/// Prints a text that ends at x.
inline void PrintRight(Canvas& page, double x, double y, std::string_view text) {
    page.PrintAt(x - page.TextWidth(text), y, text);
}

/// Prints a text with its middle at x.
inline void PrintCentred(Canvas& page, double x, double y, std::string_view text) {
    page.PrintAt(x - page.TextWidth(text) / 2, y, text);
}

/// Prints a text in a colour and goes back to black.
inline void PrintColoured(Canvas& page, Colour colour, double x, double y, std::string_view text) {
    page.ForeColor = colour;
    page.PrintAt(x, y, text);
    page.ForeColor = Black;
}

}  // namespace keelview
