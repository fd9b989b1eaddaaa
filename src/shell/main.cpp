#include <algorithm>
#include <functional>
#include <memory>
#include <utility>

#include "display/application.h"
#include "session/app_state.h"
#include "shell/data_folder.h"
#include "shell/program.h"
#include "shell/start.h"

int main(int argc, char** argv) {
    using namespace keelview;
    Application application(argc, argv, SettleDataFolder);
    Services services{application.ThePlatform(), application.TheDialogs()};
    const auto app = std::make_unique<AppState>();
    const StartOutcome outcome = SettleStart(*app, services, argc > 1);
    if (outcome == StartOutcome::End) return 0;
    Program program(*app, services,
                    [&application](std::function<void()> task) { application.Later(std::move(task)); });
    program.Start(outcome, {argv + std::min(argc, 1), argv + argc});  // as the toolkit has left them
    return application.Run();
}
