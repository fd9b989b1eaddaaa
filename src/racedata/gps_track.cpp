#include "racedata/gps_track.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>
#include <vector>

#include "base/angles.h"
#include "base/parallel.h"
#include "base/position.h"
#include "racedata/track_faults.h"

namespace keelview {
namespace {

constexpr CivilTime FarthestFromStart = 1000000000;  // seconds; a fix farther off has a wrong date
constexpr double SmallestSpan = 0.1;                 // minutes of arc

/// Takes the readings of a race onto its clock. Boats may be cut and taken at the same time.
class TrackLoader {
  public:
    TrackLoader(RaceControl& race, const OneBased<TrackReading>& readings, Tracks& tracks)
        : race_(race),
          start_(race.Start.At()),
          finish_(race.Finish.At()),
          toLocal_(static_cast<CivilTime>(race.TimeDiff.value_or(0) * 3600)) {
        tracks = {};
        tracks.Boats.Resize(readings.Count());
        for (const TrackReading& reading : readings) {
            if (reading.Fixes.empty()) continue;
            if (!tracks.FirstGpsTime) tracks.FirstGpsTime = LocalSecond(reading.Fixes.front().Time);
            tracks.LastGpsTime = LocalSecond(reading.Fixes.back().Time);
        }
        origin_ = start_.value_or(tracks.FirstGpsTime.value_or(0));
    }

    /// Leaves the fixes of the period, of several at one time the first.
    void Cut(TrackReading& reading) const {
        std::optional<UnixMs> lastKept;
        std::erase_if(reading.Fixes, [&](const GpsFix& fix) {
            if (!IsInside(LocalSecond(fix.Time)) || lastKept == fix.Time) return true;
            lastKept = fix.Time;
            return false;
        });
    }

    /// When all are cut: a start or finish that the race does not tell is that of its tracks.
    void SettleOpenTimes(const OneBased<TrackReading>& readings) {
        if (start_ && finish_) return;
        std::optional<std::pair<UnixMs, UnixMs>> span;
        for (const TrackReading& reading : readings) {
            if (reading.Fixes.empty()) continue;
            const auto [first, last] = std::ranges::minmax(reading.Fixes, {}, &GpsFix::Time);
            span = span ? std::pair(std::min(span->first, first.Time), std::max(span->second, last.Time))
                        : std::pair(first.Time, last.Time);
        }
        if (!span) return;
        if (!finish_) {
            race_.DataToTime = LocalSecond(span->second + 999);
            race_.Finish.WorkOut(*race_.DataToTime);
        }
        if (start_) return;
        race_.DataFromTime = LocalSecond(span->first);
        origin_ = *race_.DataFromTime + (race_.RaceFileName.empty() ? FirstFixToStart : 0);
        race_.Start.WorkOut(origin_);
    }

    /// When all are cut: the longitude of the race's first fix, from which all others count on.
    void SettleMeridian(const OneBased<TrackReading>& readings) {
        const auto first = std::ranges::find_if(
            readings, [](const TrackReading& reading) { return !reading.Fixes.empty(); });
        if (first != readings.end()) meridian_ = WrapLongitude(first->Fixes.front().Lon);
    }

    /// Makes the track of a reading, which is used up.
    void Take(TrackReading& reading, Track& track) const {
        const UnixMs origin = (origin_ - toLocal_) * 1000;
        const auto count = static_cast<int>(reading.Fixes.size());
        for (auto* column : {&track.TrackLat, &track.TrackLon, &track.TrackTime}) column->Reserve(count);
        for (const GpsFix& fix : reading.Fixes) {
            track.TrackLat.Add(fix.Lat);
            track.TrackLon.Add(LongitudeNear(fix.Lon, meridian_));
            track.TrackTime.Add(static_cast<double>(fix.Time - origin) / 1000);
        }
        TakeOwnVelocity(reading, track);
        track.Refused = reading.Refused;
        track.SkippedFixes = DropImpossibleFixes(track);
        for (const Skipped& left : reading.Left)
            if (left.Why == SkipReason::NoPlace) track.SkippedFixes += left.Count;
        reading = {};
    }

  private:
    static void TakeOwnVelocity(const TrackReading& reading, Track& track) {
        if (!reading.TellsVelocity) return;
        for (auto* column : {&track.TrackOwnSpeed, &track.TrackOwnCourse}) column->Reserve(track.Count());
        for (const GpsFix& fix : reading.Fixes) {
            track.TrackOwnSpeed.Add(fix.Speed);
            track.TrackOwnCourse.Add(fix.Course);
        }
    }

    /// The whole second on the clock of the race.
    CivilTime LocalSecond(UnixMs time) const { return (time >= 0 ? time : time - 999) / 1000 + toLocal_; }

    /// The period by whole clock minutes: a fix in the same minute as either limit is inside.
    bool IsInside(CivilTime time) const {
        if (std::abs(time - origin_) > FarthestFromStart) return false;
        if (!finish_) return true;
        return MinuteBoundaries(race_.DataFromTime.value_or(time), time) >= 0 &&
               MinuteBoundaries(time, race_.DataToTime.value_or(*finish_)) >= 0;
    }

    RaceControl& race_;
    const std::optional<CivilTime> start_;
    const std::optional<CivilTime> finish_;
    const CivilTime toLocal_;
    double meridian_ = 0.0;
    CivilTime origin_ = 0;  // what the seconds of the fixes count from; until it is settled, roughly
};

/// Middle, scale and span of the box as it stands. A box without a point lies at 0, 0.
void SettleHomeView(TrackArea& area, EarthScale& scale) {
    area.HomeCentreLat = (area.TrackMinLat + area.TrackMaxLat) / 2;
    area.HomeCentreLon = (area.TrackMinLon + area.TrackMaxLon) / 2;
    scale = ComputeEarthScale(area.HomeCentreLat);
    area.AreaSpan = std::max({area.TrackMaxLat - area.TrackMinLat,
                              (area.TrackMaxLon - area.TrackMinLon) * scale.LonScale, SmallestSpan});
}

void WidenArea(const Track& track, TrackArea& area) {
    for (int fix = 1; fix <= track.Count(); ++fix) {
        const Position at = track.At(fix);
        area.TrackMinLat = std::min(area.TrackMinLat, at.Lat);
        area.TrackMaxLat = std::max(area.TrackMaxLat, at.Lat);
        area.TrackMinLon = std::min(area.TrackMinLon, at.Lon);
        area.TrackMaxLon = std::max(area.TrackMaxLon, at.Lon);
    }
}

}  // namespace

double Track::MilesFrom(int fix) const {
    const double north = TrackLat[fix + 1] - TrackLat[fix];
    const double east = (TrackLon[fix + 1] - TrackLon[fix]) * Scale.LonScale;
    return std::sqrt(east * east + north * north) * (Scale.MetresPerLatMinute / MetresPerNauticalMile);
}

double Track::TrackSpeed(int fix) const {
    if (fix >= Count()) return 0.0;
    const double seconds = TrackTime[fix + 1] - TrackTime[fix];
    return seconds > 0.0 ? MilesFrom(fix) / seconds * 3600.0 : 0.0;
}

double Track::TrackCourse(int fix) const {
    return fix < Count() ? CourseBetween(fix, fix + 1) : 0.0;
}

double Track::CourseBetween(int from, int to) const {
    return BearingOf((TrackLon[to] - TrackLon[from]) * Scale.LonScale, TrackLat[to] - TrackLat[from]);
}

void TakeTracks(OneBased<TrackReading> readings, RaceControl& race, Tracks& tracks, TrackArea& area,
                EarthScale& scale) {
    TrackLoader loader(race, readings, tracks);
    ForEachInParallel(readings.Count(), [&](int boat) { loader.Cut(readings[boat]); });
    loader.SettleOpenTimes(readings);
    loader.SettleMeridian(readings);
    ForEachInParallel(readings.Count(), [&](int boat) { loader.Take(readings[boat], tracks.Boats[boat]); });
    area = TrackArea{};
    for (const Track& track : tracks.Boats) WidenArea(track, area);
    SettleHomeView(area, scale);
}

std::filesystem::path LoadAllTracks(const std::filesystem::path& appPath, RaceControl& race, Tracks& tracks,
                                    TrackArea& area, EarthScale& scale, const TrackProgress& progress) {
    TakeTracks(ReadTracks(appPath, race.Boats, progress), race, tracks, area, scale);
    return FirstMissingTrack(appPath, race, tracks);
}

std::filesystem::path FirstMissingTrack(const std::filesystem::path& appPath, const RaceControl& race,
                                        const Tracks& tracks) {
    const auto missing = std::ranges::find(tracks.Boats, Refusal::Missing, &Track::Refused);
    if (missing == tracks.Boats.end()) return {};
    const auto boat = static_cast<int>(missing - tracks.Boats.begin()) + 1;
    return TrackPath(appPath, race.Boats[boat].BoatFile);
}

}  // namespace keelview
