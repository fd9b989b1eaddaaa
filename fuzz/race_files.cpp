// The race control file as its three readers take it. What was read and written must read back as the same.

#include <array>
#include <memory>

#include "base/strings.h"
#include "racedata/race_file.h"
#include "racedata/start_files.h"
#include "target.h"

namespace keelview::fuzz {

namespace {

constexpr const char* RaceName = "R.txt";

/// The race in the file of that name, as empty as at the start of the program. The tree holds two tracks.
std::unique_ptr<RaceControl> LaidOut(std::string_view input) {
    static const bool prepared = [] {
        for (const char* name : {"gpsdat/a.trk", "gpsdat/b.trk", "winddat/w.csv"}) Tree().Write(name, "");
        return true;
    }();
    Require(prepared, "the tree can be written");
    Tree().Write("raceadmin/R.txt", input);
    auto race = std::make_unique<RaceControl>();
    race->RaceFileName = RaceName;
    return race;
}

void RequireLimits(const RaceControl& race) {
    Require(race.BoatCount <= MaxBoats && race.MarkCount <= MaxMarks && race.LineCount <= MaxLines &&
                race.CourseCount <= MaxCourseEntries && race.MapCount <= MaxCells &&
                race.AttachCount <= MaxAttachments,
            "counts stay within their limits");
}

template <class Array>
bool Same(const Array& a, const Array& b, int count) {
    for (int i = 1; i <= count; ++i)
        if (a[i] != b[i]) return false;
    return true;
}

template <>
bool Same(const std::array<TextNumber, MaxMarks + 1>& a, const std::array<TextNumber, MaxMarks + 1>& b,
          int count) {
    for (int i = 1; i <= count; ++i)
        if (a[i].Text() != b[i].Text()) return false;
    return true;
}

void RequireSame(const RaceControl& a, const RaceControl& b) {
    Require(a.RaceTitle1 == b.RaceTitle1 && a.RaceTitle2 == b.RaceTitle2 && a.RaceTitle3 == b.RaceTitle3,
            "titles read back");
    Require(a.StartTimeText == b.StartTimeText && a.FinishTimeText == b.FinishTimeText &&
                a.TimeDiff == b.TimeDiff && a.WindFileName == b.WindFileName && a.NorthUp == b.NorthUp,
            "times and wind read back");
    Require(NumberText(a.MagVariation) == NumberText(b.MagVariation) &&
                NumberText(a.WindDirection) == NumberText(b.WindDirection) &&
                NumberText(a.LayLineUp) == NumberText(b.LayLineUp) &&
                NumberText(a.LayLineDown) == NumberText(b.LayLineDown),
            "numbers read back");
    Require(a.BoatCount == b.BoatCount && Same(a.BoatFile, b.BoatFile, a.BoatCount) &&
                Same(a.BoatName, b.BoatName, a.BoatCount),
            "boats read back");
    Require(a.MarkCount == b.MarkCount && Same(a.MarkLat, b.MarkLat, a.MarkCount) &&
                Same(a.MarkLon, b.MarkLon, a.MarkCount) && a.LineCount == b.LineCount,
            "marks and lines read back");
    Require(a.CourseCount == b.CourseCount && Same(a.CourseOrder, b.CourseOrder, a.CourseCount),
            "the course reads back");
    Require(a.AttachCount == b.AttachCount, "attachments read back");
    for (int i = 1; i <= a.AttachCount; ++i)
        Require(Trim(a.AttachFile[i]) == Trim(b.AttachFile[i]), "attachments keep their names");
}

}  // namespace

void ReadRaceForDisplay(std::string_view input) {
    const auto race = LaidOut(input);
    Require(ReadRaceFile(Tree().Root(), *race).Opened, "a file that is there opens");
    RequireLimits(*race);
    for (int entry = 1; entry <= race->CourseCount; ++entry) ParseCourseKey(race->CourseOrder[entry]);
    Require(!SaveRaceFile(Tree().Root(), *race), "what was read can be written");
    auto again = std::make_unique<RaceControl>();
    again->RaceFileName = RaceName;
    ReadRaceFile(Tree().Root(), *again);
    RequireSame(*race, *again);
}

void ReadRaceForEditor(std::string_view input) {
    const auto race = LaidOut(input);
    Require(ReadRaceFileForEdit(Tree().Root(), *race), "a file that is there opens");
    RequireLimits(*race);
    Require(!SaveRaceFile(Tree().Root(), *race), "what was read can be written");
    auto again = std::make_unique<RaceControl>();
    again->RaceFileName = RaceName;
    ReadRaceFileForEdit(Tree().Root(), *again);
    RequireSame(*race, *again);
}

void ReadRaceForDistribution(std::string_view input) {
    const auto race = LaidOut(input);
    Require(ReadRaceFileForDistribution(Tree().Root(), *race), "a file that is there opens");
    RequireLimits(*race);
}

void ReadStartFiles(std::string_view input) {
    Tree().Write("raceadmin/Ver.00", input);
    Tree().Write("raceadmin/racefile.st", input);
    ReadStartSettings(Tree().Root());
    const auto race = ReadStartRace(Tree().Root());
    Require(!race || race->find_first_of(",\n") == std::string::npos, "the first race is one field");
}

}  // namespace keelview::fuzz
