#include "display/qt/plates.h"

#include <QPainter>
#include <QStringList>
#include <algorithm>

#include "display/qt/convert.h"

namespace keelview {

namespace {

constexpr QColor LineDark(130, 130, 130);
constexpr QColor LineDarker(80, 80, 80);
constexpr QColor LineLight(255, 255, 255);
constexpr QColor FlatLine(60, 60, 60);
constexpr QColor FrameLine(150, 150, 150);
constexpr QColor FocusLine(230, 60, 0);  // stands out from grey panels and blue seas

// Where the title of a frame begins, and the gap at each of its sides, pixels.
constexpr int TitleLeft = 8;
constexpr int TitleGap = 2;

/// Shows that the keyboard works on a widget.
void PaintFocus(QPainter& painter, const QWidget& widget) {
    if (!widget.hasFocus()) return;
    painter.setPen(FocusLine);
    painter.drawRect(widget.rect().adjusted(0, 0, -1, -1));
}

/// Breaks a line at blanks so that each piece fits the width; a word alone may be wider.
QStringList Broken(const QString& line, const QFontMetrics& metrics, int width) {
    QStringList pieces;
    QString piece;
    for (const QString& word : line.split(' ')) {
        const QString longer = piece.isEmpty() ? word : piece + ' ' + word;
        if (!piece.isEmpty() && metrics.horizontalAdvance(longer) > width) {
            pieces << piece;
            piece = word;
        } else {
            piece = longer;
        }
    }
    pieces << piece;
    return pieces;
}

/// Draws one line of text into a rectangle, narrowed where it is wider.
void DrawFitted(QPainter& painter, const QRectF& rect, Align align, const QString& line) {
    const double width = QFontMetricsF(painter.font()).horizontalAdvance(line);
    const int flags = Qt::TextSingleLine | Qt::TextDontClip | Qt::AlignVCenter;
    const Qt::AlignmentFlag side = align == Align::Left     ? Qt::AlignLeft
                                   : align == Align::Centre ? Qt::AlignHCenter
                                                            : Qt::AlignRight;
    DrawNarrowed(painter, rect, width,
                 [&](const QRectF& room) { painter.drawText(room, flags | side, line); });
}

}  // namespace

int BorderWidth(BorderStyle border) {
    return border == BorderStyle::Sunken ? 2 : border == BorderStyle::Flat ? 1 : 0;
}

void PaintBorder(QPainter& painter, const QRect& rect, BorderStyle border) {
    const QRect inside = rect.adjusted(0, 0, -1, -1);
    if (border == BorderStyle::Flat) {
        painter.setPen(FlatLine);
        painter.drawRect(inside);
    }
    if (border != BorderStyle::Sunken) return;
    painter.setPen(LineLight);
    painter.drawRect(inside);
    painter.setPen(LineDark);
    painter.drawLine(inside.topLeft(), inside.topRight());
    painter.drawLine(inside.topLeft(), inside.bottomLeft());
    const QRect second = inside.adjusted(1, 1, -1, -1);
    painter.setPen(QColor(220, 220, 220));
    painter.drawRect(second);
    painter.setPen(LineDarker);
    painter.drawLine(second.topLeft(), second.topRight());
    painter.drawLine(second.topLeft(), second.bottomLeft());
}

void GroundColour::Take(QWidget& widget, Colour colour) {
    if (colour_ == colour) return;
    colour_ = colour;
    widget.setAttribute(Qt::WA_OpaquePaintEvent);
    widget.update();
}

void GroundColour::Paint(QPainter& painter, const QRect& rect) const {
    if (colour_) painter.fillRect(rect, ToQt(*colour_));
}

GroundWidget::GroundWidget(QWidget* parent, BorderStyle border) : QWidget(parent), border_(border) {}

void GroundWidget::SetTitle(const QString& title, Colour colour) {
    title_ = title;
    titleColour_ = colour;
    setAccessibleName(title);
    update();
}

void GroundWidget::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    ground_.Paint(painter, rect());
    if (title_) PaintTitle(painter, *title_);
    PaintBorder(painter, rect(), border_);
    PaintFocus(painter, *this);
}

void GroundWidget::PaintTitle(QPainter& painter, const QString& title) const {
    const QFontMetrics metrics(font());
    const int lineTop = title.isEmpty() ? 0 : metrics.height() / 2;
    const QRect line(0, lineTop, width() - 1, height() - 1 - lineTop);
    const int textWidth =
        title.isEmpty() ? 0 : std::min(metrics.horizontalAdvance(title), width() - 2 * TitleLeft);
    const QRect titleBox(TitleLeft, 0, textWidth, metrics.height());
    QRegion outside(rect());
    if (textWidth > 0) outside -= titleBox.adjusted(-TitleGap, 0, TitleGap, 0);
    painter.save();
    painter.setClipRegion(outside);
    painter.setPen(FrameLine);
    painter.drawRect(line);
    painter.restore();
    painter.setPen(ToQt(titleColour_));
    DrawFitted(painter, titleBox, Align::Left, title);
}

TextPlate::TextPlate(QWidget* parent, Align align, BorderStyle border)
    : QLabel(parent), align_(align), border_(border) {
    setTextFormat(Qt::PlainText);
    setFocusPolicy(Qt::NoFocus);
}

void TextPlate::SetText(std::string_view text) {
    if (text_ == text) return;
    text_ = text;
    setText(ToQt(text));
}

void TextPlate::SetInk(Colour ink) {
    if (ink_ == ink) return;
    ink_ = ink;
    update();
}

void TextPlate::SetAlign(Align align) {
    align_ = align;
    update();
}

QStringList TextPlate::FittedLines(const QFontMetrics& metrics, const QRect& room) const {
    const QStringList lines = text().split('\n');
    QStringList broken;
    for (const QString& line : lines) {
        if (metrics.horizontalAdvance(line) <= room.width())
            broken << line;
        else
            broken << Broken(line, metrics, room.width());
    }
    // Lines are broken only where the box has the height for them; otherwise they are narrowed.
    const int least = metrics.ascent() + 1;
    return broken.size() * least <= room.height() ? broken : lines;
}

void TextPlate::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    ground_.Paint(painter, rect());
    PaintBorder(painter, rect(), border_);
    PaintFocus(painter, *this);
    const int edge = BorderWidth(border_);
    const QRect inside = rect().adjusted(edge, edge, -edge, -edge);
    const QRect room = inside.adjusted(1, 0, -1, 0);
    if (text_.empty() || room.width() <= 0) return;
    painter.setClipRect(inside);
    painter.setPen(ToQt(ink_));
    const QFontMetrics metrics(font());
    const QStringList lines = FittedLines(metrics, room);
    const double count = static_cast<double>(lines.size());
    const double pitch = lines.size() > 1 ? std::min<double>(metrics.lineSpacing(), room.height() / count)
                                          : metrics.height();
    double top = room.top() + (room.height() - count * pitch) / 2.0;
    for (const QString& line : lines) {
        DrawFitted(painter, QRectF(room.left(), top, room.width(), pitch), align_, line);
        top += pitch;
    }
}

}  // namespace keelview
