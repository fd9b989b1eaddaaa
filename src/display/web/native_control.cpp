#include "display/web/native_control.h"

#include <algorithm>
#include <cmath>

#include "display/web/page_calls.h"
#include "display/whole_pixels.h"

namespace keelview {

namespace {

bool KnowsItsClicks(ControlKind kind) {
    return kind == ControlKind::Button || kind == ControlKind::CheckBox || kind == ControlKind::Option ||
           kind == ControlKind::Combo;
}

}  // namespace

int BorderWidth(BorderStyle border) {
    return border == BorderStyle::Sunken ? 2 : border == BorderStyle::Flat ? 1 : 0;
}

double PixelsOfPoints(double points) {
    const double pixels = std::isfinite(points) ? std::clamp(points * 96.0 / 72.0, 1.0, 1000.0) : 12.0;
    return static_cast<double>(std::lround(pixels));
}

NativeControl::NativeControl(ControlKind kind, std::string_view name, const Container* parent, int look)
    : Kind(kind), Parent(parent != nullptr ? &Of(*parent) : nullptr) {
    if (Parent != nullptr) {
        Parent->Children.push_back(this);
        FontPixels = Parent->FontPixels;
    }
    page::PageMake(this, Parent, static_cast<int>(kind), look, name.data(), name.size());
}

NativeControl::~NativeControl() {
    if (Parent != nullptr) std::erase(Parent->Children, this);
    for (NativeControl* child : Children) child->Parent = nullptr;
    page::PageRemove(this);
}

bool NativeControl::IsEnabled() const {
    return EnabledByOwner && (Parent == nullptr || Parent->IsEnabled());
}

void NativeControl::SetWords(std::string_view words) {
    if (Words == words) return;
    Words = words;
    page::PageText(this, words.data(), words.size());
}

void NativeControl::SetFontPixels(double pixels, bool bold) {
    page::PageFont(this, pixels, bold);
    std::vector<NativeControl*> all{this};
    for (std::size_t i = 0; i < all.size(); ++i) {
        all[i]->FontPixels = pixels;
        all.insert(all.end(), all[i]->Children.begin(), all[i]->Children.end());
    }
}

void NativeControl::FireClick() {
    if (Owner != nullptr) Fire(Owner->OnClick);
}

void NativeControl::OnPointer(Pointer what, MouseEvent event) {
    if (Owner == nullptr) return;
    const Point at = InScale({event.X, event.Y});
    const Point pixel{event.X, event.Y};
    event.X = at.X;
    event.Y = at.Y;
    if (!IsEnabled()) {
        if (what != Pointer::Move) return;
        if (Owner->OnGreyMove) return Fire(Owner->OnGreyMove, event);
        // Over a grey control that has nothing to tell the pointer is over what lies below it.
        if (Parent == nullptr) return;
        event.X = pixel.X + Left + Edge;
        event.Y = pixel.Y + Top + Edge;
        return Parent->OnPointer(what, event);
    }
    if (what == Pointer::Leave) return Fire(Owner->OnMouseLeave);
    if (what == Pointer::Move) {
        const bool free = event.Button == MouseButton::None;
        if (!free || !TakeMove(pixel)) Fire(Owner->OnMouseMove, event);
        return;
    }
    const bool left = event.Button == MouseButton::Left;
    if (what == Pointer::Down) {
        if (left) pressed_ = true;
        selectedBefore_ = Ticked;
        return Fire(Owner->OnMouseDown, event);
    }
    const bool inside = pixel.X >= 0 && pixel.Y >= 0 && pixel.X < Width && pixel.Y < Height;
    const bool click = left && pressed_ && inside && !KnowsItsClicks(Kind);
    if (left) pressed_ = false;
    Fire(Owner->OnMouseUp, event);
    if (click) FireClick();
}

bool NativeControl::OnWheelTurn(WheelEvent event) {
    if (Owner == nullptr || !IsEnabled() || !Owner->OnWheel) return false;
    const Point at = InScale({event.X, event.Y});
    event.X = at.X;
    event.Y = at.Y;
    Fire(Owner->OnWheel, event);
    return true;
}

void NativeControl::OnTick(bool ticked) {
    if (Kind == ControlKind::Option && ticked == Ticked) {
        if (selectedBefore_) Fire(static_cast<OptionButton*>(Owner)->OnAgain);
        return;
    }
    if (Kind == ControlKind::Option)
        static_cast<OptionButton*>(Owner)->SetValue(ticked);
    else
        static_cast<CheckBox*>(Owner)->SetValue(ticked);
}

void NativeControl::OnValue(int value) {
    static_cast<ScrollBar*>(Owner)->SetValue(value);
}

void NativeControl::OnText(std::string_view words) {
    Words = words;
    auto* const box = static_cast<TextBox*>(Owner);
    Fire(box->OnChange);
    Fire(box->OnTyped);
}

void NativeControl::OnTextDone() {
    Fire(static_cast<TextBox*>(Owner)->OnEntered);
}

void NativeControl::OnItem(int index) {
    Chosen = index;
    if (index >= 0 && index < static_cast<int>(Items.size()))
        Words = Items[static_cast<std::size_t>(index)];
    FireClick();
}

Control::Control(std::unique_ptr<NativeControl> native) : native_(std::move(native)) {
    native_->Owner = this;
}

Control::~Control() = default;

double Control::Left() const {
    return native_->Left;
}

double Control::Top() const {
    return native_->Top;
}

double Control::Width() const {
    return native_->Width;
}

double Control::Height() const {
    return native_->Height;
}

void Control::Move(double left, double top) {
    Control::Move(left, top, native_->Width, native_->Height);
}

void Control::Move(double left, double top, double width, double height) {
    NativeControl& native = *native_;
    const int places[] = {WholePixels(left), WholePixels(top), WholeSize(width), WholeSize(height)};
    int* const kept[] = {&native.Left, &native.Top, &native.Width, &native.Height};
    bool same = true;
    for (int i = 0; i < 4; ++i) {
        same = same && *kept[i] == places[i];
        *kept[i] = places[i];
    }
    if (!same) page::PagePlace(&native, native.Left, native.Top, native.Width, native.Height);
}

bool Control::Visible() const {
    return native_->Visible;
}

void Control::SetVisible(bool visible) {
    if (visible == native_->Visible) return;
    native_->Visible = visible;
    page::PageShow(native_.get(), visible);
}

bool Control::Enabled() const {
    return native_->EnabledByOwner;
}

void Control::SetEnabled(bool enabled) {
    if (enabled == native_->EnabledByOwner) return;
    native_->EnabledByOwner = enabled;
    page::PageEnable(native_.get(), enabled);
}

void Control::SetBackColor(Colour colour) {
    if (native_->Back == colour) return;
    native_->Back = colour;
    page::PageBack(native_.get(), colour);
}

void Control::SetForeColor(Colour colour) {
    if (native_->Fore == colour) return;
    native_->Fore = colour;
    page::PageInk(native_.get(), colour);
}

Colour Control::GetBackColor() const {
    return native_->Back.value_or(ButtonFace);
}

Colour Control::GetForeColor() const {
    return native_->Fore.value_or(WindowText);
}

void Control::SetFont(const std::string& /*fontName*/, double points, bool bold) {
    native_->SetFontPixels(PixelsOfPoints(points), bold);
}

void Control::SetFocus() {
    page::PageFocus(native_.get(), false);
}

void Control::SetTabStop() {
    page::PageTabStop(native_.get());
}

void Control::Raise() {
    page::PageRaise(native_.get());
}

double Control::TextWidth(std::string_view text) const {
    return page::PageMeasure(text.data(), text.size(), native_->FontPixels, false);
}

}  // namespace keelview
