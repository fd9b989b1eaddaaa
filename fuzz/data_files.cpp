// Tracks, wind and coast. Whatever a file holds, what comes out of it is finite and of matching sizes.

#include <algorithm>
#include <cmath>
#include <filesystem>

#include "analysis/track_derivation.h"
#include "analysis/wind_at.h"
#include "racedata/coastline.h"
#include "racedata/gps_track.h"
#include "racedata/shore_file.h"
#include "racedata/wind_file.h"
#include "target.h"

namespace keelview::fuzz {

namespace {

void RequireSoundTrack(const Track& track) {
    for (const auto* column : {&track.TrackLat, &track.TrackLon, &track.TrackDist}) {
        Require(column->Count() == track.Count(), "each column of a track has its fixes");
        for (const double value : *column) Require(std::isfinite(value), "a track is finite");
    }
    for (int fix = 1; fix <= track.Count(); ++fix) {
        Require(std::isfinite(track.TrackSpeed(fix)), "a speed is finite");
        const double course = track.TrackCourse(fix);
        Require(course >= 0 && course < 360, "a course is 0 up to below 360");
    }
}

void LoadTrack(RaceControl& race) {
    race.Boats.Add({"a.trk", ""});
    Tracks tracks;
    TrackArea area;
    EarthScale scale;
    Require(LoadAllTracks(Tree().Root(), race, tracks, area, scale, {}).empty(), "the track is found");
    DeriveTracks(race, scale, tracks);
    RequireSoundTrack(tracks.Boats[1]);
    Require(std::isfinite(area.HomeCentreLat) && std::isfinite(area.AreaSpan) && area.AreaSpan >= 0.1,
            "the area is finite");
    const double bar = SpeedBarScale(tracks.TypicalSpeed);
    Require(std::isfinite(bar) && bar > 0, "the speed bars have a scale");
    Require(CoastCells({area.HomeCentreLat, area.HomeCentreLon, area.AreaSpan, scale.LonScale}).size() <=
                MaxCells,
            "cells stay within their limit");
}

void RequireSoundCoast(const Coast& coast) {
    for (const CoastLine& line : coast) {
        Require(!line.Points.empty(), "a stretch of coast has points");
        for (const Position& at : line.Points)
            Require(std::isfinite(at.Lat) && std::isfinite(at.Lon), "the coast is finite");
    }
}

}  // namespace

void ReadTrack(std::string_view input) {
    Tree().Write("gpsdat/a.trk", AsTrack(input));
    RaceControl open;
    open.TimeDiff = 9;
    LoadTrack(open);
    RaceControl timed;
    timed.TimeDiff = -32768;
    timed.RaceDuration = 600;
    timed.Start = RaceTime("2000/11/09 12:30:00");
    timed.DataFromTime = ParseDateTime("2000/11/09 12:26:30");
    timed.Finish = RaceTime("2000/11/09 12:40:00");
    timed.DataToTime = timed.Finish.At();
    LoadTrack(timed);
}

void ReadWind(std::string_view input) {
    Tree().Write("winddat/w.csv", input);
    RaceControl race;
    race.WindFileName = "w.csv";
    race.Start = RaceTime("2004/08/05 12:30:00");
    WindData wind;
    LoadWindFile(Tree().Root(), race, wind);
    for (const double t : {-1e9, -30.5, 0.0, 59.0, 60.0, 1e9}) {
        const Wind now = WindAt(race, wind, t);
        Require(std::isfinite(now.DirectionTrue) && std::isfinite(now.Speed), "the wind is finite");
    }
    Require(!SaveWindFile(Tree().Root(), race, wind), "what was read can be written");
    WindData again;
    LoadWindFile(Tree().Root(), race, again);
    Require(std::ranges::equal(again, wind, {}, &WindSample::WindTime, &WindSample::WindTime),
            "the times of the wind read back");
}

void ReadCoast(std::string_view input) {
    Tree().Write("coastline/5339.cst", input);
    RequireSoundCoast(LoadCoastlines(Tree().Root(), {"5339"}, {2120, 8370, 20, 0.8}));
    std::filesystem::remove(Tree().Root() / "coastline/5339.cst");
}

void ReadShores(std::string_view input) {
    const int tile = ShoreTileAt(2120, 8340);
    for (const ShoreLine& line : ShoreLinesOf(tile, input, 1000)) {
        Require(line.Points.size() >= 2 && line.Points.size() <= 1000, "a line has points up to the limit");
        for (const Position& at : line.Points)
            Require(at.Lat >= 2120 && at.Lat <= 2160 && at.Lon >= 8340 && at.Lon <= 8400,
                    "a shore lies in its tile");
    }
    const CoastArea area{2140, 8370, 40, 0.8};
    Tree().Write("coastline/world.shore", input);
    const Coast coast = LoadCoastlines(Tree().Root(), {}, area);
    RequireSoundCoast(coast);
    Tree().Write("coastline/world.shore", CutShores(Tree().Root(), {area}));
    Require(CoastPoints(LoadCoastlines(Tree().Root(), {}, area)) == CoastPoints(coast),
            "a cut of a shore file has the same coast");
    std::filesystem::remove(Tree().Root() / "coastline/world.shore");
}

}  // namespace keelview::fuzz
