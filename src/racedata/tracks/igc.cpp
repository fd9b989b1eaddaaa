#include "racedata/tracks/igc.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "base/dates.h"
#include "base/strings.h"
#include "racedata/tracks/numbers.h"

namespace keelview {
namespace {

constexpr std::size_t HeadBytes = 8192;
constexpr std::size_t ShortestFix = 24;  // of a B record, up to the letter of the longitude
constexpr std::size_t MostExtensions = 32;
constexpr UnixMs DayMs = 86'400'000;

/// What an I record places behind the fixed part of each B record.
struct Extension {
    std::string_view Code;  // three letters: "TDS"
    std::size_t Begin = 0;
    std::size_t Size = 0;
};

/// Degrees of "3517258N" with three digits of minutes behind the point, and further ones.
double Degrees(std::string_view text, std::size_t degreeDigits, std::string_view further, char positive,
               char negative) {
    const int degrees = Digits(text.substr(0, degreeDigits));
    const int thousandths = Digits(text.substr(degreeDigits, 5));
    const int last = further.empty() ? 0 : Digits(further);
    if (degrees < 0 || thousandths < 0 || thousandths >= 60'000 || last < 0) return NoNumber;
    const double minutes =
        (thousandths + last * std::pow(10.0, -static_cast<double>(further.size()))) / 1000.0;
    const double value = degrees + minutes / 60.0;
    if (text.back() == positive) return value;
    return text.back() == negative ? -value : NoNumber;
}

double Latitude(std::string_view text, std::string_view further = {}) {
    return Degrees(text, 2, further, 'N', 'S');
}

double Longitude(std::string_view text, std::string_view further = {}) {
    return Degrees(text, 3, further, 'E', 'W');
}

bool IsFix(std::string_view line) {
    return line.size() >= ShortestFix && line[0] == 'B' && Digits(line.substr(1, 6)) >= 0 &&
           !std::isnan(Latitude(line.substr(7, 8)) + Longitude(line.substr(15, 9)));
}

class IgcRecord {
  public:
    explicit IgcRecord(TrackFileContent& content)
        : content_(content), track_(content.Recordings.emplace_back()) {}

    void Read(std::string_view line) {
        if (line.empty()) return;
        switch (line[0]) {
            case 'A':
                ReadMaker(line);
                break;
            case 'B':
                ReadFix(line);
                break;
            case 'C':
                ReadTurnPoint(line);
                break;
            case 'H':
                ReadHeader(line);
                break;
            case 'I':
                ReadExtensions(line);
                break;
            default:
                break;
        }
    }

  private:
    /// "AXXX001": three letters of the maker and the number of the device, until a header names its type.
    void ReadMaker(std::string_view line) {
        if (track_.Device.empty()) track_.Device = SoundName(line.substr(1));
    }

    /// "HFDTE210625" and "HFDTEDATE:210625,01"; of the others what stands behind the colon.
    void ReadHeader(std::string_view line) {
        constexpr std::size_t codeAt = 2;
        constexpr std::size_t codeSize = 3;
        if (line.size() < codeAt + codeSize) return;
        const std::string_view code = line.substr(codeAt, codeSize);
        std::string_view value = line.substr(codeAt + codeSize);
        if (const std::size_t colon = value.find(':'); colon != std::string_view::npos)
            value.remove_prefix(colon + 1);
        value = Trim(value);
        if (code == "DTE") return ReadDate(value.substr(0, 6));
        if (value.empty()) return;
        if (code == "TZN") return ReadZone(value);
        if (code == "FTY") track_.Device = SoundName(value);
        const bool isSailNumber = code == "CID";
        if (isSailNumber || (code == "GID" && track_.Boat.empty())) track_.Boat = SoundName(value);
    }

    void ReadDate(std::string_view ddmmyy) {
        const int date = ddmmyy.size() == 6 ? Digits(ddmmyy) : -1;
        const int year = date % 100;
        const auto midnight =
            MakeCivilTime(year + (year < 80 ? 2000 : 1900), date / 100 % 100, date / 10000, 0, 0, 0);
        if (!midnight) return;
        hasDate_ = true;
        midnight_ = *midnight * 1000;
        lastOfDay_ = 0;
    }

    /// "+9", "9.5" or "09:30".
    void ReadZone(std::string_view value) {
        constexpr double farthest = 15.0;
        const double hours = TakeNumber(value);
        const double minutes = value.starts_with(':') ? WholeNumber(value.substr(1)) : 0.0;
        const double zone = hours + std::copysign(minutes / 60.0, hours);
        if (std::abs(zone) < farthest) content_.Hints.ZoneHours = zone;
    }

    /// "I023638FXA3941TDS": the number, then of each extension first and last byte, from 1, and its code.
    void ReadExtensions(std::string_view line) {
        constexpr std::size_t size = 7;
        extensions_.clear();
        for (std::size_t at = 3; at + size <= line.size() && extensions_.size() < MostExtensions;
             at += size) {
            const int first = Digits(line.substr(at, 2));
            const int last = Digits(line.substr(at + 2, 2));
            if (first < 1 || last < first) continue;
            extensions_.push_back({line.substr(at + 4, 3), static_cast<std::size_t>(first - 1),
                                   static_cast<std::size_t>(last - first + 1)});
        }
    }

    std::string_view Extended(std::string_view line, std::string_view code) const {
        const auto found = std::ranges::find(extensions_, code, &Extension::Code);
        if (found == extensions_.end() || line.size() < found->Begin + found->Size) return {};
        return line.substr(found->Begin, found->Size);
    }

    float Told(std::string_view line, std::string_view code, double unit = 1.0) const {
        const int value = Digits(Extended(line, code));
        return value < 0 ? NotTold : static_cast<float>(value * unit);
    }

    void ReadFix(std::string_view line) {
        const int clock = line.size() < ShortestFix ? -1 : Digits(line.substr(1, 6));
        const int fraction = Milliseconds(Extended(line, "TDS"));
        const int minute = clock / 100 % 100;
        if (clock < 0 || clock >= 240'000 || minute > 59 || clock % 100 > 60 || fraction < 0)
            return Skip(track_.Left, SkipReason::Broken);
        const UnixMs ofDay = (clock / 10000 * 3600 + minute * 60 + clock % 100) * UnixMs{1000} + fraction;
        if (!hasDate_) return Skip(track_.Left, SkipReason::NoTime);
        if (ofDay < lastOfDay_ - DayMs / 2) midnight_ += DayMs;
        lastOfDay_ = ofDay;
        constexpr double knot = 1.852;  // km/h
        AddFix(track_, {.Time = midnight_ + ofDay,
                        .Lat = Latitude(line.substr(7, 8), Extended(line, "LAD")),
                        .Lon = Longitude(line.substr(15, 9), Extended(line, "LOD")),
                        .Speed = Told(line, "GSP", 1.0 / knot),
                        .Course = Told(line, "TRT"),
                        .Heading = Told(line, "HDT"),
                        .Accuracy = Told(line, "FXA")});
    }

    /// "C3517258N13928768EName". The line that declares the task has no place, take-off is often at 0, 0.
    void ReadTurnPoint(std::string_view line) {
        constexpr std::size_t nameAt = 18;
        if (line.size() <= nameAt) return;
        AddMark(content_.Hints, {std::string(Trim(line.substr(nameAt))), Latitude(line.substr(1, 8)),
                                 Longitude(line.substr(9, 9))});
    }

    TrackFileContent& content_;
    Recording& track_;
    std::vector<Extension> extensions_;
    bool hasDate_ = false;
    UnixMs midnight_ = 0;  // of the day that the record is at
    UnixMs lastOfDay_ = 0;
};

}  // namespace

bool LooksLikeIgc(std::string_view bytes) {
    bytes = bytes.substr(0, HeadBytes);
    while (!bytes.empty()) {
        const std::string_view line = CutLine(bytes);
        if (line.starts_with("HFDTE") || IsFix(line)) return true;
    }
    return false;
}

TrackFileContent ReadIgc(std::string_view bytes) {
    TrackFileContent content;
    IgcRecord record(content);
    while (!bytes.empty()) record.Read(CutLine(bytes));
    return content;
}

}  // namespace keelview
