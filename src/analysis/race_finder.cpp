#include "analysis/race_finder.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "analysis/found_course.h"
#include "analysis/found_finish.h"
#include "analysis/found_marks.h"
#include "analysis/found_starts.h"
#include "analysis/medians.h"
#include "base/angles.h"
#include "base/numbers.h"

namespace keelview {

namespace {

constexpr double SecondsInAll = 12e6;  // of all ways; some hundred megabytes
constexpr double LeastSeconds = 20000;
constexpr double LyingRadius = 30;   // metres in which what lies still stays
constexpr double DriftSpeed = 0.12;  // metres a second of what drifts
constexpr double FleetWay = 400;     // metres that a fleet sails at least
constexpr int AfterGun = 20;         // seconds in which no mark is looked for
constexpr int BeforeNext = 180;      // seconds before the next start in which boats gather
constexpr int LongestRecall = 420;   // seconds to the next gun, less the gathering, that no race fits into
constexpr int LongestBeat = 900;     // seconds that the first leg's turns are taken from

/// What the tracks hold, on one plane.
struct Day {
    Plane Water;
    std::vector<WayBySecond> Ways;             // of the boats that sail
    std::vector<int> Numbers;                  // theirs, from 1
    std::vector<std::vector<Corner>> Corners;  // of each, Boat being its place here
    std::vector<Way> Lying;                    // what lies still
    std::vector<int> LyingNumbers;
};

Position FirstPlace(const Tracks& tracks) {
    for (const Track& track : tracks.Boats)
        if (track.Count() > 0) return track.At(1);
    return {};
}

/// How far a way goes from its middle, but for its outermost twentieth; and its mean speed from end to end.
struct Extent {
    Way Middle;
    double Radius = 0.0;
    double Drift = 0.0;
};

Extent ExtentOf(const WayBySecond& way) {
    std::vector<double> easts, norths;
    const int step = std::max(1, (way.Last() - way.First()) / 400);
    for (int t = way.First(); t <= way.Last(); t += step)
        if (const auto at = way.At(t)) easts.push_back(at->East), norths.push_back(at->North);
    Extent extent;
    extent.Middle = {MedianOf(easts), MedianOf(norths)};
    std::vector<double> offs;
    offs.reserve(easts.size());
    for (std::size_t i = 0; i < easts.size(); ++i)
        offs.push_back((Way{easts[i], norths[i]} - extent.Middle).Length());
    extent.Radius = QuantileOf(std::move(offs), 0.95);
    if (easts.size() > 1)
        extent.Drift = Way{easts.back() - easts.front(), norths.back() - norths.front()}.Length() /
                       std::max(1, way.Last() - way.First());
    return extent;
}

Day ReadDay(const Tracks& tracks, const EarthScale& scale) {
    Day day;
    day.Water = Plane(scale, FirstPlace(tracks));
    const int longest =
        static_cast<int>(std::max(LeastSeconds, SecondsInAll / std::max(tracks.Boats.Count(), 1)));
    std::vector<std::pair<int, WayBySecond>> all;
    double widest = 0;
    std::vector<Extent> extents;
    for (int boat = 1; boat <= tracks.Boats.Count(); ++boat) {
        WayBySecond way(tracks.Boats[boat], day.Water, longest);
        if (way.Empty()) continue;
        extents.push_back(ExtentOf(way));
        widest = std::max(widest, extents.back().Radius);
        all.emplace_back(boat, std::move(way));
    }
    for (std::size_t i = 0; i < all.size(); ++i) {
        const Extent& extent = extents[i];
        const bool lies = extent.Radius < LyingRadius || (extent.Drift < DriftSpeed && extent.Radius < 100);
        if (lies && widest > FleetWay / 2) {
            day.Lying.push_back(extent.Middle);
            day.LyingNumbers.push_back(all[i].first);
        } else if (extent.Radius >= LyingRadius) {
            day.Numbers.push_back(all[i].first);
            day.Corners.push_back(FindCorners(all[i].second, static_cast<int>(day.Ways.size())));
            day.Ways.push_back(std::move(all[i].second));
        }
    }
    return day;
}

std::string Number(double value) {
    return NumberText(std::round(value));
}

/// The wind as the turns of a beat tell it: the direction that most of them go through, within 60 degrees
/// of the way of the fleet; nothing where there are too few of them.
std::optional<double> WindOf(const Day& day, const FoundStart& start) {
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

/// One race as it is being worked out.
struct Draft {
    FoundStart Start;
    int End = 0;
    std::optional<double> Wind;
    bool WindTold = false;
    std::vector<FoundMark> Marks;
    FoundCourse Course;
    FoundFinish Finish;
    double Confidence = 0.0;
};

/// The marks of the course in its order; those of a gate beside each other, the port one first.
void NumberMarks(const Draft& draft, const Plane& water, FoundRace& race) {
    const std::vector<int> places = PlacesOf(draft.Marks);
    std::map<int, std::string> names;
    race.Course = {"L1"};
    for (const int place : draft.Course.Places) {
        std::string& name = names[place];
        for (std::size_t mark = 0; name.empty() && mark < draft.Marks.size(); ++mark) {
            if (places[mark] != place) continue;
            const auto add = [&](const FoundMark& each) {
                race.Marks.push_back(water.From(each.At));
                name += (name.empty() ? "MK" : "/MK") + std::to_string(race.Marks.size());
            };
            add(draft.Marks[mark]);
            if (draft.Marks[mark].Partner >= 0)
                add(draft.Marks[static_cast<std::size_t>(draft.Marks[mark].Partner)]);
        }
        race.Course.push_back(name);
    }
}

void AddLine(const FoundLine& line, const Plane& water, FoundRace& race) {
    race.Lines.emplace_back(water.From(line.Left), water.From(line.Right));
}

void TellStart(const Draft& draft, FoundRace& race) {
    const FoundStart& start = draft.Start;
    const std::string count = std::to_string(start.Boats.size());
    race.Reasons.push_back({count + " boats went off from one line together, from rest to full speed in " +
                                Number(start.Spread) + " s",
                            count + "艇が1本のラインから一斉に" + Number(start.Spread) + "秒で加速"});
    if (start.HintedGun)
        race.Reasons.push_back({"the gun as a recording tells it", "スタート時刻は記録のデータによる"});
    else if (start.AtMinute)
        race.Reasons.push_back({"the gun taken to the whole minute", "スタート時刻は正分とした"});
    if (start.HintedLine)
        race.Reasons.push_back({"the line as a recording tells it", "ラインは記録のデータによる"});
}

void TellCourse(const Draft& draft, FoundRace& race) {
    if (draft.Wind)
        race.Reasons.push_back(
            draft.WindTold
                ? Sentence{"wind from " + Number(*draft.Wind) + " degrees, as the race tells it",
                           "風向" + Number(*draft.Wind) + "度 (レースのデータ)"}
                : Sentence{"wind from " + Number(*draft.Wind) + " degrees, by the tacks of the first leg",
                           "風向" + Number(*draft.Wind) + "度 (第1レグのタックから)"});
    else
        race.Reasons.push_back({"too few tacks to tell the wind", "タックが少なく風向は不明"});
    const std::string agreeing = std::to_string(draft.Course.Agreeing);
    const std::string all = std::to_string(draft.Start.Boats.size());
    race.Reasons.push_back({agreeing + " of " + all + " boats sailed the whole course in this order",
                            all + "艇中" + agreeing + "艇がこの順序で全コースを帆走"});
    for (const FoundMark& mark : draft.Marks)
        if (mark.Tracked) race.Reasons.push_back({"a recorder lay at a mark", "マークに記録機があった"});
}

void TellFinish(const Draft& draft, FoundRace& race) {
    switch (draft.Finish.Where) {
        case FoundFinish::Kind::None:
            race.Reasons.push_back(
                {"where the boats finished was not found", "フィニッシュは見つからない"});
            return;
        case FoundFinish::Kind::LastMark:
            race.Reasons.push_back(
                {"the boats stopped racing at the last mark", "最終マークで各艇がレースを終えた"});
            return;
        case FoundFinish::Kind::StartLine:
            race.Reasons.push_back(
                {"the boats finished at the start line", "スタートラインでフィニッシュ"});
            return;
        case FoundFinish::Kind::OwnLine:
            race.Reasons.push_back(
                {"the boats stopped racing behind one line", "1本のラインの先で各艇がレースを終えた"});
            return;
    }
}

double ConfidenceOf(const Draft& draft) {
    const FoundStart& start = draft.Start;
    const double size = std::min(1.0, 0.4 + 0.15 * static_cast<double>(start.Boats.size() - 1));
    const double sharp = start.HintedGun ? 1.0 : std::clamp(1.3 - start.Spread / 100, 0.5, 1.0);
    const double finish =
        draft.Finish.Where == FoundFinish::Kind::None ? 0.6 : 0.7 + 0.3 * draft.Finish.Share;
    const double agree =
        0.5 + 0.5 * static_cast<double>(draft.Course.Agreeing) / static_cast<double>(start.Boats.size());
    if (draft.Course.Places.empty()) return 0;
    return size * std::sqrt(std::min(1.0, start.Share / 0.8)) * sharp * draft.Course.Support * agree *
           finish;
}

FoundRace RaceOf(const Draft& draft, const Day& day) {
    FoundRace race;
    race.Gun = draft.Start.Gun;
    race.Wind = draft.Wind;
    AddLine(draft.Start.Line, day.Water, race);
    NumberMarks(draft, day.Water, race);
    if (draft.Finish.Where == FoundFinish::Kind::StartLine) race.Course.emplace_back("L1");
    if (draft.Finish.Where == FoundFinish::Kind::OwnLine) {
        AddLine(draft.Finish.Line, day.Water, race);
        race.Course.emplace_back("L2");
    }
    for (const auto& time : draft.Finish.Times)
        if (time) race.Finish = std::max(race.Finish.value_or(*time), *time);
    for (const int boat : draft.Start.Boats)
        race.Boats.push_back(day.Numbers[static_cast<std::size_t>(boat)]);
    TellStart(draft, race);
    TellCourse(draft, race);
    TellFinish(draft, race);
    race.Confidence = draft.Confidence;
    return race;
}

/// The corners of a start's boats from the gun to the end, each boat counted from 0 among them.
std::vector<Corner> CornersOf(const Day& day, const Draft& draft) {
    std::vector<Corner> corners;
    for (std::size_t i = 0; i < draft.Start.Boats.size(); ++i)
        for (Corner corner : day.Corners[static_cast<std::size_t>(draft.Start.Boats[i])])
            if (corner.Time > draft.Start.Gun + AfterGun && corner.Time < draft.End) {
                corner.Boat = static_cast<int>(i);
                corners.push_back(corner);
            }
    return corners;
}

void FindFinishOf(const Day& day, Draft& draft) {
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

/// Boats that have finished turn away, which looks like one more mark. So a last place that they have not
/// been at before, or a gate, gives way to a line where there is one.
void PreferLine(const Day& day, Draft& draft) {
    constexpr double samePlace = 100;  // metres between two lines
    if (draft.Course.Places.size() < 2) return;
    const int last = draft.Course.Places.back();
    const std::vector<int> places = PlacesOf(draft.Marks);
    const bool isGate = std::ranges::count(places, last) > 1;
    if (!isGate && std::ranges::count(draft.Course.Places, last) > 1) return;
    Draft other = draft;
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

void FindCourseOf(const Day& day, Draft& draft) {
    std::vector<const WayBySecond*> fleet;
    fleet.reserve(draft.Start.Boats.size());
    for (const int boat : draft.Start.Boats) fleet.push_back(&day.Ways[static_cast<std::size_t>(boat)]);
    draft.Marks = FindMarks(CornersOf(day, draft), fleet, draft.Wind, day.Lying);
    FleetVisits visits;
    for (const int boat : draft.Start.Boats) {
        const auto i = static_cast<std::size_t>(boat);
        visits.push_back(
            VisitsOf(day.Ways[i], day.Corners[i], draft.Marks, draft.Start.Gun + AfterGun, draft.End));
    }
    draft.Course = FindCourse(visits, static_cast<int>(draft.Marks.size()));
    FindFinishOf(day, draft);
    PreferLine(day, draft);
    if (draft.Finish.Where != FoundFinish::Kind::StartLine || draft.Start.HintedLine) return;
    draft.Start.Line = LineOfBoth(draft.Start.Line, draft.Finish.Stops);
}

/// True if some boat took part in both starts.
bool ShareBoats(const FoundStart& a, const FoundStart& b) {
    int both = 0;
    for (const int boat : a.Boats) both += std::ranges::find(b.Boats, boat) != b.Boats.end();
    return 2 * both > static_cast<int>(std::min(a.Boats.size(), b.Boats.size()));
}

int LastOf(const Day& day) {
    int last = 0;
    for (const WayBySecond& way : day.Ways) last = std::max(last, way.Last());
    return last;
}

Sentence At(const FinderHints& hints, int second, std::string english, std::string japanese) {
    const std::string time = TimeOfDayText(hints.Clock + second);
    return {time + ": " + std::move(english), time + ": " + std::move(japanese)};
}

StartHints HintsOf(const FinderHints& hints, const Day& day) {
    StartHints known;
    known.Gun = hints.Gun;
    if (hints.Line)
        known.Line = FoundLine{day.Water.To(hints.Line->first), day.Water.To(hints.Line->second)};
    known.Lying = day.Lying;
    known.MinuteAt = -static_cast<int>(hints.Clock % 60);
    return known;
}

Draft DraftUpTo(const Day& day, const FinderHints& hints, const FoundStart& start, int end) {
    Draft draft;
    draft.Start = start;
    draft.End = end;
    draft.Wind = WindOf(day, start);
    draft.WindTold = !draft.Wind && hints.Wind;
    if (draft.WindTold) draft.Wind = hints.Wind;
    FindCourseOf(day, draft);
    return draft;
}

/// True if boats of a race start once more before they reach its first mark.
bool StartAgain(const Draft& draft, const std::vector<FoundStart>& starts) {
    std::vector<double> firsts;
    for (const auto& times : draft.Course.Times)
        if (!times.empty() && times.front()) firsts.push_back(*times.front());
    const double first = MedianOf(std::move(firsts));
    return std::ranges::any_of(starts, [&](const FoundStart& other) {
        return other.Gun > draft.Start.Gun + 60 && other.Gun < first && ShareBoats(draft.Start, other);
    });
}

/// The race that a start begins. What looks like the next start of its boats may be another race or a
/// moment of this one: the first end that explains the race about as well as any other holds.
Draft BestDraft(const Day& day, const FinderHints& hints, const std::vector<FoundStart>& starts,
                std::size_t which) {
    constexpr double asGood = 0.85;
    constexpr double strong = 0.9, leastStrong = 0.8;  // of the boats: surely another start
    constexpr std::size_t mostEnds = 4;
    std::vector<int> ends;
    bool bounded = false;
    for (std::size_t next = which + 1; next < starts.size() && ends.size() < mostEnds && !bounded; ++next) {
        if (!ShareBoats(starts[which], starts[next])) continue;
        ends.push_back(starts[next].Gun - BeforeNext);
        bounded = starts[next].Share >= strong * std::max(starts[which].Share, leastStrong);
    }
    if (!bounded) ends.push_back(LastOf(day));
    std::vector<Draft> drafts;
    double best = 0;
    for (const int end : ends) {
        drafts.push_back(DraftUpTo(day, hints, starts[which], end));
        Draft& draft = drafts.back();
        draft.Confidence = ConfidenceOf(draft);
        const bool recalled = bounded && end < starts[which].Gun + LongestRecall;
        if (recalled || StartAgain(draft, starts)) draft.Course = {}, draft.Confidence = 0;
        best = std::max(best, draft.Confidence);
    }
    return *std::ranges::find_if(drafts,
                                 [&](const Draft& draft) { return draft.Confidence >= asGood * best; });
}

/// True if a start lies within a race that was found of the same boats.
bool LiesWithin(const FoundStart& start, const std::vector<Draft>& races) {
    return std::ranges::any_of(races, [&](const Draft& race) {
        std::vector<double> ends{static_cast<double>(race.Start.Gun)};
        for (const auto& time : race.Finish.Times)
            if (time) ends.push_back(*time);
        for (const auto& times : race.Course.Times)
            if (!times.empty() && times.back()) ends.push_back(*times.back());
        return start.Gun < MedianOf(ends) && ShareBoats(start, race.Start);
    });
}

Sentence WhyNot(const Draft& draft, const FinderHints& hints, bool again) {
    const int gun = draft.Start.Gun;
    if (draft.Course.Places.empty() && again)
        return At(hints, gun, "a start that the fleet came back from: taken for a general recall",
                  "艇団が引き返したスタート: ゼネラルリコールとみなす");
    if (draft.Course.Places.empty())
        return At(hints, gun, "boats went off together, but no mark was found that they rounded",
                  "一斉に走り出したが、回航したマークが見つからない");
    return At(hints, gun, "something like a race, but too unsure to be proposed",
              "レースらしいが、確かでないため提案しない");
}

void WorkOut(const Day& day, const FinderHints& hints, const std::vector<FoundStart>& starts,
             RaceFinding& finding) {
    std::vector<Draft> races;
    for (std::size_t which = 0; which < starts.size(); ++which) {
        if (LiesWithin(starts[which], races)) continue;
        const Draft draft = BestDraft(day, hints, starts, which);
        if (draft.Confidence >= LeastConfidence) {
            races.push_back(draft);
            finding.Races.push_back(RaceOf(draft, day));
            continue;
        }
        const bool again = which + 1 < starts.size() && starts[which + 1].Gun - draft.Start.Gun < 1800 &&
                           ShareBoats(starts[which], starts[which + 1]);
        finding.Missing.push_back(WhyNot(draft, hints, again));
    }
}

}  // namespace

RaceFinding FindRaces(const Tracks& tracks, const EarthScale& scale, const FinderHints& hints) {
    RaceFinding finding;
    const Day day = ReadDay(tracks, scale);
    finding.Lying = day.LyingNumbers;
    if (day.Ways.size() < 2) {
        finding.Missing.push_back({"fewer than two boats that sail", "帆走している艇が2艇未満"});
        return finding;
    }
    const std::vector<FoundStart> starts = FindStarts(day.Ways, HintsOf(hints, day));
    if (starts.empty())
        finding.Missing.push_back({"no moment at which the boats go off together from one line",
                                   "1本のラインから一斉に走り出す時刻が見つからない"});
    WorkOut(day, hints, starts, finding);
    return finding;
}

}  // namespace keelview
