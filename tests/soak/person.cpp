#include "soak/person.h"

#include <QApplication>
#include <QComboBox>
#include <QCoreApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
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

// What people do in one go, by window: controls that are used in this order. Chance alone would seldom set
// a mark or save a race.
const std::vector<Errand>& Errands() {
    static const std::vector<Errand> all{
        {"Cover", {"Command3", "Command5"}},
        {"Cover", {"Command3", "Combo1", "Command5"}},
        {"Cover", {"Command7", "Combo1", "Command5"}},
        {"Cover", {"Command2"}},
        {"Cover", {"Command9"}},
        {"fmCompile", {"Command6"}},
        {"fmCompile", {"Command1", "Command2", "List1"}},
        {"fmCompile", {"Command10", "Command11"}},
        {"fmCompile", {"Text1", "Command9"}},
        {"fmCompile", {"Command4"}},
        {"FmFileSelect", {"File1", "Command1"}},
        {"FmFileSelect", {"Text1", "Command1"}},
        {"Haifu", {"List1", "List2", "Combo1", "Command1"}},
        {"RaceDisp", {"Option6"}},
        {"RaceDisp", {"Option9", "Option6"}},
        {"RaceDisp", {"Option8", "HScroll1"}},
        {"RaceDisp", {"Check5"}},
        {"RaceDisp", {"Picture1", "Picture1"}},
        {"RaceDisp", {"Command2", "Picture1", "Picture1"}},
        {"RaceDisp", {"Command3", "Picture1", "Picture1"}},
        {"RaceDisp", {"Command5", "Picture1", "Picture1", "Picture1", "Command8"}},
        {"RaceDisp", {"Option7", "Check2", "Picture1", "Picture1"}},
        {"RaceDisp", {"Option10", "GPIC", "Command12", "GPIC", "GPIC", "GPIC", "Command12"}},
        {"RaceDisp", {"Option10", "PicTimeBar", "PicTimeBar"}},
        {"RaceDisp", {"Option11", "Option12", "PicTime", "Option4", "PicTime", "Command11"}},
        {"RaceDisp", {"Picture2", "sWind", "sWind"}},
        {"RaceDisp", {"Text3", "Picture6"}},
        {"RaceDisp", {"Text9", "Command4"}},
        {"RaceDisp", {"Combo1", "Command9"}},
    };
    return all;
}

// What is typed: numbers, moments of the demo races, names to save under, and what nobody expects.
constexpr std::array Words{
    "0",        "12.5",   "-5",         "270",    "2026/10/03 12:35:00", "2026/10/04 12:10:00",
    "Soak1",    "Soak 2", "\"a\", b",   "江の島", "99999999999",         "",
    "nothing.", "dist 1", "../upwards", "1e300"};

constexpr std::array Keys{
    Qt::Key_Left,     Qt::Key_Right,  Qt::Key_Up,     Qt::Key_Down,   Qt::Key_Tab,       Qt::Key_Space,
    Qt::Key_Return,   Qt::Key_Enter,  Qt::Key_Escape, Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_Home,
    Qt::Key_End,      Qt::Key_PageUp, Qt::Key_F1,     Qt::Key_F5,     Qt::Key_F12,       Qt::Key_Shift,
    Qt::Key_Control,  Qt::Key_A,      Qt::Key_M,      Qt::Key_S,      Qt::Key_Z,         Qt::Key_5,
    Qt::Key_PageDown, Qt::Key_Backtab};

constexpr std::array Buttons{Qt::LeftButton, Qt::LeftButton, Qt::LeftButton, Qt::RightButton,
                             Qt::MiddleButton};

bool TakesText(const QWidget& widget) {
    return qobject_cast<const QLineEdit*>(&widget) != nullptr ||
           qobject_cast<const QPlainTextEdit*>(&widget) != nullptr ||
           qobject_cast<const QComboBox*>(&widget) != nullptr;
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

/// One thing done in one window. Each event may bring up other windows, in which other things are done
/// before it is over, and may take this window away.
class Deed {
  public:
    Deed(QWidget& window, Dice& dice, OnErrand& errand, const std::function<void(const std::string&)>& note)
        : window_(&window),
          native_(window.windowHandle()),
          dice_(dice),
          errand_(errand),
          note_(note),
          where_(window.objectName().isEmpty() ? window.metaObject()->className()
                                               : window.objectName().toStdString()) {}

    void Do() {
        if (dice_.OneIn(10)) return Key();
        if (dice_.OneIn(500)) return Close();
        if (dice_.OneIn(300)) return Resize();
        if (const QWidget* control = Choose()) Use(*control);
    }

  private:
    bool Stands() const { return window_ && native_ && native_->isVisible(); }

    void Note(const std::string& what) const { note_(where_ + ": " + what); }

    Qt::KeyboardModifiers Held() const {
        constexpr std::array<Qt::KeyboardModifiers, 3> some{Qt::ShiftModifier, Qt::ControlModifier,
                                                            Qt::AltModifier};
        return dice_.OneIn(3) ? dice_.Of(some) : Qt::KeyboardModifiers();
    }

    const QWidget* Choose() {
        if (!dice_.OneIn(3))
            if (const QWidget* next = NextOfErrand()) return next;
        const auto shown = Shown(*window_);
        return shown.empty() ? nullptr : dice_.Of(shown);
    }

    /// What the errand wants next, or another one where it is over; nothing if that is not to be seen.
    const QWidget* NextOfErrand() {
        const auto here = [this](const Errand& errand) { return window_->objectName() == errand.Window; };
        if (errand_.What == nullptr || errand_.Done == errand_.What->Controls.size() ||
            !here(*errand_.What)) {
            std::vector<const Errand*> some;
            for (const Errand& errand : Errands())
                if (here(errand)) some.push_back(&errand);
            if (some.empty()) return nullptr;
            errand_ = {dice_.Of(some), 0};
        }
        const auto* next = window_->findChild<QWidget*>(errand_.What->Controls[errand_.Done++]);
        return next != nullptr && next->isVisible() ? next : nullptr;
    }

    void Use(const QWidget& control) {
        const QString name = control.objectName();
        where_ += " " + (name.isEmpty() ? control.metaObject()->className() : name.toStdString());
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
        switch (dice_.Below(8)) {
            case 0:
                Note("double click");
                QTest::mouseDClick(native_, Qt::LeftButton, held, at);
                break;
            case 1:
                Note("wheel");
                Wheel(at);
                break;
            case 2:
                Note("drag with button " + std::to_string(button) + " and " + std::to_string(held));
                Press(at, button, held);
                at = {dice_.Below(window_ ? window_->width() : 1),
                      dice_.Below(window_ ? window_->height() : 1)};
                if (Stands()) QTest::mouseMove(native_, at);
                Release(at, button, held);
                break;
            case 3:
            case 4:
                Note("move");
                QTest::mouseMove(native_, at);
                break;
            default:
                Note("click with button " + std::to_string(button) + " and " + std::to_string(held));
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

    void Wheel(QPoint at) const {
        QWheelEvent turn(at, native_->mapToGlobal(at), {}, {0, dice_.OneIn(2) ? 120 : -120}, Qt::NoButton,
                         {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(native_, &turn);
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
    Dice& dice_;
    OnErrand& errand_;
    const std::function<void(const std::string&)>& note_;
    std::string where_;
};

}  // namespace

void Person::Act() {
    QWidget* window = Front(dice_);
    if (window == nullptr || window->windowHandle() == nullptr) return;
    ++actions_;
    Deed(*window, dice_, errand_, note_).Do();
}

}  // namespace keelview
