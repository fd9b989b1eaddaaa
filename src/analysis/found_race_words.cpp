#include "analysis/found_race_words.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "base/numbers.h"

namespace keelview {

namespace {

std::string Number(double value) {
    return NumberText(std::round(value));
}

/// The marks of the course in its order; those of a gate beside each other, the port one first.
void NumberMarks(const RaceDraft& draft, const Plane& water, FoundRace& race) {
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

void TellStart(const RaceDraft& draft, FoundRace& race) {
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

void TellCourse(const RaceDraft& draft, FoundRace& race) {
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

void TellFinish(const RaceDraft& draft, FoundRace& race) {
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

}  // namespace

FoundRace RaceOf(const RaceDraft& draft, const SailedDay& day) {
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

}  // namespace keelview
