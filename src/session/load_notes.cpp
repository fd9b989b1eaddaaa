#include "session/load_notes.h"

#include <vector>

#include "base/bilingual.h"

namespace keelview {

namespace {

constexpr int NamesInALine = 4;  // a box stays narrower than the screen

std::string AbsentTracks(const RaceControl& race, bool useEnglish) {
    std::string names;
    for (int i = 1; i <= race.AbsentBoats.Count(); ++i) {
        if (i > 1) names += i % NamesInALine == 1 ? ",\r\n" : ", ";
        names += race.AbsentBoats[i].Entry.BoatFile;
    }
    if (!useEnglish)
        return "GPSfile -- " + names + " -- はありませんでした。\r\nこの艇を無視して表示します。";
    const bool one = race.AbsentBoats.Count() == 1;
    return "GPSfile -- " + names + " -- could not be found\r\n" +
           (one ? "This boat will be ignored" : "These boats will be ignored");
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

std::string LoadNotes(const RaceControl& race, bool useEnglish) {
    std::vector<std::string> notes;
    if (!race.AbsentBoats.Empty()) notes.push_back(AbsentTracks(race, useEnglish));
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
