// view_pictures TREE RACEFILE LINK OUT.png: writes what the race display shows of a race at the moment of a
// link (session/moment_link), without the rest of its window: the map, the graphs or the tables; and prints
// the size of its form. On a screen of 1280 x 1024 in memory, in English.

#include <QTemporaryDir>
#include <cmath>
#include <cstdio>
#include <memory>

#include "base/files.h"
#include "base/paths.h"
#include "display/application.h"
#include "display/png.h"
#include "instruments/race_desk.h"
#include "session/moment_link.h"
#include "support/off_screen.h"

int main(int argc, char** argv) {
    using namespace keelview;
    if (argc != 5) {
        std::fputs("usage: view_pictures TREE RACEFILE LINK OUT.png\n", stderr);
        return 2;
    }
    const QTemporaryDir folder;
    DrawOffScreen(folder, 1280, 1024);
    const std::string race = argv[2];
    const std::string link = argv[3];
    const std::filesystem::path out = PathOf(argv[4]);
    const std::filesystem::path tree = PathOf(argv[1]);
    Application application(argc, argv);
    Services services{application.ThePlatform(), application.TheDialogs()};
    const auto app = std::make_unique<AppState>();
    app->settings.AppPath = tree;
    app->settings.EditMode = false;
    app->settings.UseEnglish = true;
    app->race.RaceFileName = race;
    RaceDesk desk(*app, services);
    if (!desk.session.StartSession()) return 1;
    desk.form.Option7.SetValue(true);
    FollowMomentLink(desk.session, link);
    application.ThePlatform().Pause(300);
    const Surface* view = &desk.form.Picture1;
    if (app->shown.ViewMode == ViewKind::Graph) view = &desk.form.GPIC;
    if (app->shown.ViewMode == ViewKind::Data) view = &desk.form.PicTime;
    Surface& sheet = desk.form.Picture13;
    const Picture ground = view->Image();
    sheet.Move(0, 0, ground.Width() + 2, ground.Height() + 2);
    sheet.PaintPicture(ground, 0, 0);
    for (int boat = 0; view == &desk.form.Picture1 && boat < desk.form.Boat.Count(); ++boat) {
        const Sprite& hull = desk.form.Boat[boat];
        if (hull.Visible())
            sheet.PaintPicture(hull.Image(), std::round(hull.Left()), std::round(hull.Top()));
    }
    std::printf("%g %g\n", desk.form.ScaleWidth(), desk.form.ScaleHeight());
    return WriteFileAtomically(out, PngOf(sheet.Image().Data())) ? 1 : 0;
}
