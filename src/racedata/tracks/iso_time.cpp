#include "racedata/tracks/iso_time.h"

#include <chrono>

#include "base/strings.h"

namespace keelview {

namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Cuts the sign off the head of the text, if it stands there.
bool Cut(std::string_view& text, char sign) {
    if (!text.starts_with(sign)) return false;
    text.remove_prefix(1);
    return true;
}

/// Cuts so many digits off the head of the text; -1, and nothing cut, where others stand there.
int CutDigits(std::string_view& text, std::size_t count) {
    if (text.size() < count) return -1;
    int number = 0;
    for (const char c : text.substr(0, count)) {
        if (!IsDigit(c)) return -1;
        number = number * 10 + (c - '0');
    }
    text.remove_prefix(count);
    return number;
}

/// Cuts a date off the head: days since 1970-01-01, or nothing where there is no such day.
std::optional<std::chrono::sys_days> CutDay(std::string_view& text) {
    const int year = CutDigits(text, 4);
    if (!Cut(text, '-')) return std::nullopt;
    const int month = CutDigits(text, 2);
    if (!Cut(text, '-')) return std::nullopt;
    const int day = CutDigits(text, 2);
    if (year < 0 || month < 0 || day < 0) return std::nullopt;
    const std::chrono::year_month_day date{std::chrono::year(year),
                                           std::chrono::month(static_cast<unsigned>(month)),
                                           std::chrono::day(static_cast<unsigned>(day))};
    if (!date.ok()) return std::nullopt;
    return std::chrono::sys_days(date);
}

/// Cuts a fraction of a second off the head, with its point: to the nearest millisecond.
int CutFractionMs(std::string_view& text) {
    if (!Cut(text, '.') && !Cut(text, ',')) return 0;
    int tenths = 0;  // of a millisecond
    for (int worth = 1000; !text.empty() && IsDigit(text[0]); worth /= 10)
        tenths += worth * CutDigits(text, 1);
    return (tenths + 5) / 10;
}

/// Cuts a time of day off the head: milliseconds since midnight, or nothing where there is no such time.
std::optional<UnixMs> CutTimeOfDay(std::string_view& text) {
    const int hour = CutDigits(text, 2);
    if (!Cut(text, ':')) return std::nullopt;
    const int minute = CutDigits(text, 2);
    int second = 0, ms = 0;
    if (Cut(text, ':')) {
        second = CutDigits(text, 2);
        ms = CutFractionMs(text);
    }
    const bool sound = hour >= 0 && hour < 24 && minute >= 0 && minute < 60 && second >= 0 && second <= 60;
    if (!sound) return std::nullopt;
    return ((UnixMs{hour} * 60 + minute) * 60 + second) * 1000 + ms;
}

/// Reads the whole of what stands behind a time of day. False where it is no zone.
bool ReadZone(std::string_view text, IsoTime& time) {
    if (text.empty()) return true;
    time.HasZone = true;
    if (text == "Z" || text == "z") return true;
    const bool west = text[0] == '-';
    if (!Cut(text, '+') && !Cut(text, '-')) return false;
    const int hours = CutDigits(text, 2);
    const bool more = Cut(text, ':') || !text.empty();
    const int minutes = more ? CutDigits(text, 2) : 0;
    if (hours < 0 || hours > 14 || minutes < 0 || minutes > 59 || !text.empty()) return false;
    time.OffsetMin = (hours * 60 + minutes) * (west ? -1 : 1);
    time.Time -= UnixMs{*time.OffsetMin} * 60'000;
    return true;
}

}  // namespace

std::optional<IsoTime> ParseIsoTime(std::string_view text) {
    text = Trim(text);
    const auto day = CutDay(text);
    if (!day || (!Cut(text, 'T') && !Cut(text, 't') && !Cut(text, ' '))) return std::nullopt;
    const auto timeOfDay = CutTimeOfDay(text);
    if (!timeOfDay) return std::nullopt;
    IsoTime time;
    time.Time = UnixMs{day->time_since_epoch().count()} * 86'400'000 + *timeOfDay;
    if (!ReadZone(Trim(text), time)) return std::nullopt;
    return time;
}

}  // namespace keelview
