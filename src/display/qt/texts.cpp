#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextDocument>

#include "display/control.h"
#include "display/qt/convert.h"
#include "display/qt/native_control.h"
#include "display/qt/plates.h"

namespace keelview {

namespace {

std::unique_ptr<NativeControl> MakePlate(Container& parent, std::string_view name, Align align,
                                         BorderStyle border) {
    auto* plate = new TextPlate(NativeControl::Of(parent).Inner, align, border);
    auto native = std::make_unique<NativeControl>(plate, name);
    native->ApplyBack = [plate](Colour colour) { plate->SetGround(colour); };
    native->ApplyFore = [plate](Colour colour) { plate->SetInk(colour); };
    return native;
}

std::unique_ptr<NativeControl> MakeLineEdit(Container& parent, std::string_view name, TextBox::Kind kind) {
    auto* edit = new QLineEdit(NativeControl::Of(parent).Inner);
    edit->setFrame(kind.Border);
    // Boxes of 24 pixels would lose glyphs to the toolkit's own margins.
    edit->setTextMargins(-2, 0, -2, 0);
    edit->setAlignment(Qt::AlignVCenter | (kind.Alignment == Align::Left     ? Qt::AlignLeft
                                           : kind.Alignment == Align::Centre ? Qt::AlignHCenter
                                                                             : Qt::AlignRight));
    auto native = std::make_unique<NativeControl>(edit, name);
    native->ApplyBack = [edit](Colour colour) { TakeColour(*edit, {QPalette::Base}, colour); };
    native->ApplyFore = [edit](Colour colour) { TakeColour(*edit, {QPalette::Text}, colour); };
    return native;
}

std::unique_ptr<NativeControl> MakeTextEdit(Container& parent, std::string_view name, TextBox::Kind kind) {
    auto* edit = new QPlainTextEdit(NativeControl::Of(parent).Inner);
    edit->setTabChangesFocus(true);
    edit->setFrameShape(kind.Border ? QFrame::StyledPanel : QFrame::NoFrame);
    edit->document()->setDocumentMargin(1);
    auto native = std::make_unique<NativeControl>(edit, name);
    native->Watch(edit->viewport());
    native->ApplyBack = [edit](Colour colour) { TakeColour(*edit, {QPalette::Base}, colour); };
    native->ApplyFore = [edit](Colour colour) { TakeColour(*edit, {QPalette::Text}, colour); };
    return native;
}

std::unique_ptr<NativeControl> MakeTextBox(Container& parent, std::string_view name, TextBox::Kind kind) {
    if (kind.ReadOnly)
        return MakePlate(parent, name, kind.Alignment,
                         kind.Border ? BorderStyle::Sunken : BorderStyle::None);
    return kind.MultiLine ? MakeTextEdit(parent, name, kind) : MakeLineEdit(parent, name, kind);
}

}  // namespace

Label::Label(Container& parent, std::string_view name, std::string_view caption)
    : Control(MakePlate(parent, name, Align::Left, BorderStyle::None)) {
    SetCaption(caption);
}

void Label::SetCaption(std::string_view caption) {
    Native().As<TextPlate>().SetText(caption);
}

std::string Label::Caption() const {
    return Native().As<TextPlate>().Text();
}

void Label::SetAlignment(Align alignment) {
    Native().As<TextPlate>().SetAlign(alignment);
}

TextBox::TextBox(Container& parent, std::string_view name, Kind kind)
    : Control(MakeTextBox(parent, name, kind)) {
    const auto changed = [this] { Fire(OnChange); };
    QWidget* widget = Native().Outer;
    if (auto* line = qobject_cast<QLineEdit*>(widget)) {
        QObject::connect(line, &QLineEdit::textChanged, &Native(), changed);
        QObject::connect(line, &QLineEdit::textEdited, &Native(), [this] { Fire(OnTyped); });
        QObject::connect(line, &QLineEdit::editingFinished, &Native(), [this] { Fire(OnEntered); });
    } else if (auto* edit = qobject_cast<QPlainTextEdit*>(widget)) {
        QObject::connect(edit, &QPlainTextEdit::textChanged, &Native(), changed);
    } else {
        SetBackColor(WindowBackground);
    }
}

void TextBox::SetText(std::string_view text) {
    QWidget* widget = Native().Outer;
    if (auto* line = qobject_cast<QLineEdit*>(widget)) {
        const QString converted = ToQt(text);
        if (line->text() == converted) return;
        line->setText(converted);
        line->setCursorPosition(0);
    } else if (auto* edit = qobject_cast<QPlainTextEdit*>(widget)) {
        const QString converted = ToQt(text);
        if (edit->toPlainText() != converted) edit->setPlainText(converted);
    } else {
        auto& plate = Native().As<TextPlate>();
        if (plate.Text() == text) return;
        plate.SetText(text);
        Fire(OnChange);
    }
}

void TextBox::ChooseAll() {
    SetFocus();
    if (auto* line = qobject_cast<QLineEdit*>(Native().Outer.data())) line->selectAll();
}

std::string TextBox::Text() const {
    const QWidget* widget = Native().Outer;
    if (const auto* line = qobject_cast<const QLineEdit*>(widget)) return FromQt(line->text());
    if (const auto* edit = qobject_cast<const QPlainTextEdit*>(widget)) return FromQt(edit->toPlainText());
    return Native().As<TextPlate>().Text();
}

}  // namespace keelview
