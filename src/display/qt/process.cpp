#include "display/process.h"

#include <QProcess>

#include "display/qt/convert.h"

namespace keelview {

int RunAndWait(const std::vector<std::string>& commandLine, std::string& output) {
    QStringList arguments;
    for (std::size_t word = 1; word < commandLine.size(); ++word) arguments << ToQt(commandLine[word]);
    QProcess child;
    child.setStandardInputFile(QProcess::nullDevice());
    child.setStandardErrorFile(QProcess::nullDevice());
    child.start(ToQt(commandLine.front()), arguments, QIODevice::ReadOnly);
    if (!child.waitForStarted(-1)) return -1;
    child.waitForFinished(-1);
    output += child.readAllStandardOutput().toStdString();
    return child.exitStatus() == QProcess::NormalExit ? child.exitCode() : -1;
}

}  // namespace keelview
