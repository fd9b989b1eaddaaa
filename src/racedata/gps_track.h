#pragma once

#include <filesystem>
#include <optional>

#include "base/dates.h"
#include "base/one_based.h"
#include "racedata/earth_scale.h"
#include "racedata/limits.h"
#include "racedata/race_control.h"
#include "racedata/track_reading.h"

namespace keelview {

/// One boat's track in columns, by fix. The distance has as many elements as the others from DeriveTracks
/// on, and none before. Speed and course of a fix are worked out when they are asked for: few of a race's
/// million fixes are looked at, and a column of each would be a third of all memory that a load asks for.
struct Track {
    OneBased<double> TrackLat;      ///< minutes of arc, north positive
    OneBased<double> TrackLon;      ///< minutes of arc, east positive, counted on over the date line
    OneBased<double> TrackTime;     ///< seconds from the start, to the millisecond
    OneBased<double> TrackDist;     ///< nautical miles sailed up to the fix
    OneBased<float> TrackOwnSpeed;  ///< over ground as the receiver tells it, knots, NotTold where it tells
                                    ///< none; empty where no fix has speed and course
    OneBased<float> TrackOwnCourse;   ///< the same, degrees true; as many as of TrackOwnSpeed
    EarthScale Scale;                 ///< that of the race, from DeriveTracks on
    int SkippedFixes = 0;             ///< left out as faulty: no place, or one that no boat reaches
    Refusal Refused = Refusal::None;  ///< why its file gives no track

    /// The number of fixes.
    int Count() const { return TrackTime.Count(); }
    Position At(int fix) const { return {TrackLat[fix], TrackLon[fix]}; }
    bool HasOwnVelocity() const { return !TrackOwnSpeed.Empty(); }
    bool IsDerived() const { return TrackDist.Count() == Count(); }

    /// Nautical miles from a fix to the next, which must be there: the straight way on the plane of the
    /// race.
    double MilesFrom(int fix) const;
    /// Knots from a fix to the next; 0 at the last one and where no time passes.
    double TrackSpeed(int fix) const;
    /// Degrees true from a fix to the next; 0 at the last one.
    double TrackCourse(int fix) const;
    /// Degrees true from one fix straight to another, 90 where both are at one place.
    double CourseBetween(int from, int to) const;
};

/// The tracks of all boats of a race, by boat.
struct Tracks {
    OneBased<Track> Boats;
    double TypicalSpeed = 0.0;              ///< knots, mean of boat 1 over the first half of the race
    std::optional<CivilTime> FirstGpsTime;  ///< local time of the first fix of the first file
    std::optional<CivilTime> LastGpsTime;   ///< local time of the last fix parsed in the last file
};

/// The box of all track points and the home view that follows from it.
struct TrackArea {
    double TrackMinLat = 200000.0;  ///< minutes of arc
    double TrackMaxLat = -200000.0;
    double TrackMinLon = 200000.0;
    double TrackMaxLon = -200000.0;
    double HomeCentreLat = 0.0;  ///< middle of the box
    double HomeCentreLon = 0.0;
    double AreaSpan = 0.1;  ///< larger side of the box in minutes of latitude, at least 0.1
};

/// Where a single track without a start has it: so many seconds after the first fix.
inline constexpr CivilTime FirstFixToStart = 240;

/// Takes readings of the boats of the race onto its clock and cuts them to its period, and uses them up;
/// without a TimeDiff tracks stay on the clock of the GPS. Makes `tracks` anew; DataFromTime, DataToTime,
/// Start and Finish of `race` are read. A start or finish that is not given is worked out with its end of
/// the data from all tracks together: the first fix of any boat (four minutes after it where the race has
/// no race control file) and the last one, whole seconds. All longitudes lie within half a turn of the
/// first fix of all, so a race across the date line is one. `area` and `scale` are those of the box of all
/// tracks. Faulty fixes are left out and counted; of several at one time the first stays. A track without a
/// reading says why.
void TakeTracks(OneBased<TrackReading> readings, RaceControl& race, Tracks& tracks, TrackArea& area,
                EarthScale& scale);

/// The same with what ReadTracks reads for the boats of the race. Returns the path of the first track file
/// that does not exist; empty when all were there.
std::filesystem::path LoadAllTracks(const std::filesystem::path& appPath, RaceControl& race, Tracks& tracks,
                                    TrackArea& area, EarthScale& scale, const TrackProgress& progress);

/// The path of the first track file of the race that did not exist; empty when all were there.
std::filesystem::path FirstMissingTrack(const std::filesystem::path& appPath, const RaceControl& race,
                                        const Tracks& tracks);

}  // namespace keelview
