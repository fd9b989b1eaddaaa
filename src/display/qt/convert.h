#pragma once

#include <QColor>
#include <QFont>
#include <QImage>
#include <QString>
#include <string>
#include <string_view>

#include "display/colour.h"
#include "display/pixels.h"

namespace keelview {

/// A text with line ends as the toolkit wants them: CR LF becomes LF.
QString ToQt(std::string_view text);
std::string FromQt(const QString& text);
QColor ToQt(Colour colour);

/// The toolkit's format of images with or without clear pixels.
QImage::Format FormatOf(bool opaque);
/// An image of the toolkit over the same memory; good until that memory moves.
QImage ViewOf(Pixels& image);
QImage ViewOf(const Pixels& image);

/// The font that holds both languages at a size in points, 96 dots to the inch; a face of the given name
/// goes first where the system has one.
QFont UiFont(std::string_view fontName, double points, bool bold);

}  // namespace keelview
