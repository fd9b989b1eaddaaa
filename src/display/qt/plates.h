#pragma once

#include <QLabel>
#include <QString>
#include <QWidget>
#include <optional>

#include "display/control.h"

namespace keelview {

/// Pixels that a border takes at each side.
int BorderWidth(BorderStyle border);

/// Paints a border along the inside of a rectangle.
void PaintBorder(QPainter& painter, const QRect& rect, BorderStyle border);

/// The ground of a container: a colour, a border, or a frame line with a title in its top edge.
class GroundWidget : public QWidget {
  public:
    GroundWidget(QWidget* parent, BorderStyle border);
    void SetGround(std::optional<Colour> ground);
    /// Draws a frame line around, with the title in its top edge.
    void SetTitle(const QString& title, Colour colour);
    QString Title() const { return title_.value_or(QString()); }
    BorderStyle Border() const { return border_; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void PaintTitle(QPainter& painter, const QString& title) const;
    BorderStyle border_;
    std::optional<Colour> ground_;
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
    void SetGround(std::optional<Colour> ground);
    void SetInk(Colour ink);
    void SetAlign(Align align);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QStringList FittedLines(const QFontMetrics& metrics, const QRect& room) const;
    Align align_;
    BorderStyle border_;
    std::string text_;
    std::optional<Colour> ground_;
    Colour ink_ = WindowText;
};

/// Draws one line of text into a rectangle, narrowed where it is wider, down to two thirds.
void DrawFitted(QPainter& painter, const QRectF& rect, Align align, const QString& line);

}  // namespace keelview
