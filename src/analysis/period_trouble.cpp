#include "analysis/period_trouble.h"

#include <algorithm>
#include <cmath>

#include "racedata/gps_track.h"

namespace keelview {

namespace {

constexpr CivilTime Hour = 3600;
constexpr CivilTime Day = 24 * Hour;

bool Meet(const Period& one, const Period& other) {
    return one.From <= other.To && other.From <= one.To;
}

Period Shifted(const Period& period, CivilTime seconds) {
    return {period.From + seconds, period.To + seconds};
}

/// The whole days that bring the middle of one period nearest to that of the other.
CivilTime DaysBetween(const Period& from, const Period& to) {
    const auto twice = static_cast<double>(to.From + to.To - from.From - from.To);
    return std::llround(twice / 2 / static_cast<double>(Day)) * Day;
}

/// The zone of a longitude, or that with summer time, in which the tracks meet the race.
std::optional<double> ZoneThatMeets(const PeriodTrouble& trouble, double hours, double longitude) {
    const int zone = TimeZoneOfLongitude(longitude);
    for (const double better : {zone, zone + 1}) {
        const auto shift = static_cast<CivilTime>((better - hours) * Hour);
        if (shift != 0 && Meet(trouble.Race, Shifted(trouble.Tracks, shift))) return better;
    }
    return std::nullopt;
}

}  // namespace

std::optional<PeriodTrouble> FindPeriodTrouble(const std::filesystem::path& appPath,
                                               const RaceControl& race) {
    const std::optional<CivilTime> start = race.Start.At() ? race.Start.At() : race.Finish.At();
    if (!start) return std::nullopt;
    RaceControl whole;  // without a period of its own it has that of its tracks
    whole.Boats = race.Boats;
    whole.TimeDiff = race.TimeDiff;
    Tracks tracks;
    TrackArea area;
    EarthScale scale;
    LoadAllTracks(appPath, whole, tracks, area, scale, {});
    const auto first =
        std::ranges::find_if(tracks.Boats, [](const Track& track) { return track.Count() > 0; });
    if (first == tracks.Boats.end() || !whole.DataFromTime || !whole.DataToTime) return std::nullopt;
    PeriodTrouble trouble;
    trouble.Race = {*start, race.Finish.At().value_or(*start)};
    trouble.Tracks = {*whole.DataFromTime, *whole.DataToTime};
    trouble.BetterTimeDiff = ZoneThatMeets(trouble, race.TimeDiff.value_or(0), first->TrackLon[1]);
    const CivilTime days = DaysBetween(trouble.Race, trouble.Tracks);
    trouble.OtherDay = days != 0 && Meet(Shifted(trouble.Race, days), trouble.Tracks);
    return trouble;
}

void TakeTrackPeriod(const Period& tracks, RaceControl& race) {
    race.Start = RaceTime(std::min(tracks.From + FirstFixToStart, tracks.To - 1));
    race.Finish = RaceTime(tracks.To);
}

}  // namespace keelview
