#include <gtest/gtest.h>
#include <zlib.h>

#include <string>
#include <utility>
#include <vector>

#include "racedata/tracks/formats.h"
#include "racedata/tracks/packed.h"
#include "support/bytes.h"

namespace keelview {
namespace {

/// A reader of files that begin with "T", each a recording of one fix; "TM" has a mark, too, and "T-" no
/// time.
TrackFileContent ReadLetters(std::string_view bytes, std::string_view name) {
    TrackFileContent content;
    if (bytes.substr(0, 1) != "T") {
        content.Refused = name.ends_with(".sail2") ? Refusal::Sail2 : Refusal::Unknown;
        return content;
    }
    content.Format = bytes;
    if (bytes.substr(0, 2) == "T-") content.Refused = Refusal::NoTimes;
    if (bytes.substr(0, 2) == "TM") content.Hints.Marks.push_back({std::string(bytes), 0, 0});
    if (content.Refused == Refusal::None) content.Recordings.push_back({"", std::string(name), {{}}, {}});
    return content;
}

TrackFileContent Read(const std::string& bytes, std::string_view name = "") {
    return ReadPacked(bytes, name, ReadLetters);
}

/// Device, which the reader above gives as the name of the file, and boat of all recordings.
std::string Names(const TrackFileContent& content) {
    std::string text;
    for (const Recording& each : content.Recordings) text += each.Device + ":" + each.Boat + " ";
    return text;
}

int Broken(const TrackFileContent& content) {
    return content.Left.empty() ? 0 : content.Left[0].Count;
}

/// What zlib makes of a text: with 31 a gz, with -15 what stands in a zip.
std::string Deflate(const std::string& text, int window) {
    z_stream stream{};
    deflateInit2(&stream, 6, Z_DEFLATED, window, 8, Z_DEFAULT_STRATEGY);
    std::string packed(deflateBound(&stream, text.size()), '\0');
    std::string source = text;
    stream.next_in = reinterpret_cast<Bytef*>(source.data());
    stream.avail_in = static_cast<uInt>(source.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    deflate(&stream, Z_FINISH);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
}

std::string Gz(const std::string& text) {
    return Deflate(text, 31);
}

struct Entry {
    std::string Name, Text;
    int Flags = 0;
    int Method = 8;
    std::uint64_t Claimed = 0;  ///< size that the zip tells instead of the true one
    std::uint64_t Mask = 0;     ///< over its checksum
};

std::string Zip(const std::vector<Entry>& entries) {
    std::string files, directory;
    for (const Entry& entry : entries) {
        const std::string packed = entry.Method == 8 ? Deflate(entry.Text, -15) : entry.Text;
        const auto* const text = reinterpret_cast<const Bytef*>(entry.Text.data());
        const auto crc = crc32(0, text, static_cast<uInt>(entry.Text.size())) ^ entry.Mask;
        const std::string about = Le(20, 2) + Le(entry.Flags, 2) + Le(entry.Method, 2) + Le(0, 4) +
                                  Le(crc, 4) + Le(packed.size(), 4) +
                                  Le(entry.Claimed ? entry.Claimed : entry.Text.size(), 4) +
                                  Le(entry.Name.size(), 2) + Le(0, 2);
        directory += "PK\1\2" + Le(20, 2) + about + Le(0, 10) + Le(files.size(), 4) + entry.Name;
        files += "PK\3\4" + about + entry.Name + packed;
    }
    const std::string count = Le(entries.size(), 2);
    return files + directory + "PK\5\6" + Le(0, 4) + count + count + Le(directory.size(), 4) +
           Le(files.size(), 4) + Le(0, 2);
}

TEST(Packed, WhatIsInsideIsRead) {
    EXPECT_EQ(Names(Read(Gz("T"), "dir/a.gpx.gz")), "dir/a.gpx: ");
    EXPECT_EQ(Read(Gz("T1") + Gz("T2") + "filled up").Format, "T1T2") << "members stand for one file";
    EXPECT_EQ(Names(Read(Zip({{"doc.kml", "T"}, {"logo.png", "\x89PNG"}}), "a.kmz")), "doc.kml: ");
    EXPECT_EQ(Names(Read(Zip({{"a/", ""}, {"a/1.gpx", "T", 0, 0}, {"../../J7.gpx.gz", Gz("T")}}))),
              "a/1.gpx:1 ../../J7.gpx:J7 ");
    EXPECT_EQ(Names(Read(Zip({{"x.zip", Zip({{"y.gpx", "T"}, {"z.gpx", "T"}})}}))), "y.gpx:y z.gpx:z ");
    std::string uneven = "T";
    for (unsigned k = 0; k < 300'000; ++k) uneven += std::to_string(k * 7919 % 10007);
    EXPECT_EQ(Read(Gz(uneven)).Format, uneven) << "more than one step of unpacking";
    EXPECT_EQ(Read(Zip({{"a", uneven}})).Format, uneven);
}

TEST(Packed, TheFirstHintsCountAndWhyNothingCouldBeRead) {
    const auto content = Read(Zip({{"a", "T"}, {"b", "TM b"}, {"c", "TM c"}}));
    EXPECT_EQ(content.Hints.Marks.at(0).Name, "TM b");
    EXPECT_EQ(content.Format, "T");
    using Case = std::pair<std::string, Refusal>;
    for (const auto& [bytes, why] :
         {Case{Zip({{"a", "x"}}), Refusal::Packed}, Case{Gz("x"), Refusal::Unknown},
          Case{Zip({{"a", "x"}, {"b", "T-"}}), Refusal::NoTimes},
          Case{Zip({{"a", "T-"}, {"b", "T"}}), Refusal::None},
          Case{Zip({{"a.sail2", "{"}}), Refusal::Sail2}, Case{Zip({{"a", "T", 1}}), Refusal::Broken},
          Case{Gz(Gz(Gz("T"))), Refusal::TooLarge}, Case{Gz(Zip({{"a", Gz("T")}})), Refusal::TooLarge}})
        EXPECT_EQ(Read(bytes).Refused, why);
}

TEST(Packed, EncryptedAndBrokenFilesAreCountedAndTheOthersRead) {
    for (const Entry& entry :
         {Entry{"a", "T", 1}, Entry{"a", "T", 0, 12}, Entry{"a", "T", 0, 8, 0, 1}, Entry{"a", "T", 0, 8, 2},
          Entry{"a", "Txyz", 0, 8, 2}, Entry{"a", "T", 0, 0, 2}}) {
        const auto content = Read(Zip({entry, {"b", "T"}}));
        EXPECT_EQ(Names(content), "b: ");
        EXPECT_EQ(Broken(content), 1);
    }
    const std::string gz = Gz("T123456789"), zip = Zip({{"a", "T1"}, {"b", "T2"}});
    for (std::size_t size = 4; size < gz.size(); ++size)
        EXPECT_EQ(Broken(Read(gz.substr(0, size))), 1) << size;
    EXPECT_EQ(Read(gz.substr(0, gz.size() - 4)).Format, "T123456789") << "its checksum alone is missing";
    for (std::size_t size = 4; size < zip.size(); ++size)
        EXPECT_EQ(Read(zip.substr(0, size)).Refused, Refusal::Broken) << size;
    for (std::size_t at = 4; at < zip.size(); ++at) {  // whatever is damaged, the rest is read or refused
        std::string damaged = zip;
        damaged[at] = static_cast<char>(damaged[at] ^ 0x55);
        EXPECT_LE(Read(damaged).Recordings.size(), 2U);
    }
}

TEST(Packed, WhatWouldUnpackBeyondTheLimitsIsRefused) {
    const std::string zeros(1'000'000, '\0');
    EXPECT_EQ(Read(Gz(zeros)).Refused, Refusal::TooLarge);
    EXPECT_EQ(Read(Zip({{"a", "T"}, {"b", zeros}})).Refused, Refusal::TooLarge);
    EXPECT_EQ(Read(Zip({{"a", "T", 0, 8, 0xFFFFFFF0}})).Refused, Refusal::TooLarge);
    // Two that are sound alone, and together are not.
    EXPECT_EQ(Read(Zip({{"a", "T", 0, 8, 30'000}, {"b", "T", 0, 8, 30'000}})).Refused, Refusal::TooLarge);
    std::vector<Entry> many(1000, {"a", "T", 0, 0});
    EXPECT_EQ(Read(Zip(many)).Recordings.size(), 1000U);
    many.push_back(many[0]);
    EXPECT_EQ(Read(Zip(many)).Refused, Refusal::TooLarge);
}

TEST(TrackFile, ClosedFormatsAreToldByNameWhereNothingReadsThem) {
    const std::string json = R"({"version": 1})";
    EXPECT_EQ(ReadTrackFile(json, "A.Sail2").Refused, Refusal::Sail2);
    EXPECT_EQ(ReadTrackFile(Zip({{"x", json}}), "a.sail2").Refused, Refusal::Sail2);
    EXPECT_EQ(ReadTrackFile(Gz("x"), "a.VTK.gz").Refused, Refusal::Velocitek);
    EXPECT_EQ(ReadTrackFile("\1VTK\1").Refused, Refusal::Velocitek);
    EXPECT_EQ(ReadTrackFile("hello", "a.gpx").Refused, Refusal::Unknown);
    EXPECT_EQ(ReadTrackFile("", "a.vtk").Refused, Refusal::Empty);
}

}  // namespace
}  // namespace keelview
