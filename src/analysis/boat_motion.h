#pragma once

#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include "analysis/plane.h"
#include "racedata/gps_track.h"

namespace keelview {

/// What a boat's velocities are taken from.
enum class VelocitySource {
    Receiver,  ///< the receiver's own speed and course over ground
    Positions  ///< smoothed positions
};

/// Where a boat is at a moment and how it moves, with the standard deviations of both (of each component).
struct Motion {
    Way At;                      ///< metres on the plane
    Way Velocity;                ///< metres a second over ground
    double PlaceSigma = 0.0;     ///< metres
    double VelocitySigma = 0.0;  ///< metres a second

    /// Metres a second, less what the noise across the velocity adds to its length.
    double Speed() const {
        const double length = Velocity.Length();
        return length > VelocitySigma ? length - VelocitySigma * VelocitySigma / (2 * length) : length / 2;
    }
};

/// A boat over a stretch of time: its mean velocity, and the straight line through its places.
struct Stretch {
    Way Velocity;  ///< mean, metres a second
    double VelocitySigma = 0.0;
    Way MiddleAt;         ///< mean of the places, metres
    double Middle = 0.0;  ///< mean of their times, seconds
    double MiddleSigma = 0.0;
    double Bend = 0.0;     ///< metres that an end of the line lies off, as far as the way surely bends
    double Seconds = 0.0;  ///< how long it is

    /// The place on the line at a moment.
    Way At(double t) const { return MiddleAt + Velocity * (t - Middle); }
};

/// One boat's track as a smooth way over the water. The noise of its places is that of their third
/// differences, of which a way that bends evenly has none. The receiver's own velocities are taken where
/// nearly all fixes have them and they agree with the ways between the places.
class BoatMotion {
  public:
    BoatMotion(const Track& track, const Plane& plane);

    VelocitySource Source() const { return source_; }
    /// Standard deviation of a single place, metres each way, as far as it changes from fix to fix.
    double Noise() const { return noise_; }

    /// Its fixes stand close enough for a motion by the second; else nobody needs to ask for each.
    bool IsDense() const { return !seconds_.empty(); }

    /// Seconds to either side over which velocities are smoothed; 0 where they are the receiver's own.
    double Reach() const { return velocities_.empty() ? reach_ : 0.0; }

    /// The times of the first and the last fix; equal where there is no motion.
    std::pair<double, double> Span() const {
        return times_.empty() ? std::pair(0.0, 0.0) : std::pair(times_.front(), times_.back());
    }

    /// A parabola fitted to the places of 1 to 5 s to either side, as many as make the velocity sure; the
    /// velocity is the parabola's, too. Where the receiver's own velocities are taken, the velocity is
    /// theirs between two fixes, and the place the mean of those that lead there by them. Nothing outside
    /// the track, in a gap of it, or where fixes stand too far apart to be fitted. Whole seconds are kept,
    /// and come at a fraction of the cost.
    std::optional<Motion> At(double t) const;

    /// The velocity alone, as At has it; metres a second.
    std::optional<Way> VelocityAt(double t) const;

    /// The mean motion from one moment to another; nothing where the track does not cover them.
    std::optional<Stretch> Over(double from, double to) const;

    /// The way from one moment to another: the sum of the receiver's own velocities, where they are taken.
    /// Nothing where they are not, or do not cover it.
    std::optional<Way> SumOfVelocities(double from, double to) const;

    /// The number of fixes from one moment up to another.
    int FixesBetween(double from, double to) const { return First(to) - First(from); }

    /// Standard deviation of a single velocity of the receiver, metres a second each way.
    double VelocityNoise() const { return velocityNoise_; }

  private:
    int First(
        double t) const;  // the first fix at or after a moment, from 0; all of them where there is none
    struct Fitted {       // what is fitted about a moment: fixes from `Begin` up to before `End`
        int Next = 1;     // the fix behind the moment
        std::size_t Begin = 0, End = 0;
    };
    std::optional<Fitted> FittedAbout(double t, int first) const;
    std::optional<Motion> FitAt(double t, int first) const;
    /// The motion of a whole second; its sigma is no number where there is none.
    struct Second {
        Way At;
        float East = 0.0F, North = 0.0F;
        float PlaceSigma = std::numeric_limits<float>::quiet_NaN(), VelocitySigma = 0.0F;
    };
    void KeepSeconds();
    const Second* KeptAt(double t) const;
    Way OwnVelocityAt(double t, int next) const;
    Way SumAt(double t, int next) const;
    void TakeMeanVelocity(std::size_t begin, std::size_t end, Stretch& stretch) const;
    double BendOf(std::size_t begin, std::size_t end, const Stretch& line, double square) const;
    std::optional<Motion> AtByOwn(double t, int next, std::size_t begin, std::size_t end) const;
    void TakeOwnVelocities(const Track& track);
    bool OwnAgree() const;

    std::vector<double> times_;
    std::vector<Way> places_;
    std::vector<Way> velocities_;  // the receiver's own; empty where they are not taken
    std::vector<Way> sums_;        // of the velocities up to each fix, metres
    std::vector<Second> seconds_;  // from the first whole one on the track
    double firstSecond_ = 0.0;
    double noise_ = 0.0;
    double reach_ = 0.0;  // seconds
    double velocityNoise_ = 0.0;
    VelocitySource source_ = VelocitySource::Positions;
};

/// All boats of a race on one plane.
struct FleetMotion {
    Plane Water;
    OneBased<BoatMotion> Boats;

    FleetMotion() = default;
    /// The plane lies round the first fix of the race.
    FleetMotion(const Tracks& tracks, const EarthScale& scale);
};

}  // namespace keelview
