#pragma once

#include <algorithm>
#include <cmath>
#include <string>

#include "analysis/race_finder.h"
#include "base/numbers.h"
#include "support/simulated_regatta.h"

namespace keelview {

inline RaceFinding Find(const SimulatedRegatta& regatta) {
    return FindRaces(regatta.Boats, regatta.Scale, FinderHints());
}

inline std::string CourseText(const FoundRace& race) {
    std::string text;
    for (const std::string& entry : race.Course) text += (text.empty() ? "" : ", ") + entry;
    return text;
}

/// Metres from a place to the nearest found mark, or to the nearest true one.
inline double ToFoundMark(const SimulatedRegatta& regatta, const FoundRace& race, Way at) {
    double nearest = 1e9;
    for (const Position& found : race.Marks)
        nearest = std::min(nearest, (regatta.Water().To(found) - at).Length());
    return nearest;
}
inline double ToTrueMark(const SimulatedRegatta& regatta, Way at) {
    double nearest = 1e9;
    for (const Way& mark : regatta.Marks) nearest = std::min(nearest, (mark - at).Length());
    return nearest;
}

/// Metres between the marks of a race and the true ones, the largest: a mark that is missing counts as one
/// too many does.
inline double LargestMarkError(const SimulatedRegatta& regatta, const FoundRace& race) {
    double largest = 0;
    for (const Position& found : race.Marks)
        largest = std::max(largest, ToTrueMark(regatta, regatta.Water().To(found)));
    for (const Way& mark : regatta.Marks) largest = std::max(largest, ToFoundMark(regatta, race, mark));
    return largest;
}

/// What a finding has missed, in words; nothing where it has found what was sailed.
inline std::string MissedOf(const SimulatedRegatta& regatta, const FoundRace& race) {
    constexpr double same = 40;  // metres, at which another mark is meant
    std::string text;
    const int gun = race.Gun - regatta.Guns.front();
    if (std::abs(gun) > 5) text += " gun " + std::to_string(gun) + " s off;";
    for (std::size_t mark = 0; mark < regatta.Marks.size(); ++mark) {
        const double off = ToFoundMark(regatta, race, regatta.Marks[mark]);
        if (off <= 15) continue;
        text += " MK" + std::to_string(mark + 1);
        text += off > same ? " missing;" : " " + std::to_string(std::lround(off)) + " m off;";
    }
    const Way upwind = Towards(regatta.Wind);
    for (std::size_t mark = 0; mark < race.Marks.size(); ++mark) {
        const Way at = regatta.Water().To(race.Marks[mark]);
        if (ToTrueMark(regatta, at) <= same) continue;
        text += " no mark at MK" + std::to_string(mark + 1) + " (" +
                std::to_string(std::lround(at.Along(upwind))) + " up, " +
                std::to_string(std::lround(at.Across(upwind))) + " right);";
    }
    if (CourseText(race) != regatta.Course)
        text += " " + CourseText(race) + " instead of " + regatta.Course;
    return text;
}

}  // namespace keelview
