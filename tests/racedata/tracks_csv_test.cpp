#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <string>
#include <vector>

#include "racedata/tracks/csv.h"
#include "racedata/tracks/formats.h"

namespace keelview {
namespace {

constexpr UnixMs Noon = 1750507200000;  // 2025-06-21 12:00:00 UTC

/// The one fix of a table of a head and a row.
RecordedFix OnlyFix(const std::string& head, const std::string& row) {
    const TrackFileContent content = ReadTrackFile(head + "\n" + row + "\n");
    EXPECT_EQ(content.Format, "CSV") << head;
    const bool one = content.Recordings.size() == 1 && content.Recordings[0].Fixes.size() == 1;
    EXPECT_TRUE(one) << head << "\n" << row;
    return one ? content.Recordings[0].Fixes[0] : RecordedFix{};
}

std::map<SkipReason, int> Left(const Recording& track) {
    std::map<SkipReason, int> left;
    for (const Skipped& skipped : track.Left) left[skipped.Why] = skipped.Count;
    return left;
}

TEST(TracksCsv, TimesAreReadAsProgramsWriteThem) {
    struct Case {
        const char* Head;
        const char* Time;
        UnixMs Moment;
    };
    for (const Case& each : {
             Case{"ISODateTimeUTC", "2025-06-21T12:00:00.25Z", Noon + 250},
             Case{"timestamp", "2025-06-21T21:00:00+09:00", Noon},
             Case{"timestamp", "2025-06-21T07:00:00.062-0500", Noon + 62},
             Case{"Time", "2025-06-21 12:00:00 UTC", Noon},
             Case{"日時", "2025/6/21 12:00", Noon},
             Case{"Date/Time", "6/21/2025 12:00:00 PM", Noon},
             Case{"GPS Time", "21.06.2025 09:00:00 pm JST", Noon},
             Case{"time", "\"2025-06-21 12:00:00\"", Noon},
             Case{"date,time", "2025-06-21,12:00:00.5", Noon + 500},
             Case{"UTC DATE,UTC TIME", "20250621,120000", Noon},
             Case{"date,time", "2025-06-21,030000", Noon - 9 * 3'600'000},  // and no day of a spreadsheet
             Case{"date,time", "2025-06-21,1750507200", Noon},
             Case{"date", "2025-06-21 12:00:00", Noon},
             Case{"unix time (s)", "1750507200.25", Noon + 250},
             Case{"time_ms", "1750507200250", Noon + 250},
             Case{"epoch", "1750507200250000", Noon + 250},
             Case{"Utc", "45829.5", Noon},  // 25569 is 1970-01-01
             Case{"timestamp", "1970-01-01T00:00:00Z", 0},
             Case{"timestamp", "2080-06-21T12:00:00Z", 3486196800000},
         }) {
        const RecordedFix fix =
            OnlyFix(std::string(each.Head) + ",lat,lon", std::string(each.Time) + ",35.5,139.25");
        EXPECT_EQ(fix.Time, each.Moment) << each.Head << " " << each.Time;
        EXPECT_EQ(fix.Lat, 35.5) << each.Time;
    }
    EXPECT_EQ(OnlyFix("Utc;lat;lon", "45829,5;35,5;139,25").Time, Noon);
}

TEST(TracksCsv, PlacesAreReadAsPeopleWriteThem) {
    struct Case {
        const char* Head;
        const char* Row;
        double Lat, Lon;
    };
    for (const Case& each : {
             Case{"time,Latitude,Longitude", "1750507200,-35.5,+139.25", -35.5, 139.25},
             Case{"time,lat [deg],lng [deg]", "1750507200,35.5N,70.25w", 35.5, -70.25},
             Case{"time\tlat\tlon", "1750507200\tN35 17.25\tE139 28.5", 35.2875, 139.475},
             Case{"time;lat;long", "1750507200;S 35 17,25;W 139 28,5", -35.2875, -139.475},
             Case{"time;緯度;経度", "1750507200;35°17'15\"N;139°28'30\"E", 35.2875, 139.475},
             Case{"time,lat,lon", "1750507200,\"35° 17' 15\"\" S\",-139 28.5", -35.2875, -139.475},
             Case{"time,lat,lon", "1750507200,N3517.25,E13928.5", 35.2875, 139.475},
             Case{"time,LATITUDE,N/S,LONGITUDE,E/W", "1750507200,35.5,S,70.25,W", -35.5, -70.25},
             Case{"\xEF\xBB\xBF\"time\",\"LATITUDE N/S\",\"LONGITUDE E/W\"", "1750507200,35.5S,70.25W",
                  -35.5, -70.25},
             Case{"# a logger\nsep=;\n\ntime;lat;lon", "1750507200;0,5;-0,25", 0.5, -0.25},
         }) {
        const RecordedFix fix = OnlyFix(each.Head, each.Row);
        EXPECT_NEAR(fix.Lat, each.Lat, 1e-12) << each.Row;
        EXPECT_NEAR(fix.Lon, each.Lon, 1e-12) << each.Row;
    }
    for (const char* lat : {"90.01", "N35 60.0", "35 17 15 1", "E35", "north", "", "1e999", "nan", "0.0"}) {
        const TrackFileContent content =
            ReadCsv(std::string("time,lat,lon\n1750507200,") + lat + ",0.0\n1750507201,35,139\n");
        EXPECT_EQ(Left(content.Recordings.at(0)), (std::map<SkipReason, int>{{SkipReason::NoPlace, 1}}))
            << lat;
    }
}

TEST(TracksCsv, SpeedsAndAnglesComeInTheUnitsOfTheirNames) {
    struct Case {
        const char* Name;
        float RecordedFix::*Field;
        double Knots;  // or degrees, that 18.52 of the column is
    };
    for (const Case& each : {
             Case{"sog_kts", &RecordedFix::Speed, 18.52},
             Case{"Speed", &RecordedFix::Speed, 18.52},
             Case{"Speed (km/h)", &RecordedFix::Speed, 10},
             Case{"SOG [m/s]", &RecordedFix::Speed, 36},
             Case{"速度(ノット)", &RecordedFix::Speed, 18.52},
             Case{"hdg_true", &RecordedFix::Heading, 18.52},
             Case{"Course (deg true)", &RecordedFix::Course, 18.52},
             Case{"cog_rad", &RecordedFix::Course, 1061.1178},
             Case{"Bsp", &RecordedFix::WaterSpeed, 18.52},
             Case{"TWS (mps)", &RecordedFix::WindSpeed, 36},
             Case{"Twd", &RecordedFix::WindFrom, 18.52},
             Case{"hacc", &RecordedFix::Accuracy, 18.52},
         }) {
        const std::string head = std::string("time,lat,lon,") + each.Name;
        EXPECT_NEAR(OnlyFix(head, "1750507200,35,139,18.52").*each.Field, each.Knots, 1e-3) << head;
        EXPECT_TRUE(std::isnan(OnlyFix(head, "1750507200,35,139").*each.Field)) << head;
    }
    EXPECT_EQ(OnlyFix("time,speed,sog,lat,lon", "1750507200,1,2,35,139").Speed, 2);
    // 8 knots of wind across a boat that makes 6 to the north are felt as 10 from 53.13 degrees.
    const RecordedFix felt = OnlyFix("time,lat,lon,hdg,bsp,aws,awa", "1750507200,35,139,0,6,10,-53.1301");
    EXPECT_NEAR(felt.WindSpeed, 8, 1e-3);
    EXPECT_NEAR(felt.WindFrom, 270, 1e-3);
    EXPECT_NEAR(OnlyFix("time,lat,lon,hdg,twa,tws", "1750507200,35,139,300,90,8").WindFrom, 30, 1e-3);
}

TEST(TracksCsv, BoatsAreRecordingsOfTheirOwn) {
    const TrackFileContent content = ReadTrackFile(
        "boat,time,lat,lon\nA,1750507200,35,139\n\"B, \"\"c\"\"\",1750507200,36,139\n"
        "A,1750507201,35,139\n,,,\n\n\"B, \"\"c\"\"\",1750507201,36,139\n");
    ASSERT_EQ(content.Recordings.size(), 2U);
    EXPECT_EQ(content.Recordings[0].Boat, "A");
    EXPECT_EQ(content.Recordings[1].Boat, "B, \"c\"");
    for (const Recording& track : content.Recordings) {
        EXPECT_EQ(track.Fixes.size(), 2U);
        EXPECT_TRUE(track.Left.empty());
    }
    std::string numbered = "id,time,lat,lon\n";
    for (int row = 0; row < 3000; ++row)
        numbered += std::to_string(row) + "," + std::to_string(1750507200 + row) + ",35,139\n";
    for (const std::string& rows : {numbered, numbered.substr(0, 200)}) {
        const TrackFileContent one = ReadTrackFile(rows);
        ASSERT_EQ(one.Recordings.size(), 1U);
        EXPECT_GT(one.Recordings[0].Fixes.size(), 5U);
    }
    std::string fleet = numbered;
    for (int row = 0; row < 3000; ++row) fleet += "0,1750600000,35,139\n";
    EXPECT_LE(ReadTrackFile("id,time,lat,lon\n0,1750507100,35,139\n" + fleet.substr(16)).Recordings.size(),
              2000U);
}

TEST(TracksCsv, OneZoneHoldsForAFile) {
    const std::string head = "time,lat,lon\n";
    const std::string bare = "2025-06-21 12:00:00,35,139\n";
    const std::string east = "2025-06-21 21:00:01+09:00,35,139\n";
    for (const std::string& rows : {bare + east, east + bare}) {
        const TrackFileContent content = ReadCsv(head + rows);
        const Recording& track = content.Recordings.at(0);
        ASSERT_EQ(track.Fixes.size(), 1U) << rows;
        EXPECT_EQ(track.Fixes[0].Time, Noon + 1000);
        EXPECT_EQ(Left(track), (std::map<SkipReason, int>{{SkipReason::OtherZone, 1}}));
        EXPECT_EQ(content.Hints.ZoneHours, 9.0);
    }
    EXPECT_EQ(ReadCsv(head + bare).Recordings.at(0).Fixes.at(0).Time, Noon);
}

TEST(TracksCsv, WhatIsNoFixIsCounted) {
    struct Case {
        const char* Row;
        SkipReason Why;
    };
    const std::string head = "time,lat,lon\n2025-06-21T12:00:00Z,35,139\n";
    for (const Case& each : {
             Case{"2025-06-21T12:00:00Z,35,139", SkipReason::SameTime},
             Case{"2025-02-30T12:00:00Z,35,139", SkipReason::NoTime},
             Case{"2025-06-21T24:00:00Z,35,139", SkipReason::NoTime},
             Case{"2025-06-21T12:00:00+99:00,35,139", SkipReason::NoTime},
             Case{"12:00:05,35,139", SkipReason::NoTime},
             Case{"3.5,35,139", SkipReason::NoTime},
             Case{",35,139", SkipReason::NoTime},
             Case{"2025-06-21T12:00:05Z", SkipReason::NoPlace},
         }) {
        const TrackFileContent content = ReadCsv(head + each.Row);
        EXPECT_EQ(Left(content.Recordings.at(0)), (std::map<SkipReason, int>{{each.Why, 1}})) << each.Row;
    }
    EXPECT_EQ(ReadTrackFile("lat,lon,speed\n35,139,5\n").Refused, Refusal::NoTimes);
    EXPECT_EQ(ReadTrackFile("time,lat,lon\n0,35,139\n20000,35,139\n").Refused,
              Refusal::NoTimes);  // of a start
    EXPECT_EQ(ReadTrackFile("time,lat,lon\n").Refused, Refusal::NoFixes);
    EXPECT_EQ(ReadTrackFile("when,where\n1,2\n").Refused, Refusal::Unknown);
    EXPECT_EQ(ReadTrackFile(std::string(1'000'000, ',')).Refused, Refusal::Unknown);
    const std::string quoted = head + R"("2025-06-21T12:00:07+09:00","35""","13 9)";
    for (std::size_t size = 0; size <= quoted.size(); ++size) ReadTrackFile(quoted.substr(0, size));
}

}  // namespace
}  // namespace keelview
