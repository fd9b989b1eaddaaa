#include "racedata/tracks/gpx.h"

#include "racedata/tracks/written_fixes.h"
#include "racedata/tracks/xml_file.h"

namespace keelview {

namespace {

/// Speed and course wherever they stand inside a point: right there, or in extensions in extensions.
void ReadMotion(pugi::xml_node element, int levels, RecordedFix& fix) {
    for (const pugi::xml_node child : element.children()) {
        const std::string_view name = LocalName(child);
        if (name == "speed")
            fix.Speed = KnotsOfMetres(XmlText(child));
        else if (name == "course")
            fix.Course = DirectionOf(XmlText(child));
        else if (levels > 0 && child.first_child())
            ReadMotion(child, levels - 1, fix);
    }
}

RecordedFix FixOf(pugi::xml_node point) {
    RecordedFix fix;
    fix.Lat = DegreesOf(point.attribute("lat").value());
    fix.Lon = DegreesOf(point.attribute("lon").value());
    ReadMotion(point, 3, fix);
    return fix;
}

/// What the file tells of itself: 1.1 in its metadata, 1.0 right inside.
void ReadHead(pugi::xml_node gpx, WrittenFixes& fixes) {
    const pugi::xml_node metadata = XmlChild(gpx, "metadata");
    fixes.NameFile(XmlText(XmlChild(metadata ? metadata : gpx, "name")), gpx.attribute("creator").value());
}

void ReadMarkOrFix(pugi::xml_node point, bool mark, WrittenFixes& fixes) {
    const std::string_view name = XmlText(XmlChild(point, "name"));
    const RecordedFix fix = FixOf(point);
    const std::string_view time = XmlText(XmlChild(point, "time"));
    if (!name.empty() && (mark || time.empty())) return fixes.AddMark(name, fix.Lat, fix.Lon);
    fixes.Add(time, fix);
}

/// Reads one element. True if those inside it are to follow.
bool ReadElement(pugi::xml_node element, WrittenFixes& fixes) {
    const std::string_view name = LocalName(element);
    if (name == "trkpt") {
        fixes.Add(XmlText(XmlChild(element, "time")), FixOf(element));
        return false;
    }
    if (name == "wpt" || name == "rtept") {
        ReadMarkOrFix(element, name == "wpt", fixes);
        return false;
    }
    if (name == "gpx") ReadHead(element, fixes);
    if (name == "trk" || name == "rte") fixes.Begin(XmlText(XmlChild(element, "name")));
    return true;
}

}  // namespace

bool LooksLikeGpx(std::string_view bytes) {
    return IsXmlOf(bytes, "gpx");
}

TrackFileContent ReadGpx(std::string_view bytes) {
    return ReadXmlTracks(bytes, "</time>", ReadElement);
}

}  // namespace keelview
