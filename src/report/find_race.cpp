#include "report/find_race.h"

#include <optional>
#include <vector>

#include "analysis/found_race_entry.h"
#include "analysis/race_finder.h"
#include "analysis/race_numbers.h"
#include "base/numbers.h"
#include "racedata/race_file.h"
#include "report/json_writer.h"

namespace keelview {

namespace {

void WritePlace(JsonWriter& json, const Position& at) {
    json.BeginArray();
    json.Number(RoundDecimals(at.Lat, 5));
    json.Number(RoundDecimals(WrapLongitude(at.Lon), 5));
    json.EndArray();
}

void WriteLine(JsonWriter& json, const std::pair<Position, Position>& line) {
    json.BeginArray();
    WritePlace(json, line.first);
    WritePlace(json, line.second);
    json.EndArray();
}

void WriteTexts(JsonWriter& json, std::string_view name, const std::vector<std::string>& texts) {
    json.Key(name);
    json.BeginArray();
    for (const std::string& text : texts) json.String(text);
    json.EndArray();
}

std::vector<std::string> EnglishOf(const std::vector<Sentence>& sentences) {
    std::vector<std::string> texts;
    texts.reserve(sentences.size());
    for (const Sentence& sentence : sentences) texts.push_back(sentence.English);
    return texts;
}

void WriteTime(JsonWriter& json, std::string_view name, CivilTime clock, const std::optional<int>& second) {
    json.Key(name);
    second ? json.String(DateTimeText(clock + *second)) : json.Null();
}

void WriteFound(JsonWriter& json, const FoundRace& race, CivilTime clock) {
    json.BeginObject();
    WriteTime(json, "start_time", clock, race.Gun);
    WriteTime(json, "finish_time", clock, race.Finish);
    json.Key("line");
    WriteLine(json, race.Lines.front());
    json.Key("lines");
    json.BeginArray();
    for (const auto& line : race.Lines) WriteLine(json, line);
    json.EndArray();
    json.Key("marks");
    json.BeginArray();
    for (const Position& at : race.Marks) WritePlace(json, at);
    json.EndArray();
    WriteTexts(json, "course", race.Course);
    json.Key("wind_direction");
    race.Wind ? json.Number(RoundDecimals(*race.Wind, 1)) : json.Null();
    json.Member("confidence", RoundDecimals(race.Confidence, 2));
    WriteTexts(json, "reasons", EnglishOf(race.Reasons));
    json.EndObject();
}

std::string TextOf(const RaceFinding& finding, CivilTime clock) {
    JsonWriter json;
    json.BeginObject();
    json.Key("races");
    json.BeginArray();
    for (const FoundRace& race : finding.Races) WriteFound(json, race, clock);
    json.EndArray();
    WriteTexts(json, "missing", EnglishOf(finding.Missing));
    json.EndObject();
    return json.Text();
}

}  // namespace

FindReport FindRaceOf(const std::filesystem::path& tree, const std::string& raceFile, bool write) {
    RaceNumbers numbers;
    numbers.race.RaceFileName = raceFile;
    LoadRace(tree, numbers);
    if (!numbers.report.Opened) return {{}, "cannot read race file " + raceFile};
    const DayFinding day = FindRacesOf(tree, numbers.race);
    FindReport report{TextOf(day.Found, day.Clock), {}};
    if (!write) return report;
    const FoundRace* const surest = day.Surest();
    if (!surest) {
        report.Trouble = "nothing written: no race was found";
        return report;
    }
    TakeFoundRace(*surest, day.Clock, numbers.race);
    if (const auto error = SaveRaceFileAnew(tree, numbers.race))
        report.Trouble = "nothing written: " + error.message();
    return report;
}

}  // namespace keelview
