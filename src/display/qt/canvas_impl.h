#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QRectF>
#include <memory>
#include <optional>

#include "display/canvas.h"
#include "display/qt/raster.h"

namespace keelview {

/// The image of a picture as the toolkit holds it.
struct Picture::Impl {
    QImage Image;
};

/// The image of a canvas with what is kept between operations: one open painter, and the font of the last
/// text.
struct Canvas::Impl {
    QImage Image;  ///< RGB32, shared with nobody, so that its pixels may be written in place
    raster::Target Pixels;
    int Width = 0;           ///< pixels of the layout
    int Height = 0;          ///< pixels of the layout
    double Ratio = 1.0;      ///< device pixels to a pixel of the layout
    int MaxSide = 16384;     ///< of the image, in device pixels; larger ones are held coarser
    double UserWidth = 0.0;  ///< user scale; 0 counts pixels
    double UserHeight = 0.0;
    QRectF Dirty;  ///< what the screen has not seen yet, in pixels of the layout

    double UnitX() const { return UserWidth > 0.0 ? Width / UserWidth : 1.0; }  ///< pixels of a unit
    double UnitY() const { return UserHeight > 0.0 ? Height / UserHeight : 1.0; }

    /// Takes a size; what was there stays if `keep` is set, the rest gets the colour.
    void Resize(int width, int height, Colour ground, bool keep);
    /// Adds to what the screen must follow.
    void Touch(const QRectF& rect) { Dirty |= rect; }
    void TouchAll() { Dirty = QRectF(0, 0, Width, Height); }

    /// The device place of a point, in the middle of its pixel where the line's width is odd.
    raster::Place PlaceOf(double x, double y, int lineWidth) const {
        const double half = lineWidth % 2 != 0 ? 0.5 : 0.0;
        return {(x * UnitX() + half) * Ratio, (y * UnitY() + half) * Ratio};
    }
    QPainter& Painter();
    const QFontMetricsF& Metrics(double points);
    void DropPainter() { painter_.reset(); }

  private:
    std::unique_ptr<QPainter> painter_;
    double fontPoints_ = -1.0;
    QFont font_;
    std::optional<QFontMetricsF> metrics_;
    bool painterHasFont_ = false;
};

/// The toolkit's pixel of a colour.
raster::Pixel PixelOf(Colour colour);

}  // namespace keelview
