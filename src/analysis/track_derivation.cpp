#include "analysis/track_derivation.h"

#include <cmath>

#include "analysis/track_at.h"

namespace keelview {
namespace {

constexpr double SpeedBarPixels = 70.0;
constexpr double SpeedBarHeadroom = 1.6;  // a full bar in typical speeds
constexpr double UsualSpeed = 5.0;        // knots, where the tracks give none

/// Seconds that the start of a race is taken to need before its typical speed is measured.
constexpr double StartAllowance = 120.0;

void DeriveTrack(const EarthScale& scale, Track& track) {
    const int fixes = track.Count();
    track.Scale = scale;
    track.TrackDist.Assign(fixes, 0.0);
    double total = 0.0;
    for (int fix = 1; fix < fixes; ++fix) {
        total += track.MilesFrom(fix);
        track.TrackDist[fix + 1] = total;
    }
}

/// Miles up to the last fix before a moment; 0 where no segment holds it.
double MilesBefore(const Track& track, double moment) {
    const int segment = FirstSegment(track, moment);
    return segment > 0 ? track.TrackDist[segment] : 0.0;
}

double ComputeTypicalSpeed(int raceDuration, const Track& track) {
    const double half = (raceDuration - StartAllowance) / 2;
    return (MilesBefore(track, half) - MilesBefore(track, 0.0)) / half * 3600.0;
}

}  // namespace

void DeriveTracks(const RaceControl& race, const EarthScale& scale, Tracks& tracks) {
    for (Track& track : tracks.Boats) DeriveTrack(scale, track);
    tracks.TypicalSpeed =
        tracks.Boats.Empty() ? 0.0 : ComputeTypicalSpeed(race.RaceDuration, tracks.Boats[1]);
}

double SpeedBarScale(double typicalSpeed) {
    const bool usable = std::isfinite(typicalSpeed) && typicalSpeed > 0.0;
    return SpeedBarPixels / ((usable ? typicalSpeed : UsualSpeed) * SpeedBarHeadroom);
}

}  // namespace keelview
