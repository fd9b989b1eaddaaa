#include "editor/race_draft.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "base/numbers.h"
#include "base/strings.h"
#include "racedata/gps_track.h"
#include "racedata/race_file.h"

namespace keelview {

namespace {

constexpr CivilTime SecondsPerHour = 3600;
constexpr CivilTime FirstFixToStart = 240;
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
std::optional<Text> DateTrouble(const DraftFields& fields) {
    const auto start = ParseDateTime(fields.Start);
    if (!start)
        return Text{"Incorrect start date or time", "スタートの日付、時間の入力スタイルが正しくありません"};
    const auto finish = ParseDateTime(fields.Finish);
    if (!finish)
        return Text{"Incorrect finish date or time",
                    "フィニッシュの日付、時間の入力スタイルが正しくありません"};
    if (*finish <= *start)
        return Text{"The finish must be after the start",
                    "フィニッシュはスタートより後の日時にしてください"};
    return std::nullopt;
}

}  // namespace

RaceControl NewDraft(const RaceControl& last, int timeDiff) {
    RaceControl draft = last;
    draft.RaceFileName.clear();
    draft.SingleTrackFile.clear();
    draft.StartTimeText.clear();
    draft.FinishTimeText.clear();
    draft.DataFromTime.reset();
    draft.DataToTime.reset();
    draft.BoatCount = 0;
    draft.MapCount = 0;  // the cells of the race before it; the display finds those of the new one
    draft.TimeDiff = timeDiff;
    draft.MagVariation = -7.0;
    draft.LayLineUp = 45.0;
    draft.LayLineDown = 160.0;
    draft.BoatLength = 4.7;
    draft.PreStartMinutes = 3.0;
    draft.PreStartSeconds = 180.0;
    return draft;
}

std::string ProposedBoatName(const RaceControl& race) {
    return "BOAT" + std::to_string(race.BoatCount + 1);
}

bool FitsBoatLine(std::string_view boatFile) {
    return !boatFile.empty() && boatFile.find_first_of(",/\\") == std::string_view::npos &&
           Trim(boatFile) == boatFile;
}

bool AddBoat(RaceControl& race, std::string_view boatFile, std::string_view boatName) {
    if (race.BoatCount >= MaxBoats) return false;
    const auto boat = static_cast<std::size_t>(++race.BoatCount);
    race.BoatFile.at(boat) = boatFile;
    race.BoatName.at(boat) = boatName;
    return true;
}

void RemoveBoat(RaceControl& race, int boat) {
    if (boat < 1 || boat > race.BoatCount) return;
    const auto last = race.BoatCount;
    std::shift_left(race.BoatFile.begin() + boat, race.BoatFile.begin() + last + 1, 1);
    std::shift_left(race.BoatName.begin() + boat, race.BoatName.begin() + last + 1, 1);
    race.BoatFile.at(static_cast<std::size_t>(last)).clear();
    race.BoatName.at(static_cast<std::size_t>(last)).clear();
    --race.BoatCount;
}

bool AddAttachment(RaceControl& race, std::string_view attachFile) {
    if (race.AttachCount >= MaxAttachments) return false;
    race.AttachFile.at(static_cast<std::size_t>(++race.AttachCount)) = attachFile;
    return true;
}

std::optional<TrackTimes> ReadFirstTrackTimes(const std::filesystem::path& appPath,
                                              const std::string& boatFile) {
    // The display's own reader, with no start and no zone given, keeps every fix on the clock of the GPS.
    RaceControl alone;
    alone.BoatCount = 1;
    alone.BoatFile[1] = boatFile;
    Tracks tracks;
    TrackArea area;
    EarthScale scale;
    if (!LoadAllTracks(appPath, alone, tracks, area, scale, [](int) {}).empty()) return std::nullopt;
    if (tracks.TrackPointCount[1] == 0 || !tracks.FirstGpsTime || !tracks.LastGpsTime) return std::nullopt;
    return TrackTimes{*tracks.FirstGpsTime, *tracks.LastGpsTime, tracks.TrackLon.at(1).at(1)};
}

int TimeZoneOfLongitude(double longitude) {
    return FloorToInt(longitude / 15 / 60 + 0.5);
}

void ProposeTimes(const std::optional<TrackTimes>& track, RaceControl& race) {
    if (!track) return;
    if (race.TimeDiff == 0) race.TimeDiff = TimeZoneOfLongitude(track->FirstLongitude);
    const CivilTime toLocal = race.TimeDiff * SecondsPerHour;
    if (race.StartTimeText.empty())
        race.StartTimeText = DateTimeText(track->First + toLocal + FirstFixToStart);
    if (race.FinishTimeText.empty()) race.FinishTimeText = DateTimeText(track->Last + toLocal);
}

std::optional<std::string> TakeFields(const DraftFields& fields, bool useEnglish, RaceControl& race) {
    if (const auto trouble = DateTrouble(fields)) return trouble->Str(useEnglish);

    // A day holds every zone, and the track reader moves a fix by one day at most.
    const NumberField timeDiff{{"Time Diff", "時差"}, fields.TimeDiff, -24, 24};
    const auto hours = StrictInteger(fields.TimeDiff);
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

    race.TimeDiff = *hours;
    race.WindDirection = LenientNumber(fields.WindDirection);
    race.BoatLength = LenientNumber(fields.BoatLength);
    race.MagVariation = LenientNumber(fields.MagVariation);
    race.LayLineUp = LenientNumber(fields.LayLineUp);
    race.LayLineDown = LenientNumber(fields.LayLineDown);
    race.PreStartMinutes = LenientNumber(fields.PreStartMinutes);
    race.PreStartSeconds = race.PreStartMinutes * 60;
    race.StartTimeText = Trim(fields.Start);
    race.FinishTimeText = Trim(fields.Finish);
    race.RaceTitle1 = fields.Title1;
    race.RaceTitle2 = fields.Title2;
    return std::nullopt;
}

bool OpenDraft(const std::filesystem::path& appPath, const std::string& raceFileName, RaceControl& draft) {
    RaceControl opened = draft;
    opened.RaceFileName = raceFileName;
    if (!ReadRaceFileForEdit(appPath, opened)) return false;
    RaceControl cells;
    cells.RaceFileName = raceFileName;
    opened.MapCount = 0;
    if (ReadRaceFileForDistribution(appPath, cells)) {
        for (int cell = 1; cell <= cells.MapCount; ++cell) {
            std::string name = cells.MapFile.at(static_cast<std::size_t>(cell));
            if (name.ends_with(CellExtension)) name.resize(name.size() - CellExtension.size());
            opened.MapFile.at(static_cast<std::size_t>(++opened.MapCount)) = name;
        }
    }
    draft = opened;
    return true;
}

}  // namespace keelview
