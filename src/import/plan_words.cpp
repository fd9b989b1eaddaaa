#include "import/plan_words.h"

#include <cmath>

#include "base/dates.h"
#include "base/numbers.h"
#include "racedata/refusal_text.h"

namespace keelview {

namespace {

Text SkipText(SkipReason why) {
    switch (why) {
        case SkipReason::NoTime:
            return {"without a time", "時刻なし"};
        case SkipReason::NoPlace:
            return {"without a place", "位置なし"};
        case SkipReason::NotValid:
            return {"marked as no fix", "測位不能"};
        case SkipReason::Broken:
            return {"damaged", "破損"};
        case SkipReason::SameTime:
            return {"at the same time", "同時刻"};
        case SkipReason::TimeBack:
            return {"back in time", "時刻の逆行"};
        case SkipReason::OtherZone:
            return {"without a zone", "時差不明"};
        case SkipReason::TooMany:
            return {"too many", "数が多すぎる"};
    }
    return {};
}

std::string DaysText(const Voice& voice, double seconds) {
    constexpr double day = 86400;
    const double size = std::abs(seconds);
    if (size < day) return DurationText(static_cast<std::int64_t>(std::round(size)));
    return WholeText(size / day) + voice.Str({" days", "日"});
}

/// A number between the words before and behind it.
std::string Around(const Voice& voice, const Text& before, const std::string& number, const Text& behind) {
    return voice.Str(before) + number + voice.Str(behind);
}

std::string OtherTimeText(const Voice& voice, double away) {
    if (away == 0) return voice.Str({"hardly at the time of the others", "他艇とほとんど重なりません"});
    const Text behind = away < 0 ? Text{" before the others", "前"} : Text{" after the others", "後"};
    return Around(voice, {"", "他艇より"}, DaysText(voice, away), behind);
}

}  // namespace

std::string LeftOutText(const Voice& voice, const FleetPlace& lies) {
    switch (lies.Why) {
        case LeftOut::No:
            return {};
        case LeftOut::OtherTime:
            return OtherTimeText(voice, lies.Away);
        case LeftOut::OtherPlace:
            return Around(voice, {"", "他艇から"}, WholeText(lies.Away),
                          {" miles from the others", "海里"});
        case LeftOut::TooShort:
            return voice.Str({"too short", "短すぎます"});
        case LeftOut::TooMany:
            return voice.Str(TooManyBoats);
    }
    return {};
}

std::string SkippedText(const Voice& voice, const std::vector<Skipped>& left) {
    std::string text;
    for (const Skipped& each : left) {
        const std::string what = voice.Str(SkipText(each.Why));
        const std::string count = std::to_string(each.Count);
        if (!text.empty()) text += ", ";
        text.append(voice.English() ? count : what).append(" ").append(voice.English() ? what : count);
    }
    return text;
}

std::string GapsText(const Voice& voice, const TrackRhythm& rhythm) {
    if (rhythm.Gaps == 0) return {};
    return std::to_string(rhythm.Gaps) + voice.Str({" (longest ", " (最長 "}) +
           DurationText(static_cast<std::int64_t>(rhythm.LongestGap)) + ")";
}

std::string ClockText(double seconds) {
    return (seconds < 0 ? "-" : "+") + DurationText(static_cast<std::int64_t>(std::round(seconds)));
}

std::string UnusedText(const Voice& voice, const UnusedFile& file) {
    if (file.SameAs.empty()) return file.Name + " : " + voice.Str(RefusalText(file.Why));
    return file.Name + " : " + voice.Str({"the same as ", "同じ航跡 "}) + file.SameAs;
}

std::string TroubleText(const Voice& voice, const PlanTrouble& trouble) {
    constexpr Text nothing{"Nothing was written:", "何も書き込みませんでした:"};
    return voice.Str(nothing) + "\r\n" + trouble.FailedAt.string() + "\r\n(" + trouble.Error.message() +
           ")";
}

}  // namespace keelview
