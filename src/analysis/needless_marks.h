#pragma once

#include <optional>
#include <vector>

#include "analysis/found_course.h"

namespace keelview {

/// How boats sail to the wind.
struct WindAngles {
    double From = 0.0;   ///< degrees, where the wind comes from
    double Beat = 45.0;  ///< degrees off it, on a beat
    double Run = 150.0;  ///< and on a run

    /// The length of the shortest way that boats can sail: by tacks where it leads closer to the wind than
    /// they can sail, by gybes where it leads farther off it than they like.
    double Length(Way way) const;
};

/// The angles of boats as their tacks and gybes tell them, each half of the middle turn; usual ones where
/// there are too few.
WindAngles AnglesOf(const std::vector<Corner>& corners, double wind);

/// A course as it lies on the water.
struct LaidCourse {
    const std::vector<FoundMark>& Marks;
    const FoundCourse& Course;
    std::vector<const WayBySecond*> Fleet;  ///< the boats that Course.Times are of
    std::vector<Way> Points;  ///< the start, each place of the course, the finish if it has one
    std::optional<WindAngles> Angles;
};

/// The share of the boats that came to an entry of the course, or past it, that have left its mark, or one
/// of its gate, as boats leave marks: on its side, and close.
double RoundedAt(const LaidCourse& laid, std::size_t entry);

/// Marks that the course does not need, the last first, no two of them one behind the other in it. Such are
/// a place for which boats hardly leave the straight way between its neighbours while most of them do not
/// change to another angle off the wind; and a place in the midst of a beat or a run, where boats may tack
/// or gybe as they like: a course that goes round the same marks again has been laid to the wind and has no
/// mark there, and in any other course all boats must pass a mark as closely as boats do. Of two neighbours
/// the one goes first that fewer boats pass so.
std::vector<std::size_t> NeedlessMarks(const LaidCourse& laid);

}  // namespace keelview
