#include "racedata/wind_table.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <utility>

#include "base/strings.h"
#include "base/text_encoding.h"
#include "racedata/limits.h"
#include "racedata/tracks/csv_cells.h"
#include "racedata/tracks/csv_clock.h"
#include "racedata/tracks/csv_layout.h"
#include "racedata/wind_file.h"

namespace keelview {

namespace {

constexpr std::size_t MostRows = 1'000'000;

/// Three columns in the order of a wind file.
CsvLayout PlainLayout(std::string_view text) {
    const std::string_view line = CutLine(text);
    CsvLayout layout;
    for (const char delimiter : {'\t', ';', ','})
        if (std::ranges::count(line, delimiter) >= 2) {
            layout.Delimiter = delimiter;
            break;
        }
    layout.At(Column::Time).Index = 0;
    layout.At(Column::WindSpeed).Index = 1;
    layout.At(Column::WindFrom).Index = 2;
    layout.Width = 3;
    return layout;
}

/// Takes the line of names off a table of winds. A table of the wind alone may call it speed and direction.
CsvLayout TakeHead(std::string_view& text) {
    constexpr std::array<std::array<Column, 2>, 4> heads{{{Column::Time, Column::WindFrom},
                                                          {Column::Date, Column::WindFrom},
                                                          {Column::Time, Column::Course},
                                                          {Column::Date, Column::Course}}};
    for (const auto& needed : heads) {
        std::string_view rest = text;
        auto layout = TakeCsvHead(rest, needed);
        if (!layout) continue;
        text = rest;
        if (!layout->Has(Column::WindFrom)) layout->At(Column::WindFrom) = layout->At(Column::Course);
        if (!layout->Has(Column::WindSpeed)) layout->At(Column::WindSpeed) = layout->At(Column::Speed);
        return *layout;
    }
    return PlainLayout(text);
}

class WindReader {
  public:
    WindReader(const CsvLayout& layout, double timeDiff, std::string_view day)
        : layout_(layout), timeDiff_(timeDiff), day_(day), cells_(layout_.Width) {}

    std::optional<WindRow> Read(std::string_view line) {
        SplitCsvRow(line, layout_.Delimiter, cells_);
        const auto time = Time();
        const double direction = Value(Column::WindFrom);
        if (!time || !(std::abs(direction) <= LargestNumber)) return {};
        WindRow row{*time, {}, direction};
        if (const double speed = Value(Column::WindSpeed); speed >= 0 && speed <= LargestNumber)
            row.Speed = speed;
        return row;
    }

  private:
    std::string_view Cell(Column column) const {
        const int index = layout_.At(column).Index;
        return index < 0 ? std::string_view{} : cells_[static_cast<std::size_t>(index)];
    }
    double Value(Column column) const { return CsvNumber(Cell(column)) * layout_.At(column).Unit; }

    std::optional<CivilTime> Time() {
        const bool hasTime = layout_.Has(Column::Time);
        const std::string_view time = Cell(hasTime ? Column::Time : Column::Date);
        const std::string_view date = hasTime ? Cell(Column::Date) : std::string_view{};
        auto moment = clock_.Read(date, time);
        if (!moment && date.empty()) moment = clock_.Read(day_, time);
        if (!moment) return {};
        const double zone = clock_.HadZone() ? timeDiff_ * 3600 : 0;
        return static_cast<CivilTime>(std::floor(static_cast<double>(*moment) / 1000 + zone));
    }

    CsvLayout layout_;
    double timeDiff_;
    std::string day_;
    CsvClock clock_;
    std::vector<std::string_view> cells_;
};

}  // namespace

WindTable ReadWindTable(std::string_view bytes, double timeDiff, std::string_view day) {
    const std::string decoded = DecodeText(bytes).Utf8;
    std::string_view text = decoded;
    WindReader reader(TakeHead(text), timeDiff, day);
    WindTable table;
    while (!text.empty() && table.Rows.size() < MostRows) {
        const std::string_view line = CutLine(text);
        if (Trim(line).empty()) continue;
        if (const auto row = reader.Read(line))
            table.Rows.push_back(*row);
        else
            ++table.Skipped;
    }
    std::ranges::stable_sort(table.Rows, {}, &WindRow::Time);
    return table;
}

std::error_code WriteWindTable(const std::filesystem::path& appPath, const std::string& fileName,
                               const std::vector<WindRow>& rows) {
    RaceControl race;
    race.WindFileName = fileName;
    if (!rows.empty()) race.Start = RaceTime(rows.front().Time);
    WindData wind;
    for (const WindRow& row : rows)
        wind.Add({static_cast<std::int32_t>(std::min<CivilTime>(row.Time - rows.front().Time, INT32_MAX)),
                  row.Speed, row.Direction});
    return SaveWindFile(appPath, race, wind);
}

}  // namespace keelview
