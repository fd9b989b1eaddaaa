#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/dates.h"
#include "racedata/tracks/recording.h"

namespace keelview {

/// One fix as a track file tells it.
struct TrackFix {
    double Lat = 0.0;  ///< minutes of arc, north positive
    double Lon = 0.0;  ///< minutes of arc, east positive
    UnixMs Time = 0;
};

/// Reads the lines of one track file in their order: a `U` line settles the unit of the coordinates from
/// there on, a `T` line is a fix, all others say nothing. The first fix with a date decides whether the
/// dates of the file are written year first or day first.
class TrackLineReader {
  public:
    /// The fix of a line; nothing for any other line, and for a fix with fewer than six fields, without a
    /// date or time of day, or with a coordinate that no unit makes a place on a globe of any size.
    std::optional<TrackFix> Read(std::string_view line);

  private:
    enum class Unit { Degrees, DegreesMinutes, DegreesMinutesSeconds };
    enum class DateForm { Unknown, YearFirst, DayFirst };

    std::optional<TrackFix> ReadFix(std::string_view line);
    void ReadUnit(std::string_view line);
    double Coordinate(std::string_view field) const;
    const std::optional<CivilTime>& Day(std::string_view field);

    Unit unit_ = Unit::DegreesMinutes;
    DateForm dateForm_ = DateForm::Unknown;
    std::string dateField_;         // the text that `day_` was read from
    std::optional<CivilTime> day_;  // midnight of the date field
};

/// Whether the head of a file holds a fix in lines as above.
bool LooksLikeOwnLines(std::string_view bytes);

/// A file of such lines as one recording. `T` lines without a fix count as Broken.
TrackFileContent ReadOwnLines(std::string_view bytes);

}  // namespace keelview
