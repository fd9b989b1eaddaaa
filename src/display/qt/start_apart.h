#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

namespace keelview {

/// Starts a program that goes its own way; what it says is heard by nobody. False if it cannot be started.
inline bool StartApart(const QString& program, const QStringList& arguments, const QString& folder) {
    QProcess process;
    process.setProgram(program);
    process.setArguments(arguments);
    if (!folder.isEmpty()) process.setWorkingDirectory(folder);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    return process.startDetached();
}

}  // namespace keelview
