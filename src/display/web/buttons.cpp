#include <memory>

#include "display/control.h"
#include "display/web/native_control.h"
#include "display/web/page_calls.h"

namespace keelview {

namespace {

std::unique_ptr<NativeControl> MakeTicked(ControlKind kind, Container& parent, std::string_view name,
                                          bool value) {
    auto native = std::make_unique<NativeControl>(kind, name, &parent);
    native->Ticked = value;
    if (value) page::PageTick(native.get(), true);
    return native;
}

void Tick(NativeControl& native, bool value) {
    native.Ticked = value;
    page::PageTick(&native, value);
}

}  // namespace

Button::Button(Container& parent, std::string_view name, std::string_view caption)
    : Control(std::make_unique<NativeControl>(ControlKind::Button, name, &parent)) {
    SetCaption(caption);
}

void Button::SetCaption(std::string_view caption) {
    Native().SetWords(caption);
}

std::string Button::Caption() const {
    return Native().Words;
}

CheckBox::CheckBox(Container& parent, std::string_view name, std::string_view caption, bool value)
    : Control(MakeTicked(ControlKind::CheckBox, parent, name, value)) {
    SetCaption(caption);
}

void CheckBox::SetCaption(std::string_view caption) {
    Native().SetWords(caption);
}

std::string CheckBox::Caption() const {
    return Native().Words;
}

bool CheckBox::Value() const {
    return Native().Ticked;
}

void CheckBox::SetValue(bool value) {
    if (value == Native().Ticked) return;
    Tick(Native(), value);
    Native().FireClick();
}

void CheckBox::SetStripes(std::span<const Colour> stripes) {
    page::PageStripes(&Native(), stripes.data(), stripes.size());
}

OptionButton::OptionButton(Container& parent, std::string_view name, std::string_view caption, bool value)
    : Control(MakeTicked(ControlKind::Option, parent, name, value)) {
    SetCaption(caption);
}

void OptionButton::SetCaption(std::string_view caption) {
    Native().SetWords(caption);
}

std::string OptionButton::Caption() const {
    return Native().Words;
}

bool OptionButton::Value() const {
    return Native().Ticked;
}

void OptionButton::SetValue(bool value) {
    if (value == Native().Ticked) return;
    Tick(Native(), value);
    if (!value) return;
    if (Native().Parent != nullptr)
        for (NativeControl* other : Native().Parent->Children)
            if (other != &Native() && other->Kind == ControlKind::Option && other->Ticked)
                Tick(*other, false);
    Native().FireClick();
}

}  // namespace keelview
