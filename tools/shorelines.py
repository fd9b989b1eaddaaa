"""Shorelines of GSHHG as shore files of the program. What a shore file holds is told in src/racedata/shore_file.h.

It takes Debian's python3-netcdf4 and one of the packages gmt-gshhg-high and gmt-gshhg-full. Within this module places
are pairs (east of Greenwich, north of the south pole) in minutes of arc.
"""

import struct
from collections import defaultdict
from pathlib import Path

try:
    import netCDF4
    import numpy as np
except ImportError:
    raise SystemExit("install python3-netcdf4") from None

TILE = np.array([60, 40])  # minutes
COLUMNS, BANDS = 360, 270
METRES_A_MINUTE = 1852
BIN_UNITS = 65535  # of a source's point along the side of its bin
INLAND = 2  # the level of a lake's shore; that of islands in lakes is 3, that of their ponds 4
GROUNDING_LINE = 6  # of Antarctica, below its ice


class Source:
    """The segments of a resolution: each lies in one bin, a square of the source's grid."""

    def __init__(self, resolution):
        path = Path(f"/usr/share/gmt-gshhg/binned_GSHHS_{resolution[0]}.nc")
        if not path.is_file():
            raise SystemExit(f"{path} is not there: install gmt-gshhg-{resolution}")
        data = netCDF4.Dataset(path)
        data.set_auto_mask(False)
        self.side = int(data["Bin_size_in_minutes"][0])
        self.wide, self.high = 21600 // self.side, 10800 // self.side
        packed = data["Embedded_npts_levels_exit_entry_for_a_segment"][:].astype(np.int64)
        self.length, self.level = packed >> 9, packed >> 6 & 7
        self.first = data["Id_of_first_point_in_a_segment"][:]
        self.bin = np.repeat(np.arange(self.wide * self.high), data["N_segments_in_a_bin"][:])
        self.x = data["Relative_longitude_from_SW_corner_of_bin"][:].astype(np.uint16)
        self.y = data["Relative_latitude_from_SW_corner_of_bin"][:].astype(np.uint16)

    def lines(self, west=0, south=0, east=21600, north=10800):
        """All lines in the bins that overlap a box, joined over the edges of bins: (inland, places)."""
        columns, rows = self.bin % self.wide, self.high - 1 - self.bin // self.wide
        inside = (columns * self.side < east) & ((columns + 1) * self.side > west)
        inside &= (rows * self.side < north) & ((rows + 1) * self.side > south) & (self.level < GROUNDING_LINE)
        segments = []
        for i in np.nonzero(inside)[0]:
            part = slice(self.first[i], self.first[i] + self.length[i])
            corner = np.array([columns[i], rows[i]]) * BIN_UNITS
            segments.append((self.level[i] >= INLAND, corner + np.stack([self.x[part], self.y[part]], axis=1)))
        return [(inland, places * (self.side / BIN_UNITS)) for inland, places in joined(segments)]


def joined(segments):
    """Segments (kind, points) that go on where another one ends become one line."""
    begins, ends, lines, used = defaultdict(list), set(), [], set()
    for i, (kind, points) in enumerate(segments):
        if is_ring(points):
            lines.append((kind, points))
            used.add(i)
        else:
            begins[kind, *points[0]].append(i)
            ends.add((kind, *points[-1]))
    rest = [i for i in range(len(segments)) if i not in used]
    rest.sort(key=lambda i: (segments[i][0], *segments[i][1][0]) in ends)  # what nothing leads to goes first
    for i in rest:
        parts = []
        while i is not None and i not in used:
            used.add(i)
            kind, points = segments[i]
            parts.append(points[1:] if parts else points)
            i = next((j for j in begins[kind, *points[-1]] if j not in used), None)
        if parts:
            lines.append((kind, np.concatenate(parts)))
    return lines


def is_ring(points):
    return len(points) > 2 and (points[0] == points[-1]).all()


def simplified(lines, tolerance):
    """Lines without the points that lie nearer than tolerance(north) metres to what is left (Douglas-Peucker).

    An island keeps its shape, however small it is: its points may move by a fifth of its size alone.
    """
    batch, size = [], 0
    for line in lines:
        batch.append(line)
        size += len(line[1])
        if size > 500_000:
            yield from simplified_batch(batch, tolerance)
            batch, size = [], 0
    yield from simplified_batch(batch, tolerance)


def simplified_batch(lines, tolerance):
    if not lines:
        return
    points = np.concatenate([places for _, places in lines])
    bounds = np.cumsum([0] + [len(places) for _, places in lines])
    shrink = np.cos(np.radians(points[:, 1] / 60 - 90))
    keep = np.zeros(len(points), dtype=bool)
    keep[bounds[:-1]] = keep[bounds[1:] - 1] = True
    chords = []
    for first, end, (_, places) in zip(bounds, bounds[1:], lines):
        limit = tolerance(places[0, 1]) / METRES_A_MINUTE
        middle = []
        if is_ring(places):  # its ends are one: it hangs between them and the point that is farthest off
            away = np.hypot((places[:, 0] - places[0, 0]) * shrink[first], places[:, 1] - places[0, 1])
            middle = [first + away.argmax()]
            keep[middle] = True
            limit = min(limit, away.max() / 5)
        stops = [first, *middle, end - 1]
        chords += [(a, b, limit) for a, b in zip(stops, stops[1:])]
    split_chords(points, shrink, np.array(chords), keep)
    for first, end, (kind, _) in zip(bounds, bounds[1:], lines):
        yield kind, points[first:end][keep[first:end]]


def split_chords(points, shrink, chords, keep):
    """Keeps the point farthest from each chord (first, last, limit) that passes its limit, all chords at once."""
    while len(chords := chords[chords[:, 1] - chords[:, 0] > 1]):
        first, last, limit = chords[:, 0].astype(int), chords[:, 1].astype(int), chords[:, 2]
        count = last - first - 1
        begin = np.cumsum(count) - count
        chord = np.repeat(np.arange(len(chords)), count)
        inner = np.arange(len(chord)) + (first + 1 - begin)[chord]
        scale = np.stack([shrink[first], np.ones(len(first))], axis=1)
        along = (points[last] - points[first]) * scale
        off = (points[inner] - points[first][chord]) * scale[chord]
        square = np.maximum((along**2).sum(axis=1), 1e-30)
        share = np.clip((off * along[chord]).sum(axis=1) / square[chord], 0, 1)
        away = ((off - share[:, None] * along[chord]) ** 2).sum(axis=1)
        farthest = np.maximum.reduceat(away, begin)
        at = inner[np.unique(np.where(away == farthest[chord], chord, -1), return_index=True)[1][-len(chords) :]]
        passes = farthest > limit**2
        keep[at[passes]] = True
        first, last, limit, at = first[passes], last[passes], limit[passes], at[passes]
        chords = np.concatenate([np.stack(part, axis=1) for part in ((first, at, limit), (at, last, limit))])


def tile_number(column, band):
    """Of the tile so many tiles east of Greenwich and north of the south pole: a shore file counts from 180 W."""
    return int(min(band, BANDS - 1) * COLUMNS + (column + 180) % COLUMNS)


def tiles_of(lines, units):
    """Lines cut at the edges of tiles: tile number -> [(inland, points)], in units of a minute from the tile's corner."""
    tiles = defaultdict(list)
    for inland, places in lines:
        points = np.round(places * units).astype(np.int64)
        points = points[np.r_[True, (np.diff(points, axis=0) != 0).any(axis=1)]]
        if len(points) < 2:
            continue
        points = with_crossings(points, TILE * units)
        tile = (points[1:] + points[:-1]) // (2 * TILE * units)  # of each step, by its middle
        cuts = [0, *(np.nonzero((np.diff(tile, axis=0) != 0).any(axis=1))[0] + 1), len(tile)]
        pieces = [(tuple(tile[a]), points[a : b + 1]) for a, b in zip(cuts, cuts[1:])]
        if len(pieces) > 1 and is_ring(points) and pieces[0][0] == pieces[-1][0]:  # it began in the midst of a tile
            last = pieces.pop()[1]
            pieces[0] = (pieces[0][0], np.concatenate([last, pieces[0][1][1:]]))
        for (column, band), piece in pieces:
            tiles[tile_number(column, band)].append((inland, piece - np.array([column, band]) * TILE * units))
    return tiles


def tile_of(source, column, band, units):
    """The one tile that lies there, as tiles_of gives it; nothing where it has no shore."""
    west, south = np.array([column, band]) * TILE
    tiles = tiles_of(source.lines(west, south, west + TILE[0], south + TILE[1]), units)
    number = tile_number(column, band)
    return {number: tiles[number]} if number in tiles else {}


def with_crossings(points, side):
    """Points with those added where a step crosses the edge of a tile; those are on the edge to the unit."""
    added = []
    for axis in (0, 1):
        begin, end = points[:-1, axis], points[1:, axis]
        for i in np.nonzero(begin // side[axis] != end // side[axis])[0]:
            low, high = sorted((begin[i], end[i]))
            for edge in range((low // side[axis] + 1) * side[axis], high, side[axis]):
                share = (edge - begin[i]) / (end[i] - begin[i])
                at = np.round(points[i] + share * (points[i + 1] - points[i])).astype(np.int64)
                at[axis] = edge
                added.append((i + 1, share, tuple(at)))
    if not added:
        return points
    added.sort()
    return np.insert(points, [i for i, _, _ in added], [at for _, _, at in added], axis=0)


class Bits:
    """Numbers one behind the other, as the reader's BitReader takes them."""

    def __init__(self):
        self.parts = []

    def flag(self, value):
        self.parts.append("1" if value else "0")

    def number(self, value, order):
        """0 and up. As many zeros as the number's upper part, plus 1, has bits above its lowest; that part; the rest."""
        upper = (value >> order) + 1
        self.parts.append("0" * (upper.bit_length() - 1) + f"{upper:b}")
        if order:
            self.parts.append(f"{value & (1 << order) - 1:0{order}b}")

    def signed(self, value, order):
        self.number(value * 2 if value >= 0 else -value * 2 - 1, order)

    def bytes(self):
        text = "".join(self.parts)
        text += "0" * (-len(text) % 8)
        return int("1" + text, 2).to_bytes(len(text) // 8 + 1, "big")[1:]


def best_order(values):
    """The order with which the numbers take the least room."""
    folded = np.where(values >= 0, values * 2, -values * 2 - 1)
    room = [(2 * np.floor(np.log2((folded >> k) + 1)) + 1 + k).sum() for k in range(16)]
    return int(np.argmin(room)) if len(values) else 0


def tile_bytes(lines, units):
    """A tile's lines as a shore file has them."""
    rings = [is_ring(points) for _, points in lines]
    lines = [(inland, points[:-1] if ring else points) for (inland, points), ring in zip(lines, rings)]
    moves = np.diff([np.zeros(2, dtype=np.int64), *(points[0] for _, points in lines)], axis=0)
    steps = np.concatenate([np.diff(points, axis=0) for _, points in lines])
    orders = [best_order(moves[:, 0]), best_order(moves[:, 1]), best_order(steps[:, 0]), best_order(steps[:, 1])]
    bits = Bits()
    bits.number(units, 8)
    for order in orders:
        bits.number(order, 3)
    bits.number(len(lines), 4)
    for (inland, points), ring, move in zip(lines, rings, moves.tolist()):
        bits.flag(inland)
        bits.flag(ring)
        bits.number(len(points) - 2, 1)
        for order, value in zip(orders, move):
            bits.signed(value, order)
        for x, y in np.diff(points, axis=0).tolist():
            bits.signed(x, orders[2])
            bits.signed(y, orders[3])
    return bits.bytes()


def write(target, tiles, units):
    """Writes tiles as a shore file; the number of its points and its size in bytes."""
    tiles = sorted(tiles.items())
    packed = [tile_bytes(inside, units) for _, inside in tiles]
    ends = np.cumsum([len(tile) for tile in packed])
    index = b"".join(struct.pack("<II", number, end) for (number, _), end in zip(tiles, ends))
    bytes_ = b"KVSHORE1" + struct.pack("<I", len(tiles)) + index + b"".join(packed)
    target.write_bytes(bytes_)
    return sum(len(points) for _, inside in tiles for _, points in inside), len(bytes_)
