#include "instruments/wind_entry.h"

#include <algorithm>

#include "instruments/graph_axes.h"
#include "instruments/time_axis.h"

namespace keelview {

namespace {

constexpr int FirstGuardTime = -300;  // seconds from the start

constexpr Text SaveQuestion{"Do you want to save Wind Data File ?", "風データファイルを書き込みます"};
constexpr Text SaveTitle{"Create Wind Data File", "風データの作成"};
constexpr Text OverwriteQuestion{"Do you want to overwrite Wind File ?",
                                 "風データファイルを書き換えますか？"};
constexpr Text OverwriteTitle{"Overwrite Wind Data File", "風データの作成"};
constexpr Text NoRaceFile{"Wind data can be made for a race with a race control file only.",
                          "風データの作成にはレース管理ファイルが必要です。"};

}  // namespace

WindEntry::WindEntry(RaceSession& session)
    : app_(session.App()),
      form_(session.Display()),
      film_(session.TheFilm()),
      changes_(session.Changes()),
      voice_(session.TheVoice()) {
    form_.Command12.OnClick = [this] { Command12_Click(); };
    form_.GPIC.OnMouseDown = [this](const MouseEvent& event) { GPIC_MouseDown(event); };
}

void WindEntry::Command12_Click() {
    if (windEntryMode_ && IsHeld() && entered_.Count() > 1) {
        OfferToSave();
        SetMode(false);
    } else {
        SetMode(!windEntryMode_);
        if (windEntryMode_ && !MayEnter()) SetMode(false);
    }
}

bool WindEntry::Leave() {
    if (!windEntryMode_ || app_.shown.ViewMode != ViewKind::Graph) return false;
    Command12_Click();
    return true;
}

void WindEntry::SetMode(bool on) {
    windEntryMode_ = on;
    form_.Command12.SetBackColor(on ? Yellow : ButtonFace);
    HoldFilm();
}

void WindEntry::HoldFilm() {
    if (windEntryMode_ && app_.shown.ViewMode == ViewKind::Graph)
        film_.HoldFor(Film::Hold::WindEntry);
    else
        film_.Release(Film::Hold::WindEntry);
}

bool WindEntry::MayEnter() {
    if (app_.race.RaceFileName.empty()) {
        voice_.SayUnder({}, voice_.In(NoRaceFile));
        return false;
    }
    const bool named = HasWindFile(app_.race) || !app_.race.AbsentWindFile.empty();
    return !named || voice_.Ask(OverwriteQuestion, OverwriteTitle);
}

void WindEntry::OfferToSave() {
    if (!voice_.Ask(SaveQuestion, SaveTitle)) return;
    changes_.WriteWindFile();
}

void WindEntry::GPIC_MouseDown(const MouseEvent& event) {
    const TimeAxis axis(app_.race, form_.GPIC.Height());
    if (!windEntryMode_ || axis.Empty()) return;
    const CompassAxis compass(app_.race, form_.GPIC.Width());
    if (compass.Holds(event.X)) EnterSample(axis.TimeUnder(event.Y), compass.DirectionUnder(event.X));
}

/// Wind that was read from a file since then is not what was entered.
bool WindEntry::IsHeld() const {
    return !entered_.Empty() && windEntryRace_ == app_.race.RaceFileName &&
           app_.wind.Count() == entered_.Count() + 2 && app_.wind[1].WindTime == FirstTime();
}

void WindEntry::EnterSample(int seconds, double direction) {
    const RaceControl& race = app_.race;
    if (!IsHeld()) {
        entered_.Clear();
        before_ = app_.wind;
        windEntryRace_ = race.RaceFileName;
    }
    // Between the guards, so that times never run backward; behind its equals, as entered.
    seconds = std::min(seconds, std::max(race.RaceDuration, FirstGuardTime));
    const auto behind = std::ranges::upper_bound(entered_, seconds, {}, &WindSample::WindTime);
    entered_.Insert(static_cast<int>(behind - entered_.begin()) + 1,
                    {.WindTime = seconds, .WindSpeed = {}, .WindDirection = direction});
    changes_.SetWind(BetweenGuards(), WindFileNameFor(race));
}

/// Of the first guard: no entry lies before it.
int WindEntry::FirstTime() const {
    return std::min(FirstGuardTime, entered_[1].WindTime);
}

WindData WindEntry::BetweenGuards() const {
    WindData wind = entered_;
    wind.Insert(1, {FirstTime(), {}, entered_[1].WindDirection});
    wind.Add({app_.race.RaceDuration, {}, entered_.Last().WindDirection});
    // The hand sets directions alone; the speeds of a file that is written over stay in their order.
    for (int sample = 1; sample <= std::min(wind.Count(), before_.Count()); ++sample)
        wind[sample].WindSpeed = before_[sample].WindSpeed;
    return wind;
}

}  // namespace keelview
