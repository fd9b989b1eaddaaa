#include "racedata/tracks/csv_layout.h"

#include <algorithm>
#include <string>
#include <vector>

#include "base/angles.h"
#include "base/strings.h"
#include "base/text_encoding.h"

namespace keelview {
namespace {

constexpr std::size_t HeadBytes = 16384;
constexpr int HeadLines = 50;
constexpr std::ptrdiff_t MostColumns = 1000;

struct ColumnName {
    std::string_view Name;
    Column Meaning;
};

/// The plainest first.
constexpr auto Names = std::to_array<ColumnName>({
    {"isodatetime", Column::Time},
    {"datetime", Column::Time},
    {"dateandtime", Column::Time},
    {"timestamp", Column::Time},
    {"utc", Column::Time},
    {"utctime", Column::Time},
    {"gpstime", Column::Time},
    {"unixtime", Column::Time},
    {"unix", Column::Time},
    {"epoch", Column::Time},
    {"time", Column::Time},
    {"localtime", Column::Time},
    {"日時", Column::Time},
    {"時刻", Column::Time},
    {"時間", Column::Time},
    {"utcdate", Column::Date},
    {"gpsdate", Column::Date},
    {"date", Column::Date},
    {"localdate", Column::Date},
    {"日付", Column::Date},
    {"年月日", Column::Date},
    {"lat", Column::Lat},
    {"latitude", Column::Lat},
    {"latitudens", Column::Lat},
    {"gpslat", Column::Lat},
    {"gpslatitude", Column::Lat},
    {"緯度", Column::Lat},
    {"ns", Column::LatSide},
    {"lon", Column::Lon},
    {"lng", Column::Lon},
    {"long", Column::Lon},
    {"longitude", Column::Lon},
    {"longitudeew", Column::Lon},
    {"gpslon", Column::Lon},
    {"gpslongitude", Column::Lon},
    {"経度", Column::Lon},
    {"ew", Column::LonSide},
    {"sog", Column::Speed},
    {"speedoverground", Column::Speed},
    {"gpsspeed", Column::Speed},
    {"groundspeed", Column::Speed},
    {"speed", Column::Speed},
    {"velocity", Column::Speed},
    {"対地速度", Column::Speed},
    {"速度", Column::Speed},
    {"cog", Column::Course},
    {"courseoverground", Column::Course},
    {"gpscourse", Column::Course},
    {"course", Column::Course},
    {"bearing", Column::Course},
    {"direction", Column::Course},
    {"対地針路", Column::Course},
    {"針路", Column::Course},
    {"hdg", Column::Heading},
    {"heading", Column::Heading},
    {"trueheading", Column::Heading},
    {"船首方位", Column::Heading},
    {"bsp", Column::WaterSpeed},
    {"boatspeed", Column::WaterSpeed},
    {"stw", Column::WaterSpeed},
    {"waterspeed", Column::WaterSpeed},
    {"speedthroughwater", Column::WaterSpeed},
    {"対水速度", Column::WaterSpeed},
    {"tws", Column::WindSpeed},
    {"truewindspeed", Column::WindSpeed},
    {"windspeed", Column::WindSpeed},
    {"風速", Column::WindSpeed},
    {"twd", Column::WindFrom},
    {"truewinddirection", Column::WindFrom},
    {"winddirection", Column::WindFrom},
    {"winddir", Column::WindFrom},
    {"winddirectionmag", Column::WindFrom},
    {"風向", Column::WindFrom},
    {"twa", Column::TrueAngle},
    {"truewindangle", Column::TrueAngle},
    {"aws", Column::ApparentSpeed},
    {"apparentwindspeed", Column::ApparentSpeed},
    {"awa", Column::ApparentAngle},
    {"apparentwindangle", Column::ApparentAngle},
    {"accuracy", Column::Accuracy},
    {"accuracym", Column::Accuracy},
    {"horizontalaccuracy", Column::Accuracy},
    {"horizontalaccuracym", Column::Accuracy},
    {"hacc", Column::Accuracy},
    {"haccm", Column::Accuracy},
    {"boat", Column::Boat},
    {"boatname", Column::Boat},
    {"艇名", Column::Boat},
    {"sail", Column::Boat},
    {"sailnumber", Column::Boat},
    {"sailno", Column::Boat},
    {"セール番号", Column::Boat},
    {"vessel", Column::Boat},
    {"vesselname", Column::Boat},
    {"yacht", Column::Boat},
    {"name", Column::Boat},
    {"mmsi", Column::Boat},
    {"boatid", Column::Boat},
    {"id", Column::Boat},
});

struct UnitName {
    std::string_view Name;
    double Factor;  // to knots or degrees
};

/// What may stand behind a name. The unit of a time is seen from its value.
constexpr auto Units = std::to_array<UnitName>({
    {"kn", 1.0},
    {"kt", 1.0},
    {"kts", 1.0},
    {"knot", 1.0},
    {"knots", 1.0},
    {"ノット", 1.0},
    {"ms", 3.6 / 1.852},
    {"mps", 3.6 / 1.852},
    {"kmh", 1 / 1.852},
    {"kph", 1 / 1.852},
    {"mph", 1.609344 / 1.852},
    {"deg", 1.0},
    {"degrees", 1.0},
    {"°", 1.0},
    {"度", 1.0},
    {"true", 1.0},
    {"t", 1.0},
    {"rad", 1 / DegToRad},
    {"radians", 1 / DegToRad},
    {"utc", 1.0},
    {"gmt", 1.0},
    {"s", 1.0},
    {"sec", 1.0},
    {"seconds", 1.0},
});

struct NamedColumn {
    std::size_t Rank = Names.size();  // line of Names; their number for none
    double Unit = 1.0;
};

NamedColumn FindName(std::string_view name, int mostUnits) {
    const auto found = std::ranges::find(Names, name, &ColumnName::Name);
    if (found != Names.end()) return {static_cast<std::size_t>(found - Names.begin()), 1.0};
    if (mostUnits == 0) return {};
    for (const UnitName& unit : Units) {
        if (!name.ends_with(unit.Name)) continue;
        NamedColumn column = FindName(name.substr(0, name.size() - unit.Name.size()), mostUnits - 1);
        column.Unit *= unit.Factor;
        if (column.Rank < Names.size()) return column;
    }
    return {};
}

/// Small letters and digits, and characters beyond ASCII: "SOG [km/h]" is "sogkmh".
std::string PlainName(std::string_view cell) {
    std::string plain;
    for (const char c : cell) {
        const char small = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
        const bool isLetter = small >= 'a' && small <= 'z';
        const bool isDigit = small >= '0' && small <= '9';
        if (isLetter || isDigit || static_cast<unsigned char>(small) >= 0x80) plain += small;
    }
    return plain;
}

/// The layout that a line names; nothing without the columns that are needed.
std::optional<CsvLayout> LayoutOf(std::string_view line, char delimiter, std::span<const Column> needed) {
    constexpr int mostUnits = 2;  // "heading (deg true)"
    const auto width = std::ranges::count(line, delimiter) + 1;
    if (width > MostColumns) return std::nullopt;
    std::vector<std::string_view> cells(static_cast<std::size_t>(width));
    SplitCsvRow(line, delimiter, cells);
    CsvLayout layout;
    layout.Delimiter = delimiter;
    std::array<std::size_t, Columns> ranks{};
    ranks.fill(Names.size());
    for (std::size_t index = 0; index < cells.size(); ++index) {
        const NamedColumn column = FindName(PlainName(cells[index]), mostUnits);
        if (column.Rank == Names.size()) continue;
        const auto meaning = static_cast<std::size_t>(Names[column.Rank].Meaning);
        if (column.Rank >= ranks[meaning]) continue;
        ranks[meaning] = column.Rank;
        layout.Places[meaning] = {static_cast<int>(index), column.Unit};
        layout.Width = std::max(layout.Width, index + 1);
    }
    const bool isWhole = std::ranges::all_of(needed, [&](Column column) { return layout.Has(column); });
    return isWhole ? std::optional(layout) : std::nullopt;
}

/// A cell in quotes, which may hold the delimiter. Takes it off the line with the delimiter behind it.
std::string_view TakeQuoted(std::string_view& line, char delimiter) {
    std::size_t end = 1;
    while (end < line.size() && (line[end] != '"' || line.substr(end, 2) == "\"\""))
        end += line[end] == '"' ? 2 : 1;
    end = std::min(end, line.size());
    const std::string_view cell = line.substr(1, end - 1);
    line.remove_prefix(end);
    CutHead(line, delimiter);
    return Trim(cell);
}

}  // namespace

std::optional<CsvLayout> TakeCsvHead(std::string_view& text, std::span<const Column> needed) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
    const std::size_t size = text.size();
    for (int count = 0; count < HeadLines && !text.empty() && size - text.size() < HeadBytes; ++count) {
        const std::string_view whole = CutLine(text);
        if (whole.size() > HeadBytes) return std::nullopt;
        const std::string line = DecodeText(whole).Utf8;
        for (const char delimiter : {',', ';', '\t'})
            if (const auto layout = LayoutOf(line, delimiter, needed)) return layout;
    }
    return std::nullopt;
}

void SplitCsvRow(std::string_view line, char delimiter, std::span<std::string_view> cells) {
    for (std::string_view& cell : cells) {
        if (line.starts_with('"'))
            cell = TakeQuoted(line, delimiter);
        else
            cell = Trim(CutHead(line, delimiter));
    }
}

}  // namespace keelview
