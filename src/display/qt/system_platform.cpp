#include <QApplication>
#include <QClipboard>
#include <QCoreApplication>
#include <QDateTime>
#include <QDesktopServices>
#include <QEventLoop>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLocale>
#include <QProcess>
#include <QScreen>
#include <QStandardPaths>
#include <QStorageInfo>
#include <QTimer>
#include <QUrl>
#include <QWidget>
#include <chrono>
#include <cstdlib>
#include <utility>

#include "base/files.h"
#include "base/paths.h"
#include "display/platform.h"
#include "display/qt/convert.h"
#include "display/qt/native_control.h"
#include "display/qt/system.h"
#include "display/qt/system_words.h"

namespace keelview {

namespace {

constexpr double TwipsPerPixel = 15.0;

// Results of OpenDocument, as the desktop's shell has them.
constexpr int Opened = 33;
constexpr int NoSuchFile = 2;
constexpr int NoSuchPath = 3;
constexpr int NotAllowed = 5;
constexpr int NoProgram = 31;

constexpr int DriveIsFixed = 3;

/// Whether a locale such as "ja_JP.UTF-8", as the environment has it, is a Japanese one.
bool IsJapanese(std::string_view locale) {
    return locale.substr(0, locale.find_first_of("_.@")) == "ja";
}

/// A variable of the environment; empty where it is not set.
std::string Variable(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

/// Starts a program that goes its own way; what it says is heard by nobody.
bool StartApart(const QString& program, const QStringList& arguments, const QString& folder) {
    QProcess process;
    process.setProgram(program);
    process.setArguments(arguments);
    if (!folder.isEmpty()) process.setWorkingDirectory(folder);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    return process.startDetached();
}

/// Leaves a document or an address to the toolkit, which knows how other desktops open them. On Linux it
/// would ask for the same opener that we have not found.
bool OpenedByToolkit([[maybe_unused]] const QString& document) {
#ifdef Q_OS_LINUX
    return false;
#else
    return QDesktopServices::openUrl(QUrl::fromUserInput(document));
#endif
}

class SystemPlatform : public Platform {
  public:
    explicit SystemPlatform(DataFolderRule dataFolder) : dataFolder_(std::move(dataFolder)) {}

    std::filesystem::path ProgramFolder() override {
        const std::string tree = Variable("KEELVIEW_TREE");
        if (!tree.empty()) return PathOf(tree).lexically_normal();
        const std::filesystem::path program = PathOf(FromQt(QCoreApplication::applicationFilePath()));
        if (!dataFolder_) return program.parent_path();
        const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
        return dataFolder_(program, PathOf(FromQt(data + "/keelview")), UserIsJapanese());
    }

    bool UserIsJapanese() override {
        for (const char* name : {"LC_ALL", "LC_MESSAGES", "LC_CTYPE", "LANG"})
            if (const std::string locale = Variable(name); !locale.empty()) return IsJapanese(locale);
        return QLocale::system().language() == QLocale::Japanese;  // of a system that has no such variables
    }

    void SetLanguage(bool useEnglish) override {
        if (useEnglish)
            QCoreApplication::removeTranslator(&japaneseWords_);
        else
            QCoreApplication::installTranslator(&japaneseWords_);
    }

    int DriveType(const std::filesystem::path& folder) override {
        const QByteArray kind =
            QStorageInfo(QString::fromStdString(folder.string())).fileSystemType().toLower();
        return kind == "iso9660" || kind == "udf" || kind == "cdfs" ? DriveIsCdRom : DriveIsFixed;
    }

    ClockReading UtcNow() override { return Now(false); }
    ClockReading LocalNow() override { return Now(true); }

    double SteadySeconds() override {
        return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
    }

    int OpenDocument(const std::string& target, const std::filesystem::path& folder) override;

    bool StartProgram(const std::filesystem::path& program) override {
        const QFileInfo file(QString::fromStdString(program.string()));
        return file.isFile() && file.isExecutable() &&
               StartApart(file.absoluteFilePath(), {}, file.absolutePath());
    }

    void PlaySound(const std::filesystem::path& file) override {
        const QString sound = QString::fromStdString(file.string());
        for (const char* name : {"aplay", "pw-play", "paplay", "afplay"}) {
            const QString player = QStandardPaths::findExecutable(name);
            if (!player.isEmpty() && StartApart(player, {sound}, {})) return;
        }
    }

    ScreenInfo Screen() override {
        const QScreen* screen = QGuiApplication::primaryScreen();
        const QSize size = screen != nullptr ? screen->geometry().size() : QSize(1024, 768);
        return {size.width() * TwipsPerPixel, size.height() * TwipsPerPixel, TwipsPerPixel, TwipsPerPixel};
    }

    void DeliverEvents() override {
        if (!ProcessEnded()) QCoreApplication::processEvents();
    }

    void CopyText(const std::string& text) override {
        QGuiApplication::clipboard()->setText(QString::fromStdString(text));
    }
    void SetBusyPointer(bool busy) override {
        if (busy == busy_) return;
        busy_ = busy;
        if (busy)
            QGuiApplication::setOverrideCursor(Qt::WaitCursor);
        else
            QGuiApplication::restoreOverrideCursor();
    }

    void Pause(int milliseconds) override {
        if (ProcessEnded()) return;
        QEventLoop loop;
        QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, &QEventLoop::quit);
        loop.exec();
    }

    void EndProcess() override {
        SetProcessEnded(true);
        for (QWidget* window : QApplication::topLevelWidgets()) window->hide();
        QCoreApplication::exit(0);
    }

    bool Ending() override { return ProcessEnded(); }

  private:
    static ClockReading Now(bool local) {
        const QDateTime now = QDateTime::currentDateTime();
        return {static_cast<CivilTime>(now.toSecsSinceEpoch()) + (local ? now.offsetFromUtc() : 0),
                now.time().msec()};
    }

    DataFolderRule dataFolder_;
    JapaneseWords japaneseWords_;
    bool busy_ = false;
};

int SystemPlatform::OpenDocument(const std::string& target, const std::filesystem::path& folder) {
    QString document = ToQt(target);
    if (target.find("://") == std::string::npos) {
        const std::filesystem::path path = folder / PathOf(target);
        std::error_code error;
        if (!std::filesystem::exists(path.parent_path(), error)) return NoSuchPath;
        if (!std::filesystem::exists(path, error)) return NoSuchFile;
        const QFileInfo file(QString::fromStdString(path.string()));
        if (!file.isReadable()) return NotAllowed;
        document = file.absoluteFilePath();
    }
    const QString opener = QStandardPaths::findExecutable("xdg-open");
    if (opener.isEmpty()) return OpenedByToolkit(document) ? Opened : NoProgram;
    const QString folderName = QString::fromStdString(folder.string());
    return StartApart(opener, {document}, QFileInfo(folderName).isDir() ? folderName : QString())
               ? Opened
               : NoProgram;
}

}  // namespace

std::unique_ptr<Platform> MakePlatform(DataFolderRule dataFolder) {
    return std::make_unique<SystemPlatform>(std::move(dataFolder));
}

}  // namespace keelview
