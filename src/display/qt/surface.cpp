#include "display/control.h"
#include "display/qt/convert.h"
#include "display/qt/native_control.h"
#include "display/qt/plates.h"
#include "display/qt/surface_board.h"

namespace keelview {

namespace {

std::unique_ptr<NativeControl> MakeGround(Container& parent, std::string_view name, BorderStyle border) {
    auto* outer = new GroundWidget(NativeControl::Of(parent).Inner, border);
    auto* inner = border == BorderStyle::None ? nullptr : new QWidget(outer);
    auto native = std::make_unique<NativeControl>(outer, name, inner);
    native->ApplyBack = [outer](Colour colour) { outer->SetGround(colour); };
    return native;
}

SurfaceBoard& BoardOf(const NativeControl& native) {
    return static_cast<SurfaceBoard&>(*native.Inner);
}

}  // namespace

Panel::Panel(Container& parent, std::string_view name, BorderStyle border)
    : Container(MakeGround(parent, name, border)) {
    SetBackColor(ButtonFace);
}

Frame::Frame(Container& parent, std::string_view name, std::string_view caption)
    : Container(MakeGround(parent, name, BorderStyle::None)) {
    Native().ApplyFore = [this](Colour colour) {
        auto& ground = Native().As<GroundWidget>();
        ground.SetTitle(ground.Title(), colour);
    };
    SetCaption(caption);
}

void Frame::SetCaption(std::string_view caption) {
    Native().As<GroundWidget>().SetTitle(ToQt(caption), GetForeColor());
}

// The board is made with the surface's image, which exists only after the container is built.
Surface::Surface(Container& parent, std::string_view name, BorderStyle border)
    : Container([&] {
          auto* outer = new GroundWidget(NativeControl::Of(parent).Inner, border);
          return std::make_unique<NativeControl>(outer, name, new SurfaceBoard(outer));
      }()) {
    SurfaceBoard& board = BoardOf(Native());
    board.SetImage(&Retained());
    Native().TakeMove = [&board](const QPointF& at) { return board.MoveOnSprite(at); };
    Native().ToScale = [this](const QPointF& at) { return QPointF(at.x() / UnitX(), at.y() / UnitY()); };
    Surface::Move(0, 0, 0, 0);
}

Surface::~Surface() {
    if (Native().Inner) BoardOf(Native()).SetImage(nullptr);
}

void Surface::Move(double left, double top, double width, double height) {
    Container::Move(left, top, width, height);
    ResizeImage(Native().Inner->width(), Native().Inner->height());
}

void Surface::SetBackColor(Colour colour) {
    BackColor = colour;
    Cls();
}

void Surface::ShowPicture(const Picture& picture) {
    const int border = 2 * BorderWidth(Native().As<GroundWidget>().Border());
    Move(Left(), Top(), picture.Width() + border, picture.Height() + border);
    Cls();
    PaintPicture(picture, 0, 0);
}

void Surface::Refresh() {
    BoardOf(Native()).ShowNow();
}

void Surface::Changed(const Bounds& part) {
    BoardOf(Native()).Follow(part);
}

std::shared_ptr<Floats> FloatsOf(const Surface& surface) {
    return BoardOf(NativeControl::Of(surface)).Floating;
}

}  // namespace keelview
