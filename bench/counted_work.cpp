// counted_work load|roundings|frames: does one piece of work of the long race, once, for a tool that counts
// instructions. Such counts depend on compiler and libraries alone, not on how fast or busy a machine is.

#include <cstdlib>
#include <iostream>
#include <memory>
#include <string_view>

#include "analysis/mark_rounding.h"
#include "display/application.h"
#include "film.h"
#include "track_tree.h"

using namespace keelview;

// What is counted, under names that a tool can be told; bench/instructions tells them.
extern "C" {

[[gnu::noinline]] void CountedLoad(const bench::TrackTree& tree, Tracks& tracks) {
    TrackArea area;
    EarthScale scale;
    tree.Load(tracks, area, scale);
}

[[gnu::noinline]] void CountedRoundings(const RaceControl& race, const Tracks& tracks,
                                        const EarthScale& scale, MarkPasses& passes) {
    FindMarkPassTimes(race, tracks, scale, passes);
}

[[gnu::noinline]] void CountedFrames(bench::Film& film) {
    for (int frame = 0; frame < 100; ++frame) film.Tick();
}
}

namespace {

int Load() {
    const bench::TrackTree tree(bench::Fixes);
    Tracks tracks;
    CountedLoad(tree, tracks);
    return tracks.Boats[bench::Boats].Count() == bench::Fixes ? 0 : 1;
}

int Roundings() {
    const RaceControl race = bench::LongRace();
    Tracks tracks;
    TrackArea area;
    EarthScale scale;
    bench::SailFleet(race, tracks, area, scale);
    const auto passes = std::make_unique<MarkPasses>();
    CountedRoundings(race, tracks, scale, *passes);
    return passes->FirstPassTime[bench::Entries] ? 0 : 1;
}

int Frames(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    const Application application(argc, argv);
    bench::Film film;
    CountedFrames(film);
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    const std::string_view work = argc == 2 ? argv[1] : "";
    if (work == "load") return Load();
    if (work == "roundings") return Roundings();
    if (work == "frames") return Frames(argc, argv);
    std::cerr << "usage: counted_work load|roundings|frames\n";
    return 2;
}
