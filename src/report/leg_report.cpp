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

void WriteAnalysis(JsonWriter& json, const RaceControl& race, const MarkPasses& passes) {
    json.Key("analysis");
    const auto analysis = AnalyseFactors(race, passes);
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

}  // namespace

std::optional<StatKind> TableKind(std::string_view name) {
    for (const auto& [known, kind] : TableNames)
        if (known == name) return kind;
    return {};
}

void WriteLegReport(JsonWriter& json, const RaceNumbers& numbers) {
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
    WriteAnalysis(json, numbers.race, numbers.passes);
}

}  // namespace keelview
