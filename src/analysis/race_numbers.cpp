#include "analysis/race_numbers.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "analysis/track_derivation.h"

namespace keelview {

namespace {

/// Hours from UTC of a race whose file does not say them: those of the place where the tracks tell its
/// times too, those of the home waters where its start was typed, as old files have it.
double UnsaidTimeDiff(const RaceControl& race, const OneBased<TrackReading>& readings) {
    const auto withFix =
        std::ranges::find_if(readings, [](const TrackReading& reading) { return !reading.Fixes.empty(); });
    if (race.Start.At() || withFix == readings.end()) return HomeTimeDiff;
    return TimeZoneOfLongitude(withFix->Fixes.front().Lon);
}

/// The race of the one boat of SingleTrackFile. Nothing of the race before stays but what every race takes
/// over, and what was set for the track on the display.
RaceControl SingleTrackRace(const RaceControl& before) {
    RaceControl race;
    race.SingleTrackFile = before.SingleTrackFile;
    race.MagVariation = before.MagVariation;
    race.BoatLength = before.BoatLength;
    race.TimeDiff = before.TimeDiff;
    race.DataFromTime = before.DataFromTime;
    race.DataToTime = before.DataToTime;
    if (race.SingleTrackFile.empty()) return race;
    race.Start = before.Start;
    race.Finish = before.Finish;
    race.Marks = before.Marks;
    race.Lines = before.Lines;
    race.CourseOrder = before.CourseOrder;
    race.HandPasses = before.HandPasses;
    race.WindDirection = before.WindDirection;
    race.NorthUp = before.NorthUp;
    race.Boats.Add({race.SingleTrackFile, race.SingleTrackFile.substr(0, race.SingleTrackFile.find('.'))});
    return race;
}

/// The period by start and finish as they were given or as the tracks told them; a single track is that
/// period and nothing else.
void SettlePeriod(bool isSingle, RaceControl& race) {
    const auto& start = race.Start.At();
    const auto& finish = race.Finish.At();
    if (!start || !finish) return;
    race.RaceDuration = DurationBetween(*start, *finish);
    if (!isSingle) return;
    race.DataFromTime = start;
    race.DataToTime = finish;
}

/// Marks and lines are counted from where the boats sail, as their tracks are.
void CountFrom(double meridian, RaceControl& race) {
    for (Mark& mark : race.Marks) mark.MarkLon.CountFrom(meridian);
    for (Line& line : race.Lines) {
        line.LineLon1.CountFrom(meridian);
        line.LineLon2.CountFrom(meridian);
    }
}

void LoadCoast(const std::filesystem::path& appPath, RaceNumbers& numbers) {
    const CoastArea area = CoastAreaOf(numbers);
    const std::vector<std::string> cells = CoastCells(area);
    numbers.race.MapFile = {cells.begin(), cells.end()};
    numbers.coast = LoadCoastlines(appPath, cells, area);
}

}  // namespace

LoadResult LoadRace(const std::filesystem::path& appPath, RaceNumbers& numbers,
                    const TrackProgress& progress) {
    const RaceControl before = std::move(numbers.race);
    const bool isSingle = before.RaceFileName.empty();
    numbers = {};
    RaceControl& race = numbers.race;
    race = isSingle ? SingleTrackRace(before) : before;
    if (!isSingle) numbers.report = ReadRaceFile(appPath, race);
    OneBased<TrackReading> readings = ReadTracks(appPath, race.Boats, progress);
    if (!race.TimeDiff) race.TimeDiff = UnsaidTimeDiff(race, readings);
    TakeTracks(std::move(readings), race, numbers.tracks, numbers.area, numbers.scale);
    LoadResult result;
    result.Missing = FirstMissingTrack(appPath, race, numbers.tracks);
    CountFrom(numbers.area.HomeCentreLon, race);
    SettlePeriod(isSingle, race);
    if (HasWindFile(race)) LoadWindFile(appPath, race, numbers.wind);
    DeriveTracks(race, numbers.scale, numbers.tracks);
    const bool hasFix = HasAnyFix(numbers.tracks);
    if (hasFix) LoadCoast(appPath, numbers);
    FindAllPasses(race, numbers.tracks, numbers.scale, numbers.passes);
    if (!isSingle && !numbers.report.Opened)
        result.Outcome = LoadOutcome::NoRaceFile;
    else if (!result.Missing.empty())
        result.Outcome = LoadOutcome::NoTrackFile;
    else if (!hasFix)
        result.Outcome = LoadOutcome::NoFix;
    return result;
}

CoastArea CoastAreaOf(const RaceNumbers& numbers) {
    return {numbers.area.HomeCentreLat, numbers.area.HomeCentreLon, numbers.area.AreaSpan,
            numbers.scale.LonScale};
}

int LatestFixTime(const Tracks& tracks) {
    int latest = 0;
    for (const Track& track : tracks.Boats)
        if (track.Count() > 0)
            latest = std::max(latest, static_cast<int>(std::ceil(track.TrackTime.Last())));
    return latest;
}

bool HasAnyFix(const Tracks& tracks) {
    return std::ranges::any_of(tracks.Boats, [](const Track& track) { return track.Count() > 0; });
}

std::vector<int> FinishOrder(const MarkPasses& passes) {
    std::vector<int> order;
    for (int boat = 1; boat <= passes.MarkPassTime.Count(); ++boat)
        if (FinishTime(passes, boat) >= 0) order.push_back(boat);
    std::ranges::stable_sort(order, {}, [&](int boat) { return FinishTime(passes, boat); });
    return order;
}

}  // namespace keelview
