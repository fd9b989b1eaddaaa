#pragma once

#include <cstddef>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "base/position.h"

namespace keelview {

// Shore files hold coasts in tiles of 40 minutes by 1 degree, the squares of the coast cells carried on all
// round the earth; tools/shorelines.py makes them. Numbers of the head are of 32 bits, the low byte first:
//
//     "KVSHORE1", number of tiles, for each tile its number and where it ends, counted from the first
//     tile's begin; then the tiles without a gap, by ascending numbers.
//
// The number of a tile is 360 times its band, from the south pole, and its column, from 180 W. A tile is a
// row of bits, the high one of a byte first. A number of order k, 0 and up, is as Exp-Golomb codes are: its
// upper part plus 1 in binary, with as many zeros before as bits behind its first, then the k low bits.
// With a sign it is folded: 0, -1, 1, -2...
//
//     units to a minute of arc (order 8); four orders, of the first points' lon and lat, of the steps' lon
//     and lat (3 each); number of lines (4); for each line
//         a bit: inland, of a lake or of an island in one; a bit: a ring, whose first point ends it too;
//         number of its points less 2 (1); the first point, from that of the line before, that of the first
//         line from the south-west corner of the tile; the steps from point to point.

/// Packed tiles by their numbers.
using ShoreTiles = std::map<int, std::string>;

/// A stretch of shore: joined points on WGS-84; a ring ends with its first point.
struct ShoreLine {
    std::vector<Position> Points;
    bool Inland = false;  ///< the shore of a lake or of an island in one, not of the sea
};

/// The number of the tile with this south-west corner in minutes of arc; -1 for none.
int ShoreTileAt(double south, double west);

/// The tiles that a box in minutes of arc touches, at most all; their longitudes count on over the date
/// line.
std::vector<int> ShoreTilesOf(double south, double north, double west, double east);

/// Those of the wanted tiles that the shore files of `folder` have; of each, that of the first file by
/// name, the world's last. A file that is broken, or larger than 64 MB, is passed over.
ShoreTiles ReadShoreTiles(const std::filesystem::path& folder, const std::vector<int>& wanted);

/// The lines of a packed tile up to a number of points, within its edges; where it is broken, those before.
std::vector<ShoreLine> ShoreLinesOf(int tile, std::string_view packed, std::size_t mostPoints);

/// The bytes of a shore file of these tiles.
std::string ShoreFileOf(const ShoreTiles& tiles);

/// The file that any other goes before.
inline constexpr std::string_view WorldShoreFile = "world.shore";

}  // namespace keelview
