// Runs the tests of forms: one application for all, on a screen of known size in memory. With another
// QT_QPA_PLATFORM than "offscreen" they run there, as on the windows of an X server.

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "display/application.h"
#include "support/off_screen.h"
#include "support/qt_driver.h"

namespace {

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
    keelview::DrawOffScreen(folder, 1600, 1200);
    keelview::Application application(argc, argv);
    Made() = &application;
    return RUN_ALL_TESTS();
}
