#include "instruments/table_layout.h"

#include <algorithm>
#include <cmath>

#include "base/dates.h"
#include "base/numbers.h"
#include "base/strings.h"

namespace keelview {

namespace {

constexpr double ColumnGap = 12.0;
constexpr double TableGap = 24.0;
constexpr double LeastNames = 92.0;
constexpr double MostNames = 220.0;

/// The numbers that a column can be widest by: its least and its largest one.
std::vector<double> WidestOf(const LegTable& table, int entry) {
    std::vector<double> widest;
    for (const auto& row : table.Value) {
        const std::optional<double>& value = row[entry];
        if (!value) continue;
        if (widest.empty()) widest = {*value, *value};
        widest[0] = std::min(widest[0], *value);
        widest[1] = std::max(widest[1], *value);
    }
    return widest;
}

}  // namespace

std::string RaceClockText(double seconds) {
    std::string text = DurationText(std::llround(std::abs(seconds)));
    if (text.starts_with("00:")) text.erase(0, 3);
    if (text.starts_with('0')) text.erase(0, 1);
    return (seconds < 0 ? "-" : "") + text;
}

std::string StatText(StatKind kind, bool asClock, double value) {
    if (kind == StatKind::Time && asClock) return RaceClockText(value);
    std::string text = SurfaceNumberText(value);
    if (kind != StatKind::Speed) return text;
    if (text.find('.') == std::string::npos) text += '.';
    constexpr std::size_t decimals = 3;
    text.resize(std::max(text.size(), text.find('.') + 1 + decimals), '0');
    return text;
}

std::string ColumnHead(const RaceControl& race, const TableLayout::Column& column) {
    return (column.ByLeg ? ">" : "") + std::string(Trim(race.CourseOrder[column.Entry]));
}

TableLayout::TableLayout(const RaceControl& race, const LegStatistics& statistics, bool asClock,
                         double titleWidth, const Measure& measure) {
    double names = LeastNames;
    for (const BoatEntry& boat : race.Boats) names = std::max(names, measure(boat.BoatName) + 4);
    namesRight_ = DataNamesLeft + std::min(names, MostNames);
    double x = namesRight_;
    for (const bool byLeg : {false, true}) {
        if (byLeg) legLeft_ = x = std::max(x, namesRight_ + titleWidth) + TableGap;
        const LegTable& table = byLeg ? statistics.ByLeg : statistics.Cumulative;
        for (int entry = byLeg ? 2 : 1; entry <= race.CourseOrder.Count(); ++entry) {
            Column column{.ByLeg = byLeg, .Entry = entry};
            double widest = measure(ColumnHead(race, column));
            for (const double value : WidestOf(table, entry))
                widest = std::max(widest, measure(StatText(statistics.Kind, asClock, value)));
            const bool tellsMark = statistics.Kind == StatKind::Time && !byLeg;
            if (tellsMark && ParseCourseKey(race.CourseOrder[entry]).IsGate()) widest += measure(" MK00");
            column.Width = widest + ColumnGap;
            column.Right = x += column.Width;
            columns_.push_back(column);
        }
    }
    width_ = x + ColumnGap / 2;
}

const TableLayout::Column* TableLayout::ColumnAt(double x) const {
    const auto found = std::ranges::find_if(columns_, [x](const Column& column) {
        return x > column.Right - column.Width && x <= column.Right;
    });
    return found == columns_.end() ? nullptr : &*found;
}

}  // namespace keelview
