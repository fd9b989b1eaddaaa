#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <string>
#include <tuple>

#include "racedata/tracks/fit.h"
#include "racedata/tracks/formats.h"
#include "support/bytes.h"

namespace keelview {
namespace {

constexpr std::uint32_t At = 1'100'000'000;      // seconds since 1989-12-31
constexpr UnixMs AtUnix = 1'731'065'600'000;     // the same, as date(1) says
constexpr std::uint32_t Lat35 = 417'566'265;     // 35 degrees: 35 * 2^31 / 180 is 417566264.9
constexpr std::uint32_t Lon139 = 1'658'334'595;  // 139 degrees: 1658334594.8
constexpr std::uint32_t NoPlace = 0x7FFFFFFF;

using Fields = std::initializer_list<std::tuple<int, int, int>>;  // number, size, base type

std::string Definition(int local, int message, Fields fields, bool big = false) {
    std::string text = Le(0x40U | static_cast<unsigned>(local), 1) + Le(0, 1) + Le(big ? 1 : 0, 1);
    text += (big ? Be : Le)(static_cast<std::uint64_t>(message), 2) + Le(fields.size(), 1);
    for (const auto& [number, size, type] : fields) text += Le(number, 1) + Le(size, 1) + Le(type, 1);
    return text;
}

/// The checksum bit by bit, as the reader does not work it out.
std::string Checksum(const std::string& bytes) {
    unsigned crc = 0;
    for (const char byte : bytes)
        for (unsigned bit = 0; bit < 8; ++bit) {
            const unsigned turn = (crc ^ static_cast<unsigned char>(byte) >> bit) & 1U;
            crc = crc >> 1U ^ (turn != 0 ? 0xA001U : 0U);
        }
    return Le(crc, 2);
}

std::string FitFile(const std::string& data, int header = 14) {
    std::string text = Le(header, 1) + Le(0x20, 1) + Le(2132, 2) + Le(data.size(), 4) + ".FIT";
    if (header == 14) text += Le(0, 2);
    text += data;
    return text + Checksum(text);
}

const std::string RecordDefinition =
    Definition(0, 20, {{253, 4, 0x86}, {0, 4, 0x85}, {1, 4, 0x85}, {6, 2, 0x84}});

std::string RecordAt(std::uint32_t time, std::uint32_t lat = Lat35, std::uint32_t lon = Lon139) {
    return Le(0, 1) + Le(time, 4) + Le(lat, 4) + Le(lon, 4) + Le(3000, 2);
}

std::string Device(int serial) {
    return Definition(5, 0, {{1, 2, 0x84}, {3, 4, 0x8C}}) + Le(5, 1) + Le(1, 2) + Le(serial, 4);
}

/// The seconds of all fixes, recording by recording.
std::string Seconds(const TrackFileContent& content) {
    std::string text;
    for (const Recording& recording : content.Recordings) {
        for (const RecordedFix& fix : recording.Fixes)
            text += std::to_string((fix.Time - AtUnix) / 1000) + " ";
        text += "| ";
    }
    return text;
}

int Count(const std::vector<Skipped>& skipped, SkipReason why) {
    int count = 0;
    for (const Skipped& each : skipped) count += each.Why == why ? each.Count : 0;
    return count;
}

TEST(Fit, ARecordGivesTimePlaceAndSpeed) {
    const auto content = ReadTrackFile(FitFile(
        Device(4711) + RecordDefinition + RecordAt(At) + RecordAt(At + 1, 0U - Lat35, 0U - Lon139), 12));
    ASSERT_EQ(Seconds(content), "0 1 | ");
    EXPECT_EQ(content.Format, "FIT");
    EXPECT_EQ(content.Recordings[0].Device, "Garmin 4711");
    const auto& [north, south] = std::tie(content.Recordings[0].Fixes[0], content.Recordings[0].Fixes[1]);
    EXPECT_NEAR(north.Lat, 35.0, 1e-7);
    EXPECT_NEAR(north.Lon, 139.0, 1e-7);
    EXPECT_NEAR(south.Lat, -35.0, 1e-7);
    EXPECT_NEAR(south.Lon, -139.0, 1e-7);
    EXPECT_NEAR(north.Speed, 5.8315, 1e-4);  // 3 m/s
    EXPECT_TRUE(std::isnan(north.Course));
}

TEST(Fit, ShortTimesCountOnFromTheLastOneAndWrap) {
    // At is 0 in its low five bits... a record of local type 1 without a time, led by 80, the type and the
    // seconds.
    const std::string data =
        RecordDefinition + Definition(1, 20, {{0, 4, 0x85}, {1, 4, 0x85}}) + RecordAt(At);
    std::string all = data;
    for (const std::uint32_t seconds : {3U, 31U, 33U, 64U})
        all += Le(0xA0U | ((At + seconds) & 31U), 1) + Le(Lat35, 4) + Le(Lon139, 4);
    EXPECT_EQ(Seconds(ReadFit(FitFile(all))), "0 3 31 33 64 | ");
}

TEST(Fit, OtherOrdersFieldsOfApplicationsAndMessagesOfTheGps) {
    std::string data = Definition(
        2, 160, {{253, 4, 0x86}, {0, 2, 0x84}, {1, 4, 0x85}, {2, 4, 0x85}, {4, 4, 0x86}, {5, 2, 0x84}},
        true);
    for (const int ms : {0, 100, 200})
        data +=
            Le(2, 1) + Be(At, 4) + Be(ms, 2) + Be(Lat35, 4) + Be(Lon139, 4) + Be(3000, 4) + Be(27150, 2);
    std::string record = RecordDefinition + RecordAt(At);  // the same second, told a second time
    record[0] = 0x60;
    record.insert(RecordDefinition.size(), Le(1, 1) + Le(0, 1) + Le(3, 1) + Le(0, 1));
    const auto content = ReadFit(FitFile(data + record + "abc" + RecordAt(At + 1) + "abc"));
    ASSERT_EQ(content.Recordings.size(), 1U);
    const Recording& gps = content.Recordings[0];
    ASSERT_EQ(gps.Fixes.size(), 3U);
    EXPECT_EQ(gps.Fixes[2].Time, AtUnix + 200);
    EXPECT_NEAR(gps.Fixes[2].Lat, 35.0, 1e-7);
    EXPECT_NEAR(gps.Fixes[2].Speed, 5.8315, 1e-4);
    EXPECT_NEAR(gps.Fixes[2].Course, 271.5, 1e-4);
    EXPECT_TRUE(gps.Left.empty());
}

TEST(Fit, TheFileTellsTheZoneAndTheMarksOfACourse) {
    const std::string course = Definition(3, 32, {{2, 4, 0x85}, {3, 4, 0x85}, {6, 6, 0x07}}) + Le(3, 1) +
                               Le(Lat35, 4) + Le(Lon139, 4) + std::string("Buoy\0x", 6);
    const std::string activity = Definition(4, 34, {{253, 4, 0x86}, {5, 4, 0x86}}) + Le(4, 1) + Le(At, 4) +
                                 Le(At + 5 * 3600 + 1800 - 2, 4);
    const auto content = ReadFit(FitFile(course + activity));
    ASSERT_EQ(content.Hints.Marks.size(), 1U);
    EXPECT_EQ(content.Hints.Marks[0].Name, "Buoy");
    EXPECT_NEAR(content.Hints.Marks[0].Lon, 139.0, 1e-7);
    EXPECT_EQ(content.Hints.ZoneHours, 5.5);
}

TEST(Fit, ChainedPartsContinueOneRecordingWhereTheyCan) {
    const auto part = [](int device, std::uint32_t from) {
        return FitFile(Device(device) + RecordDefinition + RecordAt(At + from) + RecordAt(At + from + 1));
    };
    EXPECT_EQ(Seconds(ReadFit(part(1, 0) + part(1, 10))), "0 1 10 11 | ");
    EXPECT_EQ(Seconds(ReadFit(part(1, 0) + part(2, 10))), "0 1 | 10 11 | ");
    EXPECT_EQ(Seconds(ReadFit(part(1, 10) + part(1, 0))), "10 11 | 0 1 | ");
}

TEST(Fit, WhatGivesNoFixIsCounted) {
    using Case = std::tuple<std::string, SkipReason, Refusal>;
    for (const auto& [records, why, refusal] : {
             Case{RecordAt(At, NoPlace), SkipReason::NoPlace, Refusal::NoFixes},
             Case{RecordAt(At, 0x50000000), SkipReason::NoPlace, Refusal::NoFixes},  // 112 degrees north
             Case{RecordAt(0xFFFFFFFF), SkipReason::NoTime, Refusal::NoTimes},
             Case{RecordAt(70), SkipReason::NoTime, Refusal::NoTimes},  // since the device was switched on
             Case{RecordAt(At) + RecordAt(At), SkipReason::SameTime, Refusal::None},
             Case{RecordAt(At) + Le(9, 1), SkipReason::Broken,
                  Refusal::None},  // a type that was not defined
         }) {
        const std::string file = FitFile(RecordDefinition + records);
        EXPECT_EQ(Count(ReadFit(file).Recordings.at(0).Left, why), 1) << static_cast<int>(why);
        EXPECT_EQ(ReadTrackFile(file).Refused, refusal) << static_cast<int>(why);
    }
    EXPECT_EQ(Seconds(ReadFit(FitFile(RecordDefinition + RecordAt(At) + RecordAt(0xF8000000)))),
              "0 " + std::to_string(0xF8000000 - At) + " | ");  // 2121
}

TEST(Fit, ADamagedFileGivesWhatCanBeRead) {
    const std::string file = FitFile(RecordDefinition + RecordAt(At) + RecordAt(At + 1));
    EXPECT_TRUE(ReadFit(file).Recordings.at(0).Left.empty());
    for (std::size_t size = 12; size < file.size(); ++size) {
        const auto content = ReadFit(file.substr(0, size));
        const std::size_t fixes = size < 47 ? 0 : size < 62 ? 1 : 2;  // they end at 14 + 18 + 15 * n
        EXPECT_EQ(content.Recordings.at(0).Fixes.size(), fixes) << size;
        EXPECT_EQ(Count(content.Recordings.at(0).Left, SkipReason::Broken), 1) << size;
    }
    std::string flipped = file;
    flipped.back() ^= 1;
    EXPECT_EQ(Count(ReadFit(flipped).Recordings.at(0).Left, SkipReason::Broken), 1);
    std::string unfinished = file;
    unfinished.replace(4, 4, 4, '\0');
    EXPECT_EQ(Seconds(ReadFit(unfinished)), "0 1 | ");
    EXPECT_EQ(ReadTrackFile(file.substr(0, 11)).Refused, Refusal::Unknown);
}

}  // namespace
}  // namespace keelview
