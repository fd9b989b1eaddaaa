#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "analysis/mark_rounding.h"
#include "base/bilingual.h"
#include "racedata/race_control.h"

namespace keelview {

/// What a page of leg statistics shows.
enum class StatKind { Time = 1, Distance = 2, Speed = 3, Analysis = 4 };

/// Longest course that the factor analysis takes.
inline constexpr int MaxAnalysisEntries = 20;

/// Seconds, metres or knots by boat and course entry, with the extremes of each column.
struct LegTable {
    MarkPasses::ByBoatAndEntry<std::optional<double>> Value;  ///< nothing: the cell stays empty
    OneBased<double> ColMax;                                  ///< largest value of a column, at least -10
    OneBased<double> ColMin;  ///< smallest positive value below 99999, else 99999; of times up to an entry
                              ///< 0 counts too, as a start with the gun
};

/// One kind of statistics up to each entry and for the leg that ends at each entry. A leg has the number of
/// the entry where it ends, so entry 1 has none.
struct LegStatistics {
    StatKind Kind = StatKind::Time;
    LegTable Cumulative;
    LegTable ByLeg;
    MarkPasses::ByBoatAndEntry<int> GateMark{};  ///< as the passes have it; of Time alone
};

/// Works out both tables of a kind (Time: seconds; Distance: whole metres; Speed: knots) from finished
/// passes; for Analysis all cells stay empty. Cumulative: the cell of an entry that a boat did not reach is
/// empty. By leg: so is that of a leg whose begin or end it did not reach. A speed without a duration is
/// empty too. Cumulative speeds are rounded to three decimals, speeds by leg are cut to them. Passes of
/// another number of boats or entries than the race's leave all cells empty.
LegStatistics ComputeLegStatistics(const RaceControl& race, const MarkPasses& passes, StatKind kind);

/// True if the cell holds the best value of its column: the least time or distance, the highest speed.
bool IsBest(const LegTable& table, StatKind kind, int boat, int entry);

/// Seconds from the entry before to this one; nothing where either was not reached, as for entry 1.
inline std::optional<int> LegTime(const MarkPasses& passes, int boat, int entry) {
    const std::optional<int> begin = PassTime(passes, boat, entry - 1);
    const std::optional<int> end = PassTime(passes, boat, entry);
    return begin && end ? std::optional(*end - *begin) : std::nullopt;
}

/// Nautical miles sailed on the same way; of no meaning where there is no leg time.
inline double LegMiles(const MarkPasses& passes, int boat, int entry) {
    return PassMiles(passes, boat, entry) - PassMiles(passes, boat, entry - 1);
}

/// Knots over a distance (nautical miles) and a time (seconds); nothing without a duration.
std::optional<double> SpeedOver(double miles, int seconds);

/// How a boat stands against the best boat of a column: its value over the best boat's, minus 1. Time is
/// Distance / Speed, so a loss in time is what was sailed too far and too slowly. Nothing where the boat or
/// the best boat has no such value.
struct FactorShare {
    bool Counts = false;  ///< the boat sailed the column's part of the race
    std::optional<double> Time;
    std::optional<double> Distance;
    std::optional<double> Speed;
};

/// One part of the race in the factor analysis.
struct FactorColumn {
    int BestBoat = 0;  ///< the boat with the shortest time, the lowest number among equals; 0 when none
    OneBased<FactorShare> Share;  ///< by boat
};

/// Every boat's time split into distance and speed. Column 1 is the whole race, column c the leg that ends
/// at entry c.
using FactorAnalysis = OneBased<FactorColumn>;

/// The analysis of a course; nothing if it has no entry or more than MaxAnalysisEntries, or if the passes
/// are not as many as its boats and entries. A best boat has a time above 0 and below 100000 seconds.
std::optional<FactorAnalysis> AnalyseFactors(const RaceControl& race, const MarkPasses& passes);

/// Said in place of the analysis of a longer course.
std::string CourseTooLongText(bool useEnglish);

/// Longest bar of the analysis, as a share of the best boat's value: larger ratios are drawn as this.
double LimitShare(double ratio);

/// The axis of a chart of differences.
struct DiffAxis {
    int Steps = 1;      ///< the grid has this many steps, 1 to 10
    double Unit = 1.0;  ///< one step of the grid: a power of ten
    double Max() const { return Steps * Unit; }
};

/// The axis for a spread: its leading digit plus 1 steps of its power of ten, so 130 gives 2 x 100. A
/// spread of 0 or less, or one that is not finite, gets a single step of 1.
DiffAxis ChooseDiffAxis(double spread);

/// A table in the form that spreadsheets open: UTF-8 with a byte-order mark, lines ended by CR LF, boat
/// names quoted, numbers with a decimal point. One row a boat; first the entries of the cumulative table,
/// then the legs (">MK1"). Empty cells stay empty.
std::string LegStatisticsCsv(const RaceControl& race, const LegStatistics& statistics);

}  // namespace keelview
