#include "display/control.h"

#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

#include "display/qt/convert.h"
#include "display/qt/native_control.h"
#include "display/qt/plates.h"
#include "display/whole_pixels.h"

namespace keelview {

Control::Control(std::unique_ptr<NativeControl> native) : native_(std::move(native)) {
    native_->Owner = this;
}

Control::~Control() = default;

double Control::Left() const {
    return native_->Outer->x();
}

double Control::Top() const {
    return native_->Outer->y();
}

double Control::Width() const {
    return native_->Outer->width();
}

double Control::Height() const {
    return native_->Outer->height();
}

void Control::Move(double left, double top) {
    native_->Outer->move(WholePixels(left), WholePixels(top));
}

void Control::Move(double left, double top, double width, double height) {
    QWidget& outer = *native_->Outer;
    const QRect place(WholePixels(left), WholePixels(top), WholeSize(width), WholeSize(height));
    if (outer.isWindow()) {
        if (outer.minimumSize() == outer.maximumSize()) outer.setFixedSize(place.size());
        outer.resize(place.size());
        outer.move(place.topLeft());
        return;
    }
    outer.setGeometry(place);
    if (native_->Inner == native_->Outer) return;
    const int edge = BorderWidth(native_->As<GroundWidget>().Border());
    native_->Inner->setGeometry(edge, edge, std::max(0, place.width() - 2 * edge),
                                std::max(0, place.height() - 2 * edge));
}

bool Control::Visible() const {
    return !native_->Outer->isHidden();
}

void Control::SetVisible(bool visible) {
    if (visible != Visible()) native_->Outer->setVisible(visible);
}

bool Control::Enabled() const {
    return native_->EnabledByOwner;
}

void Control::SetEnabled(bool enabled) {
    native_->EnabledByOwner = enabled;
    native_->Outer->setEnabled(enabled);
}

void Control::SetBackColor(Colour colour) {
    if (native_->Back == colour) return;
    native_->Back = colour;
    if (native_->ApplyBack) native_->ApplyBack(colour);
}

void Control::SetForeColor(Colour colour) {
    if (native_->Fore == colour) return;
    native_->Fore = colour;
    if (native_->ApplyFore) native_->ApplyFore(colour);
}

Colour Control::GetBackColor() const {
    return native_->Back.value_or(ButtonFace);
}

Colour Control::GetForeColor() const {
    return native_->Fore.value_or(WindowText);
}

void Control::SetFont(const std::string& fontName, double points, bool bold) {
    native_->Outer->setFont(UiFont(fontName, points, bold));
}

void Control::SetFocus() {
    native_->Outer->setFocus(Qt::OtherFocusReason);
}

void Control::SetTabStop() {
    native_->Outer->setFocusPolicy(Qt::TabFocus);
    native_->ClickByKey = true;
}

void Control::Raise() {
    native_->Outer->raise();
}

double Control::TextWidth(std::string_view text) const {
    return QFontMetricsF(native_->Outer->font()).horizontalAdvance(ToQt(text));
}

}  // namespace keelview
