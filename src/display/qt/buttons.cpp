#include <QCheckBox>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <algorithm>
#include <span>
#include <vector>

#include "display/control.h"
#include "display/qt/convert.h"
#include "display/qt/native_control.h"
#include "display/stripes.h"

namespace keelview {

namespace {

/// A mnemonic mark of the toolkit is a plain character in our captions.
QString Caption(std::string_view caption) {
    return ToQt(caption).replace("&", "&&");
}

std::string PlainCaption(const QAbstractButton& button) {
    return FromQt(button.text().replace("&&", "&"));
}

void TakeCaption(QAbstractButton& button, std::string_view caption) {
    const QString text = Caption(caption);
    if (button.text() == text) return;
    button.setText(text);
    button.setAccessibleName(ToQt(caption));
}

std::unique_ptr<NativeControl> MakePushButton(Container& parent, std::string_view name) {
    auto* button = new QPushButton(NativeControl::Of(parent).Inner);
    button->setAutoDefault(false);
    auto native = std::make_unique<NativeControl>(button, name);
    native->ClickByMouse = false;
    native->ApplyBack = [button](Colour colour) {
        if (colour == ButtonFace)
            button->setPalette({});
        else
            TakeColour(*button, {QPalette::Button}, colour);
    };
    native->ApplyFore = [button](Colour colour) { TakeColour(*button, {QPalette::ButtonText}, colour); };
    QObject::connect(button, &QPushButton::clicked, native.get(), &NativeControl::FireClick);
    return native;
}

/// A check box or an option: its ground and its text can be coloured, the box itself stays as it is.
std::unique_ptr<NativeControl> MakeChoice(QAbstractButton* choice, std::string_view name, bool value) {
    choice->setChecked(value);
    auto native = std::make_unique<NativeControl>(choice, name);
    native->ClickByMouse = false;
    native->ApplyBack = [choice](Colour colour) {
        TakeColour(*choice, {QPalette::Window, QPalette::Button}, colour);
        choice->setAutoFillBackground(true);
    };
    native->ApplyFore = [choice](Colour colour) { TakeColour(*choice, {QPalette::WindowText}, colour); };
    return native;
}

/// A check box with stripes over its right end.
class StripedCheckBox : public QCheckBox {
  public:
    using QCheckBox::QCheckBox;

    void SetStripes(std::span<const Colour> stripes) {
        if (std::ranges::equal(stripes, stripes_)) return;
        stripes_.assign(stripes.begin(), stripes.end());
        update();
    }

  protected:
    void paintEvent(QPaintEvent* event) override {
        QCheckBox::paintEvent(event);
        QPainter painter(this);
        double left = width() - FieldStripePitch * static_cast<double>(stripes_.size());
        for (const Colour stripe : stripes_) {
            painter.fillRect(QRectF(left, 0, FieldStripe, height()), ToQt(stripe));
            left += FieldStripePitch;
        }
    }

  private:
    std::vector<Colour> stripes_;
};

}  // namespace

Button::Button(Container& parent, std::string_view name, std::string_view caption)
    : Control(MakePushButton(parent, name)) {
    SetCaption(caption);
}

void Button::SetCaption(std::string_view caption) {
    TakeCaption(Native().As<QPushButton>(), caption);
}

std::string Button::Caption() const {
    return PlainCaption(Native().As<QPushButton>());
}

CheckBox::CheckBox(Container& parent, std::string_view name, std::string_view caption, bool value)
    : Control(MakeChoice(new StripedCheckBox(NativeControl::Of(parent).Inner), name, value)) {
    SetCaption(caption);
    QObject::connect(&Native().As<QCheckBox>(), &QCheckBox::toggled, &Native(), &NativeControl::FireClick);
}

void CheckBox::SetCaption(std::string_view caption) {
    TakeCaption(Native().As<QCheckBox>(), caption);
}

std::string CheckBox::Caption() const {
    return PlainCaption(Native().As<QCheckBox>());
}

bool CheckBox::Value() const {
    return Native().As<QCheckBox>().isChecked();
}

void CheckBox::SetValue(bool value) {
    Native().As<QCheckBox>().setChecked(value);
}

void CheckBox::SetStripes(std::span<const Colour> stripes) {
    Native().As<StripedCheckBox>().SetStripes(stripes);
}

OptionButton::OptionButton(Container& parent, std::string_view name, std::string_view caption, bool value)
    : Control(MakeChoice(new QRadioButton(NativeControl::Of(parent).Inner), name, value)) {
    SetCaption(caption);
    QObject::connect(&Native().As<QRadioButton>(), &QRadioButton::toggled, &Native(), [this](bool on) {
        if (on) Native().FireClick();
    });
    QObject::connect(&Native().As<QRadioButton>(), &QRadioButton::pressed, &Native(),
                     [this] { selectedBefore_ = Value(); });
    QObject::connect(&Native().As<QRadioButton>(), &QRadioButton::clicked, &Native(), [this] {
        if (selectedBefore_) Fire(OnAgain);
    });
}

void OptionButton::SetCaption(std::string_view caption) {
    TakeCaption(Native().As<QRadioButton>(), caption);
}

std::string OptionButton::Caption() const {
    return PlainCaption(Native().As<QRadioButton>());
}

bool OptionButton::Value() const {
    return Native().As<QRadioButton>().isChecked();
}

void OptionButton::SetValue(bool value) {
    auto& option = Native().As<QRadioButton>();
    if (value) {
        option.setChecked(true);
        return;
    }
    // An exclusive button refuses to be the one that nobody has taken over from.
    option.setAutoExclusive(false);
    option.setChecked(false);
    option.setAutoExclusive(true);
}

}  // namespace keelview
