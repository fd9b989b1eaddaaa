#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "analysis/race_finder.h"
#include "racedata/race_control.h"

namespace keelview {

// What a person corrects in a race that was found before it is taken. Marks and lines count from 1, as the
// course names them.

/// What can be taken hold of: a mark, or one end of a line.
struct CourseGrip {
    CourseKey Entry;
    bool SecondEnd = false;  ///< of a line
};

/// Where it lies; it must be there.
const Position& PlaceOf(const FoundRace& race, const CourseGrip& grip);
void MoveTo(FoundRace& race, const CourseGrip& grip, const Position& at);

/// The nearest thing to take hold of within so many metres; nothing where there is none. Marks go before
/// line ends at one place.
std::optional<CourseGrip> GripNear(const FoundRace& race, const EarthScale& scale, const Position& at,
                                   double metres);

/// The middle of an entry: a mark, or the middle of a line or a gate.
Position MiddleOf(const FoundRace& race, const CourseKey& entry);

/// Adds a mark behind the others, and to the course on that leg which it lengthens least, each time that
/// the leg is sailed. False, and nothing changed, where a race holds no more.
bool AddMark(FoundRace& race, const Position& at);

/// Adds a line behind the others: that of the start where there was none, else that of the finish. False,
/// and nothing changed, where a race holds no more.
bool AddLine(FoundRace& race, const Position& from, const Position& to);

/// Takes a mark or a line away, out of the course too, where a gate becomes its other mark. The numbers of
/// those behind it fall by one.
void Remove(FoundRace& race, const CourseKey& entry);

/// "L1 MK1 MK2/MK3 L1".
std::string CourseAsTyped(const FoundRace& race);

/// Takes a course in that form, commas as good as blanks, letters of any case. Returns the first entry that
/// names nothing of the race or stands beyond the longest course; nothing is changed then. Empty: taken.
std::string TakeCourse(FoundRace& race, std::string_view text);

/// How often the mark that is met most stands in the course.
int LapsOf(const FoundRace& race);

}  // namespace keelview
