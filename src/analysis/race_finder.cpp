#include "analysis/race_finder.h"

#include <algorithm>

#include "analysis/found_race_words.h"
#include "analysis/medians.h"
#include "analysis/race_draft.h"

namespace keelview {

namespace {

constexpr int BeforeNext = 180;     // seconds before the next start in which boats gather
constexpr int LongestRecall = 420;  // seconds to the next gun, less the gathering, that no race fits into

/// True if some boat took part in both starts.
bool ShareBoats(const FoundStart& a, const FoundStart& b) {
    int both = 0;
    for (const int boat : a.Boats) both += std::ranges::find(b.Boats, boat) != b.Boats.end();
    return 2 * both > static_cast<int>(std::min(a.Boats.size(), b.Boats.size()));
}

Sentence At(const FinderHints& hints, int second, std::string english, std::string japanese) {
    const std::string time = TimeOfDayText(hints.Clock + second);
    return {time + ": " + std::move(english), time + ": " + std::move(japanese)};
}

StartHints HintsOf(const FinderHints& hints, const SailedDay& day) {
    StartHints known;
    known.Gun = hints.Gun;
    if (hints.Line)
        known.Line = FoundLine{day.Water.To(hints.Line->first), day.Water.To(hints.Line->second)};
    known.Lying = day.Lying;
    known.MinuteAt = -static_cast<int>(hints.Clock % 60);
    return known;
}

/// True if boats of a race start once more before they reach its first mark.
bool StartAgain(const RaceDraft& draft, const std::vector<FoundStart>& starts) {
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
RaceDraft BestDraft(const SailedDay& day, const FinderHints& hints, const std::vector<FoundStart>& starts,
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
    if (!bounded) ends.push_back(day.Last());
    std::vector<RaceDraft> drafts;
    double best = 0;
    for (const int end : ends) {
        drafts.push_back(DraftRace(day, starts[which], end, hints.Wind));
        RaceDraft& draft = drafts.back();
        const bool recalled = bounded && end < starts[which].Gun + LongestRecall;
        if (recalled || StartAgain(draft, starts)) draft.Course = {}, draft.Confidence = 0;
        best = std::max(best, draft.Confidence);
    }
    return *std::ranges::find_if(drafts,
                                 [&](const RaceDraft& draft) { return draft.Confidence >= asGood * best; });
}

/// True if a start lies within a race that was found of the same boats.
bool LiesWithin(const FoundStart& start, const std::vector<RaceDraft>& races) {
    return std::ranges::any_of(races, [&](const RaceDraft& race) {
        std::vector<double> ends{static_cast<double>(race.Start.Gun)};
        for (const auto& time : race.Finish.Times)
            if (time) ends.push_back(*time);
        for (const auto& times : race.Course.Times)
            if (!times.empty() && times.back()) ends.push_back(*times.back());
        return start.Gun < MedianOf(ends) && ShareBoats(start, race.Start);
    });
}

Sentence WhyNot(const RaceDraft& draft, const FinderHints& hints, bool again) {
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

void WorkOut(const SailedDay& day, const FinderHints& hints, const std::vector<FoundStart>& starts,
             RaceFinding& finding) {
    std::vector<RaceDraft> races;
    for (std::size_t which = 0; which < starts.size(); ++which) {
        if (LiesWithin(starts[which], races)) continue;
        const RaceDraft draft = BestDraft(day, hints, starts, which);
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
    const SailedDay day = ReadDay(tracks, scale);
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
