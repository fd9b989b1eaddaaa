// Runs the tests of forms: one application for all, on a screen of known size in memory. With another
// QT_QPA_PLATFORM than "offscreen" they run there, as on the windows of an X server.

#include <gtest/gtest.h>

#include <QByteArray>
#include <QTemporaryDir>
#include <QtGlobal>
#include <fstream>

#include "display/application.h"
#include "support/application.h"

namespace {

constexpr const char* Screen =
    R"({"screens": [{"name": "test", "x": 0, "y": 0, "width": 1600, "height": 1200,
    "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})";

/// Has the toolkit draw into memory, unless another platform is asked for.
void ChooseScreen(const QTemporaryDir& folder) {
    const QByteArray asked = qgetenv("QT_QPA_PLATFORM");
    if (!asked.isEmpty() && asked != "offscreen") return;
    const std::string file = folder.filePath("screen.json").toStdString();
    std::ofstream(file) << Screen;
    qputenv("QT_QPA_PLATFORM", QByteArray::fromStdString("offscreen:configfile=" + file));
}

keelview::Application*& Made() {
    static keelview::Application* made = nullptr;
    return made;
}

}  // namespace

keelview::Application& keelview::TheApplication() {
    return *Made();
}

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const QTemporaryDir folder;
    ChooseScreen(folder);
    keelview::Application application(argc, argv);
    Made() = &application;
    return RUN_ALL_TESTS();
}
