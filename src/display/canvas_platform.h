#pragma once

#include <filesystem>
#include <memory>
#include <string_view>

#include "base/point.h"
#include "display/pixels.h"

/// What pictures ask of the platform: texts, image files, and how sharp its screen is. All other drawing is
/// done in `raster`.
namespace keelview {

/// How the letters of a text look.
struct Lettering {
    double Points = 9.0;
    bool Italic = false;
    bool operator==(const Lettering&) const = default;
};

/// Puts texts, and pictures of another sharpness, into an image that stays where it is in memory as long as
/// the pen lives. Places and sizes are pixels of the image's layout; texts have no line ends.
class PlatformPen {
  public:
    virtual ~PlatformPen() = default;
    virtual double LineHeight(const Lettering& lettering) = 0;
    virtual double TextWidth(std::string_view text, const Lettering& lettering) = 0;
    /// Draws a line of text under its top left; gives a width that it cannot exceed.
    virtual double DrawText(std::string_view line, const Point& topLeft, const Lettering& lettering,
                            Colour colour) = 0;
    /// Draws a picture at its own size, smoothly, where its pixels do not fall upon those of the image.
    virtual void DrawPicture(const Pixels& picture, const Point& topLeft) = 0;
};

std::unique_ptr<PlatformPen> MakePen(Pixels& image);

/// The image of a file (PNG, JPEG, GIF, BMP); empty if it cannot be read.
Pixels ReadImageFile(const std::filesystem::path& path);
/// One of the images built into the program, by its name in assets, as sharp as the screen where it can be.
Pixels ReadAsset(std::string_view name);

/// Device pixels of the screen to a pixel of the layout.
double ScreenRatio();

}  // namespace keelview
