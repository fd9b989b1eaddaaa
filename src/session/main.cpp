#include <memory>

#include "display/application.h"
#include "display/splash.h"
#include "session/app_state.h"
#include "session/start.h"
#include "shell/race_desk.h"

int main(int argc, char** argv) {
    using namespace keelview;
    Application application(argc, argv);
    Services services{application.ThePlatform(), application.TheDialogs()};
    const auto app = std::make_unique<AppState>();
    if (SettleStart(*app, services) == StartOutcome::End) return 0;

    const Settings& settings = app->settings;
    Splash splash(services.platform.Screen(), settings.UseEnglish, settings.UiFontName, settings.FontScale);
    splash.ShowNow();
    RaceDesk desk(*app, services, splash);
    desk.session.Display().OnQueryUnload = [&services] { services.platform.EndProcess(); };
    if (!desk.session.StartSession()) return 0;
    return application.Run();
}
