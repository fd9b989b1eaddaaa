#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "base/point.h"
#include "display/control.h"
#include "display/pixels.h"

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

    Bounds Reach() const;                      ///< where it is painted, on whole pixels
    MouseEvent MoveAt(const Point& at) const;  ///< a move of the pointer over it, in its own pixels
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

/// The sprites and the lines that float on a surface. The items belong to those that add them, and take
/// themselves off again; they may outlive the surface.
class Floats {
  public:
    /// Has the screen follow in a part of the surface, soon. Unset once the surface is gone.
    std::function<void(const Bounds&)> Follow;

    void Add(const SpriteItem& item) { sprites_.push_back(&item); }
    void Remove(const SpriteItem& item);
    void Add(const LineItem& item) { lines_.push_back(&item); }
    void Remove(const LineItem& item);
    template <class Item>
    void Changed(const Item& item) const {
        if (item.Visible && Follow) Follow(item.Reach());
    }

    /// Those that are shown and meet a part, the lowest first.
    std::vector<const SpriteItem*> SpritesIn(const Bounds& part) const;
    bool HasLinesIn(const Bounds& part) const;
    /// Draws the lines that meet a part, in some rows of the surface's image alone.
    void DrawLines(Pixels& image, const Bounds& part, int firstRow, int endRow) const;
    /// The topmost sprite at a place that is shown and hears of the pointer; null where there is none.
    const SpriteItem* HearerAt(const Point& at) const;

  private:
    std::vector<const SpriteItem*> sprites_;
    std::vector<const LineItem*> lines_;
};

/// What floats on a surface; the system's side of the surface keeps it.
std::shared_ptr<Floats> FloatsOf(const Surface& surface);

}  // namespace keelview
