// make_demo FOLDER [BOATS]: writes the two demo races off Enoshima into FOLDER, the same bytes at each run:
// a race of 8 boats with English names and one of 20 with Japanese names, sailed by a small simulation in a
// breeze that swings. Tracks in gpsdat, wind in winddat, race control files in raceadmin, a document in
// attachment. Told a number of boats, it writes the race of a fleet of so many instead.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/angles.h"
#include "base/dates.h"
#include "base/files.h"
#include "base/text_encoding.h"
#include "demo_plans.h"
#include "racedata/earth_scale.h"
#include "racedata/limits.h"

namespace {

using namespace keelview;

constexpr double Variation = -7.0;  // degrees
constexpr int TimeDiffHours = 9;
constexpr int FirstSecond = -420;  // of the tracks, from the start

/// Metres east and north of the race's middle.
struct Spot {
    double East = 0.0;
    double North = 0.0;
};

/// Numbers that are the same with every library.
class Dice {
  public:
    explicit Dice(unsigned seed) : engine_(seed) {}
    double Between(double low, double high) {
        return low + (high - low) * (static_cast<double>(engine_()) / 4294967296.0);
    }

  private:
    std::mt19937 engine_;
};

double WindAtSecond(const DemoPlan& plan, double t) {
    return plan.Wind + plan.Swing * std::sin(t / 190.0 + plan.Seed) + 0.5 * plan.Swing * std::sin(t / 67.0);
}

double WindSpeedAtSecond(double t) {
    return 11.0 + 2.0 * std::sin(t / 260.0) + 0.8 * std::sin(t / 41.0);
}

double BearingTo(const Spot& from, const Spot& to) {
    return BearingOf(to.East - from.East, to.North - from.North);
}

double DistanceTo(const Spot& from, const Spot& to) {
    return std::hypot(to.East - from.East, to.North - from.North);
}

Spot Along(const Spot& from, double direction, double metres) {
    return {from.East + metres * std::sin(direction * DegToRad),
            from.North + metres * std::cos(direction * DegToRad)};
}

/// Boat speed in knots at an angle off the wind.
double SpeedAt(double windAngle, double upwindKnots, double strength) {
    const double off = std::abs(windAngle);
    const double reach =
        off < 45 ? off / 45.0 : 1.0 + 0.3 * std::sin((off - 45.0) / 135.0 * 180.0 * DegToRad);
    return upwindKnots * reach * (0.8 + 0.2 * strength / 11.0);
}

/// The marks of the course: start line from Pin to Committee, windward and leeward mark.
struct Course {
    Spot Pin;
    Spot Committee;
    Spot Windward;
    Spot Leeward;
};

Course LayCourse(const DemoPlan& plan, double lineMetres) {
    Course course;
    const Spot lineMiddle = Along({}, plan.Wind + 180, plan.LegMetres / 2 + 120);
    course.Pin = Along(lineMiddle, plan.Wind - 90, lineMetres / 2);
    course.Committee = Along(lineMiddle, plan.Wind + 90, lineMetres / 2);
    course.Windward = Along({}, plan.Wind, plan.LegMetres / 2);
    course.Leeward = Along({}, plan.Wind + 180, plan.LegMetres / 2);
    return course;
}

/// One boat sailing the course second by second.
class Sailor {
  public:
    /// A trim above 1 makes the boat so much faster.
    Sailor(const DemoPlan& plan, const Course& course, int number, double trim)
        : plan_(plan), course_(course), number_(number) {
        Dice dice(plan.Seed * 1000 + static_cast<unsigned>(number));
        const double share = (number + 0.5) / static_cast<double>(plan.Names.size());
        slot_ = {course.Pin.East + (course.Committee.East - course.Pin.East) * (0.06 + 0.88 * share),
                 course.Pin.North + (course.Committee.North - course.Pin.North) * (0.06 + 0.88 * share)};
        const double aside = dice.Between(-80, 80);
        const double behind = dice.Between(40, 160);
        at_ = Along(Along(slot_, plan.Wind + 180, behind), plan.Wind + 90, aside);
        skill_ = trim * dice.Between(0.93, 1.03);
        height_ = dice.Between(-1.5, 1.5);
        tack_ = dice.Between(0, 1) < 0.6 ? 1 : -1;
        late_ = dice.Between(0, 6);
    }

    /// Moves on by the second that begins at t.
    void Sail(int t) {
        const double wind = WindAtSecond(plan_, t);
        if (t < StartAt()) {
            Jostle(t, wind);
        } else if (finish_ || HasRetired()) {
            SailHome(wind);
        } else {
            Race(t, wind);
        }
    }

    const Spot& At() const { return at_; }
    bool Resting() const { return rest_ > 150; }
    /// The moment of the finish, in seconds from the start.
    std::optional<double> Finish() const { return finish_; }

  private:
    double HoldMetres() const { return 50.0 + 8 * (number_ % 3); }

    /// When it leaves its hold for the line, at some two metres a second.
    double StartAt() const { return (number_ == plan_.Early ? -20.0 : late_) - HoldMetres() / 2; }

    void Move(double heading, double knots) {
        constexpr double quickest = 14, gathering = 0.1, lost = 0.92;  // degrees, and shares, a second
        const double turn = WrapDifference(heading - heading_);
        heading_ = WrapDirection(heading_ + std::clamp(turn, -quickest, quickest));
        speed_ += knots > speed_ ? gathering * (knots - speed_) : std::max(knots - speed_, -0.35);
        if (std::abs(turn) > 30) speed_ *= lost;
        at_ = Along(at_, heading_, speed_ * MetresPerNauticalMile / 3600.0);
    }

    /// Reaches to and fro below the line and comes back to its slot for the run at it.
    void Jostle(int t, double wind) {
        const Spot hold = Along(slot_, plan_.Wind + 135, HoldMetres());
        const double left = StartAt() - t;
        const double side = std::fmod(t + 4000.0 + number_ * 17.0, 80.0) < 40 ? 90 : -90;
        const double away = DistanceTo(at_, hold);
        const bool comeBack = away > 70 || left < 35;
        const double heading = comeBack ? BearingTo(at_, hold) : wind + side;
        const double angle = WrapDifference(heading - wind);
        const double safe = std::abs(angle) < 50 ? wind + (angle < 0 ? -50 : 50) : heading;
        Move(safe, comeBack && away < 20 ? 0.8 : 2.6);
    }

    int LastMark() const { return 2 * plan_.Rounds - 1; }
    bool Upwind() const { return leg_ % 2 == 1; }

    /// Where the boat sails to: round a mark, which stays to port, in three corners, each boat on its own
    /// circle.
    Spot Target() const {
        if (leg_ > LastMark()) return slot_;
        const double berth = 20 + 3.0 * (number_ % 5);
        const double side = plan_.Wind + (Upwind() ? 90 : -90) - 90 * corner_;
        return Along(Upwind() ? course_.Windward : course_.Leeward, side, berth);
    }

    /// Runs at the line on starboard tack; over early, goes back below it and starts once more.
    void StartOff(int t) {
        constexpr double OnStarboard = -45;
        const bool early = number_ == plan_.Early;
        const Spot below = Along(slot_, plan_.Wind + 180 + OnStarboard, 40);
        const Spot above = Along(slot_, plan_.Wind + OnStarboard, 30);
        const bool back = early && t > 8 && t < 55;
        Move(BearingTo(at_, back ? below : above), 4.2);
        if (AlongWind(slot_) < -12 && !(early && t < 60)) leg_ = 1;
    }

    void Race(int t, double wind) {
        if (leg_ == 0) {
            StartOff(t);
            return;
        }
        if (leg_ <= LastMark() && DistanceTo(at_, Target()) < 9 + speed_) {
            corner_ = (corner_ + 1) % 3;
            if (corner_ == 0) ++leg_;
            sinceTack_ = 0;
        }
        const Spot target = Target();
        const double before = AlongWind(target);
        if (corner_ > 0)
            Move(BearingTo(at_, target), 0.85 * plan_.Knots);
        else
            Beat(t, wind, target, Upwind(), Off());
        const double after = AlongWind(target);
        if (leg_ > LastMark() && after > 0) finish_ = t + before / (before - after);
    }

    /// Half way down the last leg.
    bool HasRetired() {
        retired_ = retired_ || (number_ == plan_.Retires && leg_ > LastMark() &&
                                AlongWind(slot_) > -plan_.LegMetres / 2);
        return retired_;
    }

    double Off() const { return leg_ % 2 == 1 ? 43.0 + height_ : 150.0 + height_; }

    /// Metres that a target lies up the wind.
    double AlongWind(const Spot& target) const {
        return (target.East - at_.East) * std::sin(plan_.Wind * DegToRad) +
               (target.North - at_.North) * std::cos(plan_.Wind * DegToRad);
    }

    /// Beats or runs: tacks on the lay line, on the header, and away from the edge of the course.
    void Beat(int t, double wind, const Spot& target, bool upwind, double off) {
        ++sinceTack_;
        const double toTarget = WrapDifference(BearingTo(at_, target) - wind);
        const bool fetches = upwind ? std::abs(toTarget) >= off : std::abs(toTarget) <= off;
        double heading = wind + toTarget;
        if (!fetches) {
            const double headed = WrapDifference(wind - plan_.Wind) * tack_;
            const double across = toTarget * tack_;
            const double patience = 70 + 25 * (number_ % 4);
            const bool pastLay = across < 0 && (upwind ? across < 1 - off : across > -1 - off);
            const bool shifted = (upwind ? headed : -headed) > 0.5 * plan_.Swing && sinceTack_ > patience;
            const bool wide = std::abs(Across(target)) > 0.42 * plan_.LegMetres &&
                              Across(target) * tack_ * (upwind ? -1 : 1) < 0;
            if (sinceTack_ > 30 && (pastLay || shifted || wide || sinceTack_ > 260)) {
                tack_ = -tack_;
                sinceTack_ = 0;
            }
            heading = wind + tack_ * off;
        }
        const double angle = WrapDifference(heading - wind);
        Move(heading + 1.5 * std::sin(t / 9.0 + number_),
             skill_ * SpeedAt(angle, plan_.Knots, WindSpeedAtSecond(t)) +
                 0.15 * std::sin(t / 31.0 + number_));
    }

    /// Metres that the target lies to the right of the boat, looking up the wind.
    double Across(const Spot& target) const {
        return (target.East - at_.East) * std::cos(plan_.Wind * DegToRad) -
               (target.North - at_.North) * std::sin(plan_.Wind * DegToRad);
    }

    void SailHome(double wind) {
        ++rest_;
        Move(wind + 100, rest_ < 90 ? 3.5 : 0.6);
    }

    const DemoPlan& plan_;
    const Course& course_;
    int number_;
    Spot slot_;  // the place on the line that the boat starts from
    Spot at_;
    double skill_ = 1.0;
    double height_ = 0.0;
    double late_ = 0.0;
    double heading_ = 0.0;
    double speed_ = 2.0;
    int tack_ = 1;
    int leg_ = 0;
    int corner_ = 0;  // of the present mark
    int sinceTack_ = 0;
    int rest_ = 0;
    std::optional<double> finish_;
    bool retired_ = false;
};

std::string Format(const char* form, auto... values) {
    std::array<char, 160> text{};
    std::snprintf(text.data(), text.size(), form, values...);
    return text.data();
}

/// The folder, the race and the earth under it, and everything that is written of them.
class DemoRace {
  public:
    DemoRace(std::filesystem::path folder, const DemoPlan& plan)
        : folder_(std::move(folder)), plan_(plan), scale_(ComputeEarthScale(plan.Lat)) {}

    bool Write() {
        const double lineMetres =
            std::max(120.0, static_cast<double>(plan_.Names.size()) * plan_.BoatLength * 1.6);
        course_ = LayCourse(plan_, lineMetres);
        SettleCloseFinish();
        for (std::size_t boat = 0; boat < plan_.Names.size(); ++boat) WriteTrack(static_cast<int>(boat));
        WriteWind();
        WriteControlFile();
        return sound_;
    }

  private:
    double TrimOf(int boat) const { return boat == plan_.Close ? closeTrim_ : 1.0; }

    std::optional<double> FinishOf(int boat, double trim) const {
        Sailor sailor(plan_, course_, boat, trim);
        for (int t = FirstSecond; t <= plan_.Duration && !sailor.Resting(); ++t) sailor.Sail(t);
        return sailor.Finish();
    }

    /// Trims the boat of the close finish, as little as it takes, to come in half a second behind another.
    void SettleCloseFinish() {
        constexpr double behind = 0.5, near = 0.2, widest = 0.03, step = 0.0001;
        std::vector<double> others;
        for (int boat = 0; boat < static_cast<int>(plan_.Names.size()); ++boat)
            if (const auto finish = FinishOf(boat, 1.0); finish && boat != plan_.Close)
                others.push_back(*finish);
        for (double aside = 0; aside <= widest; aside += step)
            for (const double trim : {1 - aside, 1 + aside})
                if (const auto finish = FinishOf(plan_.Close, trim))
                    for (const double other : others)
                        if (std::abs(*finish - other - behind) < near) {
                            closeTrim_ = trim;
                            return;
                        }
    }

    double LatOf(const Spot& at) const { return plan_.Lat + at.North / scale_.MetresPerLatMinute; }
    double LonOf(const Spot& at) const { return plan_.Lon + at.East / scale_.MetresPerLonMinute; }
    CivilTime Start() const { return ParseDateTime(plan_.Start).value_or(0); }
    std::string TrackName(int boat) const { return plan_.Prefix + Format("%02d.trk", boat + 1); }

    void Save(std::string_view where, std::string_view text, bool shiftJis) {
        const auto bytes = EncodeText(text, shiftJis ? TextEncoding::ShiftJis : TextEncoding::Utf8);
        const auto path = folder_ / where;
        if (!bytes || WriteFileAtomically(path, *bytes)) {
            std::fprintf(stderr, "make_demo: %s could not be written\n", path.string().c_str());
            sound_ = false;
        }
    }

    std::string Fix(const Spot& at, int t, bool degrees) const {
        const double lat = LatOf(at);
        const double lon = LonOf(at);
        const CivilTime utc = Start() + t - TimeDiffHours * 3600;
        const std::string date = DateText(utc);
        const std::string place =
            degrees ? Format("N%.7f E%.7f", lat / 60, lon / 60)
                    : Format("N%02d%08.5f E%03d%08.5f", static_cast<int>(lat / 60), std::fmod(lat, 60),
                             static_cast<int>(lon / 60), std::fmod(lon, 60));
        return "T " + place + " " + date.substr(8, 2) + "/" + date.substr(5, 2) + "/" + date.substr(2, 2) +
               " " + TimeOfDayText(utc) + " 0\r\n";
    }

    void WriteTrack(int boat) {
        const bool degrees = boat % 5 == 3;
        std::string text = "H  SOFTWARE NAME & VERSION\r\nI  Keelview demo\r\nM WGS84\r\n";
        if (degrees) text += "U LAT LON DEG\r\n";
        Sailor sailor(plan_, course_, boat, TrimOf(boat));
        Dice dice(plan_.Seed * 1000 + 500 + static_cast<unsigned>(boat));
        Spot noise;
        for (int t = FirstSecond; t <= plan_.Duration + 60; ++t) {
            sailor.Sail(t);
            noise = {0.97 * noise.East + dice.Between(-0.18, 0.18),
                     0.97 * noise.North + dice.Between(-0.18, 0.18)};
            const bool lost = boat == plan_.Gap && t > 1100 && t < 1300;
            if (!lost)
                text += Fix({sailor.At().East + noise.East, sailor.At().North + noise.North}, t, degrees);
            if (sailor.Resting()) break;
        }
        Save("gpsdat/" + TrackName(boat), text, true);
    }

    std::string WindName() const { return plan_.File.substr(0, plan_.File.find('.')) + "_WIND.CSV"; }

    void WriteWind() {
        std::string text = "TIME,WIND SPEED,WIND DIRECTION (Mag)\r\n";
        for (int t = -400; t <= plan_.Duration; t += 20)
            text += DateTimeText(Start() + t) + Format(",%.1f,%.0f\r\n", WindSpeedAtSecond(t),
                                                       WrapDirection(WindAtSecond(plan_, t) - Variation));
        Save("winddat/" + WindName(), text, true);
    }

    std::string PlaceText(const Spot& at) const { return Format("%.5f, %.5f", LatOf(at), LonOf(at)); }

    void WriteControlFile() {
        std::string text =
            "WF, " + WindName() + "\r\nT1, " + plan_.Title1 + "\r\nT2, " + plan_.Title2 + "\r\n";
        text += Format("MG, %.0f\r\nLG, %.1f\r\n", Variation, plan_.BoatLength);
        text +=
            "ST, " + DateTimeText(Start()) + "\r\nFT, " + DateTimeText(Start() + plan_.Duration) + "\r\n";
        text += Format("TD, %d\r\nWD, %.0f\r\n", TimeDiffHours, plan_.Wind);
        for (std::size_t boat = 0; boat < plan_.Names.size(); ++boat)
            text += "BN, " + TrackName(static_cast<int>(boat)) + ", " + plan_.Names[boat] + "\r\n";
        text += "MK, " + PlaceText(course_.Windward) + "\r\nMK, " + PlaceText(course_.Leeward) + "\r\n";
        text += "LN, " + PlaceText(course_.Pin) + ", " + PlaceText(course_.Committee) + "\r\nCRS, L1";
        for (int mark = 1; mark < 2 * plan_.Rounds; ++mark) text += mark % 2 == 1 ? ", MK1" : ", MK2";
        text += ", L1\r\nLL, 43,150\r\nBT,5\r\nAT, sailing_instructions.txt\r\n";
        Save("raceadmin/" + plan_.File, text, true);
    }

    std::filesystem::path folder_;
    const DemoPlan& plan_;
    EarthScale scale_;
    Course course_;
    double closeTrim_ = 1.0;
    bool sound_ = true;
};

}  // namespace

int main(int argc, char** argv) {
    const int fleet = argc == 3 ? std::atoi(argv[2]) : 0;
    if (argc < 2 || argc > 3 || (argc == 3 && (fleet < 1 || fleet > MaxBoats))) {
        std::fputs("usage: make_demo FOLDER [BOATS]\n", stderr);
        return 2;
    }
    const std::filesystem::path folder = argv[1];
    if (fleet > 0) return DemoRace(folder, FleetRace(fleet)).Write() ? 0 : 1;
    const bool sound = DemoRace(folder, EnglishRace()).Write() && DemoRace(folder, JapaneseRace()).Write();
    const auto failed = WriteFileAtomically(folder / "attachment" / "sailing_instructions.txt",
                                            "Sagami Bay Autumn Series\r\n\r\nCourse: three times to the "
                                            "windward mark, round the leeward mark; finish down the wind."
                                            "\r\nMarks are left to port.\r\n");
    return sound && !failed ? 0 : 1;
}
