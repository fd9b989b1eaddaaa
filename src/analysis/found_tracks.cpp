#include "analysis/found_tracks.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <set>
#include <utility>

#include "base/angles.h"
#include "base/files.h"
#include "base/parallel.h"
#include "base/system_files.h"

namespace keelview {

namespace {

constexpr std::size_t MostWayFixes = 6000;
constexpr int StepsOfFile = 100;

/// The fixes in the order of time, thinned by one rule for all tracks: so many a length of time, that the
/// same track is thinned in the same way wherever it was read from.
std::vector<GpsFix> Thinned(std::vector<GpsFix> fixes) {
    if (!std::ranges::is_sorted(fixes, {}, &GpsFix::Time))
        std::ranges::stable_sort(fixes, {}, &GpsFix::Time);
    const UnixMs span = fixes.back().Time - fixes.front().Time;
    const UnixMs step = std::max<UnixMs>(1000, span / static_cast<UnixMs>(MostWayFixes));
    std::vector<GpsFix> way{fixes.front()};
    for (const GpsFix& fix : fixes)
        if (fix.Time - way.back().Time >= step) way.push_back(fix);
    if (way.back().Time < fixes.back().Time) way.push_back(fixes.back());
    return way;
}

FoundTrack Found(TrackReading&& reading) {
    FoundTrack track;
    track.Device = std::move(reading.Device);
    track.Left = std::move(reading.Left);
    track.Fixes = static_cast<int>(reading.Fixes.size());
    track.Rhythm = RhythmOf(reading.Fixes);
    track.Way = Thinned(std::move(reading.Fixes));
    track.First = track.Way.front().Time;
    track.Last = track.Way.back().Time;
    return track;
}

FoundFile FoundIn(std::string name, TrackFileReading&& reading) {
    FoundFile file;
    file.Name = std::move(name);
    file.Format = std::move(reading.Content.Format);
    file.Refused = reading.Content.Refused;
    file.Hints = std::move(reading.Content.Hints);
    if (reading.Lines && file.Refused == Refusal::None)
        file.Tracks.push_back(Found(*std::move(reading.Lines)));
    const auto count = static_cast<int>(reading.Content.Recordings.size());
    for (int number = 1; number <= count; ++number) {
        TrackReading one = TakeRecording(reading.Content, std::to_string(number));
        if (one.Refused != Refusal::None) continue;
        FoundTrack& track = file.Tracks.emplace_back(Found(std::move(one)));
        track.Number = number;
        track.Alone = count == 1;
        track.Boat = reading.Content.Recordings[static_cast<std::size_t>(number) - 1].Boat;
    }
    if (file.Refused == Refusal::None && file.Tracks.empty()) file.Refused = Refusal::NoFixes;
    return file;
}

/// The last part of a path, which may end in a separator.
std::filesystem::path LastPart(const std::filesystem::path& path) {
    return path.has_filename() ? path.filename() : path.parent_path().filename();
}

}  // namespace

FoundFile FindTracks(std::string name, std::string_view bytes) {
    TrackFileReading reading = ReadTrackBytes(name, bytes);
    return FoundIn(std::move(name), std::move(reading));
}

FoundFile FindTracksAt(std::string name, const std::filesystem::path& source,
                       const ReadingProgress& progress) {
    std::string room;
    TrackFileReading reading = ReadTrackFileAt(source, name, room, progress);
    FoundFile file = FoundIn(std::move(name), std::move(reading));
    file.Source = source;
    return file;
}

std::optional<Position> PlaceAt(const FoundTrack& track, UnixMs time) {
    const auto after = std::ranges::upper_bound(track.Way, time, {}, &GpsFix::Time);
    if (after == track.Way.begin()) return {};
    const GpsFix& from = *std::prev(after);
    if (after == track.Way.end())
        return from.Time == time ? std::optional(Position{from.Lat, from.Lon}) : std::nullopt;
    const double share =
        static_cast<double>(time - from.Time) / static_cast<double>(after->Time - from.Time);
    const double toLon = LongitudeNear(after->Lon, from.Lon);
    return Position{from.Lat + (after->Lat - from.Lat) * share, from.Lon + (toLon - from.Lon) * share};
}

std::vector<HandedFile> HandedFiles(const std::vector<std::filesystem::path>& paths) {
    std::vector<HandedFile> files;
    std::set<std::filesystem::path> known;
    for (const std::filesystem::path& path : paths) {
        std::vector<std::filesystem::path> found = FilesBelow(path);
        if (found.empty() && !PathExists(path)) found.push_back(path);
        for (std::filesystem::path& file : found) {
            if (!known.insert(file.lexically_normal()).second) continue;
            const auto below =
                file == path ? LastPart(path) : LastPart(path) / file.lexically_relative(path);
            files.push_back({below.generic_string(), std::move(file)});
        }
    }
    return files;
}

std::optional<std::vector<FoundFile>> FindTracksIn(const std::vector<HandedFile>& files,
                                                   const StepProgress& progress) {
    const auto count = static_cast<int>(files.size());
    std::vector<FoundFile> found(files.size());
    std::atomic<int> done = 0;
    std::atomic<bool> stopped = progress && !progress(0, count * StepsOfFile);
    ForEachInParallel(count, [&](int number) {
        int told = 0;
        const auto tell = [&](double share) {
            const int now = static_cast<int>(share * StepsOfFile);
            done += now - std::exchange(told, now);
            if (progress && !progress(done, count * StepsOfFile)) stopped = true;
            return !stopped;
        };
        if (stopped) return;
        const auto file = static_cast<std::size_t>(number) - 1;
        found[file] = FindTracksAt(files[file].Name, files[file].Path, tell);
        tell(1);
    });
    if (stopped) return {};
    return found;
}

}  // namespace keelview
