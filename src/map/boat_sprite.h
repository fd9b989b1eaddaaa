#pragma once

#include <span>

#include "display/control.h"

namespace keelview {

/// How large a boat stands on the map.
struct SpriteSize {
    double Side = 0.0;      ///< of its square picture, pixels
    bool RealSize = false;  ///< at the scale of the map
};

/// The size of a boat of that length (metres). A boat too small to be seen is enlarged where that is
/// wanted; no picture is smaller than can be seen or larger than any map.
SpriteSize SizeOnMap(double boatLength, double pixelsPerMetre, bool enlarge);

/// What a boat's picture shows.
struct BoatLook {
    double Side = 0.0;       ///< of the sprite, pixels
    double Length = 0.0;     ///< of the boat, metres; dinghies have a shape of their own
    double Heading = 0.0;    ///< degrees clockwise from the top of the map
    double WindAngle = 0.0;  ///< from the heading to the wind, degrees, -180 to 180; the sail is set by it
    bool Ring = false;
    Colour Hull = Black;
    Colour Edge = Black;              ///< round the hull
    std::span<const Colour> Stripes;  ///< across it, from the bow
};

/// The angle as near as a picture of that side shows it: no corner is off by more than a tenth of a pixel.
/// Boats that turn slowly thus keep their pictures for some frames.
double AngleInPicture(double degrees, double side);

/// Do both say the same of a picture? Stripes are the same where they are those of one livery.
bool SamePicture(const BoatLook& one, const BoatLook& other);

/// Draws a boat on its sprite, which takes the size of the picture.
void DrawBoatSprite(Sprite& sprite, const BoatLook& look);

}  // namespace keelview
