#include <algorithm>
#include <memory>

#include "display/control.h"
#include "display/web/native_control.h"
#include "display/web/page_calls.h"

namespace keelview {

namespace {

void ClearItems(NativeControl& native) {
    native.Items.clear();
    native.Chosen = -1;
    native.Words.clear();
    page::PageItem(&native, -1, nullptr, 0);
}

void PutItem(NativeControl& native, std::size_t index, std::string_view item) {
    if (index == native.Items.size()) native.Items.emplace_back();
    native.Items[index] = item;
    page::PageItem(&native, static_cast<int>(index), item.data(), item.size());
}

void ChooseItem(NativeControl& native, int index) {
    native.Chosen = index;
    page::PageChoose(&native, index);
}

void TakeRange(NativeControl& native, int least, int most, int step) {
    native.Least = least;
    native.Most = std::max(least, most);
    const int value = std::clamp(native.Value, native.Least, native.Most);
    const bool moved = value != native.Value;
    native.Value = value;
    page::PageRange(&native, native.Least, native.Most, std::max(1, step), native.Value);
    if (moved) Fire(static_cast<ScrollBar*>(native.Owner)->OnChange);
}

}  // namespace

ComboBox::ComboBox(Container& parent, std::string_view name)
    : Control(std::make_unique<NativeControl>(ControlKind::Combo, name, &parent)) {}

void ComboBox::Clear() {
    ClearItems(Native());
}

void ComboBox::AddItem(std::string_view item) {
    PutItem(Native(), Native().Items.size(), item);
}

int ComboBox::ListCount() const {
    return static_cast<int>(Native().Items.size());
}

int ComboBox::ListIndex() const {
    return Native().Chosen;
}

std::string ComboBox::Text() const {
    return Native().Words;
}

void ComboBox::SetText(std::string_view text) {
    const auto found = std::ranges::find(Native().Items, text);
    Native().Words = text;
    ChooseItem(Native(),
               found == Native().Items.end() ? -1 : static_cast<int>(found - Native().Items.begin()));
}

ListBox::ListBox(Container& parent, std::string_view name)
    : Control(std::make_unique<NativeControl>(ControlKind::List, name, &parent)) {}

// Rows of a page are as high as their letters.
void ListBox::SetRowHeight(int /*height*/) {}

void ListBox::Clear() {
    ClearItems(Native());
}

void ListBox::AddItem(std::string_view item) {
    PutItem(Native(), Native().Items.size(), item);
}

void ListBox::SetItem(int index, std::string_view item) {
    if (index >= 0 && index < ListCount()) PutItem(Native(), static_cast<std::size_t>(index), item);
}

int ListBox::ListCount() const {
    return static_cast<int>(Native().Items.size());
}

int ListBox::ListIndex() const {
    return Native().Chosen;
}

void ListBox::Choose(int index) {
    ChooseItem(Native(), index);
}

std::string ListBox::Item(int index) const {
    return index >= 0 && index < ListCount() ? Native().Items[static_cast<std::size_t>(index)]
                                             : std::string();
}

ScrollBar::ScrollBar(Container& parent, std::string_view name, Way way)
    : Control(std::make_unique<NativeControl>(ControlKind::ScrollBar, name, &parent,
                                              way == Way::Down ? 1 : 0)) {}

void ScrollBar::SetRange(int min, int max) {
    TakeRange(Native(), min, max, 1);
}

void ScrollBar::SetView(int beyond, int line, int /*page*/) {
    TakeRange(Native(), 0, beyond, line);
}

int ScrollBar::Max() const {
    return Native().Most;
}

int ScrollBar::Value() const {
    return Native().Value;
}

void ScrollBar::SetValue(int value) {
    NativeControl& native = Native();
    value = std::clamp(value, native.Least, native.Most);
    if (value == native.Value) return;
    native.Value = value;
    page::PageRange(&native, native.Least, native.Most, 0, value);
    Fire(OnChange);
}

}  // namespace keelview
