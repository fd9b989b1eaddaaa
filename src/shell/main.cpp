#include <filesystem>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "base/kept_memory.h"
#include "display/application.h"
#include "session/app_state.h"
#include "shell/data_folder.h"
#include "shell/program.h"
#include "shell/start.h"

int main(int argc, char** argv) {
    using namespace keelview;
    KeepMemory();
    Application application(argc, argv, SettleDataFolder);
    Services services{application.ThePlatform(), application.TheDialogs()};
    const auto app = std::make_unique<AppState>();
    const std::vector<std::filesystem::path> files = application.Files();
    const StartOutcome outcome = SettleStart(*app, services, !files.empty());
    if (outcome == StartOutcome::End) return 0;
    Program program(*app, services,
                    [&application](std::function<void()> task) { application.Later(std::move(task)); });
    program.Start(outcome, files);
    return application.Run();
}
