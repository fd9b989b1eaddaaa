#include "report/reading_members.h"

#include <algorithm>

#include "base/dates.h"

namespace keelview {

namespace {

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

}  // namespace

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

std::string IsoTime(UnixMs time) {
    const UnixMs milliseconds = (time % 1000 + 1000) % 1000;
    std::string text = DateTimeText((time - milliseconds) / 1000);
    std::ranges::replace(text, '/', '-');
    std::ranges::replace(text, ' ', 'T');
    if (milliseconds > 0) text += "." + std::to_string(1000 + milliseconds).substr(1);
    return text + "Z";
}

void WriteRhythm(JsonWriter& json, const TrackRhythm& rhythm) {
    if (!rhythm.MedianInterval) return;
    json.Member("median_interval", *rhythm.MedianInterval);
    json.Key("gaps");
    json.BeginObject();
    json.Member("count", rhythm.Gaps);
    if (rhythm.Gaps > 0) json.Member("longest", rhythm.LongestGap);
    json.EndObject();
}

void WriteSkipped(JsonWriter& json, const std::vector<Skipped>& left) {
    json.Key("skipped");
    json.BeginObject();
    for (const Skipped& each : left) json.Member(NameOf(each.Why), each.Count);
    json.EndObject();
}

}  // namespace keelview
