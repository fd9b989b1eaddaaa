#include "racedata/shore_file.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <iterator>
#include <optional>
#include <utility>

#include "base/files.h"
#include "base/numbers.h"
#include "base/paths.h"
#include "base/strings.h"
#include "racedata/tracks/bytes.h"

namespace keelview {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view Head = "KVSHORE1";
constexpr std::size_t NumberSize = 4;
constexpr std::size_t IndexBegin = Head.size() + NumberSize;
constexpr std::size_t EntrySize = 2 * NumberSize;
constexpr std::uintmax_t FileLimit = 64U << 20U;

constexpr double TileLat = 40.0;  // minutes
constexpr double TileLon = 60.0;
constexpr double SouthPole = -90.0 * 60.0;
constexpr double West180 = -180.0 * 60.0;
constexpr int Bands = 270;
constexpr int Columns = 360;

constexpr int MostUnits = 10000;
constexpr int MostOrder = 15;
constexpr int MostZeros = 20;

/// Where a packed tile lies in its file.
struct Entry {
    int Tile;
    std::size_t Begin;  // from the begin of the first tile
    std::size_t End;
};

/// The index of a shore file; nothing if it is none, or if its tiles overlap or reach beyond its end.
std::optional<std::vector<Entry>> ReadIndex(const fs::path& path) {
    const std::uintmax_t size = FileSize(path).value_or(0);
    const auto head = ReadFilePart(path, 0, IndexBegin);
    if (size > FileLimit || !head || !head->starts_with(Head)) return {};
    const auto count = UnsignedAt<std::uint32_t>(head->data() + Head.size());
    if (count > Bands * Columns) return {};
    const auto bytes = ReadFilePart(path, IndexBegin, count * EntrySize);
    if (!bytes) return {};
    std::vector<Entry> index;
    index.reserve(count);
    int before = -1;
    std::size_t begin = 0;
    for (std::size_t at = 0; at < bytes->size(); at += EntrySize) {
        const auto tile = UnsignedAt<std::uint32_t>(bytes->data() + at);
        const std::size_t end = UnsignedAt<std::uint32_t>(bytes->data() + at + NumberSize);
        if (tile >= Bands * Columns || static_cast<int>(tile) <= before || end < begin) return {};
        before = static_cast<int>(tile);
        index.push_back({before, std::exchange(begin, end), end});
    }
    if (IndexBegin + bytes->size() + begin > size) return {};
    return index;
}

/// Adds the wanted tiles of a file that are not there yet. What lies side by side is read at once.
void AddTiles(const fs::path& path, const std::vector<int>& wanted, ShoreTiles& tiles) {
    const auto index = ReadIndex(path);
    if (!index) return;
    const std::size_t first = IndexBegin + index->size() * EntrySize;
    std::vector<Entry> run;
    const auto read = [&] {
        if (run.empty()) return;
        const auto bytes =
            ReadFilePart(path, first + run.front().Begin, run.back().End - run.front().Begin);
        for (const Entry& entry : run)
            if (bytes)
                tiles[entry.Tile] = bytes->substr(entry.Begin - run.front().Begin, entry.End - entry.Begin);
        run.clear();
    };
    for (const int tile : wanted) {
        const auto found = std::ranges::lower_bound(*index, tile, {}, &Entry::Tile);
        if (found == index->end() || found->Tile != tile || tiles.contains(tile)) continue;
        if (!run.empty() && run.back().End != found->Begin) read();
        run.push_back(*found);
    }
    read();
}

/// Takes numbers from a row of bits. After the end, or a number that is none, all are 0.
class BitReader {
  public:
    explicit BitReader(std::string_view bytes) : bytes_(bytes) {}

    bool IsSound() const { return sound_; }
    bool Flag() { return Take(1) != 0; }

    std::int64_t Number(int order) {
        const int zeros = std::countl_zero(Ahead());
        if (zeros > MostZeros) sound_ = false;
        if (!sound_) return 0;
        Take(zeros);
        const auto upper = static_cast<std::int64_t>(Take(zeros + 1));
        return ((upper - 1) << order) + static_cast<std::int64_t>(Take(order));
    }

    std::int64_t Signed(int order) {
        const std::int64_t folded = Number(order);
        return folded % 2 == 0 ? folded / 2 : -(folded + 1) / 2;
    }

  private:
    /// The next 57 bits at least, the first one highest; zeros after the end.
    std::uint64_t Ahead() const {
        const std::string_view rest = bytes_.substr(std::min(at_ / 8, bytes_.size()), 8);
        std::uint64_t bits = 0;
        for (std::size_t i = 0; i < rest.size(); ++i)
            bits |= std::uint64_t{static_cast<unsigned char>(rest[i])} << (56 - 8 * i);
        return bits << at_ % 8;
    }

    std::uint64_t Take(int count) {
        if (at_ + static_cast<std::size_t>(count) > bytes_.size() * 8) sound_ = false;
        if (!sound_ || count == 0) return 0;
        const std::uint64_t bits = Ahead() >> (64 - count);
        at_ += static_cast<std::size_t>(count);
        return bits;
    }

    std::string_view bytes_;
    std::size_t at_ = 0;  // in bits
    bool sound_ = true;
};

/// Reads the lines of one tile.
class TileReader {
  public:
    TileReader(int tile, std::string_view packed)
        : bits_(packed), band_(tile / Columns), column_(tile % Columns) {}

    std::vector<ShoreLine> Read(std::size_t mostPoints) {
        std::vector<ShoreLine> lines;
        if (!ReadHead()) return lines;
        for (std::int64_t left = bits_.Number(4); left > 0; --left) {
            ShoreLine line;
            if (!ReadLine(mostPoints, line)) break;
            mostPoints -= line.Points.size();
            lines.push_back(std::move(line));
        }
        return lines;
    }

  private:
    bool ReadHead() {
        units_ = bits_.Number(8);
        for (int& order : orders_)
            order = static_cast<int>(std::min<std::int64_t>(bits_.Number(3), MostOrder + 1));
        return bits_.IsSound() && units_ > 0 && units_ <= MostUnits &&
               std::ranges::max(orders_) <= MostOrder;
    }

    bool ReadLine(std::size_t mostPoints, ShoreLine& line) {
        line.Inland = bits_.Flag();
        const bool isRing = bits_.Flag();
        const auto count = static_cast<std::size_t>(bits_.Number(1)) + 2;
        if (count + 1 > mostPoints) return false;
        x_ = firstX_ += bits_.Signed(orders_[0]);
        y_ = firstY_ += bits_.Signed(orders_[1]);
        if (!AddPoint(line)) return false;
        while (line.Points.size() < count) {
            x_ += bits_.Signed(orders_[2]);
            y_ += bits_.Signed(orders_[3]);
            if (!AddPoint(line)) return false;
        }
        if (isRing) line.Points.emplace_back(line.Points.front());
        return true;
    }

    bool AddPoint(ShoreLine& line) const {
        const double north = static_cast<double>(y_) / static_cast<double>(units_);
        const double east = static_cast<double>(x_) / static_cast<double>(units_);
        if (!bits_.IsSound() || north < 0 || north > TileLat || east < 0 || east > TileLon) return false;
        line.Points.push_back({SouthPole + band_ * TileLat + north, West180 + column_ * TileLon + east});
        return true;
    }

    BitReader bits_;
    int band_;
    int column_;
    std::int64_t units_ = 0;
    std::array<int, 4> orders_{};
    std::int64_t firstX_ = 0;
    std::int64_t firstY_ = 0;
    std::int64_t x_ = 0;
    std::int64_t y_ = 0;
};

void AddNumber(std::size_t number, std::string& bytes) {
    for (std::size_t k = 0; k < NumberSize; ++k) bytes += static_cast<char>(number >> (8 * k) & 0xFFU);
}

}  // namespace

int ShoreTileAt(double south, double west) {
    const int band = FloorToInt((south - SouthPole) / TileLat);
    const int column = FloorToInt((west - West180) / TileLon);
    if (band < 0 || band >= Bands) return -1;
    return band * Columns + (column % Columns + Columns) % Columns;
}

std::vector<int> ShoreTilesOf(double south, double north, double west, double east) {
    const int lowest = std::max(FloorToInt((south - SouthPole) / TileLat), 0);
    const int highest = std::min(FloorToInt((north - SouthPole) / TileLat), Bands - 1);
    const int first = FloorToInt((west - West180) / TileLon);
    const int last = FloorToInt((east - West180) / TileLon);
    std::vector<int> tiles;
    for (int band = lowest; band <= highest; ++band)
        for (int step = 0; step < Columns && first + step <= last; ++step)
            tiles.push_back(band * Columns + ((first + step) % Columns + Columns) % Columns);
    std::ranges::sort(tiles);
    return tiles;
}

ShoreTiles ReadShoreTiles(const fs::path& folder, const std::vector<int>& wanted) {
    std::vector<std::string> names = ListFiles(folder, "*.shore");
    const auto world = std::ranges::find_if(
        names, [](const std::string& name) { return EqualNoCase(name, WorldShoreFile); });
    if (world != names.end()) std::rotate(world, world + 1, names.end());
    ShoreTiles tiles;
    for (const std::string& name : names) AddTiles(folder / PathOf(name), wanted, tiles);
    return tiles;
}

std::vector<ShoreLine> ShoreLinesOf(int tile, std::string_view packed, std::size_t mostPoints) {
    return TileReader(tile, packed).Read(mostPoints);
}

std::string ShoreFileOf(const ShoreTiles& tiles) {
    std::string bytes(Head);
    AddNumber(tiles.size(), bytes);
    std::size_t end = 0;
    for (const auto& [number, packed] : tiles) {
        AddNumber(static_cast<std::size_t>(number), bytes);
        AddNumber(end += packed.size(), bytes);
    }
    for (const auto& [number, packed] : tiles) bytes += packed;
    return bytes;
}

}  // namespace keelview
