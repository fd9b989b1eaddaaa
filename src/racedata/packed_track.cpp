#include "racedata/packed_track.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <utility>

namespace keelview {

namespace {

constexpr std::string_view Head = "KVPACK1\n";
constexpr std::size_t LongestName = 4096;
constexpr UnixMs FarthestTime = 253'402'300'800'000;  // the year 10000; and so far back
constexpr std::int64_t FarthestStep = std::int64_t{1} << 50;

/// How a recorder counts places.
struct PlaceSteps {
    double Divisor;  ///< steps to a unit
    double Factor;   ///< minutes of arc to a unit

    /// As most readers work the number out: the unit's own number first, then the minutes.
    double Minutes(std::int64_t steps) const { return static_cast<double>(steps) / Divisor * Factor; }
    std::int64_t StepsOf(double minutes) const {
        const double steps = Factor > 0 ? std::round(minutes / Factor * Divisor) : 0.0;
        return std::abs(steps) <= static_cast<double>(FarthestStep) ? static_cast<std::int64_t>(steps) : 0;
    }
};

/// Decimals of a minute and of a degree, and the half circles of satellite receivers.
constexpr std::array<PlaceSteps, 17> Ways{{{1e3, 1},
                                           {1e4, 1},
                                           {1e5, 1},
                                           {1e6, 1},
                                           {1e7, 1},
                                           {1e8, 1},
                                           {1e9, 1},
                                           {1e4, 60},
                                           {1e5, 60},
                                           {1e6, 60},
                                           {1e7, 60},
                                           {1e8, 60},
                                           {1e9, 60},
                                           {1e10, 60},
                                           {2147483648.0 / 180.0, 60},
                                           {2147483648.0, 10800},
                                           {1, 0}}};  // no steps at all

class Packer {
  public:
    void Number(std::uint64_t value) {
        for (; value >= 0x80; value >>= 7U) bytes_ += static_cast<char>(value | 0x80U);
        bytes_ += static_cast<char>(value);
    }
    void Signed(std::uint64_t value) { Number(value << 1U ^ (value >> 63U != 0 ? ~std::uint64_t{0} : 0)); }
    void Text(std::string_view text) {
        Number(text.size());
        bytes_ += text;
    }
    /// Differences of differences, which wrap round.
    template <class Values>
    void Column(std::size_t count, const Values& values) {
        std::uint64_t last = 0;
        std::uint64_t step = 0;
        for (std::size_t i = 0; i < count; ++i) {
            const std::uint64_t value = values(i);
            Signed(value - last - step);
            step = value - last;
            last = value;
        }
    }
    std::string Take() { return std::move(bytes_); }

  private:
    std::string bytes_{Head};
};

class Unpacker {
  public:
    explicit Unpacker(std::string_view bytes) : rest_(bytes) {}

    std::uint64_t Number() {
        std::uint64_t value = 0;
        for (unsigned shift = 0; shift < 64; shift += 7) {
            if (rest_.empty()) break;
            const auto byte = static_cast<unsigned char>(rest_.front());
            rest_.remove_prefix(1);
            value |= static_cast<std::uint64_t>(byte & 0x7FU) << shift;
            if (byte < 0x80) return value;
        }
        sound_ = false;
        return 0;
    }
    std::uint64_t Signed() {
        const std::uint64_t folded = Number();
        return folded >> 1U ^ ((folded & 1U) != 0 ? ~std::uint64_t{0} : 0);
    }
    std::string Text() {
        const std::uint64_t size = Number();
        if (size > LongestName || size > rest_.size()) {
            sound_ = false;
            return {};
        }
        const std::string text(rest_.substr(0, static_cast<std::size_t>(size)));
        rest_.remove_prefix(text.size());
        return text;
    }
    template <class Take>
    void Column(std::size_t count, const Take& take) {
        std::uint64_t last = 0;
        std::uint64_t step = 0;
        for (std::size_t i = 0; i < count && sound_; ++i) {
            step += Signed();
            last += step;
            take(i, last);
        }
    }
    bool Sound() const { return sound_; }
    std::size_t Left() const { return rest_.size(); }

  private:
    std::string_view rest_;
    bool sound_ = true;
};

/// By how many of its last bits a place lies above the steps that it is counted in.
std::uint64_t BitsAbove(double minutes, double counted) {
    return std::bit_cast<std::uint64_t>(minutes) - std::bit_cast<std::uint64_t>(counted);
}

/// The way in which all places of a column are whole steps, but for their last bits; else the last one.
std::size_t WayOf(const std::vector<GpsFix>& fixes, double GpsFix::*place) {
    constexpr std::uint64_t most = 16;
    const auto fits = [&](const PlaceSteps& way) {
        return std::ranges::all_of(fixes, [&](const GpsFix& fix) {
            return BitsAbove(fix.*place, way.Minutes(way.StepsOf(fix.*place))) + most <= 2 * most;
        });
    };
    std::size_t way = 0;
    while (way + 1 < Ways.size() && !fits(Ways[way])) ++way;
    return way;
}

void PackPlaces(const std::vector<GpsFix>& fixes, double GpsFix::*place, Packer& packer) {
    const std::size_t number = WayOf(fixes, place);
    const PlaceSteps& way = Ways[number];
    packer.Number(number);
    packer.Column(fixes.size(),
                  [&](std::size_t i) { return static_cast<std::uint64_t>(way.StepsOf(fixes[i].*place)); });
    packer.Column(fixes.size(), [&](std::size_t i) {
        return BitsAbove(fixes[i].*place, way.Minutes(way.StepsOf(fixes[i].*place)));
    });
}

void UnpackPlaces(Unpacker& unpacker, double GpsFix::*place, std::vector<GpsFix>& fixes) {
    const PlaceSteps& way = Ways[std::min<std::uint64_t>(unpacker.Number(), Ways.size() - 1)];
    unpacker.Column(fixes.size(), [&](std::size_t i, std::uint64_t value) {
        fixes[i].*place = way.Minutes(static_cast<std::int64_t>(value));
    });
    unpacker.Column(fixes.size(), [&](std::size_t i, std::uint64_t bits) {
        fixes[i].*place = std::bit_cast<double>(std::bit_cast<std::uint64_t>(fixes[i].*place) + bits);
    });
}

void PackFloats(const std::vector<GpsFix>& fixes, float GpsFix::*told, Packer& packer) {
    std::uint32_t last = 0;
    for (const GpsFix& fix : fixes) {
        const auto bits = std::bit_cast<std::uint32_t>(fix.*told);
        packer.Signed(static_cast<std::uint64_t>(static_cast<std::int32_t>(bits - last)));
        last = bits;
    }
}

void UnpackFloats(Unpacker& unpacker, float GpsFix::*told, std::vector<GpsFix>& fixes) {
    std::uint32_t last = 0;
    for (GpsFix& fix : fixes) {
        last += static_cast<std::uint32_t>(unpacker.Signed());
        fix.*told = std::bit_cast<float>(last);
    }
}

bool IsSound(const GpsFix& fix) {
    return std::isfinite(fix.Lat) && std::isfinite(fix.Lon) && std::abs(fix.Lat) < 1e6 &&
           std::abs(fix.Lon) < 1e6 && fix.Time > -FarthestTime && fix.Time < FarthestTime;
}

}  // namespace

std::string PackTrack(const TrackReading& reading) {
    const std::vector<GpsFix>& fixes = reading.Fixes;
    Packer packer;
    packer.Text(std::string_view(reading.Format).substr(0, LongestName));
    packer.Text(std::string_view(reading.Device).substr(0, LongestName));
    packer.Number(static_cast<std::uint64_t>(reading.Refused));
    packer.Number(reading.Left.size());
    for (const Skipped& skipped : reading.Left) {
        packer.Number(static_cast<std::uint64_t>(skipped.Why));
        packer.Number(static_cast<std::uint64_t>(skipped.Count));
    }
    const bool velocities = std::ranges::any_of(
        fixes, [](const GpsFix& fix) { return !std::isnan(fix.Speed) || !std::isnan(fix.Course); });
    packer.Number((reading.TellsVelocity ? 2U : 0U) + (velocities ? 1U : 0U));
    packer.Number(fixes.size());
    packer.Column(fixes.size(), [&](std::size_t i) { return static_cast<std::uint64_t>(fixes[i].Time); });
    PackPlaces(fixes, &GpsFix::Lat, packer);
    PackPlaces(fixes, &GpsFix::Lon, packer);
    if (!velocities) return packer.Take();
    PackFloats(fixes, &GpsFix::Speed, packer);
    PackFloats(fixes, &GpsFix::Course, packer);
    return packer.Take();
}

bool IsPackedTrack(std::string_view bytes) {
    return bytes.starts_with(Head);
}

std::optional<TrackReading> UnpackTrack(std::string_view bytes) {
    if (!IsPackedTrack(bytes)) return std::nullopt;
    Unpacker unpacker(bytes.substr(Head.size()));
    TrackReading reading;
    reading.Format = unpacker.Text();
    reading.Device = unpacker.Text();
    const std::uint64_t refused = unpacker.Number();
    if (refused > static_cast<std::uint64_t>(Refusal::NoRecording)) return std::nullopt;
    reading.Refused = static_cast<Refusal>(refused);
    for (std::uint64_t left = unpacker.Number(); left > 0 && unpacker.Sound(); --left) {
        const std::uint64_t why = unpacker.Number();
        const std::uint64_t count = unpacker.Number();
        if (why > static_cast<std::uint64_t>(SkipReason::TooMany) || count > MostFixes) return std::nullopt;
        Skip(reading.Left, static_cast<SkipReason>(why), static_cast<int>(count));
    }
    const std::uint64_t velocities = unpacker.Number();
    const std::uint64_t count = unpacker.Number();
    // Each column has a byte a fix at least.
    if (!unpacker.Sound() || velocities > 3 || count > unpacker.Left() / 5) return std::nullopt;
    reading.TellsVelocity = velocities >= 2;
    reading.Fixes.resize(static_cast<std::size_t>(count));
    unpacker.Column(reading.Fixes.size(), [&](std::size_t i, std::uint64_t value) {
        reading.Fixes[i].Time = static_cast<UnixMs>(value);
    });
    UnpackPlaces(unpacker, &GpsFix::Lat, reading.Fixes);
    UnpackPlaces(unpacker, &GpsFix::Lon, reading.Fixes);
    if (velocities % 2 == 1) {
        UnpackFloats(unpacker, &GpsFix::Speed, reading.Fixes);
        UnpackFloats(unpacker, &GpsFix::Course, reading.Fixes);
    }
    if (!unpacker.Sound() || unpacker.Left() > 0 || !std::ranges::all_of(reading.Fixes, IsSound))
        return std::nullopt;
    if (reading.Fixes.empty() && reading.Refused == Refusal::None) reading.Refused = Refusal::NoFixes;
    return reading;
}

}  // namespace keelview
