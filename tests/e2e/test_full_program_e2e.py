"""The full program in a real X window, led by mouse and keys: from a folder of tracks to a race, and back to the menu
from everything that it shows. There is no settings file, so the program speaks Japanese."""

import shutil
import sys
import tempfile
import time
import unittest
from pathlib import Path

from virtual_display import VirtualDisplay, wait_until

PROJECT = Path(__file__).resolve().parents[2]
BUILD = Path(sys.argv[1]).resolve()

MAP, SEA = (5, 5, 970, 970), (0, 255, 255)
DOCUMENTS = (1160, 931)  # the button on the control panel of the display

# Places inside the menu, the editor and the two dialogs.
EDIT, ONE_BOAT, RACING, EXIT, CHOOSER_OK = (300, 480), (300, 528), (300, 552), (320, 576), (60, 465)
CHOOSE_TRACK, TRACK_LIST, TRACK_OK, TITLE, ATTACH, SAVE = (136, 148), (100, 192), (76, 222), (250, 82), (188, 480), (452, 348)
FIRST_ROW, NAME_BOX, NAME_OK = (40, 16), (100, 113), (180, 136)


class FullProgram(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.tree = Path(folder.name) / "tree"
        self.opened = Path(folder.name) / "opened"
        (self.tree / "gpsdat").mkdir(parents=True)
        for boat in (1, 2, 3):
            shutil.copy(BUILD / f"demo/gpsdat/r1_0{boat}.trk", self.tree / "gpsdat")
        (self.tree / "attachment").mkdir()
        (self.tree / "attachment/notice, 1.txt").write_text("no wind, no race")
        shutil.copy(BUILD / "keelview", self.tree)
        # The desktop's opener, which notes what it is given.
        opener = Path(folder.name) / "bin/xdg-open"
        opener.parent.mkdir()
        opener.write_text(f'#!/bin/sh\nprintf %s "$1" >"{self.opened}"\n')
        opener.chmod(0o755)
        self.display = self.enterContext(VirtualDisplay())
        self.program = self.display.start([PROJECT / "tools/start_program.sh", self.tree],
                                          LANG="C.UTF-8", PATH=f"{opener.parent}:/usr/bin:/bin")

    def window(self, title):
        def shown():
            self.assertIsNone(self.program.poll(), f"the program ended before {title} stood")
            return self.display.window_titled(title)

        return wait_until(shown, 30, f"a window titled {title}")

    def gone(self, title):
        wait_until(lambda: not self.display.window_titled(title), 30, f"no window titled {title}")

    def press(self, title, place):
        self.display.click_in(self.window(title), *place)

    def answer_yes(self):
        self.window("^(Keelview|キールビュー|ファイルの保存)$")
        time.sleep(0.3)
        self.display.xdotool("key", "Return")

    def add_boat(self, number):
        self.press("^レース管理", CHOOSE_TRACK)
        self.press("^レース管理", TRACK_LIST)
        for key in ["Home"] + ["Down"] * (number - 1) + ["Return"]:
            self.display.xdotool("key", key)
        self.press("^レース管理", TRACK_OK)
        self.window("^Keelview$")
        time.sleep(0.3)
        self.display.type(f"Boat {number}", "Return")
        self.gone("^Keelview$")

    def see_race(self, name):
        window = self.window(rf"\({name}\)")
        self.gone("^キール$")
        wait_until(lambda: self.display.shot().share(MAP, SEA) > 0.3, 20, "a map with the sea on it")
        return window

    def close_race(self, window):
        self.display.close(window)
        self.window("^キール$")
        self.gone(r"\(")

    def test_from_tracks_to_a_race_and_back(self):
        self.answer_yes()  # edit?
        self.press("^キール$", EDIT)
        for boat in (1, 2, 3):
            self.add_boat(boat)
        self.press("^レース管理", TITLE)
        self.display.type("Club Race")
        self.press("^レース管理", ATTACH)
        self.press("^キールビュー$", FIRST_ROW)
        self.press("^キールビュー$", NAME_OK)
        self.gone("^キールビュー$")

        self.press("^レース管理", SAVE)
        self.answer_yes()  # save?
        self.gone("^ファイルの保存$")
        self.press("^キールビュー$", NAME_BOX)
        self.display.type("Club 1")
        self.press("^キールビュー$", NAME_OK)
        time.sleep(0.5)
        self.answer_yes()  # show?
        display = self.see_race("Club 1.txt")
        self.assertIn("Club Race", self.display.title(display))
        self.gone("^レース管理")
        lines = (self.tree / "raceadmin/Club 1.txt").read_text(encoding="cp932").split("\n")
        boats = [line for line in lines if line.startswith("BN")]
        self.assertEqual(boats, [f"BN, r1_0{boat}.trk, Boat {boat}" for boat in (1, 2, 3)])

        self.display.click(*DOCUMENTS)
        self.press("^データ参照$", FIRST_ROW)
        wait_until(self.opened.exists, 5, "a document handed to the desktop")
        self.assertEqual(Path(self.opened.read_text()), self.tree / "attachment/notice, 1.txt")
        self.gone("^データ参照$")
        time.sleep(5.5)  # the display stays blocked while the viewer comes up
        self.close_race(display)

        self.press("^キール$", RACING)
        self.press("^キール$", CHOOSER_OK)
        self.close_race(self.see_race("Club 1.txt"))
        self.press("^キール$", ONE_BOAT)
        self.press("^キール$", CHOOSER_OK)
        self.close_race(self.see_race("r1_01.trk"))
        self.press("^キール$", EXIT)
        self.assertEqual(self.program.wait(timeout=20), 0)


if __name__ == "__main__":
    unittest.main(argv=["test_full_program_e2e"])
