#include "analysis/reconcile_passes.h"

#include <algorithm>
#include <functional>
#include <optional>

#include "analysis/course_on_water.h"
#include "analysis/pass_candidates.h"
#include "analysis/track_at.h"

namespace keelview {

namespace {

constexpr int MostSteps = 100'000'000;  // for all boats together, as those of the walk

using PassTimes = OneBased<std::optional<int>>;

/// A boat whose times the walk left incomplete or out of order, and what its track says.
struct StrayBoat {
    int Number = 0;
    std::optional<int> Start;
    OneBased<PassCandidates> Seen;    ///< by entry, from 2 on
    OneBased<PassCandidates> Hidden;  ///< the same
};

bool IsCompleteAndRising(const PassTimes& times) {
    return std::ranges::all_of(times, [](const auto& time) { return time.has_value(); }) &&
           std::ranges::adjacent_find(times, std::greater_equal{}) == times.end();
}

/// The longest way along the course, entry by entry.
class Chain {
  public:
    explicit Chain(const std::optional<int>& start) {
        steps_.Add({.At = {.Second = start.value_or(-1)}, .Entry = 1, .Reached = start ? 1 : 0});
        best_ = 1;
    }

    /// Goes on to the next entry, from the one that was given last; `again` says that this is the same
    /// mark, so that the boat must have been away from it.
    void GoOn(int entry, const PassCandidates& candidates, bool again) {
        const int end = steps_.Count();
        int before = 0;
        int next = layer_;
        for (const PassCandidate& candidate : candidates) {
            for (; next <= end && ComesBefore(steps_[next], candidate, again); ++next)
                if (before == 0 || IsBetter(steps_[next], steps_[before])) before = next;
            if (before == 0) continue;
            const Step& from = steps_[before];
            steps_.Add({candidate, entry, from.Reached + (candidate.Hidden ? 0 : 1),
                        from.Cost + candidate.Cost, before});
        }
        layer_ = end + 1;
        for (int i = layer_; i <= steps_.Count(); ++i)
            if (IsBetterEnd(steps_[i], steps_[best_])) best_ = i;
    }

    /// Writes the times of the best way; none where it has none.
    void Write(PassTimes& times) const {
        std::ranges::fill(times, std::nullopt);
        for (int i = best_; i > 1; i = steps_[i].Before)
            if (!steps_[i].At.Hidden) times[steps_[i].Entry] = steps_[i].At.Second;
        if (steps_[1].Reached > 0) times[1] = steps_[1].At.Second;
    }

  private:
    /// The best way to a candidate.
    struct Step {
        PassCandidate At;
        int Entry = 0;
        int Reached = 0;  ///< entries with a time
        double Cost = 0.0;
        int Before = 0;  ///< the step before this one
    };

    /// In a hole the entries of the course follow each other at one second.
    static bool ComesBefore(const Step& step, const PassCandidate& candidate, bool again) {
        if (candidate.Hidden) return step.At.Second <= candidate.Second;
        return step.At.Second < (again ? candidate.CameIn : candidate.Second);
    }
    static bool IsBetter(const Step& a, const Step& b) {
        return a.Reached != b.Reached ? a.Reached > b.Reached : a.Cost < b.Cost;
    }
    static bool IsBetterEnd(const Step& a, const Step& b) {
        if (a.At.Hidden || !a.At.MayEnd) return false;
        return a.Reached == b.Reached && a.Entry != b.Entry ? a.Entry > b.Entry : IsBetter(a, b);
    }

    OneBased<Step> steps_;  ///< by entry, and by time within it
    int layer_ = 1;         ///< the first step of the entry given last
    int best_ = 0;
};

/// The first entry that is rounded as this one is: the same mark on another lap, say.
int FirstLike(const CourseOnWater& course, int entry) {
    int first = 2;
    while (first < entry && course.Entries[first] != course.Entries[entry]) ++first;
    return first;
}

StrayBoat LookAt(int number, const Track& track, const CourseOnWater& course, SecondRange range, int steps,
                 const PassTimes& walked) {
    StrayBoat boat;
    boat.Number = number;
    boat.Seen.Resize(course.Count());
    boat.Hidden.Resize(course.Count());
    if (walked[1] >= StartFrom && walked[1] <= StartTo) boat.Start = walked[1];
    CandidateSearch search(course, track, {boat.Start.value_or(range.From), range.To}, steps);
    for (int c = 2; c <= course.Count(); ++c) {
        const int same = FirstLike(course, c);
        boat.Seen[c] = same < c ? boat.Seen[same] : search.Find(course.Entries[c]);
        boat.Hidden[c] = search.FindHidden(course.Entries[c]);
    }
    for (int c = 2; c <= course.Count(); ++c) LetWalkedStand(walked[c], boat.Seen[c]);
    return boat;
}

/// The longest way of a boat, past the entries that no boat can have been at.
Chain FollowCourse(const StrayBoat& boat, const CourseOnWater& course, const OneBased<int>& boatsAt) {
    Chain chain(boat.Start);
    int last = 1;
    for (int c = 2; c <= course.Count(); ++c) {
        if (boatsAt[c] == 0) continue;
        PassCandidates all = boat.Seen[c];
        for (const PassCandidate& hidden : boat.Hidden[c]) all.Add(hidden);
        std::ranges::stable_sort(all, {}, &PassCandidate::Second);
        chain.GoOn(c, all, c > last + 1 && course.Entries[c].At == course.Entries[last].At);
        last = c;
    }
    return chain;
}

void WriteChain(const Chain& chain, PassTimes& times, OneBased<PassSource>& sources) {
    const PassTimes walked = times;
    chain.Write(times);
    for (int c = 1; c <= times.Count(); ++c)
        sources[c] = !times[c]               ? PassSource::None
                     : times[c] == walked[c] ? PassSource::Rule
                                             : PassSource::Chain;
}

}  // namespace

void ReconcilePasses(const RaceControl& race, const Tracks& tracks, const EarthScale& scale,
                     MarkPasses& passes) {
    const CourseOnWater course = PlaceCourse(race, scale);
    if (course.Count() == 0) return;
    const int steps = MostSteps / std::max(race.Boats.Count(), 1);
    const SecondRange range{0, LastSearchedSecond(race)};
    OneBased<StrayBoat> strays;
    OneBased<int> boatsAt(course.Count());
    for (int boat = 1; boat <= passes.MarkPassTime.Count(); ++boat) {
        if (!HasSegment(tracks, boat)) continue;
        const PassTimes& walked = passes.MarkPassTime[boat];
        const bool isSound = IsCompleteAndRising(walked);
        if (!isSound) strays.Add(LookAt(boat, tracks.Boats[boat], course, range, steps, walked));
        for (int c = 2; c <= course.Count(); ++c)
            if (isSound || !strays.Last().Seen[c].Empty()) ++boatsAt[c];
    }
    for (const StrayBoat& boat : strays)
        WriteChain(FollowCourse(boat, course, boatsAt), passes.MarkPassTime[boat.Number],
                   passes.MarkPassSource[boat.Number]);
}

}  // namespace keelview
