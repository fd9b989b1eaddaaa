#include "shell/race_search.h"

#include <cmath>
#include <string>

#include "analysis/found_race_entry.h"
#include "base/dates.h"
#include "base/numbers.h"

namespace keelview {

namespace {

constexpr Text NoneFound{"No race was found in the tracks.", "航跡からレースが見つかりませんでした。"};
constexpr Text TakeIt{
    "This race was found in the tracks. Shall it take the place of the times, marks, lines and course of "
    "the race? The race file as it is now will be kept beside it, with .bak behind its name.",
    "航跡から次のレースが見つかりました。このレースの日時・マーク・ライン・コースと置き換えますか？"
    "今のレースファイルは、名前の後に .bak を付けて残します。"};

std::string LinesOf(const std::vector<Sentence>& sentences, bool english) {
    std::string text;
    for (const Sentence& sentence : sentences) text += "\r\n" + sentence.In(english);
    return text;
}

/// The race in some lines: start, course, how sure it is, and why.
std::string TellRace(const FoundRace& race, CivilTime clock, const Voice& voice, bool english) {
    std::string course;
    for (const std::string& entry : race.Course) course += (course.empty() ? "" : " ") + entry;
    return "\r\n" + voice.Str({"Start ", "スタート "}) + DateTimeText(clock + race.Gun) + "\r\n" +
           voice.Str({"Course ", "コース "}) + course + "\r\n" + voice.Str({"Sure to ", "確からしさ "}) +
           NumberText(std::round(race.Confidence * 100)) + " %\r\n" + LinesOf(race.Reasons, english);
}

}  // namespace

void OfferFoundRace(RaceSession& session) {
    const AppState& app = session.App();
    const Voice& voice = session.TheVoice();
    const bool english = app.settings.UseEnglish;
    const DayFinding day = FindRacesOf(app.settings.AppPath, app.race);
    const FoundRace* const race = day.Surest();
    if (!race) {
        voice.SayUnder(app.settings.AppTitle, voice.Str(NoneFound) + LinesOf(day.Found.Missing, english));
        return;
    }
    const std::string question = voice.Str(TakeIt) + "\r\n" + TellRace(*race, day.Clock, voice, english);
    if (!session.TheServices().dialogs.Confirm(question, app.settings.AppTitle)) return;
    if (session.Changes().TakeFound(*race, day.Clock)) session.ReloadRace();
}

}  // namespace keelview
