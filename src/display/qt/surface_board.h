#pragma once

#include <QPointer>
#include <QRectF>
#include <QWidget>
#include <vector>

#include "display/control.h"

namespace keelview {

/// What the board needs to know of a sprite.
struct SpriteItem {
    const Pixels* Image = nullptr;
    double Left = 0.0;
    double Top = 0.0;
    double Width = 0.0;
    double Height = 0.0;
    bool Visible = true;
    const Event<const MouseEvent&>* OnMouseMove = nullptr;

    QRectF Rect() const;  ///< where it is painted, on whole pixels
    Bounds Reach() const;
};

/// What the board needs to know of a line object.
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

/// The drawing area of a surface: paints the image, the lines over it, and the sprites over them. Changes
/// are gathered and shown once, when the event loop comes to them.
class SurfaceBoard : public QWidget {
  public:
    explicit SurfaceBoard(QWidget* parent);

    /// The image to paint; none while the surface is made, and after it is gone.
    void SetImage(const Pixels* image) { image_ = image; }

    void Add(SpriteItem* sprite) { sprites_.push_back(sprite); }
    void Remove(const SpriteItem* sprite);
    void Add(LineItem* line) { lines_.push_back(line); }
    void Remove(const LineItem* line);
    /// Has the screen follow in a part of the area, soon.
    void Follow(const Bounds& part);
    /// Brings all changes to the screen now.
    void ShowNow();
    /// Tells a move to the topmost sprite under it that is shown; false if there is none.
    bool MoveOnSprite(const QPointF& at);

  protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

  private:
    QRect TakeDirty();
    const Pixels& WithLines(const QRect& shown);
    void PaintSprite(QPainter& painter, const SpriteItem& sprite, const QRect& shown) const;

    const Pixels* image_ = nullptr;
    std::vector<SpriteItem*> sprites_;
    std::vector<LineItem*> lines_;
    Bounds dirty_;         // what changed and is not shown yet
    Pixels underSprites_;  // the image with the lines over it, while there are any
    bool awaited_ = false;
};

}  // namespace keelview
