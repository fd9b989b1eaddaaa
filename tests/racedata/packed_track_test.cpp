// A packed track gives back what was read, in every bit, and takes no damage for a track.

#include "racedata/packed_track.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <random>
#include <string>
#include <vector>

namespace keelview {
namespace {

std::vector<std::uint64_t> BitsOf(const TrackReading& reading) {
    std::vector<std::uint64_t> bits;
    for (const GpsFix& fix : reading.Fixes) {
        bits.push_back(std::bit_cast<std::uint64_t>(fix.Lat));
        bits.push_back(std::bit_cast<std::uint64_t>(fix.Lon));
        bits.push_back(static_cast<std::uint64_t>(fix.Time));
        bits.push_back(std::bit_cast<std::uint32_t>(fix.Speed));
        bits.push_back(std::bit_cast<std::uint32_t>(fix.Course));
    }
    return bits;
}

/// A boat's reading of 2000 fixes; `place` makes the minutes of arc of two numbers of steps.
template <class Place>
TrackReading Sailed(const Place& place) {
    std::mt19937 chance(7);
    TrackReading reading;
    reading.Format = "GPX";
    reading.Device = "\xE6\xB1\x9F";
    reading.Left = {{SkipReason::NoPlace, 3}, {SkipReason::TooMany, 1}};
    std::int64_t steps = 211'712'345;
    for (int i = 0; i < 2000; ++i) {
        steps += static_cast<std::int64_t>(chance() % 41) - 12;
        reading.Fixes.push_back(
            {.Lat = place(steps), .Lon = -4 * place(steps - i), .Time = 1091676600000 + 1000 * i});
    }
    return reading;
}

TEST(PackedTrack, GivesBackEveryBitOfPlacesThatRecordersWrite) {
    const auto check = [](const char* what, const TrackReading& reading, double mostBytes) {
        SCOPED_TRACE(what);
        const std::string packed = PackTrack(reading);
        const auto back = UnpackTrack(packed);
        ASSERT_TRUE(back);
        EXPECT_EQ(BitsOf(*back), BitsOf(reading));
        EXPECT_EQ(back->Format + back->Device, reading.Format + reading.Device);
        ASSERT_EQ(back->Left.size(), 2U);
        EXPECT_EQ(back->Left[1].Why, SkipReason::TooMany);
        EXPECT_LT(static_cast<double>(packed.size()) / 2000, mostBytes);
    };
    const auto steps = [](std::int64_t n) { return static_cast<double>(n); };
    check("minutes of four decimals", Sailed([&](std::int64_t n) { return steps(n / 10) / 1e4; }), 7);
    check("degrees of seven decimals", Sailed([&](std::int64_t n) { return steps(n) / 1e7 * 60; }), 7);
    check("half circles", Sailed([&](std::int64_t n) { return steps(n) * (180 / 2147483648.0) * 60; }), 7);
    check("whole degrees apart from minutes", Sailed([&](std::int64_t n) {
              return std::floor(steps(n) / 6e5) * 60 + std::fmod(steps(n), 6e5) / 1e4;
          }),
          7);
    check("nobody's steps", Sailed([&](std::int64_t n) { return std::sqrt(steps(n)); }), 25);
}

TEST(PackedTrack, KeepsVelocitiesAndRefusals) {
    TrackReading reading = Sailed([](std::int64_t n) { return static_cast<double>(n) / 1e5; });
    reading.TellsVelocity = true;
    reading.Fixes[1].Speed = 5.25F;
    reading.Fixes[1].Course = 359.9F;
    const auto back = UnpackTrack(PackTrack(reading));
    ASSERT_TRUE(back);
    EXPECT_TRUE(back->TellsVelocity);
    EXPECT_EQ(BitsOf(*back), BitsOf(reading));
    TrackReading refused;
    refused.Refused = Refusal::Velocitek;
    EXPECT_EQ(UnpackTrack(PackTrack(refused)).value_or(TrackReading{}).Refused, Refusal::Velocitek);
}

TEST(PackedTrack, IsNoneWhereItIsCutOffOrAnythingBehindIt) {
    const std::string packed =
        PackTrack(Sailed([](std::int64_t n) { return static_cast<double>(n) / 1e5; }));
    for (std::size_t size = 0; size < packed.size(); ++size)
        ASSERT_FALSE(UnpackTrack(packed.substr(0, size))) << size;
    EXPECT_FALSE(UnpackTrack(packed + '\0'));
    std::mt19937 chance(3);
    for (int i = 0; i < 3000; ++i) {
        std::string damaged = packed.substr(0, 400);
        for (int k = 0; k < 4; ++k)
            damaged[8 + chance() % (damaged.size() - 8)] = static_cast<char>(chance());
        if (const auto read = UnpackTrack(damaged)) {
            for (const GpsFix& fix : read->Fixes)
                ASSERT_TRUE(std::isfinite(fix.Lat) && std::isfinite(fix.Lon));
        }
    }
}

}  // namespace
}  // namespace keelview
