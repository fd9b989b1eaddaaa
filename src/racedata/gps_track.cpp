#include "racedata/gps_track.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string_view>
#include <utility>

#include "base/angles.h"
#include "base/files.h"
#include "base/strings.h"
#include "racedata/gps_track_lines.h"
#include "racedata/track_faults.h"

namespace keelview {
namespace {

constexpr std::uintmax_t SmallestFile = 501;  // bytes; a smaller one holds no track
constexpr std::uintmax_t LargestFile = std::uintmax_t{1} << 30;
constexpr CivilTime FarthestFromStart = 1000000000;  // seconds; a fix farther off has a wrong date
constexpr double SmallestSpan = 0.1;                 // minutes of arc

bool HasTrackExtension(std::string_view name) {
    constexpr std::array<std::string_view, 4> extensions{"TRK", "DTR", "trk", "dtr"};
    if (name.size() < 3) return false;
    const std::string_view extension = name.substr(name.size() - 3);
    return std::find(extensions.begin(), extensions.end(), extension) != extensions.end();
}

/// Reads the track files of one race, one after another.
class TrackLoader {
  public:
    TrackLoader(RaceControl& race, Tracks& tracks)
        : race_(race),
          tracks_(tracks),
          start_(race.Start.At()),
          finish_(race.Finish.At()),
          toLocal_(static_cast<CivilTime>(race.TimeDiff.value_or(0) * 3600)) {}

    void LoadTrackFile(std::string_view bytes, Track& track) {
        fixes_.TrackLat.Clear();
        fixes_.TrackLon.Clear();
        fixes_.TrackTime.Clear();
        fixes_.SkippedFixes = 0;
        lastKept_.reset();
        std::optional<CivilTime> lastParsed;
        TrackLineReader reader;
        while (!bytes.empty()) {
            const std::optional<TrackFix> fix = reader.Read(CutHead(bytes, '\n'));
            if (!fix) continue;
            if (IsNoPlace(fix->Lat, fix->Lon)) {
                ++fixes_.SkippedFixes;
                continue;
            }
            const CivilTime time = fix->GpsTime + toLocal_;
            lastParsed = time;
            if (!tracks_.FirstGpsTime) tracks_.FirstGpsTime = time;
            if (!IsInside(time) || lastKept_ == time) continue;
            fixes_.TrackLat.Add(fix->Lat);
            if (!meridian_) meridian_ = WrapLongitude(fix->Lon);
            fixes_.TrackLon.Add(LongitudeNear(fix->Lon, *meridian_));
            fixes_.TrackTime.Add(static_cast<std::int32_t>(time - Origin()));
            lastKept_ = time;
        }
        fixes_.SkippedFixes += DropImpossibleFixes(fixes_);
        track = fixes_;  // a copy is of just the size of the track
        if (lastParsed) tracks_.LastGpsTime = lastParsed;
    }

    /// When all files are read: a start or finish that the race does not tell is that of its tracks.
    void SettleOpenTimes() {
        std::optional<std::pair<std::int32_t, std::int32_t>> span;
        for (const Track& track : tracks_.Boats) {
            if (track.Count() == 0) continue;
            const auto [first, last] = std::ranges::minmax(track.TrackTime);
            span = span ? std::pair(std::min(span->first, first), std::max(span->second, last))
                        : std::pair(first, last);
        }
        if (!span) return;
        const CivilTime origin = Origin();
        if (!finish_) {
            race_.DataToTime = origin + span->second;
            race_.Finish.WorkOut(*race_.DataToTime);
        }
        if (start_) return;
        const CivilTime lead = race_.RaceFileName.empty() ? FirstFixToStart : 0;
        race_.DataFromTime = origin + span->first;
        race_.Start.WorkOut(*race_.DataFromTime + lead);
        for (Track& track : tracks_.Boats)
            for (std::int32_t& time : track.TrackTime)
                time -= span->first + static_cast<std::int32_t>(lead);
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
    std::optional<CivilTime> lastKept_;
    std::optional<double> meridian_;  // of the race's first fix, from which all longitudes count on
    Track fixes_;                     // of the present file; kept between files to spare allocations
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

std::filesystem::path TrackPath(const std::filesystem::path& appPath, const std::string& boatFile) {
    return FindBelow(appPath, "gpsdat/" + boatFile);
}

std::filesystem::path LoadAllTracks(const std::filesystem::path& appPath, RaceControl& race, Tracks& tracks,
                                    TrackArea& area, EarthScale& scale, const TrackProgress& progress) {
    tracks = {};
    tracks.Boats.Resize(race.Boats.Count());
    area = TrackArea{};
    SettleHomeView(area, scale);
    TrackLoader loader(race, tracks);
    std::string bytes;
    for (int boat = 1; boat <= race.Boats.Count(); ++boat) {
        const std::string& boatFile = race.Boats[boat].BoatFile;
        const std::filesystem::path path = TrackPath(appPath, boatFile);
        const std::optional<std::uintmax_t> size = FileSize(path);
        if (!size) return path;
        if (progress) progress(boat);
        if (*size < SmallestFile) continue;
        if (!HasTrackExtension(boatFile) || !ReadWholeFile(path, LargestFile, bytes)) bytes.clear();
        loader.LoadTrackFile(bytes, tracks.Boats[boat]);
        WidenArea(tracks.Boats[boat], area);
        SettleHomeView(area, scale);
    }
    loader.SettleOpenTimes();
    return {};
}

}  // namespace keelview
