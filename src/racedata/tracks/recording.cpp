#include "racedata/tracks/recording.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>

#include "base/position.h"
#include "base/strings.h"
#include "base/text_encoding.h"

namespace keelview {
namespace {

/// A place on the globe, and not the one that receivers write when they know none. False for no number.
bool IsPlace(double lat, double lon) {
    return std::abs(lat) <= 90.0 && std::abs(lon) <= 180.0 && !IsNoPlace(lat, lon);
}

/// Which fixes make up the longest chain of ascending times.
std::vector<bool> LongestAscending(const std::vector<RecordedFix>& fixes) {
    constexpr std::uint32_t none = std::numeric_limits<std::uint32_t>::max();
    std::vector<std::uint32_t> ends;  // of the chains of 1, 2, 3 ... fixes, the one that ends soonest
    std::vector<std::uint32_t> before(fixes.size(), none);
    std::uint32_t last = none;  // of the chains that are longest, the first in the file
    const auto timeOf = [&fixes](std::uint32_t fix) { return fixes[fix].Time; };
    for (std::uint32_t fix = 0; fix < fixes.size(); ++fix) {
        const auto place = std::ranges::lower_bound(ends, timeOf(fix), {}, timeOf);
        if (place != ends.begin()) before[fix] = *(place - 1);
        if (place == ends.end())
            ends.push_back(last = fix);
        else if (timeOf(*place) != timeOf(fix))
            *place = fix;
    }
    std::vector<bool> kept(fixes.size());
    for (; last != none; last = before[last]) kept[last] = true;
    return kept;
}

bool IsInsideCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

float SoundDirection(float degrees) {
    if (!(std::abs(degrees) <= 720.0F)) return NotTold;
    const float direction = degrees - 360.0F * std::floor(degrees / 360.0F);
    return direction >= 0.0F && direction < 360.0F ? direction : 0.0F;  // rounding may end just beside
}

}  // namespace

std::string SoundName(std::string_view text) {
    constexpr std::size_t longest = 200;
    std::string name = IsValidUtf8(text) ? std::string(text) : DecodeText(text).Utf8;
    std::size_t end = std::min(name.size(), longest);
    while (end > 0 && end < name.size() && IsInsideCharacter(name[end])) --end;
    name.resize(end);
    for (char& sign : name)
        if (static_cast<unsigned char>(sign) < ' ') sign = ' ';
    return std::string(Trim(name));
}

void Skip(std::vector<Skipped>& skipped, SkipReason why, int count) {
    const auto found = std::ranges::find(skipped, why, &Skipped::Why);
    if (found == skipped.end())
        skipped.push_back({why, count});
    else
        found->Count += count;
}

void AddFix(Recording& recording, const RecordedFix& fix) {
    if (!IsPlace(fix.Lat, fix.Lon)) return Skip(recording.Left, SkipReason::NoPlace);
    if (recording.Fixes.size() >= MostFixes) return Skip(recording.Left, SkipReason::TooMany);
    if (!recording.Fixes.empty() && fix.Time == recording.Fixes.back().Time)
        return Skip(recording.Left, SkipReason::SameTime);
    RecordedFix& added = recording.Fixes.emplace_back(fix);
    for (float* const direction : {&added.Course, &added.Heading, &added.WindFrom})
        *direction = SoundDirection(*direction);
}

void KeepOrderOfTime(Recording& recording) {
    std::vector<RecordedFix>& fixes = recording.Fixes;
    if (std::ranges::is_sorted(fixes, std::ranges::less_equal(), &RecordedFix::Time)) return;
    const std::vector<bool> kept = LongestAscending(fixes);
    std::optional<UnixMs> last;
    std::size_t count = 0;
    for (std::size_t i = 0; i < fixes.size(); ++i) {
        if (kept[i])
            last = fixes[i].Time, fixes[count++] = fixes[i];
        else
            Skip(recording.Left, last == fixes[i].Time ? SkipReason::SameTime : SkipReason::TimeBack);
    }
    fixes.resize(count);
}

void AddMark(RaceHints& hints, NamedPlace mark) {
    mark.Name = SoundName(mark.Name);
    if (mark.Name.empty() || !IsPlace(mark.Lat, mark.Lon) || hints.Marks.size() >= MostMarks) return;
    hints.Marks.push_back(std::move(mark));
}

}  // namespace keelview
