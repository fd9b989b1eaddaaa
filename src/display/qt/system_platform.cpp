#include <QApplication>
#include <QClipboard>
#include <QCoreApplication>
#include <QEventLoop>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLockFile>
#include <QScreen>
#include <QTimer>
#include <QWidget>
#include <chrono>
#include <memory>
#include <utility>

#include "base/paths.h"
#include "display/platform.h"
#include "display/qt/convert.h"
#include "display/qt/native_control.h"
#include "display/qt/start_apart.h"
#include "display/qt/system.h"
#include "display/qt/system_calls.h"
#include "display/qt/system_words.h"

namespace keelview {

namespace {

constexpr double TwipsPerPixel = 15.0;
constexpr int DriveIsFixed = 3;

class SystemPlatform : public Platform {
  public:
    explicit SystemPlatform(DataFolderRule dataFolder) : dataFolder_(std::move(dataFolder)) {}

    std::filesystem::path ProgramFolder() override {
        const std::string tree = FromQt(qEnvironmentVariable("KEELVIEW_TREE"));
        if (!tree.empty()) return PathOf(tree).lexically_normal();
        const std::filesystem::path program =
            PathOf(FromQt(QCoreApplication::applicationFilePath())).make_preferred();
        if (!dataFolder_) return program.parent_path();
        return dataFolder_(program, PersonsDataFolder(), UserIsJapanese());
    }

    bool UserIsJapanese() override { return PersonReadsJapanese(); }

    void SetLanguage(bool useEnglish) override {
        if (useEnglish)
            QCoreApplication::removeTranslator(&japaneseWords_);
        else
            QCoreApplication::installTranslator(&japaneseWords_);
    }

    int DriveType(const std::filesystem::path& folder) override {
        return LiesOnCdRom(folder) ? DriveIsCdRom : DriveIsFixed;
    }

    ClockReading UtcNow() override { return UtcClock(); }
    ClockReading LocalNow() override { return LocalClock(); }

    double SteadySeconds() override {
        return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
    }

    int OpenDocument(const std::string& target, const std::filesystem::path& folder) override {
        return OpenByShell(target, folder);
    }

    bool StartProgram(const std::filesystem::path& program) override {
        const QFileInfo file(QString::fromStdString(program.string()));
        return file.isFile() && file.isExecutable() &&
               StartApart(file.absoluteFilePath(), {}, file.absolutePath());
    }

    bool ClaimFile(const std::filesystem::path& file) override {
        if (claim_ != nullptr && file == claimed_) return true;
        claim_.reset();
        if (file.empty()) return true;
        const std::filesystem::path note =
            file.parent_path() /
            PathOf("." + FromQt(QString::fromStdU16String(file.filename().u16string())) + ".open");
        auto claim = std::make_unique<QLockFile>(QString::fromStdU16String(note.u16string()));
        claim->setStaleLockTime(0);  // however long a race is open: it is the other program that must run
        if (!claim->tryLock()) return claim->error() != QLockFile::LockFailedError;
        claim_ = std::move(claim);
        claimed_ = file;
        return true;
    }

    void PlaySound(const std::filesystem::path& file) override { PlayWave(file); }

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
    DataFolderRule dataFolder_;
    JapaneseWords japaneseWords_;
    std::unique_ptr<QLockFile> claim_;  // while a file is claimed
    std::filesystem::path claimed_;
    bool busy_ = false;
};

}  // namespace

std::unique_ptr<Platform> MakePlatform(DataFolderRule dataFolder) {
    return std::make_unique<SystemPlatform>(std::move(dataFolder));
}

}  // namespace keelview
