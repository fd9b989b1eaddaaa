#!/usr/bin/env python3
"""How fast track files are read, beside gpsbabel in the same run: beside_gpsbabel.py [BUILD [FIXES]]

One track is written in each format, with what a watch or an instrument usually writes beside the place. Both programs
read the file as whole processes and write nothing; the best of three is told in millions of fixes a second of processor
time, with the peak of memory as a multiple of the file. gpsbabel comes from the package of that name."""

import math
import os
import shutil
import struct
import subprocess
import sys
import tempfile
import time
from pathlib import Path

START = 1_791_000_000  # 2026-10-03, Unix seconds
ROUNDS = 3


def fixes(count):
    """Unix seconds, degrees north and east of a boat that sails in circles; knots and course with them."""
    for i in range(count):
        turn = i / 300
        yield START + i, 35.25 + 0.01 * math.sin(turn), 139.5 + 0.01 * math.cos(turn), 6.5, math.degrees(turn) % 360


def clock(at, form="%Y-%m-%dT%H:%M:%SZ"):
    return time.strftime(form, time.gmtime(at))


def packed_minutes(degrees, digits, decimals):
    """Degrees and minutes as one number, as NMEA and IGC write them."""
    whole = int(degrees)
    return f"{whole:0{digits}d}{(degrees - whole) * 60:0{3 + decimals}.{decimals}f}"


def gpx(track):
    yield '<gpx version="1.1" xmlns="http://www.topografix.com/GPX/1/1"><trk><trkseg>\n'
    for at, lat, lon, _, _ in track:
        yield (f'<trkpt lat="{lat:.7f}" lon="{lon:.7f}"><ele>0</ele><time>{clock(at)}</time><extensions>'
               "<TrackPointExtension><hr>110</hr></TrackPointExtension></extensions></trkpt>\n")  # fmt: skip
    yield "</trkseg></trk></gpx>"


def tcx(track):
    yield "<TrainingCenterDatabase><Activities><Activity><Lap><Track>"
    for at, lat, lon, _, _ in track:
        yield (f"<Trackpoint><Time>{clock(at)}</Time><Position><LatitudeDegrees>{lat:.7f}</LatitudeDegrees>"
               f"<LongitudeDegrees>{lon:.7f}</LongitudeDegrees></Position></Trackpoint>\n")  # fmt: skip
    yield "</Track></Lap></Activity></Activities></TrainingCenterDatabase>"


def kml(track):
    yield '<kml xmlns:gx="http://www.google.com/kml/ext/2.2"><Document><Placemark><gx:Track>\n'
    whole = list(track)
    yield from (f"<when>{clock(at)}</when>\n" for at, _, _, _, _ in whole)
    yield from (f"<gx:coord>{lon:.7f} {lat:.7f} 0</gx:coord>\n" for _, lat, lon, _, _ in whole)
    yield "</gx:Track></Placemark></Document></kml>"


def nmea(track):
    for at, lat, lon, knots, course in track:
        text = (f"GPRMC,{clock(at, '%H%M%S')}.00,A,{packed_minutes(lat, 2, 5)},N,{packed_minutes(lon, 3, 5)},E,"
                f"{knots:.1f},{course:.1f},{clock(at, '%d%m%y')},,,A")  # fmt: skip
        sum_of = 0
        for c in text.encode():
            sum_of ^= c
        yield f"${text}*{sum_of:02X}\r\n"


def igc(track):
    yield f"AXXX001\r\nHFDTE{clock(START, '%d%m%y')}\r\n"
    for at, lat, lon, _, _ in track:
        north, east = packed_minutes(lat, 2, 3).replace(".", ""), packed_minutes(lon, 3, 3).replace(".", "")
        yield f"B{clock(at, '%H%M%S')}{north}N{east}EA0000000000\r\n"


def csv(track):
    yield "date,time,lat,lon,speed,course\n"
    for at, lat, lon, knots, course in track:
        yield f"{clock(at, '%Y/%m/%d')},{clock(at, '%H:%M:%S')},{lat:.7f},{lon:.7f},{knots:.1f},{course:.1f}\n"


def fit_sum(data):
    nibbles = (0x0000, 0xCC01, 0xD801, 0x1400, 0xF001, 0x3C00, 0x2800, 0xE401,
               0xA001, 0x6C00, 0x7800, 0xB401, 0x5000, 0x9C01, 0x8801, 0x4400)  # fmt: skip
    crc = 0
    for byte in data:
        for nibble in (byte, byte >> 4):
            crc = (crc >> 4) ^ nibbles[crc & 15] ^ nibbles[nibble & 15]
    return struct.pack("<H", crc)


def fit(track):
    """Record messages of time, latitude, longitude, speed and pulse."""
    fields = ((253, 4, 0x86), (0, 4, 0x85), (1, 4, 0x85), (6, 2, 0x84), (3, 1, 0x02))
    body = struct.pack("<BBBHB", 0x40, 0, 0, 20, len(fields)) + b"".join(struct.pack("BBB", *f) for f in fields)
    semicircles = 2**31 / 180
    body += b"".join(struct.pack("<BIiiHB", 0, at - 631065600, round(lat * semicircles), round(lon * semicircles),
                                 3344, 110) for at, lat, lon, _, _ in track)  # fmt: skip
    head = struct.pack("<BBHI4s", 14, 0x10, 100, len(body), b".FIT")
    head += fit_sum(head)
    yield head + body + fit_sum(head + body)


FORMATS = {"gpx": (gpx, "gpx"), "tcx": (tcx, "gtrnctr"), "kml": (kml, "kml"), "nmea": (nmea, "nmea"),
           "igc": (igc, "igc"), "csv": (csv, "unicsv"), "fit": (fit, "garmin_fit")}  # fmt: skip


def cost(command):
    """Seconds of processor time and bytes of memory at the peak, of the best of some runs."""
    best = (math.inf, 0)
    for _ in range(ROUNDS):
        started = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        _, status, used = os.wait4(started.pid, 0)
        if status != 0:
            return None
        best = min(best, (used.ru_utime + used.ru_stime, used.ru_maxrss * 1024))
    return best


def told(found, count, size):
    return "not read" if found is None else f"{count / found[0] / 1e6:6.2f} ({found[1] / size:.1f})"


def main():
    build = Path(sys.argv[1] if len(sys.argv) > 1 else "build/release")
    count = int(sys.argv[2]) if len(sys.argv) > 2 else 200_000
    babel = shutil.which("gpsbabel")
    print(f"million fixes a second (memory at the peak / file), {count} fixes\n{'':8}{'keelview':>16}{'gpsbabel':>16}")
    with tempfile.TemporaryDirectory() as folder:
        for name, (write, their_name) in FORMATS.items():
            file = Path(folder) / f"track.{name}"
            with file.open("wb") as out:
                out.writelines(p if isinstance(p, bytes) else p.encode() for p in write(fixes(count)))
            size = file.stat().st_size
            ours = cost([build / "tools/list_recordings", "--count", file])
            theirs = cost([babel, "-t", "-i", their_name, "-f", file]) if babel else None
            print(f"{name:8}{told(ours, count, size):>16}{told(theirs, count, size):>16}", flush=True)


if __name__ == "__main__":
    main()
