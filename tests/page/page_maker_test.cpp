// A page holds what its races need, exactly, and nothing of their names is markup.

#include "page/page_maker.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <algorithm>
#include <map>
#include <string>

#include "analysis/race_numbers.h"
#include "base/html.h"
#include "support/race_tree.h"

namespace keelview {
namespace {

std::string FromBase128(std::string_view text) {
    std::string bytes;
    unsigned held = 0;
    unsigned bits = 0;
    const auto take = [&](unsigned seven) {
        held = held << 7U | seven;
        bits += 7;
        if (bits < 8) return;
        bits -= 8;
        bytes += static_cast<char>(held >> bits);
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        unsigned sign = static_cast<unsigned char>(text[i]);
        if (sign > 127) sign = (sign & 31U) << 6U | (static_cast<unsigned char>(text[++i]) & 63U);
        if (sign > 255) take(std::string_view("\0\r<", 3)[sign / 128 - 2]);
        take(sign & 127U);
    }
    return bytes;
}

TEST(Base128, ComesBackAndHasNoSignThatAPageLoses) {
    std::string bytes;
    EXPECT_EQ(Base128(bytes), "");
    for (unsigned i = 0; i < 700; ++i) {
        bytes += static_cast<char>(i < 256 ? i : i * i * 2654435761U >> 24U);
        const std::string text = Base128(bytes);
        EXPECT_EQ(FromBase128(text), bytes);
        EXPECT_EQ(text.find_first_of(std::string_view("\0\r<", 3)), std::string::npos);
        EXPECT_LE(text.size(), bytes.size() * 8 / 7 + 2);
    }
    for (const char end : {'\0', '\r', '<', 'x'})  // the last sign is these seven bits
        EXPECT_EQ(FromBase128(Base128(std::string(6, 'x') + end)), std::string(6, 'x') + end);
}

std::string Unzipped(std::string packed) {
    z_stream stream{};
    std::string bytes(1U << 22U, '\0');
    inflateInit2(&stream, 15 + 16);
    stream.next_in = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_in = static_cast<uInt>(packed.size());
    stream.next_out = reinterpret_cast<Bytef*>(bytes.data());
    stream.avail_out = static_cast<uInt>(bytes.size());
    EXPECT_EQ(inflate(&stream, Z_FINISH), Z_STREAM_END);
    bytes.resize(stream.total_out);
    inflateEnd(&stream);
    return bytes;
}

/// The files of a page by their places in it.
std::map<std::string, std::string> FilesOf(const std::string& html) {
    const std::size_t begin = html.find("<race>") + 6;
    const std::string bytes = Unzipped(FromBase128(html.substr(begin, html.find("</race>") - begin)));
    std::map<std::string, std::string> files;
    std::size_t at = 0;
    const auto number = [&] {
        std::size_t value = 0;
        for (unsigned i = 0; i < 4; ++i)
            value |= std::size_t{static_cast<unsigned char>(bytes[at++])} << (8 * i);
        return value;
    };
    while (at < bytes.size()) {
        const std::size_t name = number();
        const std::size_t size = number();
        files[bytes.substr(at, name)] = bytes.substr(at + name, size);
        at += name + size;
    }
    return files;
}

struct PageMakerTest : testing::Test {
    RaceTree tree;
    PageOrder order;

    void SetUp() override {
        tree.Sail("a.trk", RaceTree::Lat, RaceTree::Lon, 10, 6.3, -200, 620);
        tree.Sail("sub folder.trk", RaceTree::Lat, RaceTree::Lon + 0.1, 350, 5.1, -200, 620);
        tree.Wind("w.csv", {{0, 12, 350}, {300, 14, 10}});
        tree.Write("attachment/notes.pdf", "%PDF \0 \xFF");
        tree.Write("program.html", "<title>{{title}}</title><race>{{race}}</race>");
        tree.Race(
            "R1.txt",
            "BN, a.trk, \xE6\xB1\x9F\r\nBN, sub folder.trk, Two\r\nBN, gone.trk, Three\r\nWF, w.csv\r\n"
            "AT, notes.pdf\r\n" +
                RaceTree::LineAcross(0.3));
        order = {.Tree = tree.Root(), .RaceNames = {"R1.txt"}, .UseEnglish = true};
    }
    Page Made() const { return MakePage(order, tree.Root() / "program.html"); }
};

TEST_F(PageMakerTest, TheRaceOfAPageIsTheRaceOfTheTree) {
    const Page page = Made();
    ASSERT_EQ(page.Trouble, "");
    EXPECT_EQ(page.Html, Made().Html);
    EXPECT_EQ(page.Missing, std::vector<std::string>{"gpsdat/gone.trk"});
    const TempTree unpacked;
    for (const auto& [place, bytes] : FilesOf(page.Html)) unpacked.Write(place, bytes);
    RaceNumbers whole;
    RaceNumbers packed;
    whole.race.RaceFileName = packed.race.RaceFileName = "R1.txt";
    LoadRace(tree.Root(), whole);
    LoadRace(unpacked.Root(), packed);
    ASSERT_EQ(packed.tracks.Boats.Count(), 2);
    for (int boat = 1; boat <= 2; ++boat) {
        EXPECT_EQ(packed.race.Boats[boat].BoatName, whole.race.Boats[boat].BoatName);
        EXPECT_TRUE(
            std::ranges::equal(packed.tracks.Boats[boat].TrackLat, whole.tracks.Boats[boat].TrackLat));
        EXPECT_TRUE(
            std::ranges::equal(packed.tracks.Boats[boat].TrackLon, whole.tracks.Boats[boat].TrackLon));
        EXPECT_TRUE(
            std::ranges::equal(packed.tracks.Boats[boat].TrackTime, whole.tracks.Boats[boat].TrackTime));
    }
    EXPECT_EQ(packed.wind.Count(), 2);
    EXPECT_EQ(packed.passes.MarkPassTime[1], whole.passes.MarkPassTime[1]);
    EXPECT_EQ(unpacked.Read("attachment/notes.pdf"), tree.Read("attachment/notes.pdf"));
}

TEST_F(PageMakerTest, ATitleIsTextWhateverItHolds) {
    const std::string file = tree.Read("raceadmin/R1.txt");
    const std::string nasty = "T1, </title><b>\"&\xE6\xB1\x9F" + std::string(2000, 'x') + "\r\n";
    tree.Write("raceadmin/R1.txt", nasty + file.substr(file.find("ST,")));
    const std::string html = Made().Html;
    EXPECT_TRUE(html.starts_with("<title>&lt;/title&gt;&lt;b&gt;&quot;&amp;\xE6\xB1\x9Fxxx"))
        << html.substr(0, 90);
    EXPECT_LT(html.find("</title>"), 400U);
}

TEST_F(PageMakerTest, SaysWhatCannotBeRead) {
    order.RaceNames = {"R9.txt"};
    EXPECT_EQ(Made().Trouble, "raceadmin/R9.txt");
    order.RaceNames = {"R1.txt"};
    EXPECT_TRUE(MakePage(order, tree.Root() / "none.html").Trouble.ends_with("none.html"));
    tree.Write("program.html", "<title>{{title}}</title>");
    EXPECT_TRUE(Made().Html.empty());
    EXPECT_TRUE(FindPageProgram({tree.Root()}).empty());
    tree.Write("keelview-page.html", "");
    EXPECT_FALSE(FindPageProgram({"/nowhere", tree.Root()}).empty());
}

}  // namespace
}  // namespace keelview
