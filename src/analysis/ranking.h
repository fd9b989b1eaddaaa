#pragma once

#include <optional>
#include <vector>

#include "analysis/boat_motion.h"
#include "analysis/course_legs.h"
#include "analysis/mark_passes.h"
#include "analysis/race_wind.h"

namespace keelview {

/// A boat in the order of a moment.
struct RankedBoat {
    int Boat = 0;
    double ToGo = 0.0;       ///< metres to the finish
    double ToGoSigma = 0.0;  ///< metres, as the tracks' noise has it
    double GapMetres = 0.0;  ///< to the leader
    double GapMetresSigma = 0.0;
    std::optional<double> GapSeconds;  ///< since the leader had that distance to go
    double GapSecondsSigma = 0.0;      ///< beside that of passing times, which are whole seconds
};

/// How far each boat has to go, for every second from the gun to the end of its track. On a leg within 60
/// degrees of the wind's axis the distance is counted along the wind (ladder rungs), else along the leg;
/// the legs to come count by their length. Within a minute of a mark the distance is led to that of the
/// mark, so that boats are there just when they pass it, and the gap there is the difference of the passing
/// times.
class CourseProgress {
  public:
    CourseProgress() = default;
    CourseProgress(const RaceControl& race, const FleetMotion& fleet, const RaceWind& wind,
                   const MarkPasses& passes);

    /// The order at a moment, the leader first: those with less to go, among finished boats the earlier
    /// one. A boat whose track does not tell where it is has no place in it; nobody has before the gun.
    std::vector<RankedBoat> OrderAt(double t) const;

    /// The boat with the least to go at a moment; nothing where OrderAt is empty.
    std::optional<int> LeaderAt(double t) const;

    /// Seconds by which a boat is behind another one at a moment: since that one had as far to go; negative
    /// where it is ahead, of finished boats the difference of their times. Nothing where the track of
    /// either does not tell it.
    std::optional<double> GapSeconds(int boat, int other, double t) const;

    /// Standard deviation of that; 0 where it is not known.
    double GapSecondsSigma(int boat, int other, double t) const;

    int Boats() const { return curves_.Count(); }
    /// The last second that any boat's distances are known for; -1 without any.
    double Last() const;

    /// Metres to the finish, 0 behind it.
    std::optional<double> ToGo(int boat, double t) const;

    /// Standard deviation of that, metres; 0 where it is not known.
    double ToGoSigma(int boat, double t) const;

    /// When a boat first had no more than so many metres to go; nothing if it never had.
    std::optional<double> TimeAt(int boat, double toGo) const;

  private:
    /// A boat's distances by the second, no number where there is none, the least up to each, and sigmas.
    struct Curve {
        std::vector<double> ToGo;
        std::vector<double> Least;
        std::vector<float> Sigma;
        std::optional<int> Finish;
    };
    double Until(int boat, double t) const;
    struct Standing {
        int Boat = 0;
        double ToGo = 0.0;
    };
    bool IsAhead(const Standing& one, const Standing& other, double t) const;

    OneBased<Curve> curves_;
};

}  // namespace keelview
