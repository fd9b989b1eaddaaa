#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <vector>

#include "display/dialogs.h"
#include "display/platform.h"

namespace keelview {

/// Where the data lie, by the program's file, a folder of the user's own for it, and whether the system
/// speaks Japanese.
using DataFolderRule = std::function<std::filesystem::path(
    const std::filesystem::path& program, const std::filesystem::path& userFolder, bool japanese)>;

/// The toolkit's application: made once, first of all, with the arguments of the process. Sets the look
/// (tight Fusion), the faces that hold both languages, and the icon.
class Application {
  public:
    /// Without a rule the data lie beside the program.
    Application(int& argc, char** argv, DataFolderRule dataFolder = {});
    ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    /// The files and folders that the process was started with: its words that the toolkit does not take.
    std::vector<std::filesystem::path> Files() const;
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
