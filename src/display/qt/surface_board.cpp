#include "display/qt/surface_board.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <array>
#include <cmath>
#include <ranges>
#include <utility>

#include "display/qt/convert.h"
#include "display/qt/native_control.h"
#include "display/raster.h"
#include "display/stripes.h"

namespace keelview {

namespace {

// How far a line may reach beyond its ends, pixels.
constexpr double LineRoom = 3.0;

// Told to the board by itself when there is something to show.
const QEvent::Type ShowChanges = static_cast<QEvent::Type>(QEvent::registerEventType());

}  // namespace

QRectF SpriteItem::Rect() const {
    return {std::round(Left), std::round(Top), Width, Height};
}

Bounds SpriteItem::Reach() const {
    const QRectF rect = Rect();
    return {{rect.left(), rect.top()}, {rect.right(), rect.bottom()}};
}

Bounds LineItem::Reach() const {
    Bounds box;
    box.Add(Point{X1, Y1});
    box.Add(Point{X2, Y2});
    return box.Grown(LineRoom);
}

SurfaceBoard::SurfaceBoard(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void SurfaceBoard::Remove(const SpriteItem* sprite) {
    Follow(sprite->Reach());
    std::erase(sprites_, sprite);
}

void SurfaceBoard::Remove(const LineItem* line) {
    Follow(line->Reach());
    std::erase(lines_, line);
}

void SurfaceBoard::Follow(const Bounds& part) {
    dirty_.Add(part);
    if (awaited_ || !isVisible()) return;
    awaited_ = true;
    QCoreApplication::postEvent(this, new QEvent(ShowChanges));
}

QRect SurfaceBoard::TakeDirty() {
    const Bounds dirty = std::exchange(dirty_, {});
    awaited_ = false;
    const QPointF low(std::max(0.0, dirty.Low.X), std::max(0.0, dirty.Low.Y));
    const QPointF high(std::min<double>(width(), dirty.High.X), std::min<double>(height(), dirty.High.Y));
    return low.x() < high.x() && low.y() < high.y() ? QRectF(low, high).toAlignedRect() : QRect();
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

const Pixels& SurfaceBoard::WithLines(const QRect& shown) {
    const auto seen = [&](const LineItem* line) {
        const Bounds reach = line->Reach();
        return line->Visible &&
               QRectF(QPointF(reach.Low.X, reach.Low.Y), QPointF(reach.High.X, reach.High.Y))
                   .intersects(shown);
    };
    if (std::ranges::none_of(lines_, seen)) return *image_;
    Pixels& under = underSprites_;
    if (under.Width != image_->Width || under.Height != image_->Height) under = *image_;
    const double ratio = under.Ratio = image_->Ratio;
    const int first = std::clamp(static_cast<int>(shown.top() * ratio) - 1, 0, under.Height);
    const int last = std::clamp(static_cast<int>((shown.bottom() + 1) * ratio) + 2, 0, under.Height);
    std::copy(image_->Row(first), image_->Row(last), under.Row(first));
    for (const LineItem* line : lines_) {
        const bool placed = line->X1 != line->X2 || line->Y1 != line->Y2;
        if (!placed || !seen(line)) continue;
        const std::array<Point, 2> ends{{{line->X1, line->Y1}, {line->X2, line->Y2}}};
        const auto draw = [&](const Point& from, const Point& to, Colour ink) {
            raster::DrawSegment(under, {(from.X + 0.5) * ratio, (from.Y + 0.5) * ratio},
                                {(to.X + 0.5) * ratio, (to.Y + 0.5) * ratio},
                                {.Colour = PixelOf(ink), .Width = ratio});
        };
        draw(ends[0], ends[1], line->Ink);
        for (const LineStripe& stripe : StripesAlong(ends, line->Stripes))
            draw(stripe.From, stripe.To, stripe.Ink);
    }
    return under;
}

void SurfaceBoard::PaintSprite(QPainter& painter, const SpriteItem& sprite, const QRect& shown) const {
    const QRectF rect = sprite.Rect();
    const QRectF part = rect & QRectF(shown);
    if (part.isEmpty()) return;
    const double ratio = sprite.Image->Ratio;
    if (ratio == image_->Ratio) {
        painter.drawImage(rect.topLeft(), ViewOf(*sprite.Image));
        return;
    }
    // A sprite too large to be held at full sharpness: only its visible part is enlarged.
    const QRectF source((part.left() - rect.left()) * ratio, (part.top() - rect.top()) * ratio,
                        part.width() * ratio, part.height() * ratio);
    painter.drawImage(part, ViewOf(*sprite.Image), source);
}

void SurfaceBoard::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    if (image_ == nullptr) {
        painter.fillRect(rect(), Qt::white);
        return;
    }
    const QRect shown = event->rect();
    painter.drawImage(0, 0, ViewOf(WithLines(shown)));
    for (const SpriteItem* sprite : sprites_)
        if (sprite->Visible) PaintSprite(painter, *sprite, shown);
}

}  // namespace keelview
