#include <algorithm>
#include <cmath>
#include <memory>

#include "display/control.h"
#include "display/web/native_control.h"
#include "display/web/surface_board.h"

namespace keelview {

namespace {

// The image of a sprite is never larger than this; a boat that fills the screen may be a little soft.
constexpr int LargestSprite = 1024;

// Sprites and lines further out than this lie off every screen.
double Limited(double value) {
    return std::isfinite(value) ? std::clamp(value, -1e7, 1e7) : 0.0;
}

std::unique_ptr<NativeControl> MakeGround(ControlKind kind, Container& parent, std::string_view name,
                                          BorderStyle border) {
    auto native = std::make_unique<NativeControl>(kind, name, &parent, static_cast<int>(border));
    native->Edge = BorderWidth(border);
    return native;
}

SurfaceBoard& BoardOf(NativeControl& native) {
    return static_cast<SurfaceBoard&>(native);
}

}  // namespace

Panel::Panel(Container& parent, std::string_view name, BorderStyle border)
    : Container(MakeGround(ControlKind::Panel, parent, name, border)) {
    SetBackColor(ButtonFace);
}

Frame::Frame(Container& parent, std::string_view name, std::string_view caption)
    : Container(MakeGround(ControlKind::Frame, parent, name, BorderStyle::None)) {
    SetCaption(caption);
}

void Frame::SetCaption(std::string_view caption) {
    Native().SetWords(caption);
}

// The image exists only after the container is built.
Surface::Surface(Container& parent, std::string_view name, BorderStyle border)
    : Container(std::make_unique<SurfaceBoard>(parent, name, border)) {
    SurfaceBoard& board = BoardOf(Native());
    board.Image = &Retained();
    board.ToScale = [this](const Point& at) { return Point{at.X / UnitX(), at.Y / UnitY()}; };
    Surface::Move(0, 0, 0, 0);
}

Surface::~Surface() {
    BoardOf(Native()).Image = nullptr;
}

void Surface::Move(double left, double top, double width, double height) {
    Container::Move(left, top, width, height);
    ResizeImage(Native().InnerWidth(), Native().InnerHeight());
}

void Surface::SetBackColor(Colour colour) {
    BackColor = colour;
    Cls();
}

void Surface::ShowPicture(const Picture& picture) {
    const int border = 2 * Native().Edge;
    Move(Left(), Top(), picture.Width() + border, picture.Height() + border);
    Cls();
    PaintPicture(picture, 0, 0);
}

// The page shows what has changed before its screen is next drawn; nothing brings it there sooner.
void Surface::Refresh() {}

void Surface::Changed(const Bounds& part) {
    BoardOf(Native()).Follow(part);
}

struct Sprite::Place {
    explicit Place(SurfaceBoard& board) : Board(board) {}
    SpriteItem Item;
    SurfaceBoard& Board;

    void Follow() const {
        if (Item.Visible) Board.Follow(Item.Reach());
    }
};

Sprite::Sprite(Surface& parent, std::string_view /*name*/, double width, double height)
    : Canvas(Ground::Clear, LargestSprite),
      place_(std::make_unique<Place>(BoardOf(NativeControl::Of(parent)))) {
    place_->Item.Image = &Retained();
    place_->Item.OnMouseMove = &OnMouseMove;
    place_->Board.Add(&place_->Item);
    SetSize(width, height);
}

Sprite::~Sprite() {
    place_->Board.Remove(&place_->Item);
}

void Sprite::Move(double left, double top) {
    if (left == place_->Item.Left && top == place_->Item.Top) return;
    place_->Follow();
    place_->Item.Left = Limited(left);
    place_->Item.Top = Limited(top);
    place_->Follow();
}

void Sprite::SetSize(double width, double height) {
    place_->Follow();
    place_->Item.Width = std::clamp(std::ceil(Limited(width)), 0.0, 1e6);
    place_->Item.Height = std::clamp(std::ceil(Limited(height)), 0.0, 1e6);
    RenewImage(static_cast<int>(place_->Item.Width), static_cast<int>(place_->Item.Height));
}

double Sprite::Left() const {
    return place_->Item.Left;
}

double Sprite::Top() const {
    return place_->Item.Top;
}

double Sprite::Width() const {
    return place_->Item.Width;
}

double Sprite::Height() const {
    return place_->Item.Height;
}

bool Sprite::Visible() const {
    return place_->Item.Visible;
}

void Sprite::SetVisible(bool visible) {
    if (visible == place_->Item.Visible) return;
    place_->Item.Visible = true;
    place_->Follow();
    place_->Item.Visible = visible;
}

void Sprite::Changed(const Bounds& /*part*/) {
    place_->Follow();
}

struct LineObject::Impl {
    explicit Impl(SurfaceBoard& board) : Board(board) {}
    LineItem Item;
    SurfaceBoard& Board;

    void Follow() const {
        if (Item.Visible) Board.Follow(Item.Reach());
    }
};

LineObject::LineObject(Surface& parent, std::string_view /*name*/, Colour colour)
    : impl_(std::make_unique<Impl>(BoardOf(NativeControl::Of(parent)))) {
    impl_->Item.Ink = colour;
    impl_->Board.Add(&impl_->Item);
}

LineObject::~LineObject() {
    impl_->Board.Remove(&impl_->Item);
}

void LineObject::Place(double x1, double y1, double x2, double y2) {
    LineItem& item = impl_->Item;
    if (item.X1 == x1 && item.Y1 == y1 && item.X2 == x2 && item.Y2 == y2) return;
    impl_->Follow();
    item.X1 = Limited(x1);
    item.Y1 = Limited(y1);
    item.X2 = Limited(x2);
    item.Y2 = Limited(y2);
    impl_->Follow();
}

double LineObject::X1() const {
    return impl_->Item.X1;
}

double LineObject::Y1() const {
    return impl_->Item.Y1;
}

double LineObject::X2() const {
    return impl_->Item.X2;
}

double LineObject::Y2() const {
    return impl_->Item.Y2;
}

bool LineObject::Visible() const {
    return impl_->Item.Visible;
}

void LineObject::SetVisible(bool visible) {
    if (visible == impl_->Item.Visible) return;
    impl_->Item.Visible = true;
    impl_->Follow();
    impl_->Item.Visible = visible;
}

void LineObject::SetBorderColor(Colour colour) {
    if (impl_->Item.Ink == colour) return;
    impl_->Item.Ink = colour;
    impl_->Follow();
}

void LineObject::SetStripes(std::span<const Colour> stripes) {
    if (std::ranges::equal(impl_->Item.Stripes, stripes)) return;
    impl_->Item.Stripes.assign(stripes.begin(), stripes.end());
    impl_->Follow();
}

}  // namespace keelview
