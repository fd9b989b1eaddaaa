#!/usr/bin/python3
"""Makes the coast of the world, coastline/world.shore: make_world_coast.py [full|high]

The file holds whole seconds of arc and is to stay below 6 MB, so the full resolution loses points that lie nearer than
80 metres to the line that is left, and where hardly anybody races 240. The high one has 200 metres of itself.
"""

import sys
from pathlib import Path

import shorelines

UNITS = 60  # to a minute of arc


def tolerance(north):
    """Metres, at so many minutes from the south pole."""
    return 80 if 40 * 60 < north < 156 * 60 else 240


resolution = sys.argv[1] if len(sys.argv) > 1 else "full"
lines = shorelines.Source(resolution).lines()
if resolution == "full":
    lines = list(shorelines.simplified(lines, tolerance))
target = Path(__file__).resolve().parents[1] / "coastline" / "world.shore"
points, size = shorelines.write(target, shorelines.tiles_of(lines, UNITS), UNITS)
print(f"{target}: {points} points, {size} bytes")
