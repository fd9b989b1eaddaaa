#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>
#include <utility>

#include "display/control.h"
#include "display/qt/convert.h"
#include "display/qt/native_control.h"

namespace keelview {

namespace {

/// Tells a click for what the person does in a list, by mouse or by keys.
class PersonsList : public QListWidget {
  public:
    using QListWidget::QListWidget;
    std::function<void()> OnKeyChoice;
    std::function<bool(int from, int to)> OnDrag;  ///< true where somebody wanted to know
    std::function<std::string(int row)> FieldText;
    std::function<void(int row, const std::string& text)> OnWritten;
    int RowHeight = 0;  ///< 0: as the font has it

  protected:
    void mousePressEvent(QMouseEvent* event) override {
        QListWidget::mousePressEvent(event);
        const bool plain = event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier;
        draggedRow_ = plain ? indexAt(event->pos()).row() : -1;
    }

    void mouseMoveEvent(QMouseEvent* event) override {
        if (draggedRow_ < 0 || !event->buttons().testFlag(Qt::LeftButton))
            return QListWidget::mouseMoveEvent(event);
        const int row = RowBeside(event->pos());
        if (row == draggedRow_ || (OnDrag && OnDrag(draggedRow_, row)))
            draggedRow_ = row;
        else
            QListWidget::mouseMoveEvent(event);
    }

    void mouseReleaseEvent(QMouseEvent* event) override {
        draggedRow_ = -1;
        QListWidget::mouseReleaseEvent(event);
    }

    void keyPressEvent(QKeyEvent* event) override {
        const QList<QListWidgetItem*> before = selectedItems();
        QListWidget::keyPressEvent(event);
        if (selectedItems() != before && OnKeyChoice) OnKeyChoice();
    }

  private:
    /// The row at a place; the next one that is out of sight for a place above or below the list.
    int RowBeside(QPoint at) const {
        const QRect view = viewport()->rect();
        const int inside = std::clamp(at.y(), view.top(), view.bottom());
        const int row = indexAt({view.center().x(), inside}).row();
        if (row < 0) return count() - 1;
        return std::clamp(row + (at.y() > inside ? 1 : at.y() < inside ? -1 : 0), 0, count() - 1);
    }

    int draggedRow_ = -1;
};

/// Turns a row into a field for a part of its text.
class RowField : public QStyledItemDelegate {
  public:
    explicit RowField(PersonsList& list) : QStyledItemDelegate(&list), list_(list) {}

    void setEditorData(QWidget* editor, const QModelIndex& row) const override {
        if (auto* line = qobject_cast<QLineEdit*>(editor)) line->setText(ToQt(list_.FieldText(row.row())));
    }
    void setModelData(QWidget* editor, QAbstractItemModel* /*model*/,
                      const QModelIndex& row) const override {
        const auto* line = qobject_cast<QLineEdit*>(editor);
        if (line != nullptr && line->text() != ToQt(list_.FieldText(row.row())))
            list_.OnWritten(row.row(), FromQt(line->text()));
    }

  private:
    PersonsList& list_;
};

std::unique_ptr<NativeControl> MakeCombo(Container& parent, std::string_view name) {
    auto* combo = new QComboBox(NativeControl::Of(parent).Inner);
    combo->setEditable(true);
    combo->setInsertPolicy(QComboBox::NoInsert);
    combo->setCompleter(nullptr);
    combo->lineEdit()->setTextMargins(-2, 0, -2, 0);
    auto native = std::make_unique<NativeControl>(combo, name);
    native->ClickByMouse = false;
    native->Watch(combo->lineEdit());
    native->ApplyBack = [combo](Colour colour) { TakeColour(*combo, {QPalette::Base}, colour); };
    native->ApplyFore = [combo](Colour colour) { TakeColour(*combo, {QPalette::Text}, colour); };
    QObject::connect(combo, &QComboBox::activated, native.get(), &NativeControl::FireClick);
    return native;
}

std::unique_ptr<NativeControl> MakeList(Container& parent, std::string_view name) {
    auto* list = new PersonsList(NativeControl::Of(parent).Inner);
    list->setSelectionMode(QAbstractItemView::SingleSelection);
    list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list->setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    list->setUniformItemSizes(true);
    auto native = std::make_unique<NativeControl>(list, name);
    native->Watch(list->viewport());
    list->OnKeyChoice = [control = native.get()] { control->FireClick(); };
    native->ApplyBack = [list](Colour colour) { TakeColour(*list, {QPalette::Base}, colour); };
    native->ApplyFore = [list](Colour colour) { TakeColour(*list, {QPalette::Text}, colour); };
    return native;
}

std::unique_ptr<NativeControl> MakeScrollBar(Container& parent, std::string_view name, ScrollBar::Way way) {
    auto* bar = new QScrollBar(way == ScrollBar::Way::Down ? Qt::Vertical : Qt::Horizontal,
                               NativeControl::Of(parent).Inner);
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

std::string ComboBox::Text() const {
    return FromQt(Native().As<QComboBox>().currentText());
}

void ComboBox::SetText(std::string_view text) {
    auto& combo = Native().As<QComboBox>();
    const QString converted = ToQt(text);
    combo.setCurrentIndex(combo.findText(converted, Qt::MatchExactly | Qt::MatchCaseSensitive));
    combo.setEditText(converted);
}

ListBox::ListBox(Container& parent, std::string_view name) : Control(MakeList(parent, name)) {
    Native().As<PersonsList>().OnDrag = [this](int from, int to) {
        Fire(OnDragged, from, to);
        return static_cast<bool>(OnDragged);
    };
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
    QListWidgetItem& added = *list.item(list.count() - 1);
    if (list.RowHeight > 0) added.setSizeHint({0, list.RowHeight});
    if (list.FieldText) added.setFlags(added.flags() | Qt::ItemIsEditable);
}

void ListBox::SetItem(int index, std::string_view item) {
    if (QListWidgetItem* row = Native().As<QListWidget>().item(index)) row->setText(ToQt(item));
}

void ListBox::Choose(int index) {
    Native().As<QListWidget>().setCurrentRow(index);
}

void ListBox::LetWrite(std::function<std::string(int row)> field) {
    auto& list = Native().As<PersonsList>();
    list.FieldText = std::move(field);
    list.OnWritten = [this](int row, const std::string& text) { Fire(OnWritten, row, text); };
    list.setItemDelegate(new RowField(list));  // the list owns it
    list.setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed);
}

int ListBox::ListCount() const {
    return Native().As<QListWidget>().count();
}

int ListBox::ListIndex() const {
    // The keyboard's current row is not chosen as long as it is not selected.
    const QModelIndexList chosen = Native().As<QListWidget>().selectionModel()->selectedRows();
    return chosen.isEmpty() ? -1 : chosen.first().row();
}

std::string ListBox::Item(int index) const {
    const QListWidgetItem* item = Native().As<QListWidget>().item(index);
    return item != nullptr ? FromQt(item->text()) : std::string();
}

ScrollBar::ScrollBar(Container& parent, std::string_view name, Way way)
    : Control(MakeScrollBar(parent, name, way)) {
    QObject::connect(&Native().As<QScrollBar>(), &QScrollBar::valueChanged, &Native(),
                     [this] { Fire(OnChange); });
}

void ScrollBar::SetRange(int min, int max) {
    auto& bar = Native().As<QScrollBar>();
    bar.setPageStep(std::max(1, (max - min) / 10));
    bar.setRange(min, max);
}

void ScrollBar::SetView(int beyond, int line, int page) {
    auto& bar = Native().As<QScrollBar>();
    bar.setSingleStep(line);
    bar.setPageStep(page);
    bar.setRange(0, beyond);
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
