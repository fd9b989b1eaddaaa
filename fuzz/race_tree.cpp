// A whole race from one input: its race control file, two tracks, a wind file and a coastline cell stand in
// it one after another, with a line "@@" between them. All that follows from them is worked out and told as
// text.

#include <array>
#include <string>
#include <vector>

#include "analysis/race_numbers.h"
#include "report/race_report.h"
#include "target.h"

namespace keelview::fuzz {

namespace {

constexpr std::string_view Separator = "\n@@\n";

std::string_view CutPart(std::string_view& rest) {
    const std::size_t end = rest.find(Separator);
    const std::string_view part = rest.substr(0, end);
    rest = end == std::string_view::npos ? std::string_view{} : rest.substr(end + Separator.size());
    return part;
}

}  // namespace

void ReadTree(std::string_view input) {
    Tree().Write("raceadmin/R.txt", CutPart(input));
    for (const char* track : {"gpsdat/a.trk", "gpsdat/b.trk"}) Tree().Write(track, AsTrack(CutPart(input)));
    Tree().Write("winddat/w.csv", CutPart(input));
    Tree().Write("coastline/5239.cst", CutPart(input));
    RaceNumbers numbers;
    numbers.race.RaceFileName = "R.txt";
    const LoadOutcome outcome = LoadRace(Tree().Root(), numbers).Outcome;
    Require(outcome == LoadOutcome::Sound || outcome == LoadOutcome::NoFix, "files that are there open");
    const std::string report = RaceReport(numbers, {-100, 0, 50.5, 1e300});
    Require(report.starts_with('{') && report.ends_with('}'), "the report is one object");
}

}  // namespace keelview::fuzz
