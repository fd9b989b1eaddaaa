#include "analysis/race_plan.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>
#include <tuple>
#include <utility>

#include "analysis/clock_offsets.h"
#include "analysis/plan_names.h"
#include "base/angles.h"
#include "base/numbers.h"
#include "base/point.h"
#include "base/strings.h"

namespace keelview {

namespace {

constexpr std::size_t MostClocks = 2 * MaxBoats;      // tracks whose clocks are compared
constexpr double RoomMetres = MetresPerNauticalMile;  // about the tracks, where marks are looked for
constexpr double SameMarkMetres = 30;
constexpr double FarthestZone = 14;  // hours

/// A recording by the places of its file and of it there.
struct Place {
    std::size_t File, Track;
};

const FoundTrack& TrackAt(const std::vector<FoundFile>& files, const Place& place) {
    return files[place.File].Tracks[place.Track];
}

/// Sets the files aside that were refused.
void SetRefusedAside(std::vector<FoundFile>& files, RacePlan& plan) {
    for (const FoundFile& file : files)
        if (file.Refused != Refusal::None) plan.Unused.push_back({file.Name, file.Refused, {}});
    std::erase_if(files, [](const FoundFile& file) { return file.Refused != Refusal::None; });
}

/// The recordings, those with the most fixes first.
std::vector<Place> RichestFirst(const std::vector<FoundFile>& files) {
    std::vector<Place> places;
    for (std::size_t file = 0; file < files.size(); ++file)
        for (std::size_t track = 0; track < files[file].Tracks.size(); ++track)
            places.push_back({file, track});
    std::ranges::stable_sort(places, std::greater{},
                             [&](const Place& place) { return TrackAt(files, place).Fixes; });
    return places;
}

/// Takes out each recording that is there in a richer form, and the files of which nothing is left.
void DropTwins(std::vector<FoundFile>& files, RacePlan& plan) {
    std::vector<Place> kept;
    std::vector<std::string> sameAs(files.size());
    for (const Place& place : RichestFirst(files)) {
        const auto twin = std::ranges::find_if(kept, [&](const Place& other) {
            return IsSameTrack(TrackAt(files, place), TrackAt(files, other));
        });
        if (twin == kept.end())
            kept.push_back(place);
        else
            sameAs[place.File] = files[twin->File].Name;
    }
    std::ranges::sort(kept, {}, [](const Place& place) { return std::pair(place.File, place.Track); });
    std::vector<FoundFile> left;
    for (std::size_t file = 0; file < files.size(); ++file) {
        std::vector<FoundTrack> tracks;
        for (const Place& place : kept)
            if (place.File == file) tracks.push_back(std::move(files[file].Tracks[place.Track]));
        files[file].Tracks = std::move(tracks);
        if (files[file].Tracks.empty())
            plan.Unused.push_back({files[file].Name, Refusal::None, sameAs[file]});
        else
            left.push_back(std::move(files[file]));
    }
    files = std::move(left);
}

void AddBoats(std::vector<FoundFile>&& files, RacePlan& plan) {
    const std::vector<std::string> names = BoatNames(files);
    const std::vector<std::string> targets = TargetNames(files);
    for (std::size_t file = 0; file < files.size(); ++file) {
        FoundFile& found = files[file];
        for (FoundTrack& track : found.Tracks) {
            PlannedBoat boat;
            boat.Name = names[plan.Boats.size()];
            boat.File = file;
            boat.Track = std::move(track);
            plan.Boats.push_back(std::move(boat));
        }
        plan.Files.push_back({std::move(found.Name), std::move(found.Source), std::move(found.Format),
                              targets[file], std::move(found.Hints)});
    }
}

void ChooseFleet(RacePlan& plan) {
    std::vector<const FoundTrack*> tracks;
    tracks.reserve(plan.Boats.size());
    for (const PlannedBoat& boat : plan.Boats) tracks.push_back(&boat.Track);
    const std::vector<FleetPlace> places = FindFleet(tracks);
    int taken = 0;
    for (std::size_t boat = 0; boat < places.size(); ++boat) {
        FleetPlace& lies = plan.Boats[boat].Lies;
        lies = places[boat];
        if (lies.Why == LeftOut::No && ++taken > MaxBoats) lies.Why = LeftOut::TooMany;
        plan.Boats[boat].Taken = lies.Why == LeftOut::No;
    }
}

/// Compares the clocks of the fleet and of those that were on its water at another time.
void CompareClocks(RacePlan& plan) {
    std::vector<PlannedBoat*> boats;
    for (const LeftOut why : {LeftOut::No, LeftOut::OtherTime})
        for (PlannedBoat& boat : plan.Boats)
            if (boat.Lies.Why == why && boats.size() < MostClocks) boats.push_back(&boat);
    std::vector<const FoundTrack*> tracks;
    tracks.reserve(boats.size());
    for (const PlannedBoat* boat : boats) tracks.push_back(&boat->Track);
    const auto clocks = ProposeClocks(tracks);
    for (std::size_t i = 0; i < boats.size(); ++i) boats[i]->ProposedClock = clocks[i];
}

std::vector<const PlannedBoat*> TakenBoats(const RacePlan& plan) {
    std::vector<const PlannedBoat*> boats;
    for (const PlannedBoat& boat : plan.Boats)
        if (boat.Taken) boats.push_back(&boat);
    return boats;
}

/// The hints of the files that boats are taken from, each once.
std::vector<const RaceHints*> HintsOf(const RacePlan& plan, const std::vector<const PlannedBoat*>& boats) {
    std::vector<const RaceHints*> hints;
    for (const PlannedBoat* boat : boats) {
        const RaceHints* const told = &plan.Files[boat->File].Hints;
        if (std::ranges::find(hints, told) == hints.end()) hints.push_back(told);
    }
    return hints;
}

void SettlePeriod(const std::vector<const PlannedBoat*>& boats, RacePlan& plan) {
    std::vector<UnixMs> firsts;
    std::vector<UnixMs> lasts;
    for (const PlannedBoat* boat : boats) {
        firsts.push_back(boat->Track.First + ClockMs(*boat));
        lasts.push_back(boat->Track.Last + ClockMs(*boat));
    }
    std::ranges::sort(firsts);
    std::ranges::sort(lasts, std::greater{});
    const std::size_t second = boats.size() > 1 && firsts[1] < lasts[1] ? 1 : 0;
    plan.Begin = firsts[second];
    plan.End = lasts[second];
}

/// Hours from UTC that all files tell that tell any; else those of the place.
double TimeDiffOf(const std::vector<const RaceHints*>& hints, const PlannedBoat& boat) {
    std::optional<double> told;
    for (const RaceHints* each : hints) {
        if (!each->ZoneHours) continue;
        const double hours = *each->ZoneHours;
        if (std::abs(hours) > FarthestZone || hours * 4 != std::round(hours * 4) ||
            told.value_or(hours) != hours)
            return TimeZoneOfLongitude(boat.Track.Way.front().Lon);
        told = hours;
    }
    return told.value_or(TimeZoneOfLongitude(boat.Track.Way.front().Lon));
}

/// The gun that devices heard in the period, of several the one in the middle.
void SettleStart(const std::vector<const RaceHints*>& hints, RacePlan& plan) {
    std::vector<UnixMs> guns;
    for (const RaceHints* each : hints)
        if (each->Gun && *each->Gun >= plan.Begin && *each->Gun < plan.End) guns.push_back(*each->Gun);
    plan.Start.reset();
    plan.Finish.reset();
    if (guns.empty()) return;
    std::ranges::sort(guns);
    plan.Start = LocalSecond(plan, guns[guns.size() / 2]);
    plan.Finish = LocalSecond(plan, plan.End + 999);
}

/// The water that boats sail on: where their tracks are, and some room about.
class Water {
  public:
    explicit Water(const std::vector<const PlannedBoat*>& boats)
        : meridian_(boats.front()->Track.Way.front().Lon),
          scale_(ComputeEarthScale(boats.front()->Track.Way.front().Lat)) {
        for (const PlannedBoat* boat : boats)
            for (const GpsFix& fix : boat->Track.Way) box_.Add(OnPlane({fix.Lat, fix.Lon}));
        box_ = box_.Grown(RoomMetres);
    }

    bool Holds(const Position& at) const {
        const Point place = OnPlane(at);
        return place.X >= box_.Low.X && place.X <= box_.High.X && place.Y >= box_.Low.Y &&
               place.Y <= box_.High.Y;
    }
    double Metres(const Position& from, const Position& to) const {
        return MetresBetween(scale_, from, to);
    }

  private:
    Point OnPlane(const Position& at) const {
        return {LongitudeNear(at.Lon, meridian_) * scale_.MetresPerLonMinute,
                at.Lat * scale_.MetresPerLatMinute};
    }

    double meridian_;
    EarthScale scale_;
    Bounds box_;
};

Position PositionOf(const NamedPlace& place) {
    return {RoundDecimals(place.Lat * 60, 6), RoundDecimals(place.Lon * 60, 6)};
}

void SettleCourse(const std::vector<const RaceHints*>& hints, const Water& water, RacePlan& plan) {
    plan.Marks.Clear();
    plan.StartLine.Clear();
    for (const RaceHints* each : hints) {
        for (const NamedPlace& place : each->Marks) {
            const Position at = PositionOf(place);
            const bool known = std::ranges::any_of(
                plan.Marks, [&](const Mark& mark) { return water.Metres(mark.At(), at) < SameMarkMetres; });
            if (!known && water.Holds(at))
                plan.Marks.Add({TextNumber(at.Lat), TextNumber::Longitude(at.Lon)});
        }
        if (!plan.StartLine.Empty() || !each->LinePin || !each->LineBoat) continue;
        const Position pin = PositionOf(*each->LinePin);
        const Position boat = PositionOf(*each->LineBoat);
        if (water.Holds(pin) && water.Holds(boat))
            plan.StartLine.Add({TextNumber(pin.Lat), TextNumber::Longitude(pin.Lon), TextNumber(boat.Lat),
                                TextNumber::Longitude(boat.Lon)});
    }
}

/// A title that tells the day, and the file name that goes with it.
void SettleTitle(RacePlan& plan) {
    std::vector<std::string> names;
    for (const PlannedBoat* boat : TakenBoats(plan)) names.push_back(plan.Files[boat->File].Name);
    std::string words = CommonTitle(names);
    std::string day = DateText(LocalSecond(plan, plan.Begin));
    std::string fileDay = day;
    std::ranges::replace(fileDay, '/', '-');
    const bool tellsYear = words.find(day.substr(0, 4)) != std::string::npos;
    const auto dated = [&](const std::string& date) {
        if (words.empty()) return date;
        return tellsYear ? words : words + " " + date;
    };
    plan.Title = dated(day);
    plan.RaceFileName = SafeFileName(dated(fileDay)) + ".txt";
}

}  // namespace

RacePlan PlanRace(std::vector<FoundFile> files) {
    RacePlan plan;
    std::ranges::sort(files, {}, [](const FoundFile& file) {
        return std::tuple(UpperAscii(file.Name), file.Name, file.Source.string());
    });
    SetRefusedAside(files, plan);
    DropTwins(files, plan);
    AddBoats(std::move(files), plan);
    ChooseFleet(plan);
    CompareClocks(plan);
    SettleCourseAndTimes(plan);
    if (!plan.Boats.empty()) SettleTitle(plan);
    return plan;
}

void SettleCourseAndTimes(RacePlan& plan) {
    const std::vector<const PlannedBoat*> boats = TakenBoats(plan);
    if (boats.empty()) return;
    const std::vector<const RaceHints*> hints = HintsOf(plan, boats);
    SettlePeriod(boats, plan);
    plan.TimeDiff = TimeDiffOf(hints, *boats.front());
    SettleStart(hints, plan);
    SettleCourse(hints, Water(boats), plan);
}

void MoveClock(RacePlan& plan, double timeDiff) {
    const auto later = static_cast<CivilTime>((timeDiff - plan.TimeDiff) * 3600);
    for (std::optional<CivilTime>* const time : {&plan.Start, &plan.Finish})
        if (*time) **time += later;
    plan.TimeDiff = timeDiff;
}

CivilTime LocalSecond(const RacePlan& plan, UnixMs time) {
    return static_cast<CivilTime>(std::floor(static_cast<double>(time) / 1000 + plan.TimeDiff * 3600));
}

UnixMs MomentOf(const RacePlan& plan, CivilTime local) {
    return local * 1000 - static_cast<UnixMs>(plan.TimeDiff * 3600 * 1000);
}

UnixMs ClockMs(const PlannedBoat& boat) {
    return static_cast<UnixMs>(std::round(boat.ClockOffset * 1000));
}

std::string BoatFileOf(const RacePlan& plan, const PlannedBoat& boat) {
    const std::string& target = plan.Files[boat.File].Target;
    return boat.Track.Alone ? target : target + "#" + std::to_string(boat.Track.Number);
}

RaceControl PlannedRace(const RacePlan& plan) {
    RaceControl race;
    race.RaceFileName = plan.RaceFileName;
    race.RaceTitle1 = plan.Title;
    race.BoatLength = StandardBoatLength;
    race.TimeDiff = plan.TimeDiff;
    if (plan.Start) race.Start = RaceTime(*plan.Start);
    if (plan.Finish) race.Finish = RaceTime(*plan.Finish);
    for (const PlannedBoat* boat : TakenBoats(plan))
        race.Boats.Add({BoatFileOf(plan, *boat), boat->Name, boat->ClockOffset});
    race.Marks = plan.Marks;
    race.Lines = plan.StartLine;
    return race;
}

}  // namespace keelview
