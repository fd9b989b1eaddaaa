#include <gtest/gtest.h>

#include "support/told_recordings.h"

namespace keelview {
namespace {

/// A file with these elements inside.
std::string Gpx(const std::string& inside) {
    return R"(<?xml version="1.0"?><gpx version="1.1" creator="Watch 5">)" + inside + "</gpx>\n";
}
std::string Point(const std::string& time, const std::string& place = R"(lat="35.5" lon="139.25")") {
    return "<trkpt " + place + "><time>" + time + "</time></trkpt>";
}
std::string ReadPoints(const std::string& points) {
    return Told(ReadTrackFile(Gpx("<trk><trkseg>" + points + "</trkseg></trk>")));
}

TEST(Gpx, TracksOfAFileAreBoatsAndWaypointsAreMarks) {
    const TrackFileContent content = ReadTrackFile(R"(<?xml version="1.0" encoding="UTF-8"?>
<!-- the <trk> of a club --><!DOCTYPE gpx [<!ENTITY club "Enoshima">]>
<g:gpx version="1.1" creator="Watch &lt;5&gt;" xmlns:g="http://www.topografix.com/GPX/1/1">
 <g:metadata><g:name> Autumn
Cup </g:name><g:time>2026-10-03T00:00:00Z</g:time></g:metadata>
 <g:wpt lat="35.25" lon="139.5"><g:time>2020-01-01T00:00:00Z</g:time><g:name>Mark 1</g:name></g:wpt>
 <g:rte><g:name>course</g:name><g:rtept lat="35.125" lon="-139.5"><g:name>上マーク</g:name></g:rtept></g:rte>
 <g:trk><g:name><![CDATA[Alcyone & Co]]></g:name>
  <g:trkseg><g:trkpt lat="35.5" lon="139.25"><g:ele>-500</g:ele><g:time>2026-10-03T12:30:00.000Z</g:time>
    <g:extensions><ns3:TrackPointExtension><ns3:hr>110</ns3:hr><ns3:speed>1.852</ns3:speed>
      <ns3:course>360</ns3:course></ns3:TrackPointExtension></g:extensions></g:trkpt></g:trkseg>
  <g:trkseg><g:trkpt lon="+139.26" lat="35.51"><g:time> 2026-10-03T21:30:00.5+09:00
    </g:time></g:trkpt></g:trkseg></g:trk>
 <g:trk><g:trkseg><g:trkpt lat="-35.5" lon="-0.25"><g:time>2026-10-03T12:30:02Z</g:time></g:trkpt></g:trkseg></g:trk>
</g:gpx>)");
    EXPECT_EQ(content.Format, "GPX");
    EXPECT_EQ(Told(content),
              "Alcyone & Co/Watch <5>: 0 35.5 139.25 3.6 0, 500 35.51 139.26 - -, | "
              "Autumn Cup/Watch <5>: 2000 -35.5 -0.25 - -,");
    EXPECT_EQ(ToldMarks(content), "Mark 1 35.25 139.5, 上マーク 35.125 -139.5, ");
    EXPECT_EQ(content.Hints.ZoneHours, 9);
}

TEST(Gpx, TheOlderVersionHasSpeedAndCourseAtThePoint) {
    EXPECT_EQ(Told(ReadTrackFile(R"(<gpx version="1.0" creator="Plotter"><name>Alcyone</name><rte>
      <rtept lat="35.5" lon="139.25"><time>2026-10-03T12:30:00Z</time><course>271.5</course><speed>0.926</speed></rtept>
      <rtept lat="35.5" lon="139.5"><time>2026-10-03T12:30:01Z</time><course>-1</course><speed>-1</speed></rtept>
      <rtept lat="35.5" lon="139.75"><time>2026-10-03T12:30:02Z</time><course>361</course><speed>nan</speed></rtept>
      </rte></gpx>)")),
              "Alcyone/Plotter: 0 35.5 139.25 1.8 271.5, 1000 35.5 139.5 - -, 2000 35.5 139.75 - -,");
}

TEST(Gpx, TimesWithoutAZoneCountAsUtcUnlessOthersHaveOne) {
    const std::string local = Point("2026-10-03T12:30:00") + Point("2026-10-03T12:30:01");
    EXPECT_EQ(ReadPoints(local), "/Watch 5: 0 35.5 139.25 - -, 1000 35.5 139.25 - -,");
    EXPECT_EQ(ReadPoints(local + Point("2026-10-03T12:30:00Z") + local),
              "/Watch 5: 0 35.5 139.25 - -, OtherZone 4");
}

TEST(Gpx, TracksOfOneNameAreOneRecordingWhereTheyFollowEachOther) {
    const auto track = [](const std::string& name, const std::string& from, const std::string& to) {
        return "<trk><name>" + name + "</name><trkseg>" + Point("2026-10-03T12:30:" + from + "+00:00") +
               Point("") + Point("2026-10-03T12:30:" + to + "Z") + "</trkseg></trk>";
    };
    const TrackFileContent content = ReadTrackFile(Gpx(track("A", "00", "02") + track("A", "03", "04") +
                                                       track("A", "04", "05") + track("B", "06", "07")));
    EXPECT_EQ(
        Told(content),
        "A/Watch 5: 0 35.5 139.25 - -, 2000 35.5 139.25 - -, 3000 35.5 139.25 - -, 4000 35.5 139.25 - -, "
        "NoTime 2 | A/Watch 5: 4000 35.5 139.25 - -, 5000 35.5 139.25 - -, NoTime 1 | "
        "B/Watch 5: 6000 35.5 139.25 - -, 7000 35.5 139.25 - -, NoTime 1");
    EXPECT_FALSE(content.Hints.ZoneHours);  // +00:00 is how some write UTC
}

TEST(Gpx, WhatGivesNoFixIsCounted) {
    const struct {
        std::string Points;
        const char* Told;
    } rows[] = {
        {"<trkpt lat='35.5' lon='139.25'/>", "NoTimes"},
        {Point(""), "NoTimes"},
        {"", "NoFixes"},
        {Point("noon"), "NoFixes"},
        {Point("2026-10-03T12:30:00Z", "lat='90.01' lon='0'"), "NoFixes"},
        {Point("2026-10-03T12:30:00Z", "lat='35,5' lon='1'"), "NoFixes"},
        {Point("2026-10-03T12:30:00Z", "lat='35.5'"), "NoFixes"},
        {Point("2026-10-03T12:30:00Z", "lat='inf' lon='nan'"), "NoFixes"},
        {Point("2026-10-03T12:30:00Z") + Point("2026-10-03T12:30:00Z") + Point("2026-10-03T12:29:59Z") +
             Point("") + Point("x") + Point("2026-10-03T12:30:01Z", "lat='1' lon='180.1'"),
         "/Watch 5: 0 35.5 139.25 - -, SameTime 1 NoTime 1 Broken 1 NoPlace 1 TimeBack 1"},
        {Point("1970-01-01T00:00:00Z") + Point("2080-01-01T00:00:00Z"),
         "/Watch 5: -1791030600000 35.5 139.25 - -, 1680262200000 35.5 139.25 - -,"},
    };
    for (const auto& row : rows) EXPECT_EQ(ReadPoints(row.Points), row.Told) << row.Points;
}

}  // namespace
}  // namespace keelview
