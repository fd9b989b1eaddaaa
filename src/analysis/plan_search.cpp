#include "analysis/plan_search.h"

#include <cmath>
#include <utility>

namespace keelview {

PlanSearch::PlanSearch(const RacePlan& plan) : gun_(plan.Start) {
    race_.RaceFileName = plan.RaceFileName;
    race_.TimeDiff = plan.TimeDiff;
    for (const Line& line : plan.StartLine) hints_.Line = std::pair(line.FirstEnd(), line.SecondEnd());
    files_.resize(plan.Files.size());
    int boats = 0;
    for (const PlannedBoat& boat : plan.Boats)
        if (boat.Taken) files_[boat.File].Boats.push_back({++boats, boat.Track.Number, ClockMs(boat)});
    for (std::size_t i = 0; i < files_.size(); ++i) {
        files_[i].Name = plan.Files[i].Name;
        files_[i].Source = plan.Files[i].Source;
    }
    std::erase_if(files_, [](const File& file) { return file.Boats.empty(); });
    readings_.Resize(boats);
}

bool PlanSearch::DoNext() {
    if (read_ < files_.size()) {
        Read(files_[read_++]);
        return true;
    }
    Find();
    return false;
}

void PlanSearch::Read(const File& file) {
    std::string room;
    TrackFileReading read = ReadTrackFileAt(file.Source, file.Name, room);
    for (const Wanted& boat : file.Boats) {
        TrackReading& reading = readings_[boat.Boat];
        reading =
            read.Lines ? std::move(*read.Lines) : TakeRecording(read.Content, std::to_string(boat.Number));
        for (GpsFix& fix : reading.Fixes) fix.Time += boat.Later;
    }
}

void PlanSearch::Find() {
    Tracks tracks;
    TrackArea area;
    EarthScale scale;
    TakeTracks(std::exchange(readings_, {}), race_, tracks, area, scale);
    hints_.Clock = race_.Start.At().value_or(0);
    if (gun_) hints_.Gun = static_cast<int>(*gun_ - hints_.Clock);
    finding_ = {FindRaces(tracks, scale, hints_), hints_.Clock};
}

}  // namespace keelview
