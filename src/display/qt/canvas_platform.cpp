#include "display/canvas_platform.h"

#include <QFile>
#include <QFont>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QImage>
#include <QImageReader>
#include <QPainter>
#include <QString>
#include <algorithm>
#include <cmath>
#include <list>
#include <map>
#include <string>

#include "display/qt/convert.h"

namespace keelview {

namespace {

// Bytes that the decoded image of a file may take.
constexpr int ImageMegabytes = 256;

// Fonts of a picture, and widths of texts in each, that are kept.
constexpr std::size_t MostFonts = 8, MostWidths = 4096;

/// Holds one painter open on the image, its fonts, and how wide texts are in them: making or measuring any
/// of these anew would take longer than drawing the text.
class QtPen : public PlatformPen {
  public:
    explicit QtPen(Pixels& image) : pixels_(image) {}

    double LineHeight(const Lettering& lettering) override { return FontOf(lettering).Metrics.height(); }

    double TextWidth(std::string_view text, const Lettering& lettering) override {
        Font& font = FontOf(lettering);
        const auto known = font.Widths.find(text);
        if (known != font.Widths.end()) return known->second;
        if (font.Widths.size() >= MostWidths) font.Widths.clear();
        return font.Widths.emplace(text, font.Metrics.horizontalAdvance(ToQt(text))).first->second;
    }

    double DrawText(std::string_view line, const Point& topLeft, const Lettering& lettering,
                    Colour colour) override {
        const Font& font = FontOf(lettering);
        const QString text = ToQt(line);
        QPainter& painter = Painter();
        if (paintersFont_ != &font) painter.setFont(font.Face);
        paintersFont_ = &font;
        const QColor ink = ToQt(colour);
        if (painter.pen().color() != ink) painter.setPen(ink);
        painter.drawText(QPointF(std::round(topLeft.X), std::round(topLeft.Y) + font.Metrics.ascent()),
                         text);
        // Measuring the text would cost as much as drawing it; no glyph is wider than two heights.
        return 2.0 * font.Metrics.height() * static_cast<double>(text.size());
    }

    void DrawPicture(const Pixels& picture, const Point& topLeft) override {
        Painter().drawImage(QPointF(topLeft.X, topLeft.Y), ViewOf(picture));
    }

  private:
    struct Font {
        explicit Font(const Lettering& lettering)
            : Letters(lettering), Face(FaceOf(lettering)), Metrics(Face) {}
        static QFont FaceOf(const Lettering& lettering) {
            QFont face = UiFont({}, lettering.Points, false);
            face.setItalic(lettering.Italic);
            return face;
        }
        Lettering Letters;
        QFont Face;
        QFontMetricsF Metrics;
        std::map<std::string, double, std::less<>> Widths;
    };

    Font& FontOf(const Lettering& lettering) {
        const auto known = std::ranges::find(fonts_, lettering, &Font::Letters);
        if (known != fonts_.end()) return *known;
        if (fonts_.size() >= MostFonts) {
            fonts_.clear();
            paintersFont_ = nullptr;
        }
        return fonts_.emplace_back(lettering);
    }

    QPainter& Painter() {
        if (!painter_.isActive()) {
            image_ = ViewOf(pixels_);
            painter_.begin(&image_);
            painter_.setRenderHint(QPainter::SmoothPixmapTransform);
        }
        return painter_;
    }

    Pixels& pixels_;
    QImage image_;  // the pixels, as the toolkit wants them
    QPainter painter_;
    std::list<Font> fonts_;
    const Font* paintersFont_ = nullptr;  // the one that is set in the painter
};

/// The image of a file or of the program, with `ratio` of its pixels to one of the layout.
Pixels ReadImage(const QString& name, double ratio) {
    QImageReader reader(name);
    reader.setAutoTransform(true);
    reader.setDecideFormatFromContent(true);
    QImageReader::setAllocationLimit(ImageMegabytes);
    QImage image = reader.read();
    if (image.isNull()) return {};
    const bool opaque = !image.hasAlphaChannel();
    image.convertTo(FormatOf(opaque));
    Pixels pixels{
        .Bits = {}, .Width = image.width(), .Height = image.height(), .Ratio = ratio, .Opaque = opaque};
    for (int y = 0; y < image.height(); ++y) {
        const auto* row = reinterpret_cast<const Pixel*>(image.constScanLine(y));
        pixels.Bits.insert(pixels.Bits.end(), row, row + image.width());
    }
    return pixels;
}

}  // namespace

std::unique_ptr<PlatformPen> MakePen(Pixels& image) {
    return std::make_unique<QtPen>(image);
}

Pixels ReadImageFile(const std::filesystem::path& path) {
    return ReadImage(QString::fromStdString(path.string()), 1.0);
}

Pixels ReadAsset(std::string_view name) {
    const QString plain = ":/assets/" + ToQt(name);
    QString twice = plain;
    twice.insert(twice.lastIndexOf('.'), "@2x");
    return ScreenRatio() > 1.0 && QFile::exists(twice) ? ReadImage(twice, 2.0) : ReadImage(plain, 1.0);
}

double ScreenRatio() {
    return qGuiApp != nullptr ? qGuiApp->devicePixelRatio() : 1.0;
}

}  // namespace keelview
