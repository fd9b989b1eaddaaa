#include "analysis/leg_statistics.h"

#include <algorithm>
#include <cmath>

#include "analysis/track_derivation.h"
#include "base/bilingual.h"
#include "base/numbers.h"
#include "base/strings.h"

namespace keelview {

namespace {

constexpr double SecondsPerHour = 3600.0;

// A column's search for its extremes begins here; a value of NoMinimum and above is never the smallest.
constexpr double NoMinimum = 99999.0;
constexpr double LowestMaximum = -10.0;
constexpr double LowestSpread = -100.0;

// A time from here on is no time of a best boat.
constexpr int LongestBestTime = 100000;

// A boat 20 % off the best is as far off as the bars can show.
constexpr double LargestShare = 0.2;

double WholeMetres(double miles) {
    return RoundDecimals(miles * MetresPerNauticalMile, 0);
}

double CutTo3Decimals(double value) {
    return std::floor(value * 1000.0) / 1000.0;
}

double CumulativeValue(const MarkPasses& passes, StatKind kind, int boat, int entry) {
    const int time = passes.MarkPassTime[boat][entry];
    const double miles = passes.MarkPassDist[boat][entry];
    if (kind == StatKind::Time) return time;
    if (kind == StatKind::Distance) return WholeMetres(miles);
    return time > 0 ? RoundDecimals(SpeedOver(miles, time).value_or(0.0), 3) : 0.0;
}

std::optional<double> LegValue(const MarkPasses& passes, StatKind kind, int boat, int entry) {
    if (passes.MarkPassTime[boat][entry] <= 0) return std::nullopt;
    const int time = LegTime(passes, boat, entry);
    const double miles = LegMiles(passes, boat, entry);
    if (kind == StatKind::Time) return time;
    if (kind == StatKind::Distance) return WholeMetres(miles);
    const std::optional<double> knots = SpeedOver(miles, time);
    return knots ? std::optional(CutTo3Decimals(*knots)) : std::nullopt;
}

void FindColumnExtremes(const RaceControl& race, int entry, LegTable& table) {
    double min = NoMinimum;
    double max = LowestMaximum;
    for (int boat = 1; boat <= race.BoatCount; ++boat) {
        const std::optional<double>& value = table.Value[boat][entry];
        if (!value) continue;
        if (*value > 0 && *value < min) min = *value;
        max = std::max(max, *value);
    }
    table.ColMin[entry] = min;
    table.ColMax[entry] = max;
}

void FindSpread(const RaceControl& race, int firstEntry, LegTable& table) {
    table.Spread = LowestSpread;
    for (int entry = firstEntry; entry <= race.CourseCount; ++entry)
        table.Spread = std::max(table.Spread, table.ColMax[entry] - table.ColMin[entry]);
}

/// What a boat needed for one part of the race.
struct Effort {
    bool Counts = false;
    int Time = 0;
    double Metres = 0.0;
    std::optional<double> Knots;
};

Effort TotalEffort(const MarkPasses& passes, int boat, int lastEntry) {
    const int time = passes.MarkPassTime[boat][lastEntry];
    const double miles = passes.MarkPassDist[boat][lastEntry];
    return {time > 0, time, WholeMetres(miles), SpeedOver(miles, time)};
}

Effort LegEffort(const MarkPasses& passes, int boat, int entry) {
    return {passes.MarkPassTime[boat][entry] > 0, LegTime(passes, boat, entry),
            LegValue(passes, StatKind::Distance, boat, entry).value_or(0.0),
            LegValue(passes, StatKind::Speed, boat, entry)};
}

std::optional<double> Ratio(std::optional<double> value, std::optional<double> reference) {
    if (!value || !reference || *reference == 0.0) return std::nullopt;
    return *value / *reference - 1.0;
}

FactorColumn CompareEfforts(const std::array<Effort, MaxBoats + 1>& efforts, int boatCount) {
    FactorColumn column;
    for (int boat = 1; boat <= boatCount; ++boat) {
        const Effort& effort = efforts[boat];
        const int shortest = column.BestBoat > 0 ? efforts[column.BestBoat].Time : LongestBestTime;
        if (effort.Counts && effort.Time > 0 && effort.Time < shortest) column.BestBoat = boat;
    }
    const Effort& best = efforts[column.BestBoat];
    for (int boat = 1; boat <= boatCount; ++boat) {
        const Effort& effort = efforts[boat];
        if (!effort.Counts) continue;
        column.Share[boat] = {true, Ratio(effort.Time, best.Time), Ratio(effort.Metres, best.Metres),
                              Ratio(effort.Knots, best.Knots)};
    }
    return column;
}

/// A text between double quotes, where a quote inside is doubled.
std::string Quoted(std::string_view text) {
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"') quoted += '"';
        quoted += c;
    }
    return quoted + '"';
}

void AppendCells(const LegTable& table, int boat, int firstEntry, int lastEntry, std::string& row) {
    for (int entry = firstEntry; entry <= lastEntry; ++entry) {
        row += ',';
        if (const std::optional<double>& value = table.Value[boat][entry]) row += NumberText(*value);
    }
}

}  // namespace

int LegTime(const MarkPasses& passes, int boat, int entry) {
    return passes.MarkPassTime[boat][entry] - passes.MarkPassTime[boat][entry - 1];
}

double LegMiles(const MarkPasses& passes, int boat, int entry) {
    return passes.MarkPassDist[boat][entry] - passes.MarkPassDist[boat][entry - 1];
}

std::optional<double> SpeedOver(double miles, int seconds) {
    if (seconds == 0) return std::nullopt;
    return miles * SecondsPerHour / seconds;
}

LegStatistics ComputeLegStatistics(const RaceControl& race, const MarkPasses& passes, StatKind kind) {
    LegStatistics statistics;
    statistics.Kind = kind;
    if (kind == StatKind::Analysis) return statistics;
    for (int entry = 1; entry <= race.CourseCount; ++entry) {
        for (int boat = 1; boat <= race.BoatCount; ++boat) {
            statistics.Cumulative.Value[boat][entry] = CumulativeValue(passes, kind, boat, entry);
            if (entry > 1) statistics.ByLeg.Value[boat][entry] = LegValue(passes, kind, boat, entry);
        }
        FindColumnExtremes(race, entry, statistics.Cumulative);
        if (entry > 1) FindColumnExtremes(race, entry, statistics.ByLeg);
    }
    FindSpread(race, kind == StatKind::Speed ? 2 : 1, statistics.Cumulative);
    FindSpread(race, 1, statistics.ByLeg);
    return statistics;
}

bool IsBest(const LegTable& table, StatKind kind, int boat, int entry) {
    const std::optional<double>& value = table.Value[boat][entry];
    return value && *value == (kind == StatKind::Speed ? table.ColMax[entry] : table.ColMin[entry]);
}

std::optional<FactorAnalysis> AnalyseFactors(const RaceControl& race, const MarkPasses& passes) {
    if (race.CourseCount < 1 || race.CourseCount > MaxAnalysisEntries) return std::nullopt;
    FactorAnalysis analysis;
    std::array<Effort, MaxBoats + 1> efforts{};
    for (int entry = 1; entry <= race.CourseCount; ++entry) {
        for (int boat = 1; boat <= race.BoatCount; ++boat) {
            efforts[boat] =
                entry == 1 ? TotalEffort(passes, boat, race.CourseCount) : LegEffort(passes, boat, entry);
        }
        analysis.Column[entry] = CompareEfforts(efforts, race.BoatCount);
    }
    return analysis;
}

std::string CourseTooLongText(bool useEnglish) {
    const std::string limit = std::to_string(MaxAnalysisEntries);
    return useEnglish ? "The analysis takes courses of up to " + limit + " entries."
                      : "解析できるコースは" + limit + "ポイントまでです。";
}

double LimitShare(double ratio) {
    return std::clamp(ratio, -LargestShare, LargestShare);
}

DiffAxis ChooseDiffAxis(double spread) {
    if (!(spread > 0) || !std::isfinite(spread)) return {};
    const double exponent = std::floor(std::log10(spread));
    // Dividing by whole powers of ten only keeps whole leading digits whole.
    const double leading =
        exponent >= 0 ? spread / std::pow(10.0, exponent) : spread * std::pow(10.0, -exponent);
    return {std::clamp(FloorToInt(leading) + 1, 2, 10), std::pow(10.0, exponent)};
}

std::string LegStatisticsCsv(const RaceControl& race, const LegStatistics& statistics) {
    std::string csv = "\xEF\xBB\xBF\"Boat\"";
    for (int entry = 1; entry <= race.CourseCount; ++entry)
        csv += ',' + Quoted(Trim(race.CourseOrder[entry]));
    for (int entry = 2; entry <= race.CourseCount; ++entry)
        csv += ',' + Quoted(">" + std::string(Trim(race.CourseOrder[entry])));
    csv += "\r\n";
    for (int boat = 1; boat <= race.BoatCount; ++boat) {
        csv += Quoted(race.BoatName[boat]);
        AppendCells(statistics.Cumulative, boat, 1, race.CourseCount, csv);
        AppendCells(statistics.ByLeg, boat, 2, race.CourseCount, csv);
        csv += "\r\n";
    }
    return csv;
}

}  // namespace keelview
