#pragma once

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>
#include <vector>

#include "analysis/mark_passes.h"
#include "analysis/plane.h"
#include "racedata/wind_file.h"

namespace keelview {

/// What boat 1 does worse than the others.
enum class Fault { None, LateStart, BadTurns, Slow, Detour };

/// What a simulated fleet sails in, and how it is recorded.
struct FleetPlan {
    unsigned Seed = 1;
    int Boats = 5;
    int FixesPerSecond = 1;
    double Noise = 0.0;        ///< of places, metres each way
    bool OwnVelocity = false;  ///< recorded too, with a noise of 0.05 m/s each way
    double Wind = 0.0;         ///< over the water, degrees
    double Swing = 0.0;        ///< degrees to either side in `Period` seconds
    double Period = 420.0;
    Way Current = {};    ///< knots
    double Waves = 0.0;  ///< degrees that they turn a boat to either side
    int Last = 1200;     ///< second
    bool Alike = false;  ///< all boats as fast, and turns as many and, of a kind, as dear
    Fault Planted = Fault::None;
    double Spread = 0.0;    ///< degrees by which each boat sails higher or lower on each tack
    double Turned = 0.0;    ///< degrees by which the whole scene is turned
    bool Mirrored = false;  ///< east for west, before that
};

/// A race of boats by a known polar in known wind and current: over a line of 150 m, 1200 m to windward,
/// back by 1100 m and up again for 700 m, with tacks and gybes of known cost. The truths come with it.
class SimulatedFleet {
  public:
    struct Turn {
        int Boat = 0;
        bool Gybe = false;
        double Time = 0.0;  ///< its middle
        double Loss = 0.0;  ///< metres to windward, of a gybe to leeward
    };
    struct Start {
        double Crossing = 0.0;  ///< seconds
        double AtGun = 0.0;     ///< metres
        double Place = 0.0;     ///< from the first end
    };
    RaceControl Race;
    Tracks Boats;
    EarthScale Scale = ComputeEarthScale(Middle.Lat);
    MarkPasses Passes;
    WindData Wind;
    std::vector<Turn> Turns;
    std::vector<Start> Starts;

    explicit SimulatedFleet(const FleetPlan& plan)
        : plan_(plan), engine_(plan.Seed), noise_(plan.Seed + 1000) {
        Race.RaceDuration = plan.Last;
        LayCourse();
        Race.WindFileName = "simulated";
        for (int t = From; t <= plan.Last; t += 10)
            Wind.Add({.WindTime = t, .WindSpeed = 10, .WindDirection = WrapDirection(Seen(WindFrom(t)))});
        for (int boat = 1; boat <= plan.Boats; ++boat) Sail(boat);
    }

    /// The wind's direction as it is seen in the scene, degrees.
    double SeenWind(double t) const { return WrapDirection(std::fmod(Seen(WindFrom(t)) + 720, 360)); }

  private:
    static constexpr Position Middle{35 * 60 + 17, 139 * 60 + 29};
    static constexpr int From = -90;
    static constexpr double Step = 0.1;
    static constexpr double LineLength = 150, Top = 1200, Bottom = 100, FinishAt = 800;  // metres
    static constexpr double TurnSeconds = 6, RoundingSeconds = 8, DipSeconds = 14;
    static constexpr double StrayMetres = 150;  // that a detour leads beyond the mark

    double Random() { return static_cast<double>(engine_()) / 4294967296.0; }
    double Between(double low, double high) { return low + (high - low) * Random(); }
    double Gauss() {
        double sum = -6;
        for (int i = 0; i < 12; ++i) sum += static_cast<double>(noise_()) / 4294967296.0;
        return sum;
    }
    double WindFrom(double t) const {
        return plan_.Wind + plan_.Swing * std::sin(2 * std::numbers::pi * t / plan_.Period + plan_.Seed);
    }
    double Seen(double bearing) const { return (plan_.Mirrored ? -bearing : bearing) + plan_.Turned; }
    Way Seen(Way way) const {
        if (plan_.Mirrored) way.East = -way.East;
        return Towards(plan_.Turned) * way.North + Towards(plan_.Turned + 90) * way.East;
    }
    Position PlaceOf(Way way) const {
        const Way seen = Seen(way);
        return {Middle.Lat + seen.North / Scale.MetresPerLatMinute,
                Middle.Lon + seen.East / Scale.MetresPerLonMinute};
    }
    Way Upwind(double metres, double right = 0) const {
        return Towards(plan_.Wind) * metres + Towards(plan_.Wind + 90) * right;
    }

    void LayCourse() {
        const auto line = [&](double at) {
            const Position port = PlaceOf(Upwind(at, -LineLength / 2));
            const Position starboard = PlaceOf(Upwind(at, LineLength / 2));
            Race.Lines.Add({TextNumber(port.Lat), TextNumber(port.Lon), TextNumber(starboard.Lat),
                            TextNumber(starboard.Lon)});
        };
        line(0), line(FinishAt);
        for (const double at : {Top, Bottom}) {
            const Position place = PlaceOf(Upwind(at));
            Race.Marks.Add({TextNumber(place.Lat), TextNumber(place.Lon)});
        }
        for (const char* entry : {"L1", "MK1", "MK2", "L2"}) Race.CourseOrder.Add(entry);
    }

    /// A boat on its way. It turns from one angle to another off the wind within some seconds.
    struct Boat {
        Way At;
        double Time = From;
        double FromAngle = -45, ToAngle = -45;  ///< off the wind, counted through 0 or 180
        double TurnFrom = -1000, TurnFor = 1;
        double DipFrom = -1000, Dip = 0;
        double NextTurn = 0;
        double Skill = 1;            ///< of the polar's speed
        double Up = 45, Down = 150;  ///< degrees off the wind

        double Angle() const {
            const double f = std::clamp((Time - TurnFrom) / TurnFor, 0.0, 1.0);
            return FromAngle + (ToAngle - FromAngle) * f;
        }
        double Full(double angle) const {
            const double off = std::abs(std::remainder(angle, 360.0));
            return Skill * (2.0 + 1.3 * std::sin((off - 20) * DegToRad));
        }
        double SpeedFactor() const {
            if (Time < 0) return 0.3 + 0.7 * std::pow(std::sin((Time - From) / -From * 90 * DegToRad), 4);
            const double f = (Time - DipFrom) / DipSeconds;
            return f > 0 && f < 1 ? 1 - Dip * std::pow(std::sin(f * std::numbers::pi), 2) : 1;
        }
        void TurnTo(double angle, double seconds) {
            FromAngle = ToAngle;
            ToAngle = angle;
            TurnFrom = Time;
            TurnFor = seconds;
        }
    };

    Way VelocityOf(const Boat& boat) const {
        const double waves =
            plan_.Waves * std::sin(2 * std::numbers::pi * boat.Time / 7 + boat.Skill * 100);
        return Towards(WindFrom(boat.Time) + boat.Angle() + waves) *
                   (boat.Full(boat.Angle()) * boat.SpeedFactor()) +
               plan_.Current * KnotMetres;
    }

    void Sail(int number) {
        Boat boat;
        const auto has = [&](Fault fault) { return number == 1 && plan_.Planted == fault; };
        boat.Skill = plan_.Alike ? 1 : Between(0.94, 1.06);
        if (has(Fault::Slow)) boat.Skill *= 0.93;
        Start start{Between(-2, 8), 0, Between(0.15, 0.85)};
        if (has(Fault::LateStart)) start.Crossing += 20;
        boat.NextTurn = plan_.Alike ? start.Crossing + 60 : Between(40, 120);
        std::vector<Way> places, velocities;  // a value each step
        const auto go = [&](double until) {
            while (boat.Time < until - Step / 2) {
                places.push_back(boat.At);
                velocities.push_back(VelocityOf(boat));
                boat.At = boat.At + velocities.back() * Step;
                boat.Time += Step;
                if (boat.Time > 0) Steer(boat, number);
            }
        };
        const double whole = std::floor(start.Crossing / Step) * Step;
        go(whole);
        const Way over = boat.At + VelocityOf(boat) * (start.Crossing - whole);
        const Way shift = Upwind(0, (start.Place - 0.5) * LineLength) - over;
        for (Way& place : places) place = place + shift;
        boat.At = boat.At + shift;
        passes_ = {static_cast<int>(std::floor(start.Crossing + 0.5))};
        go(plan_.Last);
        Starts.push_back(start);
        Starts.back().AtGun = places[static_cast<std::size_t>(-From / Step)].Along(Towards(plan_.Wind));
        Record(places, velocities);
        Passes.MarkPassTime.Add({});
        for (int entry = 0; entry < 4; ++entry)
            Passes.MarkPassTime.Last().Add(entry < std::ssize(passes_) ? std::optional(passes_[entry])
                                                                       : std::nullopt);
    }

    /// About an angle, as high or low as a helmsman sails it this time.
    double Sailed(double angle) {
        return plan_.Spread > 0 ? angle + Between(-plan_.Spread, plan_.Spread) : angle;
    }

    void Steer(Boat& boat, int number) {
        const double up = boat.At.Along(Towards(plan_.Wind));
        const std::size_t leg = passes_.size();
        const bool turning = boat.Time < boat.TurnFrom + RoundingSeconds;
        const bool strays = number == 1 && plan_.Planted == Fault::Detour && leg == 1;
        const double top = strays ? Top + StrayMetres : Top;
        const bool away = std::abs(std::remainder(boat.ToAngle, 360.0)) > 90;
        if (leg == 3 && up >= FinishAt) passes_.push_back(static_cast<int>(boat.Time));
        if (turning) return;
        if (strays && away && up <= Top) {
            passes_.push_back(static_cast<int>(boat.Time));
        } else if ((leg == 1 && up >= top && !away) || (leg == 2 && up <= Bottom)) {
            const double side = std::remainder(boat.ToAngle, 360.0) < 0 ? -1 : 1;
            boat.ToAngle = std::remainder(boat.ToAngle, 360.0);
            boat.TurnTo(side * (leg == 1 ? boat.Down : boat.Up), RoundingSeconds);
            if (!strays) passes_.push_back(static_cast<int>(boat.Time + RoundingSeconds / 2));
            boat.NextTurn = boat.Time + (plan_.Alike ? 70 : Between(50, 120));
        } else if (boat.Time >= boat.NextTurn && up < Top - 60 && (leg != 2 || up > Bottom + 60)) {
            const bool gybe = leg == 2;
            const double angle = std::remainder(boat.ToAngle, 360.0);
            boat.ToAngle = angle;
            boat.Dip = gybe ? Between(0.1, 0.3) : Between(0.3, 0.6);
            if (plan_.Alike) boat.Dip = gybe ? 0.2 : 0.4;
            if (number == 1 && plan_.Planted == Fault::BadTurns) boat.Dip *= 2.2;
            boat.DipFrom = boat.Time;
            const double other = -std::copysign(Sailed(gybe ? boat.Down : boat.Up), angle);
            boat.TurnTo(gybe ? other + std::copysign(360, angle) : other, TurnSeconds);
            Turns.push_back({number, gybe, boat.Time + TurnSeconds / 2, LossOf(boat, gybe)});
            boat.NextTurn = boat.Time + (plan_.Alike ? 80 : Between(55, 110));
        }
    }

    /// What the turn that begins now costs, against sailing on in a steady wind.
    double LossOf(Boat boat, bool gybe) const {
        const double good = boat.Full(boat.FromAngle) * std::cos(boat.FromAngle * DegToRad);
        double loss = 0;
        for (const double end = boat.Time + DipSeconds; boat.Time < end; boat.Time += Step)
            loss += Step * (good - boat.Full(boat.Angle()) * boat.SpeedFactor() *
                                       std::cos(boat.Angle() * DegToRad));
        return gybe ? -loss : loss;
    }

    void Record(const std::vector<Way>& places, const std::vector<Way>& velocities) {
        Track track;
        const auto every = static_cast<std::size_t>(std::lround(1 / Step / plan_.FixesPerSecond));
        for (std::size_t i = 0; i < places.size(); i += every) {
            const Position at = PlaceOf(places[i] + Way{Gauss(), Gauss()} * plan_.Noise);
            track.TrackLat.Add(at.Lat);
            track.TrackLon.Add(at.Lon);
            track.TrackTime.Add(std::round((From + static_cast<double>(i) * Step) * 1000) / 1000);
            if (!plan_.OwnVelocity) continue;
            const Way own = Seen(velocities[i] + Way{Gauss(), Gauss()} * 0.05);
            track.TrackOwnSpeed.Add(static_cast<float>(own.Length() / KnotMetres));
            track.TrackOwnCourse.Add(static_cast<float>(own.Bearing()));
        }
        Race.Boats.Add({});
        Boats.Boats.Add(std::move(track));
    }

    const FleetPlan plan_;
    std::mt19937 engine_;
    std::mt19937 noise_;  // apart, so that fleets of one seed sail alike however they are recorded
    std::vector<int> passes_;
};

}  // namespace keelview
