#include "racedata/gps_track.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>
#include <vector>

#include "base/numbers.h"
#include "base/parallel.h"
#include "racedata/track_faults.h"

namespace keelview {
namespace {

constexpr CivilTime FarthestFromStart = 1000000000;  // seconds; a fix farther off has a wrong date
constexpr double SmallestSpan = 0.1;                 // minutes of arc

CivilTime WholeSeconds(UnixMs time) {
    return (time >= 0 ? time : time - 999) / 1000;
}

/// Takes the readings of a race onto its clock.
class TrackLoader {
  public:
    TrackLoader(RaceControl& race, const OneBased<TrackReading>& readings, Tracks& tracks)
        : race_(race),
          tracks_(tracks),
          start_(race.Start.At()),
          finish_(race.Finish.At()),
          toLocal_(static_cast<CivilTime>(race.TimeDiff.value_or(0) * 3600)) {
        tracks_ = {};
        tracks_.Boats.Resize(readings.Count());
        for (const TrackReading& reading : readings) {
            if (reading.Fixes.empty()) continue;
            if (!tracks_.FirstGpsTime)
                tracks_.FirstGpsTime = WholeSeconds(reading.Fixes.front().Time) + toLocal_;
            tracks_.LastGpsTime = WholeSeconds(reading.Fixes.back().Time) + toLocal_;
        }
    }

    /// Makes the track of a reading and uses the reading up. Boats may be taken at the same time.
    void Take(TrackReading& reading, Track& track) const {
        const UnixMs origin = (Origin() - toLocal_) * 1000;
        std::optional<UnixMs> lastKept;
        std::erase_if(reading.Fixes, [&](const GpsFix& fix) {
            if (!IsInside(WholeSeconds(fix.Time) + toLocal_) || lastKept == fix.Time) return true;
            lastKept = fix.Time;
            return false;
        });
        const int count = static_cast<int>(reading.Fixes.size());
        for (auto* column : {&track.TrackLat, &track.TrackLon, &track.TrackTime}) column->Reserve(count);
        for (const GpsFix& fix : reading.Fixes) {
            track.TrackLat.Add(fix.Lat);
            track.TrackLon.Add(fix.Lon);
            track.TrackTime.Add(static_cast<double>(fix.Time - origin) / 1000);
        }
        track.Refused = reading.Refused;
        const auto noPlace = std::ranges::find(reading.Left, SkipReason::NoPlace, &Skipped::Why);
        track.SkippedFixes =
            DropImpossibleFixes(track) + (noPlace != reading.Left.end() ? noPlace->Count : 0);
        reading = {};
    }

    /// When all files are read: a start or finish that the race does not tell is that of its tracks.
    void SettleOpenTimes() {
        std::optional<std::pair<double, double>> span;
        for (const Track& track : tracks_.Boats) {
            if (track.Count() == 0) continue;
            const auto [first, last] = std::ranges::minmax(track.TrackTime);
            span = span ? std::pair(std::min(span->first, first), std::max(span->second, last))
                        : std::pair(first, last);
        }
        if (!span) return;
        const CivilTime origin = Origin();
        if (!finish_) {
            race_.DataToTime = origin + static_cast<CivilTime>(std::ceil(span->second));
            race_.Finish.WorkOut(*race_.DataToTime);
        }
        if (start_) return;
        const auto first = static_cast<CivilTime>(std::floor(span->first));
        const CivilTime lead = race_.RaceFileName.empty() ? FirstFixToStart : 0;
        race_.DataFromTime = origin + first;
        race_.Start.WorkOut(*race_.DataFromTime + lead);
        const auto shift = static_cast<double>(first + lead);
        for (Track& track : tracks_.Boats)
            for (double& time : track.TrackTime) time = RoundDecimals(time - shift, 3);
    }

  private:
    /// What the seconds of the fixes count from while files are read. There has been a fix.
    CivilTime Origin() const { return start_.value_or(tracks_.FirstGpsTime.value_or(0)); }

    /// The period by whole clock minutes: a fix in the same minute as either limit is inside.
    bool IsInside(CivilTime time) const {
        if (std::abs(time - Origin()) > FarthestFromStart) return false;
        if (!finish_) return true;
        return MinuteBoundaries(race_.DataFromTime.value_or(time), time) >= 0 &&
               MinuteBoundaries(time, race_.DataToTime.value_or(*finish_)) >= 0;
    }

    RaceControl& race_;
    Tracks& tracks_;
    const std::optional<CivilTime> start_;
    const std::optional<CivilTime> finish_;
    const CivilTime toLocal_;
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
        if (at.Lat == 0.0 || at.Lon == 0.0) continue;
        area.TrackMinLat = std::min(area.TrackMinLat, at.Lat);
        area.TrackMaxLat = std::max(area.TrackMaxLat, at.Lat);
        area.TrackMinLon = std::min(area.TrackMinLon, at.Lon);
        area.TrackMaxLon = std::max(area.TrackMaxLon, at.Lon);
    }
}

}  // namespace

std::filesystem::path LoadAllTracks(const std::filesystem::path& appPath, RaceControl& race, Tracks& tracks,
                                    TrackArea& area, EarthScale& scale, const TrackProgress& progress) {
    OneBased<TrackReading> readings = ReadTracks(appPath, race.Boats, progress);
    TrackLoader loader(race, readings, tracks);
    ForEachInParallel(readings.Count(), [&](int boat) { loader.Take(readings[boat], tracks.Boats[boat]); });
    loader.SettleOpenTimes();
    area = TrackArea{};
    for (const Track& track : tracks.Boats) WidenArea(track, area);
    SettleHomeView(area, scale);
    const auto missing = std::ranges::find(tracks.Boats, Refusal::Missing, &Track::Refused);
    if (missing == tracks.Boats.end()) return {};
    const auto boat = static_cast<int>(missing - tracks.Boats.begin()) + 1;
    return TrackPath(appPath, race.Boats[boat].BoatFile);
}

}  // namespace keelview
