// film_speed TREE [SPEED [SECONDS]]: opens the race of a laid-out tree, lets the film run at a speed of the
// speed bar (its value, 5 at first) for so many real seconds, and prints how far the clock of the race
// moved. The display is the one that QT_QPA_PLATFORM names.

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>

#include "display/application.h"
#include "instruments/race_desk.h"
#include "shell/start.h"

namespace {

using namespace keelview;

void LetRun(Platform& platform, double seconds) {
    const double end = platform.SteadySeconds() + seconds;
    while (platform.SteadySeconds() < end) platform.Pause(5);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::cerr << "usage: film_speed TREE [SPEED [SECONDS]]\n";
        return 2;
    }
    const int speed = argc > 2 ? std::atoi(argv[2]) : 5;
    const double seconds = argc > 3 ? std::atof(argv[3]) : 60;
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    Application application(argc, argv);
    Platform& platform = application.ThePlatform();
    Services services{platform, application.TheDialogs()};
    const auto app = std::make_unique<AppState>();
    app->settings.AppPath = std::filesystem::absolute(argv[1]);
    app->settings.EditMode = false;
    app->race.RaceFileName = FirstRace(app->settings);
    RaceDesk desk(*app, services);
    if (!desk.session.StartSession()) return 1;
    LetRun(platform, 3);  // auto trace is on, and the step is calibrated
    desk.session.Display().HScroll1.SetValue(speed);
    LetRun(platform, 2);
    const double realFrom = platform.SteadySeconds();
    double race = 0;
    double last = app->clock.ReplayTime;
    while (platform.SteadySeconds() < realFrom + seconds) {
        platform.Pause(5);
        double moved = app->clock.ReplayTime - last;
        if (moved < 0) moved += LatestFixTime(app->tracks) - app->clock.ReplayRangeStart;  // it began anew
        race += moved;
        last = app->clock.ReplayTime;
    }
    const double real = platform.SteadySeconds() - realFrom;
    const double wanted = app->clock.SpeedMultiplier * real;
    std::cout << app->clock.SpeedMultiplier << " times for " << real << " s: the race moved by " << race
              << " s, " << (race / wanted - 1) * 100 << " % off\n";
    return 0;
}
