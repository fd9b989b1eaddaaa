#include "display/application.h"

#include <QApplication>
#include <QIcon>
#include <QPalette>
#include <QTimer>
#include <QWidget>
#include <algorithm>

#include "display/qt/convert.h"
#include "display/qt/native_control.h"
#include "display/qt/system.h"
#include "display/qt/tight_style.h"

// The pictures are linked in by this; it must stand outside of every namespace.
static void LinkAssets() {
    Q_INIT_RESOURCE(assets);
}

namespace keelview {

namespace {

constexpr double DefaultPoints = 9.0;

/// The colours of the controls, the same whatever the desktop's own are: the forms paint on them.
QPalette LightPalette() {
    const QColor face = ToQt(ButtonFace);
    QPalette palette(face);
    palette.setColor(QPalette::Base, ToQt(WindowBackground));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Active, role, ToQt(WindowText));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Inactive, role, ToQt(WindowText));
        palette.setColor(QPalette::Disabled, role, QColor(130, 130, 130));
    }
    palette.setColor(QPalette::Highlight, QColor(0, 96, 192));
    palette.setColor(QPalette::HighlightedText, ToQt(White));
    return palette;
}

bool AnyWindowShown() {
    const QWidgetList windows = QApplication::topLevelWidgets();
    return std::ranges::any_of(windows, [](const QWidget* window) { return window->isVisible(); });
}

/// Ends the event loop when the last window is gone. One form may hide before the next one shows, so the
/// windows are counted when the loop is idle.
class LastWindowWatch : public QObject {
  public:
    LastWindowWatch() { qApp->installEventFilter(this); }
    bool Running = false;

    void CountSoon() {
        QTimer::singleShot(0, this, [this] {
            if (Running && !AnyWindowShown()) QCoreApplication::exit(0);
        });
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Hide && watched->isWidgetType() &&
            static_cast<const QWidget*>(watched)->isWindow())
            CountSoon();
        return false;
    }
};

}  // namespace

struct Application::Impl {
    Impl(int& argc, char** argv) : Native(argc, argv) {}

    QApplication Native;
    LastWindowWatch Watch;
    std::string Title = "Keelview";
    std::unique_ptr<Platform> System = MakePlatform();
    std::unique_ptr<Dialogs> Questions = MakeDialogs(Title);
};

Application::Application(int& argc, char** argv) : impl_(std::make_unique<Impl>(argc, argv)) {
    LinkAssets();
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setApplicationName("Keelview");
    QApplication::setStyle(new TightStyle);
    // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks): the application has taken the style over
    QApplication::setPalette(LightPalette());
    QApplication::setFont(UiFont({}, DefaultPoints, false));
    QIcon icon;
    for (const char* name : {"icon.png", "icon32.png", "icon48.png", "icon128.png"})
        icon.addFile(QString(":/assets/") + name);
    QApplication::setWindowIcon(icon);
}

Application::~Application() {
    // Widgets that were let go of wait for the event loop, which will not run again.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

Platform& Application::ThePlatform() {
    return *impl_->System;
}

Dialogs& Application::TheDialogs() {
    return *impl_->Questions;
}

void Application::SetDefaultTitle(std::string_view title) {
    impl_->Title = title;
}

int Application::Run() {
    if (ProcessEnded()) return 0;
    impl_->Watch.Running = true;
    impl_->Watch.CountSoon();
    const int status = QCoreApplication::exec();
    impl_->Watch.Running = false;
    return status;
}

void Application::Later(std::function<void()> task) {
    QTimer::singleShot(0, &impl_->Watch, [task = std::move(task)] {
        if (!ProcessEnded()) task();
    });
}

}  // namespace keelview
