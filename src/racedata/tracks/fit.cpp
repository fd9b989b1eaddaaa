#include "racedata/tracks/fit.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <utility>

#include "racedata/tracks/bytes.h"

namespace keelview {

namespace {

// ---- what is wanted of which message ----

enum Message : std::uint16_t {
    FileId = 0,
    Record = 20,
    Location = 29,
    CoursePoint = 32,
    Activity = 34,
    GpsMetadata = 160,
    NoMessage = 0xFFFF
};

enum Wanted {
    Time,
    TimeMs,
    Lat,
    Lon,
    Speed,
    FineSpeed,
    Course,
    Accuracy,
    LocalTime,
    Maker,
    Serial,
    Name,
    WantedCount
};

constexpr int AnySize = 0;
constexpr int EveryMessage = -1;

struct WantedField {
    int In;      ///< the message, or EveryMessage
    int Number;  ///< as the message counts it
    Wanted What;
    int Size;  ///< in bytes; a field of another size is something else
};

constexpr WantedField WantedFields[] = {
    {EveryMessage, 253, Time, 4},  // seconds since 1989-12-31
    {FileId, 1, Maker, 2},        {FileId, 3, Serial, 4},
    {FileId, 8, Name, AnySize},                               // of the product
    {Record, 0, Lat, 4},                                      // in 2^31 parts of 180 degrees
    {Record, 1, Lon, 4},          {Record, 6, Speed, 2},      // mm/s
    {Record, 73, FineSpeed, 4},   {Record, 31, Accuracy, 1},  // m
    {GpsMetadata, 0, TimeMs, 2},  {GpsMetadata, 1, Lat, 4},
    {GpsMetadata, 2, Lon, 4},     {GpsMetadata, 4, FineSpeed, 4},
    {GpsMetadata, 5, Course, 2},  // hundredths of a degree
    {Location, 0, Name, AnySize}, {Location, 1, Lat, 4},
    {Location, 2, Lon, 4},        {CoursePoint, 2, Lat, 4},
    {CoursePoint, 3, Lon, 4},     {CoursePoint, 6, Name, AnySize},
    {Activity, 5, LocalTime, 4},
};

/// How the messages of one local type lie in the file.
struct Layout {
    std::uint16_t Kind = NoMessage;
    std::endian Order = std::endian::little;
    std::size_t Size = 0;  ///< bytes, without the one that leads
    std::size_t NameSize = 0;
    std::array<std::uint16_t, WantedCount> Offset{};  ///< from the end of what is wanted; see Has
    bool Defined = false;

    bool Has(Wanted what) const { return Offset[what] != 0; }
};

/// One message in the file.
struct MessageAt {
    const Layout& Of;
    const char* At;

    /// The number of a field, unless the message has none or says that it is not known.
    template <std::unsigned_integral T>
    std::optional<T> Get(Wanted what, T unknown = std::numeric_limits<T>::max()) const {
        if (!Of.Has(what)) return {};
        const T number = UnsignedAt<T>(At + Of.Offset[what] - 1, Of.Order);
        return number == unknown ? std::nullopt : std::optional<T>(number);
    }

    std::optional<double> Degrees(Wanted what) const {
        const auto parts = Get<std::uint32_t>(what, 0x7FFFFFFF);
        if (!parts) return {};
        return static_cast<std::int32_t>(*parts) * (180.0 / 2147483648.0);
    }

    std::string Text(Wanted what) const {
        if (!Of.Has(what)) return {};
        const std::string_view field(At + Of.Offset[what] - 1, Of.NameSize);
        return std::string(field.substr(0, field.find('\0')));
    }
};

// ---- one part: header, messages and checksum ----

/// The second that a time of the file means; nothing for a time since the device was switched on.
std::optional<UnixMs> UnixTime(std::optional<std::uint32_t> seconds) {
    constexpr std::uint32_t firstDate = 0x10000000;
    constexpr UnixMs epoch = 631'065'600;
    if (!seconds || *seconds < firstDate) return {};
    return (epoch + *seconds) * 1000;
}

std::string MakerName(std::uint16_t maker) {
    constexpr std::pair<int, const char*> makers[] = {
        {1, "Garmin"}, {23, "Suunto"}, {32, "Wahoo"}, {123, "Polar"}, {294, "Coros"}};
    for (const auto& [number, name] : makers)
        if (number == maker) return name;
    return "FIT " + std::to_string(maker);
}

class PartReader {
  public:
    /// Reads the messages of a part; false if they end in the midst of one, or are none from there on.
    bool Read(std::string_view data) {
        std::size_t at = 0;
        while (at < data.size()) {
            const auto lead = static_cast<unsigned char>(data[at++]);
            const bool shortTime = (lead & 0x80U) != 0;
            if (!shortTime && (lead & 0x40U) != 0) {
                if (!Define(lead, data, at)) return false;
                continue;
            }
            const Layout& layout = layouts_[shortTime ? lead >> 5U & 3U : lead & 15U];
            if (!layout.Defined || layout.Size > data.size() - at) return false;
            const MessageAt message{layout, data.data() + at};
            if (shortTime)
                time_ += ((lead & 31U) - time_) & 31U;  // the low five bits, and a carry where they wrap
            else if (const auto time = message.Get<std::uint32_t>(Time))
                time_ = *time;
            Take(message, shortTime);
            at += layout.Size;
        }
        return true;
    }

    /// What the part recorded. A device that tells its places by both kinds of messages tells them twice.
    Recording Recorded() {
        Recording& more = gps_.Fixes.size() > records_.Fixes.size() ? gps_ : records_;
        more.Device = SoundName(device_);
        return std::move(more);
    }
    RaceHints Hints;

  private:
    std::array<Layout, 16> layouts_{};
    std::uint32_t time_ = 0;
    Recording records_, gps_;
    std::string device_;

    bool Define(unsigned lead, std::string_view data, std::size_t& at) {
        if (data.size() - at < 5) return false;
        Layout layout;
        layout.Order = data[at + 1] == 0 ? std::endian::little : std::endian::big;
        layout.Kind = UnsignedAt<std::uint16_t>(&data[at + 2], layout.Order);
        const std::size_t fields = static_cast<unsigned char>(data[at + 4]);
        at += 5;
        if (data.size() - at < 3 * fields) return false;
        for (std::size_t k = 0; k < fields; ++k, at += 3)
            AddField(static_cast<unsigned char>(data[at]), static_cast<unsigned char>(data[at + 1]),
                     layout);
        if ((lead & 0x20U) != 0) {  // fields of an application follow, of which nothing is wanted
            if (at == data.size()) return false;
            const std::size_t others = static_cast<unsigned char>(data[at++]);
            if (data.size() - at < 3 * others) return false;
            for (std::size_t k = 0; k < others; ++k, at += 3)
                layout.Size += static_cast<unsigned char>(data[at + 1]);
        }
        layout.Defined = true;
        layouts_[lead & 15U] = layout;
        return true;
    }

    static void AddField(int number, int size, Layout& layout) {
        for (const WantedField& field : WantedFields) {
            const bool here = field.In == layout.Kind || field.In == EveryMessage;
            if (!here || field.Number != number || (field.Size != AnySize && field.Size != size)) continue;
            layout.Offset[field.What] = static_cast<std::uint16_t>(layout.Size + 1);
            if (field.What == Name) layout.NameSize = static_cast<std::size_t>(size);
        }
        layout.Size += static_cast<std::size_t>(size);
    }

    void Take(const MessageAt& message, bool shortTime) {
        switch (message.Of.Kind) {
            case FileId:
                if (const auto maker = message.Get<std::uint16_t>(Maker)) device_ = MakerName(*maker);
                if (const auto name = message.Text(Name); !name.empty()) device_ = name;
                if (const auto serial = message.Get<std::uint32_t>(Serial, 0))
                    device_ += " " + std::to_string(*serial);
                break;
            case Record:
                return AddFixOf(message, shortTime, records_);
            case GpsMetadata:
                return AddFixOf(message, shortTime, gps_);
            case Location:
            case CoursePoint:
                return AddMark(message);
            case Activity:
                return SetZone(message);
            default:
                break;
        }
    }

    void AddFixOf(const MessageAt& message, bool shortTime, Recording& recording) const {
        const auto lat = message.Degrees(Lat);
        const auto lon = message.Degrees(Lon);
        if (!lat || !lon) return Skip(recording.Left, SkipReason::NoPlace);
        const auto time = UnixTime(shortTime ? time_ : message.Get<std::uint32_t>(Time));
        if (!time) return Skip(recording.Left, SkipReason::NoTime);
        RecordedFix fix{*time + message.Get<std::uint16_t>(TimeMs).value_or(0), *lat, *lon};
        constexpr auto knots = static_cast<float>(KnotsPerMetreSecond / 1000);
        if (const auto speed = message.Get<std::uint32_t>(FineSpeed))
            fix.Speed = static_cast<float>(*speed) * knots;
        else if (const auto coarse = message.Get<std::uint16_t>(Speed))
            fix.Speed = static_cast<float>(*coarse) * knots;
        if (const auto course = message.Get<std::uint16_t>(Course))
            fix.Course = static_cast<float>(*course % 36000) / 100;
        if (const auto accuracy = message.Get<std::uint8_t>(Accuracy)) fix.Accuracy = *accuracy;
        AddFix(recording, fix);
    }

    void AddMark(const MessageAt& message) {
        const auto lat = message.Degrees(Lat);
        const auto lon = message.Degrees(Lon);
        if (lat && lon) keelview::AddMark(Hints, {message.Text(Name), *lat, *lon});
    }

    void SetZone(const MessageAt& message) {
        const auto utc = message.Get<std::uint32_t>(Time);
        const auto local = message.Get<std::uint32_t>(LocalTime);
        if (!utc || !local) return;
        // Zones are whole quarters of an hour; the device may take the two times a moment apart.
        const double hours = std::round((static_cast<double>(*local) - *utc) / 900.0) / 4.0;
        if (std::abs(hours) <= 14.0) Hints.ZoneHours = hours;
    }
};

// ---- the checksum ----

/// What each byte, followed by 0 to 7 zero bytes, makes of the checksum: CRC-16 with the polynomial 8005,
/// its bits turned round.
constexpr auto CrcTables = [] {
    std::array<std::array<std::uint16_t, 256>, 8> tables{};
    for (unsigned byte = 0; byte < 256; ++byte) {
        unsigned crc = byte;
        for (int bit = 0; bit < 8; ++bit) crc = crc >> 1U ^ ((crc & 1U) != 0 ? 0xA001U : 0U);
        tables[0][byte] = static_cast<std::uint16_t>(crc);
    }
    for (std::size_t k = 1; k < tables.size(); ++k)
        for (unsigned byte = 0; byte < 256; ++byte) {
            const unsigned crc = tables[k - 1][byte];
            tables[k][byte] = static_cast<std::uint16_t>(crc >> 8U ^ tables[0][crc & 0xFFU]);
        }
    return tables;
}();

/// The checksum of the bytes, eight at a time.
unsigned Crc16(std::string_view bytes) {
    unsigned crc = 0;
    while (bytes.size() >= 8) {
        const char* const head = bytes.data();
        const auto eight = UnsignedAt<std::uint64_t>(head) ^ crc;
        crc = 0;
        for (unsigned k = 0; k < 8; ++k) crc ^= CrcTables[7 - k][eight >> (8 * k) & 0xFFU];
        bytes.remove_prefix(8);
    }
    for (const char byte : bytes)
        crc = crc >> 8U ^ CrcTables[0][(crc ^ static_cast<unsigned char>(byte)) & 0xFFU];
    return crc;
}

// ---- the parts of a file ----

/// Adds what a part recorded, to the recording before it where it continues that.
void AddPart(Recording&& part, std::vector<Recording>& recordings) {
    const auto continues = [&part](const Recording& before) {
        if (part.Fixes.empty()) return true;
        return before.Device == part.Device &&
               (before.Fixes.empty() || before.Fixes.back().Time < part.Fixes.front().Time);
    };
    if (recordings.empty() || !continues(recordings.back())) return recordings.push_back(std::move(part));
    for (const RecordedFix& fix : part.Fixes) AddFix(recordings.back(), fix);
    for (const Skipped& left : part.Left) Skip(recordings.back().Left, left.Why, left.Count);
}

/// The hints of a part join those before it.
void AddHints(RaceHints&& part, RaceHints& hints) {
    hints.Marks.insert(hints.Marks.end(), part.Marks.begin(), part.Marks.end());
    if (part.ZoneHours) hints.ZoneHours = part.ZoneHours;
}

}  // namespace

bool LooksLikeFit(std::string_view bytes) {
    return bytes.size() >= 12 && (bytes[0] == 12 || bytes[0] == 14) && bytes.substr(8, 4) == ".FIT";
}

TrackFileContent ReadFit(std::string_view bytes) {
    TrackFileContent content;
    bool anyWithoutTime = false;
    while (LooksLikeFit(bytes)) {
        const auto header = std::min<std::size_t>(static_cast<unsigned char>(bytes[0]), bytes.size());
        const std::size_t told = UnsignedAt<std::uint32_t>(bytes.data() + 4);
        const std::size_t rest = bytes.size() - header;
        // A device that lost its power has not told the size.
        const bool whole = told > 0 && rest >= 2 && told <= rest - 2;
        PartReader reader;
        bool sound = reader.Read(bytes.substr(header, whole ? told : std::string_view::npos));
        sound = sound && whole && Crc16(bytes.substr(0, header + told + 2)) == 0;
        Recording part = reader.Recorded();
        if (!sound) Skip(part.Left, SkipReason::Broken);
        anyWithoutTime |=
            std::ranges::find(part.Left, SkipReason::NoTime, &Skipped::Why) != part.Left.end();
        AddPart(std::move(part), content.Recordings);
        AddHints(std::move(reader.Hints), content.Hints);
        bytes.remove_prefix(whole ? header + told + 2 : bytes.size());
    }
    const bool noFix =
        std::ranges::all_of(content.Recordings, &std::vector<RecordedFix>::empty, &Recording::Fixes);
    if (noFix && anyWithoutTime) content.Refused = Refusal::NoTimes;
    return content;
}

}  // namespace keelview
