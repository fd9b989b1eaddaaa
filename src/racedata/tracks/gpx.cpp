#include "racedata/tracks/gpx.h"

#include "racedata/tracks/written_fixes.h"
#include "racedata/tracks/xml_file.h"

namespace keelview {

namespace {

/// A point as the file writes it.
struct WrittenPoint {
    RecordedFix Fix;
    std::string_view Time;
    std::string_view Name;
};

/// Speed and course wherever they stand inside a point: right there, or in extensions in extensions.
void ReadMotion(pugi::xml_node element, std::string_view name, int levels, RecordedFix& fix) {
    if (name == "speed")
        fix.Speed = KnotsOfMetres(XmlText(element));
    else if (name == "course")
        fix.Course = DirectionOf(XmlText(element));
    else if (levels > 0)
        for (pugi::xml_node child = element.first_child(); child; child = child.next_sibling())
            ReadMotion(child, LocalName(child), levels - 1, fix);
}

WrittenPoint PointOf(pugi::xml_node element) {
    WrittenPoint point;
    point.Fix.Lat = DegreesOf(element.attribute("lat").value());
    point.Fix.Lon = DegreesOf(element.attribute("lon").value());
    for (pugi::xml_node child = element.first_child(); child; child = child.next_sibling()) {
        const std::string_view name = LocalName(child);
        if (name == "time")
            point.Time = point.Time.empty() ? XmlText(child) : point.Time;
        else if (name == "name")
            point.Name = point.Name.empty() ? XmlText(child) : point.Name;
        else
            ReadMotion(child, name, 3, point.Fix);
    }
    return point;
}

/// What the file tells of itself: 1.1 in its metadata, 1.0 right inside.
void ReadHead(pugi::xml_node gpx, WrittenFixes& fixes) {
    const pugi::xml_node metadata = XmlChild(gpx, "metadata");
    fixes.NameFile(XmlText(XmlChild(metadata ? metadata : gpx, "name")), gpx.attribute("creator").value());
}

void ReadMarkOrFix(const WrittenPoint& point, bool mark, WrittenFixes& fixes) {
    if (!point.Name.empty() && (mark || point.Time.empty()))
        return fixes.AddMark(point.Name, point.Fix.Lat, point.Fix.Lon);
    fixes.Add(point.Time, point.Fix);
}

/// Reads one element. True if those inside it are to follow.
bool ReadElement(pugi::xml_node element, WrittenFixes& fixes) {
    const std::string_view name = LocalName(element);
    if (name == "trkpt") {
        const WrittenPoint point = PointOf(element);
        fixes.Add(point.Time, point.Fix);
        return false;
    }
    if (name == "wpt" || name == "rtept") {
        ReadMarkOrFix(PointOf(element), name == "wpt", fixes);
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
    return ReadXmlTracks(bytes, {.TimeEnd = "</time>", .PointEnd = "</trkpt>"}, ReadElement);
}

}  // namespace keelview
