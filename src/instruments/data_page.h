#pragma once

#include <algorithm>

#include "base/bilingual.h"
#include "display/colour.h"
#include "racedata/race_control.h"

namespace keelview {

// What the tables, the charts and the analysis of the data page have in common. Places are pixels.

inline constexpr double DataPageTop = 5.0;    ///< of the page in its place
inline constexpr double DataRowPitch = 18.0;  ///< of the boats in the tables
inline constexpr Colour DataTitleColour = Rgb(192, 0, 0);
inline constexpr Colour DataFocusColour = Rgb(192, 255, 255);

/// Title of the column of boat names.
inline constexpr Text BoatColumnTitle{"   Boat Name", "　　　艇　名"};

/// Width of a column of the tables, the same in the charts.
inline double StatColWidth(const RaceControl& race) {
    constexpr double StatPageWidth = 260.0;
    constexpr double WidestStatColumn = 45.0;
    return std::min(StatPageWidth / std::max(race.CourseOrder.Count(), 1), WidestStatColumn);
}

/// The y below the tables, where the charts stand.
inline double DataChartTop(const RaceControl& race) {
    return (race.Boats.Count() + 1) * DataRowPitch + 85;
}

/// Height of the page: room for all boats and the charts, at least that of the map.
inline double StatPageHeight(const RaceControl& race, double mapSide) {
    return std::max(race.Boats.Count() * DataRowPitch + 85 + mapSide / 2, mapSide);
}

}  // namespace keelview
