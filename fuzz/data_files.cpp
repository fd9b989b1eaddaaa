// Tracks, wind and coast. Whatever a file holds, what comes out of it is finite and of matching sizes.

#include <cmath>
#include <cstdint>
#include <memory>
#include <vector>

#include "analysis/track_derivation.h"
#include "analysis/wind_at.h"
#include "racedata/coastline.h"
#include "racedata/gps_track.h"
#include "racedata/wind_file.h"
#include "target.h"

namespace keelview::fuzz {

namespace {

bool AllFinite(const std::vector<double>& values) {
    for (const double value : values)
        if (!std::isfinite(value)) return false;
    return true;
}

void RequireSoundTrack(const Tracks& tracks, int boat) {
    const auto points = static_cast<std::size_t>(tracks.TrackPointCount[boat]);
    for (const auto* column :
         {&tracks.TrackLat, &tracks.TrackLon, &tracks.TrackDist, &tracks.TrackSpeed, &tracks.TrackCourse}) {
        Require((*column)[boat].size() == points + 1, "each array of a track has its points");
        Require(AllFinite((*column)[boat]), "a track is finite");
    }
    Require(tracks.TrackTime[boat].size() == points + 1, "each point has its time");
    for (const double course : tracks.TrackCourse[boat])
        Require(course >= 0 && course < 360, "a course is 0 up to below 360");
}

void LoadTrack(RaceControl& race) {
    race.BoatCount = 1;
    race.BoatFile[1] = "a.trk";
    Tracks tracks;
    TrackArea area;
    EarthScale scale;
    Require(LoadAllTracks(Tree().Root(), race, tracks, area, scale, {}).empty(), "the track is found");
    DeriveTracks(race, scale, tracks);
    RequireSoundTrack(tracks, 1);
    Require(std::isfinite(area.HomeCentreLat) && std::isfinite(area.AreaSpan) && area.AreaSpan >= 0.1,
            "the area is finite");
    const double bar = SpeedBarScale(tracks.TypicalSpeed);
    Require(std::isfinite(bar) && bar > 0, "the speed bars have a scale");
    Require(CoastCells({area.HomeCentreLat, area.HomeCentreLon, area.AreaSpan, scale.LonScale}).size() <=
                MaxCells,
            "cells stay within their limit");
}

}  // namespace

void ReadTrack(std::string_view input) {
    Tree().Write("gpsdat/a.trk", AsTrack(input));
    auto open = std::make_unique<RaceControl>();
    open->TimeDiff = 9;
    LoadTrack(*open);
    auto timed = std::make_unique<RaceControl>();
    timed->TimeDiff = -32768;
    timed->RaceDuration = 600;
    timed->StartTimeText = "2000/11/09 12:30:00";
    timed->DataFromTime = ParseDateTime("2000/11/09 12:26:30");
    timed->FinishTimeText = "2000/11/09 12:40:00";
    timed->DataToTime = ParseDateTime(timed->FinishTimeText);
    LoadTrack(*timed);
}

void ReadWind(std::string_view input) {
    Tree().Write("winddat/w.csv", input);
    auto race = std::make_unique<RaceControl>();
    race->WindFileName = "w.csv";
    race->StartTimeText = "2004/08/05 12:30:00";
    WindData wind;
    LoadWindFile(Tree().Root(), *race, wind);
    const auto samples = static_cast<std::size_t>(wind.WindCount);
    Require(wind.WindTimes.size() == samples + 1 && wind.WindSpeeds.size() == samples + 1 &&
                wind.WindDirections.size() == samples + 1,
            "each array of the wind has its samples");
    for (const double t : {-1e9, -30.5, 0.0, 59.0, 60.0, 1e9}) {
        const WindSample sample = WindAt(*race, wind, t);
        Require(std::isfinite(sample.DirectionTrue) && std::isfinite(sample.Speed), "the wind is finite");
    }
    Require(!SaveWindFile(Tree().Root(), *race, wind), "what was read can be written");
    WindData again;
    LoadWindFile(Tree().Root(), *race, again);
    Require(again.WindTimes == wind.WindTimes, "the times of the wind read back");
}

void ReadCoast(std::string_view input) {
    Tree().Write("coastline/5339.cst", input);
    const Coast coast = LoadCoastlines(Tree().Root(), {"5339"}, {2120, 8370, 20, 0.8});
    const auto points = static_cast<std::size_t>(coast.CoastCount);
    Require(coast.CoastLat.size() == points + 1 && coast.CoastLon.size() == points + 1,
            "each array of the coast has its points");
    Require(AllFinite(coast.CoastLat) && AllFinite(coast.CoastLon), "the coast is finite");
    Require(points == 0 || coast.CoastLat[1] < 0, "the coast begins with the first point of a polyline");
}

}  // namespace keelview::fuzz
