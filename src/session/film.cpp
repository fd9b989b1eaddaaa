#include "session/film.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace keelview {

namespace {

constexpr double LeadSeconds = 20.0;  // before the pre-start, where the film begins
constexpr double RangeLead = 30.0;    // before the pre-start, where the replay range begins
constexpr int TickMilliseconds = 30;
constexpr int SecondMilliseconds = 1000;
constexpr double SkipSeconds = 5.0;  // a jump over water without boats
constexpr int PatienceSeconds = 10;  // without a boat before the view pulls itself back

bool SameWater(const View& a, const View& b) {
    return a.ViewCentreLat == b.ViewCentreLat && a.ViewCentreLon == b.ViewCentreLon &&
           a.ZoomFactor == b.ZoomFactor && a.MapSide == b.MapSide;
}

}  // namespace

Film::Film(AppState& app, RaceDisp& form, Platform& platform, Stage& stage)
    : app_(app), form_(form), platform_(platform), stage_(stage) {
    form_.Timer1.OnTimer = [this] { ReplayTick(); };
    form_.Timer3.OnTimer = [this] { Timer3_Timer(); };
}

void Film::SetRace() {
    Clock& clock = app_.clock;
    clock.ReplayRangeStart = -PreStartSeconds(app_.race) - RangeLead;
    clock.ReplayRangeEnd = app_.race.RaceDuration;
    clock.ReplayTime = -PreStartSeconds(app_.race) - LeadSeconds;
}

void Film::Open() {
    app_.clock.ReplayStep = 0.5;
    form_.Timer1.SetInterval(TickMilliseconds);
    form_.Timer3.SetInterval(SecondMilliseconds);
    open_ = true;
    Follow();
}

void Film::Close() {
    open_ = false;
    Follow();
}

void Film::Play(int direction) {
    stopped_ = false;
    app_.clock.ReplayStep = std::abs(app_.clock.ReplayStep) * direction;
    Follow();
    stage_.Repaint(Changed::Film);
}

void Film::Stop() {
    stopped_ = true;
    Follow();
    stage_.Repaint(Changed::Film);
}

void Film::HoldFor(Hold reason) {
    holds_.insert(reason);
    Follow();
}

void Film::Release(Hold reason) {
    holds_.erase(reason);
    Follow();
}

/// The timers run as the state has it.
void Film::Follow() {
    form_.Timer1.SetEnabled(open_ && !stopped_ && holds_.empty());
    // It must not look at a race that is half read.
    form_.Timer3.SetEnabled(open_ && !holds_.contains(Hold::Loading));
}

void Film::Step(int steps) {
    stopped_ = true;
    Follow();
    const double width = std::max(1.0, std::abs(app_.clock.ReplayStep));
    app_.clock.ReplayStep = std::copysign(app_.clock.ReplayStep, steps);
    Seek(app_.clock.ReplayTime + width * steps);
}

void Film::Seek(double time) {
    ShowTime(InRange(time));
}

void Film::SeekStart() {
    ShowTime(std::max(std::min(0.0, LastTime()), app_.clock.ReplayRangeStart));
}

void Film::SeekFinish() {
    std::optional<int> finish;
    for (int boat = 1; boat <= app_.race.Boats.Count(); ++boat)
        finish = std::max(finish, FinishTime(app_.passes, boat));
    const double last = LastTime();
    ShowTime(std::max(std::min<double>(last, finish.value_or(last)), app_.clock.ReplayRangeStart));
}

void Film::ShowTime(double time) {
    app_.clock.ReplayTime = time;
    stage_.ShowMoment();
}

void Film::SetRange(double from, double to) {
    app_.clock.ReplayRangeStart = from;
    app_.clock.ReplayRangeEnd = to;
    Seek(from);
}

void Film::SetSpeed(double multiplier) {
    app_.clock.SpeedMultiplier = multiplier;
    if (ticksPerSecond_ != 0) SetStepFromSpeed();
}

/// The film goes round: behind one end of the range lies the other one.
double Film::InRange(double time) const {
    const Clock& clock = app_.clock;
    if (time >= clock.ReplayRangeEnd || time > LatestFixTime(app_.tracks)) time = clock.ReplayRangeStart;
    return time < clock.ReplayRangeStart ? LastTime() : time;  // backward play has run out
}

/// Of the range; the tracks may end before it.
double Film::LastTime() const {
    return std::min<double>(app_.clock.ReplayRangeEnd, LatestFixTime(app_.tracks));
}

void Film::ReplayTick() {
    if (std::exchange(inTick_, true)) return;  // an earlier tick still waits in its event delivery
    platform_.DeliverEvents();
    // What the person did meanwhile may have stopped the film.
    if (form_.Timer1.Enabled()) {
        Seek(app_.clock.ReplayTime + app_.clock.ReplayStep);
        if (!form_.Check5.Value()) SkipToBoats();
        ++tickCount_;
    }
    inTick_ = false;
}

/// A view is searched once: the person may have put it where boats come seldom, or never. A time at which
/// nobody is on the water at all is skipped whenever it comes.
void Film::SkipToBoats() {
    if (app_.now.BoatInView) return;
    const bool somebody = std::ranges::any_of(app_.now.Boats, &BoatMoment::IsSomewhere);
    if (SameWater(searched_, app_.view) && (somebody || !found_)) return;
    searched_ = app_.view;
    found_ = false;
    const double jump = app_.clock.ReplayStep > 0 ? SkipSeconds : -SkipSeconds;
    double time = app_.clock.ReplayTime;
    double left = app_.clock.ReplayRangeEnd - app_.clock.ReplayRangeStart;
    for (; left > 0; left -= SkipSeconds) {
        time = InRange(time + jump);
        found_ = stage_.BoatInViewAt(time);
        if (found_) return Seek(time);
    }
}

void Film::Timer3_Timer() {
    if (stopped_) return;
    CalibrateStep();
    WatchForBoats();
}

void Film::CalibrateStep() {
    // A second that took much longer, as after a sleep of the machine, says nothing about the ticks. The
    // timer's own jitter does not count as that.
    constexpr double Shortest = 0.95;
    constexpr double Longest = 1.05;
    const double now = platform_.SteadySeconds();
    const double elapsed = now - std::exchange(tickClock_, now);
    ticksPerSecond_ = std::exchange(tickCount_, 0);
    if (ticksPerSecond_ > 2 && elapsed > Shortest && elapsed <= Longest) SetStepFromSpeed();
}

void Film::SetStepFromSpeed() {
    const double thousandths = std::floor(app_.clock.SpeedMultiplier * 1000 / ticksPerSecond_);
    app_.clock.ReplayStep = std::copysign(thousandths / 1000, app_.clock.ReplayStep);
}

void Film::WatchForBoats() {
    // The person looks at what is under the pointer.
    const bool patient = app_.now.BoatInView || app_.shown.PointerOnMap;
    noBoatSeconds_ = patient ? 0 : noBoatSeconds_ + 1;
    if (noBoatSeconds_ > PatienceSeconds) stage_.FollowBoats();
}

}  // namespace keelview
