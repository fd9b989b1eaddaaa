#include "racedata/tracks/geojson.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "racedata/tracks/written_fixes.h"

namespace keelview {

namespace {

using nlohmann::json;

/// Whether the tree of a file lies too deep, or would be out of proportion to the file: what the library
/// takes for a member of an object, for a list and for a value is weighed against its size.
bool IsTooLarge(std::string_view bytes) {
    constexpr int deepest = 200;
    constexpr std::size_t member = 96, list = 64, value = 32, mostTimes = 16, always = 1 << 20;
    std::size_t taken = 0;
    int depth = 0;
    bool quoted = false;
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        const char sign = bytes[at];
        if (sign == '"') quoted = !quoted;
        if (quoted) {
            if (sign == '\\') ++at;
            continue;
        }
        if (sign == '[' || sign == '{') taken += list, ++depth;
        if (sign == ']' || sign == '}') --depth;
        if (sign == ':') taken += member;
        if (sign == ',') taken += value;
        if (depth > deepest) return true;
    }
    return taken > bytes.size() * mostTimes + always;
}

/// What is not there.
const json& Nothing() {
    static const json nothing;
    return nothing;
}

/// A member of an object; Nothing where there is none, or no object.
const json& Member(const json& object, const char* name) {
    const auto found = object.find(name);  // the end for all that is no object
    return found == object.end() ? Nothing() : *found;
}

/// An element of a list; Nothing where there is none, or no list.
const json& Element(const json& list, std::size_t index) {
    return list.is_array() && index < list.size() ? list[index] : Nothing();
}

/// The first of the members that is told.
const json& FirstOf(const json& object, std::initializer_list<const char*> names) {
    for (const char* name : names)
        if (const json& member = Member(object, name); !member.is_null()) return member;
    return Nothing();
}

std::string_view TextOf(const json& value) {
    const auto* text = value.get_ptr<const std::string*>();
    return text == nullptr ? std::string_view() : std::string_view(*text);
}

double NumberOf(const json& value) {
    return value.is_number() ? value.get<double>() : std::numeric_limits<double>::quiet_NaN();
}

RecordedFix FixAt(const json& position) {
    RecordedFix fix;
    fix.Lon = NumberOf(Element(position, 0));
    fix.Lat = NumberOf(Element(position, 1));
    return fix;
}

/// Adds a fix at a time that is text, or a number of seconds or milliseconds; below 1e11 it is seconds,
/// which are then before the year 5138, while milliseconds of that number were in 1973.
void AddAt(const json& time, const RecordedFix& fix, WrittenFixes& fixes) {
    if (!time.is_number()) return fixes.Add(TextOf(time), fix);
    constexpr double leastMs = 1e11, mostMs = 1e14;
    const double number = time.get<double>();
    const double ms = std::abs(number) < leastMs ? number * 1000 : number;
    if (std::abs(ms) > mostMs) return fixes.Leave(SkipReason::Broken);
    fixes.Add({std::llround(ms), true, {}}, fix);
}

void ReadLine(const json& coordinates, const json& times, WrittenFixes& fixes) {
    if (!coordinates.is_array()) return;
    for (std::size_t i = 0; i < coordinates.size(); ++i)
        AddAt(Element(times, i), FixAt(coordinates[i]), fixes);
}

/// A feature that is a line or several, with its times in the same shape.
void ReadLines(const json& feature, WrittenFixes& fixes) {
    const json& geometry = Member(feature, "geometry");
    const std::string_view type = TextOf(Member(geometry, "type"));
    if (type != "LineString" && type != "MultiLineString") return;
    const json& properties = Member(feature, "properties");
    const json& direct = FirstOf(properties, {"coordTimes", "times"});
    const json& times =
        direct.is_null() ? Member(Member(properties, "coordinateProperties"), "times") : direct;
    const json& coordinates = Member(geometry, "coordinates");
    fixes.Begin(TextOf(FirstOf(properties, {"boat", "name"})));
    if (type == "LineString") return ReadLine(coordinates, times, fixes);
    if (!coordinates.is_array()) return;
    for (std::size_t i = 0; i < coordinates.size(); ++i) ReadLine(coordinates[i], Element(times, i), fixes);
}

void ReadPoint(const json& feature, WrittenFixes& fixes) {
    const json& properties = Member(feature, "properties");
    const json& time = FirstOf(properties, {"time", "timestamp", "datetime"});
    const RecordedFix fix = FixAt(Member(Member(feature, "geometry"), "coordinates"));
    const std::string_view name = TextOf(Member(properties, "name"));
    if (time.is_null() && !name.empty()) return fixes.AddMark(name, fix.Lat, fix.Lon);
    AddAt(time, fix, fixes);
}

/// Points may tell of several boats in turns.
void ReadPoints(const std::vector<const json*>& features, WrittenFixes& fixes) {
    std::map<std::string_view, std::vector<const json*>> boats;
    for (const json* feature : features)
        if (TextOf(Member(Member(*feature, "geometry"), "type")) == "Point")
            boats[TextOf(Member(Member(*feature, "properties"), "boat"))].push_back(feature);
    for (const auto& [boat, points] : boats) {
        fixes.Begin(boat);
        for (const json* point : points) ReadPoint(*point, fixes);
    }
}

/// All features of a file, which may be one itself.
std::vector<const json*> FeaturesOf(const json& file) {
    std::vector<const json*> features;
    const json& list = Member(file, "features");
    if (!list.is_array()) return {&file};
    for (const json& feature : list) features.push_back(&feature);
    return features;
}

}  // namespace

bool LooksLikeGeoJson(std::string_view bytes) {
    constexpr std::size_t headSize = 4096;
    std::string_view head = bytes.substr(0, headSize);
    if (head.starts_with("\xEF\xBB\xBF")) head.remove_prefix(3);
    head.remove_prefix(std::min(head.find_first_not_of(" \t\r\n"), head.size()));
    const auto has = [head](std::string_view word) { return head.find(word) != std::string_view::npos; };
    return head.starts_with('{') && (has("\"Feature") || has("\"features\"") || has("\"coordinates\""));
}

TrackFileContent ReadGeoJson(std::string_view bytes) {
    if (IsTooLarge(bytes)) return {{}, Refusal::TooLarge, {}, {}, {}};
    const json file = json::parse(bytes, nullptr, false);
    if (file.is_discarded()) return {{}, Refusal::Broken, {}, {}, {}};
    WrittenFixes fixes;
    if (file.contains("coordinates")) fixes.NotePlaces();  // a bare geometry has no place for times
    const std::vector<const json*> features = FeaturesOf(file);
    for (const json* feature : features) ReadLines(*feature, fixes);
    ReadPoints(features, fixes);
    return fixes.Take();
}

}  // namespace keelview
