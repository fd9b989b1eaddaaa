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

namespace {

/// The gate of two entries of a course; nothing where they are not two marks.
std::optional<CourseKey> GateOf(const CourseKey& first, const CourseKey& second) {
    for (const CourseKey& key : {first, second})
        if (key.IsLine || key.IsGate() || key.Number == 0) return {};
    if (first.Number == second.Number) return {};
    return CourseKey{.IsLine = false, .Number = first.Number, .OtherMark = second.Number};
}

/// Moves what was set by hand for the entries behind one by so many places.
void MoveHandPasses(RaceControl& race, int behind, int places) {
    for (HandPass& pass : race.HandPasses)
        if (pass.Entry > behind) pass.Entry += places;
}

}  // namespace

bool ToggleGate(RaceControl& race, int entry) {
    auto& course = race.CourseOrder;
    const CourseKey key = ParseCourseKey(course[entry]);
    if (key.IsGate()) {
        if (course.IsFull()) return false;
        course[entry] = CourseKeyText({.IsLine = false, .Number = key.Number});
        course.Insert(entry + 1, CourseKeyText({.IsLine = false, .Number = key.OtherMark}));
        MoveHandPasses(race, entry, 1);
        return true;
    }
    if (entry == 1) return false;
    const auto gate = GateOf(ParseCourseKey(course[entry - 1]), key);
    if (!gate) return false;
    course[entry - 1] = CourseKeyText(*gate);
    course.Erase(entry);
    for (int i = race.HandPasses.Count(); i >= 1; --i)
        if (race.HandPasses[i].Entry == entry) race.HandPasses.Erase(i);
    MoveHandPasses(race, entry, -1);
    return true;
}

}  // namespace keelview
