#include "display/form.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <QIcon>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QPainter>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QScreen>
#include <QUrl>
#include <QWindow>
#include <array>
#include <optional>
#include <set>
#include <utility>

#include "display/qt/convert.h"
#include "display/qt/native_control.h"
#include "display/qt/system.h"

namespace keelview {

namespace {

// How long a new window may take until the window system shows it.
constexpr int ExposeMilliseconds = 500;

QRect FreeArea() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen != nullptr ? screen->availableGeometry() : QRect(0, 0, 1024, 768);
}

Qt::WindowFlags FlagsOf(Form::Kind kind) {
    if (kind == Form::Kind::Splash || kind == Form::Kind::Curtain)
        return Qt::Window | Qt::FramelessWindowHint;
    return Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
           Qt::WindowCloseButtonHint;
}

bool CoversScreen(Form::Kind kind) {
    return kind == Form::Kind::FullScreen || kind == Form::Kind::Curtain;
}

int KeyOf(const QKeyEvent& event) {
    return event.key() == Qt::Key_Shift ? ShiftKey : OtherKey;
}

std::optional<KeyPress> Named(const QKeyEvent& event) {
    using enum KeyPress::Name;
    constexpr std::array Names{std::pair{Qt::Key_Space, Space}, std::pair{Qt::Key_Left, Left},
                               std::pair{Qt::Key_Right, Right}, std::pair{Qt::Key_Home, Home},
                               std::pair{Qt::Key_End, End},     std::pair{Qt::Key_Escape, Escape},
                               std::pair{Qt::Key_F11, F11},     std::pair{Qt::Key_Question, QuestionMark}};
    if ((event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0) return {};
    for (const auto& [key, name] : Names)
        if (event.key() == key)
            return KeyPress{name, event.modifiers().testFlag(Qt::ShiftModifier), event.isAutoRepeat()};
    return {};
}

/// A widget that takes what is typed, a combo box for the field in it.
bool TakesText(const QWidget* widget) {
    const auto* combo = qobject_cast<const QComboBox*>(widget);
    return qobject_cast<const QLineEdit*>(widget) != nullptr ||
           qobject_cast<const QPlainTextEdit*>(widget) != nullptr ||
           (combo != nullptr && combo->isEditable());
}

/// The window of a form. What happens to the window is told to the form as long as it stands.
class FormWindow : public QWidget {
  public:
    explicit FormWindow(Form::Kind kind) : QWidget(nullptr, FlagsOf(kind)), kind_(kind) {
        setFocusPolicy(Qt::NoFocus);
        setAcceptDrops(true);
    }

    Form* Owner = nullptr;
    Colour Ground = ButtonFace;
    bool ClosedState = true;  ///< not shown yet, or closed
    bool Closing = false;
    QEventLoop* ModalLoop = nullptr;
    QPointer<QAbstractButton> Accept;  ///< what Return pushes
    QPointer<QAbstractButton> Cancel;  ///< what Escape pushes

    void Prepare() {
        ClosedState = false;
        if (CoversScreen(kind_)) setWindowState(Qt::WindowMaximized);
    }

    /// Shows the window and waits until the window system has it on the screen.
    void ShowAndPaint() {
        Prepare();
        show();
        winId();
        windowHandle()->installEventFilter(this);
        raise();
        activateWindow();
        QElapsedTimer waited;
        waited.start();
        while (!windowHandle()->isExposed() && waited.elapsed() < ExposeMilliseconds)
            QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents, 10);
        repaint();
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    }

    /// Has the window system take the window for a part of the one that it is asked from.
    void StandOn(const QWidget* caller) {
        setWindowFlags(windowFlags() | Qt::Dialog);
        winId();
        if (caller != nullptr && caller != this) windowHandle()->setTransientParent(caller->windowHandle());
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched == windowHandle()) {
            if (event->type() == QEvent::KeyPress) return KeyDown(static_cast<QKeyEvent&>(*event));
            if (event->type() == QEvent::KeyRelease) KeyUp(static_cast<QKeyEvent&>(*event));
            if (event->type() == QEvent::MouseButtonPress) PressAt(static_cast<QMouseEvent&>(*event));
        }
        return QWidget::eventFilter(watched, event);
    }

  protected:
    /// Keys that no control of the form had a use for.
    void keyPressEvent(QKeyEvent* event) override {
        const bool returned = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
        QAbstractButton* answer = event->key() == Qt::Key_Escape ? Cancel.data() : nullptr;
        const bool keysAct = Owner != nullptr && Owner->OnKey;
        if (returned && (Accept || keysAct)) {
            auto* focused = qobject_cast<QAbstractButton*>(focusWidget());
            answer = focused != nullptr ? focused : Accept.data();
        }
        if (keysAct && (returned || event->key() == Qt::Key_Escape)) LeaveField();
        answer != nullptr ? answer->click() : QWidget::keyPressEvent(event);
    }

    void closeEvent(QCloseEvent* event) override {
        event->ignore();
        if (Owner != nullptr) Owner->Close();
    }

    void dragEnterEvent(QDragEnterEvent* event) override {
        if (Owner != nullptr && Owner->OnFilesDropped && !PathsOf(*event->mimeData()).empty())
            event->acceptProposedAction();
    }

    void dropEvent(QDropEvent* event) override {
        const auto paths = PathsOf(*event->mimeData());
        event->acceptProposedAction();
        if (Owner != nullptr) Fire(Owner->OnFilesDropped, paths);
    }

    void resizeEvent(QResizeEvent* event) override {
        QWidget::resizeEvent(event);
        if (event->oldSize().isValid() && !ClosedState && Owner != nullptr) Fire(Owner->OnResize);
    }

    void changeEvent(QEvent* event) override {
        QWidget::changeEvent(event);
        if (event->type() == QEvent::ActivationChange && !isActiveWindow()) ReleaseKeys();
    }

    void paintEvent(QPaintEvent* event) override { QPainter(this).fillRect(event->rect(), ToQt(Ground)); }

  private:
    static std::vector<std::filesystem::path> PathsOf(const QMimeData& data) {
        std::vector<std::filesystem::path> paths;
        for (const QUrl& url : data.urls())
            if (url.isLocalFile()) paths.emplace_back(url.toLocalFile().toStdU16String());
        return paths;
    }

    /// True if it goes no further.
    bool KeyDown(const QKeyEvent& event) {
        const int key = KeyOf(event);
        held_.insert(key);
        if (Owner != nullptr) Fire(Owner->OnKeyDown, key);
        const auto named = Named(event);
        bool taken = false;
        if (Owner != nullptr && named && QApplication::activePopupWidget() == nullptr &&
            !TakesText(focusWidget()))
            Fire(Owner->OnKey, *named, taken);
        return taken;
    }

    /// Where keys act, a field that keeps the keyboard would keep them from acting.
    void PressAt(const QMouseEvent& event) {
        if (Owner == nullptr || !Owner->OnKey || !TakesText(focusWidget())) return;
        const QWidget* pressed = childAt(event.position().toPoint());
        if (pressed == nullptr || !(pressed == focusWidget() || focusWidget()->isAncestorOf(pressed)))
            LeaveField();
    }

    void LeaveField() {
        if (TakesText(focusWidget())) focusWidget()->clearFocus();
    }

    void KeyUp(const QKeyEvent& event) {
        if (event.isAutoRepeat()) return;
        const int key = KeyOf(event);
        held_.erase(key);
        if (Owner != nullptr) Fire(Owner->OnKeyUp, key);
    }

    /// A key let go of in another window would count as held for ever.
    void ReleaseKeys() {
        const std::set<int> held = std::exchange(held_, {});
        for (const int key : held)
            if (Owner != nullptr) Fire(Owner->OnKeyUp, key);
    }

    Form::Kind kind_;
    std::set<int> held_;
};

FormWindow& WindowOf(const NativeControl& native) {
    return native.As<FormWindow>();
}

}  // namespace

Form::Form(std::string_view name, Kind kind, double width, double height)
    : Container(std::make_unique<NativeControl>(new FormWindow(kind), name)) {
    FormWindow& window = WindowOf(Native());
    window.Owner = this;
    Native().ApplyBack = [&window](Colour colour) {
        window.Ground = colour;
        window.update();
    };
    if (CoversScreen(kind)) {
        window.setGeometry(FreeArea());
    } else {
        Move(0, 0, width, height);
        if (kind == Kind::Fixed) window.setFixedSize(window.size());
        const QRect area = FreeArea();
        window.move(area.topLeft() +
                    QPoint((area.width() - window.width()) / 2, (area.height() - window.height()) / 2));
    }
}

Form::~Form() {
    FormWindow& window = WindowOf(Native());
    window.Owner = nullptr;
    if (window.ModalLoop != nullptr) window.ModalLoop->quit();
}

void Form::SetCaption(std::string_view caption) {
    const QString title = ToQt(caption);
    if (Native().Outer->windowTitle() != title) Native().Outer->setWindowTitle(title);
}

std::string Form::Caption() const {
    return FromQt(Native().Outer->windowTitle());
}

void Form::SetIcon(const Picture& icon) {
    if (!icon.Empty()) Native().Outer->setWindowIcon(QIcon(QPixmap::fromImage(ViewOf(icon.Data()).copy())));
}

double Form::ScaleWidth() const {
    return Native().Outer->width();
}

double Form::ScaleHeight() const {
    return Native().Outer->height();
}

void Form::ShowNow() {
    WindowOf(Native()).ShowAndPaint();
}

void Form::ShowModal() {
    FormWindow& window = WindowOf(Native());
    if (ProcessEnded() || window.ModalLoop != nullptr) return;
    const QPointer<FormWindow> living(&window);
    const QPointer<QWidget> caller(AskingWindow());
    window.StandOn(caller);
    window.setWindowModality(Qt::ApplicationModal);
    window.ShowAndPaint();
    if (!living || window.ClosedState) return;
    QEventLoop loop;
    window.ModalLoop = &loop;
    loop.exec();
    if (caller && caller->isVisible()) caller->activateWindow();  // for where no window manager does it
    if (!living) return;
    window.ModalLoop = nullptr;
    window.setWindowModality(Qt::NonModal);
}

void Form::Refresh() {
    QWidget& window = *Native().Outer;
    if (!window.isVisible()) return;
    window.repaint();
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void Form::Close() {
    FormWindow& window = WindowOf(Native());
    if (window.ClosedState || window.Closing) return;
    const QPointer<FormWindow> living(&window);
    window.Closing = true;
    bool keptOpen = false;
    Fire(OnQueryUnload, keptOpen);
    if (!living || window.Owner == nullptr) return;
    window.Closing = false;
    if (keptOpen) return;
    window.ClosedState = true;
    window.hide();
    if (window.ModalLoop != nullptr) window.ModalLoop->quit();
    Fire(OnUnload);
}

void Form::SetWholeScreen(bool whole) {
    QWidget& window = *Native().Outer;
    window.setWindowState(window.windowState().setFlag(Qt::WindowFullScreen, whole));
}

bool Form::WholeScreen() const {
    return Native().Outer->isFullScreen();
}

bool Form::Closed() const {
    return WindowOf(Native()).ClosedState;
}

void Form::SetAnswers(Button& accept, Button& cancel) {
    FormWindow& window = WindowOf(Native());
    window.Accept = &NativeControl::Of(accept).As<QAbstractButton>();
    window.Cancel = &NativeControl::Of(cancel).As<QAbstractButton>();
}

}  // namespace keelview
