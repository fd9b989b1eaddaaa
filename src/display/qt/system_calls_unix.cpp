#include <QByteArray>
#include <QDateTime>
#include <QDesktopServices>
#include <QFileInfo>
#include <QLocale>
#include <QStandardPaths>
#include <QStorageInfo>
#include <QUrl>
#include <string_view>

#include "base/paths.h"
#include "display/qt/convert.h"
#include "display/qt/start_apart.h"
#include "display/qt/system_calls.h"

namespace keelview {

namespace {

// Results of OpenDocument, as the desktop's shell has them.
constexpr int Opened = 33;
constexpr int NoSuchFile = 2;
constexpr int NoSuchPath = 3;
constexpr int NotAllowed = 5;
constexpr int NoProgram = 31;

/// Whether a locale such as "ja_JP.UTF-8", as the environment has it, is a Japanese one.
bool IsJapanese(std::string_view locale) {
    return locale.substr(0, locale.find_first_of("_.@")) == "ja";
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

ClockReading Now(bool local) {
    const QDateTime now = QDateTime::currentDateTime();
    return {static_cast<CivilTime>(now.toSecsSinceEpoch()) + (local ? now.offsetFromUtc() : 0),
            now.time().msec()};
}

}  // namespace

bool PersonReadsJapanese() {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LC_CTYPE", "LANG"})
        if (const QByteArray locale = qgetenv(name); !locale.isEmpty())
            return IsJapanese(locale.toStdString());
    return QLocale::system().language() == QLocale::Japanese;  // of a system that has no such variables
}

std::filesystem::path PersonsDataFolder() {
    return PathOf(FromQt(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation))) /
           "keelview";
}

bool LiesOnCdRom(const std::filesystem::path& folder) {
    const QByteArray kind =
        QStorageInfo(QString::fromStdString(folder.string())).fileSystemType().toLower();
    return kind == "iso9660" || kind == "udf" || kind == "cdfs";
}

ClockReading UtcClock() {
    return Now(false);
}

ClockReading LocalClock() {
    return Now(true);
}

int OpenByShell(const std::string& target, const std::filesystem::path& folder) {
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

void PlayWave(const std::filesystem::path& file) {
    const QString sound = QString::fromStdString(file.string());
    for (const char* name : {"aplay", "pw-play", "paplay", "afplay"}) {
        const QString player = QStandardPaths::findExecutable(name);
        if (!player.isEmpty() && StartApart(player, {sound}, {})) return;
    }
}

}  // namespace keelview
