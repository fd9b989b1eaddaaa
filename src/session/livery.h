#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "base/point.h"
#include "display/canvas.h"
#include "display/colour.h"

namespace keelview {

/// The colour of a boat (from 1): fifteen colours, again and again.
Colour BoatColour(int boat);

/// How a boat looks wherever it is shown: its colour, and stripes across it.
struct Livery {
    Colour Ground = Black;
    std::vector<Colour> Stripes;  ///< none to four of White and Black, from the bow or from the left
};

/// The livery of a boat (from 1): sixty, again and again, of which no two look alike. Where some eye, also
/// a colour-blind one, takes two colours for one, the stripes differ.
const Livery& LiveryOf(int boat);

/// A field in the boat's livery, as its name stands on.
void DrawLiveryField(Canvas& canvas, int boat, const Point& topLeft, const Point& bottomRight);
/// The same with the boat's name, or another text of it, a little inside the field's top left.
void DrawNameField(Canvas& canvas, int boat, const Point& topLeft, const Point& bottomRight,
                   std::string_view name);
/// Joined lines in the boat's livery, in a shade of its colour that is readable on the ground.
void DrawLiveryLine(Canvas& canvas, int boat, std::span<const Point> way, Colour ground);

}  // namespace keelview
