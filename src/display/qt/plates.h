#pragma once

#include <QLabel>
#include <QPainter>
#include <QString>
#include <QWidget>
#include <algorithm>
#include <optional>

#include "display/control.h"

namespace keelview {

/// Pixels that a border takes at each side.
int BorderWidth(BorderStyle border);

/// Paints a border along the inside of a rectangle.
void PaintBorder(QPainter& painter, const QRect& rect, BorderStyle border);

/// Draws a text of a width into a rectangle by `draw`, which gets the rectangle to draw in. Where the text
/// is wider, it is narrowed, down to two thirds; a text narrower than that cannot be read with ease.
template <class Draw>
void DrawNarrowed(QPainter& painter, const QRectF& rect, double textWidth, const Draw& draw) {
    constexpr double NarrowestText = 0.66;
    if (textWidth <= rect.width() || rect.width() <= 0) {
        draw(rect);
        return;
    }
    const double share = std::max(NarrowestText, rect.width() / textWidth);
    painter.save();
    painter.translate(rect.left(), 0);
    painter.scale(share, 1.0);
    draw(QRectF(0, rect.top(), rect.width() / share, rect.height()));
    painter.restore();
}

/// The colour that a widget paints under everything, or none.
class GroundColour {
  public:
    void Take(QWidget& widget, Colour colour);
    void Paint(QPainter& painter, const QRect& rect) const;

  private:
    std::optional<Colour> colour_;
};

/// The ground of a container: a colour, a border, or a frame line with a title in its top edge.
class GroundWidget : public QWidget {
  public:
    GroundWidget(QWidget* parent, BorderStyle border);
    void SetGround(Colour colour) { ground_.Take(*this, colour); }
    /// Draws a frame line around, with the title in its top edge.
    void SetTitle(const QString& title, Colour colour);
    QString Title() const { return title_.value_or(QString()); }
    BorderStyle Border() const { return border_; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void PaintTitle(QPainter& painter, const QString& title) const;
    BorderStyle border_;
    GroundColour ground_;
    std::optional<QString> title_;
    Colour titleColour_ = WindowText;
};

/// A text that is only read: a label, a readout, a hint. Its lines are set closer, broken or narrowed where
/// they would not fit, so that a small box shows all of its text.
class TextPlate : public QLabel {
  public:
    TextPlate(QWidget* parent, Align align, BorderStyle border);
    void SetText(std::string_view text);
    const std::string& Text() const { return text_; }
    void SetGround(Colour colour) { ground_.Take(*this, colour); }
    void SetInk(Colour ink);
    void SetAlign(Align align);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QStringList FittedLines(const QFontMetrics& metrics, const QRect& room) const;
    Align align_;
    BorderStyle border_;
    std::string text_;
    GroundColour ground_;
    Colour ink_ = WindowText;
};

}  // namespace keelview
