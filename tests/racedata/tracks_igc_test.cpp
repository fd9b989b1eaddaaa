#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "racedata/tracks/formats.h"
#include "racedata/tracks/igc.h"

namespace keelview {
namespace {

constexpr UnixMs Noon = 1750507200000;  // 2025-06-21 12:00:00 UTC
constexpr UnixMs Day = 86'400'000;

TEST(TracksIgc, HeadersFixesAndExtensions) {
    const TrackFileContent content = ReadTrackFile(
        "AXYZ123:Logger\r\nHFDTEDATE:210625,01\r\nHFFTYFRTYPE:Maker,Type 2\r\nHFGIDGLIDERID:D-1234\r\n"
        "HFCIDCOMPETITIONID: JPN 5\r\nHFTZNTIMEZONE:-09:30\r\n"
        "I063638FXA3939TDS4040LAD4141LOD4244GSP4547TRT\r\n"
        "C210625100000210625000102\r\nC0000000N00000000ETAKEOFF\r\nC3530000N13915000EBuoy\r\n"
        "B1200003530123N13915500EA0010000200012546010270\r\nLXYZ a comment\r\n"
        "B1200023330500S07015500WV0010000200012900---\r\nGABCDEF\r\n");
    EXPECT_EQ(content.Format, "IGC");
    ASSERT_EQ(content.Recordings.size(), 1U);
    const Recording& track = content.Recordings[0];
    EXPECT_EQ(track.Boat, "JPN 5");
    EXPECT_EQ(track.Device, "Maker,Type 2");
    EXPECT_EQ(content.Hints.ZoneHours, -9.5);
    ASSERT_EQ(content.Hints.Marks.size(), 1U);
    EXPECT_EQ(content.Hints.Marks[0].Name, "Buoy");
    EXPECT_EQ(content.Hints.Marks[0].Lat, 35.5);
    ASSERT_EQ(track.Fixes.size(), 2U);
    const RecordedFix& fix = track.Fixes[0];
    EXPECT_EQ(fix.Time, Noon + 500);
    EXPECT_NEAR(fix.Lat, 35 + 30.1234 / 60, 1e-12);
    EXPECT_NEAR(fix.Lon, 139 + 15.5006 / 60, 1e-12);
    EXPECT_NEAR(fix.Speed, 5.399568, 1e-6);  // 10 km/h
    EXPECT_EQ(fix.Course, 270);
    EXPECT_EQ(fix.Accuracy, 12);
    EXPECT_EQ(track.Fixes[1].Time, Noon + 2900);  // V: no height, yet a place
    EXPECT_NEAR(track.Fixes[1].Lat, -(33 + 30.5 / 60), 1e-12);
    EXPECT_NEAR(track.Fixes[1].Lon, -(70 + 15.5 / 60), 1e-12);
    EXPECT_TRUE(std::isnan(track.Fixes[1].Speed));
}

TEST(TracksIgc, TimesGoOnOverMidnight) {
    const std::string place = "3530123N13915500EA0010000200\r\n";
    for (const char* date : {"", "HFDTE220625\r\n"}) {
        std::string record = "HFDTE210625\r\n";
        for (const char* line : {"B120000", "B235959", date, "B000001"})
            record.append(line).append(*line == 'B' ? place : "");
        const TrackFileContent content = ReadIgc(record);
        const std::vector<RecordedFix>& fixes = content.Recordings.at(0).Fixes;
        ASSERT_EQ(fixes.size(), 3U);
        EXPECT_EQ(fixes[0].Time, Noon);
        EXPECT_EQ(fixes[2].Time, Noon + Day / 2 + 1000);
    }
}

TEST(TracksIgc, WhatIsNoFixIsCounted) {
    struct Case {
        const char* Line;
        SkipReason Why;
    };
    const std::string date = "HFDTE210625\r\n";
    for (const Case& each : {
             Case{"B120000", SkipReason::Broken},
             Case{"B12000x3530123N13915500EA0010000200", SkipReason::Broken},
             Case{"B2400003530123N13915500EA0010000200", SkipReason::Broken},
             Case{"B1200003560123N13915500EA0010000200", SkipReason::NoPlace},  // sixty minutes
             Case{"B1200009130123N13915500EA0010000200", SkipReason::NoPlace},
             Case{"B1200003530123n13915500EA0010000200", SkipReason::NoPlace},
             Case{"B1200000000000N00000000EV0000000000", SkipReason::NoPlace},
         }) {
        const TrackFileContent content = ReadIgc(date + each.Line);
        ASSERT_EQ(content.Recordings.at(0).Left.size(), 1U) << each.Line;
        EXPECT_EQ(content.Recordings[0].Left[0].Why, each.Why) << each.Line;
    }
    const std::string fix = "B1200003530123N13915500EA0010000200";
    EXPECT_EQ(ReadTrackFile(fix + "\r\n").Refused, Refusal::NoTimes);  // no date
    EXPECT_EQ(ReadTrackFile(date).Refused, Refusal::NoFixes);
    for (std::size_t size = 0; size <= fix.size(); ++size)
        ReadIgc(date + "I023638TDS99LAD\n" + fix.substr(0, size));
    EXPECT_EQ(ReadTrackFile("B is the second letter\n").Refused, Refusal::Unknown);
}

}  // namespace
}  // namespace keelview
