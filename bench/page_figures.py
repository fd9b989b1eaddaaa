#!/usr/bin/env python3
"""What a page takes in headless Chromium, or in Firefox, beside the desktop's programs: page_figures.py [BUILD [PROGRAM [BROWSER]]]

The first picture of the demo page from the script's start; a frame in auto trace of 50 boats with their names; a race of
50 boats with 20,000 fixes each. Times are milliseconds by the clock; the desktop's frame is that of bench/display_bench,
its load that of keelview-report as a whole."""

import math
import shutil
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests" / "page"))
from browser import browser_named  # noqa: E402

FRAMES = 200


def write_race(tree, boats, fixes):
    """A race whose boats weave up and down a course, a fix a second."""
    for folder in ("raceadmin", "gpsdat"):
        (tree / folder).mkdir(parents=True)
    lines = ["T1, Fleet", "ST, 2026/10/03 12:30:00", "FT, 2026/10/03 18:05:00", "WD, 0",
             "LN, 2117.0, 8368.9, 2117.0, 8369.3", "MK, 2118.5, 8369.1", "CRS, L1, M1, L1, M1, L1"]  # fmt: skip
    for boat in range(boats):
        lines.append(f"BN, {boat}.trk, Boat {boat}")
        rows = []
        for t in range(fixes):
            lat = 17.7 + 0.9 * math.sin((t + 7 * boat) / 700)
            lon = 29.1 + 0.2 * math.sin((t + 3 * boat) / 90) + boat / 500
            clock = 12600 + t
            rows.append(f"T N35{lat:08.5f} E139{lon:08.5f} 2026/10/03 "
                        f"{clock // 3600:02}:{clock // 60 % 60:02}:{clock % 60:02} 1\r\n")  # fmt: skip
        (tree / "gpsdat" / f"{boat}.trk").write_text("".join(rows), encoding="ascii")
    (tree / "raceadmin" / "fleet.txt").write_text("\r\n".join(lines) + "\r\n", encoding="ascii")


def opened(page):
    """From the script's start to the first picture, the load's share of that, and megabytes of memory."""
    page.wait(lambda: page.run("return keelview.system.shown"))
    return page.run("return [keelview.system.shown - keelview.began, keelview.system.shown - keelview.loads,"
                    "keelview.memory.program.memory.buffer.byteLength / 1048576]")  # fmt: skip


def frame(page):
    """Milliseconds of a frame in auto trace, from the seek to the pixels on the canvas."""
    page.wait(lambda: page.run("return keelview.controls.named('Check5').works.checked"))
    page.run("for (const name of ['Check9', 'Option7']) keelview.controls.named(name).works.click()")
    return page.run(f"""
        const times = [];
        for (let i = 0; i < {FRAMES}; ++i) {{
            const begun = performance.now();
            keelview.memory.give(keelview.memory.program.FollowLink, 't=' + (600 + i / 2));
            keelview.system.putFrames();
            times.push(performance.now() - begun);
        }}
        return times.reduce((sum, time) => sum + time, 0) / times.length""")


def main():
    build = Path(sys.argv[1] if len(sys.argv) > 1 else ROOT / "build/release")
    program = Path(sys.argv[2] if len(sys.argv) > 2 else ROOT / "build/page/keelview-page.html")
    Page = browser_named(sys.argv[3] if len(sys.argv) > 3 else "chromium")
    with tempfile.TemporaryDirectory() as folder:
        scratch = Path(folder)
        demo, fleet, long = scratch / "demo", scratch / "fleet", scratch / "long"
        shutil.copytree(build / "demo", demo)
        (demo / "coastline").symlink_to(ROOT / "coastline")
        subprocess.run([build / "tools/make_demo", fleet, "50"], check=True)
        write_race(long, 50, 20000)
        races = {"demo": (demo, "Enoshima_R1.txt"), "fleet": (fleet, next((fleet / "raceadmin").glob("*.txt")).name),
                 "long": (long, "fleet.txt")}  # fmt: skip
        for name, (tree, race) in races.items():
            shutil.copy(program, tree / "keelview-page.html")
            page = scratch / f"{name}.html"
            subprocess.run([build / "keelview-report", "--page", page, tree, race], check=True)
            print(f"{name}: {page.stat().st_size} bytes, {page.stat().st_size - program.stat().st_size} of them its race")
        firsts = []
        for _ in range(3):
            with Page(scratch / "demo.html", 1280, 1024) as page:
                firsts.append(opened(page)[0])
        print(f"demo page, script to first picture: {statistics.median(firsts):.0f} ms (wanted: 400)")
        with Page(scratch / "fleet.html", 1310, 1038) as page:  # a map of 1000 pixels
            opened(page)
            print(f"frame in auto trace, 50 boats with names: {frame(page):.2f} ms (wanted: 3)")
        with Page(scratch / "long.html", 1310, 1038) as page:
            first, load, memory = opened(page)
            print(f"50 x 20,000 fixes: {first:.0f} ms from the script, {load:.0f} of them the load (wanted: 1500); "
                  f"{memory:.0f} MB (wanted: 120)")
        begun = time.monotonic()
        subprocess.run([build / "keelview-report", long, "fleet.txt"], check=True, stdout=subprocess.DEVNULL)
        print(f"the desktop reads it from its texts in {1000 * (time.monotonic() - begun):.0f} ms, the report with it")
        bench = build / "bench" / "display_bench"
        if bench.exists():
            subprocess.run([bench, "--benchmark_filter=AutoTraceFrame"], check=False)


if __name__ == "__main__":
    main()
