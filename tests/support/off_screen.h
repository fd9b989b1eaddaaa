#pragma once

#include <QByteArray>
#include <QTemporaryDir>
#include <QtGlobal>
#include <fstream>
#include <string>

namespace keelview {

/// Has the toolkit draw on a screen of that size in memory, unless QT_QPA_PLATFORM asks for another than
/// "offscreen". To be called before the application is made; `folder` stands as long as it.
inline void DrawOffScreen(const QTemporaryDir& folder, int width, int height) {
    const QByteArray asked = qgetenv("QT_QPA_PLATFORM");
    if (!asked.isEmpty() && asked != "offscreen") return;
    const std::string file = folder.filePath("screen.json").toStdString();
    std::ofstream(file) << R"({"screens": [{"name": "test", "x": 0, "y": 0, "width": )" << width
                        << R"(, "height": )" << height
                        << R"(, "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})";
    qputenv("QT_QPA_PLATFORM", QByteArray::fromStdString("offscreen:configfile=" + file));
}

}  // namespace keelview
