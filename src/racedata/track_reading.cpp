#include "racedata/track_reading.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string_view>
#include <utility>

#include "base/files.h"
#include "base/numbers.h"
#include "base/parallel.h"
#include "base/strings.h"
#include "racedata/packed_track.h"
#include "racedata/track_faults.h"
#include "racedata/tracks/formats.h"
#include "racedata/tracks/own_lines.h"

namespace keelview {
namespace {

constexpr std::string_view LinesFormat = "TRK";
constexpr std::size_t SmallestLinesFile = 501;  // bytes; a smaller one holds no track
constexpr std::size_t UsualLine = 48;           // bytes, in a file of lines; few are shorter
constexpr std::uintmax_t LargestFile = std::uintmax_t{1} << 30;
constexpr UnixMs FarthestTime = 253'402'300'800'000;  // the year 10000; and so far back
constexpr std::size_t HeadSize = 65536;  // bytes; where the first fix stands in a file of any name
constexpr std::uintmax_t LargestGuess = 1U << 20U;  // bytes of a file that is read before its kind is known

/// A file and the boats that are in it.
struct TrackFile {
    std::string Name;
    std::filesystem::path Path;
    std::vector<int> Boats;
};

bool HasTrackExtension(std::string_view name) {
    constexpr std::array<std::string_view, 4> extensions{"TRK", "DTR", "trk", "dtr"};
    if (name.size() < 3) return false;
    const std::string_view extension = name.substr(name.size() - 3);
    return std::ranges::find(extensions, extension) != extensions.end();
}

/// True for a file of track lines: one of them is a fix, in a file of another name near its head.
bool IsLinesFile(const std::string& name, std::string_view bytes) {
    if (!HasTrackExtension(name)) bytes = bytes.substr(0, HeadSize);
    TrackLineReader reader;
    while (!bytes.empty())
        if (reader.Read(CutHead(bytes, '\n'))) return true;
    return false;
}

void AddPlace(const GpsFix& fix, TrackReading& reading) {
    if (IsNoPlace(fix.Lat, fix.Lon))
        Skip(reading.Left, SkipReason::NoPlace);
    else
        reading.Fixes.push_back(fix);
}

TrackReading ReadLinesFile(std::string_view bytes) {
    TrackReading reading;
    reading.Format = LinesFormat;
    TrackLineReader reader;
    if (bytes.size() < SmallestLinesFile) bytes = {};
    reading.Fixes.reserve(bytes.size() / UsualLine);
    while (!bytes.empty()) {
        const std::string_view line = CutHead(bytes, '\n');
        if (const std::optional<TrackFix> fix = reader.Read(line))
            AddPlace({.Lat = fix->Lat, .Lon = fix->Lon, .Time = fix->Time}, reading);
        else if (line.starts_with('T'))
            Skip(reading.Left, SkipReason::Broken);
    }
    if (reading.Fixes.empty()) reading.Refused = Refusal::NoFixes;
    return reading;
}

/// The recording of this number or of this boat, the first one where nothing is said; null if there is
/// none.
const Recording* Choose(const std::vector<Recording>& recordings, std::string_view choice) {
    if (choice.empty()) return &recordings.front();
    const auto number = StrictNumber(choice).value_or(0);
    if (number >= 1 && number <= static_cast<double>(recordings.size()) && number == std::floor(number))
        return &recordings[static_cast<std::size_t>(number) - 1];
    const auto boatOf = [](const Recording& recording) { return Trim(recording.Boat); };
    auto found = std::ranges::find(recordings, choice, boatOf);
    if (found == recordings.end())
        found = std::ranges::find_if(
            recordings, [&](std::string_view boat) { return EqualNoCase(boat, choice); }, boatOf);
    return found != recordings.end() ? &*found : nullptr;
}

/// True for the reasons that the head of a file is enough for.
bool IsForeign(Refusal why) {
    return why == Refusal::Unknown || why == Refusal::Velocitek || why == Refusal::Sail2;
}

void SetClock(double offset, TrackReading& reading) {
    const auto late = static_cast<UnixMs>(std::round(offset * 1000));
    if (late == 0) return;
    for (GpsFix& fix : reading.Fixes) fix.Time += late;
}

void ReadBoatsOf(const TrackFile& file, const OneBased<BoatEntry, MaxBoats>& boats, std::string& room,
                 OneBased<TrackReading>& readings) {
    TrackFileReading read = ReadTrackFileAt(file.Path, file.Name, room);
    for (const int boat : file.Boats) {
        std::string_view choice = boats[boat].BoatFile;
        choice = Trim(choice.substr(std::min(choice.size(), file.Name.size() + 1)));
        TrackReading& reading = readings[boat];
        if (!read.Lines)
            reading = TakeRecording(read.Content, choice);
        else if (choice.empty() || choice == "1")
            reading = file.Boats.size() == 1 ? std::move(*read.Lines) : *read.Lines;
        else
            reading.Refused = Refusal::NoRecording;
        SetClock(boats[boat].ClockOffset, reading);
    }
}

/// The files of the boats, each once, in the order of the first boat in it.
OneBased<TrackFile> FilesOf(const std::filesystem::path& appPath,
                            const OneBased<BoatEntry, MaxBoats>& boats) {
    OneBased<TrackFile> files;
    for (int boat = 1; boat <= boats.Count(); ++boat) {
        std::string name = TrackFileName(appPath, boats[boat].BoatFile);
        auto path = FindBelow(appPath, "gpsdat/" + name);
        auto file = std::ranges::find(files, path, &TrackFile::Path);
        if (file == files.end()) {
            files.Add({std::move(name), std::move(path), {}});
            file = files.end() - 1;
        }
        file->Boats.push_back(boat);
    }
    return files;
}

}  // namespace

std::string TrackFileName(const std::filesystem::path& appPath, const std::string& boatFile) {
    const auto isThere = [&](const std::string& name) {
        return IsFile(FindBelow(appPath, "gpsdat/" + name));
    };
    const std::size_t sign = boatFile.rfind('#');
    if (sign == std::string::npos || isThere(boatFile)) return boatFile;
    const std::string file = boatFile.substr(0, sign);
    return isThere(file) ? file : boatFile;
}

Refusal FetchTrackFile(const std::filesystem::path& path, std::string& bytes) {
    const auto size = FileSize(path);
    if (!size) return Refusal::Missing;
    if (*size > LargestFile) return Refusal::TooLarge;
    return ReadWholeFile(path, LargestFile, bytes) ? Refusal::None : Refusal::Broken;
}

std::filesystem::path TrackPath(const std::filesystem::path& appPath, const std::string& boatFile) {
    return FindBelow(appPath, "gpsdat/" + TrackFileName(appPath, boatFile));
}

TrackFileReading ReadTrackBytes(const std::string& name, std::string_view bytes,
                                const ReadingProgress& progress) {
    TrackFileReading reading;
    if (IsPackedTrack(bytes)) {
        reading.Lines = UnpackTrack(bytes);
        reading.Content.Refused = reading.Lines ? reading.Lines->Refused : Refusal::Broken;
        if (reading.Lines) reading.Content.Format = reading.Lines->Format;
    } else if (IsLinesFile(name, bytes)) {
        reading.Lines = ReadLinesFile(bytes);
        reading.Content.Format = LinesFormat;
        reading.Content.Refused = reading.Lines->Refused;
    } else {
        reading.Content = ReadTrackFile(bytes, name, progress);
    }
    return reading;
}

TrackFileReading ReadTrackFileAt(const std::filesystem::path& path, const std::string& name,
                                 std::string& room, const ReadingProgress& progress) {
    TrackFileReading reading;
    if (FileSize(path).value_or(0) > LargestGuess && !HasTrackExtension(name)) {
        reading = ReadTrackBytes(name, ReadFileHead(path, HeadSize));
        if (IsForeign(reading.Content.Refused)) return reading;
        reading = {};
    }
    reading.Content.Refused = FetchTrackFile(path, room);
    if (reading.Content.Refused != Refusal::None) return reading;
    return ReadTrackBytes(name, room, progress);
}

TrackReading TakeRecording(const TrackFileContent& content, std::string_view choice) {
    TrackReading reading;
    reading.Format = content.Format;
    reading.Refused = content.Refused;
    if (content.Recordings.empty()) return reading;
    const Recording* const chosen = Choose(content.Recordings, choice);
    reading.Refused = Refusal::NoRecording;
    if (!chosen) return reading;
    reading.Device = chosen->Device;
    reading.Left = chosen->Left;
    reading.Fixes.reserve(chosen->Fixes.size());
    for (const RecordedFix& fix : chosen->Fixes) {
        if (fix.Time < -FarthestTime || fix.Time > FarthestTime)
            Skip(reading.Left, SkipReason::NoTime);
        else
            AddPlace({fix.Lat * 60, fix.Lon * 60, fix.Time, fix.Speed, fix.Course}, reading);
        reading.TellsVelocity |= std::isfinite(fix.Speed) && std::isfinite(fix.Course);
    }
    reading.Refused = reading.Fixes.empty() ? Refusal::NoFixes : Refusal::None;
    return reading;
}

OneBased<TrackReading> ReadTracks(const std::filesystem::path& appPath,
                                  const OneBased<BoatEntry, MaxBoats>& boats,
                                  const TrackProgress& progress) {
    const OneBased<TrackFile> files = FilesOf(appPath, boats);
    OneBased<TrackReading> readings(boats.Count());
    const auto hire = [&]() -> NumberedWork {
        return [&, room = std::string()](int file) mutable {
            ReadBoatsOf(files[file], boats, room, readings);
        };
    };
    const auto tell = [&](int file) {
        for (const int boat : files[file].Boats)
            if (progress) progress(boat);
    };
    ForEachByWorkers(files.Count(), hire, tell);
    return readings;
}

}  // namespace keelview
