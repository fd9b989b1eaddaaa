#include "racedata/tracks/csv_clock.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "base/dates.h"
#include "base/strings.h"
#include "racedata/tracks/csv_cells.h"
#include "racedata/tracks/numbers.h"

namespace keelview {
namespace {

constexpr UnixMs MinuteMs = 60'000;
constexpr UnixMs HourMs = 60 * MinuteMs;
constexpr double DayMs = 86'400'000;
constexpr double SpreadsheetDays = 25569;  // of 1970-01-01, since 1899-12-30
constexpr double EarliestUnix = 1e8;       // seconds, in 1973: less is no time of a recording

/// A time of day and the zone behind it.
struct Clock {
    UnixMs OfDay = 0;
    std::optional<int> ZoneMinutes;
};

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Takes one or two digits off the head of a text; -1 if there are none.
int TakeTwoDigits(std::string_view& text) {
    if (text.empty() || !IsDigit(text[0])) return -1;
    const std::size_t size = text.size() > 1 && IsDigit(text[1]) ? 2 : 1;
    const int value = Digits(text.substr(0, size));
    text.remove_prefix(size);
    return value;
}

bool TakeSign(std::string_view& text, std::string_view signs) {
    if (text.empty() || signs.find(text[0]) == std::string_view::npos) return false;
    text.remove_prefix(1);
    return true;
}

/// Takes ".25" or ",25" off the head of a text as milliseconds; 0 if there is none.
int TakeFraction(std::string_view& text) {
    if (!TakeSign(text, ".,")) return 0;
    std::size_t size = 0;
    while (size < text.size() && IsDigit(text[size])) ++size;
    const int ms = Milliseconds(text.substr(0, size));
    text.remove_prefix(size);
    return ms;
}

/// Reads "Z", "UTC", "JST", "+09:00", "-0500", "+9" as minutes; nothing for any other text.
std::optional<int> ZoneMinutes(std::string_view text) {
    if (text == "Z" || text == "z" || text == "UTC" || text == "GMT") return 0;
    if (text == "JST") return 9 * 60;
    const bool west = text.starts_with('-');
    if (!TakeSign(text, "+-")) return std::nullopt;
    const int hours = TakeTwoDigits(text);
    TakeSign(text, ":");
    const int minutes = text.empty() ? 0 : TakeTwoDigits(text);
    if (hours < 0 || hours > 15 || minutes < 0 || minutes > 59 || !text.empty()) return std::nullopt;
    return (west ? -1 : 1) * (hours * 60 + minutes);
}

/// Takes "AM" or "PM" off the head of a text and puts the hour in its half of the day.
void TakeHalfDay(std::string_view& text, int& hour) {
    const std::string_view half = text.substr(0, 2);
    const bool afternoon = EqualNoCase(half, "PM");
    if ((!afternoon && !EqualNoCase(half, "AM")) || hour < 1 || hour > 12) return;
    hour = hour % 12 + (afternoon ? 12 : 0);
    text = Trim(text.substr(2));
}

/// Reads "12:00:00.25", "9:05 PM", "120000.25" with or without a zone.
std::optional<Clock> ReadClock(std::string_view text) {
    int hour = TakeTwoDigits(text);
    const bool packed = !text.empty() && IsDigit(text[0]);
    if (!packed && !TakeSign(text, ":")) return std::nullopt;
    const int minute = TakeTwoDigits(text);
    const int second = packed || TakeSign(text, ":") ? TakeTwoDigits(text) : 0;
    const int fraction = TakeFraction(text);
    if (text.starts_with(' ')) text = Trim(text);
    Clock clock;
    TakeHalfDay(text, hour);
    if (!text.empty()) {
        clock.ZoneMinutes = ZoneMinutes(text);
        if (!clock.ZoneMinutes) return std::nullopt;
    }
    if (hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 || second > 60 || fraction < 0)
        return std::nullopt;
    clock.OfDay = hour * HourMs + minute * MinuteMs + second * 1000 + fraction;
    return clock;
}

/// Where the time of day begins in a text that has a date before it; 0 in one that has none.
std::size_t ClockAt(std::string_view text) {
    constexpr std::size_t isoDate = 10;
    if (text.size() > isoDate && text[4] == '-' && (text[isoDate] == 'T' || text[isoDate] == ' '))
        return isoDate + 1;
    const std::size_t colon = text.find(':');
    const std::size_t gap = text.substr(0, colon).find_first_of(" T");
    return gap == std::string_view::npos ? 0 : gap + 1;
}

}  // namespace

std::optional<UnixMs> CsvClock::Read(std::string_view date, std::string_view time) {
    const std::size_t clockAt = ClockAt(time);
    if (clockAt > 0) {
        date = time.substr(0, clockAt - 1);
        time.remove_prefix(clockAt);
    } else if (const double number = CsvNumber(time); date.empty() || number >= EarliestUnix) {
        if (const auto moment = ReadNumber(number)) return moment;  // beside a date less is "120000"
    }
    const std::optional<UnixMs>& midnight = Midnight(date);
    const std::optional<Clock> clock = midnight ? ReadClock(time) : std::nullopt;
    if (!clock) return std::nullopt;
    hadZone_ = clock->ZoneMinutes.has_value();
    if (hadZone_) SetZone(*clock->ZoneMinutes);
    return *midnight + clock->OfDay - clock->ZoneMinutes.value_or(0) * MinuteMs;
}

std::optional<UnixMs> CsvClock::ReadNumber(double value) {
    static constexpr std::array<Scale, 5> scales{{
        {20'000, 80'000, DayMs, -SpreadsheetDays * DayMs},
        {EarliestUnix, 1e10, 1e3, 0},
        {1e11, 1e13, 1, 0},
        {1e14, 1e16, 1e-3, 0},
        {1e17, 1e19, 1e-6, 0},
    }};
    if (std::isnan(value)) return std::nullopt;
    const auto fits = [value](const Scale& scale) { return value >= scale.From && value < scale.To; };
    const bool isFirst = !std::exchange(hasNumbers_, true);
    if (scale_ == nullptr) {
        const auto found = std::ranges::find_if(scales, fits);
        if (found == scales.end() || (found == scales.begin() && !isFirst)) return std::nullopt;
        scale_ = &*found;
    }
    if (!fits(*scale_)) return std::nullopt;
    hadZone_ = true;
    return std::llround(value * scale_->Milliseconds + scale_->Origin);
}

/// Midnight of a date. Read once for all the rows of a day.
const std::optional<UnixMs>& CsvClock::Midnight(std::string_view date) {
    if (date == date_) return midnight_;
    date_ = date;
    const int packed = date.size() == 8 ? Digits(date) : -1;  // "20250621"
    const auto seconds = packed < 0
                             ? ParseDateTime(date)
                             : MakeCivilTime(packed / 10000, packed / 100 % 100, packed % 100, 0, 0, 0);
    midnight_ = seconds ? std::optional(*seconds * 1000) : std::nullopt;
    return midnight_;
}

void CsvClock::SetZone(int minutes) {
    if (minutes != 0 && !zoneHours_) zoneHours_ = minutes / 60.0;
}

}  // namespace keelview
