#include "racedata/tracks/own_lines.h"

#include <array>
#include <cmath>
#include <utility>

#include "base/numbers.h"
#include "base/position.h"
#include "base/strings.h"

namespace keelview {
namespace {

/// A file that holds no fix so far down is of another kind.
constexpr std::size_t HeadBytes = 16384;

/// A fix needs a sixth field, whatever it holds.
constexpr std::size_t FieldsOfFix = 6;
using Fields = std::array<std::string_view, FieldsOfFix>;

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

/// Takes the first six fields of a line, separated by runs of blanks. False if there are fewer.
bool SplitFix(std::string_view line, Fields& fields) {
    std::size_t at = 0;
    for (std::string_view& field : fields) {
        while (at < line.size() && IsBlank(line[at])) ++at;
        const std::size_t begin = at;
        while (at < line.size() && !IsBlank(line[at])) ++at;
        if (at == begin) return false;
        field = line.substr(begin, at - begin);
    }
    return true;
}

/// Takes a number of one or two digits off the head of the text; -1 if there is none.
int TakeTwoDigits(std::string_view& text) {
    int value = -1;
    for (int digit = 0; digit < 2 && !text.empty() && text[0] >= '0' && text[0] <= '9'; ++digit) {
        value = (value < 0 ? 0 : value * 10) + (text[0] - '0');
        text.remove_prefix(1);
    }
    return value;
}

bool TakeColon(std::string_view& text) {
    if (!text.starts_with(':')) return false;
    text.remove_prefix(1);
    return true;
}

/// Milliseconds of what follows the point of a second, to three digits.
int Milliseconds(std::string_view decimals) {
    int value = 0;
    for (int unit = 100; unit > 0 && !decimals.empty() && decimals[0] >= '0' && decimals[0] <= '9';
         unit /= 10) {
        value += unit * (decimals[0] - '0');
        decimals.remove_prefix(1);
    }
    return value;
}

/// Milliseconds since midnight of "01:23:45.678", "01:23:45" or "01:23".
std::optional<int> TimeOfDay(std::string_view text) {
    const int hour = TakeTwoDigits(text);
    if (hour < 0 || hour > 23 || !TakeColon(text)) return std::nullopt;
    const int minute = TakeTwoDigits(text);
    if (minute < 0 || minute > 59) return std::nullopt;
    int second = 0;
    if (!text.empty()) {
        if (!TakeColon(text)) return std::nullopt;
        second = TakeTwoDigits(text);
        if (second < 0 || second > 59) return std::nullopt;
    }
    if (!text.empty() && text[0] != '.') return std::nullopt;
    const int whole = hour * 3600 + minute * 60 + second;
    return whole * 1000 + (text.empty() ? 0 : Milliseconds(text.substr(1)));
}

/// A date of the form day, month, two digits of the year. The order is the same on every system.
std::optional<CivilTime> DayFirstDate(std::string_view text, char separator) {
    const int day = TakeTwoDigits(text);
    if (!text.starts_with(separator)) return std::nullopt;
    text.remove_prefix(1);
    const int month = TakeTwoDigits(text);
    if (!text.starts_with(separator)) return std::nullopt;
    text.remove_prefix(1);
    const int year = TakeTwoDigits(text);
    if (year < 0 || !text.empty()) return std::nullopt;
    return MakeCivilTime(year + (year < 80 ? 2000 : 1900), month, day, 0, 0, 0);
}

/// False for a value that is no number, too: the packed forms of a huge number make one.
bool IsSomewhere(double minutes) {
    return std::fabs(minutes) <= FarthestMinutes;
}

char DateSeparator(std::string_view date) {
    return date.find('-') != std::string_view::npos ? '-' : '/';
}

/// True if a part of the date is too long for a day or a year of two digits.
bool HasLongYear(std::string_view date) {
    const char separator = DateSeparator(date);
    const std::string_view first = CutHead(date, separator);
    CutHead(date, separator);
    return first.size() > 3 || CutHead(date, separator).size() > 3;
}

}  // namespace

std::optional<TrackFix> TrackLineReader::Read(std::string_view line) {
    if (line.starts_with('T')) return ReadFix(line);
    if (line.starts_with('U')) ReadUnit(line);
    return std::nullopt;
}

std::optional<TrackFix> TrackLineReader::ReadFix(std::string_view line) {
    Fields fields;
    if (!SplitFix(line, fields)) return std::nullopt;
    const std::optional<int> timeOfDay = TimeOfDay(fields[4]);
    if (!timeOfDay) return std::nullopt;
    const std::optional<CivilTime>& day = Day(fields[3]);
    if (!day) return std::nullopt;
    const TrackFix fix{Coordinate(fields[1]), Coordinate(fields[2]), *day * 1000 + *timeOfDay};
    if (!IsSomewhere(fix.Lat) || !IsSomewhere(fix.Lon)) return std::nullopt;
    return fix;
}

void TrackLineReader::ReadUnit(std::string_view line) {
    const std::string upper = UpperAscii(line);
    if (upper.find("DEG") != std::string::npos) {
        unit_ = Unit::Degrees;
    } else if (upper.find("DMS") != std::string::npos) {
        unit_ = Unit::DegreesMinutesSeconds;
    } else {
        unit_ = Unit::DegreesMinutes;
    }
}

/// Minutes of arc of a field such as "N3537.6", "w7012.5", "-7012.5". Without a mark: positive.
double TrackLineReader::Coordinate(std::string_view field) const {
    constexpr std::string_view marks = "NnEe+SsWw-";
    const std::size_t mark = marks.find(field[0]);
    if (mark != std::string_view::npos) field.remove_prefix(1);
    const double sign = mark != std::string_view::npos && mark >= marks.find('S') ? -1.0 : 1.0;
    const double number = LenientNumber(field);
    if (unit_ == Unit::Degrees) return sign * number * 60.0;
    if (unit_ == Unit::DegreesMinutes) {
        const double degrees = std::floor(number / 100.0);
        return sign * (degrees * 60.0 + (number - degrees * 100.0));
    }
    const double degrees = std::floor(number / 10000.0);
    const double minutes = std::floor((number - degrees * 10000.0) / 100.0);
    const double seconds = number - degrees * 10000.0 - minutes * 100.0;
    return sign * (degrees * 60.0 + minutes + seconds / 60.0);
}

/// Midnight of a date field. Read once for all the lines of a day.
const std::optional<CivilTime>& TrackLineReader::Day(std::string_view field) {
    if (field == dateField_) return day_;
    dateField_ = field;
    DateForm form = dateForm_;
    if (form == DateForm::Unknown) form = HasLongYear(field) ? DateForm::YearFirst : DateForm::DayFirst;
    day_ = form == DateForm::YearFirst ? ParseDateTime(field) : DayFirstDate(field, DateSeparator(field));
    if (day_) dateForm_ = form;
    return day_;
}

bool LooksLikeOwnLines(std::string_view bytes) {
    bytes = bytes.substr(0, HeadBytes);
    TrackLineReader reader;
    while (!bytes.empty())
        if (reader.Read(CutHead(bytes, '\n'))) return true;
    return false;
}

TrackFileContent ReadOwnLines(std::string_view bytes) {
    constexpr double minutesPerDegree = 60.0;
    TrackLineReader reader;
    Recording recording;
    while (!bytes.empty()) {
        const std::string_view line = CutHead(bytes, '\n');
        const std::optional<TrackFix> fix = reader.Read(line);
        if (!fix) {
            if (line.starts_with("T ")) Skip(recording.Left, SkipReason::Broken);
        } else {
            AddFix(recording, {.Time = fix->Time,
                               .Lat = fix->Lat / minutesPerDegree,
                               .Lon = fix->Lon / minutesPerDegree});
        }
    }
    TrackFileContent content;
    content.Recordings.push_back(std::move(recording));
    return content;
}

}  // namespace keelview
