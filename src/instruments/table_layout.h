#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/leg_statistics.h"
#include "base/point.h"
#include "instruments/data_page.h"

namespace keelview {

/// Seconds as "1:02:03", "4:05", "-0:12".
std::string RaceClockText(double seconds);

/// A number of the tables as it is printed: seconds or h:mm:ss, whole metres, knots to three decimals, so
/// that points and colons of a column stand under each other where its texts end at one place.
std::string StatText(StatKind kind, bool asClock, double value);

/// Where the columns of both tables stand: each as wide as its widest number and its head need, one behind
/// the other from the names on.
class TableLayout {
  public:
    struct Column {
        bool ByLeg = false;
        int Entry = 0;
        double Right = 0.0;  ///< where head and numbers end, pixels of the page
        double Width = 0.0;
    };
    using Measure = std::function<double(std::string_view)>;

    TableLayout() = default;
    /// `titleWidth`: of the title over the left table, which reaches as far at least.
    TableLayout(const RaceControl& race, const LegStatistics& statistics, bool asClock, double titleWidth,
                const Measure& measure);

    const std::vector<Column>& Columns() const { return columns_; }
    double NamesRight() const { return namesRight_; }  ///< of the boxes of the names
    double Width() const { return width_; }            ///< of both tables
    double LegTablesLeft() const { return legLeft_; }
    /// The column of an x of the page; nothing beside them.
    const Column* ColumnAt(double x) const;

  private:
    std::vector<Column> columns_;
    double namesRight_ = 0.0;
    double legLeft_ = 0.0;
    double width_ = 0.0;
};

/// What stands over a column: the entry, and ">" before it where it ends a leg.
std::string ColumnHead(const RaceControl& race, const TableLayout::Column& column);

}  // namespace keelview
