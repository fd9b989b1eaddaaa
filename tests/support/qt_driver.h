#pragma once

#include <QPoint>
#include <Qt>
#include <functional>
#include <string_view>

class QWidget;

namespace keelview {

class Application;
class Control;

/// The application that all tests of forms run under.
Application& TheApplication();

/// What a person does in front of a form, by events that enter at the window, so that they meet whatever
/// lies on top there and no control that is hidden or covered. Places are pixels of the control's drawing
/// area. All of it settles before the call returns.
namespace driver {

/// Lets everything happen that is waiting: events, repaints, deletions.
void Settle();

/// Acts as soon as the modal form of that name is open: in the middle of the call that opened it.
void WhenModal(const char* name, std::function<void()> act);

/// The part of a control that the mouse meets.
QWidget& Face(const Control& control);
/// The widget of that name on a window that is shown; fails the test and throws if there is none.
QWidget& Named(std::string_view name);

void Press(QWidget& face, QPoint at, Qt::MouseButton button = Qt::LeftButton,
           Qt::KeyboardModifiers held = {});
void Release(QWidget& face, QPoint at, Qt::MouseButton button = Qt::LeftButton,
             Qt::KeyboardModifiers held = {});
/// Presses and releases; at the control's left, in the middle of its height, where a box or a caption is.
void Click(QWidget& face, Qt::MouseButton button = Qt::LeftButton);
void Click(const Control& control, Qt::MouseButton button = Qt::LeftButton);
void ClickAt(const Control& control, QPoint at, Qt::MouseButton button = Qt::LeftButton,
             Qt::KeyboardModifiers held = {});
/// Two clicks in the time of a double click.
void DoubleClickAt(const Control& control, QPoint at);
/// Moves the pointer there, with what buttons are held.
void MoveTo(const Control& control, QPoint at);
/// Turns the wheel over a control by so many notches, down positive.
void Wheel(const Control& control, QPoint at, int notches);
void ClickRow(const Control& listBox, int row, Qt::KeyboardModifiers held = {});
/// Takes a row to the place of another with the left button held.
void DragRow(const Control& listBox, int from, int to);

/// Presses or releases a key in the window that the control stands in.
void KeyDown(const Control& inWindow, Qt::Key key, Qt::KeyboardModifiers held = {});
void KeyUp(const Control& inWindow, Qt::Key key, Qt::KeyboardModifiers held = {});
void Key(const Control& inWindow, Qt::Key key, Qt::KeyboardModifiers held = {});
/// Types a text wherever the keyboard is; "\n" is the key Return.
void Strike(std::string_view text);
/// Clicks into a field and types a text in place of what stands there.
void Type(const Control& field, std::string_view text);

}  // namespace driver

}  // namespace keelview
