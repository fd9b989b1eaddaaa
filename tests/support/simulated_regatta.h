#pragma once

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "analysis/plane.h"
#include "racedata/gps_track.h"
#include "support/regatta_course.h"

namespace keelview {

/// What a regatta is like whose truths are to be found again.
struct RegattaPlan {
    Layout Course = Layout::WindwardLeeward;
    unsigned Seed = 1;
    int Boats = 10;
    int Races = 1;
    double Noise = 2.0;     ///< of places, metres each way
    int Every = 1;          ///< seconds between fixes
    int Retire = 1;         ///< boats that give up on the way
    bool OddGun = false;    ///< the gun goes at no whole minute
    bool Recall = false;    ///< a start before it, that all come back from
    bool Gaps = false;      ///< each track has holes of a minute
    bool Buoys = false;     ///< recorders lie at the marks
    bool Fleets = false;    ///< the second half of the boats starts five minutes later
    bool Training = false;  ///< nobody starts: boats go round the marks by themselves, and meet between
};

/// A regatta sailed by a small simulation of its own: boats mill about behind the line, run at it as the
/// gun goes, sail by a polar in a wind that swings, round buoys at berths of their own and sail some way on
/// behind the finish. Metres lie on a plane about the middle of the start line.
class SimulatedRegatta {
  public:
    Tracks Boats;
    EarthScale Scale = ComputeEarthScale(Middle.Lat);
    std::vector<int> Guns;                   ///< seconds, one a race
    std::vector<Way> Marks;                  ///< in the order of the course
    std::string Course;                      ///< "L1, MK1, ..."
    double Wind = 0.0;                       ///< degrees, of the middle
    std::vector<std::vector<int>> Finishes;  ///< of each race: the boats, from 1, in their order

    explicit SimulatedRegatta(const RegattaPlan& plan) : plan_(plan), dice_(plan.Seed) {
        Wind = Between(0, 360);
        phase_ = Between(0, 6);
        swing_ = Between(2, 7);
        lineLength_ = std::max(70.0, plan.Boats * 6.0);
        laid_ = CourseLayer(Wind, dice_).Lay(plan.Course);
        Marks = laid_.Marks;
        Course = laid_.Text;
        const double first = Between(240, 420);
        double gun = 60 * std::ceil(first / 60);
        if (plan.OddGun) gun += std::floor(Between(12, 49));
        sailors_.resize(static_cast<std::size_t>(plan.Boats));
        for (Sailor& sailor : sailors_) {
            sailor.At = Upwind(-Between(40, 150), Between(-0.5, 0.5) * lineLength_);
            sailor.Skill = Between(0.94, 1.05);
            sailor.Heading = Wind + 90;
        }
        if (plan.Recall) {
            SailAway(static_cast<int>(gun));
            gun += 480;
        }
        if (plan.Training) Train(static_cast<int>(gun));
        for (int race = 0; race < plan.Races && !plan.Training; ++race) {
            Guns.push_back(static_cast<int>(gun));
            gun = SailRace(static_cast<int>(gun));
        }
        Record();
    }

    Plane Water() const { return Plane(Scale, Middle); }

  private:
    static constexpr Position Middle{35 * 60 + 17, 139 * 60 + 29};

    struct Sailor {
        Way At;
        double Heading = 0, Speed = 0.8, Skill = 1;
        int Tack = 1, NextTack = 0;
        std::size_t Leg = 0, Corner = 0;
        double Berth = 8, Delay = 1;
        int Side = 0;  // of a gate
        int Quits = 1 << 30;
        double Slot = 0, Hold = 30;  // metres along the line, and behind it
        Way Target;                  // before the gun
        bool Going = false, Started = false;
        int Over = -1;  // second of the finish, or of giving up
        int StopAfter = 10;
        double Home = 0;
        double Widest = 300;  // metres beside the target
        double Shore = 60;    // metres that it keeps off land
        std::vector<Way> Places;
    };

    double Random() { return dice_.Random(); }
    double Between(double low, double high) { return dice_.Between(low, high); }
    Way Upwind(double metres, double right = 0) const {
        return Towards(Wind) * metres + Towards(Wind + 90) * right;
    }
    double WindAt(int t) const { return Wind + swing_ * std::sin(t / 170.0 + phase_); }

    // Sailing.

    double FullSpeed(const Sailor& sailor, double off) const {
        const double angle = std::abs(off);
        const double knots = angle < 30 ? 1.5 : 4.6 + 1.4 * std::sin((angle - 40) / 140 * 180 * DegToRad);
        return sailor.Skill * knots * KnotMetres;
    }
    void Move(Sailor& sailor, double heading, double speed) {
        const double turn = std::clamp(std::remainder(heading - sailor.Heading, 360.0), -16.0, 16.0);
        sailor.Heading += turn;
        if (std::abs(turn) > 8) sailor.Speed *= 0.93;
        sailor.Speed += (speed - sailor.Speed) * 0.22;
        sailor.At = sailor.At + Towards(sailor.Heading) * sailor.Speed;
    }
    /// The land that a boat would be on, or closer to than it likes, if it went on straight for a while.
    const Island* LandAhead(const Sailor& sailor, double heading, double metres) const {
        for (const Island& island : laid_.Islands) {
            const Way off = island.At - sailor.At;
            const double ahead = std::clamp(off.Along(Towards(heading)), 0.0, metres);
            if (ahead > 0 && (off - Towards(heading) * ahead).Length() < island.Radius + sailor.Shore)
                return &island;
        }
        return nullptr;
    }
    /// The heading next to another one that leads past the land ahead.
    double PastLand(const Sailor& sailor, double heading, double metres) const {
        const Island* const island = LandAhead(sailor, heading, metres);
        if (!island) return heading;
        const Way off = island->At - sailor.At;
        const double wide =
            std::asin(std::min(1.0, (island->Radius + sailor.Shore) / off.Length())) / DegToRad;
        const double left = TurnBetween(off.Bearing(), heading);
        return off.Bearing() + (left < 0 ? -1 : 1) * (wide + 0.5);
    }
    /// Sails to a place as the wind and the land let it: straight, by tacks or by gybes.
    void SailTo(Sailor& sailor, Way target, int t) {
        constexpr double up = 44, down = 152, lookOut = 70;
        const double wind = WindAt(t);
        const Way straight = target - sailor.At;
        target = sailor.At +
                 Towards(PastLand(sailor, straight.Bearing(), straight.Length())) * straight.Length();
        const double off = std::remainder((target - sailor.At).Bearing() - wind, 360.0);
        double angle = off;
        const double limit = std::abs(off) < up ? up : down;
        if (std::abs(off) < up || std::abs(off) > down) {
            const double across = target.Along(Towards(wind + 90)) - sailor.At.Along(Towards(wind + 90));
            const bool wide = std::abs(across) > sailor.Widest && across * sailor.Tack < 0;
            if (t >= sailor.NextTack || (wide && t + 60 > sailor.NextTack)) {
                sailor.Tack = -sailor.Tack;
                sailor.NextTack = t + static_cast<int>(Between(50, 150));
            }
            if (LandAhead(sailor, wind + sailor.Tack * limit, lookOut) &&
                !LandAhead(sailor, wind - sailor.Tack * limit, lookOut)) {
                sailor.Tack = -sailor.Tack;
                sailor.NextTack = t + 40;
            }
            angle = sailor.Tack * limit;
        } else {
            sailor.Tack = off > 0 ? 1 : -1;
        }
        Move(sailor, wind + angle + 1.5 * std::sin(t / 7.0 + sailor.Skill * 90), FullSpeed(sailor, angle));
    }

    /// Before the gun: to and fro behind the line, and off in time to be over it `Delay` seconds after it.
    void Approach(Sailor& sailor, int t, int gun) {
        const double up = sailor.At.Along(Towards(Wind));
        constexpr double onStarboard = -45;
        if (!sailor.Going) {
            double metres = 0, speed = sailor.Speed;
            int seconds = 0;
            while (metres < -up && seconds < 120) {
                speed += (FullSpeed(sailor, 45) - speed) * 0.22;
                metres += speed * 0.7;
                ++seconds;
            }
            sailor.Going = t + seconds >= gun + sailor.Delay && t > gun - 60;
        }
        if (sailor.Going) return Move(sailor, Wind + onStarboard, FullSpeed(sailor, 45));
        const Way hold = Upwind(-sailor.Hold, sailor.Slot + sailor.Hold);
        const bool soon = t > gun - 110;
        const double away = (sailor.Target - sailor.At).Length();
        if (soon)
            sailor.Target = hold;
        else if (away < 15 || sailor.Target == Way{})
            sailor.Target = Upwind(Between(-130, -35), sailor.Slot + Between(-110, 110));
        Move(sailor, (sailor.Target - sailor.At).Bearing(), soon && away < 12 ? 0.3 : 1.9);
    }

    Way Waypoint(Sailor& sailor) const {
        const RegattaCourse::Rounding& rounding = laid_.Roundings[sailor.Leg];
        const bool gate = rounding.Marks.size() > 1;
        const Way mark = rounding.Marks[gate ? static_cast<std::size_t>(sailor.Side) : 0];
        double turn = rounding.Turn;
        if (gate) turn = sailor.Side == 0 ? -180 : 180;
        const double side = turn < 0 ? 90 : -90;
        const double share = static_cast<double>(sailor.Corner) / 2;
        return mark + Towards(rounding.In + side + turn * share) * sailor.Berth;
    }

    void Race(Sailor& sailor, int t) {
        if (sailor.Leg == laid_.Roundings.size()) {
            SailTo(sailor, laid_.Finish + laid_.FinishAhead * 40 + FinishSide(sailor), t);
            const double past = (sailor.At - laid_.Finish).Along(laid_.FinishAhead);
            if (past >= 0) sailor.Over = t;
            return;
        }
        const Way target = Waypoint(sailor);
        SailTo(sailor, target, t);
        if ((target - sailor.At).Length() > 4 + 1.6 * sailor.Speed) return;
        if (++sailor.Corner < 3) return;
        sailor.Corner = 0;
        ++sailor.Leg;
        sailor.Berth = Between(5, 15);
        sailor.Side = Random() < 0.5 ? 0 : 1;
        sailor.NextTack = t + static_cast<int>(Between(30, 120));
    }
    Way FinishSide(const Sailor& sailor) const {
        return Towards(laid_.FinishAhead.Bearing() + 90) * (40 * std::sin(sailor.Skill * 1000));
    }

    void Prepare(int race) {
        for (std::size_t i = 0; i < sailors_.size(); ++i) {
            Sailor& sailor = sailors_[i];
            sailor.Leg = sailor.Corner = 0;
            sailor.Berth = Between(5, 15);
            sailor.Side = 0;
            sailor.Going = sailor.Started = false;
            sailor.Slot = Between(-0.45, 0.45) * lineLength_;
            sailor.Hold = Between(20, 36);
            sailor.Target = {};
            sailor.Over = -1;
            sailor.StopAfter = static_cast<int>(Between(3, 20));
            sailor.Home = Between(0, 360);
            sailor.Widest = Between(150, 420);
            if (!laid_.Islands.empty()) sailor.Shore = Between(20, 100);
            sailor.Tack = Random() < 0.5 ? 1 : -1;
            sailor.Delay = Random() < 0.75 ? 0.5 - 2.5 * std::log(1 - Random()) : Between(4, 20);
            sailor.Quits = 1 << 30;
            if (static_cast<int>(i) < plan_.Retire && race == 0)
                sailor.Quits = static_cast<int>(Between(400, 1500));
        }
    }

    void StepRace(Sailor& sailor, int t, int gun) {
        sailor.Places.push_back(sailor.At);
        if (sailor.Over >= 0) {
            if (t < sailor.Over + sailor.StopAfter) return Move(sailor, sailor.Heading, sailor.Speed);
            return Move(sailor, sailor.Home, 1.0);
        }
        if (!sailor.Started) {
            if (t < gun + 60 && !sailor.Going) return Approach(sailor, t, gun);
            Move(sailor, WindAt(t) - 44, FullSpeed(sailor, 44));
            if (sailor.At.Along(Towards(Wind)) > 6) {
                sailor.Started = true;
                sailor.Tack = -1;
                sailor.NextTack = t + static_cast<int>(Between(15, 120));
            }
            return;
        }
        if (t - gun > sailor.Quits && sailor.Leg < laid_.Roundings.size()) {
            sailor.Over = t;
            sailor.StopAfter = 0;
            return Move(sailor, sailor.Home, 1.5);
        }
        Race(sailor, t);
    }

    bool IsLate(std::size_t boat) const { return plan_.Fleets && 2 * boat >= sailors_.size(); }

    /// Sails one race and back behind the line; when the next gun may go.
    double SailRace(int gun) {
        Prepare(static_cast<int>(Guns.size()) - 1);
        const auto out = [&] {
            return std::ranges::all_of(sailors_, [](const Sailor& sailor) { return sailor.Over >= 0; });
        };
        int t = now_;
        for (int last = 1 << 30; t < last && t < gun + 9000; ++t) {
            for (std::size_t i = 0; i < sailors_.size(); ++i)
                StepRace(sailors_[i], t, IsLate(i) ? gun + 300 : gun);
            if (last == 1 << 30 && out()) last = t + 90;
        }
        std::vector<std::pair<int, int>> order;
        for (std::size_t i = 0; i < sailors_.size(); ++i)
            if (sailors_[i].Over >= 0 && sailors_[i].Leg == laid_.Roundings.size())
                order.emplace_back(sailors_[i].Over, static_cast<int>(i) + 1);
        std::ranges::sort(order);
        Finishes.emplace_back();
        for (const auto& [time, boat] : order) Finishes.back().push_back(boat);
        now_ = t;
        if (static_cast<int>(Guns.size()) == plan_.Races) return 0;
        Return(now_ + 900);
        return 60 * std::ceil((now_ + 300) / 60.0);
    }

    /// All sail back behind the line.
    void Return(int until) {
        for (; now_ < until; ++now_)
            for (std::size_t i = 0; i < sailors_.size(); ++i) {
                Sailor& sailor = sailors_[i];
                sailor.Places.push_back(sailor.At);
                const Way target = Upwind(-90, (static_cast<double>(i) / plan_.Boats - 0.5) * lineLength_);
                const bool there = (target - sailor.At).Length() < 25;
                if (there)
                    Move(sailor, sailor.Heading, 0.2);
                else
                    SailTo(sailor, target, now_);
            }
    }

    /// A start that is called back after a minute.
    void SailAway(int gun) {
        Prepare(1);
        for (; now_ < gun + 70; ++now_)
            for (Sailor& sailor : sailors_) StepRace(sailor, now_, gun);
        Return(gun + 300);
    }

    // Training.

    /// Drills up to the first mark and back to the coach, who lies below the last one: all go off within
    /// the same two minutes, each when it likes, some for two rounds; then they talk.
    void Train(int begin) {
        const Way coach = Upwind(-60);
        std::vector<Way> way{Marks.front(), Marks.back(), Marks.front(), Marks.back()};
        for (int drill = 0; drill < 5; ++drill) {
            for (Sailor& sailor : sailors_) {
                sailor.Leg = Random() < 0.5 ? 0 : 2;
                sailor.Delay = Between(0, 120);
                sailor.Berth = Between(5, 15);
                sailor.Slot = Between(-25, 25);
            }
            int home = 0;
            for (const int until = begin + 1800; now_ < until && home < std::ssize(sailors_);)
                home = Drill(way, coach, begin);
            begin = now_ + 150;
            for (; now_ < begin; ++now_)
                for (Sailor& sailor : sailors_) Wait(sailor, coach);
        }
    }
    void Wait(Sailor& sailor, Way at) {
        sailor.Places.push_back(sailor.At);
        const Way off = at + Upwind(0, sailor.Slot) - sailor.At;
        Move(sailor, off.Bearing(), off.Length() < 12 ? 0.3 : 1.9);
    }
    /// A second of a drill; how many boats are back from it.
    int Drill(const std::vector<Way>& way, Way coach, int begin) {
        int home = 0;
        for (Sailor& sailor : sailors_) {
            const bool back = sailor.Leg == way.size();
            home += back;
            if (back || now_ < begin + sailor.Delay) {
                Wait(sailor, coach);
                continue;
            }
            sailor.Places.push_back(sailor.At);
            const double side = sailor.Leg % 2 == 0 ? 1 : -1;  // marks are left to port
            const Way target = way[sailor.Leg] + Upwind(side * sailor.Berth / 2, side * sailor.Berth);
            SailTo(sailor, target, now_);
            if ((target - sailor.At).Length() < 4 + 1.6 * sailor.Speed) ++sailor.Leg;
        }
        ++now_;
        return home;
    }

    // Recording.

    bool IsHole(std::size_t boat, std::size_t t) const {
        return plan_.Gaps && (t + boat * 137) % 700 < 60 && t > 400;
    }

    void AddTrack(const std::vector<Way>& places, std::size_t boat) {
        const Plane water = Water();
        Track track;
        for (std::size_t t = boat % static_cast<std::size_t>(plan_.Every); t < places.size();
             t += static_cast<std::size_t>(plan_.Every)) {
            if (IsHole(boat, t)) continue;
            const Position at = water.From(places[t] + Way{dice_.Gauss(), dice_.Gauss()} * plan_.Noise);
            track.TrackLat.Add(at.Lat);
            track.TrackLon.Add(at.Lon);
            track.TrackTime.Add(static_cast<double>(t));
        }
        Boats.Boats.Add(std::move(track));
    }

    void Record() {
        for (std::size_t i = 0; i < sailors_.size(); ++i) AddTrack(sailors_[i].Places, i);
        if (!plan_.Buoys) return;
        for (const Way& mark : Marks) AddTrack(std::vector<Way>(sailors_.front().Places.size(), mark), 0);
    }

    const RegattaPlan plan_;
    Dice dice_;
    double phase_ = 0, swing_ = 0, lineLength_ = 100;
    RegattaCourse laid_;
    std::vector<Sailor> sailors_;
    int now_ = 0;
};

}  // namespace keelview
