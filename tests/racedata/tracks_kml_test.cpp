#include <gtest/gtest.h>

#include "support/told_recordings.h"

namespace keelview {
namespace {

TrackFileContent ReadKmlWith(const std::string& inside) {
    return ReadTrackFile(R"(<kml xmlns="http://www.opengis.net/kml/2.2"><Document><name>Cup</name>)" +
                         inside + "</Document></kml>");
}
std::string TimedPoint(const std::string& time, const std::string& coordinates) {
    return "<Placemark><TimeStamp><when>2026-10-03T12:30:" + time +
           "Z</when></TimeStamp><Point><coordinates>" + coordinates + "</coordinates></Point></Placemark>";
}

TEST(Kml, ATrackIsTimesAndPlacesInAnyMixture) {
    const TrackFileContent content = ReadKmlWith(R"(<Folder><Placemark><name>Alcyone</name><gx:Track>
      <when>2026-10-03T12:30:00Z</when><when>2026-10-03T12:30:01Z</when><when>2026-10-03T12:30:02Z</when>
      <gx:coord>139.25 35.5 0</gx:coord><gx:coord/><gx:coord> -139.25	-35.5
      </gx:coord></gx:Track></Placemark>
      <Placemark><name>Bora</name><MultiTrack><Track><coord>139 35</coord><when>2026-10-03T12:30:00Z</when></Track>
      <Track><when>2026-10-03T12:30:05Z</when><coord>139 35.5</coord><coord>1 2</coord></Track></MultiTrack>
      </Placemark></Folder>)");
    EXPECT_EQ(content.Format, "KML");
    EXPECT_EQ(Told(content),
              "Alcyone/: 0 35.5 139.25 - -, 2000 -35.5 -139.25 - -, NoPlace 1 | "
              "Bora/: 0 35 139 - -, 5000 35.5 139 - -, NoTime 1");
}

TEST(Kml, PointsWithTimesAreTheRecordingOfTheirFolder) {
    const TrackFileContent content = ReadKmlWith(
        TimedPoint("00", "139.25,35.5,0") + "<Folder><name>Bora</name>" + TimedPoint("03", "1,2") +
        "<Placemark><name>Mark 1</name><Point><coordinates>139.5,35.25</coordinates></Point></Placemark>"
        "<Placemark><LineString><coordinates>139,35 "
        "139,36</coordinates></LineString></Placemark></Folder>" +
        TimedPoint("04", " 139.5 , 35.5 "));
    EXPECT_EQ(Told(content), "Cup/: 0 35.5 139.25 - -, 4000 35.5 139.5 - -, | Bora/: 3000 2 1 - -,");
    EXPECT_EQ(ToldMarks(content), "Mark 1 35.25 139.5, ");
}

TEST(Kml, ADrawnLineHasNoTimes) {
    EXPECT_EQ(ReadKmlWith("<Placemark><LineString><coordinates>139,35,0 139,36,0</coordinates></LineString>"
                          "</Placemark>")
                  .Refused,
              Refusal::NoTimes);
    EXPECT_EQ(ReadKmlWith("").Refused, Refusal::NoFixes);
}

}  // namespace
}  // namespace keelview
