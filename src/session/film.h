#pragma once

#include <set>

#include "session/app_state.h"
#include "session/race_disp.h"
#include "session/stage.h"

namespace keelview {

/// The film: the one who plays, stops and moves the clock, and the one writer of it. It stands while
/// somebody has stopped it, and while there is a reason to hold it; a hold says nothing about whether it
/// was stopped.
class Film {
  public:
    /// Why the film stands though nobody has stopped it.
    enum class Hold {
        Loading,   ///< a race is being read
        MapClick,  ///< a click on a mark or line; until the pointer comes to a panel
        MapDrag,   ///< the map is in the person's hand
        DataPage,  ///< nothing of the film is seen behind the data page
        WindEntry  ///< wind is being entered by hand
    };

    Film(AppState& app, RaceDisp& form, Platform& platform, Stage& stage);

    /// The range and the first moment of a race that was loaded: the film is set a little before the
    /// pre-start.
    void SetRace();
    /// The timers run from now on, forward.
    void Open();
    /// The timers stand, for good.
    void Close();

    void Play(int direction);  ///< 1 or -1
    void Stop();
    bool Stopped() const { return stopped_; }
    void HoldFor(Hold reason);
    void Release(Hold reason);
    bool HeldFor(Hold reason) const { return holds_.contains(reason); }

    /// Moves by so many steps, back by a negative number, each a second at least; shows where it stands.
    void Step(int steps);
    /// Goes to a moment and shows it.
    void Seek(double time);
    /// Goes to the start of the race and to the last boat's finish, to the end where nobody has finished;
    /// or as near as the range that is played comes.
    void SeekStart();
    void SeekFinish();
    /// Plays from now on between two moments, and goes to the first one.
    void SetRange(double from, double to);
    /// Replay seconds per real second.
    void SetSpeed(double multiplier);

  private:
    void ReplayTick();
    void Timer3_Timer();
    double InRange(double time) const;
    double LastTime() const;
    void ShowTime(double time);
    void SkipToBoats();
    void CalibrateStep();
    void SetStepFromSpeed();
    void WatchForBoats();
    void Follow();

    AppState& app_;
    RaceDisp& form_;
    Platform& platform_;
    Stage& stage_;
    bool open_ = false;
    bool stopped_ = false;
    std::set<Hold> holds_;
    bool inTick_ = false;
    int tickCount_ = 0;
    int ticksPerSecond_ = 0;
    double tickClock_ = 0.0;
    int noBoatSeconds_ = 0;
    View searched_;       ///< for boats, last
    bool found_ = false;  ///< there, at some time
};

}  // namespace keelview
