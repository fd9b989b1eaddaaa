#include "display/qt/convert.h"

#include <QFontDatabase>
#include <QStringList>
#include <algorithm>
#include <cmath>

namespace keelview {

QString ToQt(std::string_view text) {
    QString converted = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    if (text.find('\r') != std::string_view::npos) converted.replace("\r\n", "\n");
    return converted;
}

std::string FromQt(const QString& text) {
    return text.toStdString();
}

QColor ToQt(Colour colour) {
    const ColourParts parts = PartsOf(colour);
    return {parts.Red, parts.Green, parts.Blue};
}

QImage::Format FormatOf(bool opaque) {
    return opaque ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied;
}

QImage ViewOf(Pixels& image) {
    QImage view(reinterpret_cast<uchar*>(image.Row(0)), image.Width, image.Height, FormatOf(image.Opaque));
    view.setDevicePixelRatio(image.Ratio);
    return view;
}

QImage ViewOf(const Pixels& image) {
    QImage view(reinterpret_cast<const uchar*>(image.Row(0)), image.Width, image.Height,
                FormatOf(image.Opaque));
    view.setDevicePixelRatio(image.Ratio);
    return view;
}

QFont UiFont(std::string_view fontName, double points, bool bold) {
    // Liberation Sans keeps figures narrow; other Japanese faces than this one lose the minus or clip.
    QStringList families{"Liberation Sans", "VL PGothic"};
    const QString asked = ToQt(fontName);
    if (!asked.isEmpty() && QFontDatabase::hasFamily(asked)) families.prepend(asked);
    QFont font;
    font.setFamilies(families);
    const double pixels = std::isfinite(points) ? std::clamp(points * 96.0 / 72.0, 1.0, 1000.0) : 12.0;
    font.setPixelSize(static_cast<int>(std::lround(pixels)));
    font.setBold(bold);
    return font;
}

}  // namespace keelview
