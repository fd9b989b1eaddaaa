#pragma once

#include <memory>
#include <vector>

#include "display/control.h"
#include "display/floats.h"
#include "display/web/events.h"
#include "display/web/native_control.h"

namespace keelview {

/// A surface in the page: its image, the lines over it and the sprites over them. Changes are gathered and
/// put once, before the screen is next drawn.
class SurfaceBoard : public NativeControl, public PageFrame {
  public:
    SurfaceBoard(const Container& parent, std::string_view name, BorderStyle border);
    ~SurfaceBoard() override;

    /// The image to show, and its scale; none while the surface is made, and after it is gone.
    Pixels* Image = nullptr;
    std::function<Point(const Point&)> ToScale;
    const std::shared_ptr<Floats> Floating = std::make_shared<Floats>();

    /// Has the screen follow in a part of the area, soon.
    void Follow(const Bounds& part);
    void Put() override;

  protected:
    bool TakeMove(const Point& at) override;
    Point InScale(const Point& at) const override { return ToScale ? ToScale(at) : at; }

  private:
    struct Box;
    std::vector<Box> BoxesUnder(const std::vector<const SpriteItem*>& sprites, const Bounds& shown) const;
    void LaySprite(const SpriteItem& sprite, const Bounds& shown);

    Bounds dirty_;              // what changed and is not shown yet
    std::vector<Pixel> under_;  // the pixels below what floats, while it is put
    bool awaited_ = false;
};

/// Lays a picture over an image with its top left at a device pixel, `scale` of the image's pixels to one
/// of its own, smoothly; within the rows and columns of a box of device pixels.
void LayScaled(Pixels& image, const Pixels& picture, const Point& topLeft, double scale,
               const Bounds& within);

}  // namespace keelview
