#include "analysis/start_report.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "analysis/course_on_water.h"
#include "base/angles.h"

namespace keelview {

namespace {

constexpr double SlowestHeading = 0.5 * KnotMetres;  // below it a course tells no heading
constexpr int CrossingSearchFrom = -60;              // seconds

/// The line on the plane.
struct LineGeometry {
    Way First;
    Way Along;   // length 1, to the second end
    Way Course;  // length 1, at right angles, to the course side
    double Length = 0.0;
};

std::optional<LineGeometry> LineOf(const RaceControl& race, const FleetMotion& fleet,
                                   const RaceWind& wind) {
    if (race.CourseOrder.Empty()) return {};
    const CourseKey key = ParseCourseKey(race.CourseOrder[1]);
    if (!key.IsLine || !race.Lines.Holds(key.Number)) return {};
    const Line& line = race.Lines[key.Number];
    LineGeometry geometry;
    geometry.First = fleet.Water.To(line.FirstEnd());
    const Way whole = fleet.Water.To(line.SecondEnd()) - geometry.First;
    geometry.Length = whole.Length();
    if (!(geometry.Length > 0)) return {};
    geometry.Along = whole * (1 / geometry.Length);
    geometry.Course = {-geometry.Along.North, geometry.Along.East};
    Way ahead = Towards(wind.From(0).value_or(0));
    if (HasLegs(race)) {
        const Way middle = geometry.First + whole * 0.5;
        if (const auto next = MiddleOf(race, ParseCourseKey(race.CourseOrder[2])))
            ahead = fleet.Water.To(*next) - middle;
    }
    if (ahead.Along(geometry.Course) < 0) geometry.Course = geometry.Course * -1.0;
    return geometry;
}

StartLine DescribeLine(const LineGeometry& line, const RaceWind& wind) {
    StartLine told;
    told.Length = line.Length;
    told.Bearing = line.Along.Bearing();
    if (const auto from = wind.From(0)) {
        const double sine = std::clamp(Towards(*from).Along(line.Along), -1.0, 1.0);
        told.BiasDegrees = std::asin(sine) / DegToRad;
        told.BiasSigma = wind.FromSigma(0);
        told.Advantage = std::abs(line.Length * sine);
        told.AdvantageSigma = line.Length * std::sqrt(1 - sine * sine) * told.BiasSigma * DegToRad;
        told.FavouredEnd = sine >= 0 ? 2 : 1;
    }
    return told;
}

/// One boat seen from the line.
class Starter {
  public:
    Starter(const BoatMotion& motion, const LineGeometry& line, double bow)
        : motion_(motion), line_(line), bow_(bow) {}

    struct Sight {
        double Distance = 0.0;  // metres to the line
        double Place = 0.0;     // along it, of its length
        double Closing = 0.0;   // metres a second
        double Along = 0.0;     // metres a second along the line
        double Speed = 0.0;     // metres a second
        double Sigma = 0.0;     // metres
        double SpeedSigma = 0.0;
    };
    std::optional<Sight> At(double t) const {
        const auto now = motion_.At(t);
        if (!now) return {};
        Way bow = now->At - line_.First;
        const double speed = now->Velocity.Length();
        if (speed > SlowestHeading) bow = bow + now->Velocity * (bow_ / speed);
        return Sight{bow.Along(line_.Course),
                     bow.Along(line_.Along) / line_.Length,
                     now->Velocity.Along(line_.Course),
                     now->Velocity.Along(line_.Along),
                     now->Speed(),
                     now->PlaceSigma,
                     now->VelocitySigma};
    }

    BoatStart Tell() const {
        BoatStart start;
        const auto tell = [&](double t, std::optional<double>& distance, double& sigma) {
            const auto sight = At(t);
            if (!sight) return;
            distance = sight->Distance;
            sigma = sight->Sigma;
        };
        tell(-5, start.AtMinus5, start.Minus5Sigma);
        tell(-10, start.AtMinus10, start.Minus10Sigma);
        const auto gun = At(0);
        if (gun) {
            start.AtGun = gun->Distance;
            start.DistanceSigma = gun->Sigma;
            start.SpeedAtGun = gun->Speed / KnotMetres;
            start.SpeedAtGunSigma = gun->SpeedSigma / KnotMetres;
            start.Over = gun->Distance > 0 && gun->Place >= 0 && gun->Place <= 1;
        }
        if (start.Over == true) start.Returned = FindWay(false, 0, StartTo);
        const bool stayedOver = start.Over == true && !start.Returned;
        start.Crossing =
            stayedOver ? LastCrossingBeforeGun() : FindWay(true, start.Returned.value_or(0), StartTo);
        if (const auto crossing = start.Crossing) TellCrossing(*crossing, start);
        return start;
    }

  private:
    void TellCrossing(double t, BoatStart& start) const {
        const auto sight = At(t);
        if (!sight) return;
        start.Place = sight->Place;
        start.SpeedAtCrossing = sight->Speed / KnotMetres;
        start.SpeedAtCrossingSigma = sight->SpeedSigma / KnotMetres;
        start.CrossingSigma = sight->Sigma / std::max(sight->Closing, KnotMetres / 10);
        // It goes on along the line while the moment is unsure.
        start.PlaceSigma = std::hypot(sight->Sigma, sight->Along * start.CrossingSigma) / line_.Length;
    }

    std::optional<double> LastCrossingBeforeGun() const {
        std::optional<double> last;
        for (double t = CrossingSearchFrom; t < 0; t += 1)
            if (const auto found = FindWay(true, t, t + 1)) last = found;
        return last;
    }

    /// The first moment between two at which the boat comes over the line, or back over it or its
    /// extensions.
    std::optional<double> FindWay(bool ahead, double from, double to) const {
        const double sign = ahead ? 1 : -1;
        auto before = At(from);
        for (double t = from; t < to; t += 1) {
            const auto after = At(std::min(t + 1, to));
            if (before && after && before->Distance * sign < 0 && after->Distance * sign >= 0) {
                const double found = Meet(t, std::min(t + 1, to));
                const auto there = At(found);
                const double unsure = there ? 2 * there->Sigma / line_.Length : 0;
                if (!ahead || (there && there->Place >= -unsure && there->Place <= 1 + unsure))
                    return found;
            }
            before = after;
        }
        return {};
    }

    /// Halves the time between two moments on either side of the line.
    double Meet(double from, double to) const {
        const auto side = [&](double t) {
            const auto sight = At(t);
            return sight && sight->Distance >= 0;
        };
        const bool begin = side(from);
        while (to - from > 1e-4) {
            const double middle = (from + to) / 2;
            (side(middle) == begin ? from : to) = middle;
        }
        return (from + to) / 2;
    }

    const BoatMotion& motion_;
    const LineGeometry& line_;
    double bow_;
};

/// Ranks the boats by how far to windward they are at a moment.
void RankToWindward(const FleetMotion& fleet, const RaceWind& wind, double t,
                    std::optional<int> BoatStart::*rank, OneBased<BoatStart>& boats) {
    const auto from = wind.From(t);
    if (!from) return;
    std::vector<std::pair<double, int>> ladder;
    for (int boat = 1; boat <= boats.Count(); ++boat)
        if (const auto now = fleet.Boats[boat].At(t))
            ladder.emplace_back(-now->At.Along(Towards(*from)), boat);
    std::ranges::sort(ladder);
    int place = 0;
    for (const auto& [behind, boat] : ladder) boats[boat].*rank = ++place;
}

}  // namespace

StartReport ReportStart(const RaceControl& race, const FleetMotion& fleet, const RaceWind& wind) {
    StartReport report;
    report.Boats.Resize(fleet.Boats.Count());
    const std::optional<LineGeometry> line = LineOf(race, fleet, wind);
    if (!line) return report;
    report.Line = DescribeLine(*line, wind);
    for (int boat = 1; boat <= report.Boats.Count(); ++boat)
        report.Boats[boat] = Starter(fleet.Boats[boat], *line, race.BowAhead).Tell();
    RankToWindward(fleet, wind, 0, &BoatStart::Rank, report.Boats);
    RankToWindward(fleet, wind, 30, &BoatStart::Rank30, report.Boats);
    RankToWindward(fleet, wind, 60, &BoatStart::Rank60, report.Boats);
    return report;
}

}  // namespace keelview
