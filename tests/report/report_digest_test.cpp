#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "report/race_report.h"
#include "support/temp_tree.h"

namespace keelview {
namespace {

/// A straight piece of a way: knots north and east, up to a second from the start. One without a number of
/// knots is a gap.
struct Leg {
    int Until;
    double North, East;
};

/// The fixes of a way that begins at second `first` at a place off Enoshima, `north` and `east` minutes of
/// arc from the middle of the races; a minute of either is a mile. The start is 2004/08/05 03:30:00 UTC.
std::string Track(double north, double east, int first, const std::vector<Leg>& legs) {
    std::string text = "M WGS84\r\nU LAT LON DMM\r\n";
    int t = first;
    for (const Leg& leg : legs) {
        for (; t < leg.Until; ++t) {
            if (!std::isfinite(leg.North)) continue;
            const int clock = 12600 + t;
            char line[100];
            std::snprintf(line, sizeof line, "T N35%08.5f E139%08.5f 2004/08/05 %02d:%02d:%02d 1\r\n",
                          17 + north, 29 + east, clock / 3600, clock / 60 % 60, clock % 60);
            text += line;
            north += leg.North / 3600;
            east += leg.East / 3600;
        }
    }
    return text;
}

std::string Race(const std::string& lines) {
    return "T1, Spring Cup\r\nST, 2004/8/5 12:30:00\r\nFT, 2004/8/5 12:40:00\r\nTD, 9\r\n" + lines;
}

/// Up and down round two marks: over the line early and back, clean, with a gap, and one that retires.
std::string RoundTheMarks(const TempTree& tree) {
    const std::vector<Leg> early{{-100, 0, 2}, {-10, 6, -1},   {40, -5, 0}, {300, 6, 0},
                                 {330, 1, -6}, {560, -6, 0.5}, {620, 3, 3}};
    const std::vector<Leg> clean{{10, 4, 0}, {280, 6.5, -0.3}, {300, 2, -8}, {330, -1, -7}, {620, -6.2, 1}};
    const std::vector<Leg> gap{{200, 5, 0.5}, {230, NAN, NAN}, {330, 6, 0}, {350, 0, -7}, {615, -7, 0}};
    tree.Write("gpsdat/a.trk", Track(-0.1, 0, -200, early));
    tree.Write("gpsdat/b.trk", Track(-0.2, 0.02, -150, clean));
    tree.Write("gpsdat/c.trk", Track(-0.2, -0.02, -90, gap));
    tree.Write("gpsdat/d.trk", Track(-0.15, 0.05, -60, {{150, 5, 0}}));
    return Race(
        "MG, -7\nWD, 5\nBN, a.trk, Alcyone\nBN, b.trk, Blue, Heron\nBN, c.trk, Cutlass\n"
        "BN, d.trk, Dawn\nMK, 2117.35, 8369\nMK, 2117.1, 8368.9\n"
        "LN, 2117.00, 8368.8, 2117.00, 8369.2\nLN, 2117.05, 8368.7, 2117.06, 8369.3\n"
        "CRS, L1, MK1, MK2, L2\nLL, 43,150\nBT,2\n");
}

/// The same in a wind that swings through north, with holes and faults in its file, and on a coast.
std::string WindAndCoast(const TempTree& tree) {
    tree.Write("winddat/w.csv",
               "h\n2004/08/05 12:25:00,4,340\n2004/08/05 12:29:00,5.25,350\n2004/08/05 12:31:00,,15\n"
               "2004/08/05 12:33:00,8,1000\n2004/08/05 12:32:00,7,-20\n2004/08/05 12:38:00,6,5\n");
    const std::string head = "L" + std::string(53, ' ');
    tree.Write("coastline/5239.cst", "M 523973\n" + head + "3\n    0    0 5000 5000 9999 9999\nM 523963\n" +
                                         head + "2\n 1000 2000 3000 4000\n");
    return RoundTheMarks(tree) + "WF, w.csv\n";
}

/// South of the equator and west of Greenwich, in the evening before; coordinates in degrees.
std::string SouthWest(const TempTree& tree) {
    for (const int boat : {1, 2}) {
        std::string track = "U DEG\n";
        for (int t = -200; t < 620; ++t) {
            char line[100];
            std::snprintf(line, sizeof line, "T S%.7f W%.7f 05/08/04 %02d:%02d:%02d 1\n",
                          34 - boat * t * 1.5e-5, 70.2 + t * 1e-6, (12600 + t) / 3600,
                          (12600 + t) / 60 % 60, (12600 + t) % 60);
            track += line;
        }
        tree.Write("gpsdat/" + std::to_string(boat) + ".trk", track);
    }
    return Race(
        "TD, -5\nST, 2004/8/4 22:30:00\nFT, 8/4/2004 10:40:00 PM\nWD, 190\nBN, 1.trk, A\nBN, 2.trk, B\n"
        "MK, -2039.8, -4212.05\nLN, -2039.98, -4212.1, -2039.98, -4211.9\nCRS, L1, MK1\n");
}

/// Tracks that are hardly any: none, empty, of one fix, with a clock that falls back, of no known kind.
std::string OddTracks(const TempTree& tree) {
    const std::string once = Track(-0.05, 0, -60, {{200, 6, 0}});
    tree.Write("gpsdat/empty.trk", std::string(600, '#'));
    tree.Write("gpsdat/back.trk", once + Track(0.05, 0.1, 20, {{90, -6, 0}}) + once);
    tree.Write("gpsdat/one.dtr", Track(0, 0, 30, {{31, 0, 0}}) + std::string(600, '#'));
    tree.Write("gpsdat/d.txt", "none");
    return Race(
        "BN, none.trk, None\nBN, empty.trk, Empty\nBN, back.trk, Back\nBN, one.dtr, One\n"
        "BN, d.txt, D\nLN, 2117.00, 8368.8, 2117.00, 8369.2\nMK, 2117.1, 8369.01\nCRS, L1, MK1\n"
        "WF, none.csv\n");
}

/// Lines that are read as far as they go, Shift-JIS, past all limits, entries that are nothing.
std::string OddLines(const TempTree& tree) {
    tree.Write("gpsdat/a.trk", Track(-0.1, 0, -100, {{300, 6, 0}}));
    std::string lines =
        "T2, \x83\x65\x83\x58\x83\x67\nBN, a.trk, \x8a\x43\x95\x97\nMG, -7 west\nTD, 2.5\nTD, 9\nLL, 50\n"
        "LL, 0,170\nBT, 1e9\nMK, 2117.1 N, 8369.0, E\nMK, 1e300, x\nMK, 1\n"
        "LN, 2117, 8368.9, 2117, 8369.1, 5\nCRS, L1, , MK1, MK, L7, MK2,MK-1\nT1\nXX, 1\n";
    for (int i = 0; i < 60; ++i) lines += "LN, 1, 2, 3, 4\nCRS, MK1, L1\n";
    return Race(lines);
}

/// FNV-1a of the text, each number in it rounded to a millionth: the last digit of a double may be another
/// one on another processor.
std::uint64_t DigestOf(const std::string& text) {
    std::uint64_t digest = 0xcbf29ce484222325U;
    const auto add = [&](const std::string& piece) {
        for (const char c : piece) digest = (digest ^ static_cast<unsigned char>(c)) * 0x100000001b3U;
    };
    const char* const end = text.data() + text.size();
    for (const char* at = text.data(); at != end;) {
        double number = 0;
        const auto read = std::from_chars(at, end, number);
        if (read.ec != std::errc{}) {
            add({*at++});
        } else {
            add(std::to_string(std::llround(number * 1e6)));
            at = read.ptr;
        }
    }
    return digest;
}

TEST(RaceReport, TellsTheSameOfARaceAsEver) {
    using LayOut = std::string (*)(const TempTree& tree);  // gives the race control file
    for (const auto& [layOut, digest] :
         {std::pair<LayOut, std::uint64_t>{RoundTheMarks, 0x932900d369864117U},
          {WindAndCoast, 0xe6b64e855d7a2ab2U},
          {SouthWest, 0x5fc85895438aa89cU},
          {OddTracks, 0x2235401864534e86U},
          {OddLines, 0x810f4e0c369d4c24U}}) {
        const TempTree tree;
        tree.Write("raceadmin/R1.txt", layOut(tree));
        RaceNumbers numbers;
        numbers.race.RaceFileName = "R1.txt";
        LoadRace(tree.Root(), numbers);
        EXPECT_EQ(DigestOf(RaceReport(numbers, {-100, 0, 50.5, 120, 180, 99999})), digest);
    }
}

}  // namespace
}  // namespace keelview
