#include "racedata/tracks/nmea.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string>
#include <utility>

#include "base/dates.h"
#include "base/strings.h"
#include "racedata/tracks/nmea_sentence.h"
#include "racedata/tracks/numbers.h"
#include "racedata/tracks/relative_wind.h"

namespace keelview {
namespace {

constexpr std::size_t HeadBytes = 8192;  // a file that holds no sentence so far down is of another kind
constexpr UnixMs DayMs = 86'400'000;

/// Milliseconds since midnight of "032300.25"; nothing if it is no time of day.
std::optional<UnixMs> TimeOfDay(std::string_view text) {
    constexpr std::size_t whole = 6;
    const int clock = Digits(text.substr(0, whole));
    const int fraction =
        text.size() > whole && text[whole] == '.' ? Milliseconds(text.substr(whole + 1)) : 0;
    const int hour = clock / 10000;
    const int minute = clock / 100 % 100;
    const int second = clock % 100;  // 60 in a leap second
    if (text.size() < whole || clock < 0 || fraction < 0 || hour > 23 || minute > 59 || second > 60)
        return std::nullopt;
    return (hour * 3600 + minute * 60 + second) * UnixMs{1000} + fraction;
}

/// Midnight of a date.
std::optional<UnixMs> Midnight(int year, int month, int day) {
    const std::optional<CivilTime> seconds = MakeCivilTime(year, month, day, 0, 0, 0);
    return seconds ? std::optional(*seconds * 1000) : std::nullopt;
}

/// Degrees of a field such as "3517.25" with its side of the globe in the next.
double Degrees(const NmeaSentence& sentence, std::size_t field, char positive, char negative) {
    const double value = FromDegreesMinutes(sentence.Number(field));
    if (sentence.Says(field + 1, positive)) return value;
    return sentence.Says(field + 1, negative) ? -value : NoNumber;
}

double Latitude(const NmeaSentence& sentence, std::size_t field) {
    return Degrees(sentence, field, 'N', 'S');
}

double Longitude(const NmeaSentence& sentence, std::size_t field) {
    return Degrees(sentence, field, 'E', 'W');
}

/// An angle whose side stands in the next field, as of a variation; NoNumber without one.
double Sided(const NmeaSentence& sentence, std::size_t field, char positive) {
    const double value = sentence.Number(field);
    return sentence.Says(field + 1, positive) ? value : -value;
}

/// A speed in knots, as its unit in the next field has it.
double Knots(const NmeaSentence& sentence, std::size_t field) {
    constexpr double kmh = 1.852;  // of a knot
    const double value = sentence.Number(field);
    if (sentence.Says(field + 1, 'N')) return value;
    if (sentence.Says(field + 1, 'M')) return value * 3.6 / kmh;
    return sentence.Says(field + 1, 'K') ? value / kmh : NoNumber;
}

/// Sets what a sentence tells; where it tells nothing, what another has told stays.
void Tell(float& value, double told) {
    if (!std::isnan(told)) value = Told(told);
}

/// Puts the sentences of a log together into fixes.
class NmeaLog {
  public:
    explicit NmeaLog(TrackFileContent& content)
        : content_(content), track_(content.Recordings.emplace_back()) {}

    void Take(const NmeaSentence& sentence) {
        using Routine = void (NmeaLog::*)(const NmeaSentence&);
        struct Row {
            std::string_view Kind;
            Routine Read;
        };
        static constexpr std::array<Row, 13> rows{{
            {"RMC", &NmeaLog::ReadRmc},
            {"GGA", &NmeaLog::ReadGga},
            {"GLL", &NmeaLog::ReadGll},
            {"VTG", &NmeaLog::ReadVtg},
            {"HDG", &NmeaLog::ReadHdg},
            {"HDM", &NmeaLog::ReadHdm},
            {"HDT", &NmeaLog::ReadHdt},
            {"VHW", &NmeaLog::ReadVhw},
            {"MWV", &NmeaLog::ReadMwv},
            {"MWD", &NmeaLog::ReadMwd},
            {"VWR", &NmeaLog::ReadVwr},
            {"ZDA", &NmeaLog::ReadZda},
            {"WPL", &NmeaLog::ReadWpl},
        }};
        const auto row = std::ranges::find(rows, sentence.Kind, &Row::Kind);
        if (row != rows.end()) (this->*row->Read)(sentence);
    }

    void Broken() { Skip(track_.Left, SkipReason::Broken); }

    /// Adds the fix that is open, as another time begins or the log ends.
    void Close() {
        if (!time_) return;
        if (invalid_) {
            Skip(track_.Left, SkipReason::NotValid);
        } else if (!midnight_) {
            Skip(track_.Left, SkipReason::NoTime);
        } else {
            WorkOutWind(fix_, wind_);
            fix_.Time = *midnight_ + *time_;
            AddFix(track_, fix_);
        }
    }

  private:
    /// The fix of a time of day: the open one, or a new one. False for a text that is no time, as receivers
    /// write none before they know it.
    bool Open(std::string_view timeField) {
        const std::optional<UnixMs> time = TimeOfDay(timeField);
        if (!time) {
            Skip(track_.Left, timeField.empty() ? SkipReason::NotValid : SkipReason::Broken);
            return false;
        }
        if (time == time_) return true;
        Close();
        if (midnight_ && time_ && *time < *time_ - DayMs / 2) *midnight_ += DayMs;
        time_ = time;
        invalid_ = false;
        fix_ = {.Lat = NoNumber, .Lon = NoNumber};
        wind_ = {};
        return true;
    }

    /// The first place of a time holds: a second receiver on board would make the track jump to and fro.
    void Place(const NmeaSentence& sentence, std::size_t field) {
        if (!std::isnan(fix_.Lat)) return;
        fix_.Lat = Latitude(sentence, field);
        fix_.Lon = Longitude(sentence, field + 2);
    }

    void ReadRmc(const NmeaSentence& sentence) {
        if (!Open(sentence.Field(1))) return;
        ReadDate(sentence.Field(9));
        if (!sentence.Says(2, 'A')) invalid_ = true;
        Place(sentence, 3);
        Tell(fix_.Speed, sentence.Number(7));
        Tell(fix_.Course, sentence.Number(8));
        if (!sentence.Field(10).empty()) variation_ = Sided(sentence, 10, 'E');
    }

    void ReadGga(const NmeaSentence& sentence) {
        if (!Open(sentence.Field(1))) return;
        if (sentence.Says(6, '0')) invalid_ = true;
        Place(sentence, 2);
    }

    void ReadGll(const NmeaSentence& sentence) {
        if (!Open(sentence.Field(5))) return;
        if (sentence.Says(6, 'V')) invalid_ = true;
        Place(sentence, 1);
    }

    void ReadVtg(const NmeaSentence& sentence) {
        if (sentence.Says(2, 'T')) Tell(fix_.Course, sentence.Number(1));
        if (sentence.Says(6, 'N')) Tell(fix_.Speed, sentence.Number(5));
    }

    void ReadHdg(const NmeaSentence& sentence) {
        if (!sentence.Field(4).empty()) variation_ = Sided(sentence, 4, 'E');
        const double deviation = sentence.Field(2).empty() ? 0.0 : Sided(sentence, 2, 'E');
        TakeMagnetic(sentence.Number(1) + deviation);
    }

    void ReadHdm(const NmeaSentence& sentence) { TakeMagnetic(sentence.Number(1)); }

    void ReadHdt(const NmeaSentence& sentence) { Tell(fix_.Heading, sentence.Number(1)); }

    /// A magnetic heading tells a true one where the log has told the variation.
    void TakeMagnetic(double heading) {
        if (std::isnan(fix_.Heading)) Tell(fix_.Heading, std::fmod(heading + variation_ + 360.0, 360.0));
    }

    void ReadVhw(const NmeaSentence& sentence) {
        Tell(fix_.Heading, sentence.Number(1));
        Tell(fix_.WaterSpeed, Knots(sentence, 5));
    }

    void ReadMwv(const NmeaSentence& sentence) {
        if (!sentence.Says(5, 'A')) return;
        const bool isTrue = sentence.Says(2, 'T');
        Tell(isTrue ? wind_.TrueAngle : wind_.ApparentAngle, sentence.Number(1));
        Tell(isTrue ? fix_.WindSpeed : wind_.ApparentSpeed, Knots(sentence, 3));
    }

    void ReadMwd(const NmeaSentence& sentence) {
        Tell(fix_.WindFrom, sentence.Number(1));
        Tell(fix_.WindSpeed, Knots(sentence, 5));
    }

    void ReadVwr(const NmeaSentence& sentence) {
        Tell(wind_.ApparentAngle, Sided(sentence, 1, 'R'));
        Tell(wind_.ApparentSpeed, Knots(sentence, 3));
    }

    /// The midnight of "ddmmyy".
    void ReadDate(std::string_view field) {
        if (field != dateField_) {  // once a day
            const int date = field.size() == 6 ? Digits(field) : -1;
            const int year = date % 100;
            dateField_ = field;
            dateMidnight_ = Midnight(year + (year < 80 ? 2000 : 1900), date / 100 % 100, date / 10000);
        }
        if (dateMidnight_) midnight_ = dateMidnight_;
    }

    /// A date of its own. A time later than that of the open fix means that this has ended.
    void ReadZda(const NmeaSentence& sentence) {
        const std::optional<UnixMs> time = TimeOfDay(sentence.Field(1));
        const auto midnight =
            Midnight(Digits(sentence.Field(4)), Digits(sentence.Field(3)), Digits(sentence.Field(2)));
        if (!time || !midnight) return;
        if (time_ && time != time_) {
            Close();
            time_.reset();
        }
        midnight_ = midnight;
    }

    void ReadWpl(const NmeaSentence& sentence) {
        AddMark(content_.Hints,
                {std::string(sentence.Field(5)), Latitude(sentence, 1), Longitude(sentence, 3)});
    }

    TrackFileContent& content_;
    Recording& track_;
    std::optional<UnixMs> midnight_;      // of the day that the log is at
    std::string_view dateField_;          // the last date of an RMC
    std::optional<UnixMs> dateMidnight_;  // its midnight
    std::optional<UnixMs> time_;          // time of day of the open fix
    bool invalid_ = false;                // as any of its sentences says
    RecordedFix fix_;
    RelativeWind wind_;
    double variation_ = NoNumber;  // degrees, east positive
};

}  // namespace

bool LooksLikeNmea(std::string_view bytes) {
    bytes = bytes.substr(0, HeadBytes);
    NmeaSentence sentence;
    while (!bytes.empty()) {
        const std::string_view line = CutHead(bytes, '\n');
        if (ReadNmeaLine(line, sentence) != NmeaLine::Sentence) continue;
        const bool hasChecksum = line.rfind('*') != std::string_view::npos;
        constexpr std::array<std::string_view, 3> places{"RMC", "GGA", "GLL"};
        if (hasChecksum || std::ranges::find(places, sentence.Kind) != places.end()) return true;
    }
    return false;
}

TrackFileContent ReadNmea(std::string_view bytes) {
    TrackFileContent content;
    NmeaLog log(content);
    NmeaSentence sentence;
    while (!bytes.empty()) {
        switch (ReadNmeaLine(CutHead(bytes, '\n'), sentence)) {
            case NmeaLine::Sentence:
                log.Take(sentence);
                break;
            case NmeaLine::Broken:
                log.Broken();
                break;
            case NmeaLine::Nothing:
                break;
        }
    }
    log.Close();
    return content;
}

}  // namespace keelview
