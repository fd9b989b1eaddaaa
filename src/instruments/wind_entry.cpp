#include "instruments/wind_entry.h"

#include <algorithm>

#include "base/bilingual.h"
#include "instruments/graph_axes.h"
#include "instruments/time_axis.h"
#include "racedata/wind_file.h"

namespace keelview {

namespace {

constexpr int FirstEntry = 2;
constexpr int FirstGuardTime = -300;  // seconds from the start

constexpr Text SaveQuestion{"Do you want to save Wind Data File ?", "風データファイルを書き込みます"};
constexpr Text SaveTitle{"Create Wind Data File", "風データの作成"};
constexpr Text OverwriteQuestion{"Do you want to overwrite Wind File？",
                                 "風データファイルを書き換えますか？"};
constexpr Text OverwriteTitle{"Overwrite of wind file ", "風データの作成"};
constexpr Text NoRaceFile{"Wind data can be made for a race with a race control file only.",
                          "風データの作成にはレース管理ファイルが必要です。"};
constexpr Text NotWritten{"Wind data file could not be written.", "風データファイルを書き込めません。"};

}  // namespace

WindEntry::WindEntry(AppState& app, RaceDisp& form, Services& services, BoatGraphs& graphs)
    : app_(app), form_(form), services_(services), graphs_(graphs) {
    form_.Command12.OnClick = [this] { Command12_Click(); };
    form_.GPIC.OnMouseDown = [this](const MouseEvent& event) { GPIC_MouseDown(event); };
}

void WindEntry::Command12_Click() {
    if (windEntryMode_ && HeldEntryCount() > FirstEntry) {
        OfferToSave();
        SetMode(false);
    } else {
        SetMode(!windEntryMode_);
        if (windEntryMode_ && !MayEnter()) SetMode(false);
    }
    form_.Timer1.SetEnabled(!windEntryMode_);
}

void WindEntry::SetMode(bool on) {
    windEntryMode_ = on;
    form_.Command12.SetBackColor(on ? Yellow : ButtonFace);
}

bool WindEntry::MayEnter() {
    const bool english = app_.settings.UseEnglish;
    if (app_.race.RaceFileName.empty()) {
        services_.dialogs.Ok(NoRaceFile.In(english), {});
        return false;
    }
    if (app_.race.WindFileName.empty()) return true;
    return services_.dialogs.YesNo(OverwriteQuestion.In(english), OverwriteTitle.In(english));
}

void WindEntry::OfferToSave() {
    const bool english = app_.settings.UseEnglish;
    if (!services_.dialogs.YesNo(SaveQuestion.In(english), SaveTitle.In(english))) return;
    if (SaveWindFile(app_.settings.AppPath, app_.race, app_.wind))
        services_.dialogs.Ok(NotWritten.In(english), {});
}

void WindEntry::GPIC_MouseDown(const MouseEvent& event) {
    if (!windEntryMode_ || app_.display.GraphTimeScale == 0) return;
    if (event.X < CompassLeft || event.X > CompassRight) return;
    EnterSample(TimeUnderY(app_.race, app_.display.GraphTimeScale, event.Y),
                DirectionUnderX(graphs_.DirOffset(), event.X));
    graphs_.DrawBoatGraphs();
}

int WindEntry::HeldEntryCount() const {
    // Wind that was read from a file since then is not what was entered.
    const WindData& wind = app_.wind;
    const bool held = windEntryCount_ > 0 && windEntryRace_ == app_.race.RaceFileName &&
                      wind.WindCount == windEntryCount_ + 1 && wind.WindTimes[1] == FirstGuardTime;
    return held ? windEntryCount_ : 0;
}

void WindEntry::EnterSample(int seconds, double direction) {
    RaceControl& race = app_.race;
    WindData& wind = app_.wind;
    race.WindFileName = race.RaceFileName.substr(0, race.RaceFileName.find('.')) + "_WIND.CSV";
    windEntryCount_ = std::max(HeldEntryCount() + 1, FirstEntry);
    windEntryRace_ = race.RaceFileName;
    const auto needed = static_cast<std::size_t>(windEntryCount_) + 2;
    if (wind.WindTimes.size() < needed) {
        wind.WindTimes.resize(needed);
        wind.WindSpeeds.resize(needed);
        wind.WindDirections.resize(needed);
    }
    // Between the guards, so that times never run backward; behind its equals, as entered.
    seconds = std::clamp(seconds, FirstGuardTime, std::max(race.RaceDuration, FirstGuardTime));
    int place = windEntryCount_;
    for (; place > FirstEntry && wind.WindTimes[place - 1] > seconds; --place) {
        wind.WindTimes[place] = wind.WindTimes[place - 1];
        wind.WindDirections[place] = wind.WindDirections[place - 1];
    }
    wind.WindTimes[place] = seconds;
    wind.WindDirections[place] = direction;
    SetGuards();
}

void WindEntry::SetGuards() {
    WindData& wind = app_.wind;
    wind.WindTimes[1] = FirstGuardTime;
    wind.WindDirections[1] = wind.WindDirections[FirstEntry];
    wind.WindTimes[windEntryCount_ + 1] = app_.race.RaceDuration;
    wind.WindDirections[windEntryCount_ + 1] = wind.WindDirections[windEntryCount_];
    wind.WindCount = windEntryCount_ + 1;
}

}  // namespace keelview
