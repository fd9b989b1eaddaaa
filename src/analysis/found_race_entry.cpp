#include "analysis/found_race_entry.h"

#include <cmath>

#include "base/numbers.h"

namespace keelview {

namespace {

constexpr int Decimals = 5;  // of minutes of arc: two centimetres

TextNumber LatOf(const Position& at) {
    return TextNumber(RoundDecimals(at.Lat, Decimals));
}

TextNumber LonOf(const Position& at) {
    return TextNumber::Longitude(RoundDecimals(at.Lon, Decimals));
}

}  // namespace

void TakeFoundRace(const FoundRace& found, CivilTime clock, RaceControl& race) {
    race.Start = RaceTime(clock + found.Gun);
    race.Finish = RaceTime();
    if (found.Finish) {
        const CivilTime last = clock + *found.Finish;
        race.Finish = RaceTime(last + 60 - last % 60);
    }
    race.Marks.Clear();
    for (const Position& at : found.Marks) race.Marks.Add({LatOf(at), LonOf(at)});
    race.Lines.Clear();
    for (const auto& [left, right] : found.Lines)
        race.Lines.Add({LatOf(left), LonOf(left), LatOf(right), LonOf(right)});
    race.CourseOrder.Clear();
    for (const std::string& entry : found.Course) race.CourseOrder.Add(entry);
    race.HandPasses.Clear();
    if (found.Wind) race.WindDirection = WrapDirection(std::round(*found.Wind));
}

FinderHints HintsOf(const RaceControl& race, CivilTime clock) {
    FinderHints hints;
    hints.Clock = clock;
    if (race.WindDirection != 0) hints.Wind = race.WindDirection;
    return hints;
}

}  // namespace keelview
