#pragma once

#include <optional>

#include "analysis/circle_scan.h"
#include "analysis/course_on_water.h"
#include "base/one_based.h"
#include "racedata/gps_track.h"

namespace keelview {

/// A moment at which a boat may have passed a course entry.
struct PassCandidate {
    int Second = 0;
    int CameIn = 0;       ///< when the boat had come near: between two roundings it was away
    double Cost = 0.0;    ///< 0 for a clear passing, the more the less it looks like one
    bool MayEnd = true;   ///< it can be the last passing of a boat
    bool Hidden = false;  ///< in a hole of the track: passed, but nobody knows when
};

/// The candidates of one boat and entry, by time.
using PassCandidates = OneBased<PassCandidate>;

/// Where the walk found the passing of some of the candidates, at second `walked`, its second stands.
void LetWalkedStand(const std::optional<int>& walked, PassCandidates& candidates);

/// Looks over one boat's track for the moments at which it may have passed an entry.
class CandidateSearch {
  public:
    /// Looks at the seconds of the range, and at no more than `steps` of them that lie near an entry.
    /// Course and track must outlive the search.
    CandidateSearch(const CourseOnWater& course, const Track& track, SecondRange range, int steps);

    /// Every moment at which the boat may have passed the entry, and what it costs to believe so.
    ///
    /// - A line: crossing it 0. Crossing its prolongation within 50 m of an end 0.5 + metres / 50: ends
    ///   drift and are stored with an error, but seldom a large one.
    /// - A mark: passing the outward bisector of the corner 0, between 100 m and 200 m metres / 1000. So of
    ///   several passings the first one at the mark is taken, though a later one, on the way home or on
    ///   another lap, be nearer to it.
    /// - Passing the opposite ray within 50 m 0.5 + metres / 50: a mark that drifted or was stored some
    ///   metres off is passed on the wrong side.
    /// - The nearest approach of each stay within 100 m 1 + metres / 100, where the boat turned so that it
    ///   met neither ray.
    /// - A mark that ends the course has no corner: the nearest approach of each stay within 200 m, metres
    ///   / 100, at the first second at which the boat no longer gets nearer.
    ///
    /// Neither a wide passing nor one of the other two more than 25 m off a mark can be a boat's last: who
    /// turned back short of a mark, or sails by on the way home, has not rounded it. Some hundred
    /// candidates at most, the earliest ones.
    PassCandidates Find(const PlacedEntry& entry);

    /// The holes of the track in which the boat may have passed the entry unseen, each as a hidden
    /// candidate at the hole's beginning: more than 30 s without a fix, and long enough to sail from where
    /// it began to the entry and on to where it ended, at half as much again as the boat's usual pace. So a
    /// hole elsewhere does not excuse a mark that was left out.
    PassCandidates FindHidden(const PlacedEntry& entry) const;

  private:
    /// When the boat was nearest to a mark, and how near.
    struct Approach {
        int Second = 0;
        int CameIn = 0;
        double Metres = 0.0;
    };
    class Stay;

    void CrossLine(const PlacedEntry& line);
    void RoundMark(const PlacedEntry& mark);
    void ReachLastMark(const PlacedEntry& mark);
    void Add(const PassCandidate& candidate);
    void ComeIn(int t);
    void AddOutside(int t, double metres);
    void AddInside(int t, double metres, bool mayEnd);
    template <class Judge>
    void ScanCircle(const PlacedEntry& mark, Judge judge);

    const CourseOnWater& course_;
    const Track& track_;
    SecondRange range_;
    OneBased<int> holes_;    ///< the fix before each
    double holePace_ = 0.0;  ///< minutes of arc a second, at most, through a hole
    Position at_;
    CircleScan scan_;
    int cameIn_ = 0;               ///< near the entry that is looked for
    std::optional<int> lastNear_;  ///< the last second there
    PassCandidates found_;         ///< so far, of the entry that is looked for
};

}  // namespace keelview
