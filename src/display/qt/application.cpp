#include "display/application.h"

#include <QApplication>
#include <QDir>
#include <QFontDatabase>
#include <QIcon>
#include <QPalette>
#include <QPixmapCache>
#include <QThread>
#include <QTimer>
#include <QWidget>
#include <algorithm>
#include <deque>
#include <utility>

#include "base/paths.h"
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

/// Takes the faces that lie beside the program: a distribution brings them to machines that have none.
void LoadOwnFonts() {
    const QDir folder(QCoreApplication::applicationDirPath() + "/fonts");
    for (const QString& face : folder.entryList({"*.ttf", "*.otf", "*.ttc"}, QDir::Files))
        QFontDatabase::addApplicationFont(folder.filePath(face));
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

/// Knows how deep events lie inside each other: a handler may let events in, and so may a modal window.
/// What waits for the end of the running event waits for the outermost one.
class EventCounter : public QApplication {
  public:
    using QApplication::QApplication;

    void AddTask(std::function<void()> task) {
        tasks_.push_back(std::move(task));
        RunTasksSoon();
    }

    bool notify(QObject* receiver, QEvent* event) override {
        if (QThread::currentThread() != thread()) return QApplication::notify(receiver, event);
        ++depth_;
        const bool taken = QApplication::notify(receiver, event);
        --depth_;
        if (depth_ == 0 && !tasks_.empty()) RunTasksSoon();
        return taken;
    }

  private:
    void RunTasksSoon() {
        QTimer::singleShot(0, this, [this] { RunTasks(); });
    }

    void RunTasks() {
        // This call is an event itself. At any greater depth some handler is still at work further out.
        while (depth_ == 1 && !tasks_.empty()) {
            const std::function<void()> task = std::move(tasks_.front());
            tasks_.pop_front();
            if (!ProcessEnded()) task();
        }
    }

    std::deque<std::function<void()>> tasks_;
    int depth_ = 0;
};

}  // namespace

struct Application::Impl {
    Impl(int& argc, char** argv, DataFolderRule dataFolder)
        : Native(argc, argv), System(MakePlatform(std::move(dataFolder))) {}

    EventCounter Native;
    LastWindowWatch Watch;
    std::unique_ptr<Platform> System;
    std::unique_ptr<Dialogs> Questions = MakeDialogs();
};

Application::Application(int& argc, char** argv, DataFolderRule dataFolder)
    : impl_(std::make_unique<Impl>(argc, argv, std::move(dataFolder))) {
    LinkAssets();
    LoadOwnFonts();
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setApplicationName("Keelview");
    QGuiApplication::setDesktopFileName("org.keelview.Keelview");
    QApplication::setStyle(new TightStyle);  // the application takes it over
    QApplication::setPalette(LightPalette());
    // The style would keep the faces of buttons by the palettes of their forms, which no other form has.
    // The names of those faces stay even when the faces are gone, some 20 KB an opened race, and drawing a
    // button anew takes no time that counts.
    QPixmapCache::setCacheLimit(0);
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

std::vector<std::filesystem::path> Application::Files() const {
    std::vector<std::filesystem::path> files;
    for (const QString& word : QCoreApplication::arguments().sliced(1))
        files.push_back(PathOf(FromQt(word)));
    return files;
}

Platform& Application::ThePlatform() {
    return *impl_->System;
}

Dialogs& Application::TheDialogs() {
    return *impl_->Questions;
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
    impl_->Native.AddTask(std::move(task));
}

}  // namespace keelview
