#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "racedata/tracks/recording.h"

namespace keelview {

/// Reads the times of a table in the forms that programs write:
/// - "2025-06-21T12:00:00.25Z", and with a blank for the T, slashes, any date of base/dates, AM and PM, and
/// a
///   zone such as "+09:00", "-0500" or "UTC"
/// - a time of day alone, beside a column of dates; also "120000.25" beside "20250621"
/// - a number: seconds, milliseconds, microseconds or nanoseconds since 1970, or days since 1899-12-30, as
///   spreadsheets count. The first number of a file decides which, so that seconds since a start are none.
class CsvClock {
  public:
    /// The moment of a row; nothing if it tells none. The date is empty where there is no such column.
    std::optional<UnixMs> Read(std::string_view date, std::string_view time);

    /// Whether the last moment was told with its zone, as numbers always are.
    bool HadZone() const { return hadZone_; }
    /// Local time less UTC of the first time with a zone other than UTC.
    std::optional<double> ZoneHours() const { return zoneHours_; }

  private:
    /// A way to count time.
    struct Scale {
        double From, To;      // values that it is taken for
        double Milliseconds;  // of one
        double Origin;        // Unix milliseconds of 0
    };

    std::optional<UnixMs> ReadNumber(double value);
    const std::optional<UnixMs>& Midnight(std::string_view date);
    void SetZone(int minutes);

    const Scale* scale_ = nullptr;
    bool hasNumbers_ = false;
    bool hadZone_ = false;
    std::optional<double> zoneHours_;
    std::string date_;  // the text that midnight_ was read from
    std::optional<UnixMs> midnight_;
};

}  // namespace keelview
