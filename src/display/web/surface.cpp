#include <memory>

#include "display/control.h"
#include "display/web/native_control.h"
#include "display/web/surface_board.h"

namespace keelview {

namespace {

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
    // The surface is ours to change, though its image is for others to look at.
    board.Image = const_cast<Pixels*>(&Retained());
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

std::shared_ptr<Floats> FloatsOf(const Surface& surface) {
    return BoardOf(NativeControl::Of(surface)).Floating;
}

}  // namespace keelview
