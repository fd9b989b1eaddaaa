#include "display/qt/surface_board.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <ranges>

#include "display/qt/convert.h"
#include "display/qt/native_control.h"

namespace keelview {

namespace {

// Told to the board by itself when there is something to show.
const QEvent::Type ShowChanges = static_cast<QEvent::Type>(QEvent::registerEventType());

/// The image with all pixels of one colour taken out.
QImage WithoutColour(const QImage& image, QRgb colour) {
    QImage cut = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < cut.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(cut.scanLine(y));
        std::replace(row, row + cut.width(), colour, QRgb{0});
    }
    return cut;
}

}  // namespace

QRectF SpriteItem::Rect() const {
    return {std::round(Left), std::round(Top), Width, Height};
}

QImage SpriteItem::Shape() const {
    return Clear ? WithoutColour(Image->Image, ToQt(*Clear).rgb()) : Image->Image;
}

QRectF LineItem::Rect() const {
    return QRectF(QPointF(std::min(X1, X2), std::min(Y1, Y2)), QPointF(std::max(X1, X2), std::max(Y1, Y2)))
        .adjusted(-2, -2, 3, 3);
}

SurfaceBoard::SurfaceBoard(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void SurfaceBoard::Remove(const SpriteItem* sprite) {
    Follow(sprite->Rect());
    std::erase(sprites_, sprite);
}

void SurfaceBoard::Remove(const LineItem* line) {
    Follow(line->Rect());
    std::erase(lines_, line);
}

void SurfaceBoard::Follow(const QRectF& rect) {
    floating_ |= rect;
    FollowImage();
}

void SurfaceBoard::FollowImage() {
    if (awaited_ || !isVisible()) return;
    awaited_ = true;
    QCoreApplication::postEvent(this, new QEvent(ShowChanges));
}

QRect SurfaceBoard::TakeDirty() {
    QRectF dirty = floating_;
    if (image_ != nullptr) {
        dirty |= image_->Dirty;
        image_->Dirty = {};
    }
    floating_ = {};
    awaited_ = false;
    return (dirty & QRectF(rect())).toAlignedRect();
}

void SurfaceBoard::ShowNow() {
    const QRect dirty = TakeDirty();
    if (!dirty.isEmpty()) update(dirty);
    // A repaint of nothing still brings all of the window's waiting changes to the screen.
    repaint(dirty.isEmpty() ? QRect(0, 0, 1, 1) : dirty);
}

bool SurfaceBoard::event(QEvent* event) {
    if (event->type() == ShowChanges) {
        const QRect dirty = TakeDirty();
        if (!dirty.isEmpty()) update(dirty);
        return true;
    }
    return QWidget::event(event);
}

bool SurfaceBoard::MoveOnSprite(const QPointF& at) {
    for (const auto& sprite : std::views::reverse(sprites_)) {
        const SpriteItem& item = *sprite;
        const QRectF rect = item.Rect();
        const bool inside = at.x() >= rect.left() && at.x() < rect.right() && at.y() >= rect.top() &&
                            at.y() < rect.bottom();
        if (!item.Visible || !inside || !*item.OnMouseMove) continue;
        MouseEvent told;
        told.X = std::floor(at.x() - rect.left());
        told.Y = std::floor(at.y() - rect.top());
        Fire(*item.OnMouseMove, told);
        return true;
    }
    return false;
}

const QImage& SurfaceBoard::WithLines(const QRect& shown) {
    const auto seen = [&](const LineItem* line) { return line->Visible && line->Rect().intersects(shown); };
    if (std::ranges::none_of(lines_, seen)) return image_->Image;
    const QImage& image = image_->Image;
    if (underSprites_.size() != image.size()) underSprites_ = QImage(image.size(), image.format());
    underSprites_.setDevicePixelRatio(image.devicePixelRatio());
    const double ratio = image_->Ratio;
    raster::Target target = image_->Pixels;
    target.Bits = reinterpret_cast<raster::Pixel*>(underSprites_.bits());
    const int first = std::clamp(static_cast<int>(shown.top() * ratio) - 1, 0, target.Height);
    const int last = std::clamp(static_cast<int>((shown.bottom() + 1) * ratio) + 2, 0, target.Height);
    std::copy(image_->Pixels.Bits + first * target.Stride, image_->Pixels.Bits + last * target.Stride,
              target.Bits + first * target.Stride);
    for (const LineItem* line : lines_) {
        const bool placed = line->X1 != line->X2 || line->Y1 != line->Y2;
        if (!placed || !seen(line)) continue;
        raster::DrawSegment(target, {(line->X1 + 0.5) * ratio, (line->Y1 + 0.5) * ratio},
                            {(line->X2 + 0.5) * ratio, (line->Y2 + 0.5) * ratio},
                            {.Colour = PixelOf(line->Ink), .Width = ratio});
    }
    return underSprites_;
}

void SurfaceBoard::PaintSprite(QPainter& painter, const SpriteItem& sprite, const QRect& shown) const {
    const QRectF rect = sprite.Rect();
    const QRectF part = rect & QRectF(shown);
    if (part.isEmpty()) return;
    const QImage image = sprite.Shape();
    const double ratio = sprite.Image->Ratio;
    if (ratio == image_->Ratio) {
        painter.drawImage(rect.topLeft(), image);
        return;
    }
    // A sprite too large to be held at full sharpness: only its visible part is enlarged.
    const QRectF source((part.left() - rect.left()) * ratio, (part.top() - rect.top()) * ratio,
                        part.width() * ratio, part.height() * ratio);
    painter.drawImage(part, image, source);
}

void SurfaceBoard::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    if (image_ == nullptr || image_->Image.isNull()) {
        painter.fillRect(rect(), Qt::white);
        return;
    }
    const QRect shown = event->rect();
    painter.drawImage(0, 0, WithLines(shown));
    for (const SpriteItem* sprite : sprites_)
        if (sprite->Visible) PaintSprite(painter, *sprite, shown);
}

}  // namespace keelview
