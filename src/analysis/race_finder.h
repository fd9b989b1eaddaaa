#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/bilingual.h"
#include "base/dates.h"
#include "base/position.h"
#include "racedata/gps_track.h"

namespace keelview {

/// A sentence in both languages, put together of texts and numbers.
struct Sentence {
    std::string English, Japanese;

    const std::string& In(bool useEnglish) const { return useEnglish ? English : Japanese; }
};

/// A race that was found in tracks. Times are seconds on the clock of the tracks.
struct FoundRace {
    int Gun = 0;
    std::optional<int> Finish;                         ///< of the last boat that finished
    std::vector<std::pair<Position, Position>> Lines;  ///< the start line first, left ends first
    std::vector<Position> Marks;                       ///< in the order of the course
    std::vector<std::string> Course;  ///< as in race files: "L1", "MK1", "MK2/MK3" for a gate
    std::optional<double> Wind;       ///< where it comes from, degrees true
    double Confidence = 0.0;          ///< 0 to 1
    std::vector<Sentence> Reasons;
    std::vector<int> Boats;  ///< that started, from 1
};

/// What was found in a day's tracks.
struct RaceFinding {
    std::vector<FoundRace> Races;   ///< in the order of time; none below a confidence of 0.3
    std::vector<Sentence> Missing;  ///< what could not be found, and why
    std::vector<int> Lying;         ///< boats, from 1, whose recorder lay still: marks
};

/// What is known beside the tracks.
struct FinderHints {
    CivilTime Clock = 0;  ///< what the clock shows at second 0 of the tracks
    std::optional<double> Wind;
    std::optional<int> Gun;
    std::optional<std::pair<Position, Position>> Line;
};

/// The least confidence with which a race is proposed.
inline constexpr double LeastConfidence = 0.3;

/// Finds the races that boats have sailed. Recordings of what lies still are taken as marks. A start
/// (FindStarts) begins a race, the next one of the same boats ends it; the wind is told by the turns of its
/// first leg, the marks by where boats turn (FindMarks), the course by the order that explains most boats'
/// roundings (FindCourse), the finish by where they stop racing (FindFinish). A start that the fleet came
/// back from without a mark was recalled.
RaceFinding FindRaces(const Tracks& tracks, const EarthScale& scale, const FinderHints& hints);

}  // namespace keelview
