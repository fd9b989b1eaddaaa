#include "analysis/race_draft.h"

#include <algorithm>
#include <cmath>

#include "analysis/medians.h"
#include "analysis/needless_marks.h"
#include "base/angles.h"

namespace keelview {

namespace {

constexpr int AfterGun = 20;      // seconds in which no mark is looked for
constexpr int LongestBeat = 900;  // seconds that the first leg's turns are taken from

/// The wind as the turns of a beat tell it: the direction that most of them go through, within 60 degrees
/// of the way of the fleet; nothing where there are too few of them.
std::optional<double> WindOf(const SailedDay& day, const FoundStart& start) {
    Way ahead;
    for (const int boat : start.Boats) {
        const WayBySecond& way = day.Ways[static_cast<std::size_t>(boat)];
        const auto from = way.At(start.Gun + 10), to = way.At(start.Gun + 130);
        if (from && to) ahead = ahead + (*to - *from);
    }
    const Way normal = start.Line.Ahead();
    const double middle = (ahead * (1 / std::max(ahead.Length(), 1e-9)) + normal).Bearing();
    std::vector<double> off;
    for (const int boat : start.Boats)
        for (const Corner& corner : day.Corners[static_cast<std::size_t>(boat)]) {
            if (corner.Time < start.Gun + AfterGun || corner.Time > start.Gun + LongestBeat) continue;
            const double turn = std::abs(corner.Turn);
            const double angle = TurnBetween(middle, corner.Middle());
            if (turn > 60 && turn < 125 && std::abs(angle) < 60) off.push_back(angle);
        }
    if (off.size() < std::max<std::size_t>(3, start.Boats.size() / 3)) return {};
    double best = 0;
    int most = 0;
    for (double about = -55; about <= 55; about += 2.5) {
        const auto near = static_cast<int>(
            std::ranges::count_if(off, [&](double each) { return std::abs(each - about) < 12; }));
        if (near > most) most = near, best = about;
    }
    std::erase_if(off, [&](double each) { return std::abs(each - best) > 18; });
    return WrapDirection(std::fmod(middle + MedianOf(std::move(off)) + 720, 360));
}

/// The corners of a start's boats from the gun to the end, each boat counted from 0 among them.
std::vector<Corner> CornersOf(const SailedDay& day, const RaceDraft& draft) {
    std::vector<Corner> corners;
    for (std::size_t i = 0; i < draft.Start.Boats.size(); ++i)
        for (Corner corner : day.Corners[static_cast<std::size_t>(draft.Start.Boats[i])])
            if (corner.Time > draft.Start.Gun + AfterGun && corner.Time < draft.End) {
                corner.Boat = static_cast<int>(i);
                corners.push_back(corner);
            }
    return corners;
}

void FindFinishOf(const SailedDay& day, RaceDraft& draft) {
    std::vector<Finisher> finishers;
    for (std::size_t i = 0; i < draft.Course.Times.size(); ++i) {
        const auto& times = draft.Course.Times[i];
        if (times.empty() || times.size() < draft.Course.Places.size() || !times.back()) continue;
        const auto boat = static_cast<std::size_t>(draft.Start.Boats[i]);
        finishers.push_back({&day.Ways[boat], &day.Corners[boat], *times.back()});
    }
    draft.Finish = FindFinish(finishers, draft.Start.Line, draft.Wind, draft.End);
}

bool HasLine(const FoundFinish& finish) {
    return finish.Where == FoundFinish::Kind::StartLine || finish.Where == FoundFinish::Kind::OwnLine;
}

/// Metres from a line to a place.
double DistanceTo(const FoundLine& line, Way at) {
    const double length = (line.Right - line.Left).Length();
    const Way nearest =
        line.Left + line.Along() * std::clamp((at - line.Left).Along(line.Along()), 0.0, length);
    return (at - nearest).Length();
}

/// Where the course leads: from the middle of the start line by its places to the finish, where it has one.
std::vector<Way> WayPoints(const RaceDraft& draft) {
    const std::vector<int> places = PlacesOf(draft.Marks);
    std::vector<Way> points{(draft.Start.Line.Left + draft.Start.Line.Right) * 0.5};
    for (const int place : draft.Course.Places) {
        const auto mark = static_cast<std::size_t>(std::ranges::find(places, place) - places.begin());
        const int partner = draft.Marks[mark].Partner;
        const Way other = draft.Marks[partner < 0 ? mark : static_cast<std::size_t>(partner)].At;
        points.push_back((draft.Marks[mark].At + other) * 0.5);
    }
    if (HasLine(draft.Finish)) points.push_back((draft.Finish.Line.Left + draft.Finish.Line.Right) * 0.5);
    return points;
}

/// The course as it stands by now.
LaidCourse LaidOf(const RaceDraft& draft, const std::vector<const WayBySecond*>& fleet,
                  const std::vector<Corner>& corners) {
    LaidCourse laid{draft.Marks, draft.Course, fleet, WayPoints(draft), {}};
    if (draft.Wind) laid.Angles = AnglesOf(corners, *draft.Wind);
    return laid;
}

/// Boats that have finished turn away, which looks like one more mark. So a last place that they have not
/// been at before, a gate, or a place that many only sail past, gives way to a line where there is one.
void PreferLine(const SailedDay& day, const LaidCourse& laid, RaceDraft& draft) {
    constexpr double samePlace = 100;  // metres between two lines
    constexpr double leastRounded = 0.8;
    if (draft.Course.Places.size() < 2) return;
    const int last = draft.Course.Places.back();
    const std::vector<int> places = PlacesOf(draft.Marks);
    const bool isGate = std::ranges::count(places, last) > 1;
    if (!isGate && std::ranges::count(draft.Course.Places, last) > 1 &&
        RoundedAt(laid, draft.Course.Places.size() - 1) >= leastRounded)
        return;
    RaceDraft other = draft;
    other.Course.Places.pop_back();
    for (auto& times : other.Course.Times)
        if (times.size() > other.Course.Places.size()) times.resize(other.Course.Places.size());
    FindFinishOf(day, other);
    if (!HasLine(other.Finish)) return;
    const auto middle = [](const FoundLine& line) { return (line.Left + line.Right) * 0.5; };
    const bool same = (middle(other.Finish.Line) - middle(draft.Finish.Line)).Length() < samePlace;
    bool beside = false;
    for (std::size_t mark = 0; mark < places.size(); ++mark)
        beside |= places[mark] == last && DistanceTo(other.Finish.Line, draft.Marks[mark].At) < samePlace;
    if (!HasLine(draft.Finish) || (same && beside)) draft = other;
}

void OrderMarks(const SailedDay& day, RaceDraft& draft) {
    FleetVisits visits;
    for (const int boat : draft.Start.Boats) {
        const auto i = static_cast<std::size_t>(boat);
        visits.push_back(VisitsOf(day.Ways[i], day.Corners[i], draft.Marks, draft.Wind,
                                  draft.Start.Gun + AfterGun, draft.End));
    }
    draft.Course = FindCourse(visits, static_cast<int>(draft.Marks.size()));
    FindFinishOf(day, draft);
}

/// Takes a mark that is none of a gate away.
void RemoveMark(RaceDraft& draft, std::size_t mark) {
    draft.Marks.erase(draft.Marks.begin() + static_cast<std::ptrdiff_t>(mark));
    for (FoundMark& each : draft.Marks)
        if (each.Partner > static_cast<int>(mark)) --each.Partner;
}

/// Takes the entry away that fewest boats have rounded, if most of them only sailed past: where they
/// happened to turn near a mark that was not due. False where there is none.
bool DropSailedPast(const LaidCourse& laid, FoundCourse& course) {
    constexpr double leastRounded = 0.7;
    const std::vector<int>& places = course.Places;
    std::size_t worst = 0;
    double least = leastRounded;
    for (std::size_t entry = 0; entry < places.size(); ++entry) {
        const bool between =
            entry > 0 && entry + 1 < places.size() && places[entry - 1] == places[entry + 1];
        const double rounded = between ? 1.0 : RoundedAt(laid, entry);
        if (rounded < least) least = rounded, worst = entry;
    }
    if (least == leastRounded) return false;
    const auto at = static_cast<std::ptrdiff_t>(worst);
    course.Places.erase(course.Places.begin() + at);
    for (auto& times : course.Times)
        if (worst < times.size()) times.erase(times.begin() + at);
    return true;
}

void FindMarksOf(const SailedDay& day, const std::vector<const WayBySecond*>& fleet,
                 const std::vector<Corner>& corners, RaceDraft& draft) {
    draft.Marks = FindMarks(corners, fleet, draft.Wind, day.Lying);
    OrderMarks(day, draft);
    for (;;) {
        const std::vector<std::size_t> needless = NeedlessMarks(LaidOf(draft, fleet, corners));
        if (needless.empty()) break;
        for (const std::size_t mark : needless) RemoveMark(draft, mark);
        OrderMarks(day, draft);
    }
    bool dropped = false;
    while (DropSailedPast(LaidOf(draft, fleet, corners), draft.Course)) dropped = true;
    if (dropped) FindFinishOf(day, draft);
}

/// Takes away what boats turn behind the last entry that they came to, where they did not come to the end;
/// false where all did. A boat that has given up counts for no mark that it has not seen.
bool DropRetired(const FoundCourse& course, std::vector<Corner>& corners) {
    constexpr int goesOn = 60;  // seconds
    const auto isBehind = [&](const Corner& corner) {
        const auto& times = course.Times[static_cast<std::size_t>(corner.Boat)];
        if (times.size() == course.Places.size()) return false;
        const auto last = std::ranges::find_if(times.rbegin(), times.rend(),
                                               [](const auto& time) { return time.has_value(); });
        return last == times.rend() || corner.Time > **last + goesOn;
    };
    return std::erase_if(corners, isBehind) > 0;
}

void FindCourseOf(const SailedDay& day, RaceDraft& draft) {
    std::vector<const WayBySecond*> fleet;
    fleet.reserve(draft.Start.Boats.size());
    for (const int boat : draft.Start.Boats) fleet.push_back(&day.Ways[static_cast<std::size_t>(boat)]);
    std::vector<Corner> corners = CornersOf(day, draft);
    FindMarksOf(day, fleet, corners, draft);
    if (RaceDraft other = draft; DropRetired(draft.Course, corners)) {
        FindMarksOf(day, fleet, corners, other);
        if (other.Course.Places.size() > draft.Course.Places.size() &&
            other.Course.Agreeing >= draft.Course.Agreeing)
            draft = std::move(other);
    }
    PreferLine(day, LaidOf(draft, fleet, corners), draft);
    if (draft.Finish.Where != FoundFinish::Kind::StartLine || draft.Start.HintedLine) return;
    draft.Start.Line = LineOfBoth(draft.Start.Line, draft.Finish.Stops);
}

/// Metres by which the fixes of a race scatter, of the middle boat.
double NoiseOf(const SailedDay& day, const FoundStart& start) {
    std::vector<double> noises;
    noises.reserve(start.Boats.size());
    for (const int boat : start.Boats) noises.push_back(day.Ways[static_cast<std::size_t>(boat)].Noise());
    return MedianOf(std::move(noises));
}

double ConfidenceOf(const SailedDay& day, const RaceDraft& draft) {
    constexpr double usualNoise = 3, leastClear = 0.5, forNoise = 0.02;
    constexpr double leastTogether = 0.55, forTogether = 0.12, chance = 0.5;
    constexpr double leastUnlikely = 0.7, forUnlikely = 0.5;  // powers of ten
    constexpr double leastMeant = 0.42;
    constexpr std::size_t fewBoats = 4;
    const FoundStart& start = draft.Start;
    const double size = std::min(1.0, 0.18 * static_cast<double>(start.Boats.size()));
    const double sharp = start.HintedGun ? 1.0 : std::clamp(1.3 - start.Spread / 100, 0.5, 1.0);
    const double finish =
        draft.Finish.Where == FoundFinish::Kind::None ? 0.6 : 0.7 + 0.3 * draft.Finish.Share;
    const double agree =
        0.5 + 0.5 * static_cast<double>(draft.Course.Agreeing) / static_cast<double>(start.Boats.size());
    const double clear = std::clamp(1 - forNoise * (NoiseOf(day, start) - usualNoise), leastClear, 1.0);
    // Boats that train go off from where they met, too: one by one, and not as a clock says.
    const double both = start.Together * (1 + start.Share) / 2;
    const double unlikely = -std::log10(std::max(start.Chance, 1e-9));
    const double meant = std::clamp(
        leastMeant + (1 - leastMeant) * (unlikely - leastUnlikely) / forUnlikely, leastMeant, 1.0);
    const double together =
        start.HintedGun ? 1.0 : std::clamp((both - leastTogether) / forTogether, 0.0, 1.0) * meant;
    const bool few =
        start.Boats.size() < fewBoats && !start.HintedGun && !(start.Punctual && HasLine(draft.Finish));
    if (draft.Course.Places.empty()) return 0;
    return (few ? chance : 1.0) * together * clear * size * std::sqrt(std::min(1.0, start.Share / 0.8)) *
           sharp * draft.Course.Support * agree * finish;
}

}  // namespace

RaceDraft DraftRace(const SailedDay& day, const FoundStart& start, int end,
                    const std::optional<double>& wind) {
    RaceDraft draft;
    draft.Start = start;
    draft.End = end;
    draft.Wind = WindOf(day, start);
    draft.WindTold = !draft.Wind && wind;
    if (draft.WindTold) draft.Wind = wind;
    FindCourseOf(day, draft);
    draft.Confidence = ConfidenceOf(day, draft);
    return draft;
}

}  // namespace keelview
