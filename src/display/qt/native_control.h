#pragma once

#include <QEvent>
#include <QMouseEvent>
#include <QObject>
#include <QPalette>
#include <QPointF>
#include <QPointer>
#include <QWheelEvent>
#include <QWidget>
#include <functional>
#include <initializer_list>
#include <optional>

#include "display/control.h"

namespace keelview {

/// True once the end of the process was asked for: no handler runs after that.
bool ProcessEnded();
/// Says whether it was; taken back where the program is to start once more in the same process.
void SetProcessEnded(bool ended);

/// A control's widget, and the way of its events to the control. The widget is deleted when the event loop
/// is idle, so that a handler may let go of the control it was called by.
struct NativeControl : public QObject {
    /// `inner` is the drawing area in which children stand; the outer widget itself where there is none.
    explicit NativeControl(QWidget* outer, std::string_view name, QWidget* inner = nullptr);
    ~NativeControl() override;
    NativeControl(const NativeControl&) = delete;
    NativeControl& operator=(const NativeControl&) = delete;

    QPointer<QWidget> Outer;
    QPointer<QWidget> Inner;
    Control* Owner = nullptr;
    /// A press and a release of the left button make a click; off for widgets that know their clicks.
    bool ClickByMouse = true;
    /// Space bar and Return make a click too; for widgets that know no keys.
    bool ClickByKey = false;
    bool EnabledByOwner = true;
    std::optional<Colour> Back;
    std::optional<Colour> Fore;
    /// How the widget takes its colours; unset where it has none.
    std::function<void(Colour)> ApplyBack;
    std::function<void(Colour)> ApplyFore;
    /// From pixels of the drawing area to the control's own scale; pixels where it is unset.
    std::function<QPointF(const QPointF&)> ToScale;
    /// Asked before a move is told to the control; true if something else took it.
    std::function<bool(const QPointF&)> TakeMove;

    /// Has the mouse events of a part of the widget told to the control.
    void Watch(QWidget* part);
    void FireClick();
    static NativeControl& Of(const Control& control) { return *control.native_; }
    bool eventFilter(QObject* watched, QEvent* event) override;

    template <class T>
    T& As() const {
        return static_cast<T&>(*Outer);
    }

  private:
    bool FilterMouse(QWidget& part, QMouseEvent& event);
    bool FilterWheel(QWidget& part, QWheelEvent& event);
    static void MoveBelow(const QWidget& part, const QMouseEvent& event);
    MouseEvent Told(const QWidget& part, const QMouseEvent& event) const;
    WheelEvent Told(const QWheelEvent& event);
    QPointF InScale(QPointF at) const;
    bool passing_ = false;  // the event is on its way to the widget itself
    bool pressed_ = false;  // the left button went down here
    int wheelRest_ = 0;     // of the wheel's turn, in 120ths of a line
};

/// Gives a widget a colour in some of the roles of its palette.
void TakeColour(QWidget& widget, std::initializer_list<QPalette::ColorRole> roles, Colour colour);

/// Tells an event's handler, if there is one and the process goes on. The handler is copied: it may let go
/// of the object that holds it.
template <class... Parameters, class... Arguments>
void Fire(const Event<Parameters...>& event, Arguments&&... arguments) {
    if (!event || ProcessEnded()) return;
    const auto held = event.Current();
    held(arguments...);
}

}  // namespace keelview
