#include "editor/race_draft.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/numbers.h"
#include "base/strings.h"
#include "racedata/gps_track.h"
#include "racedata/race_file.h"

namespace keelview {

namespace {

constexpr double SecondsPerHour = 3600;
constexpr std::string_view CellExtension = ".cst";

/// A number field of the editor with what it may hold.
struct NumberField {
    Text Name;
    const std::string& Typed;
    double Lowest;
    double Highest;
};

/// True if a number stands at the head of the text.
bool StartsWithNumber(std::string_view text) {
    text = Trim(text);
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) text.remove_prefix(1);
    if (!text.empty() && text.front() == '.') text.remove_prefix(1);
    return !text.empty() && text.front() >= '0' && text.front() <= '9';
}

bool Holds(const NumberField& field) {
    if (Trim(field.Typed).empty()) return true;
    const double value = LenientNumber(field.Typed);
    return StartsWithNumber(field.Typed) && value >= field.Lowest && value <= field.Highest;
}

std::string NumberTrouble(const NumberField& field, bool useEnglish) {
    return Text{"Incorrect number : ", "数値が正しくありません : "}.Str(useEnglish) +
           field.Name.Str(useEnglish) + " (" + NumberText(field.Lowest) +
           Text{" to ", " ～ "}.Str(useEnglish) + NumberText(field.Highest) + ")";
}

/// The date check: what is wrong with start and finish.
std::optional<Text> DateTrouble(const std::optional<CivilTime>& start,
                                const std::optional<CivilTime>& finish) {
    if (!start)
        return Text{"Incorrect start date or time", "スタートの日付、時間の入力スタイルが正しくありません"};
    if (!finish)
        return Text{"Incorrect finish date or time",
                    "フィニッシュの日付、時間の入力スタイルが正しくありません"};
    if (*finish <= *start)
        return Text{"The finish must be after the start",
                    "フィニッシュはスタートより後の日時にしてください"};
    return std::nullopt;
}

}  // namespace

RaceControl NewDraft(int timeDiff) {
    RaceControl draft;
    if (timeDiff != 0) draft.TimeDiff = timeDiff;
    draft.BoatLength = StandardBoatLength;
    return draft;
}

void RemoveBoat(RaceControl& draft, int boat) {
    draft.Boats.Erase(boat);
    OneBased<HandPass> kept;
    for (HandPass pass : draft.HandPasses) {
        if (pass.BoatNumber == boat) continue;
        if (pass.BoatNumber > boat) --pass.BoatNumber;
        kept.Add(pass);
    }
    draft.HandPasses = std::move(kept);
}

void MoveBoat(RaceControl& draft, int from, int to) {
    const BoatEntry moved = draft.Boats[from];
    draft.Boats.Erase(from);
    draft.Boats.Insert(to, moved);
    for (HandPass& pass : draft.HandPasses) {
        if (pass.BoatNumber == from)
            pass.BoatNumber = to;
        else if (pass.BoatNumber > from && pass.BoatNumber <= to)
            --pass.BoatNumber;
        else if (pass.BoatNumber < from && pass.BoatNumber >= to)
            ++pass.BoatNumber;
    }
    std::ranges::sort(draft.HandPasses, {},
                      [](const HandPass& pass) { return std::pair(pass.BoatNumber, pass.Entry); });
}

int BoatOfFile(const RaceControl& draft, std::string_view boatFile) {
    for (int boat = 1; boat <= draft.Boats.Count(); ++boat)
        if (EqualNoCase(draft.Boats[boat].BoatFile, boatFile)) return boat;
    return 0;
}

std::string ProposedBoatName(const RaceControl& race, std::string_view boatFile) {
    const auto choice = boatFile.rfind('#');
    const std::string_view name =
        Trim(choice != std::string_view::npos ? boatFile.substr(choice + 1)
                                              : boatFile.substr(0, boatFile.rfind('.')));
    return name.empty() ? "BOAT" + std::to_string(race.Boats.Count() + 1) : std::string(name);
}

void TakeCourse(const RaceControl& from, RaceControl& draft) {
    draft.Marks = from.Marks;
    draft.Lines = from.Lines;
    draft.CourseOrder = from.CourseOrder;
    draft.HandPasses.Clear();
}

bool FitsBoatLine(std::string_view boatFile) {
    return !boatFile.empty() && boatFile.find_first_of(",/\\") == std::string_view::npos &&
           Trim(boatFile) == boatFile;
}

std::optional<TrackTimes> ReadFirstTrackTimes(const std::filesystem::path& appPath,
                                              const std::string& boatFile, Refusal& why) {
    // The display's own reader, with no start and no zone given, keeps every fix on the clock of the GPS.
    RaceControl alone;
    alone.Boats.Add({boatFile, {}});
    Tracks tracks;
    TrackArea area;
    EarthScale scale;
    LoadAllTracks(appPath, alone, tracks, area, scale, {});
    const Track& track = tracks.Boats[1];
    why = track.Refused;
    if (track.Count() == 0 || !tracks.FirstGpsTime || !tracks.LastGpsTime) return std::nullopt;
    return TrackTimes{*tracks.FirstGpsTime, *tracks.LastGpsTime, track.TrackLon[1], track.SkippedFixes};
}

void ProposeTimes(const std::optional<TrackTimes>& track, RaceControl& race) {
    if (!track) return;
    if (!race.TimeDiff) race.TimeDiff = TimeZoneOfLongitude(track->FirstLongitude);
    const auto toLocal = static_cast<CivilTime>(*race.TimeDiff * SecondsPerHour);
    if (race.Start.Empty()) race.Start = RaceTime(track->First + toLocal + FirstFixToStart);
    if (race.Finish.Empty()) race.Finish = RaceTime(track->Last + toLocal);
}

std::optional<std::string> TakeFields(const DraftFields& fields, bool useEnglish, RaceControl& race) {
    const RaceTime start{std::string(Trim(fields.Start))};
    const RaceTime finish{std::string(Trim(fields.Finish))};
    if (const auto trouble = DateTrouble(start.At(), finish.At())) return trouble->Str(useEnglish);

    // A day holds every zone, and the track reader moves a fix by one day at most.
    const NumberField timeDiff{{"Time Diff, as 9 or 5.75", "時差 (例 9, 5.75)"}, fields.TimeDiff, -24, 24};
    const auto hours = ParseTimeDiff(fields.TimeDiff);
    if (!hours || !Holds(timeDiff)) return NumberTrouble(timeDiff, useEnglish);
    const std::array<NumberField, 6> numbers{{
        {{"Wind Direction", "平均風向"}, fields.WindDirection, -360, 360},
        {{"LOA", "LOA"}, fields.BoatLength, 0, 1000},
        {{"Mag Variation", "磁気偏差"}, fields.MagVariation, -180, 180},
        {{"LayLine <UP>", "ﾚｲﾗｲﾝ(UP)"}, fields.LayLineUp, 0, 180},
        {{"LayLine (DN)", "ﾚｲﾗｲﾝ(DN)"}, fields.LayLineDown, 0, 180},
        {{"Pre Start Time <min>", "スタート前の表示時間"}, fields.PreStartMinutes, 0, 1440},
    }};
    for (const NumberField& field : numbers)
        if (!Holds(field)) return NumberTrouble(field, useEnglish);

    race.TimeDiff = hours;
    race.WindDirection = LenientNumber(fields.WindDirection);
    race.BoatLength = LenientNumber(fields.BoatLength);
    race.MagVariation = LenientNumber(fields.MagVariation);
    race.LayLineUp = LenientNumber(fields.LayLineUp);
    race.LayLineDown = LenientNumber(fields.LayLineDown);
    race.PreStartMinutes = LenientNumber(fields.PreStartMinutes);
    race.Start = start;
    race.Finish = finish;
    race.RaceTitle1 = fields.Title1;
    race.RaceTitle2 = fields.Title2;
    return std::nullopt;
}

bool OpenDraft(const std::filesystem::path& appPath, const std::string& raceFileName, RaceControl& draft) {
    RaceControl opened = NewDraft(0);
    opened.RaceFileName = raceFileName;
    if (!ReadRaceFileForEdit(appPath, opened)) return false;
    if (!opened.TimeDiff) opened.TimeDiff = HomeTimeDiff;  // as the display takes it
    // The editor's reader leaves the cells out, the distribution's names their files.
    RaceControl cells;
    cells.RaceFileName = raceFileName;
    if (ReadRaceFileForDistribution(appPath, cells)) {
        for (std::string& name : cells.MapFile) {
            if (name.ends_with(CellExtension)) name.resize(name.size() - CellExtension.size());
            opened.MapFile.Add(std::move(name));
        }
    }
    draft = std::move(opened);
    return true;
}

}  // namespace keelview
