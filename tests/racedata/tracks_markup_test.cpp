// Odd files of the formats that are XML or JSON.

#include <gtest/gtest.h>

#include <cstdio>

#include "support/told_recordings.h"

namespace keelview {
namespace {

std::string Times(const std::string& text, int count) {
    std::string all;
    for (int i = 0; i < count; ++i) all += text;
    return all;
}

/// A point of GPX at a second of noon.
std::string At(const std::string& second) {
    return "<trkpt lat='35' lon='139'><time>@" + second + "</time></trkpt>";
}

TEST(Gpx, TracksOfAFileAreBoatsAndWaypointsAreMarks) {
    const std::string kana = Times("あ", 66);  // 198 bytes; another one would be cut in its midst
    ExpectTold(
        "", "", "GPX A",
        {R"(<?xml version="1.0" encoding="UTF-8"?>
<!-- the <trk> of a club --><!DOCTYPE gpx [<!ENTITY club "Enoshima">]>
<g:gpx version="1.1" creator="Watch &lt;5&gt;" xmlns:g="http://www.topografix.com/GPX/1/1"><g:metadata><g:name> A
Cup </g:name></g:metadata><g:wpt lat="35.25" lon="139.5"><g:time>@0Z</g:time><g:name>Mark 1</g:name></g:wpt>
<g:rte><g:name>course</g:name><g:rtept lat="35.5" lon="-139.5"><g:name>上マーク</g:name></g:rtept></g:rte>
<g:trk><g:name><![CDATA[A & Co]]></g:name><g:trkpt lat="35" lon="1"><g:time>@0.000Z</g:time><g:extensions>
<ns3:TPX><ns3:hr>9</ns3:hr><ns3:speed>1.852</ns3:speed><ns3:course>360</ns3:course></ns3:TPX></g:extensions>
</g:trkpt><g:trkseg><g:trkpt lon="+2" lat="35"><g:time> 2026-10-03T21:00:00.5+09:00
</g:time></g:trkpt></g:trkseg></g:trk><g:trk><g:trkpt lat="-35" lon="-0.5"><g:time>@2Z</g:time></g:trkpt></g:trk>
</g:gpx> =>  & Co/Watch <5>: 0 35 1 s3.6 c0, 500 35 2, | A Cup/Watch <5>: 2000 -35 -0.5,)"
         " mark Mark 1 35.25 139.5 mark 上マーク 35.5 -139.5 zone 9",
         R"(<gpx creator="Plotter"><name>A</name>
<rte><rtept lat="5" lon="1"><time>@0</time><course>271.5</course><speed>0.926</speed></rtept>
<rtept lat="5" lon="2"><time>@1</time><course>-1</course><speed>-1</speed></rtept>
<rtept lat="5" lon="3"><name>3</name><time>@2</time><course>361</course><speed>1001</speed></rtept></rte>
<wpt lat="5" lon="4"><time>@3</time></wpt><wpt lat="91" lon="1"><name>Off</name></wpt></gpx>)"
         " => /Plotter: 0 5 1 s1.8 c271.5, 1000 5 2, 2000 5 3, 3000 5 4, NoPlace 1",
         "<gpx><trk><name>A</name>" + At("0Z") + "</trk><trk><name>A</name>" + At("1Z") +
             "</trk><trk><name>A</name>" + At("1Z") + "<trkpt/></trk><trk><name>\x83\x65\n</name>" +
             At("2Z") + "</trk><trk><name>" + kana + "あ</name>" + At("3Z") +
             "</trk></gpx> => : 0 35 139, 1000 35 139, | A: 1000 35 139, NoTime 1 | テ: 2000 35 139, | " +
             kana + ": 3000 35 139,"});
}

TEST(Gpx, TimesAreReadWithAndWithoutAZone) {
    const std::string head = "<gpx><trkpt lat='35' lon='139'><time>", end = "</time></trkpt></gpx>";
    ExpectTold(head, end, "GPX: 0 35 139,",
               {" 2026-10-03t12:00:00.000z\r", "2026-10-03 12:00:00", "2026-10-03T12:00Z", "@0+00:00",
                "2026-10-03T11:59:59.99951234567890123456789Z", "2026-10-03T21:00:00 +0900 =>  zone 9",
                "2026-10-04T01:00:00+13 =>  zone 13", "2026-10-04T02:00:00+14:00 =>  zone 14"});
    ExpectTold(
        head, end, "GPX: ",
        {"2026-10-03T06:30:00.25-0530 => 250 35 139, zone -5.5", "@0,1 => 100 35 139,",
         "1969-12-31T23:59:60Z => -1791028800000 35 139,", "2080-02-29T00:00:00Z => 1685361600000 35 139,",
         "0001-01-01T00:00:00Z => -63926625600000 35 139,"});
    ExpectTold(
        head, end, "NoFixes",
        {"noon", "2026-02-29T12:00:00Z", "2026-10-03T24:00:00Z", "2026-10-03T12:60:00Z",
         "2026-10-03T12:00:61Z", "2026-10-03*12:00:00Z", "@0+15:00", "@0+09:60", "@0+09:000", "@0*09:00"});
}

TEST(Gpx, WhatGivesNoFixIsCounted) {
    ExpectTold("<gpx>", "</gpx>", "GPX: 0 35 139, ",
               {At("0") + At("0") + At("0x") + R"(<trkpt/>
<trkpt lat="1" lon="180.1"><time>@1</time></trkpt><trkpt lat="-90" lon="180"><time>@1</time></trkpt>)" +
                    At("0") + " => 1000 -90 180, SameTime 1 Broken 1 NoTime 1 NoPlace 1 TimeBack 1",
                At("1") + At("2") + At("0Z") + At("1") + " => OtherZone 3"});
    ExpectTold(
        "<gpx><trkpt lat='", "</trkpt></gpx>", "",
        {"90.01' lon='0'><time>@0</time> => NoFixes", "35,5' lon='1'><time>@0</time> => NoFixes",
         "35.5'><time>@0</time> => NoFixes", "0.0' lon='-0'><time>@0</time> => NoFixes",
         "inf' lon='nan'><time>@0</time> => NoFixes", "0' lon='0.5'><time>@0</time> => GPX: 0 0 0.5,",
         "35' lon='9'> => NoTimes", "35' lon='9'><time/> => NoTimes"});
}

/// So many points, 90 bytes each, a second apart from the first; behind each hundredth stands `between`.
std::string Points(int first, int count, const std::string& between = {}) {
    std::string text;
    for (int point = first; point < first + count; ++point) {
        char time[32];
        std::snprintf(time, sizeof time, "2026-10-03T%02d:%02d:%02dZ", point / 3600, point / 60 % 60,
                      point % 60);
        text += "<trkpt lat='35.5' lon='139." + std::to_string(1000 + point) + "'>\n  <time>" + time +
                "</time></trkpt>\n" + (point % 100 == 99 ? between : "");
    }
    return text;
}

// Files beyond the size of a piece are parsed in pieces; one that calls its encoding by another name of the
// same is parsed as a whole.
TEST(Gpx, ALongFileReadsTheSameInPiecesAsInOne) {
    const std::string half = Points(0, 3000), other = Points(3000, 3000),
                      head = "<trk><name>A</name><trkseg>";
    const std::string track = head + half + "</trkseg><trkseg>" + other + "</trkseg></trk>";
    const std::string name = "<name>Late</name>", mark = "<wpt lat='1' lon='2'><name>M</name></wpt>";
    const auto between = [&](const std::string& text) {
        return head + Points(0, 6000, text) + "</trkseg></trk></gpx>";
    };
    std::vector<std::string> bodies{
        track + "<trk><name>B</name><trkseg>" + half + "</trkseg></trk></gpx>",
        "<metadata><name>Cup</name></metadata>" + track + mark + "</gpx>",
        track + "<name>Cup</name></gpx>",
        head + half + "</trkseg>" + name + "<trkseg>" + other + "</trkseg></trk></gpx>",
        "<trk><trkseg>" + half + "</trkseg>" + name + "</trk></gpx>",
        between("<!-- " + Points(9000, 40) + "-->"),
        between("<![CDATA[" + Points(9000, 40) + "]]>"),
        between("<note text=\"" + Points(9000, 40) + "\"/>"),
        between("<trkpt lat='1' lon='2'>" + Points(9000, 1) + "</trkpt>"),
        between("<trkpt2>" + Points(9000, 1) + "</trkpt2>"),
        between("<trkpt></time></trkpt>"),
        head + half + "<trkpt><note>" + other + "</trkseg></trk></gpx>",
        between("</trkpt>"),
        head + half + "</trkpt>" + other + "</trkseg></trk></gpx>",
        between("</trkseg><trkseg>"),
        between("</trkseg></trk><trk><trkseg>"),
        track,
        track.substr(0, track.size() - 40'000),
        head + half + "</trkseg></trk></gpx>" + other,
    };
    bodies.push_back(track.substr(0, track.find("</trkpt>", 65'600) + 8));  // where a piece may end
    for (std::size_t body = 0; body < bodies.size(); ++body) {
        const auto read = [&](const std::string& encoding) {
            return Told(
                ReadTrackFile("<?xml version='1.0' encoding='" + encoding + "'?><gpx>" + bodies[body]));
        };
        const std::string pieces = read("UTF-8");
        EXPECT_TRUE(pieces == read("utf8")) << body << ": " << pieces.substr(0, 200);
        EXPECT_GT(pieces.size(), 1000U) << body;
    }
}

TEST(TcxAndKml, TracksAndPointsInFoldersAreRecordings) {
    ExpectTold(
        {R"(<TrainingCenterDatabase xmlns="x"><Activity><Lap><Trackpoint><Time>@0Z</Time></Trackpoint>
<Trackpoint><Time>@0Z</Time><Position><LatitudeDegrees>35</LatitudeDegrees><LongitudeDegrees>9</LongitudeDegrees>
</Position></Trackpoint></Lap><Lap><Trackpoint><Time>@1Z</Time><Position><LatitudeDegrees>36</LatitudeDegrees>
<LongitudeDegrees>9</LongitudeDegrees></Position></Trackpoint></Lap><Creator><Name>W</Name></Creator></Activity>
<Course><Name>A</Name><Track><Trackpoint><Time>@1Z</Time><Position><LatitudeDegrees>35</LatitudeDegrees>
<LongitudeDegrees>9</LongitudeDegrees></Position></Trackpoint></Track></Course></TrainingCenterDatabase>
 => TCX /W: 0 35 9, 1000 36 9, NoPlace 1 | A: 1000 35 9,)"});
    const std::string line =
        R"(<Placemark><LineString><coordinates>9,35,0 9,36</coordinates></LineString></Placemark>)";
    ExpectTold(
        "<kml><Folder>", "</Folder></kml>", "",
        {R"(<Placemark><name>A</name><gx:Track><when>@0Z</when>
<when>@1Z</when><when>@2Z</when><gx:coord>9 35 0</gx:coord><gx:coord/><gx:coord> -9	-35
</gx:coord></gx:Track></Placemark><Placemark><name>B</name><MultiTrack><Track><coord>9 35</coord><when>@0Z</when>
</Track><Track><when>@5Z</when><coord>9 36</coord><coord>1 2</coord></Track><Track><when>@6Z</when>
<coord>1 2</coord><when>@7Z</when></Track></MultiTrack></Placemark> => KML A: 0 35 9, 2000 -35 -9, NoPlace 1 |)"
         " B: 0 35 9, 5000 36 9, 6000 2 1, NoTime 1 NoPlace 1",
         R"(<name>C</name><Placemark><TimeStamp><when>@0Z</when></TimeStamp><Point><coordinates>9,35,0</coordinates>
</Point></Placemark><Folder><name>B</name><Placemark><TimeSpan><begin>@3Z</begin></TimeSpan><Point>
<coordinates>1,2</coordinates></Point></Placemark><Placemark><name>M1</name><Point><coordinates>9.5,35</coordinates>
</Point></Placemark></Folder><Placemark><TimeStamp><when>@4Z</when></TimeStamp><Point><coordinates> 9 , 36 </coordinates>
</Point></Placemark>)" +
             line + " => KML C: 0 35 9, 4000 36 9, | B: 3000 2 1, mark M1 35 9.5",
         "<Placemark><Point><coordinates>9,35</coordinates></Point></Placemark> => NoTimes",
         line + " => NoTimes", " => NoFixes"});
}

TEST(XmlTracks, AnyEncodingIsReadAndAFileThatIsNoneRefused) {
    const std::string gpx =
        "<gpx><trkpt lat='35' lon='139'><time>2026-10-03 12:00:00Z</time></trkpt></gpx>";
    std::string wide = "\xFF\xFE";
    for (const char c : gpx) wide += std::string{c, '\0'};
    ExpectTold("", "", "GPX: 0 35 139,",
               {wide, wide.substr(0, wide.size() - 9) + " =>  Broken 1", "\xEF\xBB\xBF \n" + gpx});
    ExpectTold({" => Empty", "<gpx => Broken", "< => Unknown",
                "<?xml version='1.0'?><!-- gpx --> => Unknown", "<html><gpx/></html> => Unknown",
                "gpx <gpx></gpx> => Unknown", "<gpx/> => NoFixes", "<gpx></trk> => NoFixes",
                "<gpx>" + std::string(100, '\0') + "</gpx> => NoFixes",
                "<kml>" + Times("<Folder>", 199) + Times("</Folder>", 199) + "</kml> => NoFixes",
                "<gpx a=''" + Times(" a=''", 1'000'000) + "/> => NoFixes"});
    ExpectTold("", "", "TooLarge",
               {"<kml>" + Times("<Folder>", 200), "<gpx>" + Times("<trk>", 10'000),
                "<gpx>" + Times("<a>", 1'000'000), "<gpx>" + Times("<a/>", 1'000'000)});
}

TEST(GeoJson, LinesAndPointsWithTimesAreRecordings) {
    const std::string line = R"({"geometry":{"coordinates":[[9,35,3],[9.5,35],[8,35]],"type":"LineString"},
"properties":{"name":"A","times":["@0Z",1791028801,1791028801500]},"type":"Feature"})";
    ExpectTold("", "", "GeoJSON A: 0 35 9, 1000 35 9.5, 1500 35 8,",
               {R"({"features": [)" + line + "]}", "\xEF\xBB\xBF\n" + line});
    ExpectTold(
        {R"({"features": [
{"geometry":{"coordinates":[1,2],"type":"Point"},"properties":{"boat":"B","time":"@0Z"}},
{"geometry":{"coordinates":[3,4],"type":"Point"},"properties":{"boat":"A","timestamp":1791028801000}},
{"geometry":{"coordinates":[5,6],"type":"Point"},"properties":{"boat":"B","datetime":"@2Z"}},
{"geometry":{"coordinates":[null,6],"type":"Point"},"properties":{"boat":"B","time":1791028803}},
{"geometry":{"coordinates":[5,6],"type":"Point"},"properties":{"boat":"B"}},
{"geometry":{"coordinates":[5,6],"type":"Point"},"properties":{"boat":"B","time":1e300}},
{"geometry":{"coordinates":[7,8],"type":"Point"},"properties":{"name":"M1"}}, {}]}
 => GeoJSON A: 1000 4 3, | B: 0 2 1, 2000 6 5, NoPlace 1 NoTime 1 Broken 1 mark M1 8 7)",
         R"({"geometry":{"coordinates":[[[1,2]],[[3,4],[5,6]],7],"type":"MultiLineString"},
"properties":{"coordinateProperties":{"times":[["@0"],["@1"]]}}} => GeoJSON: 0 2 1, 1000 4 3, NoTime 1)",
         R"({"geometry":{"coordinates":[[1,2],[3,4]],"type":"LineString"},"properties":{"times":7}} => NoTimes)",
         R"({"geometry":{"coordinates":{"a":[]},"type":"LineString"},"properties":{"times":[]}} => NoFixes)",
         R"({"geometry":{"coordinates":[[[1,2]]],"type":"Polygon"},"properties":{}} => NoFixes)",
         R"({"type":"LineString","coordinates":[[1,2],[3,4]]} => NoTimes)",
         R"({"hello":"type"} => Unknown)",
         R"({"coordinates":"\")" + std::string(201, '[') + "\"} => NoTimes",  // brackets in a text
         R"({"features":[1,null,"a",[],{}]} => NoFixes)", R"({"features":[ => Broken)",
         R"({"features":{"geometry":[]},"properties":[]} => NoFixes)",
         R"({"coordinates":)" + std::string(199, '[') + " => Broken",
         R"({"coordinates":)" + std::string(200, '[') + " => TooLarge",
         R"({"coordinates":[[])" + Times(",[]", 1'000'000) + "]} => TooLarge"});
}

}  // namespace
}  // namespace keelview
