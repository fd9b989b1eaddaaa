#!/usr/bin/env python3
"""How long the program takes from the start of its process to its window with the demo race, in a virtual display:
first_frame.py BUILD [RUNS]. The first frame of the film comes one tick, 30 ms, behind the window."""

import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[1]
sys.path.insert(0, str(PROJECT / "tests/e2e"))
from virtual_display import VirtualDisplay, end_process  # noqa: E402


def seconds_to_window(display, tree):
    begin = time.monotonic()
    program = display.start([tree / "keelview"], LC_ALL="C.UTF-8", HOME="/tmp")
    try:
        while not display.window_titled(r"\(Enoshima_R[12]\.txt\)"):
            if program.poll() is not None or time.monotonic() - begin > 60:
                raise SystemExit("the window did not come")
        return time.monotonic() - begin
    finally:
        end_process(program)


def main():
    build = Path(sys.argv[1]).resolve()
    runs = int(sys.argv[2]) if len(sys.argv) > 2 else 10
    with tempfile.TemporaryDirectory() as folder:
        tree = Path(folder) / "tree"
        subprocess.run([PROJECT / "tools/lay_out_tree.sh", build, tree, "en"], check=True)
        with VirtualDisplay() as display:
            times = [seconds_to_window(display, tree) for _ in range(runs + 1)][1:]  # the first run warms the files
    print(f"window after {statistics.median(times):.3f} s (median of {runs}; {min(times):.3f} to {max(times):.3f})")


if __name__ == "__main__":
    main()
