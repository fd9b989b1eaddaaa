#include "display/canvas.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "display/qt/canvas_impl.h"
#include "display/qt/convert.h"

namespace keelview {

namespace {

// Dashes of the dotted style, pixels.
constexpr double DashLength = 3.0;

// Texts and pictures further out than this cannot reach the image.
constexpr double FarOut = 1e6;

bool Near(double x, double y) {
    return std::abs(x) < FarOut && std::abs(y) < FarOut;
}

/// The box around points in pixels of the layout, with room for the pen.
QRectF BoxAround(double x1, double y1, double x2, double y2, double room) {
    const double reach = room + 2.0;
    return {QPointF(std::min(x1, x2) - reach, std::min(y1, y2) - reach),
            QPointF(std::max(x1, x2) + reach, std::max(y1, y2) + reach)};
}

}  // namespace

raster::Pixel PixelOf(Colour colour) {
    const ColourParts parts = PartsOf(colour);
    return 0xFF000000U | static_cast<unsigned>(parts.Red) << 16U |
           static_cast<unsigned>(parts.Green) << 8U | static_cast<unsigned>(parts.Blue);
}

Canvas::Canvas() : impl_(std::make_unique<Impl>()) {}
Canvas::~Canvas() = default;

void Canvas::SetUserScale(double scaleWidth, double scaleHeight) {
    impl_->UserWidth = scaleWidth;
    impl_->UserHeight = scaleHeight;
}

double Canvas::ScaleWidth() const {
    return impl_->UserWidth > 0.0 ? impl_->UserWidth : impl_->Width;
}

double Canvas::ScaleHeight() const {
    return impl_->UserHeight > 0.0 ? impl_->UserHeight : impl_->Height;
}

void Canvas::ResizeImage(int width, int height) {
    impl_->Resize(width, height, BackColor, true);
    Changed();
}

void Canvas::Line(double x1, double y1, double x2, double y2, Colour colour) {
    Impl& impl = *impl_;
    const int width = std::max(1, DrawWidth);
    const raster::Stroke stroke{.Colour = PixelOf(colour),
                                .Width = width * impl.Ratio,
                                .Dash = Style == DrawStyle::Dotted ? DashLength * impl.Ratio : 0.0};
    const raster::Place from = impl.PlaceOf(x1, y1, width);
    const raster::Place to = impl.PlaceOf(x2, y2, width);
    CurrentX = x2;
    CurrentY = y2;
    if ((raster::SideOf(impl.Pixels, from, stroke.Width) & raster::SideOf(impl.Pixels, to, stroke.Width)) !=
        0)
        return;
    raster::DrawSegment(impl.Pixels, from, to, stroke);
    impl.Touch(
        BoxAround(from.X / impl.Ratio, from.Y / impl.Ratio, to.X / impl.Ratio, to.Y / impl.Ratio, width));
    Changed();
}

void Canvas::Line(double x1, double y1, double x2, double y2) {
    Line(x1, y1, x2, y2, ForeColor);
}

void Canvas::LineTo(double x2, double y2, Colour colour) {
    Line(CurrentX, CurrentY, x2, y2, colour);
}

void Canvas::LineTo(double x2, double y2) {
    Line(CurrentX, CurrentY, x2, y2, ForeColor);
}

void Canvas::Box(double x1, double y1, double x2, double y2, Colour colour) {
    Line(x1, y1, x2, y1, colour);
    Line(x2, y1, x2, y2, colour);
    Line(x2, y2, x1, y2, colour);
    Line(x1, y2, x1, y1, colour);
    CurrentX = x2;
    CurrentY = y2;
}

void Canvas::FilledBox(double x1, double y1, double x2, double y2, Colour colour) {
    Impl& impl = *impl_;
    const double unitX = impl.UnitX();
    const double unitY = impl.UnitY();
    // Corners are whole pixels, and the pixel of the far corner belongs to the box.
    const double left = std::round(std::min(x1, x2) * unitX);
    const double top = std::round(std::min(y1, y2) * unitY);
    const double right = std::round(std::max(x1, x2) * unitX) + 1.0;
    const double bottom = std::round(std::max(y1, y2) * unitY) + 1.0;
    CurrentX = x2;
    CurrentY = y2;
    raster::FillRows(impl.Pixels, std::round(left * impl.Ratio), std::round(top * impl.Ratio),
                     std::round(right * impl.Ratio), std::round(bottom * impl.Ratio), PixelOf(colour));
    impl.Touch(BoxAround(left, top, right, bottom, 0.0));
    Changed();
}

void Canvas::Polyline(std::span<const Point> points, Colour colour) {
    if (points.size() < 2) return;
    Impl& impl = *impl_;
    const int width = std::max(1, DrawWidth);
    const raster::Stroke stroke{.Colour = PixelOf(colour),
                                .Width = width * impl.Ratio,
                                .Dash = Style == DrawStyle::Dotted ? DashLength * impl.Ratio : 0.0};
    const double scaleX = impl.UnitX() * impl.Ratio;
    const double scaleY = impl.UnitY() * impl.Ratio;
    const raster::Place shift = impl.PlaceOf(0.0, 0.0, width);
    raster::Place from{points[0].X * scaleX + shift.X, points[0].Y * scaleY + shift.Y};
    unsigned fromSide = raster::SideOf(impl.Pixels, from, stroke.Width);
    for (const Point& point : points.subspan(1)) {
        const raster::Place to{point.X * scaleX + shift.X, point.Y * scaleY + shift.Y};
        const unsigned toSide = raster::SideOf(impl.Pixels, to, stroke.Width);
        if ((fromSide & toSide) == 0) raster::DrawSegment(impl.Pixels, from, to, stroke);
        from = to;
        fromSide = toSide;
    }
    CurrentX = points.back().X;
    CurrentY = points.back().Y;
    impl.TouchAll();
    Changed();
}

void Canvas::Segments(std::span<const Point> points, Colour colour) {
    Impl& impl = *impl_;
    const int width = std::max(1, DrawWidth);
    const raster::Stroke stroke{.Colour = PixelOf(colour),
                                .Width = width * impl.Ratio,
                                .Dash = Style == DrawStyle::Dotted ? DashLength * impl.Ratio : 0.0};
    for (std::size_t i = 0; i + 1 < points.size(); i += 2) {
        const raster::Place from = impl.PlaceOf(points[i].X, points[i].Y, width);
        const raster::Place to = impl.PlaceOf(points[i + 1].X, points[i + 1].Y, width);
        raster::DrawSegment(impl.Pixels, from, to, stroke);
        CurrentX = points[i + 1].X;
        CurrentY = points[i + 1].Y;
    }
    impl.TouchAll();
    Changed();
}

void Canvas::Circle(double x, double y, double radius, Colour colour) {
    Impl& impl = *impl_;
    const double pixels = radius * impl.UnitX();
    const int width = std::max(1, DrawWidth);
    const raster::Place centre = impl.PlaceOf(x, y, 1);
    // A circle of one pixel is a dot: a hole in it could not be seen as one.
    const bool dot = pixels <= 1.0;
    const raster::Pixel outline = PixelOf(colour);
    raster::DrawRing(impl.Pixels, centre, pixels * impl.Ratio, width * impl.Ratio, outline,
                     dot || Fill == FillStyle::Solid, dot ? outline : PixelOf(FillColor));
    CurrentX = x;
    CurrentY = y;
    const double middleX = centre.X / impl.Ratio;
    const double middleY = centre.Y / impl.Ratio;
    impl.Touch(BoxAround(middleX - pixels, middleY - pixels, middleX + pixels, middleY + pixels, width));
    Changed();
}

void Canvas::Circle(double x, double y, double radius) {
    Circle(x, y, radius, ForeColor);
}

void Canvas::Polygon(std::span<const PixelPoint> points) {
    if (points.empty()) return;
    Impl& impl = *impl_;
    const int width = std::max(1, DrawWidth);
    const double half = width % 2 != 0 ? 0.5 : 0.0;
    std::vector<raster::Place> corners;
    corners.reserve(points.size());
    for (const PixelPoint& point : points)
        corners.push_back({(point.X + half) * impl.Ratio, (point.Y + half) * impl.Ratio});
    if (Fill == FillStyle::Solid) raster::FillPolygon(impl.Pixels, corners, PixelOf(FillColor));
    const raster::Stroke stroke{.Colour = PixelOf(ForeColor), .Width = width * impl.Ratio};
    for (std::size_t i = 0; i < corners.size(); ++i)
        raster::DrawSegment(impl.Pixels, corners[i], corners[(i + 1) % corners.size()], stroke);
    double left = corners[0].X;
    double right = corners[0].X;
    double top = corners[0].Y;
    double bottom = corners[0].Y;
    for (const raster::Place& corner : corners) {
        left = std::min(left, corner.X);
        right = std::max(right, corner.X);
        top = std::min(top, corner.Y);
        bottom = std::max(bottom, corner.Y);
    }
    impl.Touch(
        BoxAround(left / impl.Ratio, top / impl.Ratio, right / impl.Ratio, bottom / impl.Ratio, width));
    Changed();
}

void Canvas::Cls() {
    Impl& impl = *impl_;
    raster::FillRows(impl.Pixels, 0, 0, impl.Pixels.Width, impl.Pixels.Height, PixelOf(BackColor));
    CurrentX = 0.0;
    CurrentY = 0.0;
    impl.TouchAll();
    Changed();
}

void Canvas::Print(std::string_view text) {
    Impl& impl = *impl_;
    const QFontMetricsF& metrics = impl.Metrics(FontSize);
    const double x = CurrentX * impl.UnitX();
    double y = CurrentY * impl.UnitY();
    for (const QString& line : ToQt(text).split('\n')) {
        if (Near(x, y) && !line.isEmpty()) {
            QPainter& painter = impl.Painter();
            const QColor colour = ToQt(ForeColor);
            if (painter.pen().color() != colour) painter.setPen(colour);
            painter.drawText(QPointF(std::round(x), std::round(y) + metrics.ascent()), line);
            // Measuring the text would cost as much as drawing it; no glyph is wider than two heights.
            const double widest = 2.0 * metrics.height() * static_cast<double>(line.size());
            impl.Touch(BoxAround(x, y, x + widest, y + metrics.height(), 2.0));
        }
        y += metrics.height();
    }
    CurrentX = 0.0;
    CurrentY = y / impl.UnitY();
    Changed();
}

void Canvas::PrintAt(double x, double y, std::string_view text) {
    CurrentX = x;
    CurrentY = y;
    Print(text);
}

double Canvas::TextWidth(std::string_view text) const {
    return impl_->Metrics(FontSize).horizontalAdvance(ToQt(text)) / impl_->UnitX();
}

double Canvas::TextHeight(std::string_view text) const {
    const auto lines = 1 + std::count(text.begin(), text.end(), '\n');
    return static_cast<double>(lines) * impl_->Metrics(FontSize).height() / impl_->UnitY();
}

void Canvas::PaintPicture(const Picture& picture, double x, double y) {
    Impl& impl = *impl_;
    if (picture.Empty() || !Near(x, y)) return;
    const QPointF at(std::round(x * impl.UnitX()), std::round(y * impl.UnitY()));
    impl.Painter().drawImage(at, picture.Native()->Image);
    impl.Touch(QRectF(at, QSizeF(picture.Width(), picture.Height())));
    Changed();
}

Picture Canvas::Image() const {
    // A copy of its own: a shared one would be painted on, as the canvas's painter stays open.
    return Picture(std::make_shared<const Picture::Impl>(Picture::Impl{impl_->Image.copy()}));
}

}  // namespace keelview
