#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "display/colour.h"

namespace keelview {

/// A point in the scale of a canvas.
struct Point {
    double X = 0.0;
    double Y = 0.0;
};

/// A corner of a polygon in whole pixels.
struct PixelPoint {
    int X = 0;
    int Y = 0;
};

enum class FillStyle { Solid = 0, None = 1 };
enum class DrawStyle { Solid = 0, Dotted = 2 };

/// An image that can be painted or saved; copies share the same pixels and never change.
class Picture {
  public:
    struct Impl;
    Picture();
    explicit Picture(std::shared_ptr<const Impl> impl);
    /// The image of a file (PNG, JPEG, GIF, BMP); an empty picture if it cannot be read.
    static Picture FromFile(const std::filesystem::path& path);
    /// One of the images built into the program, by its name in assets, such as "blue_p.png".
    static Picture FromAssets(std::string_view name);
    bool Empty() const;
    int Width() const;   ///< pixels
    int Height() const;  ///< pixels
    /// The colour of a pixel; Black outside the image.
    Colour PixelAt(int x, int y) const;
    /// Writes the image as a Windows bitmap file; false if that fails.
    bool SaveBitmap(const std::filesystem::path& path) const;
    const Impl* Native() const { return impl_.get(); }

  private:
    std::shared_ptr<const Impl> impl_;
};

/// A retained image with its pen: what is drawn stays until Cls. Drawing only marks the image as changed;
/// the screen follows once, when the event loop is idle. Coordinates are pixels unless SetUserScale says
/// otherwise; line widths and polygon points are always pixels.
class Canvas {
  public:
    Canvas();
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

    /// Coordinates run from 0 to these instead of pixels.
    void SetUserScale(double scaleWidth, double scaleHeight);
    double ScaleWidth() const;   ///< width of the drawing area in the canvas's scale
    double ScaleHeight() const;  ///< height of the drawing area in the canvas's scale

    /// Line between two points in a colour; leaves CurrentX, CurrentY at its end, as all lines do.
    void Line(double x1, double y1, double x2, double y2, Colour colour);
    void Line(double x1, double y1, double x2, double y2);                      ///< in ForeColor
    void LineTo(double x2, double y2, Colour colour);                           ///< from CurrentX, CurrentY
    void LineTo(double x2, double y2);                                          ///< the same in ForeColor
    void Box(double x1, double y1, double x2, double y2, Colour colour);        ///< outline
    void FilledBox(double x1, double y1, double x2, double y2, Colour colour);  ///< outline included
    /// Joined lines through all points, DrawWidth wide; parts far outside the picture cost next to nothing.
    void Polyline(std::span<const Point> points, Colour colour);
    /// Separate lines: points 0 and 1, 2 and 3, and so on.
    void Segments(std::span<const Point> points, Colour colour);
    /// Circle outlined in a colour, filled by Fill and FillColor; radius in the canvas's scale.
    void Circle(double x, double y, double radius, Colour colour);
    void Circle(double x, double y, double radius);  ///< outlined in ForeColor
    /// Closed polygon in whole pixels, outlined with ForeColor at DrawWidth, filled by Fill and FillColor.
    void Polygon(std::span<const PixelPoint> points);
    /// Clears the image to BackColor and sets CurrentX, CurrentY to 0.
    void Cls();
    /// Text in ForeColor with its top left at CurrentX, CurrentY; then CurrentX is 0 and CurrentY a line
    /// down.
    void Print(std::string_view text);
    /// Print at a place: the same with CurrentX and CurrentY set before.
    void PrintAt(double x, double y, std::string_view text);
    double TextWidth(std::string_view text) const;
    double TextHeight(std::string_view text) const;
    /// Copies a whole picture at its own size.
    void PaintPicture(const Picture& picture, double x, double y);
    /// The image as it stands.
    Picture Image() const;

    struct Impl;
    Impl& Native() const { return *impl_; }

  protected:
    /// The image takes a size in pixels; what was drawn stays at its place, new parts are BackColor.
    void ResizeImage(int width, int height);
    /// Told after each drawing operation that the screen must follow.
    virtual void Changed() {}

  private:
    std::unique_ptr<Impl> impl_;
};

}  // namespace keelview
