#include "report/coach_report.h"

#include <optional>
#include <string_view>

namespace keelview {

namespace {

template <class Number>
void MaybeMember(JsonWriter& json, std::string_view name, const std::optional<Number>& value) {
    json.Key(name);
    value ? json.Number(static_cast<double>(*value)) : json.Null();
}

void MaybeMember(JsonWriter& json, std::string_view name, const std::optional<bool>& value) {
    json.Key(name);
    value ? json.Bool(*value) : json.Null();
}

/// A sigma stands where its value does.
template <class Number>
void WithSigma(JsonWriter& json, std::string_view name, std::string_view sigmaName,
               const std::optional<Number>& value, double sigma) {
    MaybeMember(json, name, value);
    MaybeMember(json, sigmaName, value ? std::optional(sigma) : std::nullopt);
}

std::string_view NameOf(ManoeuvreKind kind) {
    switch (kind) {
        case ManoeuvreKind::Tack:
            return "tack";
        case ManoeuvreKind::Gybe:
            return "gybe";
        case ManoeuvreKind::Rounding:
            return "rounding";
        default:
            return "turn";
    }
}

std::string_view NameOf(NoLoss why) {
    switch (why) {
        case NoLoss::Kind:
            return "kind";
        case NoLoss::OtherTurn:
            return "other turn";
        case NoLoss::Shift:
            return "wind shift";
        case NoLoss::Track:
            return "track";
        default:
            return "";
    }
}

std::string_view NameOf(WindKnowledge knowledge) {
    switch (knowledge) {
        case WindKnowledge::Measured:
            return "measured";
        case WindKnowledge::Estimated:
            return "estimated";
        case WindKnowledge::Typed:
            return "typed";
        default:
            return "none";
    }
}

void WriteLine(JsonWriter& json, const StartLine& line) {
    json.Key("line");
    json.BeginObject();
    json.Member("length", line.Length);
    json.Member("bearing", line.Bearing);
    WithSigma(json, "bias_degrees", "bias_sigma", line.BiasDegrees, line.BiasSigma);
    WithSigma(json, "advantage_metres", "advantage_sigma", line.Advantage, line.AdvantageSigma);
    MaybeMember(json, "favoured_end", line.FavouredEnd);
    json.EndObject();
}

void WriteBoatStart(JsonWriter& json, int boat, const BoatStart& start) {
    json.BeginObject();
    json.Member("number", boat);
    WithSigma(json, "at_gun", "at_gun_sigma", start.AtGun, start.DistanceSigma);
    WithSigma(json, "at_minus_5", "at_minus_5_sigma", start.AtMinus5, start.Minus5Sigma);
    WithSigma(json, "at_minus_10", "at_minus_10_sigma", start.AtMinus10, start.Minus10Sigma);
    WithSigma(json, "crossing", "crossing_sigma", start.Crossing, start.CrossingSigma);
    WithSigma(json, "place", "place_sigma", start.Place, start.PlaceSigma);
    WithSigma(json, "speed_at_gun", "speed_at_gun_sigma", start.SpeedAtGun, start.SpeedAtGunSigma);
    WithSigma(json, "speed_at_crossing", "speed_at_crossing_sigma", start.SpeedAtCrossing,
              start.SpeedAtCrossingSigma);
    MaybeMember(json, "ocs", start.Over);
    MaybeMember(json, "returned", start.Returned);
    MaybeMember(json, "rank_gun", start.Rank);
    MaybeMember(json, "rank_30", start.Rank30);
    MaybeMember(json, "rank_60", start.Rank60);
    json.EndObject();
}

void WriteManoeuvre(JsonWriter& json, int boat, const Manoeuvre& manoeuvre) {
    json.BeginObject();
    json.Member("boat", boat);
    json.Member("kind", NameOf(manoeuvre.Kind));
    json.Member("time", manoeuvre.Time);
    json.Member("time_sigma", manoeuvre.TimeSigma);
    json.Member("from", manoeuvre.From);
    json.Member("from_sigma", manoeuvre.FromSigma);
    json.Member("to", manoeuvre.To);
    json.Member("to_sigma", manoeuvre.ToSigma);
    json.Member("duration", manoeuvre.Duration);
    json.Member("duration_sigma", manoeuvre.DurationSigma);
    json.Member("rate", manoeuvre.Rate);
    json.Member("rate_sigma", manoeuvre.RateSigma);
    json.Member("speed_before", manoeuvre.SpeedBefore);
    json.Member("speed_before_sigma", manoeuvre.SpeedBeforeSigma);
    json.Member("speed_min", manoeuvre.SpeedLeast);
    json.Member("speed_min_sigma", manoeuvre.SpeedLeastSigma);
    json.Member("speed_after", manoeuvre.SpeedAfter);
    json.Member("speed_after_sigma", manoeuvre.SpeedAfterSigma);
    WithSigma(json, "loss_metres", "loss_sigma", manoeuvre.LossMetres, manoeuvre.LossSigma);
    WithSigma(json, "loss_seconds", "loss_seconds_sigma", manoeuvre.LossSeconds,
              manoeuvre.LossSecondsSigma);
    json.Member("shift", manoeuvre.Shift);
    json.Member("shift_sigma", manoeuvre.ShiftSigma);
    json.Key("reason");
    manoeuvre.Why == NoLoss::None ? json.Null() : json.String(NameOf(manoeuvre.Why));
    json.EndObject();
}

void WriteLeg(JsonWriter& json, const std::optional<LegMadeGood>& made) {
    if (!made) return json.Null();
    json.BeginObject();
    json.Member("seconds", made->Seconds);
    json.Member("speed", made->Speed);
    json.Member("speed_sigma", made->SpeedSigma);
    json.Member("vmc", made->Vmc);
    json.Member("vmc_sigma", made->Sigma);
    WithSigma(json, "vmg", "vmg_sigma", made->Vmg, made->Sigma);
    WithSigma(json, "efficiency", "efficiency_sigma", made->Efficiency, made->EfficiencySigma);
    WithSigma(json, "port", "port_sigma", made->PortShare, made->ShareSigma);
    WithSigma(json, "starboard", "starboard_sigma", made->StarboardShare, made->ShareSigma);
    json.Member("sailed", made->Sailed);
    json.Member("sailed_sigma", made->SailedSigma);
    json.Member("straight", made->Straight);
    json.Member("straight_sigma", made->StraightSigma);
    WithSigma(json, "overstood", "overstood_sigma", made->Overstood, made->OverstoodSigma);
    json.EndObject();
}

void WritePoint(JsonWriter& json, std::string_view name, const std::optional<PolarPoint>& point) {
    json.Key(name);
    if (!point) return json.Null();
    json.BeginObject();
    json.Member("angle", point->Angle);
    json.Member("angle_sigma", point->Sigma);
    json.Member("speed", point->Speed);
    json.Member("speed_sigma", point->SpeedSigma);
    json.Member("vmg", point->Vmg);
    json.Member("vmg_sigma", point->VmgSigma);
    json.EndObject();
}

void WriteCurve(JsonWriter& json, const PolarCurve& curve) {
    json.BeginObject();
    json.Key("cells");
    json.BeginArray();
    int from = 0;
    for (const PolarCell& cell : curve.Cells) {
        const int to = from + static_cast<int>(PolarCellDegrees);
        if (cell.Stretches > 0) {
            json.BeginObject();
            json.Member("from_angle", from);
            json.Member("to_angle", to);
            json.Member("angle", cell.Angle);
            json.Member("stretches", cell.Stretches);
            WithSigma(json, "median", "median_sigma", cell.Median, cell.Sigma);
            WithSigma(json, "best_tenth", "best_tenth_sigma", cell.BestTenth, cell.BestTenthSigma);
            json.EndObject();
        }
        from = to;
    }
    json.EndArray();
    WritePoint(json, "up", curve.UpSailed);
    WritePoint(json, "down", curve.DownSailed);
    WritePoint(json, "target_up", curve.UpTarget);
    WritePoint(json, "target_down", curve.DownTarget);
    json.EndObject();
}

void WriteLoss(JsonWriter& json, const std::optional<LegLoss>& loss) {
    if (!loss) return json.Null();
    json.BeginObject();
    json.Member("seconds", loss->Seconds);
    json.Member("loss", loss->Loss);
    const auto part = [&](std::string_view name, std::string_view sigmaName, const LostSeconds& lost) {
        WithSigma(json, name, sigmaName, loss->IsSplit ? std::optional(lost.Seconds) : std::nullopt,
                  lost.Sigma);
    };
    part("start", "start_sigma", loss->Start);
    part("turns", "turns_sigma", loss->Turns);
    part("speed", "speed_sigma", loss->Speed);
    part("distance", "distance_sigma", loss->Distance);
    json.Member("rest", loss->Rest.Seconds);
    MaybeMember(json, "rest_sigma", loss->IsSplit ? std::optional(loss->Rest.Sigma) : std::nullopt);
    json.EndObject();
}

}  // namespace

void WriteRanking(JsonWriter& json, const CoachAnswers& coach, const std::vector<double>& at) {
    json.Key("ranking");
    json.BeginArray();
    for (const double t : at) {
        json.BeginObject();
        json.Member("time", t);
        json.Key("order");
        json.BeginArray();
        int rank = 0;
        for (const RankedBoat& ranked : coach.Progress.OrderAt(t)) {
            json.BeginObject();
            json.Member("boat", ranked.Boat);
            json.Member("rank", ++rank);
            json.Member("gap_metres", ranked.GapMetres);
            json.Member("gap_metres_sigma", ranked.GapMetresSigma);
            WithSigma(json, "gap_seconds", "gap_seconds_sigma", ranked.GapSeconds, ranked.GapSecondsSigma);
            json.Member("to_go", ranked.ToGo);
            json.Member("to_go_sigma", ranked.ToGoSigma);
            json.EndObject();
        }
        json.EndArray();
        json.EndObject();
    }
    json.EndArray();
}

void WriteGaps(JsonWriter& json, const CoachAnswers& coach) {
    json.Key("gaps");
    json.BeginArray();
    for (int boat = 1; boat <= coach.Gaps.Count(); ++boat) {
        json.BeginArray();
        for (const GapPoint& point : coach.Gaps[boat]) {
            const int leader = coach.Progress.LeaderAt(point.Time).value_or(boat);
            json.BeginObject();
            json.Member("time", point.Time);
            json.Member("seconds", point.Seconds);
            json.Member("seconds_sigma", coach.Progress.GapSecondsSigma(boat, leader, point.Time));
            json.EndObject();
        }
        json.EndArray();
    }
    json.EndArray();
}

void WriteStart(JsonWriter& json, const CoachAnswers& coach) {
    const StartReport& report = coach.Start;
    json.Key("start");
    if (!report.Line) return json.Null();
    json.BeginObject();
    WriteLine(json, *report.Line);
    json.Key("boats");
    json.BeginArray();
    for (int boat = 1; boat <= report.Boats.Count(); ++boat) WriteBoatStart(json, boat, report.Boats[boat]);
    json.EndArray();
    json.EndObject();
}

void WriteManoeuvres(JsonWriter& json, const CoachAnswers& coach) {
    const auto& all = coach.Manoeuvres;
    json.Key("manoeuvres");
    json.BeginArray();
    for (int boat = 1; boat <= all.Count(); ++boat)
        for (const Manoeuvre& manoeuvre : all[boat]) WriteManoeuvre(json, boat, manoeuvre);
    json.EndArray();
}

void WriteWindEstimate(JsonWriter& json, const CoachAnswers& coach) {
    const WindEstimate& estimate = coach.Wind.Estimate();
    json.Key("wind_estimate");
    json.BeginObject();
    json.Member("used", NameOf(coach.Wind.Knowledge()));
    MaybeMember(json, "tack_sigma",
                estimate.TackSigma > 0 ? std::optional(estimate.TackSigma) : std::nullopt);
    MaybeMember(json, "gybe_sigma",
                estimate.GybeSigma > 0 ? std::optional(estimate.GybeSigma) : std::nullopt);
    json.Key("samples");
    json.BeginArray();
    for (const WindEstimateSample& sample : estimate.Samples) {
        json.BeginObject();
        json.Member("time", sample.Time);
        json.Member("direction", sample.Direction);
        json.Member("sigma", sample.Sigma);
        json.Member("turns", sample.Turns);
        json.EndObject();
    }
    json.EndArray();
    json.EndObject();
}

void WriteCurrent(JsonWriter& json, const CoachAnswers& coach) {
    const auto& current = coach.Current;
    json.Key("current");
    if (!current) return json.Null();
    json.BeginObject();
    json.Member("axis", current->Axis);
    json.Member("axis_sigma", current->AxisSigma);
    json.Member("across", current->Across);
    WithSigma(json, "along", "along_sigma", current->Along, current->AlongSigma);
    json.Member("sigma", current->Sigma);
    json.Member("turns", current->Turns);
    json.EndObject();
}

void WriteMadeGood(JsonWriter& json, const CoachAnswers& coach) {
    json.Key("made_good");
    json.BeginArray();
    for (const auto& legs : coach.MadeGood) {
        json.BeginArray();
        for (const auto& made : legs) WriteLeg(json, made);
        json.EndArray();
    }
    json.EndArray();
}

namespace {

void WriteBands(JsonWriter& json, const Polar& polar) {
    json.BeginObject();
    json.Key("bands");
    json.BeginArray();
    for (const PolarBand& band : polar.Bands) {
        json.BeginObject();
        MaybeMember(json, "from", band.From);
        MaybeMember(json, "to", band.To);
        json.Key("fleet");
        WriteCurve(json, band.Fleet);
        json.Key("boats");
        json.BeginArray();
        for (const PolarCurve& curve : band.Boats) WriteCurve(json, curve);
        json.EndArray();
        json.EndObject();
    }
    json.EndArray();
    json.EndObject();
}

}  // namespace

void WritePolar(JsonWriter& json, const CoachAnswers& coach) {
    json.Key("polar");
    WriteBands(json, coach.Speeds);
}

void WritePolarLessCurrent(JsonWriter& json, const CoachAnswers& coach) {
    json.Key("polar_less_current");
    if (!coach.WaterSpeeds) return json.Null();
    WriteBands(json, *coach.WaterSpeeds);
}

void WriteDebrief(JsonWriter& json, const CoachAnswers& coach) {
    json.Key("debrief");
    json.BeginArray();
    for (const LegDebrief& leg : coach.Losses) {
        json.BeginObject();
        json.Member("best_boat", leg.BestBoat);
        json.Member("target", leg.ByPolar ? std::string_view("polar") : std::string_view("none"));
        json.Key("boats");
        json.BeginArray();
        for (const auto& loss : leg.Boats) WriteLoss(json, loss);
        json.EndArray();
        json.EndObject();
    }
    json.EndArray();
}

void WriteVelocitySources(JsonWriter& json, const CoachAnswers& coach) {
    json.Key("velocities");
    json.BeginArray();
    for (const BoatMotion& motion : coach.Motion.Boats) {
        json.BeginObject();
        json.Member("from", motion.Source() == VelocitySource::Receiver ? std::string_view("receiver")
                                                                        : std::string_view("positions"));
        json.Member("noise", motion.Noise());
        json.EndObject();
    }
    json.EndArray();
}

}  // namespace keelview
