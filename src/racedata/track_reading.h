#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/one_based.h"
#include "racedata/race_control.h"
#include "racedata/tracks/recording.h"

namespace keelview {

/// One fix as a track file tells it.
struct GpsFix {
    double Lat = 0.0;        ///< minutes of arc, north positive
    double Lon = 0.0;        ///< minutes of arc, east positive
    UnixMs Time = 0;         ///< the boat's clock set right
    float Speed = NotTold;   ///< over ground as the receiver tells it, knots
    float Course = NotTold;  ///< the same, degrees true
};

/// All that a track file tells of one boat, whatever its format and whatever the period of the race.
struct TrackReading {
    std::string Format;  ///< as people call it: "GPX"
    std::string Device;  ///< what made the file; may be empty
    Refusal Refused = Refusal::None;
    std::vector<GpsFix> Fixes;   ///< as they stand in the file
    std::vector<Skipped> Left;   ///< what gave no fix, each reason once
    bool TellsVelocity = false;  ///< some fix has both speed and course
};

/// Told each boat (from 1) as its file is about to be read.
using TrackProgress = std::function<void(int boat)>;

/// The name in gpsdat of the file that a boat's BoatFile means: the whole of it where there is such a file,
/// else what stands before its last '#', if that is there. What follows the '#' chooses a recording.
std::string TrackFileName(const std::filesystem::path& appPath, const std::string& boatFile);

/// The path of that file, found without regard to case.
std::filesystem::path TrackPath(const std::filesystem::path& appPath, const std::string& boatFile);

/// All bytes of a track file; why not, where there are none: Missing, TooLarge or Broken.
Refusal FetchTrackFile(const std::filesystem::path& path, std::string& bytes);

/// A track file as it was read, whatever its format.
struct TrackFileReading {
    TrackFileContent Content;           ///< of a file of lines its format and its refusal alone
    std::optional<TrackReading> Lines;  ///< the one track of a file of lines
};

/// Reads the bytes of a file of that name. The kind of a file is found by its content. One of lines that
/// begin with T (TrackLineReader) and of 500 bytes or fewer gives no fix.
TrackFileReading ReadTrackBytes(const std::string& name, std::string_view bytes,
                                const ReadingProgress& progress = {});

/// Reads a file. Of a large one that begins like no track, such as a photograph, the head alone is read.
/// `room` is where its bytes are put: handed on from file to file, its memory is asked for once.
TrackFileReading ReadTrackFileAt(const std::filesystem::path& path, const std::string& name,
                                 std::string& room, const ReadingProgress& progress = {});

/// What a file tells of one boat: of the recording with that number, or of this boat (or the first without
/// regard to case), or of the first one where `choice` is empty.
TrackReading TakeRecording(const TrackFileContent& content, std::string_view choice);

/// Reads the tracks of boats below `appPath`/gpsdat, on all processors. A file of several recordings is
/// read once: "regatta.csv#3" is its third one, "regatta.csv#Alcyone" that of this boat (or the first
/// without regard to case), "regatta.csv" the first one. The kind of a file is found by its content. One of
/// lines that begin with T (TrackLineReader) and of 500 bytes or fewer gives no fix. Clock offsets are
/// added. A reading without a fix says why.
OneBased<TrackReading> ReadTracks(const std::filesystem::path& appPath,
                                  const OneBased<BoatEntry, MaxBoats>& boats,
                                  const TrackProgress& progress);

}  // namespace keelview
