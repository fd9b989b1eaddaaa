#include "report/race_report.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <optional>
#include <string_view>

#include "analysis/track_at.h"
#include "analysis/wind_at.h"
#include "base/angles.h"
#include "report/coach_report.h"
#include "report/json_writer.h"
#include "report/leg_report.h"

namespace keelview {

namespace {

void NumberArray(JsonWriter& json, std::initializer_list<double> values) {
    json.BeginArray();
    for (const double value : values) json.Number(value);
    json.EndArray();
}

void NumberArray(JsonWriter& json, const OneBased<double>& values) {
    json.BeginArray();
    for (const double value : values) json.Number(value);
    json.EndArray();
}

/// Times with `none` where there is none, or null.
void TimeArray(JsonWriter& json, const OneBased<std::optional<int>>& times, std::optional<int> none) {
    json.BeginArray();
    for (const auto& time : times) {
        const std::optional<int> shown = time ? time : none;
        shown ? json.Number(*shown) : json.Null();
    }
    json.EndArray();
}

void SourceArray(JsonWriter& json, const OneBased<PassSource>& sources) {
    json.BeginArray();
    for (const PassSource source : sources) {
        if (source == PassSource::None) json.Null();
        if (source == PassSource::Rule) json.String("rule");
        if (source == PassSource::Chain) json.String("chain");
        if (source == PassSource::Hand) json.String("hand");
    }
    json.EndArray();
}

template <class Texts>
void TextArray(JsonWriter& json, const Texts& texts) {
    json.BeginArray();
    for (const std::string& text : texts) json.String(text);
    json.EndArray();
}

void WriteMarks(JsonWriter& json, const RaceControl& race) {
    json.Key("marks");
    json.BeginArray();
    for (const Mark& mark : race.Marks) NumberArray(json, {mark.MarkLat, WrapLongitude(mark.MarkLon)});
    json.EndArray();
    json.Key("lines");
    json.BeginArray();
    for (const Line& line : race.Lines)
        NumberArray(json, {line.LineLat1, WrapLongitude(line.LineLon1), line.LineLat2,
                           WrapLongitude(line.LineLon2)});
    json.EndArray();
}

void WriteRace(JsonWriter& json, const RaceControl& race) {
    json.Key("race");
    json.BeginObject();
    json.Member("file", race.RaceFileName);
    json.Key("titles");
    json.BeginArray();
    for (const auto* title : {&race.RaceTitle1, &race.RaceTitle2, &race.RaceTitle3}) json.String(*title);
    json.EndArray();
    json.Member("start", race.Start.Text());
    json.Member("finish", race.Finish.Text());
    json.Member("duration", race.RaceDuration);
    json.Member("time_diff", race.TimeDiff.value_or(HomeTimeDiff));
    json.Member("mag_variation", race.MagVariation);
    json.Member("wind_direction", race.WindDirection);
    json.Member("boat_length", race.BoatLength);
    json.Member("pre_start_seconds", PreStartSeconds(race));
    json.Key("lay_lines");
    NumberArray(json, {race.LayLineUp, race.LayLineDown});
    json.Key("course");
    TextArray(json, race.CourseOrder);
    WriteMarks(json, race);
    json.EndObject();
}

void WriteScale(JsonWriter& json, const RaceNumbers& numbers) {
    json.Key("scale");
    json.BeginObject();
    json.Member("metres_per_lat_minute", numbers.scale.MetresPerLatMinute);
    json.Member("metres_per_lon_minute", numbers.scale.MetresPerLonMinute);
    json.Member("lon_scale", numbers.scale.LonScale);
    json.Key("centre");
    NumberArray(json, {numbers.area.HomeCentreLat, WrapLongitude(numbers.area.HomeCentreLon)});
    json.Member("area_span", numbers.area.AreaSpan);
    json.Member("typical_speed", numbers.tracks.TypicalSpeed);
    json.EndObject();
}

double FastestFix(const Track& track) {
    double fastest = 0.0;
    for (int fix = 1; fix <= track.Count(); ++fix) fastest = std::max(fastest, track.TrackSpeed(fix));
    return fastest;
}

void WriteTimes(JsonWriter& json, const Track& track) {
    const int points = track.Count();
    json.Member("points", points);
    json.Member("skipped_fixes", track.SkippedFixes);
    if (points == 0) {
        for (const auto* name : {"first_time", "last_time"}) {
            json.Key(name);
            json.Null();
        }
        json.Member("distance", 0);
        json.Member("max_speed", 0);
        return;
    }
    json.Member("first_time", track.TrackTime[1]);
    json.Member("last_time", track.TrackTime.Last());
    json.Member("distance", track.TrackDist.Last());
    json.Member("max_speed", FastestFix(track));
}

/// Of each entry the mark that was rounded, where it is a gate; null for any other.
void WriteGateMarks(JsonWriter& json, const OneBased<int>& marks) {
    json.Key("gate_marks");
    json.BeginArray();
    for (const int mark : marks) mark == 0 ? json.Null() : json.String(CourseKeyText({false, mark}));
    json.EndArray();
}

void WriteBoats(JsonWriter& json, const RaceNumbers& numbers, bool bareTimes) {
    const RaceControl& race = numbers.race;
    const bool hasGates = std::ranges::any_of(
        race.CourseOrder, [](const std::string& key) { return ParseCourseKey(key).IsGate(); });
    json.Key("boats");
    json.BeginArray();
    for (int boat = 1; boat <= race.Boats.Count(); ++boat) {
        json.BeginObject();
        json.Member("number", boat);
        json.Member("name", race.Boats[boat].BoatName);
        json.Member("file", race.Boats[boat].BoatFile);
        WriteTimes(json, numbers.tracks.Boats[boat]);
        json.Key("pass_times");
        TimeArray(json, numbers.passes.MarkPassTime[boat], bareTimes ? std::optional(0) : std::nullopt);
        json.Key("pass_sources");
        SourceArray(json, numbers.passes.MarkPassSource[boat]);
        json.Key("pass_distances");
        NumberArray(json, numbers.passes.MarkPassDist[boat]);
        if (hasGates) WriteGateMarks(json, numbers.passes.GateMark[boat]);
        json.EndObject();
    }
    json.EndArray();
}

void WriteFirstPasses(JsonWriter& json, const RaceNumbers& numbers, bool bareTimes) {
    json.Key("first_pass_times");
    TimeArray(json, numbers.passes.FirstPassTime, bareTimes ? std::optional(1000000) : std::nullopt);
}

void WriteFinishOrder(JsonWriter& json, const RaceNumbers& numbers) {
    json.Key("finish_order");
    json.BeginArray();
    for (const int boat : FinishOrder(numbers.passes)) json.Number(boat);
    json.EndArray();
}

void WriteCoast(JsonWriter& json, const RaceNumbers& numbers) {
    json.Key("coast");
    json.BeginObject();
    json.Member("points", CoastPoints(numbers.coast));
    json.Key("cells");
    TextArray(json, numbers.race.MapFile);
    json.EndObject();
}

void WriteWind(JsonWriter& json, const RaceNumbers& numbers) {
    json.Key("wind");
    json.BeginObject();
    json.Member("file", numbers.race.WindFileName);
    json.Member("samples", numbers.wind.Count());
    json.EndObject();
}

void WriteBoatAt(JsonWriter& json, const Tracks& tracks, int boat, double t, double trueWind) {
    const Track& track = tracks.Boats[boat];
    const int segment = FindSegment(track, t);
    if (segment == 0) {
        json.Null();
        return;
    }
    const TrackMoment moment = MomentOn(track, segment, t);
    json.BeginObject();
    json.Member("number", boat);
    json.Member("lat", moment.Lat);
    json.Member("lon", WrapLongitude(moment.Lon));
    json.Member("speed", moment.Speed);
    json.Member("course", moment.Course);
    json.Member("true_wind_angle", WrapDifference(moment.Course - trueWind));
    json.EndObject();
}

void WriteMoment(JsonWriter& json, const RaceNumbers& numbers, double t) {
    const Wind wind = WindAt(numbers.race, numbers.wind, t);
    json.BeginObject();
    json.Member("time", t);
    json.Key("wind");
    json.BeginObject();
    json.Member("direction_true", wind.DirectionTrue);
    json.Member("direction_magnetic", wind.DirectionMagnetic);
    json.Member("speed", wind.Speed);
    json.EndObject();
    json.Key("boats");
    json.BeginArray();
    for (int boat = 1; boat <= numbers.race.Boats.Count(); ++boat)
        WriteBoatAt(json, numbers.tracks, boat, t, wind.DirectionTrue);
    json.EndArray();
    json.EndObject();
}

void WriteMoments(JsonWriter& json, const RaceNumbers& numbers, const std::vector<double>& at) {
    json.Key("at");
    json.BeginArray();
    for (const double t : at) WriteMoment(json, numbers, t);
    json.EndArray();
}

/// What a report is made of.
struct Source {
    const RaceNumbers& Numbers;
    const std::vector<double>& At;
    bool BareTimes;
    std::optional<CoachAnswers> Coach;  ///< where one of its keys is asked for
};

/// A member of the report by its key.
struct Section {
    std::string_view Key;
    bool OfCoach;  ///< told where it is asked for alone
    void (*Write)(JsonWriter& json, const Source& source);
};

constexpr std::array<Section, 21> Sections{{
    {"race", false, [](JsonWriter& json, const Source& from) { WriteRace(json, from.Numbers.race); }},
    {"scale", false, [](JsonWriter& json, const Source& from) { WriteScale(json, from.Numbers); }},
    {"boats", false,
     [](JsonWriter& json, const Source& from) { WriteBoats(json, from.Numbers, from.BareTimes); }},
    {"first_pass_times", false,
     [](JsonWriter& json, const Source& from) { WriteFirstPasses(json, from.Numbers, from.BareTimes); }},
    {"finish_order", false,
     [](JsonWriter& json, const Source& from) { WriteFinishOrder(json, from.Numbers); }},
    {"tables", false, [](JsonWriter& json, const Source& from) { WriteLegTables(json, from.Numbers); }},
    {"analysis", false, [](JsonWriter& json, const Source& from) { WriteFactors(json, from.Numbers); }},
    {"coast", false, [](JsonWriter& json, const Source& from) { WriteCoast(json, from.Numbers); }},
    {"wind", false, [](JsonWriter& json, const Source& from) { WriteWind(json, from.Numbers); }},
    {"at", false, [](JsonWriter& json, const Source& from) { WriteMoments(json, from.Numbers, from.At); }},
    {"ranking", true,
     [](JsonWriter& json, const Source& from) { WriteRanking(json, *from.Coach, from.At); }},
    {"gaps", true, [](JsonWriter& json, const Source& from) { WriteGaps(json, *from.Coach); }},
    {"start", true, [](JsonWriter& json, const Source& from) { WriteStart(json, *from.Coach); }},
    {"manoeuvres", true, [](JsonWriter& json, const Source& from) { WriteManoeuvres(json, *from.Coach); }},
    {"wind_estimate", true,
     [](JsonWriter& json, const Source& from) { WriteWindEstimate(json, *from.Coach); }},
    {"current", true, [](JsonWriter& json, const Source& from) { WriteCurrent(json, *from.Coach); }},
    {"made_good", true, [](JsonWriter& json, const Source& from) { WriteMadeGood(json, *from.Coach); }},
    {"polar", true, [](JsonWriter& json, const Source& from) { WritePolar(json, *from.Coach); }},
    {"polar_less_current", true,
     [](JsonWriter& json, const Source& from) { WritePolarLessCurrent(json, *from.Coach); }},
    {"debrief", true, [](JsonWriter& json, const Source& from) { WriteDebrief(json, *from.Coach); }},
    {"velocities", true,
     [](JsonWriter& json, const Source& from) { WriteVelocitySources(json, *from.Coach); }},
}};

}  // namespace

bool IsReportKey(std::string_view key) {
    return std::ranges::find(Sections, key, &Section::Key) != Sections.end();
}

bool IsCoachKey(std::string_view key) {
    const auto section = std::ranges::find(Sections, key, &Section::Key);
    return section != Sections.end() && section->OfCoach;
}

std::string RaceReport(const RaceNumbers& numbers, const std::vector<double>& at, bool bareTimes,
                       const std::vector<std::string>& only) {
    const auto wanted = [&](const Section& section) {
        return only.empty() ? !section.OfCoach : std::ranges::find(only, section.Key) != only.end();
    };
    Source source{numbers, at, bareTimes, {}};
    if (std::ranges::any_of(Sections, [&](const Section& one) { return one.OfCoach && wanted(one); }))
        source.Coach = AnswerCoach(numbers);
    JsonWriter json;
    json.BeginObject();
    for (const Section& section : Sections)
        if (wanted(section)) section.Write(json, source);
    json.EndObject();
    return json.Text();
}

}  // namespace keelview
