#include "display/qt/native_control.h"

#include <QApplication>
#include <QKeyEvent>
#include <cmath>

#include "display/qt/convert.h"

namespace keelview {

namespace {

// A property of the toolkit's application: its end and that of the mark are one.
constexpr const char* EndedMark = "keelviewEnded";

/// The key takes the keyboard to another control; it comes up where it has led. The toolkit's own word of a
/// new focus would come as well from a window whose controls go one by one.
bool LeadsOn(int key) {
    return key == Qt::Key_Tab || key == Qt::Key_Backtab || key == Qt::Key_Up || key == Qt::Key_Down;
}

bool Pushes(int key) {
    return key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter;
}

}  // namespace

bool ProcessEnded() {
    return qApp != nullptr && qApp->property(EndedMark).toBool();
}

void SetProcessEnded(bool ended) {
    qApp->setProperty(EndedMark, ended);
}

void TakeColour(QWidget& widget, std::initializer_list<QPalette::ColorRole> roles, Colour colour) {
    QPalette palette = widget.palette();
    for (const QPalette::ColorRole role : roles) palette.setColor(role, ToQt(colour));
    widget.setPalette(palette);
}

NativeControl::NativeControl(QWidget* outer, std::string_view name, QWidget* inner)
    : Outer(outer), Inner(inner != nullptr ? inner : outer) {
    outer->setObjectName(ToQt(name));
    Watch(outer);
    if (Inner != outer) Watch(Inner);
    if (!outer->isWindow()) outer->show();
}

NativeControl::~NativeControl() {
    Owner = nullptr;
    if (!Outer) return;
    Outer->setObjectName({});
    Outer->removeEventFilter(this);
    // Ours alone: the toolkit itself must still hear of the widget's end, to forget it too.
    Outer->disconnect(this);
    Outer->hide();
    Outer->deleteLater();
}

void NativeControl::Watch(QWidget* part) {
    part->setMouseTracking(true);
    part->setAttribute(Qt::WA_NoMousePropagation);
    part->installEventFilter(this);
}

void NativeControl::FireClick() {
    if (Owner != nullptr) Fire(Owner->OnClick);
}

bool NativeControl::eventFilter(QObject* watched, QEvent* event) {
    if (passing_ || Owner == nullptr || !watched->isWidgetType()) return false;
    switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseMove:
            return FilterMouse(static_cast<QWidget&>(*watched), static_cast<QMouseEvent&>(*event));
        case QEvent::Wheel:
            return FilterWheel(static_cast<QWidget&>(*watched), static_cast<QWheelEvent&>(*event));
        case QEvent::KeyRelease:
            if (LeadsOn(static_cast<QKeyEvent&>(*event).key())) Fire(Owner->OnTabbedTo);
            return false;
        case QEvent::Leave:
            if (watched == Outer) Fire(Owner->OnMouseLeave);
            return false;
        case QEvent::KeyPress:
            if (!ClickByKey || !Pushes(static_cast<QKeyEvent&>(*event).key())) return false;
            FireClick();
            return true;
        default:
            return false;
    }
}

/// From pixels of the drawing area to whole ones in the control's scale.
QPointF NativeControl::InScale(QPointF at) const {
    at = {std::floor(at.x()), std::floor(at.y())};
    return ToScale ? ToScale(at) : at;
}

MouseEvent NativeControl::Told(const QWidget& part, const QMouseEvent& event) const {
    QPointF at = event.position();
    if (&part != Inner) at = Inner->mapFrom(Inner->window(), part.mapTo(part.window(), at));
    at = InScale(at);
    MouseEvent told;
    Qt::MouseButton button = event.button();
    if (event.type() == QEvent::MouseMove)
        for (const Qt::MouseButton held : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton})
            if (button == Qt::NoButton && event.buttons().testFlag(held)) button = held;
    if (button == Qt::LeftButton) told.Button = MouseButton::Left;
    if (button == Qt::RightButton) told.Button = MouseButton::Right;
    if (button == Qt::MiddleButton) told.Button = MouseButton::Middle;
    told.Shift = event.modifiers().testFlag(Qt::ShiftModifier);
    told.AnyModifier =
        (event.modifiers() & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier)) != 0;
    told.X = at.x();
    told.Y = at.y();
    return told;
}

/// What is less than a line gathers for the next turn.
WheelEvent NativeControl::Told(const QWheelEvent& event) {
    constexpr int notch = QWheelEvent::DefaultDeltasPerStep;
    const int turned = -event.angleDelta().y();
    wheelRest_ += turned * QApplication::wheelScrollLines();
    const QPointF at = InScale(Inner->mapFromGlobal(event.globalPosition()));
    WheelEvent told{.Lines = wheelRest_ / notch,
                    .Notches = static_cast<double>(turned) / notch,
                    .X = at.x(),
                    .Y = at.y()};
    wheelRest_ %= notch;
    return told;
}

bool NativeControl::FilterWheel(QWidget& part, QWheelEvent& event) {
    if (Owner->OnWheel && part.isEnabled()) {
        event.accept();
        if (event.angleDelta().y() != 0) Fire(Owner->OnWheel, Told(event));
        return true;
    }
    const QPointer<NativeControl> self(this);
    const QPointer<QWidget> living(&part);
    event.ignore();
    if (part.isEnabled()) {
        passing_ = true;
        QCoreApplication::sendEvent(&part, &event);
        if (!self) return true;
        passing_ = false;
    }
    if (!event.isAccepted() && living && !part.isWindow() && part.parentWidget() != nullptr)
        QCoreApplication::sendEvent(part.parentWidget(), &event);
    return true;
}

/// The pointer over a disabled control that has nothing to tell is over what lies below it, so that a hint
/// of a neighbour goes away.
void NativeControl::MoveBelow(const QWidget& part, const QMouseEvent& event) {
    QWidget* below = part.parentWidget();
    while (below != nullptr && !below->isEnabled()) below = below->parentWidget();
    if (below == nullptr || part.isWindow()) return;
    QMouseEvent moved(event.type(), part.mapTo(below, event.position()), event.globalPosition(),
                      event.button(), event.buttons(), event.modifiers());
    QCoreApplication::sendEvent(below, &moved);
}

bool NativeControl::FilterMouse(QWidget& part, QMouseEvent& event) {
    if (!part.isEnabled()) {
        if (event.type() != QEvent::MouseMove) return true;
        if (Owner->OnGreyMove)
            Fire(Owner->OnGreyMove, Told(part, event));
        else
            MoveBelow(part, event);
        return true;
    }
    const QPointer<NativeControl> self(this);
    const QPointer<QWidget> living(&part);
    const MouseEvent told = Told(part, event);
    if (event.type() == QEvent::MouseMove) {
        const QPointF at = part.mapTo(part.window(), event.position());
        const bool free = event.buttons() == Qt::NoButton;
        if (!free || !TakeMove || !TakeMove(Inner->mapFrom(Inner->window(), at)))
            if (self) Fire(Owner->OnMouseMove, told);
        return !self;
    }
    // The widget goes first, so that a handler finds the row chosen and the box ticked.
    const bool release = event.type() == QEvent::MouseButtonRelease;
    passing_ = true;
    QCoreApplication::sendEvent(&part, &event);
    event.accept();
    if (!self) return true;
    passing_ = false;
    if (told.Button == MouseButton::None || Owner == nullptr) return true;
    if (!release) {
        if (told.Button == MouseButton::Left) pressed_ = true;
        Fire(Owner->OnMouseDown, told);
        return true;
    }
    const bool click = told.Button == MouseButton::Left && pressed_ && ClickByMouse && living &&
                       part.rect().contains(event.position().toPoint());
    if (told.Button == MouseButton::Left) pressed_ = false;
    Fire(Owner->OnMouseUp, told);
    if (click && self) FireClick();
    return true;
}

}  // namespace keelview
