#pragma once

#include <span>
#include <string_view>

#include "base/point.h"
#include "display/canvas.h"
#include "display/colour.h"

namespace keelview {

/// Joined lines in a colour that says something. Where the colour does not stand out from the ground, they
/// lie on a thin edge of its ink.
inline void DrawClearLine(Canvas& canvas, std::span<const Point> way, Colour colour, Colour ground) {
    if (ContrastOf(colour, ground) < ReadableContrast) {
        canvas.DrawWidth += 2;
        canvas.Polyline(way, InkOn(colour));
        canvas.DrawWidth -= 2;
    }
    canvas.Polyline(way, colour);
}

/// A text in a colour with an edge around its signs that keeps it readable on lines of any colour.
inline void PrintClear(Canvas& canvas, const Point& at, std::string_view text, Colour colour) {
    canvas.ForeColor = InkOn(colour);
    for (const Point& off : {Point{-1, 0}, Point{1, 0}, Point{0, -1}, Point{0, 1}})
        canvas.PrintAt(at.X + off.X, at.Y + off.Y, text);
    canvas.ForeColor = colour;
    canvas.PrintAt(at.X, at.Y, text);
}

}  // namespace keelview
