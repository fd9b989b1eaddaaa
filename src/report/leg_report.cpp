#include "report/leg_report.h"

#include <array>
#include <utility>

namespace keelview {

namespace {

constexpr std::array<std::pair<std::string_view, StatKind>, 3> TableNames{
    {{"time", StatKind::Time}, {"distance", StatKind::Distance}, {"speed", StatKind::Speed}}};

void WriteCell(JsonWriter& json, const std::optional<double>& value) {
    value ? json.Number(*value) : json.Null();
}

void WriteTable(JsonWriter& json, std::string_view name, const LegTable& table, int firstEntry) {
    json.Key(name);
    json.BeginArray();
    for (const auto& row : table.Value) {
        json.BeginArray();
        for (int entry = firstEntry; entry <= row.Count(); ++entry) WriteCell(json, row[entry]);
        json.EndArray();
    }
    json.EndArray();
}

void WriteShare(JsonWriter& json, const FactorShare& share) {
    if (!share.Counts) {
        json.Null();
        return;
    }
    json.BeginObject();
    for (const auto& [name, value] :
         {std::pair("time", share.Time), {"distance", share.Distance}, {"speed", share.Speed}}) {
        json.Key(name);
        WriteCell(json, value);
    }
    json.EndObject();
}

}  // namespace

void WriteFactors(JsonWriter& json, const RaceNumbers& numbers) {
    const RaceControl& race = numbers.race;
    json.Key("analysis");
    const auto analysis = AnalyseFactors(race, numbers.passes);
    if (!analysis) {
        json.Null();
        return;
    }
    json.BeginArray();
    for (int entry = 1; entry <= analysis->Count(); ++entry) {
        const FactorColumn& column = (*analysis)[entry];
        json.BeginObject();
        json.Member("part", entry == 1 ? std::string_view("total") : race.CourseOrder[entry]);
        json.Member("best_boat", column.BestBoat);
        json.Key("shares");
        json.BeginArray();
        for (const FactorShare& share : column.Share) WriteShare(json, share);
        json.EndArray();
        json.EndObject();
    }
    json.EndArray();
}

std::optional<StatKind> TableKind(std::string_view name) {
    for (const auto& [known, kind] : TableNames)
        if (known == name) return kind;
    return {};
}

void WriteLegTables(JsonWriter& json, const RaceNumbers& numbers) {
    json.Key("tables");
    json.BeginObject();
    for (const auto& [name, kind] : TableNames) {
        const LegStatistics statistics = ComputeLegStatistics(numbers.race, numbers.passes, kind);
        json.Key(name);
        json.BeginObject();
        WriteTable(json, "cumulative", statistics.Cumulative, 1);
        WriteTable(json, "by_leg", statistics.ByLeg, 2);
        json.EndObject();
    }
    json.EndObject();
}

}  // namespace keelview
