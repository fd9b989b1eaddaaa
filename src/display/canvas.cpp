#include "display/canvas.h"

#include <cmath>
#include <utility>
#include <vector>

#include "base/parallel.h"
#include "display/canvas_platform.h"
#include "display/raster.h"

namespace keelview {

namespace {

// Dashes of the dotted style, pixels.
constexpr double DashLength = 3.0;

// Texts and pictures further out than this cannot reach the image.
constexpr double FarOut = 1e6;

// Smooth edges reach beyond what is drawn by less than this, pixels.
constexpr double EdgeRoom = 2.0;

bool Near(double x, double y) {
    return std::abs(x) < FarOut && std::abs(y) < FarOut;
}

}  // namespace

Canvas::Canvas(Ground ground, int longestSide)
    : ground_(ground), longestSide_(longestSide), image_(Blank(0, 0)), pen_(MakePen(image_)) {}

Canvas::~Canvas() = default;

void Canvas::SetUserScale(double scaleWidth, double scaleHeight) {
    userWidth_ = scaleWidth;
    userHeight_ = scaleHeight;
}

double Canvas::ScaleWidth() const {
    return userWidth_ > 0.0 ? userWidth_ : width_;
}

double Canvas::ScaleHeight() const {
    return userHeight_ > 0.0 ? userHeight_ : height_;
}

/// An image of a size in pixels: as sharp as the screen, unless it would grow without bound.
Pixels Canvas::Blank(int width, int height, std::vector<Pixel> bits) const {
    const double screen = ScreenRatio();
    const double longest = std::max({1.0, width * screen, height * screen});
    Pixels image;
    image.Ratio = screen * std::min(1.0, longestSide_ / longest);
    image.Width = std::max(1, static_cast<int>(std::ceil(width * image.Ratio)));
    image.Height = std::max(1, static_cast<int>(std::ceil(height * image.Ratio)));
    image.Opaque = ground_ != Ground::Clear;
    image.Bits = std::move(bits);
    image.Bits.assign(static_cast<std::size_t>(image.Width) * static_cast<std::size_t>(image.Height),
                      GroundPixel());
    return image;
}

void Canvas::RenewImage(int width, int height) {
    pen_ = MakePen(image_);
    width_ = std::max(0, width);
    height_ = std::max(0, height);
    image_ = Blank(width_, height_, std::move(image_.Bits));
    CurrentX = 0.0;
    CurrentY = 0.0;
    ChangedAll();
}

void Canvas::ResizeImage(int width, int height) {
    if (width == width_ && height == height_) return;
    pen_ = MakePen(image_);
    width_ = std::max(0, width);
    height_ = std::max(0, height);
    const Pixels before = std::exchange(image_, Blank(width_, height_));
    if (before.Ratio == image_.Ratio)
        raster::LayOver(image_, before, 0, 0);
    else
        pen_->DrawPicture(before, {0.0, 0.0});
    ChangedAll();
}

/// The device pixel of a point, in its middle where the line's width is odd.
Point Canvas::PlaceOf(double x, double y, int lineWidth) const {
    const double half = lineWidth % 2 != 0 ? 0.5 : 0.0;
    return {(x * UnitX() + half) * image_.Ratio, (y * UnitY() + half) * image_.Ratio};
}

raster::Stroke Canvas::StrokeOf(Colour colour) const {
    return {.Colour = PixelOf(colour),
            .Width = PenWidth() * image_.Ratio,
            .Dash = Style == DrawStyle::Dotted ? DashLength * image_.Ratio : 0.0};
}

/// Tells of what was drawn around a box of device pixels, with room for the pen.
void Canvas::ChangedAround(const Bounds& box, double room) {
    const double ratio = image_.Ratio;
    const Bounds part{{box.Low.X / ratio, box.Low.Y / ratio}, {box.High.X / ratio, box.High.Y / ratio}};
    Changed(part.Grown(room + EdgeRoom));
}

void Canvas::ChangedAll() {
    Changed({{0.0, 0.0}, {static_cast<double>(width_), static_cast<double>(height_)}});
}

void Canvas::Line(double x1, double y1, double x2, double y2, Colour colour) {
    const raster::Stroke stroke = StrokeOf(colour);
    const Point from = PlaceOf(x1, y1, PenWidth());
    const Point to = PlaceOf(x2, y2, PenWidth());
    CurrentX = x2;
    CurrentY = y2;
    const Bounds reach = raster::ReachOf(image_, stroke);
    if ((raster::SideOf(reach, from) & raster::SideOf(reach, to)) != 0) return;
    raster::DrawSegment(image_, from, to, stroke);
    Bounds box;
    box.Add(from);
    box.Add(to);
    ChangedAround(box, PenWidth());
}

void Canvas::Line(double x1, double y1, double x2, double y2) {
    Line(x1, y1, x2, y2, ForeColor);
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
    // Corners are whole pixels, and the pixel of the far corner belongs to the box.
    const auto device = [this](double pixels) { return std::round(pixels * image_.Ratio); };
    const double left = device(std::round(std::min(x1, x2) * UnitX()));
    const double top = device(std::round(std::min(y1, y2) * UnitY()));
    const double right = device(std::round(std::max(x1, x2) * UnitX()) + 1.0);
    const double bottom = device(std::round(std::max(y1, y2) * UnitY()) + 1.0);
    CurrentX = x2;
    CurrentY = y2;
    raster::FillRows(image_, left, top, right, bottom, PixelOf(colour));
    ChangedAround({{left, top}, {right, bottom}}, 0.0);
}

void Canvas::Polyline(std::span<const Point> points, Colour colour) {
    if (points.size() < 2) return;
    DrawLine({.Points = points}, StrokeOf(colour));
    CurrentX = points.back().X;
    CurrentY = points.back().Y;
    ChangedAll();
}

// Each band of the image is drawn by itself, all lines in their order.
void Canvas::Lines(std::span<const ColouredLine> lines) {
    constexpr int bands = 4;  // each takes a walk over all points
    ForEachInParallel(bands, [&](int band) {
        for (const ColouredLine& line : lines)
            DrawLine(line, raster::InBand(StrokeOf(line.Ink), image_, band - 1, bands));
    });
    ChangedAll();
}

void Canvas::DrawLine(const ColouredLine& line, const raster::Stroke& stroke) {
    const double scaleX = UnitX() * image_.Ratio;
    const double scaleY = UnitY() * image_.Ratio;
    const Point shift = PlaceOf(0.0, 0.0, PenWidth());
    const Bounds reach = raster::ReachOf(image_, stroke);
    Point from;
    unsigned fromSide = 0;
    for (std::size_t i = 0; i < line.Points.size(); ++i) {
        const Point to{line.Points[i].X * scaleX + shift.X, line.Points[i].Y * scaleY + shift.Y};
        const unsigned toSide = raster::SideOf(reach, to);
        const bool joined = line.Separate ? i % 2 == 1 : i > 0;
        if (joined && (fromSide & toSide) == 0) raster::DrawSegment(image_, from, to, stroke);
        from = to;
        fromSide = toSide;
    }
}

void Canvas::Segments(std::span<const Point> points, Colour colour) {
    if (points.size() < 2) return;
    DrawLine({.Points = points, .Separate = true}, StrokeOf(colour));
    const Point& end = points[points.size() / 2 * 2 - 1];
    CurrentX = end.X;
    CurrentY = end.Y;
    ChangedAll();
}

void Canvas::Circle(double x, double y, double radius, Colour colour) {
    const double pixels = radius * UnitX();
    const double reach = pixels * image_.Ratio;
    const Point centre = PlaceOf(x, y, 1);
    // A circle of one pixel is a dot: a hole in it could not be seen as one.
    const bool dot = pixels <= 1.0;
    const Pixel outline = PixelOf(colour);
    raster::DrawRing(image_, centre, reach, PenWidth() * image_.Ratio, outline,
                     dot || Fill == FillStyle::Solid, dot ? outline : PixelOf(FillColor));
    CurrentX = x;
    CurrentY = y;
    ChangedAround(Bounds{centre, centre}.Grown(reach), PenWidth());
}

void Canvas::Circle(double x, double y, double radius) {
    Circle(x, y, radius, ForeColor);
}

void Canvas::Polygon(std::span<const Point> points) {
    if (points.empty()) return;
    const double half = PenWidth() % 2 != 0 ? 0.5 : 0.0;
    std::vector<Point> corners;
    corners.reserve(points.size());
    Bounds box;
    for (const Point& point : points) {
        corners.push_back({(std::floor(point.X + 0.5) + half) * image_.Ratio,
                           (std::floor(point.Y + 0.5) + half) * image_.Ratio});
        box.Add(corners.back());
    }
    if (Fill == FillStyle::Solid) raster::FillPolygon(image_, corners, PixelOf(FillColor));
    const raster::Stroke stroke{.Colour = PixelOf(ForeColor), .Width = PenWidth() * image_.Ratio};
    for (std::size_t i = 0; i < corners.size(); ++i)
        raster::DrawSegment(image_, corners[i], corners[(i + 1) % corners.size()], stroke);
    ChangedAround(box, PenWidth());
}

void Canvas::Cls() {
    // Where no four pixels are filled at once, a row is copied much faster than it is filled.
    if (image_.Height > 0) std::fill_n(image_.Row(0), image_.Width, GroundPixel());
    for (int y = 1; y < image_.Height; ++y) std::copy_n(image_.Row(0), image_.Width, image_.Row(y));
    CurrentX = 0.0;
    CurrentY = 0.0;
    ChangedAll();
}

void Canvas::Print(std::string_view text) {
    const double lineHeight = pen_->LineHeight({FontSize, FontItalic});
    const double x = CurrentX * UnitX();
    double y = CurrentY * UnitY();
    for (std::size_t begin = 0, end = 0; end != std::string_view::npos; begin = end + 1) {
        end = text.find('\n', begin);
        std::string_view line = text.substr(begin, end == std::string_view::npos ? end : end - begin);
        if (end != std::string_view::npos && line.ends_with('\r')) line.remove_suffix(1);
        if (Near(x, y) && !line.empty()) {
            const double width = pen_->DrawText(line, {x, y}, {FontSize, FontItalic}, ForeColor);
            Changed(Bounds{{x, y}, {x + width, y + lineHeight}}.Grown(2 * EdgeRoom));
        }
        y += lineHeight;
    }
    CurrentX = 0.0;
    CurrentY = y / UnitY();
}

void Canvas::PrintAt(double x, double y, std::string_view text) {
    CurrentX = x;
    CurrentY = y;
    Print(text);
}

double Canvas::TextWidth(std::string_view text) const {
    return pen_->TextWidth(text, {FontSize, FontItalic}) / UnitX();
}

void Canvas::PaintPicture(const Picture& picture, double x, double y) {
    if (picture.Empty() || !Near(x, y)) return;
    const Pixels& image = picture.Data();
    const Point at{std::round(x * UnitX()), std::round(y * UnitY())};
    const double left = at.X * image_.Ratio;
    const double top = at.Y * image_.Ratio;
    if (image.Ratio == image_.Ratio && left == std::round(left) && top == std::round(top))
        raster::LayOver(image_, image, static_cast<int>(left), static_cast<int>(top));
    else
        pen_->DrawPicture(image, at);
    Changed({at, {at.X + picture.Width(), at.Y + picture.Height()}});
}

Picture Canvas::Image() const {
    return Picture(image_);
}

}  // namespace keelview
