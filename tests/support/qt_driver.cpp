#include "support/qt_driver.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QListWidget>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>
#include <QWindow>
#include <stdexcept>
#include <string>

#include "display/form.h"
#include "display/qt/convert.h"
#include "display/qt/native_control.h"

namespace keelview::driver {

namespace {

// How far from the left edge a click lands: on the box of a check box, on a caption.
constexpr int ClickLeft = 6;

QWindow* WindowOf(const QWidget& widget) {
    QWindow* window = widget.window()->windowHandle();
    if (window == nullptr || !widget.isVisible())
        throw std::logic_error("not on the screen: " + widget.objectName().toStdString());
    return window;
}

QPoint InWindow(const QWidget& face, QPoint at) {
    return face.mapTo(face.window(), at);
}

QWindow* KeyboardsWindow() {
    const QWidget* modal = QApplication::activeModalWidget();
    QWindow* window = modal != nullptr ? modal->windowHandle() : QGuiApplication::focusWindow();
    if (window == nullptr) throw std::logic_error("no window has the keyboard");
    return window;
}

void StrikeIn(QWindow* window, std::string_view text) {
    for (const QChar letter : ToQt(text))
        QTest::sendKeyEvent(QTest::Click, window, letter == '\n' ? Qt::Key_Return : Qt::Key_unknown,
                            QString(letter), {});
    Settle();
}

QPoint MiddleOf(const Control& listBox, int row) {
    const auto& list = NativeControl::Of(listBox).As<QListWidget>();
    return list.visualItemRect(list.item(row)).center();
}

}  // namespace

void Settle() {
    for (int round = 0; round < 3; ++round) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

void WhenModal(const char* name, std::function<void()> act) {
    QTimer::singleShot(5, qApp, [name, act = std::move(act)] {
        const QWidget* form = QApplication::activeModalWidget();
        form != nullptr && form->objectName() == name ? act() : WhenModal(name, act);
    });
}

QWidget& Face(const Control& control) {
    QWidget* face = NativeControl::Of(control).Inner;
    if (auto* list = qobject_cast<QListWidget*>(face)) face = list->viewport();
    return *face;
}

QWidget& Named(std::string_view name) {
    const QString wanted = ToQt(name);
    // A modal form comes first: its controls may bear names that the form behind it knows too.
    QWidgetList windows = QApplication::topLevelWidgets();
    if (QWidget* modal = QApplication::activeModalWidget()) windows.prepend(modal);
    for (QWidget* window : windows) {
        if (!window->isVisible()) continue;
        if (window->objectName() == wanted) return *window;
        if (auto* found = window->findChild<QWidget*>(wanted)) return *found;
    }
    ADD_FAILURE() << "no control is shown with the name " << name;
    throw std::logic_error("no such control");
}

void Press(QWidget& face, QPoint at, Qt::MouseButton button, Qt::KeyboardModifiers held) {
    QTest::mousePress(WindowOf(face), button, held, InWindow(face, at));
    Settle();
}

void Release(QWidget& face, QPoint at, Qt::MouseButton button, Qt::KeyboardModifiers held) {
    QTest::mouseRelease(WindowOf(face), button, held, InWindow(face, at));
    Settle();
}

void Click(QWidget& face, Qt::MouseButton button) {
    const QPoint at(std::min(ClickLeft, face.width() / 2), face.height() / 2);
    Press(face, at, button);
    Release(face, at, button);
}

void Click(const Control& control, Qt::MouseButton button) {
    Click(Face(control), button);
}

void ClickAt(const Control& control, QPoint at, Qt::MouseButton button, Qt::KeyboardModifiers held) {
    Press(Face(control), at, button, held);
    // A handler may have taken the window away.
    if (Face(control).isVisible()) Release(Face(control), at, button, held);
}

void DoubleClickAt(const Control& control, QPoint at) {
    QTest::mouseDClick(WindowOf(Face(control)), Qt::LeftButton, {}, InWindow(Face(control), at));
    Settle();
}

void MoveTo(const Control& control, QPoint at) {
    QTest::mouseMove(WindowOf(Face(control)), InWindow(Face(control), at));
    Settle();
}

void Wheel(const Control& control, QPoint at, int notches) {
    QWindow* window = WindowOf(Face(control));
    const QPoint place = InWindow(Face(control), at);
    QWheelEvent turned(place, window->mapToGlobal(place), {},
                       {0, -notches * QWheelEvent::DefaultDeltasPerStep}, {}, {}, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(window, &turned);
    Settle();
}

void ClickRow(const Control& listBox, int row, Qt::KeyboardModifiers held) {
    ClickAt(listBox, MiddleOf(listBox, row), Qt::LeftButton, held);
}

void DragRow(const Control& listBox, int from, int to) {
    Press(Face(listBox), MiddleOf(listBox, from));
    MoveTo(listBox, MiddleOf(listBox, to));
    Release(Face(listBox), MiddleOf(listBox, to));
}

void KeyDown(const Control& inWindow, Qt::Key key, Qt::KeyboardModifiers held) {
    QTest::keyPress(WindowOf(Face(inWindow)), key, held);
    Settle();
}

void KeyUp(const Control& inWindow, Qt::Key key, Qt::KeyboardModifiers held) {
    QTest::keyRelease(WindowOf(Face(inWindow)), key, held);
    Settle();
}

void Key(const Control& inWindow, Qt::Key key, Qt::KeyboardModifiers held) {
    KeyDown(inWindow, key, held);
    KeyUp(inWindow, key, held);
}

void Strike(std::string_view text) {
    StrikeIn(KeyboardsWindow(), text);
}

void Type(const Control& field, std::string_view text) {
    Click(field);
    Key(field, Qt::Key_A, Qt::ControlModifier);
    Key(field, Qt::Key_Delete);
    StrikeIn(WindowOf(Face(field)), text);
}

}  // namespace keelview::driver
