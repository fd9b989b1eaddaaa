#include "racedata/tracks/vkx.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <numbers>

#include "racedata/tracks/bytes.h"
#include "racedata/tracks/relative_wind.h"

namespace keelview {

namespace {

enum Key : unsigned char {
    Fix = 0x02,
    RaceTimer = 0x04,
    LineEnd = 0x05,
    ApparentWind = 0x0A,
    WaterSpeed = 0x0B,
    PageEnd = 0xFE,
    PageHead = 0xFF
};

/// How many bytes follow the key of a row; 0 for a key that is not known.
constexpr auto RowSizes = [] {
    std::array<std::uint8_t, 256> sizes{};
    struct {
        unsigned char Key;
        std::uint8_t Size;
    } constexpr known[] = {{PageHead, 7},
                           {PageEnd, 2},
                           {Fix, 44},
                           {0x03, 20},
                           {RaceTimer, 13},
                           {LineEnd, 17},
                           {0x06, 18},
                           {0x08, 13},
                           {ApparentWind, 16},
                           {0x0C, 12},
                           {0x0F, 16},
                           {0x10, 12},
                           {WaterSpeed, 16},
                           // what the device writes for its makers
                           {0x01, 32},
                           {0x07, 12},
                           {0x0E, 16},
                           {0x20, 13},
                           {0x21, 52}};
    for (const auto& row : known) sizes[row.Key] = row.Size;
    return sizes;
}();

std::size_t RowSize(char key) {
    return RowSizes[static_cast<unsigned char>(key)];
}

/// Whether a page begins here: its head, and no unknown row among the next few of it.
bool IsPage(std::string_view bytes) {
    constexpr unsigned char newestVersion = 15;
    if (bytes.size() < 8 || static_cast<unsigned char>(bytes[0]) != PageHead) return false;
    const auto version = static_cast<unsigned char>(bytes[1]);
    if (version == 0 || version > newestVersion) return false;
    std::size_t at = 8;
    for (int row = 0; row < 8 && at < bytes.size(); ++row) {
        if (RowSize(bytes[at]) == 0) return false;
        if (static_cast<unsigned char>(bytes[at]) == PageEnd) break;
        at += 1 + RowSize(bytes[at]);
    }
    return true;
}

/// Where the next page of the version begins, from a place on; the end if there is none.
std::size_t NextPage(std::string_view bytes, std::size_t from, char version) {
    const char head[] = {static_cast<char>(PageHead), version};
    for (;; ++from) {
        from = bytes.find(std::string_view(head, 2), from);
        if (from == std::string_view::npos) return bytes.size();
        if (IsPage(bytes.substr(from))) return from;
    }
}

float FloatAt(const char* at) {
    return std::bit_cast<float>(UnsignedAt<std::uint32_t>(at));
}

/// A time; 0 for one that no device can have told, as in rows that have lost their place.
UnixMs TimeAt(const char* at) {
    constexpr std::uint64_t year2100 = 4'102'444'800'000;
    const auto time = UnsignedAt<std::uint64_t>(at);
    return time < year2100 ? static_cast<UnixMs>(time) : 0;
}

constexpr auto DegreesPerRadian = static_cast<float>(180.0 / std::numbers::pi);

float Knots(float metresPerSecond) {
    constexpr auto knots = static_cast<float>(KnotsPerMetreSecond);
    return std::abs(metresPerSecond) <= 1000.0F ? metresPerSecond * knots : NotTold;
}

/// Where the bow points to by the attitude w, x, y, z of the boat against north, east and down.
float HeadingOf(const char* attitude) {
    const float w = FloatAt(attitude), x = FloatAt(attitude + 4), y = FloatAt(attitude + 8),
                z = FloatAt(attitude + 12);
    const float east = 2 * (w * z + x * y), north = w * w + x * x - y * y - z * z;
    return east == 0 && north == 0 ? NotTold : std::atan2(east, north) * DegreesPerRadian;
}

/// What the rows of a file tell, one after another.
class RowReader {
  public:
    TrackFileContent Content;
    Recording Recorded;

    bool AnyWithoutTime() const {
        return std::ranges::find(Recorded.Left, SkipReason::NoTime, &Skipped::Why) != Recorded.Left.end();
    }

    void Take(const char* row) {
        switch (static_cast<unsigned char>(*row)) {
            case Fix:
                return TakeFix(row + 1);
            case ApparentWind:
                windTime_ = TimeAt(row + 1);
                wind_ = {.ApparentAngle = FloatAt(row + 9), .ApparentSpeed = Knots(FloatAt(row + 13))};
                return;
            case WaterSpeed:
                waterTime_ = TimeAt(row + 1);
                waterSpeed_ = Knots(FloatAt(row + 9));
                return;
            case RaceTimer:
                return TakeTimer(row + 1);
            case LineEnd:
                return TakeLineEnd(row + 1);
            default:
                return;
        }
    }

  private:
    UnixMs waterTime_ = 0;
    float waterSpeed_ = NotTold;
    UnixMs windTime_ = 0;
    RelativeWind wind_;

    void TakeFix(const char* row) {
        constexpr UnixMs holds = 2000;  // what another sensor told
        RecordedFix fix;
        fix.Time = TimeAt(row);
        if (fix.Time == 0) return Skip(Recorded.Left, SkipReason::NoTime);
        fix.Lat = static_cast<std::int32_t>(UnsignedAt<std::uint32_t>(row + 8)) / 1e7;
        fix.Lon = static_cast<std::int32_t>(UnsignedAt<std::uint32_t>(row + 12)) / 1e7;
        fix.Speed = Knots(FloatAt(row + 16));
        fix.Course = FloatAt(row + 20) * DegreesPerRadian;
        fix.Heading = HeadingOf(row + 28);
        if (std::abs(fix.Time - waterTime_) <= holds) fix.WaterSpeed = waterSpeed_;
        if (std::abs(fix.Time - windTime_) <= holds) WorkOutWind(fix, wind_);
        AddFix(Recorded, fix);
    }

    void TakeTimer(const char* row) {
        constexpr char raceStart = 3;
        const UnixMs time = TimeAt(row);
        if (row[8] == raceStart && time != 0) Content.Hints.Gun = time;
    }

    void TakeLineEnd(const char* row) {
        const double lat = FloatAt(row + 9), lon = FloatAt(row + 13);
        if (!(std::abs(lat) <= 90.0 && std::abs(lon) <= 180.0)) return;
        if (row[8] == 0) Content.Hints.LinePin = NamedPlace{"", lat, lon};
        if (row[8] == 1) Content.Hints.LineBoat = NamedPlace{"", lat, lon};
    }
};

}  // namespace

bool LooksLikeVkx(std::string_view bytes) {
    return IsPage(bytes);
}

TrackFileContent ReadVkx(std::string_view bytes) {
    RowReader reader;
    reader.Recorded.Device = "Vakaros";
    std::size_t at = 0;
    while (at < bytes.size()) {
        const std::size_t size = RowSize(bytes[at]);
        if (size != 0 && size < bytes.size() - at) {
            reader.Take(&bytes[at]);
            at += 1 + size;
        } else {
            Skip(reader.Recorded.Left, SkipReason::Broken);
            at = NextPage(bytes, at + 1, bytes[1]);
        }
    }
    if (reader.Recorded.Fixes.empty() && reader.AnyWithoutTime()) reader.Content.Refused = Refusal::NoTimes;
    reader.Content.Recordings.push_back(std::move(reader.Recorded));
    return std::move(reader.Content);
}

}  // namespace keelview
