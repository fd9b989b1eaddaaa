#include "soak/person.h"

#include <QApplication>
#include <QPointer>
#include <QTest>
#include <QWheelEvent>
#include <QWidget>
#include <QWindow>
#include <algorithm>
#include <array>
#include <vector>

namespace keelview {

namespace {

// What people do in one go: the controls of a window in the order of use; other things may come between.
// Chance alone would seldom set a mark or save a race.
constexpr std::pair<const char*, const char*> Errands[]{
    {"Cover", "Command3 Command5; Command3 Combo1 Command5; Command7 Combo1 Command5; Command2; Command9"},
    {"fmCompile",
     "Command6; Command1 Command2 List1; Command12; Command10 Command11; Command7 Command13; Text1 "
     "Command9; "
     "Command4"},
    {"FmFileSelect", "File1 Command1; Text1 Command1"},
    {"Haifu", "List1 List2 Combo1 Command1"},
    {"RaceDisp",
     "Option6; Option9 Option6; Option8 HScroll1; Check5; Picture1 Picture1; "
     "Command2 Picture1 Picture1; Command3 Picture1 Picture1; "
     "Command5 Picture1 Picture1 Picture1 Command8; Option7 Check2 Picture1 Picture1; "
     "Option10 GPIC Command12 GPIC GPIC GPIC Command12; Option10 PicTimeBar PicTimeBar; "
     "Option11 Option12 PicTime Option4 PicTime Command11; Picture2 sWind sWind; Text3 Picture6; "
     "Text9 Command4; Combo1 Command9"},
};

// What is typed: numbers, moments of the demo races, names to save under, and what nobody expects.
constexpr std::array Words{
    "0",        "12.5",   "-5",         "270",    "2026/10/03 12:35:00", "2026/10/04 12:10:00",
    "Soak1",    "Soak 2", "\"a\", b",   "江の島", "99999999999",         "",
    "nothing.", "dist 1", "../upwards", "1e300"};

constexpr std::array Keys{
    Qt::Key_Left,     Qt::Key_Right,   Qt::Key_Up,      Qt::Key_Down,   Qt::Key_Tab,       Qt::Key_Space,
    Qt::Key_Return,   Qt::Key_Enter,   Qt::Key_Escape,  Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_Home,
    Qt::Key_End,      Qt::Key_PageUp,  Qt::Key_F1,      Qt::Key_F5,     Qt::Key_F12,       Qt::Key_Shift,
    Qt::Key_Control,  Qt::Key_A,       Qt::Key_M,       Qt::Key_S,      Qt::Key_Z,         Qt::Key_5,
    Qt::Key_PageDown, Qt::Key_Backtab, Qt::Key_Question};

constexpr std::array Buttons{Qt::LeftButton, Qt::LeftButton, Qt::RightButton, Qt::MiddleButton};

bool TakesText(const QWidget& widget) {
    constexpr std::array Fields{"QLineEdit", "QPlainTextEdit", "QComboBox"};
    return std::ranges::any_of(Fields, [&](const char* field) { return widget.inherits(field); });
}

/// All that can be pointed at in a window, in the order of its making.
std::vector<QWidget*> Shown(const QWidget& window) {
    std::vector<QWidget*> shown;
    for (QWidget* part : window.findChildren<QWidget*>())
        if (part->isVisible() && part->window() == &window &&
            window.rect().contains(part->mapTo(&window, part->rect().center())))
            shown.push_back(part);
    return shown;
}

/// Where events go now: a popup, a modal window, else one of the windows that are shown.
QWidget* Front(Dice& dice) {
    if (QWidget* popup = QApplication::activePopupWidget()) return popup;
    if (QWidget* modal = QApplication::activeModalWidget()) return modal;
    QWidgetList windows = QApplication::topLevelWidgets();  // in no order that would come again
    windows.removeIf([](const QWidget* window) { return !window->isVisible(); });
    std::ranges::sort(windows, {}, &QWidget::objectName);
    return windows.isEmpty() ? nullptr : dice.Of(windows);
}

std::string NameOf(const QWidget& widget) {
    return widget.objectName().isEmpty() ? widget.metaObject()->className()
                                         : widget.objectName().toStdString();
}

}  // namespace

/// One thing done in one window. Each event may bring up other windows, in which other things are done
/// before it is over, and may take this window away.
class Person::Deed {
  public:
    Deed(QWidget& window, Person& person)
        : window_(&window),
          native_(window.windowHandle()),
          person_(person),
          dice_(person.dice_),
          where_(NameOf(window)) {}

    void Do() {
        // What is there to be chosen is read by a thread of its own, and no seed tells when.
        if (window_->inherits("QFileDialog")) return Strike(Qt::Key_Escape, {}, {});
        if (dice_.OneIn(10)) return Key();
        if (dice_.OneIn(500)) return Close();
        if (dice_.OneIn(300)) return Resize();
        if (const QWidget* control = Choose()) Use(*control);
    }

  private:
    bool Stands() const { return window_ && native_ && native_->isVisible(); }

    void Note(const std::string& what) const { person_.note_(where_ + ": " + what); }

    Qt::KeyboardModifiers Held() const {
        const auto shiftControlOrAlt =
            static_cast<Qt::KeyboardModifier>(Qt::ShiftModifier << dice_.Below(3));
        return dice_.OneIn(3) ? shiftControlOrAlt : Qt::NoModifier;
    }

    const QWidget* Choose() {
        if (!dice_.OneIn(3))
            if (const QWidget* next = NextOfErrand()) return next;
        const auto shown = Shown(*window_);
        return shown.empty() ? nullptr : dice_.Of(shown);
    }

    /// What the errand wants next, or another one where it is over; nothing if that is not to be seen.
    const QWidget* NextOfErrand() {
        auto& [window, left] = person_.errand_;
        if (const QString name = window_->objectName(); left.empty() || window != name) {
            const auto* here =
                std::ranges::find(Errands, name, [](const auto& some) { return QString(some.first); });
            if (here == std::end(Errands)) return nullptr;
            window = name;
            left = dice_.Of(QString(here->second).split("; ")).split(' ');
        }
        const auto* next = window_->findChild<QWidget*>(left.takeFirst());
        return next != nullptr && next->isVisible() ? next : nullptr;
    }

    void Use(const QWidget& control) {
        where_ += " " + NameOf(control);
        const QRect part = QRect(control.mapTo(window_, QPoint(0, 0)), control.size()) & window_->rect();
        const QPoint at = part.topLeft() + QPoint(dice_.Below(std::max(1, part.width())),
                                                  dice_.Below(std::max(1, part.height())));
        const bool takesText = TakesText(control);
        if (!takesText && dice_.OneIn(3)) return Point(at);
        Note("click");
        Click(at, Qt::LeftButton, {});
        if (takesText && Stands()) Type();
    }

    void Point(QPoint at) {
        const Qt::MouseButton button = dice_.Of(Buttons);
        const Qt::KeyboardModifiers held = Held();
        const std::string how = " with button " + std::to_string(button) + " and " + std::to_string(held);
        const int kind = dice_.Below(8);
        if (kind == 0) {
            Note("double click");
            QTest::mouseDClick(native_, Qt::LeftButton, held, at);
        } else if (kind == 1) {
            Note("wheel");
            QWheelEvent turn(at, native_->mapToGlobal(at), {}, {0, dice_.OneIn(2) ? 120 : -120},
                             Qt::NoButton, {}, Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(native_, &turn);
        } else if (kind == 2) {
            Note("drag" + how);
            Press(at, button, held);
            const QSize size = window_ ? window_->size() : QSize(1, 1);
            at = {dice_.Below(size.width()), dice_.Below(size.height())};
            if (Stands()) QTest::mouseMove(native_, at);
            Release(at, button, held);
        } else if (kind < 5) {
            Note("move");
            QTest::mouseMove(native_, at);
        } else {
            Note("click" + how);
            Click(at, button, held);
        }
    }

    void Click(QPoint at, Qt::MouseButton button, Qt::KeyboardModifiers held) const {
        Press(at, button, held);
        Release(at, button, held);
    }

    void Press(QPoint at, Qt::MouseButton button, Qt::KeyboardModifiers held) const {
        QTest::mouseMove(native_, at);
        if (Stands()) QTest::mousePress(native_, button, held, at);
    }

    /// The button comes up even if the window went away under it: over the one that stands there now.
    void Release(QPoint at, Qt::MouseButton button, Qt::KeyboardModifiers held) const {
        if (Stands()) return QTest::mouseRelease(native_, button, held, at);
        QTestPrivate::qtestMouseButtons.setFlag(button, false);
        const QWidget* other = Front(dice_);
        if (other != nullptr && other->windowHandle() != nullptr)
            QTest::mouseRelease(other->windowHandle(), button, held, {0, 1});
    }

    void Key() const {
        if (dice_.OneIn(8)) return Type();
        const Qt::Key key = dice_.Of(Keys);
        const Qt::KeyboardModifiers held = Held();
        Note("key " + std::to_string(key) + " and " + std::to_string(held));
        QTest::keyPress(native_, key, held);
        // Sometimes a key stays down until something else happens to it.
        if (Stands() && !dice_.OneIn(20)) QTest::keyRelease(native_, key, held);
    }

    void Strike(Qt::Key key, const QString& letter, Qt::KeyboardModifiers held) const {
        for (const auto action : {QTest::Press, QTest::Release})
            if (Stands()) QTest::sendKeyEvent(action, native_, key, letter, held);
    }

    void Type() const {
        const QString text = dice_.Of(Words);
        Note("type " + text.toStdString());
        if (dice_.OneIn(2)) Strike(Qt::Key_A, "a", Qt::ControlModifier);
        for (const QChar letter : text) Strike(Qt::Key_unknown, letter, {});
        Strike(dice_.OneIn(2) ? Qt::Key_Down : Qt::Key_Tab, {}, {});
    }

    void Close() const {
        Note("close");
        window_->close();
    }

    void Resize() const {
        if (window_->minimumSize() == window_->maximumSize()) return;
        const QSize size(200 + dice_.Below(800), 200 + dice_.Below(540));
        Note("resize to " + std::to_string(size.width()) + " by " + std::to_string(size.height()));
        window_->resize(size);
    }

    QPointer<QWidget> window_;
    QPointer<QWindow> native_;
    Person& person_;
    Dice& dice_;
    std::string where_;
};

void Person::Act() {
    QWidget* window = Front(dice_);
    if (window == nullptr || window->windowHandle() == nullptr) return;
    ++actions_;
    Deed(*window, *this).Do();
}

}  // namespace keelview
