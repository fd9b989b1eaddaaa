// What devices and programs write, and what is read of it as one line.

#pragma once

#include <gtest/gtest.h>
#include <zlib.h>

#include <cmath>
#include <numbers>
#include <string>
#include <utility>
#include <vector>

#include "base/numbers.h"
#include "racedata/tracks/formats.h"
#include "support/bytes.h"

namespace keelview {

/// 2026-10-03 12:00:00 UTC, from which tests count.
inline constexpr UnixMs Noon = 1'791'028'800'000;

// ---- what is read ----

inline std::string ToldPlace(double lat, double lon) {
    return " " + NumberText(RoundDecimals(lat, 7)) + " " + NumberText(RoundDecimals(lon, 7));
}

/// What was skipped: " NoTime 2 Broken 1".
inline std::string ToldLeft(const std::vector<Skipped>& skipped) {
    static constexpr const char* reasons[] = {" NoTime ",   " NoPlace ",  " NotValid ",  " Broken ",
                                              " SameTime ", " TimeBack ", " OtherZone ", " TooMany "};
    std::string text;
    for (const auto& [why, count] : skipped) text += reasons[int(why)] + std::to_string(count);
    return text;
}

inline std::string ToldRefusal(Refusal why) {
    static constexpr const char* refusals[] = {"None",   "Empty",   "Unknown", "Velocitek",
                                               "Sail2",  "NoTimes", "NoFixes", "TooLarge",
                                               "Broken", "Packed",  "Missing", "NoRecording"};
    return refusals[int(why)];
}

/// All of it: "GPX Boat/Device: ms lat lon, ms lat lon s5.5 c270, NoTime 2 | Boat: ...", then the hints,
/// and what was skipped of the whole. Times count from Noon. Of what else a fix may tell stand speed,
/// course, heading, boat's speed through water, wind, where it comes from, accuracy. Of a refused file:
/// "NoTimes".
inline std::string Told(const TrackFileContent& content) {
    if (content.Refused != Refusal::None) return ToldRefusal(content.Refused) + ToldLeft(content.Left);
    std::string text = content.Format;
    for (const auto& [boat, device, fixes, left] : content.Recordings) {
        if (text != content.Format) text += " |";
        if (!(boat + device).empty()) text += " " + boat + (device.empty() ? "" : "/" + device);
        text += ":";
        for (const auto& [time, lat, lon, s, c, h, b, w, f, a] : fixes) {
            text += " " + std::to_string(time - Noon) + ToldPlace(lat, lon);
            for (const auto& [letter, value] :
                 {std::pair(" s", s), {" c", c}, {" h", h}, {" b", b}, {" w", w}, {" f", f}, {" a", a}})
                if (!std::isnan(value)) text += letter + NumberText(RoundDecimals(value, 3));
            text += ",";
        }
        text += ToldLeft(left);
    }
    const auto& [gun, pin, end, marks, zone] = content.Hints;
    if (gun) text += " gun " + std::to_string(*gun - Noon);
    if (pin && end) text += " line" + ToldPlace(pin->Lat, pin->Lon) + ToldPlace(end->Lat, end->Lon);
    for (const auto& [name, lat, lon] : marks) text += " mark " + name + ToldPlace(lat, lon);
    return text + (zone ? " zone " + NumberText(RoundDecimals(*zone, 3)) : "") + ToldLeft(content.Left);
}

/// Reads files, each a row "FILE => TOLD", or FILE alone. The same stands before and behind all of them,
/// and before all that is told. In a file @5 stands for 2026-10-03T12:00:05.
inline void ExpectTold(const std::string& head, const std::string& end, const std::string& told,
                       const std::vector<std::string>& rows) {
    for (const std::string& row : rows) {
        const std::size_t sign = row.find(" => ");
        std::string file = head + row.substr(0, sign) + end;
        for (std::size_t at = 0; at + 1 < file.size(); ++at)
            if (file[at] == '@' && file[at + 1] >= '0' && file[at + 1] <= '9')
                file.replace(at, 1, "2026-10-03T12:00:0");
        EXPECT_EQ(Told(ReadTrackFile(file)), told + (sign > row.size() ? "" : row.substr(sign + 4)))
            << file.substr(0, 400);
    }
}

inline void ExpectTold(const std::vector<std::string>& rows) {
    ExpectTold("", "", "", rows);
}

// ---- what is written ----

inline constexpr double Knot = 1852.0 / 3600;  ///< in metres a second

/// A sentence of NMEA 0183 with its checksum and the end of its line.
inline std::string Sentence(const std::string& body) {
    unsigned sum = 0;
    for (const char c : body) sum ^= static_cast<unsigned char>(c);
    constexpr const char* digits = "0123456789ABCDEF";
    return "$" + body + "*" + digits[sum / 16] + digits[sum % 16] + "\r\n";
}

/// A message of FIT behind its definition, by the numbers and the bytes of its fields. Of their base types
/// readers need nothing.
inline std::string FitMessage(int kind, const std::vector<std::pair<int, std::string>>& fields,
                              bool big = false) {
    std::string text = Le(64, 1) + Le(big ? 256 : 0, 2) + (big ? Be : Le)(kind, 2) + Le(fields.size(), 1);
    for (const auto& [number, bytes] : fields) text += Le(number, 1) + Le(bytes.size(), 2);
    text += '\0';
    for (const auto& [number, bytes] : fields) text += bytes;
    return text;
}

/// A file of FIT, with the checksum worked out bit by bit.
inline std::string FitFile(const std::string& data, int header = 14) {
    std::string text = Le(header, 1) + Le(0x20, 1) + Le(2132, 2) + Le(data.size(), 4) + ".FIT";
    text.append(header - text.size(), '\0').append(data);
    unsigned crc = 0;
    for (const char byte : text)
        for (unsigned bit = 0; bit < 8; ++bit)
            crc = crc >> 1U ^ 0xA001U * ((crc ^ static_cast<unsigned char>(byte) >> bit) & 1U);
    return text + Le(crc, 2);
}
inline constexpr UnixMs FitEpoch = 631'065'600'000;

inline std::string FitAngle(double degrees, bool big = false) {
    return (big ? Be : Le)(std::llround(degrees / 180 * 2147483648.0), 4);
}

inline const std::string VkxHead = "\xFF\x05sealed";

inline std::string VkxRow(int key, UnixMs time, const std::string& rest) {
    return Le(key, 1) + Le(time, 8) + rest;
}

/// A fix of VKX, of a boat that points so many degrees to the right of its course and heels by 20.
inline std::string VkxFix(const RecordedFix& fix, double right = 0) {
    constexpr double radian = std::numbers::pi / 180, heel = 20 * radian / 2;
    const double turn = (fix.Course + right) * radian / 2;
    std::string row = Le(std::llround(fix.Lat * 1e7), 4) + Le(std::llround(fix.Lon * 1e7), 4);
    for (const double part : {fix.Speed * Knot, fix.Course * radian, 3.0, cos(turn) * cos(heel),
                              cos(turn) * sin(heel), sin(turn) * sin(heel), sin(turn) * cos(heel)})
        row += Float(static_cast<float>(part));
    return VkxRow(0x02, fix.Time, row);
}

/// What zlib makes of a text: a gz, or with -15 what stands in a zip.
inline std::string Gz(std::string text, int window = 31) {
    std::string packed(text.size() + 1000, '\0');
    z_stream stream{};
    stream.next_in = reinterpret_cast<Bytef*>(text.data());
    stream.avail_in = static_cast<uInt>(text.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    deflateInit2(&stream, 6, Z_DEFLATED, window, 8, Z_DEFAULT_STRATEGY);
    deflate(&stream, Z_FINISH);
    deflateEnd(&stream);
    return packed.substr(0, stream.total_out);
}

struct ZipEntry {
    std::string Name, Text;
    int Flags = 0, Method = 8;
    std::uint64_t Claimed = 0;  ///< size that the zip tells instead of the true one
    std::uint64_t Mask = 0;     ///< over its checksum
};

inline std::string Zip(const std::vector<ZipEntry>& entries) {
    std::string files, directory;
    for (const auto& [name, text, flags, method, claimed, mask] : entries) {
        const std::string packed = method == 8 ? Gz(text, -15) : text;
        const auto crc = crc32_z(0, reinterpret_cast<const Bytef*>(text.data()), text.size()) ^ mask;
        const std::string about = Le(20, 2) + Le(flags, 2) + Le(method, 2) + Le(0, 4) + Le(crc, 4) +
                                  Le(packed.size(), 4) + Le(claimed ? claimed : text.size(), 4) +
                                  Le(name.size(), 4);
        directory += "PK\1\2" + Le(20, 2) + about + Le(0, 10) + Le(files.size(), 4) + name;
        files += "PK\3\4" + about + name + packed;
    }
    return files + directory + "PK\5\6" + Le(0, 4) + Le(entries.size() * 65537, 4) +
           Le(directory.size(), 4) + Le(files.size(), 6);
}

}  // namespace keelview
