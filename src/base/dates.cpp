#include "base/dates.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <vector>

#include "base/strings.h"

namespace keelview {
namespace {

constexpr CivilTime FirstMoment = -62135596800;  // 0001/01/01 00:00:00
constexpr CivilTime LastMoment = 253402300799;   // 9999/12/31 23:59:59

/// A whole number of 1 to 4 digits and nothing else.
std::optional<int> ShortInteger(std::string_view text) {
    if (text.empty() || text.size() > 4) return std::nullopt;
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size() || value < 0 || text.front() == '-') {
        return std::nullopt;
    }
    return value;
}

struct DateParts {
    int Year = 0;
    int Month = 0;
    int Day = 0;

    friend bool operator==(const DateParts&, const DateParts&) = default;
};

char SeparatorOf(std::string_view date) {
    const std::size_t at = date.find_first_of("-.");
    return at == std::string_view::npos ? '/' : date[at];
}

bool IsADay(const DateParts& date) {
    return MakeCivilTime(date.Year, date.Month, date.Day, 0, 0, 0).has_value();
}

/// All days that a date can mean, each once, in the orders that ParseDateTime tells; none where there is no
/// such day.
std::vector<DateParts> DaysOf(std::string_view text) {
    const char separator = SeparatorOf(text);
    const std::vector<std::string_view> parts = Split(text, separator);
    if (parts.size() != 3) return {};
    const std::optional<int> first = ShortInteger(parts[0]);
    const std::optional<int> second = ShortInteger(parts[1]);
    const std::optional<int> third = ShortInteger(parts[2]);
    if (!first || !second || !third) return {};
    std::vector<DateParts> days;
    const auto add = [&days](std::string_view written, int year, int month, int day) {
        if (written.size() == 2) year += year < 80 ? 2000 : 1900;
        const DateParts date{year, month, day};
        const bool isADay = (written.size() == 2 || written.size() == 4) && IsADay(date);
        if (isADay && std::ranges::find(days, date) == days.end()) days.push_back(date);
    };
    if (parts[0].size() == 4 || parts[2].size() != 4) add(parts[0], *first, *second, *third);
    if (parts[0].size() == 4) return days;
    if (separator != '.') add(parts[2], *third, *first, *second);
    add(parts[2], *third, *second, *first);
    return days;
}

/// A date in one of the orders that ParseDateTime knows. A year of two digits leaves no doubt.
std::optional<DateParts> ReadDate(std::string_view text) {
    const std::vector<DateParts> days = DaysOf(text);
    const bool longYear = text.find_first_of("/-.") == 4 || text.find_last_of("/-.") + 5 == text.size();
    if (days.empty() || (days.size() > 1 && !longYear)) return std::nullopt;
    return days.front();
}

enum class HalfDay { None, Morning, Afternoon };

bool TakePrefix(std::string_view& text, std::string_view prefix) {
    if (!text.starts_with(prefix)) return false;
    text = Trim(text.substr(prefix.size()));
    return true;
}

bool TakeSuffix(std::string_view& text, std::string_view suffix) {
    if (text.size() < suffix.size() || !EqualNoCase(text.substr(text.size() - suffix.size()), suffix)) {
        return false;
    }
    text = Trim(text.substr(0, text.size() - suffix.size()));
    return true;
}

/// Cuts the mark of the half of the day off the time, before or behind it.
HalfDay TakeHalfDay(std::string_view& time) {
    if (TakePrefix(time, "午前") || TakeSuffix(time, "AM")) return HalfDay::Morning;
    if (TakePrefix(time, "午後") || TakeSuffix(time, "PM")) return HalfDay::Afternoon;
    return HalfDay::None;
}

/// Takes a number and the sign behind it off the head of the text; nothing where it does not stand there.
std::optional<int> TakeNumber(std::string_view& text, std::string_view sign) {
    const std::size_t end = text.find(sign);
    if (end == std::string_view::npos) return std::nullopt;
    const std::optional<int> number = ShortInteger(text.substr(0, end));
    text.remove_prefix(end + sign.size());
    return number;
}

std::optional<CivilTime> OnDay(const DateParts& date, std::string_view time) {
    if (time.empty()) return MakeCivilTime(date.Year, date.Month, date.Day, 0, 0, 0);
    const HalfDay half = TakeHalfDay(time);
    std::optional<int> hour;
    std::optional<int> minute = 0;
    std::optional<int> second = 0;
    if (time.find("時") != std::string_view::npos) {
        hour = TakeNumber(time, "時");
        if (!time.empty()) minute = TakeNumber(time, "分");
        if (!time.empty()) second = TakeNumber(time, "秒");
        if (!time.empty()) return std::nullopt;
    } else {
        const std::vector<std::string_view> parts = Split(time, ':');
        if (parts.size() != 2 && parts.size() != 3) return std::nullopt;
        hour = ShortInteger(parts[0]);
        minute = ShortInteger(parts[1]);
        if (parts.size() == 3) second = ShortInteger(parts[2]);
    }
    if (!hour || !minute || !second) return std::nullopt;
    int hourOfDay = *hour;
    if (half != HalfDay::None) {
        if (hourOfDay > 12) return std::nullopt;
        hourOfDay = hourOfDay % 12 + (half == HalfDay::Afternoon ? 12 : 0);
    }
    return MakeCivilTime(date.Year, date.Month, date.Day, hourOfDay, *minute, *second);
}

std::optional<CivilTime> ParseJapanese(std::string_view text) {
    const bool longYear = text.find("年") == 4;
    const std::optional<int> year = TakeNumber(text, "年");
    const std::optional<int> month = TakeNumber(text, "月");
    const std::optional<int> day = TakeNumber(text, "日");
    if (!longYear || !year || !month || !day) return std::nullopt;
    return OnDay({*year, *month, *day}, Trim(text));
}

/// Date and time of ISO 8601, from either side of its T.
std::optional<CivilTime> ParseIso(std::string_view day, std::string_view time) {
    if (time.ends_with('Z')) time.remove_suffix(1);
    if (day.find('-') != 4 || time.empty() ||
        time.find_first_not_of("0123456789:") != std::string_view::npos)
        return std::nullopt;
    const std::optional<DateParts> date = ReadDate(day);
    return date ? OnDay(*date, time) : std::nullopt;
}

/// A moment as the calendar of the standard library has it, held inside the years of four digits.
std::chrono::sys_seconds OnCalendar(CivilTime time) {
    return std::chrono::sys_seconds{std::chrono::seconds{std::clamp(time, FirstMoment, LastMoment)}};
}

/// Three numbers with a separator, filled up with zeros: the first to its width, the others to two digits.
std::string Joined(std::int64_t a, int width, char separator, std::int64_t b, std::int64_t c) {
    std::array<char, 80> buffer{};
    const int length = std::snprintf(buffer.data(), buffer.size(), "%0*lld%c%02lld%c%02lld", width,
                                     static_cast<long long>(a), separator, static_cast<long long>(b),
                                     separator, static_cast<long long>(c));
    return {buffer.data(), static_cast<std::size_t>(std::max(length, 0))};
}

}  // namespace

std::optional<CivilTime> MakeCivilTime(int year, int month, int day, int hour, int minute, int second) {
    if (year < 1 || year > 9999 || month < 1 || month > 12 || day < 1 || day > 31) return std::nullopt;
    if (hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 || second > 59) {
        return std::nullopt;
    }
    const std::chrono::year_month_day date{std::chrono::year{year},
                                           std::chrono::month{static_cast<unsigned>(month)},
                                           std::chrono::day{static_cast<unsigned>(day)}};
    if (!date.ok()) return std::nullopt;
    const std::chrono::sys_seconds midnight = std::chrono::sys_days{date};
    return midnight.time_since_epoch().count() + hour * 3600 + minute * 60 + second;
}

std::optional<CivilTime> ParseDateTime(std::string_view text) {
    text = Trim(text);
    if (text.find("年") != std::string_view::npos) return ParseJapanese(text);
    const std::size_t gap = text.find_first_of(" \tT");
    const std::string_view day = text.substr(0, gap);
    if (gap != std::string_view::npos && text[gap] == 'T') return ParseIso(day, text.substr(gap + 1));
    const std::optional<DateParts> date = ReadDate(day);
    if (!date) return std::nullopt;
    return OnDay(*date, gap == std::string_view::npos ? std::string_view{} : Trim(text.substr(gap)));
}

std::vector<CivilTime> DateReadings(std::string_view text) {
    text = Trim(text);
    const std::size_t gap = std::min(text.find_first_of(" \t"), text.size());
    std::vector<CivilTime> readings;
    for (const DateParts& day : DaysOf(text.substr(0, gap)))
        if (const auto moment = OnDay(day, Trim(text.substr(gap)))) readings.push_back(*moment);
    return readings;
}

std::string DateTimeText(CivilTime time) {
    return DateText(time) + " " + TimeOfDayText(time);
}

std::string DateText(CivilTime time) {
    const std::chrono::year_month_day date{std::chrono::floor<std::chrono::days>(OnCalendar(time))};
    return Joined(static_cast<int>(date.year()), 4, '/', static_cast<unsigned>(date.month()),
                  static_cast<unsigned>(date.day()));
}

std::string TimeOfDayText(CivilTime time) {
    const std::chrono::sys_seconds moment = OnCalendar(time);
    const std::chrono::hh_mm_ss ofDay{moment - std::chrono::floor<std::chrono::days>(moment)};
    return Joined(ofDay.hours().count(), 2, ':', ofDay.minutes().count(), ofDay.seconds().count());
}

std::int64_t MinuteBoundaries(CivilTime from, CivilTime to) {
    const auto minute = [](CivilTime time) {
        return std::chrono::floor<std::chrono::minutes>(std::chrono::seconds{time}).count();
    };
    return minute(to) - minute(from);
}

std::string DurationText(std::int64_t seconds) {
    // Dividing first keeps the most negative number out of the change of sign.
    const std::int64_t hours = seconds / 3600;
    const std::int64_t rest = seconds % 3600;
    const std::int64_t magnitude = rest < 0 ? -rest : rest;
    return Joined(hours < 0 ? -hours : hours, 2, ':', magnitude / 60, magnitude % 60);
}

std::string ShortDurationText(std::int64_t seconds) {
    if (seconds < 60) return std::to_string(seconds);
    const std::string rest = std::to_string(seconds % 60);
    return std::to_string(seconds / 60) + (rest.size() == 1 ? ":0" : ":") + rest;
}

}  // namespace keelview
