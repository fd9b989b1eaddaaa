#pragma once

#include <array>
#include <optional>
#include <span>
#include <string_view>

namespace keelview {

/// What the columns of a table of fixes tell.
enum class Column {
    Time,
    Date,
    Lat,
    LatSide,  ///< N or S, where the latitude has no sign
    Lon,
    LonSide,
    Speed,
    Course,
    Heading,
    WaterSpeed,
    WindSpeed,
    WindFrom,
    TrueAngle,
    ApparentSpeed,
    ApparentAngle,
    Accuracy,
    Boat
};
inline constexpr std::size_t Columns = static_cast<std::size_t>(Column::Boat) + 1;

/// Where a table has its columns, as its line of names tells.
struct CsvLayout {
    static constexpr int Nowhere = -1;

    struct Place {
        int Index = Nowhere;  ///< from 0
        double Unit = 1.0;    ///< knots or degrees that one of its unit is
    };

    char Delimiter = ',';
    std::array<Place, Columns> Places;
    std::size_t Width = 0;  ///< cells of a row up to the last that is needed

    const Place& At(Column column) const { return Places[static_cast<std::size_t>(column)]; }
    Place& At(Column column) { return Places[static_cast<std::size_t>(column)]; }
    bool Has(Column column) const { return At(column).Index != Nowhere; }
};

/// The columns without which a table holds no fixes.
inline constexpr std::array<Column, 2> PlaceColumns{Column::Lat, Column::Lon};

/// Takes the head of a table off a text, up to the end of its line of names; nothing where none of the
/// first lines names all columns that are needed. Names are known in English and Japanese, with or without
/// a unit; capitals, blanks and signs in them do not matter. Of several columns with one meaning the one
/// with the plainest name counts: `sog` before `speed`.
std::optional<CsvLayout> TakeCsvHead(std::string_view& text, std::span<const Column> needed = PlaceColumns);

/// Splits a line into as many cells as there is room for, without blanks and quotes around them; those that
/// the line does not have are empty.
void SplitCsvRow(std::string_view line, char delimiter, std::span<std::string_view> cells);

}  // namespace keelview
