#pragma once

#include "base/bilingual.h"
#include "display/colour.h"

namespace keelview {

// What the tables, the charts and the analysis of the data page have in common. Places are pixels.

inline constexpr double DataPageTop = 5.0;      ///< of the page in its place
inline constexpr double DataRowPitch = 18.0;    ///< of the boats in the tables
inline constexpr double DataHeadBottom = 82.0;  ///< of the tables' head, which stands still
inline constexpr double DataNamesLeft = 8.0;    ///< of the column of names, which stands still too
inline constexpr Colour DataTitleColour = Rgb(192, 0, 0);
inline constexpr Colour DataFocusColour = Rgb(192, 255, 255);

/// Title of the column of boat names.
inline constexpr Text BoatColumnTitle{"   Boat Name", "　　　艇　名"};

/// What of a page larger than its place is seen: how far it is scrolled, and the size of the place.
struct PageView {
    double X = 0.0;
    double Y = 0.0;
    double Width = 0.0;
    double Height = 0.0;
};

/// A cell of the tables or of the analysis.
struct StatCell {
    int Boat = 0;
    int Entry = 0;  ///< of the course; that at the end of the leg
};

}  // namespace keelview
