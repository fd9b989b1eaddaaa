#include "analysis/leg_statistics.h"

#include <algorithm>
#include <cmath>

#include "base/numbers.h"
#include "base/strings.h"
#include "racedata/earth_scale.h"

namespace keelview {

namespace {

constexpr double SecondsPerHour = 3600.0;

// A column's search for its extremes begins here; a value of NoMinimum and above is never the smallest.
constexpr double NoMinimum = 99999.0;
constexpr double LowestMaximum = -10.0;

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

std::optional<double> CumulativeValue(const MarkPasses& passes, StatKind kind, int boat, int entry) {
    const std::optional<int> time = passes.MarkPassTime[boat][entry];
    if (!time || kind == StatKind::Time) return time;
    const double miles = passes.MarkPassDist[boat][entry];
    if (kind == StatKind::Distance) return WholeMetres(miles);
    if (*time <= 0) return {};
    return RoundDecimals(SpeedOver(miles, *time).value_or(0.0), 3);
}

std::optional<double> LegKnots(double miles, int time) {
    const std::optional<double> knots = SpeedOver(miles, time);
    return knots ? std::optional(CutTo3Decimals(*knots)) : std::nullopt;
}

std::optional<double> LegValue(const MarkPasses& passes, StatKind kind, int boat, int entry) {
    const std::optional<int> time = LegTime(passes, boat, entry);
    if (!time || kind == StatKind::Time) return time;
    const double miles = LegMiles(passes, boat, entry);
    if (kind == StatKind::Distance) return WholeMetres(miles);
    return LegKnots(miles, *time);
}

/// True if the passes are as many as the race has boats and entries; those of a course before may be fewer.
bool AreOf(const MarkPasses& passes, const RaceControl& race) {
    const auto fit = [&](const auto& table) {
        return table.Count() == race.Boats.Count() && std::ranges::all_of(table, [&](const auto& row) {
                   return row.Count() == race.CourseOrder.Count();
               });
    };
    return fit(passes.MarkPassTime) && fit(passes.MarkPassDist);
}

LegTable EmptyTable(const RaceControl& race) {
    const int entries = race.CourseOrder.Count();
    return {.Value = MarkPasses::ByBoatAndEntry<std::optional<double>>(
                race.Boats.Count(), OneBased<std::optional<double>>(entries)),
            .ColMax = OneBased<double>(entries),
            .ColMin = OneBased<double>(entries)};
}

/// Fills a table from an entry on with what `valueAt` gives for a boat and an entry, and finds the
/// extremes; the smallest value is one above 0, or 0 too if `zeroCounts`.
template <class ValueAt>
void FillTable(int firstEntry, bool zeroCounts, ValueAt valueAt, LegTable& table) {
    const int entries = table.ColMax.Count();
    for (int entry = firstEntry; entry <= entries; ++entry) {
        table.ColMin[entry] = NoMinimum;
        table.ColMax[entry] = LowestMaximum;
    }
    for (int boat = 1; boat <= table.Value.Count(); ++boat) {
        auto& row = table.Value[boat];
        for (int entry = firstEntry; entry <= entries; ++entry) {
            const std::optional<double> filled = valueAt(boat, entry);
            if (!filled) continue;
            const double value = *filled;
            row[entry] = value;
            if (value > 0 || (zeroCounts && value == 0))
                table.ColMin[entry] = std::min(table.ColMin[entry], value);
            table.ColMax[entry] = std::max(table.ColMax[entry], value);
        }
    }
}

/// What a boat needed for one part of the race.
struct Effort {
    bool Counts = false;
    int Time = 0;
    double Metres = 0.0;
    double Knots = 0.0;  ///< 0 without a duration
};

Effort TotalEffort(const MarkPasses& passes, int boat) {
    const std::optional<int> time = FinishTime(passes, boat);
    if (!time || *time <= 0) return {};
    const double miles = passes.MarkPassDist[boat].Last();
    return {true, *time, WholeMetres(miles), SpeedOver(miles, *time).value_or(0.0)};
}

Effort LegEffort(const MarkPasses& passes, int boat, int entry) {
    const std::optional<int> time = LegTime(passes, boat, entry);
    if (!time) return {};
    const double miles = LegMiles(passes, boat, entry);
    return {true, *time, WholeMetres(miles), LegKnots(miles, *time).value_or(0.0)};
}

void CompareTo(double reference, double value, std::optional<double>& share) {
    if (reference != 0.0) share = value / reference - 1.0;
}

void CompareEfforts(const OneBased<Effort>& efforts, FactorColumn& column) {
    for (int boat = 1; boat <= efforts.Count(); ++boat) {
        const Effort& effort = efforts[boat];
        const int shortest = column.BestBoat > 0 ? efforts[column.BestBoat].Time : LongestBestTime;
        if (effort.Counts && effort.Time > 0 && effort.Time < shortest) column.BestBoat = boat;
    }
    const Effort best = column.BestBoat > 0 ? efforts[column.BestBoat] : Effort{};
    for (int boat = 1; boat <= efforts.Count(); ++boat) {
        const Effort& effort = efforts[boat];
        if (!effort.Counts) continue;
        FactorShare& share = column.Share[boat];
        share.Counts = true;
        CompareTo(best.Time, effort.Time, share.Time);
        CompareTo(best.Metres, effort.Metres, share.Distance);
        if (effort.Time != 0) CompareTo(best.Knots, effort.Knots, share.Speed);
    }
}

void AppendCells(const LegTable& table, int boat, int firstEntry, int lastEntry, std::string& row) {
    for (int entry = firstEntry; entry <= lastEntry; ++entry) {
        row += ',';
        if (const std::optional<double>& value = table.Value[boat][entry]) row += NumberText(*value);
    }
}

}  // namespace

std::optional<double> SpeedOver(double miles, int seconds) {
    if (seconds == 0) return std::nullopt;
    return miles * SecondsPerHour / seconds;
}

LegStatistics ComputeLegStatistics(const RaceControl& race, const MarkPasses& passes, StatKind kind) {
    LegStatistics statistics{kind, EmptyTable(race), EmptyTable(race), {}};
    if (kind == StatKind::Analysis || !AreOf(passes, race)) return statistics;
    FillTable(
        1, kind == StatKind::Time,
        [&](int boat, int entry) { return CumulativeValue(passes, kind, boat, entry); },
        statistics.Cumulative);
    FillTable(
        2, false, [&](int boat, int entry) { return LegValue(passes, kind, boat, entry); },
        statistics.ByLeg);
    if (kind == StatKind::Time) statistics.GateMark = passes.GateMark;
    return statistics;
}

bool IsBest(const LegTable& table, StatKind kind, int boat, int entry) {
    const std::optional<double>& value = table.Value[boat][entry];
    return value && *value == (kind == StatKind::Speed ? table.ColMax[entry] : table.ColMin[entry]);
}

std::optional<FactorAnalysis> AnalyseFactors(const RaceControl& race, const MarkPasses& passes) {
    const int entries = race.CourseOrder.Count();
    if (entries < 1 || entries > MaxAnalysisEntries || !AreOf(passes, race)) return std::nullopt;
    FactorAnalysis analysis(entries, {.Share = OneBased<FactorShare>(race.Boats.Count())});
    OneBased<Effort> efforts(race.Boats.Count());
    for (int entry = 1; entry <= entries; ++entry) {
        for (int boat = 1; boat <= efforts.Count(); ++boat)
            efforts[boat] = entry == 1 ? TotalEffort(passes, boat) : LegEffort(passes, boat, entry);
        CompareEfforts(efforts, analysis[entry]);
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
    const int entries = race.CourseOrder.Count();
    for (const std::string& entry : race.CourseOrder) csv += ',' + QuotedCell(Trim(entry));
    for (int entry = 2; entry <= entries; ++entry)
        csv += ',' + QuotedCell(">" + std::string(Trim(race.CourseOrder[entry])));
    const auto tellsGate = [&](int entry) {
        return statistics.Kind == StatKind::Time && ParseCourseKey(race.CourseOrder[entry]).IsGate();
    };
    for (int entry = 1; entry <= entries; ++entry)
        if (tellsGate(entry))
            csv += ',' + QuotedCell("Mark of " + std::string(Trim(race.CourseOrder[entry])));
    csv += "\r\n";
    for (int boat = 1; boat <= race.Boats.Count(); ++boat) {
        csv += QuotedCell(race.Boats[boat].BoatName);
        AppendCells(statistics.Cumulative, boat, 1, entries, csv);
        AppendCells(statistics.ByLeg, boat, 2, entries, csv);
        for (int entry = 1; entry <= entries; ++entry) {
            if (!tellsGate(entry)) continue;
            const int mark = MarkPasses::CellOf(statistics.GateMark, boat, entry);
            csv += mark == 0 ? "," : ',' + QuotedCell(CourseKeyText({false, mark}));
        }
        csv += "\r\n";
    }
    return csv;
}

}  // namespace keelview
