#include "racedata/tracks/csv.h"

#include <cmath>
#include <map>
#include <string>
#include <vector>

#include "base/strings.h"
#include "racedata/tracks/csv_cells.h"
#include "racedata/tracks/csv_clock.h"
#include "racedata/tracks/csv_layout.h"
#include "racedata/tracks/numbers.h"
#include "racedata/tracks/relative_wind.h"

namespace keelview {
namespace {

constexpr std::size_t MostBoats = 2000;

/// A cell as it was before it was put into quotes, which doubles those in it.
std::string Unquoted(std::string_view cell) {
    std::string text;
    for (std::size_t at = 0; at < cell.size(); ++at) {
        text += cell[at];
        if (cell.substr(at, 2) == "\"\"") ++at;
    }
    return text;
}

class CsvTable {
  public:
    CsvTable(const CsvLayout& layout, TrackFileContent& content)
        : layout_(layout),
          timeColumn_(layout.Has(Column::Time) ? Column::Time : Column::Date),
          content_(content),
          cells_(layout.Width) {}

    void ReadRow(std::string_view line) {
        SplitCsvRow(line, layout_.Delimiter, cells_);
        const std::string_view time = Cell(timeColumn_);
        const std::string_view lat = Cell(Column::Lat);
        const std::string_view lon = Cell(Column::Lon);
        if (time.empty() && lat.empty() && lon.empty()) return;
        ++rows_;
        Recording* const track = TrackOf(Cell(Column::Boat));
        if (track == nullptr) return Skip(content_.Recordings[0].Left, SkipReason::TooMany);
        const bool hasDate = timeColumn_ != Column::Date;
        const std::optional<UnixMs> moment =
            clock_.Read(hasDate ? Cell(Column::Date) : std::string_view{}, time);
        if (!moment) return Skip(track->Left, SkipReason::NoTime);
        if (!IsOfTheZone()) return Skip(track->Left, SkipReason::OtherZone);
        RecordedFix fix{.Time = *moment,
                        .Lat = Angle(lat, Column::LatSide, LatitudeSides),
                        .Lon = Angle(lon, Column::LonSide, LongitudeSides)};
        ReadSailing(fix);
        AddFix(*track, fix);
    }

    /// Whether each row so far has had a boat of its own: then they are the numbers of the rows.
    bool NumbersRows() const { return rows_ > 1 && boats_.size() == rows_; }

    bool IsFull() const { return boats_.size() >= MostBoats; }

    void Close() { content_.Hints.ZoneHours = clock_.ZoneHours(); }

  private:
    std::string_view Cell(Column column) const {
        const int index = layout_.At(column).Index;
        return index < 0 ? std::string_view{} : cells_[static_cast<std::size_t>(index)];
    }

    float Value(Column column) const {
        const CsvLayout::Place& place = layout_.At(column);
        if (place.Index < 0) return NotTold;
        return Told(CsvNumber(cells_[static_cast<std::size_t>(place.Index)]) * place.Unit);
    }

    /// Where the side of the globe has a column of its own, the angle bears no sign.
    double Angle(std::string_view cell, Column sideColumn, GlobeSides sides) const {
        const double value = CsvAngle(cell, sides);
        return Cell(sideColumn).starts_with(sides.Negative) ? -std::abs(value) : value;
    }

    void ReadSailing(RecordedFix& fix) const {
        fix.Speed = Value(Column::Speed);
        fix.Course = Value(Column::Course);
        fix.Heading = Value(Column::Heading);
        fix.WaterSpeed = Value(Column::WaterSpeed);
        fix.WindSpeed = Value(Column::WindSpeed);
        fix.WindFrom = Value(Column::WindFrom);
        fix.Accuracy = Value(Column::Accuracy);
        if (!layout_.Has(Column::TrueAngle) && !layout_.Has(Column::ApparentAngle)) return;
        WorkOutWind(fix, {.TrueAngle = Value(Column::TrueAngle),
                          .ApparentAngle = Value(Column::ApparentAngle),
                          .ApparentSpeed = Value(Column::ApparentSpeed)});
    }

    /// The recording of a boat, a new one at its first row; nullptr where there are too many.
    Recording* TrackOf(std::string_view boat) {
        if (!boats_.empty() && boat == lastBoat_) return &content_.Recordings[lastTrack_];
        const auto known = boats_.find(boat);
        if (known != boats_.end()) {
            lastTrack_ = known->second;
        } else {
            if (IsFull()) return nullptr;
            lastTrack_ = content_.Recordings.size();
            boats_.emplace(boat, lastTrack_);
            content_.Recordings.emplace_back().Boat = SoundName(Unquoted(boat));
        }
        lastBoat_ = boat;
        return &content_.Recordings[lastTrack_];
    }

    /// False for a time without a zone once there has been one that has it. With the first of these all
    /// that were read before are seen to be of another zone.
    bool IsOfTheZone() {
        if (!clock_.HadZone()) return !hasZones_;
        if (hasZones_) return true;
        hasZones_ = true;
        for (Recording& track : content_.Recordings) {
            if (!track.Fixes.empty())
                Skip(track.Left, SkipReason::OtherZone, static_cast<int>(track.Fixes.size()));
            track.Fixes.clear();
        }
        return true;
    }

    const CsvLayout& layout_;
    const Column timeColumn_;
    TrackFileContent& content_;
    std::vector<std::string_view> cells_;  // of the present row
    CsvClock clock_;
    bool hasZones_ = false;
    std::size_t rows_ = 0;                                   // those with something in them
    std::map<std::string, std::size_t, std::less<>> boats_;  // the recording of each
    std::string_view lastBoat_;
    std::size_t lastTrack_ = 0;
};

/// Reads all rows; false where the column of boats has turned out to number them.
bool ReadRows(std::string_view rows, const CsvLayout& layout, TrackFileContent& content) {
    CsvTable table(layout, content);
    while (!rows.empty()) {
        table.ReadRow(CutLine(rows));
        if (table.IsFull() && table.NumbersRows()) return false;
    }
    table.Close();
    return !table.NumbersRows();
}

}  // namespace

bool LooksLikeCsv(std::string_view bytes) {
    return TakeCsvHead(bytes).has_value();
}

TrackFileContent ReadCsv(std::string_view bytes) {
    TrackFileContent content;
    std::optional<CsvLayout> layout = TakeCsvHead(bytes);
    if (!layout) {
        content.Refused = Refusal::Broken;
        return content;
    }
    if (!layout->Has(Column::Time) && !layout->Has(Column::Date)) {
        content.Refused = Refusal::NoTimes;
        return content;
    }
    if (!ReadRows(bytes, *layout, content)) {
        layout->At(Column::Boat) = {};
        content = {};
        ReadRows(bytes, *layout, content);
    }
    return content;
}

}  // namespace keelview
