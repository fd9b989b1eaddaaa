#include <memory>

#include "display/control.h"
#include "display/web/native_control.h"
#include "display/web/page_calls.h"

namespace keelview {

namespace {

/// What the page knows of a text: 0 to 2 for its alignment, and 4 where it has a border.
std::unique_ptr<NativeControl> MakeTextBox(Container& parent, std::string_view name, TextBox::Kind kind) {
    const ControlKind what = kind.ReadOnly    ? ControlKind::Plate
                             : kind.MultiLine ? ControlKind::TextArea
                                              : ControlKind::Field;
    const int look = static_cast<int>(kind.Alignment) + (kind.Border ? 4 : 0);
    return std::make_unique<NativeControl>(what, name, &parent, look);
}

}  // namespace

Label::Label(Container& parent, std::string_view name, std::string_view caption)
    : Control(std::make_unique<NativeControl>(ControlKind::Plate, name, &parent)) {
    SetCaption(caption);
}

void Label::SetCaption(std::string_view caption) {
    Native().SetWords(caption);
}

std::string Label::Caption() const {
    return Native().Words;
}

void Label::SetAlignment(Align alignment) {
    page::PageAlign(&Native(), static_cast<int>(alignment));
}

TextBox::TextBox(Container& parent, std::string_view name, Kind kind)
    : Control(MakeTextBox(parent, name, kind)) {
    if (kind.ReadOnly) SetBackColor(WindowBackground);
}

void TextBox::SetText(std::string_view text) {
    if (Native().Words == text) return;
    Native().SetWords(text);
    Fire(OnChange);
}

std::string TextBox::Text() const {
    return Native().Words;
}

void TextBox::ChooseAll() {
    page::PageFocus(&Native(), true);
}

}  // namespace keelview
