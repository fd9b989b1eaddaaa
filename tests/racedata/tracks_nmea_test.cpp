#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <string>

#include "racedata/tracks/formats.h"
#include "racedata/tracks/nmea.h"

namespace keelview {
namespace {

constexpr UnixMs Noon = 1750507200000;  // 2025-06-21 12:00:00 UTC
constexpr UnixMs Day = 86'400'000;

/// A sentence with its checksum and the end of its line.
std::string Sentence(const std::string& body) {
    unsigned sum = 0;
    for (const char c : body) sum ^= static_cast<unsigned char>(c);
    char digits[8];
    std::snprintf(digits, sizeof digits, "*%02X\r\n", sum);
    return "$" + body + digits;
}

std::string Rmc(const std::string& time, const std::string& date, const std::string& status = "A") {
    return Sentence("GPRMC," + time + "," + status + ",3530.00,N,13915.00,E,6.5,270.0," + date + ",,");
}

std::map<SkipReason, int> Left(const Recording& track) {
    std::map<SkipReason, int> left;
    for (const Skipped& skipped : track.Left) left[skipped.Why] = skipped.Count;
    return left;
}

TEST(TracksNmea, SentencesOfOneSecondAreOneFix) {
    const TrackFileContent content = ReadTrackFile(
        "$GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,*47\r\n"
        "$GPRMC,123519,A,4807.038,N,01131.000,E,022.4,084.4,230394,003.1,W*6A\r\n" +
        Sentence("HCHDG,101.1,2.0,E,,") + Sentence("VWVHW,,T,,M,20.5,N,,K") +
        Sentence("WIMWD,310.0,T,,M,12.0,N,6.2,M"));
    ASSERT_EQ(content.Recordings.size(), 1U);
    ASSERT_EQ(content.Recordings[0].Fixes.size(), 1U);
    EXPECT_EQ(content.Format, "NMEA 0183");
    const RecordedFix& fix = content.Recordings[0].Fixes[0];
    EXPECT_EQ(fix.Time, 764426119000);  // 1994-03-23 12:35:19
    EXPECT_NEAR(fix.Lat, 48.1173, 1e-9);
    EXPECT_NEAR(fix.Lon, 11 + 31.0 / 60, 1e-9);
    EXPECT_FLOAT_EQ(fix.Speed, 22.4F);
    EXPECT_FLOAT_EQ(fix.Course, 84.4F);
    EXPECT_FLOAT_EQ(fix.Heading, 100.0F);  // 101.1 + 2.0 of deviation - 3.1 of variation
    EXPECT_FLOAT_EQ(fix.WaterSpeed, 20.5F);
    EXPECT_FLOAT_EQ(fix.WindSpeed, 12.0F);
    EXPECT_FLOAT_EQ(fix.WindFrom, 310.0F);
}

TEST(TracksNmea, TheTrueWindComesFromWhatIsToldAgainstTheBow) {
    struct Case {
        std::string Wind;
        float From, Speed;
    };
    // A boat that makes 6 knots to the north. Of a wind of 8 across it, 10 are felt from 53.13 degrees
    // ahead.
    for (const Case& each : {
             Case{"WIMWV,90.0,T,8.0,N,A", 90, 8},
             Case{"WIMWV,53.1301,R,10.0,N,A", 90, 8},
             Case{"WIVWR,53.1301,L,10.0,N,,M,,K", 270, 8},
             Case{"WIMWV,270.0,T,10.0,M,A", 270, 10 * 3.6F / 1.852F},
             Case{"WIMWV,90.0,T,8.0,N,V", NotTold, NotTold},
         }) {
        const auto content = ReadNmea(Rmc("120000", "210625") + Sentence("HEHDT,0.0,T") +
                                      Sentence("VWVHW,,T,,M,6.0,N,,K") + Sentence(each.Wind));
        const RecordedFix& fix = content.Recordings.at(0).Fixes.at(0);
        if (std::isnan(each.From)) {
            EXPECT_TRUE(std::isnan(fix.WindFrom) && std::isnan(fix.WindSpeed)) << each.Wind;
            continue;
        }
        EXPECT_NEAR(fix.WindFrom, each.From, 1e-3) << each.Wind;
        EXPECT_NEAR(fix.WindSpeed, each.Speed, 1e-3) << each.Wind;
    }
}

TEST(TracksNmea, TimesAreThoseOfDateAndClock) {
    const std::string gga = ",3530.00,S,07015.00,W,1,08,0.9,5.4,M,46.9,M,,";
    struct Case {
        std::string Log;
        std::vector<UnixMs> Times;
    };
    for (const Case& each : {
             Case{Rmc("120000.25", "210625") + Rmc("120000.9996", "210625"), {Noon + 250, Noon + 1000}},
             Case{Rmc("235959", "210625") + Sentence("GNGGA,000001" + gga),
                  {Noon + Day / 2 - 1000, Noon + Day / 2 + 1000}},
             Case{Sentence("GPZDA,115959.00,21,06,2025,00,00") +
                      Sentence("IIGLL,3530.0,N,13915.0,E,120000,A"),
                  {Noon}},
             Case{Rmc("120000", "010180"), {315576000000}},   // 1980
             Case{Rmc("120000", "010170"), {3155803200000}},  // 2070
         }) {
        std::vector<UnixMs> times;
        const TrackFileContent content = ReadNmea(each.Log);
        for (const RecordedFix& fix : content.Recordings.at(0).Fixes) times.push_back(fix.Time);
        EXPECT_EQ(times, each.Times) << each.Log;
    }
}

TEST(TracksNmea, LoggersWriteMoreThanSentences) {
    const std::string rmc = Rmc("120000", "210625");
    for (const char* before :
         {"2025-06-21T12:00:00.123 ", "\\s:gps,c:1750507200*1A\\", "$GPRMC,1159", "[12:00] <- "}) {
        const TrackFileContent content =
            ReadTrackFile(std::string("# log\n") + before + rmc + "!AIVDM,1,1,,A,13u,0*00\n");
        ASSERT_EQ(content.Recordings.size(), 1U) << before;
        EXPECT_EQ(content.Recordings[0].Fixes.at(0).Time, Noon) << before;
        EXPECT_TRUE(content.Recordings[0].Left.empty()) << before;
    }
    const auto marks = ReadNmea(rmc + Sentence("GPWPL,3530.00,N,13915.00,W,Buoy 1") +
                                Sentence("GPWPL,3530.00,N,18015.00,W,Nowhere"))
                           .Hints.Marks;
    ASSERT_EQ(marks.size(), 1U);
    EXPECT_EQ(marks[0].Name, "Buoy 1");
    EXPECT_NEAR(marks[0].Lon, -139.25, 1e-9);
}

TEST(TracksNmea, WhatIsNoFixIsCounted) {
    std::string wrong = Rmc("120001", "210625");
    wrong[20] ^= 1;
    const std::string good = Rmc("120000", "210625");
    const std::string offGlobe = Sentence("GPRMC,120003,A,9930.00,N,13915.00,E,6.5,270.0,210625,,");
    struct Case {
        std::string Line;
        SkipReason Why;
    };
    for (const Case& each : {
             Case{wrong, SkipReason::Broken},
             Case{Rmc("126100", "210625"), SkipReason::Broken},
             Case{Rmc("", "210625", "V"), SkipReason::NotValid},
             Case{Rmc("120002", "210625", "V") + Sentence("GPGGA,120002,,,,,0,,,,,,,,"),
                  SkipReason::NotValid},
             Case{offGlobe, SkipReason::NoPlace},
             Case{Sentence("GPRMC,120003,A,3560.00,N,13915.00,E,6.5,270.0,210625,,"), SkipReason::NoPlace},
             Case{Sentence("GPRMC,120003,A,,,,,,,210625,,"), SkipReason::NoPlace},
         }) {
        const Recording track = ReadNmea(good + each.Line + Rmc("120010", "210625")).Recordings.at(0);
        EXPECT_EQ(track.Fixes.size(), 2U) << each.Line;
        EXPECT_EQ(Left(track), (std::map<SkipReason, int>{{each.Why, 1}})) << each.Line;
    }
    EXPECT_EQ(ReadTrackFile(Sentence("GPGGA,120000,3530.00,N,13915.00,E,1,08,0.9,5.4,M,46.9,M,,")).Refused,
              Refusal::NoTimes);
    EXPECT_EQ(ReadTrackFile(Rmc("120002", "210625", "V")).Refused, Refusal::NoFixes);
}

}  // namespace
}  // namespace keelview
