// Odd files of bytes: FIT, VKX, packed ones, and those that are no tracks.

#include <gtest/gtest.h>

#include "support/told_recordings.h"

namespace keelview {
namespace {

constexpr std::uint32_t Second = (Noon - FitEpoch) / 1000;                   // 0 in its low five bits
const std::string Fix = " 0 35 139 s5.832,", Next = " 1000 35 139 s5.832,";  // 3 m/s

std::string Record(std::uint32_t time, const std::string& lat = FitAngle(35)) {
    return FitMessage(20, {{253, Le(time, 4)}, {0, lat}, {1, FitAngle(139)}, {6, Le(3000, 2)}});
}
std::string Device(int maker, int serial, const std::string& name = "") {
    return FitMessage(0, {{1, Le(maker, 2)}, {3, Le(serial, 4)}, {8, name}});
}
std::string Mark(double lat, const std::string& name) {
    return FitMessage(32, {{2, FitAngle(lat)}, {3, FitAngle(139)}, {6, name}});
}
std::string Zone(int seconds) {
    return FitMessage(34, {{253, Le(Second, 4)}, {5, Le(Second + seconds, 4)}});
}

TEST(Fit, MessagesOfAllKindsAreRead) {
    const std::string one = Record(Second), at = Le(Second, 4), lat = FitAngle(35), lon = FitAngle(139);
    const std::string spot = FitMessage(29, {{1, FitAngle(34)}, {2, lon}, {0, std::string("Spot\0x", 6)}});
    std::string shortTimes = one + FitMessage(20, {{0, lat}, {1, lon}}).substr(0, 12);
    for (const unsigned time : {3U, 31U, 33U, 64U}) shortTimes += Le(0x80U | (time & 31U), 1) + lat + lon;
    // A definition with a field of an application, three bytes long.
    const std::string application =
        "\x60" + one.substr(1, 17) + Le(1, 1) + Le(3 << 8, 3) + one.substr(18) + "abc";
    const auto fine = [&](std::uint64_t speed, int accuracy) {
        const std::string coarse = Le(3000, 2);
        return FitMessage(
            20, {{253, at}, {0, lat}, {1, lon}, {6, coarse}, {73, Le(speed, 4)}, {31, Le(accuracy, 1)}});
    };
    const std::string gps = FitMessage(160, {{253, at}, {0, Le(0, 2)}, {1, lat}, {2, lon}});
    const std::string later = FitMessage(160, {{253, at}, {0, Le(100, 2)}, {1, lat}, {2, lon}});
    ExpectTold(
        "", "", "FIT",
        {FitFile(Device(1, 4711) + one, 12) + " =>  /Garmin 4711:" + Fix,
         FitFile(Device(7, 0) + one) + " =>  /FIT 7:" + Fix,
         FitFile(Device(0xFFFF, 5, "Watch") + one) + " =>  /Watch 5:" + Fix,
         FitFile(shortTimes) + " => :" + Fix + " 3000 35 139, 31000 35 139, 33000 35 139, 64000 35 139,",
         FitFile(application + Record(Second + 1)) + " => :" + Fix + Next,
         FitFile(fine(2000, 9)) + " => : 0 35 139 s3.888 a9,",
         FitFile(fine(0xFFFFFFFF, 255)) + " => :" + Fix,
         FitFile(gps + later + one) + " => : 0 35 139, 100 35 139,",  // the kind with more places
         FitFile(gps + one) + " => :" + Fix, FitFile(one + Zone(15 * 3600)) + " => :" + Fix,
         FitFile(one + Zone(-14 * 3600)) + " => :" + Fix + " zone -14",
         FitFile(one + Mark(35, "Buoy") + Mark(-90, "Pole") + Mark(91, "Off") + Mark(35, "") + spot +
                 Zone(19798)) +
             " => :" + Fix + " mark Buoy 35 139 mark Pole -90 139 mark Spot 34 139 zone 5.5"});
}

TEST(Fit, PartsAreChainedAndDamageAndWhatGivesNoFixAreCounted) {
    const std::string one = Record(Second), next = Record(Second + 1);
    const std::string none = Record(Second, Le(0x7FFFFFFF, 4));
    const auto part = [&](int device, const std::string& data) {
        return FitFile(Device(1, device) + data + none);
    };
    std::string flipped = FitFile(one), unfinished = flipped;
    flipped.back() ^= 1;
    unfinished.replace(4, 4, 4, '\0');
    ExpectTold("", "", "FIT",
               {part(1, one) + part(1, next) + " =>  /Garmin 1:" + Fix + Next + " NoPlace 2",
                part(1, one) + part(2, next) + " =>  /Garmin 1:" + Fix + " NoPlace 1 | /Garmin 2:" + Next +
                    " NoPlace 1",
                part(1, next) + part(1, one) + " =>  /Garmin 1:" + Next + " NoPlace 1 | /Garmin 1:" + Fix +
                    " NoPlace 1",
                FitFile(Record(0x10000000)) + " => : -891527744000 35 139 s5.832,"});
    ExpectTold(
        "", "", "FIT:" + Fix,
        {FitFile(one) + FitFile(Zone(3600)) + " =>  zone 1", flipped + " =>  Broken 1",
         unfinished + " =>  Broken 1", FitFile(one + one) + " =>  SameTime 1",
         FitFile(one + Record(Second - 1)) + " =>  TimeBack 1", FitFile(one + "\x41") + " =>  Broken 1",
         FitFile(one + "\x60" + one.substr(1, 17)) + " =>  Broken 1",
         FitFile(one + one.substr(0, 7)) + " =>  Broken 1", FitFile(one + "\x09") + " =>  Broken 1",
         FitFile(one + Record(0xF8000000)) + " =>  3000786368000 35 139 s5.832,"});
    ExpectTold({FitFile(none) + " => NoFixes", FitFile(Record(Second, FitAngle(112))) + " => NoFixes",
                FitFile(Record(0xFFFFFFFF)) + " => NoTimes", FitFile(one).substr(0, 11) + " => Unknown",
                FitFile(Record(70)) + " => NoTimes"});  // since the device was switched on
}

/// A boat at 35 north, 139 west that makes 10 knots, and points 15 degrees to the right of its course.
std::string FixAt(UnixMs ms, float course = 45) {
    return VkxFix({.Time = Noon + ms, .Lat = 35, .Lon = -139, .Speed = 10, .Course = course}, 15);
}

TEST(Vkx, RowsTellTheBoatAndItsRace) {
    const auto timer = [](UnixMs ms, int event) { return VkxRow(0x04, Noon + ms, Le(event, 5)); };
    const auto water = [](UnixMs ms, float speed) {
        return VkxRow(0x0B, Noon + ms, Float(speed) + Le(0, 4));
    };
    const auto ping = [](int end, float lat, float lon = -139) {
        return VkxRow(0x05, Noon, Le(end, 1) + Float(lat) + Float(lon));
    };
    const std::string fix = " 35 -139 s10 c45 h60,", page = VkxHead + FixAt(0),
                      noPage = "\xFF\x05 that looks like a head";
    const std::string next = "\xFE" + Le(0, 2) + VkxHead + FixAt(1000);
    ExpectTold(
        page, "", "VKX /Vakaros: 0" + fix,
        {water(400, 4) + FixAt(2400, -20) + VkxRow(0x03, Noon, std::string(12, 'x')) + FixAt(2401, 765) +
             " =>  2400 35 -139 s10 c340 h355 b7.775, 2401 35 -139 s10 h60,",
         water(0, 1001) + FixAt(1) + " =>  1" + fix,
         // 10 knots over ground; as much and abeam is felt of a wind from 45 degrees behind the beam.
         VkxRow(0x0A, Noon, Float(90) + Float(10 * Knot)) + FixAt(2000) + FixAt(2001) +
             " =>  2000 35 -139 s10 c45 h60 w14.142 f195, 2001" + fix,
         ping(0, 34) + ping(0, 35, 180) + ping(1, 90) + timer(0, 3) + timer(9000, 3) + timer(9500, 4) +
             timer(9600, 0) + ping(1, 91) + ping(0, 35, 181) + ping(2, 3) +
             " =>  gun 9000 line 35 180 90 -139",
         "\xFE" + Le(0, 2) + noPage + next + " =>  1000" + fix + " Broken 1",
         FixAt((UnixMs{1} << 60U) - Noon) + next + " =>  1000" + fix + " NoTime 1"});  // a time of no world
    ExpectTold("", FixAt(0), "",
               {"\xFF" + Le(0, 7) + " => Unknown", "\xFF" + Le(16, 7) + " => Unknown",
                VkxHead + "\x55 => Unknown", "\xFF" + Le(15, 7) + " => VKX /Vakaros: 0" + fix});
    ExpectTold({VkxHead + FixAt(-Noon) + " => NoTimes", VkxHead + " => NoFixes",
                VkxHead + FixAt(4'102'444'799'999 - Noon) + " => VKX /Vakaros: 2311415999999" + fix});
}

const std::string Table = "time,lat,lon\n1791028800,35,139\n", OneFix = ": 0 35 139,";

TEST(Packed, WhatIsInsideIsRead) {
    const std::string marked =
        "<gpx><wpt lat='1' lon='2'><name>M1</name></wpt><trkpt lat='35' lon='139'>"
        "<time>2026-10-03T12:00:00Z</time></trkpt></gpx>";
    ExpectTold(
        {Gz(Table) + " => CSV" + OneFix, Gz(Gz(Table)) + " => CSV" + OneFix,
         Gz(Gz(Gz(Table))) + " => TooLarge", Gz(Zip({{"a", Gz(Table)}})) + " => TooLarge",
         Gz("x") + " => Unknown", Zip({{"a", "x"}}) + " => Packed",
         Gz(Table.substr(0, 20)) + Gz(Table.substr(20)) + "filled up => CSV" + OneFix,
         Zip({{"a", Table}, {"logo.png", "\x89PNG"}}) + " => CSV" + OneFix,
         Zip({{"a", "lat,lon\n1,2\n"}, {"b", Table}}) + " => CSV" + OneFix,
         Zip({{"a/", ""}, {"a/1.csv", Table, 0, 0}, {"..\\J.7.csv.gz", Gz(Table)}}) + " => CSV 1" + OneFix +
             " | J.7" + OneFix,
         Zip({{"x.zip", Zip({{"y.csv", Table}, {"z", Table}})}}) + " => CSV y" + OneFix + " | z" + OneFix,
         Zip({{"a", Table}, {"b", marked}}) + " => CSV a" + OneFix + " | b" + OneFix + " mark M1 1 2",
         Zip({{"a", "x"}, {"b", "lat,lon\n1,2\n"}, {"c", "<gpx/>"}}) + " => NoTimes"});
    std::string uneven = Table;  // more than one step of unpacking
    for (int k = 1; k < 100'000; ++k)
        uneven += std::to_string(1791028800 + k) + "," + std::to_string(k * 7919 % 90) + ",9\n";
    for (const std::string& packed : {Gz(uneven), Zip({{"a", uneven}})})
        EXPECT_EQ(ReadTrackFile(packed).Recordings.at(0).Fixes.size(), 100'000U);
}

TEST(Packed, TellsHowFarItIsAndStopsWhenAsked) {
    const std::string inner = Zip({{"d1", Table}, {"d2", Table}});
    const std::string zip = Zip({{"a", Table}, {"b", "x"}, {"c.zip", inner}, {"e", Table}});
    const std::vector all{0.25, 0.5, 0.5, 0.5, 0.75, 1.0};  // c.zip is one step, with two stops inside
    for (const auto& [words, recordings] : {std::pair{1U, 1U}, {3U, 2U}, {6U, 4U}}) {
        std::vector<double> told;
        const TrackFileContent content = ReadTrackFile(zip, {}, [&, most = words](double share) {
            told.push_back(share);
            return told.size() < most;
        });
        EXPECT_EQ(told, std::vector(all.begin(), all.begin() + words));
        EXPECT_EQ(content.Recordings.size(), recordings);
    }
}

TEST(Packed, BrokenFilesAreCountedAndThoseBeyondTheLimitsRefused) {
    for (const ZipEntry& entry : {ZipEntry{"a", "T", 1},
                                  {"a", "T", 0, 12},
                                  {"a", "T", 0, 8, 0, 1},
                                  {"a", "T", 0, 8, 2},
                                  {"a", "Txyz", 0, 8, 2},
                                  {"a", "T", 0, 0, 2}})
        ExpectTold({Zip({entry, {"b", Table}}) + " => CSV" + OneFix + " Broken 1",
                    Zip({entry}) + " => Broken Broken 1"});
    const std::string gz = Gz(Table), zip = Zip({{"a", Table}, {"b", Table}}), zeros(1'000'000, '\0');
    for (std::size_t size = 4; size < gz.size(); ++size)
        EXPECT_TRUE(Told(ReadTrackFile(gz.substr(0, size))).ends_with("Broken 1")) << size;
    for (std::size_t at = 4; at < zip.size(); ++at) {
        ExpectTold({zip.substr(0, at) + " => Broken"});
        std::string damaged = zip;
        damaged[at] = static_cast<char>(damaged[at] ^ 0x55);
        EXPECT_LE(ReadTrackFile(damaged).Recordings.size(), 2U);
    }
    const std::uint64_t most =
        250 * Zip({{"a", "T"}, {"b", Table}}).size() - Table.size();  // beside the table
    std::vector<ZipEntry> many(1000, {"a", Table, 0, 0});
    EXPECT_EQ(ReadTrackFile(Zip(many)).Recordings.size(), 1000U);
    many.push_back(many[0]);
    ExpectTold(
        {Zip({{"a", "T", 0, 8, most}, {"b", Table}}) + " => CSV" + OneFix + " Broken 1",
         gz.substr(0, gz.size() - 4) + " => CSV" + OneFix + " Broken 1",  // its checksum alone is missing
         Zip({{"a", "T", 0, 8, most + 1}, {"b", Table}}) + " => TooLarge", Zip(many) + " => TooLarge",
         Zip({{"a", "T", 0, 8, 0xFFFFFFF0}}) + " => TooLarge", Gz(zeros) + " => TooLarge",
         Zip({{"a", Table}, {"b", zeros}}) + " => TooLarge"});
}

TEST(TrackFile, ClosedFormatsAreToldByNameWhereNothingReadsThem) {
    EXPECT_EQ(ReadTrackFile("{}", "A.Sail2").Refused, Refusal::Sail2);
    EXPECT_EQ(ReadTrackFile(Zip({{"x", "{}"}}), "a.sail2").Refused, Refusal::Sail2);
    EXPECT_EQ(ReadTrackFile(Gz("x"), "dir/a.VTK.gz").Refused, Refusal::Velocitek);
    EXPECT_EQ(ReadTrackFile("", "a.vtk").Refused, Refusal::Empty);
    ExpectTold({Zip({{"a.sail2", "{}"}}) + " => Sail2", "\1VTK\1 => Velocitek", "hello => Unknown"});
}

}  // namespace
}  // namespace keelview
