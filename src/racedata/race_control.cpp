#include "racedata/race_control.h"

#include <algorithm>
#include <string_view>

#include "base/strings.h"

namespace keelview {

namespace {

constexpr double MostTimeDiff = 32767;    // hours; more is no number of a file
constexpr double SpanMarginSeconds = 60;  // beyond race and pre-start

}  // namespace

std::optional<double> ParseTimeDiff(std::string_view text) {
    const auto hours = StrictNumber(text);
    if (!hours || std::fabs(*hours) > MostTimeDiff || *hours * 4 != std::floor(*hours * 4)) return {};
    return hours;
}

int BoatNumberInFile(const RaceControl& race, int boat) {
    int number = boat;
    for (const AbsentBoat& absent : race.AbsentBoats)
        if (absent.Number <= number) ++number;
    return number;
}

int BoatOfNumber(const RaceControl& race, int number) {
    int boat = number;
    for (const AbsentBoat& absent : race.AbsentBoats) {
        if (absent.Number == number) return 0;
        if (absent.Number < number) --boat;
    }
    return race.Boats.Holds(boat) ? boat : 0;
}

int ReplaySpan(const RaceControl& race) {
    return FloorToInt(race.RaceDuration + PreStartSeconds(race) + SpanMarginSeconds);
}

int DurationBetween(CivilTime start, CivilTime finish) {
    return static_cast<int>(std::clamp<CivilTime>(finish - start, 0, LongestRace));
}

CourseKey ParseCourseKey(const std::string& key) {
    const bool isLine = key.starts_with('L');
    const auto numberIn = [&](std::string_view text) {
        const std::size_t digits = isLine ? 1 : 2;
        const int number = text.size() > digits ? FloorToInt(LenientNumber(text.substr(digits))) : 0;
        const int limit = isLine ? MaxLines : MaxMarks;
        return number >= 1 && number <= limit ? number : 0;
    };
    std::string_view rest(key);
    const std::string_view first = CutHead(rest, '/');
    CourseKey entry{isLine, numberIn(first)};
    if (isLine || entry.Number == 0 || first.size() == key.size()) return entry;
    const int other = numberIn(Trim(rest));
    if (other != entry.Number) entry.OtherMark = other;
    return entry;
}

std::string CourseKeyText(const CourseKey& entry) {
    const std::string text = (entry.IsLine ? "L" : "MK") + std::to_string(entry.Number);
    return entry.IsGate() ? text + "/MK" + std::to_string(entry.OtherMark) : text;
}

}  // namespace keelview
