"""The full program in a real X window, led by mouse and keys: from a folder of tracks to a race, and back to the menu
from everything that it shows. There is no settings file, so the program speaks Japanese."""

import shutil
import sys
import time
import unittest
from pathlib import Path

from virtual_display import OnScreen, wait_until

PROJECT = Path(__file__).resolve().parents[2]
BUILD = Path(sys.argv[1]).resolve()

DOCUMENTS, DISPLAY_EXIT = (1160, 931), (1231, 931)  # on the control panel of the display

# Places inside the menu, the editor and the two dialogs.
EDIT, ONE_BOAT, RACING, EXIT, CHOOSER_OK = (300, 480), (300, 528), (300, 552), (320, 576), (60, 465)
CHOOSE_TRACK, TRACK_LIST, TRACK_OK, TITLE, ATTACH, SAVE = (136, 148), (100, 192), (76, 222), (250, 82), (188, 480), (452, 348)
FIRST_ROW, NAME_BOX, NAME_OK = (40, 16), (100, 113), (180, 136)
MENU, EDITOR, FILES, SAVE_QUESTION = "^キール$", "^レース管理", "^キールビュー$", "^ファイルの保存$"


class FullProgram(OnScreen):
    def setUp(self):
        super().setUp()
        (self.tree / "gpsdat").mkdir(parents=True)
        for boat in (1, 2, 3):
            shutil.copy(BUILD / f"demo/gpsdat/r1_0{boat}.trk", self.tree / "gpsdat")
        (self.tree / "attachment").mkdir()
        (self.tree / "attachment/notice, 1.txt").write_text("no wind, no race")
        shutil.copy(BUILD / "keelview", self.tree)
        # The desktop's opener, which notes what it is given.
        self.opened = self.folder / "opened"
        opener = self.folder / "bin/xdg-open"
        opener.parent.mkdir()
        opener.write_text(f'#!/bin/sh\nprintf %s "$1" >"{self.opened}"\n')
        opener.chmod(0o755)
        (self.tree / "raceadmin").mkdir()
        (self.tree / "raceadmin/Ver.00").write_bytes(b"0,0\r\n")
        self.start(PROJECT / "tools/start_program.sh", self.tree, LANG="C.UTF-8", PATH=f"{opener.parent}:/usr/bin:/bin")

    def add_boat(self, number):
        self.press(EDITOR, CHOOSE_TRACK, TRACK_LIST)
        self.display.keys("Home", *["Down"] * (number - 1), "Return")
        self.press(EDITOR, TRACK_OK)
        self.window("^Keelview$")
        time.sleep(0.3)
        self.display.type(f"Boat {number}")
        self.display.keys("Return")
        self.gone("^Keelview$")

    def see_race(self, name):
        window = self.window(rf"\({name}\)")
        self.gone(MENU)
        self.see_sea()
        return window

    def back_at_the_menu(self):
        self.window(MENU)
        self.gone(r"\(")

    def test_from_tracks_to_a_race_and_back(self):
        self.answer_yes("^(Keelview|キールビュー)$")  # edit?
        self.press(MENU, EDIT)
        for boat in (1, 2, 3):
            self.add_boat(boat)
        self.press(EDITOR, TITLE)
        self.display.type("Club Race")
        self.press(EDITOR, ATTACH)
        self.press(FILES, FIRST_ROW, NAME_OK)
        self.gone(FILES)

        self.press(EDITOR, SAVE)
        self.answer_yes(SAVE_QUESTION)
        self.gone(SAVE_QUESTION)
        self.press(FILES, NAME_BOX)
        self.display.type("Club 1")
        self.press(FILES, NAME_OK)
        time.sleep(0.5)
        self.answer_yes("^(Keelview|キールビュー|ファイルの保存)$")  # show?
        display = self.see_race("Club 1.txt")
        self.assertRegex(self.display.xdotool("getwindowname", display), "^キールビュー   Club Race   ")
        self.gone(EDITOR)
        race = (self.tree / "raceadmin/Club 1.txt").read_text("cp932")
        boats = [line for line in race.splitlines() if line.startswith("BN")]
        self.assertEqual(boats, [f"BN, r1_0{boat}.trk, Boat {boat}" for boat in (1, 2, 3)])

        self.display.click(*DOCUMENTS)
        self.press("^データ参照$", FIRST_ROW)
        wait_until(self.opened.exists, 5, "a document handed to the desktop")
        self.assertEqual(Path(self.opened.read_text()), self.tree / "attachment/notice, 1.txt")
        self.gone("^データ参照$")
        time.sleep(5.5)  # the display stays blocked while the viewer comes up
        self.display.close(display)
        self.back_at_the_menu()
        self.press(MENU, RACING, CHOOSER_OK)
        self.display.close(self.see_race("Club 1.txt"))
        self.back_at_the_menu()
        self.press(MENU, ONE_BOAT, CHOOSER_OK)
        self.see_race("r1_01.trk")
        self.display.click(*DISPLAY_EXIT)
        self.back_at_the_menu()
        self.press(MENU, EXIT)
        self.ends_well()


if __name__ == "__main__":
    unittest.main(argv=["test_full_program_e2e"])
