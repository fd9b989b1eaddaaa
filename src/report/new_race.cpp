#include "report/new_race.h"

#include <string_view>
#include <utility>

#include "analysis/plan_names.h"
#include "analysis/race_plan.h"
#include "analysis/race_plan_writing.h"
#include "racedata/race_file.h"
#include "report/json_writer.h"
#include "report/reading_members.h"

namespace keelview {

namespace {

std::string_view NameOf(LeftOut why) {
    switch (why) {
        case LeftOut::No:
            return "";
        case LeftOut::OtherTime:
            return "other_time";
        case LeftOut::OtherPlace:
            return "other_place";
        case LeftOut::TooShort:
            return "too_short";
        case LeftOut::TooMany:
            return "too_many";
    }
    return "";
}

void WriteBoat(JsonWriter& json, const RacePlan& plan, const PlannedBoat& boat) {
    const FoundTrack& track = boat.Track;
    json.BeginObject();
    json.Member("name", boat.Name);
    json.Member("file", BoatFileOf(plan, boat));
    json.Member("source", plan.Files[boat.File].Name);
    if (boat.Lies.Why != LeftOut::No) json.Member("left_out", NameOf(boat.Lies.Why));
    if (boat.Lies.Why == LeftOut::OtherTime) json.Member("seconds_away", boat.Lies.Away);
    if (boat.Lies.Why == LeftOut::OtherPlace) json.Member("miles_away", boat.Lies.Away);
    if (boat.ProposedClock) json.Member("proposed_clock_offset", *boat.ProposedClock);
    json.Member("format", plan.Files[boat.File].Format);
    json.Member("device", track.Device);
    json.Member("fixes", track.Fixes);
    json.Member("first_time", IsoTime(track.First));
    json.Member("last_time", IsoTime(track.Last));
    WriteRhythm(json, track.Rhythm);
    WriteSkipped(json, track.Left);
    json.EndObject();
}

void WritePlace(JsonWriter& json, const Position& at) {
    json.BeginObject();
    json.Member("lat", at.Lat / 60);
    json.Member("lon", at.Lon / 60);
    json.EndObject();
}

void WriteCourse(JsonWriter& json, const RacePlan& plan) {
    json.Key("marks");
    json.BeginArray();
    for (const Mark& mark : plan.Marks) WritePlace(json, mark.At());
    json.EndArray();
    json.Key("lines");
    json.BeginArray();
    for (const Line& line : plan.StartLine) {
        json.BeginArray();
        WritePlace(json, line.FirstEnd());
        WritePlace(json, line.SecondEnd());
        json.EndArray();
    }
    json.EndArray();
}

void WriteRace(JsonWriter& json, const RacePlan& plan) {
    json.Member("race", plan.RaceFileName);
    json.Member("title", plan.Title);
    if (plan.Boats.empty()) return;
    json.Member("time_diff", plan.TimeDiff);
    json.Member("begin", IsoTime(plan.Begin));
    json.Member("end", IsoTime(plan.End));
    if (plan.Start) json.Member("start", DateTimeText(*plan.Start));
    if (plan.Finish) json.Member("finish", DateTimeText(*plan.Finish));
    WriteCourse(json, plan);
}

std::string PlanReport(const RacePlan& plan) {
    JsonWriter json;
    json.BeginObject();
    WriteRace(json, plan);
    json.Key("boats");
    json.BeginArray();
    for (const PlannedBoat& boat : plan.Boats) WriteBoat(json, plan, boat);
    json.EndArray();
    json.Key("unused");
    json.BeginArray();
    for (const UnusedFile& file : plan.Unused) {
        json.BeginObject();
        json.Member("file", file.Name);
        if (file.Why != Refusal::None) json.Member("refused", NameOf(file.Why));
        if (!file.SameAs.empty()) json.Member("same_as", file.SameAs);
        json.EndObject();
    }
    json.EndArray();
    json.EndObject();
    return json.Text();
}

std::string TroubleText(const PlanTrouble& trouble, const RacePlan& plan) {
    if (!trouble.Error) return {};
    if (trouble.Error == std::errc::invalid_argument)
        return plan.Boats.empty() ? "no recording in these files" : "no boat for a race in these files";
    if (trouble.Error == std::errc::file_exists)
        return trouble.FailedAt.string() + " exists; --replace writes over it";
    return "nothing written: " + trouble.FailedAt.string() + ": " + trouble.Error.message();
}

}  // namespace

NewRace MakeNewRace(const std::filesystem::path& tree, const std::string& raceFile,
                    const std::vector<std::filesystem::path>& paths, bool replace) {
    RacePlan plan = PlanRace(FindTracksIn(HandedFiles(paths), {}).value_or(std::vector<FoundFile>{}));
    plan.RaceFileName = SafeFileName(raceFile);
    if (!IsRaceFileName(plan.RaceFileName)) plan.RaceFileName += ".txt";
    SettleTargets(tree, plan);
    const PlanTrouble trouble = WritePlannedRace(tree, plan, replace, {});
    return {PlanReport(plan), TroubleText(trouble, plan)};
}

}  // namespace keelview
