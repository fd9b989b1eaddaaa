#!/usr/bin/env python3
"""Shows every hint of the race display once and puts them on one sheet, to be looked at.

    hint_sheet.py BUILD_DIR LANGUAGE SHEET.png

Opens the demo race in a virtual display, for editing, and moves the pointer over every control that has a hint.
LANGUAGE is en or ja. Needs Xvfb, xdotool and ImageMagick.
"""

import subprocess
import sys
import tempfile
import time
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[1]
sys.path.insert(0, str(PROJECT / "tests/e2e"))
from virtual_display import VirtualDisplay, wait_until  # noqa: E402

# On a display of 1280 x 1024 the control panel's drawing area begins here.
PANEL = (1017, 648)
IN_PANEL = {
    "Text2": (40, 89), "Command4": (120, 184), "btnHATENA": (226, 160),
    "Check9": (30, 208), "Check7": (84, 208), "Check3": (140, 208), "Check10": (200, 208),
    "Check4": (30, 224), "Check6": (110, 224), "Check2": (180, 224),
    "Check5": (30, 240), "Check8": (180, 240), "BCOL1": (30, 262), "BCOL2": (66, 262), "BCOL6": (200, 262),
    "Command10": (60, 284), "Command13": (140, 284), "Command1": (216, 284), "Label1": (150, 303),
}  # fmt: skip
IN_EDITING = {"Command2": (40, 112), "Command3": (120, 112), "Command5": (210, 112)}
IN_BROWSING = {"Command9": (232, 112)}
ELSEWHERE = {
    "Picture2": (60, 60), "sWind": (60, 160), "PicTimeBar": (995, 300), "Picture6": (1080, 60),
    "Bnam": (1060, 252), "Maru": (1264, 252), "Label5": (1120, 212), "Picture1": (500, 400),
}  # fmt: skip
ON_GRAPHS = {"Command12": (60, 20), "GPIC": (200, 400)}
AUTO_TRACE, STOP, SET_MARK, SET_LINE = (30, 240), (23, 47), (40, 112), (120, 112)
GRAPHS = (197, 50)


class Sheet:
    def __init__(self, display, folder):
        self.display, self.folder, self.count = display, folder, 0

    def move(self, x, y):
        self.display.xdotool("mousemove", x, y)
        time.sleep(0.15)

    def show(self, name, x, y):
        """Moves onto the control from where no hint is, and keeps what stands around it."""
        self.move(1250, 600)
        for step in range(3):
            self.move(x + step, y)
        time.sleep(0.4)
        self.count += 1
        left, top = max(0, min(x - 290, 1280 - 580)), max(0, min(y - 120, 1024 - 210))
        picture = self.folder / f"{self.count:02}_{name}.png"
        subprocess.run(["/usr/bin/import", "-display", self.display.name, "-window", "root", "-crop",
                        f"580x210+{left}+{top}", "+repage", picture], check=True, timeout=20)  # fmt: skip

    def show_all(self, places, corner=(0, 0)):
        for name, (x, y) in places.items():
            self.show(name, corner[0] + x, corner[1] + y)

    def click(self, place):
        self.display.click(place[0] + PANEL[0], place[1] + PANEL[1])
        time.sleep(0.5)


def open_race(display, tree, mode, language):
    (tree / "raceadmin/Ver.00").write_text(f"{mode},{int(language == 'en')}\r\n")
    display.start([tree / "keelview"], LC_ALL="C.UTF-8")
    if mode == 0:
        wait_until(lambda: display.window_titled("Keelview|キールビュー"), 60, "the question for the mode")
        time.sleep(1)
        display.xdotool("key", "Return")
        menu = wait_until(lambda: display.window_titled("^(Keelview|キール)$"), 60, "the menu")
        time.sleep(1)
        x, y = (int(line[2:]) for line in display.xdotool("getwindowgeometry", "--shell", menu).splitlines()[1:3])
        display.click(x + 295, y + 553)
        time.sleep(1)
        display.click(x + 55, y + 465)
    wait_until(lambda: display.window_titled(r"\(.*\.txt\)"), 60, "the race display")
    time.sleep(5)


def show_hints(display, folder, tree, language):
    sheet = Sheet(display, folder)
    open_race(display, tree, 0, language)
    sheet.click(STOP)
    sheet.show_all({"Check9": IN_PANEL["Check9"]}, PANEL)  # auto trace alone has this one
    sheet.click(AUTO_TRACE)
    sheet.show_all({**IN_EDITING, **IN_PANEL}, PANEL)
    sheet.show_all(ELSEWHERE)
    sheet.click(SET_MARK)
    sheet.show("set mark", 500, 400)
    sheet.click(SET_LINE)
    sheet.show("set line", 500, 400)
    sheet.click(SET_LINE)
    sheet.click(GRAPHS)
    sheet.show_all(ON_GRAPHS)
    return sheet


def main(build, language, target):
    with tempfile.TemporaryDirectory() as scratch:
        tree, folder = Path(scratch) / "tree", Path(scratch) / "hints"
        folder.mkdir()
        subprocess.run([PROJECT / "tools/lay_out_tree.sh", build, tree, language], check=True, timeout=60)
        with VirtualDisplay() as display:
            sheet = show_hints(display, folder, tree, language)
        with VirtualDisplay() as display:
            open_race(display, tree, 1, language)
            sheet.display = display
            sheet.show_all(IN_BROWSING, PANEL)
            sheet.show("Command1 without a menu", PANEL[0] + 216, PANEL[1] + 284)
        subprocess.run(["/usr/bin/montage", "-label", "%t", *sorted(folder.iterdir()), "-tile", "4x", "-geometry",
                        "+4+4", target], check=True, timeout=120)  # fmt: skip


if __name__ == "__main__":
    main(Path(sys.argv[1]).resolve(), sys.argv[2], sys.argv[3])
