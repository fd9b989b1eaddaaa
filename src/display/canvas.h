#pragma once

#include <algorithm>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/point.h"
#include "display/colour.h"
#include "display/pixels.h"

namespace keelview {

class PlatformPen;

namespace raster {
struct Stroke;
}

enum class FillStyle { Solid = 0, None = 1 };
enum class DrawStyle { Solid = 0, Dotted = 2 };

/// An image that can be painted or saved; copies share the same pixels and never change.
class Picture {
  public:
    Picture() = default;
    explicit Picture(Pixels image);
    /// The image of a file (PNG, JPEG, GIF, BMP); an empty picture if it cannot be read.
    static Picture FromFile(const std::filesystem::path& path);
    /// One of the images built into the program, by its name in assets, such as "blue_p.png".
    static Picture FromAssets(std::string_view name);
    bool Empty() const { return image_ == nullptr; }
    int Width() const;   ///< pixels
    int Height() const;  ///< pixels
    /// The colour of a pixel; Black outside the image.
    Colour PixelAt(int x, int y) const;
    /// Writes the image as a Windows bitmap file; false if that fails.
    bool SaveBitmap(const std::filesystem::path& path) const;
    /// The image itself; an empty one for an empty picture.
    const Pixels& Data() const;

  private:
    std::shared_ptr<const Pixels> image_;
};

/// Lines in a colour of their own, through points that someone else keeps.
struct ColouredLine {
    std::span<const Point> Points;
    Colour Ink = Black;
    bool Separate = false;  ///< from point 0 to 1, 2 to 3 and so on; else joined through all points
};

/// A retained image with its pen: what is drawn stays until Cls. Drawing only marks the image as changed;
/// the screen follows once, when the event loop is idle. Coordinates are pixels unless SetUserScale says
/// otherwise; line widths and polygon points are always pixels.
class Canvas {
  public:
    virtual ~Canvas();
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    // The pen. Plain values that the next operation reads.
    Colour BackColor = WindowBackground;
    Colour ForeColor = WindowText;
    Colour FillColor = Black;
    FillStyle Fill = FillStyle::None;
    int DrawWidth = 1;
    DrawStyle Style = DrawStyle::Solid;
    double CurrentX = 0.0;
    double CurrentY = 0.0;
    double FontSize = 9.0;  ///< points
    bool FontItalic = false;

    /// Coordinates run from 0 to these instead of pixels.
    void SetUserScale(double scaleWidth, double scaleHeight);
    double ScaleWidth() const;   ///< width of the drawing area in the canvas's scale
    double ScaleHeight() const;  ///< height of the drawing area in the canvas's scale

    /// Line between two points in a colour; leaves CurrentX, CurrentY at its end, as all lines do.
    void Line(double x1, double y1, double x2, double y2, Colour colour);
    void Line(double x1, double y1, double x2, double y2);                      ///< in ForeColor
    void Box(double x1, double y1, double x2, double y2, Colour colour);        ///< outline
    void FilledBox(double x1, double y1, double x2, double y2, Colour colour);  ///< outline included
    /// Joined lines through all points, DrawWidth wide; parts far outside the picture cost next to nothing.
    void Polyline(std::span<const Point> points, Colour colour);
    /// Many of them at once, on all processors; later ones lie over earlier ones.
    void Lines(std::span<const ColouredLine> lines);
    /// Separate lines: points 0 and 1, 2 and 3, and so on.
    void Segments(std::span<const Point> points, Colour colour);
    /// Circle outlined in a colour, filled by Fill and FillColor; radius in the canvas's scale.
    void Circle(double x, double y, double radius, Colour colour);
    void Circle(double x, double y, double radius);  ///< outlined in ForeColor
    /// Closed polygon through points in pixels, which are taken to the nearest whole ones; outlined with
    /// ForeColor at DrawWidth, filled by Fill and FillColor.
    void Polygon(std::span<const Point> points);
    /// Clears the image to its ground (BackColor, or nothing for a clear one) and sets CurrentX, CurrentY
    /// to 0.
    void Cls();
    /// Text in ForeColor with its top left at CurrentX, CurrentY; then CurrentX is 0 and CurrentY a line
    /// down.
    void Print(std::string_view text);
    /// Print at a place: the same with CurrentX and CurrentY set before.
    void PrintAt(double x, double y, std::string_view text);
    double TextWidth(std::string_view text) const;
    /// Copies a whole picture at its own size.
    void PaintPicture(const Picture& picture, double x, double y);
    /// The image as it stands.
    Picture Image() const;

  protected:
    enum class Ground { BackColor, Clear };
    /// `longestSide`: of the image in device pixels; a larger one is held coarser.
    explicit Canvas(Ground ground = Ground::BackColor, int longestSide = 16384);
    /// The image takes a size in pixels; what was drawn stays at its place, new parts are ground.
    void ResizeImage(int width, int height);
    /// The image takes a size in pixels and is cleared.
    void RenewImage(int width, int height);
    /// Told after each drawing operation which part the screen must follow, in pixels.
    virtual void Changed(const Bounds& /*part*/) {}
    const Pixels& Retained() const { return image_; }
    double UnitX() const { return userWidth_ > 0.0 ? width_ / userWidth_ : 1.0; }     ///< pixels of a unit
    double UnitY() const { return userHeight_ > 0.0 ? height_ / userHeight_ : 1.0; }  ///< pixels of a unit

  private:
    friend class Overlay;
    Pixel GroundPixel() const { return ground_ == Ground::Clear ? ClearPixel : PixelOf(BackColor); }
    Pixels Blank(int width, int height, std::vector<Pixel> bits = {}) const;
    Point PlaceOf(double x, double y, int lineWidth) const;
    raster::Stroke StrokeOf(Colour colour) const;
    void DrawLine(const ColouredLine& line, const raster::Stroke& stroke);
    int PenWidth() const { return std::max(1, DrawWidth); }
    void ChangedAround(const Bounds& box, double room);
    void ChangedAll();

    Ground ground_;
    int longestSide_;
    Pixels image_;
    int width_ = 0;           // pixels of the layout
    int height_ = 0;          // pixels of the layout
    double userWidth_ = 0.0;  // user scale; 0 counts pixels
    double userHeight_ = 0.0;
    std::unique_ptr<PlatformPen> pen_;
};

}  // namespace keelview
