#include "racedata/tracks/kml.h"

#include <algorithm>

#include "racedata/tracks/xml_file.h"

namespace keelview {

namespace {

/// Cuts a number off the head of "139.5,35.25,0" or "139.5 35.25 0".
std::string_view CutCoordinate(std::string_view& text) {
    constexpr std::string_view between = ", \t\r\n";
    const std::string_view number = text.substr(0, text.find_first_of(between));
    text.remove_prefix(number.size());
    text.remove_prefix(std::min(text.find_first_not_of(between), text.size()));
    return number;
}

RecordedFix FixAt(std::string_view coordinates) {
    RecordedFix fix;
    fix.Lon = DegreesOf(CutCoordinate(coordinates));
    fix.Lat = DegreesOf(CutCoordinate(coordinates));
    return fix;
}

std::string_view TimeOf(pugi::xml_node placemark) {
    const std::string_view when = XmlText(XmlChild(XmlChild(placemark, "TimeStamp"), "when"));
    return when.empty() ? XmlText(XmlChild(XmlChild(placemark, "TimeSpan"), "begin")) : when;
}

void ReadPoint(pugi::xml_node placemark, WrittenFixes& fixes) {
    const pugi::xml_node point = XmlChild(placemark, "Point");
    if (!point) return;
    const RecordedFix fix = FixAt(XmlText(XmlChild(point, "coordinates")));
    const std::string_view time = TimeOf(placemark);
    const std::string_view name = XmlText(XmlChild(placemark, "name"));
    if (time.empty() && !name.empty()) return fixes.AddMark(name, fix.Lat, fix.Lon);
    fixes.Add(time, fix);
}

/// The points that lie right inside a folder.
void ReadFolder(pugi::xml_node folder, WrittenFixes& fixes) {
    fixes.Begin(XmlText(XmlChild(folder, "name")));
    for (const pugi::xml_node child : folder.children())
        if (LocalName(child) == "Placemark") ReadPoint(child, fixes);
}

pugi::xml_node NextOfItsName(pugi::xml_node element) {
    const std::string_view name = LocalName(element);
    do element = element.next_sibling();
    while (element && LocalName(element) != name);
    return element;
}

/// A list of times and a list of places of the same length, however they are mixed.
void ReadTrack(pugi::xml_node track, WrittenFixes& fixes) {
    pugi::xml_node when = XmlChild(track, "when");
    pugi::xml_node coord = XmlChild(track, "coord");
    for (; when && coord; when = NextOfItsName(when), coord = NextOfItsName(coord))
        fixes.Add(XmlText(when), FixAt(XmlText(coord)));
    for (; when; when = NextOfItsName(when)) fixes.Leave(SkipReason::NoPlace);
    for (; coord; coord = NextOfItsName(coord)) fixes.Leave(SkipReason::NoTime);
}

bool ReadElement(pugi::xml_node element, WrittenFixes& fixes) {
    const std::string_view name = LocalName(element);
    if (name == "kml" || name == "Document" || name == "Folder") ReadFolder(element, fixes);
    if (name == "Placemark" && (XmlChild(element, "Track") || XmlChild(element, "MultiTrack")))
        fixes.Begin(XmlText(XmlChild(element, "name")));
    if (name == "Track") ReadTrack(element, fixes);
    if (name == "LineString" || name == "LinearRing") fixes.NotePlaces();
    return name != "Track" && name != "Point";
}

}  // namespace

bool LooksLikeKml(std::string_view bytes) {
    return IsXmlOf(bytes, "kml");
}

TrackFileContent ReadKml(std::string_view bytes) {
    return ReadXmlTracks(bytes, {.TimeEnd = "</when>", .PointEnd = {}}, ReadElement);
}

}  // namespace keelview
