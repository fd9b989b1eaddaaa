#include "display/qt/canvas_impl.h"

#include <QGuiApplication>
#include <algorithm>
#include <cmath>

#include "display/qt/convert.h"

namespace keelview {

void Canvas::Impl::Resize(int width, int height, Colour ground, bool keep) {
    Width = std::max(0, width);
    Height = std::max(0, height);
    // The image is as sharp as the screen, unless it would grow without bound.
    Ratio = qGuiApp != nullptr ? qGuiApp->devicePixelRatio() : 1.0;
    const double longest = std::max({1.0, Width * Ratio, Height * Ratio});
    Ratio *= std::min(1.0, MaxSide / longest);
    const QSize size(std::max(1, static_cast<int>(std::ceil(Width * Ratio))),
                     std::max(1, static_cast<int>(std::ceil(Height * Ratio))));
    painter_.reset();
    if (!keep && size == Image.size() && Image.devicePixelRatio() == Ratio) {
        raster::FillRows(Pixels, 0, 0, Pixels.Width, Pixels.Height, PixelOf(ground));
        TouchAll();
        return;
    }
    QImage image(size, QImage::Format_RGB32);
    image.setDevicePixelRatio(Ratio);
    Pixels = {reinterpret_cast<raster::Pixel*>(image.bits()), image.width(), image.height(),
              static_cast<int>(image.bytesPerLine()) / static_cast<int>(sizeof(raster::Pixel))};
    raster::FillRows(Pixels, 0, 0, Pixels.Width, Pixels.Height, PixelOf(ground));
    if (keep && !Image.isNull()) QPainter(&image).drawImage(0, 0, Image);
    Image = std::move(image);
    TouchAll();
}

QPainter& Canvas::Impl::Painter() {
    if (!painter_) {
        if (Image.isNull()) Resize(0, 0, WindowBackground, false);
        painter_ = std::make_unique<QPainter>(&Image);
        painter_->setRenderHint(QPainter::SmoothPixmapTransform);
        painterHasFont_ = false;
    }
    if (!painterHasFont_) {
        painter_->setFont(font_);
        painterHasFont_ = true;
    }
    return *painter_;
}

const QFontMetricsF& Canvas::Impl::Metrics(double points) {
    if (points != fontPoints_ || !metrics_) {
        fontPoints_ = points;
        font_ = UiFont({}, points, false);
        metrics_.emplace(font_);
        painterHasFont_ = false;
    }
    return *metrics_;
}

}  // namespace keelview
