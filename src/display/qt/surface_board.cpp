#include "display/qt/surface_board.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <utility>

#include "display/qt/convert.h"
#include "display/qt/native_control.h"

namespace keelview {

namespace {

// Told to the board by itself when there is something to show.
const QEvent::Type ShowChanges = static_cast<QEvent::Type>(QEvent::registerEventType());

Bounds BoundsOf(const QRect& box) {
    return {{static_cast<double>(box.left()), static_cast<double>(box.top())},
            {box.right() + 1.0, box.bottom() + 1.0}};
}

}  // namespace

SurfaceBoard::SurfaceBoard(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    Floating->Follow = [this](const Bounds& part) { Follow(part); };
}

SurfaceBoard::~SurfaceBoard() {
    Floating->Follow = nullptr;
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
    const SpriteItem* hearer = Floating->HearerAt({at.x(), at.y()});
    if (hearer == nullptr) return false;
    Fire(*hearer->OnMouseMove, hearer->MoveAt({at.x(), at.y()}));
    return true;
}

const Pixels& SurfaceBoard::WithLines(const QRect& shown) {
    const Bounds part = BoundsOf(shown);
    if (!Floating->HasLinesIn(part)) return *image_;
    Pixels& under = underSprites_;
    if (under.Width != image_->Width || under.Height != image_->Height) under = *image_;
    const double ratio = under.Ratio = image_->Ratio;
    const int first = std::clamp(static_cast<int>(shown.top() * ratio) - 1, 0, under.Height);
    const int end = std::clamp(static_cast<int>((shown.bottom() + 1) * ratio) + 2, 0, under.Height);
    std::copy(image_->Row(first), image_->Row(end), under.Row(first));
    Floating->DrawLines(under, part, first, end);
    return under;
}

void SurfaceBoard::PaintSprite(QPainter& painter, const SpriteItem& sprite, const QRect& shown) const {
    const Bounds reach = sprite.Reach();
    const QRectF rect(QPointF(reach.Low.X, reach.Low.Y), QPointF(reach.High.X, reach.High.Y));
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
    for (const SpriteItem* sprite : Floating->SpritesIn(BoundsOf(shown)))
        PaintSprite(painter, *sprite, shown);
}

}  // namespace keelview
