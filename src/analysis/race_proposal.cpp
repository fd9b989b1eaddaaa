#include "analysis/race_proposal.h"

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

#include "analysis/fleet.h"
#include "base/strings.h"

namespace keelview {

namespace {

using Keys = std::vector<std::string>;

std::size_t Index(int number) {
    return static_cast<std::size_t>(number) - 1;
}

bool IsThere(const FoundRace& race, const CourseKey& key) {
    const auto holds = [](const auto& list, int number) {
        return number >= 1 && number <= static_cast<int>(list.size());
    };
    if (key.IsLine) return holds(race.Lines, key.Number);
    return holds(race.Marks, key.Number) && (!key.IsGate() || holds(race.Marks, key.OtherMark));
}

/// What is left of a course entry without a mark or line; nothing where it was that.
std::optional<CourseKey> Without(CourseKey key, const CourseKey& gone) {
    if (key.IsLine != gone.IsLine) return key;
    if (key.Number == gone.Number) key.Number = std::exchange(key.OtherMark, 0);
    if (key.OtherMark == gone.Number) key.OtherMark = 0;
    if (key.Number == 0) return {};
    for (int* const number : {&key.Number, &key.OtherMark})
        if (*number > gone.Number) --*number;
    return key;
}

/// The leg, by its first entry, that a mark lengthens least; nothing without a leg.
std::optional<std::size_t> LegOf(const FoundRace& race, const Position& mark) {
    const EarthScale scale = ComputeEarthScale(mark.Lat);
    constexpr double sameMetres = 0.01;  // of two legs as good the first
    std::optional<std::size_t> leg;
    double least = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i + 1 < race.Course.size(); ++i) {
        const Position from = MiddleOf(race, ParseCourseKey(race.Course[i]));
        const Position to = MiddleOf(race, ParseCourseKey(race.Course[i + 1]));
        const double longer = MetresBetween(scale, from, mark) + MetresBetween(scale, mark, to) -
                              MetresBetween(scale, from, to);
        if (longer > least - sameMetres) continue;
        least = longer;
        leg = i;
    }
    return leg;
}

/// The course with an entry on one of its legs, each time that this is sailed.
Keys WithOnLeg(const Keys& course, std::size_t leg, const std::string& entry) {
    Keys with;
    for (std::size_t i = 0; i < course.size(); ++i) {
        with.push_back(course[i]);
        if (i + 1 < course.size() && course[i] == course[leg] && course[i + 1] == course[leg + 1])
            with.push_back(entry);
    }
    return with;
}

/// An entry as a person types it; nothing for what is none.
std::optional<CourseKey> TypedKey(std::string_view text) {
    const std::string upper = UpperAscii(text);
    const CourseKey key = ParseCourseKey(upper);
    if (key.Number == 0 || CourseKeyText(key) != upper) return {};
    return key;
}

}  // namespace

const Position& PlaceOf(const FoundRace& race, const CourseGrip& grip) {
    const std::size_t i = Index(grip.Entry.Number);
    if (!grip.Entry.IsLine) return race.Marks[i];
    return grip.SecondEnd ? race.Lines[i].second : race.Lines[i].first;
}

void MoveTo(FoundRace& race, const CourseGrip& grip, const Position& at) {
    const std::size_t i = Index(grip.Entry.Number);
    if (!grip.Entry.IsLine)
        race.Marks[i] = at;
    else
        (grip.SecondEnd ? race.Lines[i].second : race.Lines[i].first) = at;
}

std::optional<CourseGrip> GripNear(const FoundRace& race, const EarthScale& scale, const Position& at,
                                   double metres) {
    std::optional<CourseGrip> nearest;
    const auto look = [&](const CourseGrip& grip) {
        const double distance = MetresBetween(scale, PlaceOf(race, grip), at);
        if (distance > metres || (nearest && distance == metres)) return;
        metres = distance;
        nearest = grip;
    };
    for (int mark = 1; mark <= static_cast<int>(race.Marks.size()); ++mark)
        look({{.IsLine = false, .Number = mark}});
    for (int line = 1; line <= static_cast<int>(race.Lines.size()); ++line)
        for (const bool second : {false, true}) look({{.IsLine = true, .Number = line}, second});
    return nearest;
}

Position MiddleOf(const FoundRace& race, const CourseKey& entry) {
    const Position& one = PlaceOf(race, {entry});
    if (!entry.IsLine && !entry.IsGate()) return one;
    const Position& other =
        entry.IsLine ? PlaceOf(race, {entry, true}) : race.Marks[Index(entry.OtherMark)];
    return {(one.Lat + other.Lat) / 2, (one.Lon + other.Lon) / 2};
}

bool AddMark(FoundRace& race, const Position& at) {
    if (race.Marks.size() >= MaxMarks) return false;
    const std::string entry =
        CourseKeyText({.IsLine = false, .Number = static_cast<int>(race.Marks.size()) + 1});
    Keys course = race.Course;
    if (const auto leg = LegOf(race, at))
        course = WithOnLeg(course, *leg, entry);
    else
        course.push_back(entry);
    if (course.size() > MaxCourseEntries) return false;
    race.Marks.push_back(at);
    race.Course = std::move(course);
    return true;
}

bool AddLine(FoundRace& race, const Position& from, const Position& to) {
    if (race.Lines.size() >= MaxLines) return false;
    const bool isStart = race.Lines.empty();
    const std::string entry =
        CourseKeyText({.IsLine = true, .Number = static_cast<int>(race.Lines.size()) + 1});
    Keys course = race.Course;
    const bool endsAtLine = course.size() > 1 && ParseCourseKey(course.back()).IsLine;
    if (isStart)
        course.insert(course.begin(), entry);
    else if (endsAtLine)
        course.back() = entry;
    else
        course.push_back(entry);
    if (course.size() > MaxCourseEntries) return false;
    race.Lines.emplace_back(from, to);
    race.Course = std::move(course);
    return true;
}

void Remove(FoundRace& race, const CourseKey& entry) {
    const auto i = static_cast<std::ptrdiff_t>(Index(entry.Number));
    if (entry.IsLine)
        race.Lines.erase(race.Lines.begin() + i);
    else
        race.Marks.erase(race.Marks.begin() + i);
    Keys course;
    for (const std::string& each : race.Course) {
        const auto left = Without(ParseCourseKey(each), entry);
        // Nobody sails from a mark to itself.
        if (left && (course.empty() || course.back() != CourseKeyText(*left)))
            course.push_back(CourseKeyText(*left));
    }
    race.Course = std::move(course);
}

std::string CourseAsTyped(const FoundRace& race) {
    std::string text;
    for (const std::string& entry : race.Course) text += (text.empty() ? "" : " ") + entry;
    return text;
}

std::string TakeCourse(FoundRace& race, std::string_view text) {
    std::string spaced(text);
    std::ranges::replace_if(
        spaced, [](char sign) { return sign == ',' || sign == '\t'; }, ' ');
    Keys course;
    for (const std::string_view word : Split(spaced, ' ')) {
        if (word.empty()) continue;
        const auto key = TypedKey(word);
        if (!key || !IsThere(race, *key) || course.size() == MaxCourseEntries) return std::string(word);
        course.push_back(CourseKeyText(*key));
    }
    race.Course = std::move(course);
    return {};
}

int LapsOf(const FoundRace& race) {
    int laps = 0;
    for (int mark = 1; mark <= static_cast<int>(race.Marks.size()); ++mark)
        laps = std::max(laps,
                        static_cast<int>(std::ranges::count_if(race.Course, [&](const std::string& entry) {
                            return ParseCourseKey(entry).HasMark(mark);
                        })));
    return laps;
}

}  // namespace keelview
