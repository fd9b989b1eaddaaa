#pragma once

#include <optional>
#include <vector>

#include "analysis/found_course.h"
#include "analysis/found_finish.h"
#include "analysis/found_starts.h"
#include "analysis/sailed_day.h"

namespace keelview {

/// One race as it is being worked out: what follows its start up to a moment. Boats are counted from 0
/// here.
struct RaceDraft {
    FoundStart Start;
    int End = 0;  ///< the last second that is looked at
    std::optional<double> Wind;
    bool WindTold = false;  ///< not found, but known beforehand
    std::vector<FoundMark> Marks;
    FoundCourse Course;
    FoundFinish Finish;
    double Confidence = 0.0;  ///< 0 to 1; 0 where no mark was found
};

/// Works out the race that a start begins and that is over at `end`: the wind by the tacks of its first
/// leg, else `wind`, marks, course, finish, and how sure all that is.
RaceDraft DraftRace(const SailedDay& day, const FoundStart& start, int end,
                    const std::optional<double>& wind);

}  // namespace keelview
