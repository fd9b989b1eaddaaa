#include "analysis/race_numbers.h"

#include <algorithm>

#include "base/numbers.h"

namespace keelview {

namespace {

constexpr int HomeTimeDiff = 9;           // hours
constexpr double SpanMarginSeconds = 60;  // beyond race and pre-start

}  // namespace

void SettleTimeDiff(RaceControl& race) {
    if (race.TimeDiff == 0) race.TimeDiff = HomeTimeDiff;
}

void SettleReplaySpan(RaceControl& race) {
    race.ReplaySpan = FloorToInt(race.RaceDuration + race.PreStartSeconds + SpanMarginSeconds);
}

void LoadRaceWind(const std::filesystem::path& appPath, RaceControl& race, WindData& wind) {
    wind = {};
    if (WindFileExists(appPath, race))
        LoadWindFile(appPath, race, wind);
    else
        race.WindFileName.clear();
}

int LatestFixTime(const RaceControl& race, const Tracks& tracks) {
    int latest = 0;
    for (int boat = 1; boat <= race.BoatCount; ++boat)
        if (const int count = tracks.TrackPointCount[boat]; count > 0)
            latest = std::max(latest, tracks.TrackTime[boat][count]);
    return latest;
}

bool HasAnyFix(const RaceControl& race, const Tracks& tracks) {
    const auto& counts = tracks.TrackPointCount;
    return std::any_of(counts.begin() + 1, counts.begin() + 1 + race.BoatCount,
                       [](int count) { return count > 0; });
}

void FindAllPasses(const RaceControl& race, const Tracks& tracks, const EarthScale& scale,
                   MarkPasses& passes) {
    passes = {};
    FindMarkPassTimes(race, tracks, scale, passes);
    ComputeMarkPassDist(race, tracks, passes);
}

std::vector<int> FinishOrder(const RaceControl& race, const MarkPasses& passes) {
    std::vector<int> order;
    if (race.CourseCount < 1) return order;
    const auto finish = [&](int boat) { return passes.MarkPassTime[boat][race.CourseCount]; };
    for (int boat = 1; boat <= race.BoatCount; ++boat)
        if (finish(boat) > 0) order.push_back(boat);
    std::stable_sort(order.begin(), order.end(), [&](int a, int b) { return finish(a) < finish(b); });
    return order;
}

RaceNumbers LoadRaceNumbers(const std::filesystem::path& appPath, const std::string& raceFileName) {
    RaceNumbers numbers;
    RaceControl& race = numbers.race;
    race.RaceFileName = raceFileName;
    numbers.report = ReadRaceFile(appPath, race);
    SettleTimeDiff(race);
    LoadAllTracks(appPath, race, numbers.tracks, numbers.area, numbers.scale, {});
    SettleReplaySpan(race);
    LoadRaceWind(appPath, race, numbers.wind);
    DeriveTracks(race, numbers.scale, numbers.tracks);
    if (HasAnyFix(race, numbers.tracks)) {
        const CoastArea area{numbers.area.HomeCentreLat, numbers.area.HomeCentreLon, numbers.area.AreaSpan,
                             numbers.scale.LonScale};
        numbers.coastCells = CoastCells(area);
        numbers.coast = LoadCoastlines(appPath, numbers.coastCells, area);
    }
    FindAllPasses(race, numbers.tracks, numbers.scale, numbers.passes);
    return numbers;
}

}  // namespace keelview
