#pragma once

#include <filesystem>
#include <functional>
#include <memory>

#include "display/dialogs.h"
#include "display/platform.h"

namespace keelview {

/// The toolkit's application: made once, first of all, with the arguments of the process. Sets the look
/// (tight Fusion), the faces that hold both languages, and the icon.
class Application {
  public:
    Application(int& argc, char** argv);
    ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    Platform& ThePlatform();
    Dialogs& TheDialogs();
    /// Runs until the last window is closed or EndProcess is called; the exit status.
    int Run();
    /// Has something done once, when the running event is over, and with it all those in whose midst it
    /// came: no handler of any form is at work then. What was asked for first is done first.
    void Later(std::function<void()> task);

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace keelview
