#include "racedata/tracks/written_fixes.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "base/angles.h"
#include "base/numbers.h"

namespace keelview {

namespace {

bool Follows(const Recording& later, const Recording& earlier) {
    return later.Boat == earlier.Boat && later.Device == earlier.Device &&
           later.Fixes.front().Time > earlier.Fixes.back().Time;
}

void Append(const Recording& piece, Recording& whole) {
    whole.Fixes.insert(whole.Fixes.end(), piece.Fixes.begin(), piece.Fixes.end());
    for (const Skipped& left : piece.Left) Skip(whole.Left, left.Why, left.Count);
}

/// Joins what one device recorded in pieces: they bear one name, and one begins after the other ends. Boats
/// of one race were out at the same time.
std::vector<Recording> Joined(std::vector<Recording> pieces) {
    std::vector<Recording> whole;
    for (Recording& piece : pieces) {
        if (piece.Fixes.empty()) continue;
        if (!whole.empty() && Follows(piece, whole.back()))
            Append(piece, whole.back());
        else
            whole.push_back(std::move(piece));
    }
    return whole;
}

}  // namespace

float KnotsOfMetres(std::string_view metresPerSecond) {
    constexpr double fastest = 1000;  // no boat; it keeps what is left within a float
    const double speed = StrictNumber(metresPerSecond).value_or(-1);
    const bool told = speed >= 0 && speed <= fastest;
    return told ? static_cast<float>(speed * KnotsPerMetreSecond) : NotTold;
}

float DirectionOf(std::string_view degrees) {
    const double direction = StrictNumber(degrees).value_or(-1);
    const bool told = direction >= 0 && direction <= 360;
    return told ? static_cast<float>(WrapDirection(direction)) : NotTold;
}

double DegreesOf(std::string_view degrees) {
    return StrictNumber(degrees).value_or(std::numeric_limits<double>::quiet_NaN());
}

void WrittenFixes::NameFile(std::string_view boat, std::string_view device) {
    blank_.Boat = SoundName(boat);
    blank_.Device = SoundName(device);
}

void WrittenFixes::Begin(std::string_view boat, std::string_view device) {
    auto& recordings = content_.Recordings;
    if (!recordings.empty() && recordings.back().Fixes.empty())
        recordings.pop_back();  // it would be left out
    if (!recordings.empty()) recordings.back().Fixes.shrink_to_fit();
    Recording& recording = recordings.emplace_back(blank_);
    if (!boat.empty()) recording.Boat = SoundName(boat);
    if (!device.empty()) recording.Device = SoundName(device);
}

Recording& WrittenFixes::Current() {
    if (content_.Recordings.empty()) Begin({});
    Recording& current = content_.Recordings.back();
    if (current.Fixes.capacity() == 0) current.Fixes.reserve(room_);
    return current;
}

void WrittenFixes::Add(std::string_view time, const RecordedFix& fix) {
    if (time.empty()) return Leave(SkipReason::NoTime);
    const std::optional<IsoTime> at = ParseIsoTime(time);
    if (!at) return Leave(SkipReason::Broken);
    Add(*at, fix);
}

void WrittenFixes::Add(const IsoTime& time, RecordedFix fix) {
    NoteZone(time);
    if (zones_ && !time.HasZone) return Leave(SkipReason::OtherZone);
    fix.Time = time.Time;
    AddFix(Current(), fix);
}

void WrittenFixes::NoteZone(const IsoTime& time) {
    const int offset = time.OffsetMin.value_or(0);
    if (offset != 0)
        content_.Hints.ZoneHours = offset / 60.0;  // programs write +00:00 for UTC, wherever they are
    if (!time.HasZone || zones_) return;
    zones_ = true;
    for (Recording& recording : content_.Recordings) {  // so far all were without
        if (recording.Fixes.empty()) continue;
        Skip(recording.Left, SkipReason::OtherZone, static_cast<int>(recording.Fixes.size()));
        recording.Fixes.clear();
    }
}

void WrittenFixes::AddMark(std::string_view name, double lat, double lon) {
    const bool onGlobe = lat >= -90 && lat <= 90 && lon >= -180 && lon <= 180;
    if (!onGlobe) return Leave(SkipReason::NoPlace);
    keelview::AddMark(content_.Hints, {std::string(name), lat, lon});
}

void WrittenFixes::Leave(SkipReason why, int count) {
    if (why == SkipReason::NoTime) places_ = true;
    Skip(Current().Left, why, count);
}

TrackFileContent WrittenFixes::Take() {
    content_.Recordings = Joined(std::move(content_.Recordings));
    if (places_ && content_.Recordings.empty()) content_.Refused = Refusal::NoTimes;
    return std::move(content_);
}

}  // namespace keelview
