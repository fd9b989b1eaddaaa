#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/track_rhythm.h"
#include "base/position.h"
#include "racedata/track_reading.h"

namespace keelview {

/// What is known of one recording of a file that was handed in.
struct FoundTrack {
    int Number = 1;      ///< of the recording in its file
    bool Alone = true;   ///< it is the only one
    std::string Boat;    ///< as the file names it; may be empty
    std::string Device;  ///< may be empty
    UnixMs First = 0;
    UnixMs Last = 0;
    int Fixes = 0;
    TrackRhythm Rhythm;
    std::vector<Skipped> Left;
    std::vector<GpsFix> Way;  ///< its fixes in the order of time, thinned to some thousands

    double Seconds() const { return static_cast<double>(Last - First) / 1000; }
};

/// What is known of a file that was handed in.
struct FoundFile {
    std::string Name;              ///< as it was handed in, below its folder: "Alcyone/track.gpx"
    std::filesystem::path Source;  ///< where it lies; empty for bytes alone
    std::string Format;
    Refusal Refused = Refusal::None;
    std::vector<FoundTrack> Tracks;  ///< those with a fix
    RaceHints Hints;
};

/// What a file's bytes hold. One without a fix says why.
FoundFile FindTracks(std::string name, std::string_view bytes);

/// The same of a file on a disc. Progress is told of a packed one; a stopped reading gives what it has.
FoundFile FindTracksAt(std::string name, const std::filesystem::path& source,
                       const ReadingProgress& progress);

/// Where a track is at a moment, straight on between its fixes, the longitude on from the fix before;
/// nothing before its first fix and behind its last.
std::optional<Position> PlaceAt(const FoundTrack& track, UnixMs time);

/// A file that was handed in: its name below what was dropped, and where it lies.
struct HandedFile {
    std::string Name;
    std::filesystem::path Path;
};

/// The files that some paths mean, folders walked (base/files), each once. A path where nothing is stands
/// for a file that is missing.
std::vector<HandedFile> HandedFiles(const std::vector<std::filesystem::path>& paths);

/// Told how many of how many are done; false stops the work.
using StepProgress = std::function<bool(int done, int count)>;

/// What is in all of them, read on all processors, which tell of their progress each by itself, inside
/// packed files too; nothing where the work was stopped.
std::optional<std::vector<FoundFile>> FindTracksIn(const std::vector<HandedFile>& files,
                                                   const StepProgress& progress);

}  // namespace keelview
