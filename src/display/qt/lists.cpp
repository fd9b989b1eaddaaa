#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPalette>
#include <QScrollBar>
#include <algorithm>

#include "display/control.h"
#include "display/qt/convert.h"
#include "display/qt/native_control.h"

namespace keelview {

namespace {

void TakeColour(QWidget& widget, QPalette::ColorRole role, Colour colour) {
    QPalette palette = widget.palette();
    palette.setColor(role, ToQt(colour));
    widget.setPalette(palette);
}

/// Tells a click for what the person does in a list, by mouse or by keys.
class PersonsList : public QListWidget {
  public:
    using QListWidget::QListWidget;
    std::function<void()> OnKeyChoice;
    int RowHeight = 0;  ///< 0: as the font has it

  protected:
    void keyPressEvent(QKeyEvent* event) override {
        const QList<QListWidgetItem*> before = selectedItems();
        QListWidget::keyPressEvent(event);
        if (selectedItems() != before && OnKeyChoice) OnKeyChoice();
    }
};

std::unique_ptr<NativeControl> MakeCombo(Container& parent, std::string_view name) {
    auto* combo = new QComboBox(parent.Native().Inner);
    combo->setEditable(true);
    combo->setInsertPolicy(QComboBox::NoInsert);
    combo->setCompleter(nullptr);
    combo->lineEdit()->setTextMargins(-2, 0, -2, 0);
    auto native = std::make_unique<NativeControl>(combo, name);
    native->ClickByMouse = false;
    native->Watch(combo->lineEdit());
    native->ApplyBack = [combo](Colour colour) { TakeColour(*combo, QPalette::Base, colour); };
    native->ApplyFore = [combo](Colour colour) { TakeColour(*combo, QPalette::Text, colour); };
    QObject::connect(combo, &QComboBox::activated, native.get(), &NativeControl::FireClick);
    return native;
}

std::unique_ptr<NativeControl> MakeList(Container& parent, std::string_view name, bool multiSelect) {
    auto* list = new PersonsList(parent.Native().Inner);
    list->setSelectionMode(multiSelect ? QAbstractItemView::MultiSelection
                                       : QAbstractItemView::SingleSelection);
    list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list->setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    list->setUniformItemSizes(true);
    auto native = std::make_unique<NativeControl>(list, name);
    native->Watch(list->viewport());
    list->OnKeyChoice = [control = native.get()] { control->FireClick(); };
    native->ApplyBack = [list](Colour colour) { TakeColour(*list, QPalette::Base, colour); };
    native->ApplyFore = [list](Colour colour) { TakeColour(*list, QPalette::Text, colour); };
    return native;
}

std::unique_ptr<NativeControl> MakeScrollBar(Container& parent, std::string_view name) {
    auto* bar = new QScrollBar(Qt::Horizontal, parent.Native().Inner);
    bar->setFocusPolicy(Qt::StrongFocus);
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    auto native = std::make_unique<NativeControl>(bar, name);
    return native;
}

}  // namespace

ComboBox::ComboBox(Container& parent, std::string_view name) : Control(MakeCombo(parent, name)) {}

void ComboBox::Clear() {
    Native().As<QComboBox>().clear();
    Native().As<QComboBox>().clearEditText();
}

void ComboBox::AddItem(std::string_view item) {
    auto& combo = Native().As<QComboBox>();
    // The toolkit would choose the first item by itself and overwrite what stands there.
    const QString shown = combo.currentText();
    const int chosen = combo.currentIndex();
    combo.addItem(ToQt(item));
    if (combo.currentIndex() == chosen) return;
    combo.setCurrentIndex(chosen);
    combo.setEditText(shown);
}

int ComboBox::ListCount() const {
    return Native().As<QComboBox>().count();
}

int ComboBox::ListIndex() const {
    const auto& combo = Native().As<QComboBox>();
    const int index = combo.currentIndex();
    return index >= 0 && combo.itemText(index) == combo.currentText() ? index : -1;
}

void ComboBox::SetListIndex(int index) {
    auto& combo = Native().As<QComboBox>();
    combo.setCurrentIndex(index >= 0 && index < combo.count() ? index : -1);
    combo.setEditText(combo.itemText(combo.currentIndex()));
}

std::string ComboBox::Text() const {
    return FromQt(Native().As<QComboBox>().currentText());
}

void ComboBox::SetText(std::string_view text) {
    auto& combo = Native().As<QComboBox>();
    const QString converted = ToQt(text);
    combo.setCurrentIndex(combo.findText(converted, Qt::MatchExactly | Qt::MatchCaseSensitive));
    combo.setEditText(converted);
}

ListBox::ListBox(Container& parent, std::string_view name, bool multiSelect)
    : Control(MakeList(parent, name, multiSelect)) {
    QObject::connect(&Native().As<QListWidget>(), &QListWidget::itemDoubleClicked, &Native(),
                     [this] { Fire(OnDoubleClick); });
}

void ListBox::Clear() {
    Native().As<QListWidget>().clear();
}

void ListBox::SetRowHeight(int height) {
    Native().As<PersonsList>().RowHeight = height;
}

void ListBox::AddItem(std::string_view item) {
    auto& list = Native().As<PersonsList>();
    list.addItem(ToQt(item));
    if (list.RowHeight > 0) list.item(list.count() - 1)->setSizeHint({0, list.RowHeight});
}

void ListBox::RemoveItem(int index) {
    const std::unique_ptr<QListWidgetItem> gone(Native().As<QListWidget>().takeItem(index));
}

int ListBox::ListCount() const {
    return Native().As<QListWidget>().count();
}

int ListBox::ListIndex() const {
    const auto& list = Native().As<QListWidget>();
    if (list.selectionMode() == QAbstractItemView::MultiSelection) return list.currentRow();
    // The keyboard's current row is not chosen as long as it is not selected.
    const QModelIndexList chosen = list.selectionModel()->selectedRows();
    return chosen.isEmpty() ? -1 : chosen.first().row();
}

void ListBox::SetListIndex(int index) {
    auto& list = Native().As<QListWidget>();
    list.setCurrentRow(index >= 0 && index < list.count() ? index : -1);
}

std::string ListBox::Item(int index) const {
    const QListWidgetItem* item = Native().As<QListWidget>().item(index);
    return item != nullptr ? FromQt(item->text()) : std::string();
}

bool ListBox::Selected(int index) const {
    const QListWidgetItem* item = Native().As<QListWidget>().item(index);
    return item != nullptr && item->isSelected();
}

void ListBox::SetSelected(int index, bool selected) {
    if (QListWidgetItem* item = Native().As<QListWidget>().item(index)) item->setSelected(selected);
}

ScrollBar::ScrollBar(Container& parent, std::string_view name) : Control(MakeScrollBar(parent, name)) {
    QObject::connect(&Native().As<QScrollBar>(), &QScrollBar::valueChanged, &Native(),
                     [this] { Fire(OnChange); });
}

void ScrollBar::SetRange(int min, int max) {
    auto& bar = Native().As<QScrollBar>();
    bar.setPageStep(std::max(1, (max - min) / 10));
    bar.setRange(min, max);
}

int ScrollBar::Min() const {
    return Native().As<QScrollBar>().minimum();
}

int ScrollBar::Max() const {
    return Native().As<QScrollBar>().maximum();
}

int ScrollBar::Value() const {
    return Native().As<QScrollBar>().value();
}

void ScrollBar::SetValue(int value) {
    Native().As<QScrollBar>().setValue(value);
}

}  // namespace keelview
