#pragma once

#include <algorithm>
#include <optional>

#include "base/bilingual.h"
#include "base/numbers.h"
#include "base/point.h"
#include "display/colour.h"
#include "racedata/race_control.h"

namespace keelview {

// What the tables, the charts and the analysis of the data page have in common. Places are pixels.

inline constexpr double DataPageTop = 5.0;    ///< of the page in its place
inline constexpr double DataRowPitch = 18.0;  ///< of the boats in the tables
inline constexpr double DataHeaderTop = 65.0;
inline constexpr double StatNumberIndent = 93.0;  ///< from a column's left to the right edge of its numbers
inline constexpr double LegNumberIndent = 30.0;   ///< the same in the table by leg
inline constexpr Colour DataTitleColour = Rgb(192, 0, 0);
inline constexpr Colour DataFocusColour = Rgb(192, 255, 255);

/// What stays in sight of a page that is scrolled: its lines from Top on, so many pixels, once they are
/// scrolled away and until the page is scrolled as far as Until.
struct PageHead {
    double Top = 0.0;
    double Height = 0.0;
    double Until = 0.0;
    bool Stays(double scrolled) const { return scrolled > Top && scrolled < Until; }
};

/// Title of the column of boat names.
inline constexpr Text BoatColumnTitle{"   Boat Name", "　　　艇　名"};

/// Width of a column of the tables, the same in the charts.
inline double StatColWidth(const RaceControl& race) {
    constexpr double StatPageWidth = 260.0;
    constexpr double WidestStatColumn = 45.0;
    return std::min(StatPageWidth / std::max(race.CourseOrder.Count(), 1), WidestStatColumn);
}

/// Top of a boat's row in the tables.
inline double DataRowTop(int boat) {
    return boat * DataRowPitch + DataHeaderTop;
}

/// Left of the table by leg.
inline double LegTableLeft(const RaceControl& race) {
    constexpr double gap = 140.0;  // from the last column of the left table
    return race.CourseOrder.Count() * StatColWidth(race) + gap;
}

/// A cell of the tables.
struct StatCell {
    int Boat = 0;
    int Entry = 0;  ///< of the course; that at the end of the leg
};

/// The cell of either table that a point of the page lies in.
inline std::optional<StatCell> StatCellAt(const RaceControl& race, const Point& at) {
    const double width = StatColWidth(race);
    const int boat = FloorToInt((at.Y - DataHeaderTop) / DataRowPitch);
    const bool byLeg = at.X >= LegTableLeft(race) - width;
    const double left = byLeg ? LegTableLeft(race) + LegNumberIndent - 2 * width : StatNumberIndent;
    const int entry = FloorToInt((at.X - left) / width) + 1;
    if (!race.Boats.Holds(boat) || entry < (byLeg ? 2 : 1) || entry > race.CourseOrder.Count()) return {};
    return StatCell{boat, entry};
}

/// The y below the tables, where the charts stand.
inline double DataChartTop(const RaceControl& race) {
    return (race.Boats.Count() + 1) * DataRowPitch + 85;
}

/// The head of the tables.
inline PageHead TableHead(const RaceControl& race) {
    constexpr double top = 43.0;
    constexpr double height = 40.0;
    return {top, height, DataChartTop(race) - height - DataRowPitch};
}

/// Height of the page: room for all boats and the charts, at least that of the map.
inline double StatPageHeight(const RaceControl& race, double mapSide) {
    return std::max(race.Boats.Count() * DataRowPitch + 85 + mapSide / 2, mapSide);
}

}  // namespace keelview
