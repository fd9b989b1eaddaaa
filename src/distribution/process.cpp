#include "distribution/process.h"

#include <QProcess>
#include <QString>
#include <QStringList>

namespace keelview {

int RunAndWait(const std::vector<std::string>& commandLine, std::string& output) {
    QStringList arguments;
    for (std::size_t word = 1; word < commandLine.size(); ++word)
        arguments << QString::fromStdString(commandLine[word]);
    QProcess child;
    child.setStandardInputFile(QProcess::nullDevice());
    child.setStandardErrorFile(QProcess::nullDevice());
    child.start(QString::fromStdString(commandLine.front()), arguments, QIODevice::ReadOnly);
    if (!child.waitForStarted(-1)) return -1;
    child.waitForFinished(-1);
    output += child.readAllStandardOutput().toStdString();
    return child.exitStatus() == QProcess::NormalExit ? child.exitCode() : -1;
}

}  // namespace keelview
