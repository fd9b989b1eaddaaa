#include "report/race_report.h"

#include <algorithm>
#include <initializer_list>

#include "analysis/track_at.h"
#include "analysis/wind_at.h"
#include "base/angles.h"
#include "report/json_writer.h"
#include "report/leg_report.h"

namespace keelview {

namespace {

void NumberArray(JsonWriter& json, std::initializer_list<double> values) {
    json.BeginArray();
    for (const double value : values) json.Number(value);
    json.EndArray();
}

/// Elements 1 to count of a race array.
template <class Array>
void NumberArray(JsonWriter& json, const Array& values, int count) {
    json.BeginArray();
    for (int i = 1; i <= count; ++i) json.Number(values[i]);
    json.EndArray();
}

void WriteMarks(JsonWriter& json, const RaceControl& race) {
    json.Key("marks");
    json.BeginArray();
    for (int mark = 1; mark <= race.MarkCount; ++mark)
        NumberArray(json, {race.MarkLat[mark], race.MarkLon[mark]});
    json.EndArray();
    json.Key("lines");
    json.BeginArray();
    for (int line = 1; line <= race.LineCount; ++line)
        NumberArray(json,
                    {race.LineLat1[line], race.LineLon1[line], race.LineLat2[line], race.LineLon2[line]});
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
    json.Member("start", race.StartTimeText);
    json.Member("finish", race.FinishTimeText);
    json.Member("duration", race.RaceDuration);
    json.Member("time_diff", race.TimeDiff);
    json.Member("mag_variation", race.MagVariation);
    json.Member("wind_direction", race.WindDirection);
    json.Member("boat_length", race.BoatLength);
    json.Member("pre_start_seconds", race.PreStartSeconds);
    json.Key("lay_lines");
    NumberArray(json, {race.LayLineUp, race.LayLineDown});
    json.Key("course");
    json.BeginArray();
    for (int c = 1; c <= race.CourseCount; ++c) json.String(race.CourseOrder[c]);
    json.EndArray();
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
    NumberArray(json, {numbers.area.HomeCentreLat, numbers.area.HomeCentreLon});
    json.Member("area_span", numbers.area.AreaSpan);
    json.Member("typical_speed", numbers.tracks.TypicalSpeed);
    json.EndObject();
}

void WriteTimes(JsonWriter& json, const Tracks& tracks, int boat) {
    const int points = tracks.TrackPointCount[boat];
    json.Member("points", points);
    if (points == 0) {
        for (const auto* name : {"first_time", "last_time"}) {
            json.Key(name);
            json.Null();
        }
        json.Member("distance", 0);
        json.Member("max_speed", 0);
        return;
    }
    const auto& speeds = tracks.TrackSpeed[boat];
    json.Member("first_time", tracks.TrackTime[boat][1]);
    json.Member("last_time", tracks.TrackTime[boat][points]);
    json.Member("distance", tracks.TrackDist[boat][points]);
    json.Member("max_speed", *std::max_element(speeds.begin(), speeds.end()));
}

void WriteBoats(JsonWriter& json, const RaceNumbers& numbers) {
    const RaceControl& race = numbers.race;
    json.Key("boats");
    json.BeginArray();
    for (int boat = 1; boat <= race.BoatCount; ++boat) {
        json.BeginObject();
        json.Member("number", boat);
        json.Member("name", race.BoatName[boat]);
        json.Member("file", race.BoatFile[boat]);
        WriteTimes(json, numbers.tracks, boat);
        json.Key("pass_times");
        NumberArray(json, numbers.passes.MarkPassTime[boat], race.CourseCount);
        json.Key("pass_distances");
        NumberArray(json, numbers.passes.MarkPassDist[boat], race.CourseCount);
        json.EndObject();
    }
    json.EndArray();
    json.Key("first_pass_times");
    NumberArray(json, numbers.passes.FirstPassTime, race.CourseCount);
    json.Key("finish_order");
    json.BeginArray();
    for (const int boat : FinishOrder(race, numbers.passes)) json.Number(boat);
    json.EndArray();
}

void WriteSurroundings(JsonWriter& json, const RaceNumbers& numbers) {
    json.Key("coast");
    json.BeginObject();
    json.Member("points", numbers.coast.CoastCount);
    json.Key("cells");
    json.BeginArray();
    for (const std::string& cell : numbers.coastCells) json.String(cell);
    json.EndArray();
    json.EndObject();
    json.Key("wind");
    json.BeginObject();
    json.Member("file", numbers.race.WindFileName);
    json.Member("samples", numbers.wind.WindCount);
    json.EndObject();
}

void WriteBoatAt(JsonWriter& json, const Tracks& tracks, int boat, double t, double trueWind) {
    const int segment = FindSegment(tracks, boat, t);
    if (segment == 0) {
        json.Null();
        return;
    }
    const TrackMoment moment = MomentOn(tracks, boat, segment, t);
    json.BeginObject();
    json.Member("number", boat);
    json.Member("lat", moment.Lat);
    json.Member("lon", moment.Lon);
    json.Member("speed", moment.Speed);
    json.Member("course", moment.Course);
    json.Member("true_wind_angle", WrapDifference(moment.Course - trueWind));
    json.EndObject();
}

void WriteMoment(JsonWriter& json, const RaceNumbers& numbers, double t) {
    const WindSample wind = WindAt(numbers.race, numbers.wind, t);
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
    for (int boat = 1; boat <= numbers.race.BoatCount; ++boat)
        WriteBoatAt(json, numbers.tracks, boat, t, wind.DirectionTrue);
    json.EndArray();
    json.EndObject();
}

}  // namespace

std::string RaceReport(const RaceNumbers& numbers, const std::vector<double>& at) {
    JsonWriter json;
    json.BeginObject();
    WriteRace(json, numbers.race);
    WriteScale(json, numbers);
    WriteBoats(json, numbers);
    WriteLegReport(json, numbers);
    WriteSurroundings(json, numbers);
    json.Key("at");
    json.BeginArray();
    for (const double t : at) WriteMoment(json, numbers, t);
    json.EndArray();
    json.EndObject();
    return json.Text();
}

}  // namespace keelview
