#include "session/load_notes.h"

#include <cstddef>
#include <map>
#include <vector>

#include "base/bilingual.h"
#include "racedata/refusal_text.h"

namespace keelview {

namespace {

// A box stays smaller than the screen.
constexpr std::size_t NamesInALine = 4;
constexpr std::size_t NamesInAList = 50;

std::string Listed(const std::vector<std::string>& names) {
    std::string list;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (i == NamesInAList) return list + ", ... (" + std::to_string(names.size()) + ")";
        if (i > 0) list += i % NamesInALine == 0 ? ",\r\n" : ", ";
        list += names[i];
    }
    return list;
}

std::string AbsentTracks(const RaceControl& race, bool useEnglish) {
    std::vector<std::string> names;
    for (const AbsentBoat& absent : race.AbsentBoats) names.push_back(absent.Entry.BoatFile);
    if (!useEnglish)
        return "GPSfile -- " + Listed(names) + " -- はありませんでした。\r\nこの艇を無視して表示します。";
    return "GPS file -- " + Listed(names) + " -- could not be found\r\n" +
           (names.size() == 1 ? "This boat will be ignored" : "These boats will be ignored");
}

/// A note for each reason for which boats have no track. A file that is gone is the load's outcome.
void NoteRefusedTracks(const RaceNumbers& numbers, bool useEnglish, std::vector<std::string>& notes) {
    std::map<Refusal, std::vector<std::string>> refused;
    for (int boat = 1; boat <= numbers.tracks.Boats.Count(); ++boat)
        refused[numbers.tracks.Boats[boat].Refused].push_back(numbers.race.Boats[boat].BoatFile);
    for (const Refusal told : {Refusal::None, Refusal::Missing}) refused.erase(told);
    for (const auto& [why, names] : refused)
        notes.push_back("GPS file -- " + Listed(names) + " -- " + RefusalText(why).Str(useEnglish) +
                        Text{"\r\nShown without a track", "。\r\n軌跡なしで表示します。"}.Str(useEnglish));
}

std::string AbsentWind(const RaceControl& race, bool useEnglish) {
    return Text{"Wind file -- ", "風データファイル -- "}.Str(useEnglish) + race.AbsentWindFile +
           Text{" -- could not be found\r\nThe race is shown without it",
                " -- はありませんでした。\r\n風データなしで表示します。"}
               .Str(useEnglish);
}

std::string NoDate(const Text& what, const std::string& line, bool useEnglish) {
    return what.Str(useEnglish) + " -- " + line +
           Text{" -- is no date and time\r\nThe tracks tell it instead",
                " -- は日時として読めません。\r\n航跡の時刻で表示します。"}
               .Str(useEnglish);
}

}  // namespace

std::string LoadNotes(const RaceNumbers& numbers, bool useEnglish) {
    const RaceControl& race = numbers.race;
    std::vector<std::string> notes;
    if (!race.AbsentBoats.Empty()) notes.push_back(AbsentTracks(race, useEnglish));
    NoteRefusedTracks(numbers, useEnglish, notes);
    if (!race.AbsentWindFile.empty()) notes.push_back(AbsentWind(race, useEnglish));
    if (race.Start.Unreadable())
        notes.push_back(NoDate({"Start", "スタート"}, "ST, " + race.Start.Typed(), useEnglish));
    if (race.Finish.Unreadable())
        notes.push_back(NoDate({"Finish", "フィニッシュ"}, "FT, " + race.Finish.Typed(), useEnglish));
    std::string text;
    for (const std::string& note : notes) text += (text.empty() ? "" : "\r\n\r\n") + note;
    return text;
}

}  // namespace keelview
