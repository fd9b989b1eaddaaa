#include "report/track_report.h"

#include <algorithm>

#include "racedata/track_reading.h"
#include "report/json_writer.h"
#include "report/reading_members.h"

namespace keelview {

namespace {

void WriteReading(JsonWriter& json, const TrackReading& reading) {
    if (reading.Refused != Refusal::None) json.Member("refused", NameOf(reading.Refused));
    json.Member("format", reading.Format);
    json.Member("device", reading.Device);
    json.Member("fixes", static_cast<double>(reading.Fixes.size()));
    if (!reading.Fixes.empty()) {
        const auto [first, last] = std::ranges::minmax(reading.Fixes, {}, &GpsFix::Time);
        json.Member("first_time", IsoTime(first.Time));
        json.Member("last_time", IsoTime(last.Time));
    }
    WriteRhythm(json, RhythmOf(reading.Fixes));
    WriteSkipped(json, reading.Left);
}

}  // namespace

std::string TrackReport(const std::filesystem::path& tree, const RaceControl& race) {
    OneBased<BoatEntry, MaxBoats> boats = race.Boats;
    for (const AbsentBoat& absent : race.AbsentBoats) boats.Insert(absent.Number, absent.Entry);
    const OneBased<TrackReading> readings = ReadTracks(tree, boats, {});
    JsonWriter json;
    json.BeginObject();
    json.Member("race", race.RaceFileName);
    json.Key("boats");
    json.BeginArray();
    for (int boat = 1; boat <= boats.Count(); ++boat) {
        json.BeginObject();
        json.Member("number", boat);
        json.Member("name", boats[boat].BoatName);
        json.Member("file", boats[boat].BoatFile);
        json.Member("clock_offset", boats[boat].ClockOffset);
        WriteReading(json, readings[boat]);
        json.EndObject();
    }
    json.EndArray();
    json.EndObject();
    return json.Text();
}

}  // namespace keelview
