// The race control file as its three readers take it. What was read and written must read back as the same.

#include <algorithm>

#include "base/strings.h"
#include "racedata/race_file.h"
#include "racedata/start_files.h"
#include "target.h"

namespace keelview::fuzz {

namespace {

constexpr const char* RaceName = "R.txt";

/// The race in the file of that name, as empty as at the start of the program. The tree holds two tracks.
RaceControl LaidOut(std::string_view input) {
    static const bool prepared = [] {
        for (const char* name : {"gpsdat/a.trk", "gpsdat/b.trk", "winddat/w.csv"}) Tree().Write(name, "");
        return true;
    }();
    Require(prepared, "the tree can be written");
    Tree().Write("raceadmin/R.txt", input);
    RaceControl race;
    race.RaceFileName = RaceName;
    return race;
}

void RequireLimits(const RaceControl& race) {
    Require(race.Boats.Count() + race.AbsentBoats.Count() <= MaxBoats && race.Marks.Count() <= MaxMarks &&
                race.Lines.Count() <= MaxLines && race.CourseOrder.Count() <= MaxCourseEntries &&
                race.MapFile.Count() <= MaxCells && race.AttachFile.Count() <= MaxAttachments,
            "counts stay within their limits");
}

bool SameText(const TextNumber& a, const TextNumber& b) {
    return a.Text() == b.Text();
}

bool SameBoat(const BoatEntry& a, const BoatEntry& b) {
    return a.BoatFile == b.BoatFile && a.BoatName == b.BoatName && a.ClockOffset == b.ClockOffset;
}

bool SameAbsentBoat(const AbsentBoat& a, const AbsentBoat& b) {
    return a.Number == b.Number && SameBoat(a.Entry, b.Entry);
}

bool SamePass(const HandPass& a, const HandPass& b) {
    return a.BoatNumber == b.BoatNumber && a.Entry == b.Entry && a.Seconds == b.Seconds;
}

bool SameMark(const Mark& a, const Mark& b) {
    return SameText(a.MarkLat, b.MarkLat) && SameText(a.MarkLon, b.MarkLon);
}

bool SameLine(const Line& a, const Line& b) {
    return SameText(a.LineLat1, b.LineLat1) && SameText(a.LineLon1, b.LineLon1) &&
           SameText(a.LineLat2, b.LineLat2) && SameText(a.LineLon2, b.LineLon2);
}

void RequireSame(const RaceControl& a, const RaceControl& b) {
    Require(a.RaceTitle1 == b.RaceTitle1 && a.RaceTitle2 == b.RaceTitle2 && a.RaceTitle3 == b.RaceTitle3,
            "titles read back");
    Require(a.Start.Typed() == b.Start.Typed() && a.Finish.Typed() == b.Finish.Typed() &&
                a.TimeDiff == b.TimeDiff && a.WindFileName == b.WindFileName && a.NorthUp == b.NorthUp,
            "times and wind read back");
    Require(NumberText(a.MagVariation) == NumberText(b.MagVariation) &&
                NumberText(a.WindDirection) == NumberText(b.WindDirection) &&
                NumberText(a.LayLineUp) == NumberText(b.LayLineUp) &&
                NumberText(a.LayLineDown) == NumberText(b.LayLineDown),
            "numbers read back");
    Require(std::ranges::equal(a.Boats, b.Boats, SameBoat), "boats read back");
    Require(std::ranges::equal(a.AbsentBoats, b.AbsentBoats, SameAbsentBoat) &&
                a.AbsentWindFile == b.AbsentWindFile,
            "what is absent reads back");
    Require(std::ranges::equal(a.HandPasses, b.HandPasses, SamePass), "what was set by hand reads back");
    Require(std::ranges::equal(a.Marks, b.Marks, SameMark), "marks read back");
    Require(std::ranges::equal(a.Lines, b.Lines, SameLine), "lines read back");
    Require(a.CourseOrder == b.CourseOrder, "the course reads back");
    Require(std::ranges::equal(a.AttachFile, b.AttachFile, {}, Trim, Trim), "attachments keep their names");
}

}  // namespace

void ReadRaceForDisplay(std::string_view input) {
    RaceControl race = LaidOut(input);
    Require(ReadRaceFile(Tree().Root(), race).Opened, "a file that is there opens");
    RequireLimits(race);
    for (const std::string& key : race.CourseOrder) ParseCourseKey(key);
    Require(!SaveRaceFile(Tree().Root(), race), "what was read can be written");
    RaceControl again;
    again.RaceFileName = RaceName;
    ReadRaceFile(Tree().Root(), again);
    RequireSame(race, again);
}

void ReadRaceForEditor(std::string_view input) {
    RaceControl race = LaidOut(input);
    if (!ReadRaceFileForEdit(Tree().Root(), race)) return;  // no race control file
    RequireLimits(race);
    Require(!SaveRaceFile(Tree().Root(), race), "what was read can be written");
    RaceControl again;
    again.RaceFileName = RaceName;
    ReadRaceFileForEdit(Tree().Root(), again);
    RequireSame(race, again);
}

void ReadRaceForDistribution(std::string_view input) {
    RaceControl race = LaidOut(input);
    Require(ReadRaceFileForDistribution(Tree().Root(), race), "a file that is there opens");
    RequireLimits(race);
}

void ReadStartFiles(std::string_view input) {
    Tree().Write("raceadmin/Ver.00", input);
    Tree().Write("raceadmin/racefile.st", input);
    ReadStartSettings(Tree().Root());
    const auto race = ReadStartRace(Tree().Root());
    Require(!race || race->find_first_of(",\n") == std::string::npos, "the first race is one field");
}

}  // namespace keelview::fuzz
