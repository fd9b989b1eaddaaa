// keelview-report TREE RACEFILE [--at SECONDS]... [--only KEY,KEY] [--walk] [--csv TABLE] [--tracks]
// keelview-report --new TREE RACEFILE FILE... [--replace]
// keelview-report --find TREE RACEFILE [--write]
// keelview-report --page OUT.html|FOLDER/ TREE RACEFILE... [--en | --ja]
// Prints the numbers of a race as one JSON object, or one table of it as CSV for a spreadsheet, or with
// --tracks what its track files hold; --only prints just the members of those keys. A file that cannot be
// read is told on standard error. TREE is a folder with raceadmin, gpsdat, winddat and coastline, RACEFILE
// a race control file in raceadmin. With
// --walk the pass times are those that the walk along each track finds by itself, bare numbers with 0 for
// an entry that it did not find. Nothing is written to the tree, but with --new: that makes a race of the
// track files and folders, copies them into the tree, and prints what was found in them. --find looks for
// races in the tracks alone and prints them; with --write the surest one is written into the race file.
// With --page the races become one HTML file that shows them in any browser, in the browser's language or
// the one that is asked for; or, where a folder is named, with a slash at its end, one file each in it.

#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/files.h"
#include "base/kept_memory.h"
#include "base/numbers.h"
#include "base/paths.h"
#include "base/strings.h"
#include "base/system_command_line.h"
#include "page/page_maker.h"
#include "racedata/refusal_text.h"
#include "report/find_race.h"
#include "report/leg_report.h"
#include "report/member_csv.h"
#include "report/new_race.h"
#include "report/race_report.h"
#include "report/track_report.h"

namespace keelview {

namespace {

constexpr int WrongUse = 2;
constexpr std::string_view Usage =
    "usage: keelview-report TREE RACEFILE [--at SECONDS]... [--only KEY,KEY] [--walk] "
    "[--csv TABLE] [--tracks] | --new TREE RACEFILE FILE... [--replace] | --find TREE RACEFILE [--write] | "
    "--page OUT.html|FOLDER/ TREE RACEFILE... [--en | --ja]";

struct Request {
    std::filesystem::path Tree;
    std::string RaceFile;
    std::vector<double> At;
    std::vector<std::string> Only;             ///< keys of the report that are wanted alone
    bool Walk = false;                         ///< the walk's times alone
    std::string Csv;                           ///< the table that is wanted in place of the whole
    bool Tracks = false;                       ///< what the track files hold, in place of the whole
    bool New = false;                          ///< the race is to be made of files
    bool Find = false;                         ///< races are to be looked for in the tracks
    bool Write = false;                        ///< and the surest one written
    bool Replace = false;                      ///< even where there is one of its name
    std::vector<std::filesystem::path> Files;  ///< of a new race
    std::filesystem::path Page;                ///< the file of a page, or the folder of pages, to be made
    std::optional<bool> UseEnglish;            ///< in the page, whatever the browser speaks
    std::vector<std::string> RaceFiles;        ///< of a page
    std::string Fault;  ///< what is wrong with the command line; empty when nothing is
};

void TakeKeys(std::string_view keys, Request& request) {
    for (const std::string_view key : Split(keys, ',')) {
        request.Only.emplace_back(Trim(key));
        if (!IsReportKey(request.Only.back()))
            request.Fault = "--only needs keys of the report, as start,ranking";
    }
}

Request ReadCommandLine(const std::vector<std::string>& arguments) {
    Request request;
    std::vector<std::string> names;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (argument == "--at") {
            const auto seconds =
                ++i < arguments.size() ? StrictNumber(arguments[i]) : std::optional<double>();
            if (!seconds) request.Fault = "--at needs a number of seconds";
            request.At.push_back(seconds.value_or(0));
        } else if (argument == "--walk") {
            request.Walk = true;
        } else if (argument == "--tracks") {
            request.Tracks = true;
        } else if (argument == "--new") {
            request.New = true;
        } else if (argument == "--find") {
            request.Find = true;
        } else if (argument == "--write") {
            request.Write = true;
        } else if (argument == "--replace") {
            request.Replace = true;
        } else if (argument == "--en" || argument == "--ja") {
            request.UseEnglish = argument == "--en";
        } else if (argument == "--page") {
            if (++i < arguments.size()) request.Page = PathOf(arguments[i]);
            if (request.Page.empty()) request.Fault = "--page needs the name of the file to make";
        } else if (argument == "--csv") {
            if (++i < arguments.size()) request.Csv = arguments[i];
            if (!TableKind(request.Csv) && !IsCoachKey(request.Csv))
                request.Fault = "--csv needs time, distance, speed or a key of the report, as start";
        } else if (argument == "--only") {
            TakeKeys(++i < arguments.size() ? std::string_view(arguments[i]) : std::string_view(), request);
        } else if (argument.starts_with("-")) {
            request.Fault = "unknown option " + argument;
        } else {
            names.push_back(argument);
        }
    }
    const bool several = request.New || !request.Page.empty();
    if (several ? names.size() > (request.New ? 2U : 1U) : names.size() == 2) {
        request.Tree = PathOf(names[0]);
        request.RaceFile = names[1];
        for (std::size_t i = 2; i < names.size(); ++i) request.Files.push_back(PathOf(names[i]));
        request.RaceFiles.assign(names.begin() + 1, names.end());
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
    if (request.Csv.empty()) return RaceReport(numbers, request.At, request.Walk, request.Only) + "\n";
    if (const auto kind = TableKind(request.Csv))
        return LegStatisticsCsv(numbers.race, ComputeLegStatistics(numbers.race, numbers.passes, *kind));
    return MemberCsv(numbers.race, RaceReport(numbers, request.At, request.Walk, {request.Csv}));
}

void WalkAlone(RaceNumbers& numbers) {
    FindMarkPassTimes(numbers.race, numbers.tracks, numbers.scale, numbers.passes);
    ComputeMarkPassDist(numbers.race, numbers.tracks, numbers.passes);
}

int Print(const std::string& text) {
    const bool written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    if (std::fflush(stdout) != 0 || !written) return Complain("cannot write the report");
    return 0;
}

int MakeNew(const Request& request) {
    const NewRace made = MakeNewRace(request.Tree, request.RaceFile, request.Files, request.Replace);
    const int printed = Print(made.Report + "\n");
    return made.Trouble.empty() ? printed : Complain(made.Trouble);
}

int Find(const Request& request) {
    const FindReport found = FindRaceOf(request.Tree, request.RaceFile, request.Write);
    const int printed = found.Report.empty() ? 0 : Print(found.Report + "\n");
    return found.Trouble.empty() ? printed : Complain(found.Trouble);
}

int WritePage(const Request& request, const std::filesystem::path& program,
              const std::vector<std::string>& races, const std::filesystem::path& file) {
    const Page page =
        MakePage({.Tree = request.Tree, .RaceNames = races, .UseEnglish = request.UseEnglish}, program);
    if (!page.Trouble.empty()) return Complain("cannot read " + page.Trouble);
    for (const std::string& missing : page.Missing)
        std::fprintf(stderr, "keelview-report: not there: %s\n", missing.c_str());
    const std::error_code error = WriteFileAtomically(file, page.Html);
    return error ? Complain("cannot write " + file.string() + ": " + error.message()) : 0;
}

/// The program of a page lies in the tree, beside this program, or among what an installation shares.
int WritePages(const Request& request, const std::filesystem::path& ownFolder) {
    const auto program =
        FindPageProgram({request.Tree, ownFolder, ownFolder.parent_path() / "share" / "keelview"});
    if (program.empty())
        return Complain(
            "the program of a page, " + std::string(PageProgramName) +
            ", is neither in the tree nor beside this program: tools/make_page_program makes it");
    if (request.Page.has_filename()) return WritePage(request, program, request.RaceFiles, request.Page);
    int status = 0;
    for (const std::string& race : request.RaceFiles)
        if (status == 0)
            status = WritePage(request, program, {race}, request.Page / PathOf(PageFileName(race)));
    return status;
}

int Run(const std::vector<std::string>& arguments, const std::filesystem::path& ownFolder) {
    const Request request = ReadCommandLine(arguments);
    if (!request.Fault.empty()) return Complain(request.Fault);
    if (request.New) return MakeNew(request);
    if (!request.Page.empty()) return WritePages(request, ownFolder);
    if (!IsFile(FindBelow(FindBelow(request.Tree, "raceadmin"), request.RaceFile)))
        return Complain("no race file " + request.RaceFile + " in " + request.Tree.string() + "/raceadmin");
    if (request.Find) return Find(request);
    RaceNumbers numbers;
    numbers.race.RaceFileName = request.RaceFile;
    LoadRace(request.Tree, numbers);
    if (!numbers.report.Opened) return Complain("cannot read race file " + request.RaceFile);
    TellRefusals(numbers);
    if (request.Walk) WalkAlone(numbers);
    return Print(TextOf(numbers, request));
}

}  // namespace

}  // namespace keelview

int main(int argc, char** argv) {
    keelview::KeepMemory();
    keelview::KeepLineEnds(stdout);
    return keelview::Run(keelview::ArgumentsOf(argc, argv), keelview::OwnFolder(argv[0]));
}
