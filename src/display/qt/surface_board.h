#pragma once

#include <QWidget>
#include <memory>

#include "display/control.h"
#include "display/floats.h"

namespace keelview {

/// The drawing area of a surface: paints the image, the lines over it, and the sprites over them. Changes
/// are gathered and shown once, when the event loop comes to them.
class SurfaceBoard : public QWidget {
  public:
    explicit SurfaceBoard(QWidget* parent);
    ~SurfaceBoard() override;
    const std::shared_ptr<Floats> Floating = std::make_shared<Floats>();

    /// The image to paint; none while the surface is made, and after it is gone.
    void SetImage(const Pixels* image) { image_ = image; }

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
    Bounds dirty_;         // what changed and is not shown yet
    Pixels underSprites_;  // the image with the lines over it, while there are any
    bool awaited_ = false;
};

}  // namespace keelview
