// keelview-report TREE RACEFILE [--at SECONDS]... [--walk] [--csv time|distance|speed] [--tracks]
// Prints the numbers of a race as one JSON object, or one table of it as CSV for a spreadsheet, or with
// --tracks what its track files hold. A file that cannot be read is told on standard error. TREE is a
// folder with raceadmin, gpsdat, winddat and coastline, RACEFILE a race control file in raceadmin. With
// --walk the pass times are those that the walk along each track finds by itself, bare numbers with 0 for
// an entry that it did not find. Nothing is written to the tree.

#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/files.h"
#include "base/numbers.h"
#include "racedata/refusal_text.h"
#include "report/leg_report.h"
#include "report/race_report.h"
#include "report/track_report.h"

namespace keelview {

namespace {

constexpr int WrongUse = 2;
constexpr std::string_view Usage =
    "usage: keelview-report TREE RACEFILE [--at SECONDS]... [--walk] [--csv time|distance|speed] "
    "[--tracks]";

struct Request {
    std::filesystem::path Tree;
    std::string RaceFile;
    std::vector<double> At;
    bool Walk = false;            ///< the walk's times alone
    std::optional<StatKind> Csv;  ///< the table that is wanted in place of the whole
    bool Tracks = false;          ///< what the track files hold, in place of the whole
    std::string Fault;            ///< what is wrong with the command line; empty when nothing is
};

Request ReadCommandLine(const std::vector<std::string_view>& arguments) {
    Request request;
    std::vector<std::string_view> names;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string_view argument = arguments[i];
        if (argument == "--at") {
            const auto seconds =
                ++i < arguments.size() ? StrictNumber(arguments[i]) : std::optional<double>();
            if (!seconds) request.Fault = "--at needs a number of seconds";
            request.At.push_back(seconds.value_or(0));
        } else if (argument == "--walk") {
            request.Walk = true;
        } else if (argument == "--tracks") {
            request.Tracks = true;
        } else if (argument == "--csv") {
            request.Csv = ++i < arguments.size() ? TableKind(arguments[i]) : std::nullopt;
            if (!request.Csv) request.Fault = "--csv needs time, distance or speed";
        } else if (argument.starts_with("-")) {
            request.Fault = "unknown option " + std::string(argument);
        } else {
            names.push_back(argument);
        }
    }
    if (names.size() == 2) {
        request.Tree = names[0];
        request.RaceFile = names[1];
    } else if (request.Fault.empty()) {
        request.Fault = Usage;
    }
    return request;
}

void TellRefusal(const std::string& boatFile, Refusal why) {
    if (why == Refusal::None) return;
    std::fprintf(stderr, "keelview-report: gpsdat/%s: %s\n", boatFile.c_str(),
                 RefusalText(why).Str(true).c_str());
}

/// Tells each boat whose file gives no track.
void TellRefusals(const RaceNumbers& numbers) {
    for (const AbsentBoat& absent : numbers.race.AbsentBoats)
        TellRefusal(absent.Entry.BoatFile, Refusal::Missing);
    for (int boat = 1; boat <= numbers.race.Boats.Count(); ++boat)
        TellRefusal(numbers.race.Boats[boat].BoatFile, numbers.tracks.Boats[boat].Refused);
}

int Complain(const std::string& fault) {
    std::fprintf(stderr, "keelview-report: %s\n", fault.c_str());
    return WrongUse;
}

std::string TextOf(const RaceNumbers& numbers, const Request& request) {
    if (request.Tracks) return TrackReport(request.Tree, numbers.race) + "\n";
    if (!request.Csv) return RaceReport(numbers, request.At, request.Walk) + "\n";
    return LegStatisticsCsv(numbers.race, ComputeLegStatistics(numbers.race, numbers.passes, *request.Csv));
}

void WalkAlone(RaceNumbers& numbers) {
    FindMarkPassTimes(numbers.race, numbers.tracks, numbers.scale, numbers.passes);
    ComputeMarkPassDist(numbers.race, numbers.tracks, numbers.passes);
}

int Run(const std::vector<std::string_view>& arguments) {
    const Request request = ReadCommandLine(arguments);
    if (!request.Fault.empty()) return Complain(request.Fault);
    if (!IsFile(FindBelow(FindBelow(request.Tree, "raceadmin"), request.RaceFile)))
        return Complain("no race file " + request.RaceFile + " in " + request.Tree.string() + "/raceadmin");
    RaceNumbers numbers;
    numbers.race.RaceFileName = request.RaceFile;
    LoadRace(request.Tree, numbers);
    if (!numbers.report.Opened) return Complain("cannot read race file " + request.RaceFile);
    TellRefusals(numbers);
    if (request.Walk) WalkAlone(numbers);
    const std::string text = TextOf(numbers, request);
    const bool written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    if (std::fflush(stdout) != 0 || !written) return Complain("cannot write the report");
    return 0;
}

}  // namespace

}  // namespace keelview

int main(int argc, char** argv) {
    return keelview::Run(std::vector<std::string_view>(argv + (argc > 0 ? 1 : 0), argv + argc));
}
