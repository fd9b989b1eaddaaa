// counted_work load|roundings|frames [ready]: does one piece of work of the long race, once, for a tool
// that counts instructions; with `ready` all but the work itself, so that the difference is the work,
// whatever the thread. Such counts do not depend on how fast or busy a machine is.

#include <cstdlib>
#include <iostream>
#include <memory>
#include <string_view>

#include "analysis/mark_rounding.h"
#include "display/application.h"
#include "film.h"
#include "track_tree.h"

using namespace keelview;

namespace {

int Load(bool ready) {
    const bench::TrackTree tree(bench::Fixes);
    if (ready) return 0;
    Tracks tracks;
    TrackArea area;
    EarthScale scale;
    tree.Load(tracks, area, scale);
    return tracks.Boats[bench::Boats].Count() == bench::Fixes ? 0 : 1;
}

int Roundings(bool ready) {
    const RaceControl race = bench::LongRace();
    Tracks tracks;
    TrackArea area;
    EarthScale scale;
    bench::SailFleet(race, tracks, area, scale);
    const auto passes = std::make_unique<MarkPasses>();
    if (ready) return 0;
    FindMarkPassTimes(race, tracks, scale, *passes);
    return passes->FirstPassTime[bench::Entries] ? 0 : 1;
}

int Frames(int argc, char** argv, bool ready) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    const Application application(argc, argv);
    bench::Film film;
    for (int frame = 0; frame < 100 && !ready; ++frame) film.Tick();
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    const std::string_view work = argc >= 2 ? argv[1] : "";
    const bool ready = argc == 3 && argv[2] == std::string_view("ready");
    if (argc == 2 || ready) {
        if (work == "load") return Load(ready);
        if (work == "roundings") return Roundings(ready);
        if (work == "frames") return Frames(argc, argv, ready);
    }
    std::cerr << "usage: counted_work load|roundings|frames [ready]\n";
    return 2;
}
