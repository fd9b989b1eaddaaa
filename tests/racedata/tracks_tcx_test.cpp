#include <gtest/gtest.h>

#include "support/told_recordings.h"

namespace keelview {
namespace {

TEST(Tcx, LapsAreOneRecordingAndPointsWithoutPositionAreCounted) {
    const TrackFileContent content = ReadTrackFile(R"(<?xml version="1.0"?>
<TrainingCenterDatabase xmlns="x" xmlns:ns3="y"><Activities><Activity Sport="Other">
 <Id>2026-10-03T12:30:00Z</Id>
 <Lap StartTime="2026-10-03T12:30:00Z"><Track>
  <Trackpoint><Time>2026-10-03T12:29:59Z</Time></Trackpoint>
  <Trackpoint><Time>2026-10-03T12:30:00Z</Time><Position><LatitudeDegrees>35.5</LatitudeDegrees>
   <LongitudeDegrees>139.25</LongitudeDegrees></Position><DistanceMeters>0</DistanceMeters>
   <Extensions><ns3:TPX><ns3:Speed>1.852</ns3:Speed></ns3:TPX></Extensions></Trackpoint></Track></Lap>
 <Lap StartTime="2026-10-03T12:30:01Z"><Track>
  <Trackpoint><Time>2026-10-03T12:30:01Z</Time><Position><LatitudeDegrees>-35.5</LatitudeDegrees>
   <LongitudeDegrees>-139.25</LongitudeDegrees></Position></Trackpoint></Track></Lap>
 <Creator><Name>Watch 5</Name></Creator></Activity></Activities>
 <Courses><Course><Name>Alcyone</Name><Track>
  <Trackpoint><Time>2026-10-03T12:30:01Z</Time><Position><LatitudeDegrees>35.75</LatitudeDegrees>
   <LongitudeDegrees>139</LongitudeDegrees></Position></Trackpoint></Track></Course></Courses>
</TrainingCenterDatabase>)");
    EXPECT_EQ(content.Format, "TCX");
    EXPECT_EQ(Told(content),
              "/Watch 5: 0 35.5 139.25 3.6 -, 1000 -35.5 -139.25 - -, NoPlace 1 | "
              "Alcyone/: 1000 35.75 139 - -,");
}

}  // namespace
}  // namespace keelview
