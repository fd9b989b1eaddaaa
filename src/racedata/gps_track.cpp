#include "racedata/gps_track.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

#include "analysis/track_derivation.h"
#include "base/files.h"
#include "base/strings.h"
#include "racedata/gps_track_lines.h"

namespace keelview {
namespace {

constexpr std::uintmax_t SmallestFile = 501;  // bytes; a smaller one holds no track
constexpr std::uintmax_t LargestFile = std::uintmax_t{1} << 30;
constexpr CivilTime FirstFixToStart = 240;           // seconds, where no start is given
constexpr CivilTime FarthestFromStart = 1000000000;  // seconds; a fix farther off has a wrong date
constexpr double SmallestSpan = 0.1;                 // minutes of arc

bool HasTrackExtension(std::string_view name) {
    constexpr std::array<std::string_view, 4> extensions{"TRK", "DTR", "trk", "dtr"};
    if (name.size() < 3) return false;
    const std::string_view extension = name.substr(name.size() - 3);
    return std::find(extensions.begin(), extensions.end(), extension) != extensions.end();
}

/// Reads the track files of one race, one after another: what one file tells about start and finish holds
/// for those after it.
class TrackLoader {
  public:
    TrackLoader(RaceControl& race, Tracks& tracks)
        : race_(race),
          tracks_(tracks),
          start_(ParseDateTime(race.StartTimeText)),
          finish_(ParseDateTime(race.FinishTimeText)) {}

    void LoadTrackFile(std::string_view bytes, int boat) {
        for (auto* values : {&lat_, &lon_}) values->assign(1, 0.0);
        time_.assign(1, 0);
        lastKept_.reset();
        std::optional<CivilTime> lastParsed;
        TrackLineReader reader;
        while (!bytes.empty()) {
            const std::optional<TrackFix> fix = reader.Read(CutHead(bytes, '\n'));
            if (!fix) continue;
            const CivilTime time = fix->GpsTime + CivilTime{race_.TimeDiff} * 3600;
            lastParsed = time;
            const CivilTime start = SettleStart(time);
            if (!IsInside(time, start) || lastKept_ == time) continue;
            lat_.push_back(fix->Lat);
            lon_.push_back(fix->Lon);
            time_.push_back(static_cast<std::int32_t>(time - start));
            lastKept_ = time;
        }
        StorePoints(static_cast<std::size_t>(boat));
        if (lastParsed) tracks_.LastGpsTime = lastParsed;
        SettleFinish();
    }

  private:
    /// The start of the race. A race without one has it four minutes after the first fix, and its finish
    /// open.
    CivilTime SettleStart(CivilTime time) {
        const CivilTime first = tracks_.FirstGpsTime.value_or(time);
        tracks_.FirstGpsTime = first;
        if (start_) return *start_;
        const CivilTime start = first + FirstFixToStart;
        start_ = start;
        race_.StartTimeText = DateTimeText(start);
        race_.DataFromTime = tracks_.FirstGpsTime;
        race_.FinishTimeText.clear();
        finish_.reset();
        return start;
    }

    /// The period by whole clock minutes: a fix in the same minute as either limit is inside.
    bool IsInside(CivilTime time, CivilTime start) const {
        if (std::abs(time - start) > FarthestFromStart) return false;
        if (!finish_) return true;
        return MinuteBoundaries(race_.DataFromTime.value_or(time), time) >= 0 &&
               MinuteBoundaries(time, race_.DataToTime.value_or(*finish_)) >= 0;
    }

    /// Copies are of just the size of the track.
    void StorePoints(std::size_t boat) {
        tracks_.TrackLat[boat] = Tracks::Doubles(lat_.begin(), lat_.end());
        tracks_.TrackLon[boat] = Tracks::Doubles(lon_.begin(), lon_.end());
        tracks_.TrackTime[boat] = std::vector<std::int32_t>(time_.begin(), time_.end());
        tracks_.TrackPointCount.at(boat) = static_cast<int>(time_.size()) - 1;
    }

    /// A finish that is still open is the last moment of this file.
    void SettleFinish() {
        const std::optional<CivilTime> last = lastKept_ ? lastKept_ : tracks_.LastGpsTime;
        if (finish_ || !last) return;
        finish_ = last;
        race_.FinishTimeText = DateTimeText(*last);
        race_.DataToTime = last;
    }

    RaceControl& race_;
    Tracks& tracks_;
    std::optional<CivilTime> start_;
    std::optional<CivilTime> finish_;
    std::optional<CivilTime> lastKept_;
    // The points of the present file; kept between files to spare allocations.
    Tracks::Doubles lat_;
    Tracks::Doubles lon_;
    std::vector<std::int32_t> time_;
};

void AllocateTracks(int boatCount, Tracks& tracks) {
    tracks = Tracks{};
    const auto size = static_cast<std::size_t>(boatCount) + 1;
    for (auto* values :
         {&tracks.TrackLat, &tracks.TrackLon, &tracks.TrackDist, &tracks.TrackSpeed, &tracks.TrackCourse}) {
        values->assign(size, Tracks::Doubles(1));
    }
    tracks.TrackTime.assign(size, std::vector<std::int32_t>(1));
}

/// Middle, scale and span of the box as it stands. A box without a point lies at 0, 0.
void SettleHomeView(TrackArea& area, EarthScale& scale) {
    area.HomeCentreLat = (area.TrackMinLat + area.TrackMaxLat) / 2;
    area.HomeCentreLon = (area.TrackMinLon + area.TrackMaxLon) / 2;
    scale = ComputeEarthScale(area.HomeCentreLat);
    area.AreaSpan = std::max({area.TrackMaxLat - area.TrackMinLat,
                              (area.TrackMaxLon - area.TrackMinLon) * scale.LonScale, SmallestSpan});
}

void WidenArea(const Tracks::Doubles& lat, const Tracks::Doubles& lon, TrackArea& area) {
    for (std::size_t point = 1; point < lat.size(); ++point) {
        if (lat[point] == 0.0 || lon[point] == 0.0) continue;
        area.TrackMinLat = std::min(area.TrackMinLat, lat[point]);
        area.TrackMaxLat = std::max(area.TrackMaxLat, lat[point]);
        area.TrackMinLon = std::min(area.TrackMinLon, lon[point]);
        area.TrackMaxLon = std::max(area.TrackMaxLon, lon[point]);
    }
}

}  // namespace

std::filesystem::path TrackPath(const std::filesystem::path& appPath, const std::string& boatFile) {
    return FindBelow(appPath, "gpsdat/" + boatFile);
}

std::filesystem::path LoadAllTracks(const std::filesystem::path& appPath, RaceControl& race, Tracks& tracks,
                                    TrackArea& area, EarthScale& scale, const TrackProgress& progress) {
    const int boatCount = std::clamp(race.BoatCount, 0, MaxBoats);
    AllocateTracks(boatCount, tracks);
    area = TrackArea{};
    SettleHomeView(area, scale);
    TrackLoader loader(race, tracks);
    std::string bytes;
    for (int boat = 1; boat <= boatCount; ++boat) {
        const auto at = static_cast<std::size_t>(boat);
        const std::string& boatFile = race.BoatFile.at(at);
        const std::filesystem::path path = TrackPath(appPath, boatFile);
        const std::optional<std::uintmax_t> size = FileSize(path);
        if (!size) return path;
        if (progress) progress(boat);
        if (*size < SmallestFile) continue;
        if (!HasTrackExtension(boatFile) || !ReadWholeFile(path, LargestFile, bytes)) bytes.clear();
        loader.LoadTrackFile(bytes, boat);
        WidenArea(tracks.TrackLat[at], tracks.TrackLon[at], area);
        SettleHomeView(area, scale);
    }
    return {};
}

}  // namespace keelview
