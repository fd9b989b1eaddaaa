#pragma once

#include <vector>

#include "display/control.h"
#include "display/web/events.h"
#include "display/web/native_control.h"

namespace keelview {

/// What a surface needs to know of a sprite.
struct SpriteItem {
    const Pixels* Image = nullptr;
    double Left = 0.0;
    double Top = 0.0;
    double Width = 0.0;
    double Height = 0.0;
    bool Visible = true;
    const Event<const MouseEvent&>* OnMouseMove = nullptr;

    Bounds Reach() const;  ///< where it is painted, on whole pixels
};

/// What a surface needs to know of a line object.
struct LineItem {
    double X1 = 0.0;
    double Y1 = 0.0;
    double X2 = 0.0;
    double Y2 = 0.0;
    Colour Ink = Black;
    std::vector<Colour> Stripes;
    bool Visible = true;

    Bounds Reach() const;  ///< what it may touch
};

/// A surface in the page: its image, the lines over it and the sprites over them. Changes are gathered and
/// put once, before the screen is next drawn.
class SurfaceBoard : public NativeControl, public PageFrame {
  public:
    SurfaceBoard(const Container& parent, std::string_view name, BorderStyle border);

    /// The image to show, and its scale; none while the surface is made, and after it is gone.
    const Pixels* Image = nullptr;
    std::function<Point(const Point&)> ToScale;

    void Add(SpriteItem* sprite) { sprites_.push_back(sprite); }
    void Remove(const SpriteItem* sprite);
    void Add(LineItem* line) { lines_.push_back(line); }
    void Remove(const LineItem* line);
    /// Has the screen follow in a part of the area, soon.
    void Follow(const Bounds& part);
    void Put() override;

  protected:
    bool TakeMove(const Point& at) override;
    Point InScale(const Point& at) const override { return ToScale ? ToScale(at) : at; }

  private:
    const Pixels& Composed(const Bounds& shown);
    void DrawLineItem(const LineItem& line, int firstRow, int endRow);

    std::vector<SpriteItem*> sprites_;
    std::vector<LineItem*> lines_;
    Bounds dirty_;  // what changed and is not shown yet
    Pixels whole_;  // the image with all that floats over it, while there is any
    bool awaited_ = false;
};

/// Lays a picture over an image with its top left at a device pixel, `scale` of the image's pixels to one
/// of its own, smoothly; within the rows and columns of a box of device pixels.
void LayScaled(Pixels& image, const Pixels& picture, const Point& topLeft, double scale,
               const Bounds& within);

}  // namespace keelview
