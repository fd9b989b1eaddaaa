#include "racedata/tracks/tcx.h"

#include "racedata/tracks/xml_file.h"

namespace keelview {

namespace {

void ReadPoint(pugi::xml_node point, WrittenFixes& fixes) {
    const pugi::xml_node position = XmlChild(point, "Position");
    RecordedFix fix;
    fix.Lat = DegreesOf(XmlText(XmlChild(position, "LatitudeDegrees")));
    fix.Lon = DegreesOf(XmlText(XmlChild(position, "LongitudeDegrees")));
    fix.Speed = KnotsOfMetres(XmlText(XmlChild(XmlChild(XmlChild(point, "Extensions"), "TPX"), "Speed")));
    fixes.Add(XmlText(XmlChild(point, "Time")), fix);
}

bool ReadElement(pugi::xml_node element, WrittenFixes& fixes) {
    const std::string_view name = LocalName(element);
    if (name == "Activity" || name == "Course")
        fixes.Begin(XmlText(XmlChild(element, "Name")),
                    XmlText(XmlChild(XmlChild(element, "Creator"), "Name")));
    if (name != "Trackpoint") return true;
    ReadPoint(element, fixes);
    return false;
}

}  // namespace

bool LooksLikeTcx(std::string_view bytes) {
    return IsXmlOf(bytes, "TrainingCenterDatabase");
}

TrackFileContent ReadTcx(std::string_view bytes) {
    return ReadXmlTracks(bytes, {.TimeEnd = "</Time>", .PointEnd = {}}, ReadElement);
}

}  // namespace keelview
