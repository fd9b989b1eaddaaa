#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <string>

#include "racedata/tracks/formats.h"
#include "racedata/tracks/vkx.h"
#include "support/bytes.h"

namespace keelview {
namespace {

constexpr UnixMs At = 1'763'900'000'123;

std::string Head() {
    return "\xFF" + Le(5, 1) + Le(0, 6);
}

std::string Row(int key, UnixMs time, const std::string& rest) {
    return Le(static_cast<std::uint64_t>(key), 1) + Le(static_cast<std::uint64_t>(time), 8) + rest;
}

/// A boat at 35 north, 139 west that makes 5 m/s over ground, turned by `heading` degrees and heeled by 20.
std::string FixRow(UnixMs time, double course = 45, double heading = 60) {
    const double radian = std::numbers::pi / 180;
    const double turn = heading * radian / 2, heel = 20 * radian / 2;
    std::string row = Le(350'000'000, 4) + Le(static_cast<std::uint64_t>(-1'390'000'000), 4) + Float(5);
    row += Float(static_cast<float>(course * radian)) + Float(3);
    for (const double part :
         {cos(turn) * cos(heel), cos(turn) * sin(heel), sin(turn) * sin(heel), sin(turn) * cos(heel)})
        row += Float(static_cast<float>(part));
    return Row(0x02, time, row);
}

TEST(Vkx, AFixHasSpeedCourseHeadingAndTheWaterSpeedThen) {
    const auto content = ReadTrackFile(Head() + FixRow(At) + Row(0x0B, At + 400, Float(4) + Float(0)) +
                                       FixRow(At + 500, -90, -10) + Row(0x03, At, std::string(12, 'x')) +
                                       "\xFE" + Le(200, 2) + Head() + FixRow(At + 3000));
    EXPECT_EQ(content.Format, "VKX");
    ASSERT_EQ(content.Recordings.size(), 1U);
    ASSERT_EQ(content.Recordings[0].Fixes.size(), 3U);
    EXPECT_TRUE(content.Recordings[0].Left.empty());
    const RecordedFix &first = content.Recordings[0].Fixes[0], &second = content.Recordings[0].Fixes[1];
    EXPECT_EQ(first.Time, At);
    EXPECT_NEAR(first.Lat, 35.0, 1e-9);
    EXPECT_NEAR(first.Lon, -139.0, 1e-9);
    EXPECT_NEAR(first.Speed, 9.7192, 1e-4);
    EXPECT_NEAR(first.Course, 45, 1e-4);
    EXPECT_NEAR(first.Heading, 60, 1e-4);
    EXPECT_NEAR(second.Course, 270, 1e-4);
    EXPECT_NEAR(second.Heading, 350, 1e-4);
    EXPECT_TRUE(std::isnan(first.WaterSpeed));
    EXPECT_NEAR(second.WaterSpeed, 7.7754, 1e-4);
    EXPECT_TRUE(std::isnan(content.Recordings[0].Fixes[2].WaterSpeed)) << "too long ago";
}

TEST(Vkx, TheLastStartAndTheLastPingsOfTheLineAreHints) {
    const auto timer = [](UnixMs time, int event) { return Row(0x04, time, Le(event, 1) + Le(0, 4)); };
    const auto ping = [](int end, float lat) {
        return Row(0x05, At, Le(end, 1) + Float(lat) + Float(-139));
    };
    const auto content =
        ReadVkx(Head() + ping(0, 34) + ping(0, 35) + ping(1, 36) + timer(At, 3) + timer(At + 9000, 3) +
                timer(At + 9500, 4) + timer(At + 9600, 0) + ping(1, 91));
    EXPECT_EQ(content.Hints.Gun, At + 9000);
    ASSERT_TRUE(content.Hints.LinePin && content.Hints.LineBoat);
    EXPECT_EQ(content.Hints.LinePin->Lat, 35);
    EXPECT_EQ(content.Hints.LineBoat->Lat, 36);
    EXPECT_EQ(content.Hints.LineBoat->Lon, -139);
}

TEST(Vkx, ReadingGoesOnAtTheNextSoundPage) {
    const std::string page = Head() + FixRow(At) + FixRow(At + 500);
    const std::string next = Head() + FixRow(At + 1000) + "\xFE" + Le(56, 2);
    const std::string noPage = "\xFF\x05 that looks like a head";
    const std::string torn =
        page.substr(0, page.size() - 20);  // its last row takes in the next page's head
    for (const std::string& file : {
             page + "\x55" + noPage + next, page + noPage + next,
             torn + next + Head() + FixRow(At + 2000),  // the page in between is lost
             page + FixRow(UnixMs{1} << 60U) + next,    // a time of no world
         }) {
        const auto content = ReadVkx(file);
        EXPECT_EQ(content.Recordings.at(0).Fixes.size(), 3U);
        EXPECT_FALSE(content.Recordings.at(0).Left.empty());
    }
}

}  // namespace
}  // namespace keelview
