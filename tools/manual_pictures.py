#!/usr/bin/env python3
"""Takes the pictures of the manual from the real program and its demo race, in both languages.

    manual_pictures.py BUILD_DIR

Writes them into help-e/ and help/. They are committed; this runs again only when the program looks different.
Needs Xvfb, xdotool and ImageMagick.
"""

import subprocess
import sys
import tempfile
import time
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[1]
sys.path.insert(0, str(PROJECT / "tests/e2e"))
from virtual_display import HEIGHT, WIDTH, VirtualDisplay, wait_until  # noqa: E402

LANGUAGES = {"en": "help-e", "ja": "help"}
RACE = r"\(.*\.txt\)"

# Places on a display of 1280 x 1024: the control panel begins at (1015, 646), the boat list at (1015, 178).
WHOLE = (0, 0, WIDTH, HEIGHT)
MAP = (5, 5, 970, 970)
PAGE = (5, 5, 800, 970)
# The Japanese demo race has twenty boats.
TABLES = {"en": (5, 5, 800, 720), "ja": (5, 5, 800, 940)}
BOATS = {"en": (1015, 178, 265, 165), "ja": (1015, 178, 265, 335)}
PANEL = (1015, 646, 265, 330)
SIDE = (635, 5, 340, 720)
SIDE_OUT, SIDE_AWAY = (967, 490), (627, 490)
IDLE = (1100, 560)  # where no control is
AUTO_TRACE, NAME, TRACKS, GRAPHS, TABLE_PAGE = (1040, 888), (1040, 856), (1212, 682), (1212, 696), (1212, 710)
STOP, STEP, FIRST_BEAT, RING = (1040, 696), (1096, 684), (995, 745), (1263, 250)
TAKE_RACE = (712, 121)
MENU_EDITOR, MENU_DISTRIBUTION, MENU_RACE, MENU_OK = (295, 481), (295, 505), (295, 553), (60, 467)


class Photographer:
    """A display with the program on it in one language, and the folder for its pictures."""

    def __init__(self, display, language):
        self.display, self.language = display, language
        self.folder = PROJECT / LANGUAGES[language]

    def click(self, place, within=(0, 0), pause=0.8):
        self.display.click(place[0] + within[0], place[1] + within[1])
        time.sleep(pause)

    def take(self, name, box):
        left, top, width, height = box
        source = subprocess.Popen(
            ["/usr/bin/import", "-display", self.display.name, "-window", "root", "png:-"], stdout=subprocess.PIPE
        )
        subprocess.run(
            ["/usr/bin/convert", "-", "-crop", f"{width}x{height}+{left}+{top}", "+repage", "+dither", "-colors", "160",
             "-strip", "-define", "png:compression-level=9", f"PNG8:{self.folder / name}.png"],
            stdin=source.stdout, check=True, timeout=60,
        )
        source.wait(timeout=20)

    def box_of(self, window):
        geometry = self.display.xdotool("getwindowgeometry", "--shell", window)
        value = dict(line.split("=") for line in geometry.splitlines())
        return tuple(int(value[key]) for key in ("X", "Y", "WIDTH", "HEIGHT"))

    def window(self, title):
        found = wait_until(lambda: self.display.window_titled(title), 60, f"a window with {title} in its title")
        time.sleep(1)
        return found

    def take_display(self):
        self.window(RACE)
        time.sleep(4)  # the map follows the boats by then
        self.click(FIRST_BEAT)
        self.click(NAME)
        self.click(RING)
        self.display.xdotool("mousemove", *IDLE)
        time.sleep(2)
        self.take("display", WHOLE)
        self.take("boats", BOATS[self.language])
        self.click(AUTO_TRACE)
        self.click(STOP)
        self.display.xdotool("keydown", "shift", "mousemove", 500, 500, "click", 3, "keyup", "shift")  # the whole race
        self.click(STEP)  # boats at their places on it
        self.display.xdotool("mousemove", *IDLE)
        time.sleep(1)
        self.take("tracks", MAP)
        self.take("panel", PANEL)
        self.click(SIDE_OUT)
        time.sleep(3)  # it is worked out by then
        self.take("side", SIDE)
        self.click(SIDE_AWAY)
        self.click(GRAPHS)
        self.display.xdotool("mousemove", *IDLE)
        time.sleep(1)
        self.take("graphs", PAGE)
        self.click(TABLE_PAGE)
        self.display.xdotool("mousemove", *IDLE)
        time.sleep(1)
        self.take("data", TABLES[self.language])

    def take_import(self):
        sheet = self.window("New race from track files|航跡ファイルからレースを作成")
        time.sleep(4)  # the race is found by then
        self.click(TAKE_RACE)
        self.display.xdotool("mousemove", *IDLE)
        self.take("import", self.box_of(sheet))

    def take_menu(self):
        self.window("Keelview|キールビュー")
        self.display.xdotool("key", "Return")  # "Edit Data ?"
        menu = self.box_of(self.window("^(Keelview|キール)$"))
        corner = menu[:2]
        self.take("menu", menu)
        self.click(MENU_DISTRIBUTION, corner)
        distribution = self.window("Create Distribution|配布データの作成")
        left, top, *_ = self.box_of(distribution)
        self.click((100, 82), (left, top))
        self.click((100, 97), (left, top))
        self.click((100, 178), (left, top))
        self.click((150, 33), (left, top))
        self.display.xdotool("type", "Autumn Series")
        self.take("distribution", self.box_of(distribution))
        self.display.close(distribution)
        self.click(MENU_EDITOR, corner)
        editor = self.window("Edit Race Control|レース管理ファイル編集")
        left, top, *_ = self.box_of(editor)
        for row, name in enumerate(("Alcyone", "Blue Heron", "Cutlass")):
            self.click((136, 148), (left, top))
            self.click((60, 192), (left, top))  # the list of files
            self.display.xdotool("key", *["Down"] * row, "Return")
            self.click((60, 222), (left, top))
            self.display.xdotool("type", name)
            self.display.xdotool("key", "Return")
            time.sleep(1)
        self.take("editor", self.box_of(editor))


def take_pictures(build, language):
    with tempfile.TemporaryDirectory() as folder:
        tree = Path(folder) / "tree"
        subprocess.run([PROJECT / "tools/lay_out_tree.sh", build, tree, language], check=True, timeout=60)
        settings = {"LC_ALL": "C.UTF-8"}
        with VirtualDisplay() as display:
            display.start([tree / "keelview"], **settings)
            Photographer(display, language).take_display()
        (tree / "raceadmin/Ver.00").write_text("0,1\r\n" if language == "en" else "0,0\r\n")
        with VirtualDisplay() as display:
            display.start([tree / "keelview"], **settings)
            Photographer(display, language).take_menu()
        fleet = Path(folder) / "Enoshima"  # files from somewhere else
        fleet.mkdir()
        for track in (tree / "gpsdat").glob("r2_*.trk"):
            track.rename(fleet / track.name)
        with VirtualDisplay() as display:
            display.start([tree / "keelview", fleet], **settings)
            Photographer(display, language).take_import()


if __name__ == "__main__":
    for each in LANGUAGES:
        take_pictures(Path(sys.argv[1]).resolve(), each)
