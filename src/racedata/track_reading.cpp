#include "racedata/track_reading.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <string_view>
#include <utility>

#include "base/files.h"
#include "base/parallel.h"
#include "base/strings.h"
#include "racedata/gps_track_lines.h"
#include "racedata/track_faults.h"
#include "racedata/tracks/formats.h"

namespace keelview {
namespace {

constexpr std::string_view LinesFormat = "TRK";
constexpr std::size_t SmallestLinesFile = 501;  // bytes; a smaller one holds no track
constexpr std::size_t UsualLine = 48;           // bytes, in a file of lines; few are shorter
constexpr std::uintmax_t LargestFile = std::uintmax_t{1} << 30;
constexpr std::size_t HeadSize = 65536;  // bytes; where the first fix stands in a file of any name

/// A file and the boats that are in it, with what each of them says behind its name.
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
            AddPlace({fix->Lat, fix->Lon, fix->GpsTime * 1000}, reading);
        else if (line.starts_with('T'))
            Skip(reading.Left, SkipReason::Broken);
    }
    return reading;
}

TrackReading ReadingOf(const TrackFileContent& content, const Recording& recording) {
    TrackReading reading{content.Format, recording.Device, Refusal::None, {}, recording.Left};
    reading.Fixes.reserve(recording.Fixes.size());
    for (const RecordedFix& fix : recording.Fixes)
        AddPlace({fix.Lat * 60, fix.Lon * 60, fix.Time}, reading);
    return reading;
}

/// A recording of a file with the name of its boat there.
struct NamedReading {
    std::string Boat;
    TrackReading Reading;
};

TrackReading Refuse(Refusal why) {
    TrackReading reading;
    reading.Refused = why;
    return reading;
}

/// The recordings of a file. One at least, though it may have no fix.
std::vector<NamedReading> ReadRecordings(const TrackFile& file) {
    std::vector<NamedReading> recordings;
    const auto add = [&](const std::string& boat, TrackReading&& reading) {
        recordings.push_back({boat, std::move(reading)});
    };
    const auto size = FileSize(file.Path);
    std::string bytes;
    if (!size)
        add({}, Refuse(Refusal::Missing));
    else if (*size > LargestFile)
        add({}, Refuse(Refusal::TooLarge));
    else if (!ReadWholeFile(file.Path, LargestFile, bytes))
        add({}, Refuse(Refusal::Broken));
    else if (IsLinesFile(file.Name, bytes))
        add({}, ReadLinesFile(bytes));
    if (!recordings.empty()) return recordings;
    const TrackFileContent content = ReadTrackFile(bytes);
    for (const Recording& recording : content.Recordings)
        add(recording.Boat, ReadingOf(content, recording));
    if (recordings.empty()) add({}, Refuse(content.Refused));
    return recordings;
}

/// The recording that stands behind the '#' of a boat's file, by number or name; null if there is none.
NamedReading* Choose(std::vector<NamedReading>& recordings, std::string_view choice) {
    if (choice.empty()) return &recordings.front();
    std::size_t number = 0;
    const char* const end = choice.data() + choice.size();
    const bool isNumber = std::from_chars(choice.data(), end, number).ptr == end;
    if (isNumber && number >= 1 && number <= recordings.size()) return &recordings[number - 1];
    const auto boatOf = [](const NamedReading& each) { return Trim(each.Boat); };
    auto found = std::ranges::find(recordings, choice, boatOf);
    if (found == recordings.end())
        found = std::ranges::find_if(
            recordings, [&](std::string_view boat) { return EqualNoCase(boat, choice); }, boatOf);
    return found != recordings.end() ? &*found : nullptr;
}

void ReadBoatsOf(const TrackFile& file, const OneBased<BoatEntry, MaxBoats>& boats,
                 OneBased<TrackReading>& readings) {
    std::vector<NamedReading> recordings = ReadRecordings(file);
    for (const int boat : file.Boats) {
        const std::string& name = boats[boat].BoatFile;
        const std::size_t choice = std::min(name.size(), file.Name.size() + 1);
        NamedReading* const chosen = Choose(recordings, Trim(std::string_view(name).substr(choice)));
        TrackReading& reading = readings[boat];
        if (!chosen)
            reading.Refused = Refusal::NoRecording;
        else if (file.Boats.size() == 1)
            reading = std::move(chosen->Reading);
        else
            reading = chosen->Reading;
        if (reading.Fixes.empty() && reading.Refused == Refusal::None) reading.Refused = Refusal::NoFixes;
        const auto late = static_cast<UnixMs>(std::round(boats[boat].ClockOffset * 1000));
        if (late == 0) continue;
        for (GpsFix& fix : reading.Fixes) fix.Time += late;
    }
}

/// The files of the boats, each once, in the order of the first boat in it.
OneBased<TrackFile> FilesOf(const std::filesystem::path& appPath,
                            const OneBased<BoatEntry, MaxBoats>& boats) {
    OneBased<TrackFile> files;
    for (int boat = 1; boat <= boats.Count(); ++boat) {
        std::string name = TrackFileName(appPath, boats[boat].BoatFile);
        auto file = std::ranges::find(files, name, &TrackFile::Name);
        if (file == files.end()) {
            auto path = FindBelow(appPath, "gpsdat/" + name);
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

std::filesystem::path TrackPath(const std::filesystem::path& appPath, const std::string& boatFile) {
    return FindBelow(appPath, "gpsdat/" + TrackFileName(appPath, boatFile));
}

OneBased<TrackReading> ReadTracks(const std::filesystem::path& appPath,
                                  const OneBased<BoatEntry, MaxBoats>& boats,
                                  const TrackProgress& progress) {
    const OneBased<TrackFile> files = FilesOf(appPath, boats);
    OneBased<TrackReading> readings(boats.Count());
    const auto read = [&](int file) { ReadBoatsOf(files[file], boats, readings); };
    const auto tell = [&](int file) {
        for (const int boat : files[file].Boats)
            if (progress) progress(boat);
    };
    ForEachInParallel(files.Count(), read, tell);
    return readings;
}

}  // namespace keelview
