#include "report/track_report.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <vector>

#include "base/dates.h"
#include "racedata/track_reading.h"
#include "report/json_writer.h"

namespace keelview {

namespace {

constexpr double GapFactor = 10;    // of the median interval
constexpr double SmallestGap = 30;  // seconds

std::string_view NameOf(Refusal why) {
    switch (why) {
        case Refusal::None:
            return "";
        case Refusal::Empty:
            return "empty";
        case Refusal::Unknown:
            return "unknown";
        case Refusal::Velocitek:
            return "velocitek";
        case Refusal::Sail2:
            return "sail2";
        case Refusal::NoTimes:
            return "no_times";
        case Refusal::NoFixes:
            return "no_fixes";
        case Refusal::TooLarge:
            return "too_large";
        case Refusal::Broken:
            return "broken";
        case Refusal::Packed:
            return "packed";
        case Refusal::Missing:
            return "missing";
        case Refusal::NoRecording:
            return "no_recording";
    }
    return "";
}

std::string_view NameOf(SkipReason why) {
    switch (why) {
        case SkipReason::NoTime:
            return "no_time";
        case SkipReason::NoPlace:
            return "no_place";
        case SkipReason::NotValid:
            return "not_valid";
        case SkipReason::Broken:
            return "broken";
        case SkipReason::SameTime:
            return "same_time";
        case SkipReason::TimeBack:
            return "time_back";
        case SkipReason::OtherZone:
            return "other_zone";
        case SkipReason::TooMany:
            return "too_many";
    }
    return "";
}

/// "2004-08-05T12:30:00Z", with three decimals where they are not 0.
std::string IsoTime(UnixMs time) {
    const UnixMs milliseconds = (time % 1000 + 1000) % 1000;
    std::string text = DateTimeText((time - milliseconds) / 1000);
    std::ranges::replace(text, '/', '-');
    std::ranges::replace(text, ' ', 'T');
    if (milliseconds > 0) text += "." + std::to_string(1000 + milliseconds).substr(1);
    return text + "Z";
}

/// Seconds between fixes, where the time goes on.
std::vector<double> Intervals(const std::vector<GpsFix>& fixes) {
    std::vector<double> intervals;
    for (std::size_t i = 1; i < fixes.size(); ++i)
        if (fixes[i].Time > fixes[i - 1].Time)
            intervals.push_back(static_cast<double>(fixes[i].Time - fixes[i - 1].Time) / 1000);
    return intervals;
}

/// The middle one of some numbers, or the mean of the two in the middle. There is one at least.
double Median(std::vector<double> numbers) {
    const auto middle = numbers.begin() + static_cast<std::ptrdiff_t>(numbers.size() / 2);
    std::ranges::nth_element(numbers, middle);
    if (numbers.size() % 2 == 1) return *middle;
    return (*std::max_element(numbers.begin(), middle) + *middle) / 2;
}

void WriteIntervals(JsonWriter& json, const std::vector<GpsFix>& fixes) {
    const std::vector<double> intervals = Intervals(fixes);
    if (intervals.empty()) return;
    const double median = Median(intervals);
    const double gap = std::max(GapFactor * median, SmallestGap);
    json.Member("median_interval", median);
    json.Key("gaps");
    json.BeginObject();
    const auto count = std::ranges::count_if(intervals, [gap](double seconds) { return seconds > gap; });
    json.Member("count", static_cast<double>(count));
    if (count > 0) json.Member("longest", std::ranges::max(intervals));
    json.EndObject();
}

void WriteReading(JsonWriter& json, const TrackReading& reading) {
    if (reading.Refused != Refusal::None) json.Member("refused", NameOf(reading.Refused));
    json.Member("format", reading.Format);
    json.Member("device", reading.Device);
    json.Member("fixes", static_cast<double>(reading.Fixes.size()));
    if (!reading.Fixes.empty()) {
        const auto [first, last] = std::ranges::minmax(reading.Fixes, {}, &GpsFix::Time);
        json.Member("first_time", IsoTime(first.Time));
        json.Member("last_time", IsoTime(last.Time));
    }
    WriteIntervals(json, reading.Fixes);
    json.Key("skipped");
    json.BeginObject();
    for (const Skipped& left : reading.Left) json.Member(NameOf(left.Why), left.Count);
    json.EndObject();
}

}  // namespace

std::string TrackReport(const std::filesystem::path& tree, const RaceControl& race) {
    OneBased<BoatEntry, MaxBoats> boats = race.Boats;
    for (const AbsentBoat& absent : race.AbsentBoats) boats.Insert(absent.Number, absent.Entry);
    const OneBased<TrackReading> readings = ReadTracks(tree, boats, {});
    JsonWriter json;
    json.BeginObject();
    json.Member("race", race.RaceFileName);
    json.Key("boats");
    json.BeginArray();
    for (int boat = 1; boat <= boats.Count(); ++boat) {
        json.BeginObject();
        json.Member("number", boat);
        json.Member("name", boats[boat].BoatName);
        json.Member("file", boats[boat].BoatFile);
        json.Member("clock_offset", boats[boat].ClockOffset);
        WriteReading(json, readings[boat]);
        json.EndObject();
    }
    json.EndArray();
    json.EndObject();
    return json.Text();
}

}  // namespace keelview
